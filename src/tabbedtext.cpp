#include "src/tabbedtext.h"

#include <algorithm>

namespace {

bool Parts_Text(QChar character)
{
    // Nearly all characters are of these, and they need no look at their category.
    if (character >= QChar(' ') && character <= QChar('~')) {
        return false;
    }
    // Text documents begin a new paragraph at these two, which are no characters.
    const bool is_frame_mark = character == QChar(0xfdd0) || character == QChar(0xfdd1);

    return is_frame_mark || character.category() == QChar::Other_Control ||
           character.category() == QChar::Separator_Line || character.category() == QChar::Separator_Paragraph;
}

} // namespace

QString Tabbed_Cell(const QString& text)
{
    QString cell;
    Append_Tabbed_Cell(text, &cell);
    return cell;
}

void Append_Tabbed_Cell(const QString& text, QString* line)
{
    const int begin = line->size();

    line->append(text);
    std::replace_if(line->begin() + begin, line->end(), Parts_Text, QChar(' '));
}
