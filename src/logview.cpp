#include "src/logview.h"

#include <QMimeData>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextCursor>

#include <numeric>
#include <utility>

namespace {

class TFieldData : public QTextBlockUserData
{
public:
    explicit TFieldData(std::vector<TLogField> block_fields) : fields(std::move(block_fields)) {}

    const std::vector<TLogField> fields;
};

QString Joined_Texts(const std::vector<TLogLine>& lines)
{
    QString text;
    text.reserve(std::accumulate(lines.begin(), lines.end(), 0,
                                 [](int size, const TLogLine& line) { return size + line.text.size() + 1; }));
    for (const TLogLine& line : lines) {
        text += line.text;
        text += '\n';
    }
    text.chop(1); // behind the last line
    return text;
}

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

void TLogView::Append(std::vector<TLogLine> lines)
{
    appendPlainText(Joined_Texts(lines));

    QTextBlock block = document()->lastBlock();
    for (auto line = lines.rbegin(); line != lines.rend(); ++line) {
        block.setUserData(new TFieldData(std::move(line->fields)));
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
