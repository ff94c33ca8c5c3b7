#include "src/csvcells.h"

#include <algorithm>

namespace {

const QChar SEPARATOR(',');
const QChar QUOTE('"');

bool Needs_Enclosing(QChar character)
{
    return character == SEPARATOR || character == QUOTE || character == '\n' || character == '\r';
}

// Both readers take over one cell, or the part of it that they can read, from `position` on and move `position` behind
// it.

QString Enclosed_Text(const QString& line, int* position)
{
    QString text;

    for (++*position; *position < line.size(); ++*position) {
        if (line.at(*position) == QUOTE) {
            ++*position;
            if (*position >= line.size() || line.at(*position) != QUOTE) {
                break;
            }
        }
        text += line.at(*position);
    }
    return text;
}

QString Plain_Text(const QString& line, int* position)
{
    const int separator = line.indexOf(SEPARATOR, *position);
    const int end = separator < 0 ? line.size() : separator;
    const QString text = line.mid(*position, end - *position);

    *position = end;
    return text;
}

} // namespace

QString CSV_Cell(const QString& text)
{
    return std::any_of(text.begin(), text.end(), Needs_Enclosing) ? Enclosed_CSV_Cell(text) : text;
}

QString Enclosed_CSV_Cell(const QString& text)
{
    return QUOTE + QString(text).replace(QUOTE, "\"\"") + QUOTE;
}

QStringList CSV_Texts(const QString& line)
{
    QStringList texts;
    int position = -1;

    do {
        ++position;
        QString text;
        if (position < line.size() && line.at(position) == QUOTE) {
            text = Enclosed_Text(line, &position);
        }
        texts += text + Plain_Text(line, &position);
    } while (position < line.size());
    return texts;
}
