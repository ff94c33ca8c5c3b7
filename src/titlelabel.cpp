#include "src/titlelabel.h"

#include <QHelpEvent>
#include <QPainter>
#include <QTextDocument>
#include <QTextLayout>
#include <QTextOption>
#include <QToolTip>

namespace {

const int POINT_SIZE = 18;
const int MAXIMUM_LINES = 3;

} // namespace

TTitleLabel::TTitleLabel(const QString& text, QWidget* parent) : QLabel(text, parent)
{
    QFont title_font = font();
    title_font.setPointSize(POINT_SIZE);
    title_font.setUnderline(true);
    setFont(title_font);
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
    setAlignment(Qt::AlignTop | Qt::AlignLeft);
}

QSize TTitleLabel::minimumSizeHint() const
{
    return {8 * fontMetrics().averageCharWidth(), fontMetrics().lineSpacing()};
}

QSize TTitleLabel::sizeHint() const
{
    return minimumSizeHint();
}

int TTitleLabel::heightForWidth(int width) const
{
    return fontMetrics().lineSpacing() * qBound(1, Lines(width).size(), MAXIMUM_LINES);
}

QStringList TTitleLabel::Shown_Lines() const
{
    QStringList lines = Lines(width());
    const int count = qBound(1, height() / fontMetrics().lineSpacing(), MAXIMUM_LINES);

    if (lines.size() > count) {
        const QString rest = QStringList(lines.mid(count - 1)).join(QString());
        lines = lines.mid(0, count - 1) << fontMetrics().elidedText(rest, Qt::ElideRight, width());
    }
    return lines;
}

void TTitleLabel::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setPen(palette().color(foregroundRole()));

    int baseline = fontMetrics().ascent();
    for (const QString& line : Shown_Lines()) {
        painter.drawText(0, baseline, line.trimmed());
        baseline += fontMetrics().lineSpacing();
    }
}

bool TTitleLabel::event(QEvent* event)
{
    if (event->type() != QEvent::ToolTip) {
        return QLabel::event(event);
    }
    const bool is_whole = Shown_Lines() == Lines(width());
    QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(),
                       is_whole ? QString() : Qt::convertFromPlainText(text()), this);
    return true;
}

// The whole text, broken at `width`.
QStringList TTitleLabel::Lines(int width) const
{
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    QTextLayout layout(text(), font());
    layout.setTextOption(option);

    QStringList lines;
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width);
        lines.append(text().mid(line.textStart(), line.textLength()));
    }
    layout.endLayout();
    return lines;
}
