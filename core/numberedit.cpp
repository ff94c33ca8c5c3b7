#include "core/numberedit.h"

#include "core/number.h"

#include <QPalette>

namespace {

// Dark text on a light ground of its own, so that it reads well in light and dark themes alike.
const QRgb ERROR_BASE = qRgb(255, 224, 220);
const QRgb ERROR_TEXT = qRgb(139, 0, 0);

QString Error_Tool_Tip(const QString& text)
{
    if (text.contains(',')) {
        return TNumberEdit::tr("Not a number, counts as 0: use a point as decimal separator, not a comma.");
    }
    return TNumberEdit::tr("Not a number, counts as 0: write digits with a point as decimal separator.");
}

} // namespace

TNumberEdit::TNumberEdit(QWidget* parent) : QLineEdit(parent)
{
    connect(this, &QLineEdit::textChanged, this, &TNumberEdit::Show_Validity);
}

double TNumberEdit::Value() const
{
    return Finite_Number(text());
}

void TNumberEdit::Set_Value(double value, int decimals)
{
    setText(Fixed_Text(value, decimals));
}

void TNumberEdit::Show_Validity(const QString& text)
{
    const bool is_error = !Is_Finite_Number(text);

    if (is_error && !d_shows_error) {
        d_plain_tool_tip = toolTip();
    }
    if (is_error) {
        QPalette palette = this->palette();
        palette.setColor(QPalette::Base, QColor(ERROR_BASE));
        palette.setColor(QPalette::Text, QColor(ERROR_TEXT));
        setPalette(palette);
        setToolTip(Error_Tool_Tip(text));
    } else if (d_shows_error) {
        setPalette(QPalette());
        setToolTip(d_plain_tool_tip);
    }
    d_shows_error = is_error;
}
