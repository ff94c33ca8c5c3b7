#include "src/textwrap.h"

#include <QTextBoundaryFinder>

namespace {

/// The width of a longer text is not asked for: fonts calculate in numbers that it could exceed.
constexpr int LONGEST_MEASURED_TEXT = 10000;

bool Is_Sign(const QString& text, int index)
{
    const QChar before = index > 0 ? text.at(index - 1) : QChar('(');
    return (text.at(index) == '-' || text.at(index) == '+') && (before == '(' || before == ',');
}

bool Ends_Part(const QString& text, int index)
{
    const QChar character = text.at(index);
    return character.isSpace() || (QString("+-*/^),;:=_").contains(character) && !Is_Sign(text, index));
}

// A bracket belongs to what stands in it. Only where that is too long a line ends behind the bracket.
bool Is_Opening_Bracket(const QString& text, int index)
{
    return text.at(index) == '(';
}

template <typename TEnd>
QStringList Parts(const QString& text, TEnd is_end)
{
    QStringList parts;
    int start = 0;

    for (int index = 0; index < text.size(); ++index) {
        if (is_end(text, index)) {
            parts << text.mid(start, index + 1 - start);
            start = index + 1;
        }
    }
    return parts << text.mid(start);
}

/// What a reader takes for one character each.
QStringList Characters(const QString& text)
{
    QStringList characters;
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    int start = 0;

    for (int end = finder.toNextBoundary(); end >= 0; end = finder.toNextBoundary()) {
        characters << text.mid(start, end - start);
        start = end;
    }
    return characters;
}

QString Without_Blanks_At_End(const QString& text)
{
    int size = text.size();
    while (size > 0 && text.at(size - 1).isSpace()) {
        --size;
    }
    return text.left(size);
}

/// Fills lines with parts of a text, one after the other.
class TLineFiller
{
public:
    TLineFiller(int room, const TTextWidth& width) : d_room(room), d_width(width) {}

    bool Fits_Alone(const QString& text) const
    {
        return text.size() <= LONGEST_MEASURED_TEXT && d_width(Without_Blanks_At_End(text)) <= d_room;
    }

    void Add(const QString& part)
    {
        if (Fits_Alone(part)) {
            Add_Whole(part);
            return;
        }
        for (const QString& smaller_part : Parts(part, Is_Opening_Bracket)) {
            if (Fits_Alone(smaller_part)) {
                Add_Whole(smaller_part);
            } else {
                Add_Characters(smaller_part);
            }
        }
    }

    QStringList Lines() const { return d_line.isEmpty() ? d_lines : d_lines + QStringList(Finished_Line()); }

private:
    void Add_Whole(const QString& part)
    {
        if (!d_line.isEmpty() && d_line_width + d_width(Without_Blanks_At_End(part)) > d_room) {
            d_lines << Finished_Line();
            d_line.clear();
            d_line_width = 0;
        }
        d_line += part;
        d_line_width += d_width(part);
    }

    void Add_Characters(const QString& part)
    {
        for (const QString& character : Characters(part)) {
            Add_Whole(character);
        }
    }

    QString Finished_Line() const { return Without_Blanks_At_End(d_line); }

    int d_room;
    const TTextWidth& d_width;
    QStringList d_lines;
    QString d_line;
    int d_line_width = 0;
};

} // namespace

QStringList Wrapped_Text(const QString& text, int room, const TTextWidth& width)
{
    TLineFiller filler(room, width);
    if (filler.Fits_Alone(text)) {
        return {text};
    }
    for (const QString& part : Parts(text, Ends_Part)) {
        filler.Add(part);
    }
    return filler.Lines();
}
