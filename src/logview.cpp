#include "src/logview.h"

#include <QMimeData>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextCursor>

namespace {

class TFieldData : public QTextBlockUserData
{
public:
    explicit TFieldData(const std::vector<TLogField>& block_fields) : fields(block_fields) {}

    const std::vector<TLogField> fields;
};

QString Selected_Part(const QTextBlock& block, const QTextCursor& selection)
{
    const auto* data = static_cast<const TFieldData*>(block.userData());
    const int begin = selection.selectionStart() - block.position();
    const int end = selection.selectionEnd() - block.position();

    return data == nullptr ? QString() : Tabbed_Part(block.text(), data->fields, begin, end);
}

} // namespace

TLogView::TLogView(QWidget* parent) : QPlainTextEdit(parent)
{
    setReadOnly(true);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setLineWrapMode(NoWrap);
}

void TLogView::Append(const std::vector<TLogLine>& lines)
{
    QStringList texts;
    for (const TLogLine& line : lines) {
        texts << line.text;
    }
    appendPlainText(texts.join('\n'));

    QTextBlock block = document()->lastBlock();
    for (auto line = lines.crbegin(); line != lines.crend(); ++line) {
        block.setUserData(new TFieldData(line->fields));
        block = block.previous();
    }
    // To the beginning of the last line, because the view keeps its cursor in sight and would hide the first columns.
    moveCursor(QTextCursor::End);
    moveCursor(QTextCursor::StartOfBlock);
    verticalScrollBar()->setValue(verticalScrollBar()->maximum());
}

QMimeData* TLogView::createMimeDataFromSelection() const
{
    const QTextCursor selection = textCursor();
    QStringList lines;

    for (QTextBlock block = document()->findBlock(selection.selectionStart());
         block.isValid() && block.position() <= selection.selectionEnd(); block = block.next()) {
        lines << Selected_Part(block, selection);
    }
    auto* copied = new QMimeData;
    copied->setText(lines.join('\n'));
    return copied;
}

// A page that comes to the front shows its horizontal scroll bar only then, and that covers the last line.
void TLogView::resizeEvent(QResizeEvent* event)
{
    const bool is_at_end = verticalScrollBar()->value() == verticalScrollBar()->maximum();

    QPlainTextEdit::resizeEvent(event);
    if (is_at_end) {
        verticalScrollBar()->setValue(verticalScrollBar()->maximum());
    }
}
