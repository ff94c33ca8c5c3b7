#include "core/xmlmarkup.h"

namespace {

// Where the first `unit` at or behind `from` is; the end of the text if there is none.
int Find(const QString& text, QChar unit, int from)
{
    const int index = text.indexOf(unit, from);
    return index < 0 ? text.size() : index;
}

// The end of the section that begins at `start`; `start` if none does.
int Section_End(const QString& text, int start)
{
    struct TMarks
    {
        QLatin1String begin;
        QLatin1String end;
    };
    static const TMarks SECTIONS[] = {{QLatin1String("<!--"), QLatin1String("-->")},
                                      {QLatin1String("<?"), QLatin1String("?>")},
                                      {QLatin1String("<![CDATA["), QLatin1String("]]>")}};

    // Nearly all markup is tags.
    const QChar sign = start + 1 < text.size() ? text.at(start + 1) : QChar();
    if (sign != '!' && sign != '?') {
        return start;
    }
    for (const TMarks& marks : SECTIONS) {
        if (text.midRef(start, marks.begin.size()) == marks.begin) {
            const int end = text.indexOf(marks.end, start + marks.begin.size());
            return end < 0 ? text.size() : end + marks.end.size();
        }
    }
    return start;
}

// The tag or declaration that begins at `start`. Inside quotes nothing ends it, and an equals sign is text.
TXmlMarkup Tag_At(const QString& text, int start)
{
    TXmlMarkup tag = {start, start + 1};

    while (tag.end < text.size() && text.at(tag.end) != '<' && text.at(tag.end) != '>') {
        const QChar unit = text.at(tag.end);
        const bool is_quote = unit == '"' || unit == '\'';

        tag.attributes += unit == '=' ? 1 : 0;
        tag.end = is_quote ? Find(text, unit, tag.end + 1) + 1 : tag.end + 1;
    }
    return tag;
}

} // namespace

TXmlMarkup Xml_Next_Markup(const QString& text, int from)
{
    const int start = Find(text, '<', from);
    const int end = Section_End(text, start);

    return end > start ? TXmlMarkup{start, end, true} : Tag_At(text, start);
}

TXmlMarkup Xml_Next_Rough_Markup(const QString& text, int from)
{
    const int start = Find(text, '<', from);
    const int end = Find(text, '<', start + 1);
    const QStringRef markup = text.midRef(start, end - start);

    return {start, end, false, markup.count('=') + markup.count("&#")};
}

TXmlMarkup Xml_Next_Section(const QString& text, int from)
{
    TXmlMarkup markup = Xml_Next_Markup(text, from);
    while (markup.start < text.size() && !markup.is_section) {
        markup = Xml_Next_Markup(text, markup.end);
    }
    return markup;
}

bool Xml_Has_Document_Type(const QString& text)
{
    int start = Find(text, '<', 0);
    for (int end = Section_End(text, start); end > start; end = Section_End(text, start)) {
        start = Find(text, '<', end);
    }
    return text.midRef(start).startsWith(QLatin1String("<!DOCTYPE"));
}
