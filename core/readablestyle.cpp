#include "core/readablestyle.h"

#include <QAbstractScrollArea>
#include <QPainter>
#include <QStyleOption>
#include <QToolButton>

#include <algorithm>
#include <cmath>

namespace {

// From the palette's own ground, which leaves 3 on those that the style blends from it.
const double DISABLED_CONTRAST = 4.0;
const double SELECTED_CONTRAST = 4.5;
const int STEPS = 20;

double Linear(double channel)
{
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

/// From 0 for black to 1 for white, as the eye sees it.
double Luminance(const QColor& colour)
{
    return 0.2126 * Linear(colour.redF()) + 0.7152 * Linear(colour.greenF()) + 0.0722 * Linear(colour.blueF());
}

/// From 1 for equal colours to 21 for black on white.
double Contrast(const QColor& first, const QColor& second)
{
    const double one = Luminance(first) + 0.05;
    const double other = Luminance(second) + 0.05;

    return std::max(one, other) / std::min(one, other);
}

QColor Mixed(const QColor& from, const QColor& towards, double part)
{
    return QColor::fromRgbF(from.redF() + (towards.redF() - from.redF()) * part,
                            from.greenF() + (towards.greenF() - from.greenF()) * part,
                            from.blueF() + (towards.blueF() - from.blueF()) * part);
}

/// `colour`, moved no further `towards` another one than it needs for that contrast with `against`.
QColor With_Contrast(const QColor& colour, const QColor& towards, const QColor& against, double contrast)
{
    QColor result = colour;

    for (int step = 1; step <= STEPS && Contrast(result, against) < contrast; ++step) {
        result = Mixed(colour, towards, static_cast<double>(step) / STEPS);
    }
    return result;
}

void Mend_Disabled_Text(QPalette* palette, QPalette::ColorRole text, QPalette::ColorRole ground)
{
    palette->setColor(QPalette::Disabled, text,
                      With_Contrast(palette->color(QPalette::Disabled, text), palette->color(QPalette::Active, text),
                                    palette->color(QPalette::Disabled, ground), DISABLED_CONTRAST));
}

void Mend_Selection(QPalette* palette, QPalette::ColorGroup group)
{
    const QColor text = palette->color(group, QPalette::HighlightedText);
    const QColor away = Luminance(text) > 0.5 ? Qt::black : Qt::white;

    palette->setColor(group, QPalette::Highlight,
                      With_Contrast(palette->color(group, QPalette::Highlight), away, text,
                                    group == QPalette::Disabled ? DISABLED_CONTRAST : SELECTED_CONTRAST));
}

void Draw_Outline(QPainter* painter, const QRect& rect, const QColor& colour)
{
    painter->save();
    painter->setPen(colour);
    painter->setBrush(Qt::NoBrush);
    painter->drawRect(rect.adjusted(0, 0, -1, -1));
    painter->restore();
}

bool Is_Focused_View(const QStyleOption* option, const QWidget* widget)
{
    const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option);

    return frame != nullptr && frame->lineWidth > 0 && frame->state.testFlag(QStyle::State_HasFocus) &&
           qobject_cast<const QAbstractScrollArea*>(widget) != nullptr;
}

} // namespace

TReadableStyle::TReadableStyle() : QProxyStyle(QStringLiteral("fusion"))
{
    setObjectName(QStringLiteral("fusion"));
}

void TReadableStyle::polish(QPalette& palette)
{
    QProxyStyle::polish(palette);
    Mend_Disabled_Text(&palette, QPalette::WindowText, QPalette::Window);
    Mend_Disabled_Text(&palette, QPalette::ButtonText, QPalette::Button);
    Mend_Disabled_Text(&palette, QPalette::Text, QPalette::Base);
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        Mend_Selection(&palette, group);
    }
}

// Fusion fills the mark, which veils the icon of a small button and the text of a selected entry.
void TReadableStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                                   const QWidget* widget) const
{
    const bool is_mark = element == PE_FrameFocusRect && option->state.testFlag(State_KeyboardFocusChange);

    if (is_mark && qobject_cast<const QToolButton*>(widget) != nullptr) {
        Draw_Outline(painter, widget->rect(), option->palette.color(QPalette::Highlight));
    } else if (is_mark && option->state.testFlag(State_Item) && option->state.testFlag(State_Selected)) {
        Draw_Outline(painter, option->rect, option->palette.color(QPalette::HighlightedText));
    } else {
        QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
}

void TReadableStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                                 const QWidget* widget) const
{
    QProxyStyle::drawControl(element, option, painter, widget);
    if (element == CE_ShapedFrame && Is_Focused_View(option, widget)) {
        Draw_Outline(painter, option->rect, option->palette.color(QPalette::Highlight));
    }
}
