#include "src/tabbedtext.h"

#include <algorithm>

namespace {

bool Parts_Text(QChar character)
{
    // Text documents begin a new paragraph at these two, which are no characters.
    const bool is_frame_mark = character == QChar(0xfdd0) || character == QChar(0xfdd1);

    return is_frame_mark || character.category() == QChar::Other_Control ||
           character.category() == QChar::Separator_Line || character.category() == QChar::Separator_Paragraph;
}

} // namespace

QString Tabbed_Cell(QString text)
{
    std::replace_if(text.begin(), text.end(), Parts_Text, QChar(' '));
    return text;
}
