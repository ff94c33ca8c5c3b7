#include "src/logline.h"

#include "src/tabbedtext.h"

#include <algorithm>
#include <cstdlib>

namespace {

const int STOP = 20;

void Append_Blanks(int count, QString* text)
{
    text->resize(text->size() + count, QChar(' '));
}

/// Appends a field in `width` characters, on the right of them when positive, on the left when negative; returns by
/// how much the column is longer than a stop.
int Append_Field(TLogLine* line, const QString& field, int width)
{
    const int padding = std::max(0, std::abs(width) - field.size());

    Append_Blanks(width > 0 ? padding : 0, &line->text);
    line->fields.push_back({line->text.size(), line->text.size() + field.size()});
    Append_Tabbed_Cell(field, &line->text);
    Append_Blanks(width > 0 ? 0 : padding, &line->text);
    return std::max(0, field.size() + padding - STOP);
}

} // namespace

TLogLine Log_Line(const QStringList& fields)
{
    TLogLine line;
    const auto filled = fields.size() - std::count(fields.begin(), fields.end(), QString());
    line.text.reserve(static_cast<int>(filled) * STOP);
    line.fields.reserve(static_cast<std::size_t>(filled));
    int overflow = Append_Field(&line, fields.value(0), -STOP);

    for (int index = 1; index < fields.size(); ++index) {
        if (!fields.at(index).isEmpty()) {
            overflow = Append_Field(&line, fields.at(index), overflow - STOP);
        }
    }
    return line;
}

QString Tabbed_Part(const QString& text, const std::vector<TLogField>& fields, int begin, int end)
{
    QString part;
    int last_end = -1; // in front of the first field there is no other

    begin = std::max(begin, 0);
    for (const TLogField& field : fields) {
        const int first = std::max(begin, field.begin);

        if (begin <= last_end && begin < field.begin && field.begin < end) {
            part += '\t';
        }
        part += text.midRef(first, std::max(0, std::min(end, field.end) - first));
        last_end = field.end;
    }
    return part;
}
