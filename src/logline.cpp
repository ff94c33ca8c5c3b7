#include "src/logline.h"

#include "src/tabbedtext.h"

#include <algorithm>

namespace {

const int STOP = 20;

int Overflow(const QString& column)
{
    return std::max(0, column.size() - STOP);
}

/// Appends a field in `width` characters, on the right of them when positive, on the left when negative; returns the
/// column's overflow.
int Append_Field(TLogLine* line, const QString& field, int width)
{
    const QString column = QString("%1").arg(field, width);
    const int begin = line->text.size() + (width > 0 ? column.size() - field.size() : 0);

    line->text += column;
    line->fields.push_back({begin, begin + field.size()});
    return Overflow(column);
}

} // namespace

TLogLine Log_Line(const QStringList& fields)
{
    TLogLine line;
    int overflow = Append_Field(&line, Tabbed_Cell(fields.value(0)), -STOP);

    for (const QString& field : fields.mid(1)) {
        if (!field.isEmpty()) {
            overflow = Append_Field(&line, Tabbed_Cell(field), overflow - STOP);
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
