#pragma once

#include <QHelpEvent>
#include <QLabel>
#include <QPainter>
#include <QTextDocument>
#include <QTextLayout>
#include <QToolTip>
#include <QtMath>

/// A heading in 18 point, underlined, for a name of any length. The text is plain text and never widens its page: it
/// takes up to three lines and breaks also where there is no blank. A longer one ends in an ellipsis and stands whole
/// in the tool tip.
class TTitleLabel : public QLabel
{
public:
    explicit TTitleLabel(const QString& text, QWidget* parent = nullptr) : QLabel(text, parent)
    {
        QFont title_font = font();
        title_font.setPointSize(18);
        title_font.setUnderline(true);
        setFont(title_font);
        setTextFormat(Qt::PlainText);
        setWordWrap(true);
        setAlignment(Qt::AlignTop | Qt::AlignLeft);
    }

    /// One line of a few characters: the page, never its title, decides about the width.
    QSize minimumSizeHint() const override
    {
        return {8 * fontMetrics().averageCharWidth(), fontMetrics().lineSpacing()};
    }

    QSize sizeHint() const override { return minimumSizeHint(); }

    int heightForWidth(int width) const override
    {
        return fontMetrics().lineSpacing() * qBound(1, Lines(width).size(), MAXIMUM_LINES);
    }

    /// The lines as they are drawn, the last one elided where the text goes on.
    QStringList Shown_Lines() const
    {
        QStringList lines = Lines(width());
        const int count = qBound(1, height() / fontMetrics().lineSpacing(), MAXIMUM_LINES);

        if (lines.size() > count) {
            const QString rest = QStringList(lines.mid(count - 1)).join(QString());
            lines = lines.mid(0, count - 1) << fontMetrics().elidedText(rest, Qt::ElideRight, width());
        }
        return lines;
    }

protected:
    void paintEvent(QPaintEvent* /*event*/) override
    {
        QPainter painter(this);
        painter.setPen(palette().color(foregroundRole()));

        int baseline = fontMetrics().ascent();
        for (const QString& line : Shown_Lines()) {
            painter.drawText(0, baseline, line.trimmed());
            baseline += fontMetrics().lineSpacing();
        }
    }

    bool event(QEvent* event) override
    {
        if (event->type() != QEvent::ToolTip) {
            return QLabel::event(event);
        }
        const bool is_whole = Shown_Lines() == Lines(width());
        QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(),
                           is_whole ? QString() : Qt::convertFromPlainText(text()), this);
        return true;
    }

private:
    static constexpr int MAXIMUM_LINES = 3;

    // The whole text, broken at `width`.
    QStringList Lines(int width) const
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
};
