#include "core/errorlook.h"

#include <QPalette>
#include <QTextDocument>
#include <QWidget>

namespace {

// Dark text on a light ground of its own, so that it reads well in light and dark themes alike.
const QRgb ERROR_BASE = qRgb(255, 224, 220);
const QRgb ERROR_TEXT = qRgb(139, 0, 0);

// The two error colours alone: all other roles go on following the theme.
QPalette Error_Palette()
{
    QPalette palette;
    palette.setColor(QPalette::Base, QColor(ERROR_BASE));
    palette.setColor(QPalette::Text, QColor(ERROR_TEXT));
    return palette;
}

// A tool tip takes what looks like markup for markup.
QString Tool_Tip(const QString& text)
{
    return Qt::mightBeRichText(text) ? Qt::convertFromPlainText(text) : text;
}

} // namespace

TErrorLook::TErrorLook(QWidget* editor) : d_editor(editor) {}

void TErrorLook::Show(const QString& reason)
{
    const bool is_error = !reason.isEmpty();

    if (is_error && !d_shows_error) {
        d_own_tool_tip = d_editor->toolTip();
    }
    if (is_error) {
        d_editor->setPalette(Error_Palette());
        d_editor->setToolTip(Tool_Tip(reason));
    } else if (d_shows_error) {
        d_editor->setPalette(QPalette());
        d_editor->setToolTip(d_own_tool_tip);
    }
    d_shows_error = is_error;
}
