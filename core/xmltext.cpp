#include "core/xmltext.h"

#include <algorithm>

namespace {

// Whether a code unit that is no surrogate is legal. All characters beyond U+FFFF, which take two, are.
bool Is_Legal_Unit(ushort code)
{
    return code == 0x9 || code == 0xA || code == 0xD || (code >= 0x20 && code <= 0xFFFD);
}

// The number of code units of the legal character at `index`; 0 where the character is not legal.
int Legal_Length(const QString& text, int index)
{
    const QChar unit = text.at(index);

    if (!unit.isSurrogate()) {
        return Is_Legal_Unit(unit.unicode()) ? 1 : 0;
    }
    const bool is_pair = unit.isHighSurrogate() && index + 1 < text.size() && text.at(index + 1).isLowSurrogate();
    return is_pair ? 2 : 0;
}

// How many code units the text begins with that are neither control characters nor surrogates nor beyond them.
int Plain_Length(const QString& text)
{
    const auto is_plain = [](QChar unit) { return unit.unicode() >= 0x20 && unit.unicode() < 0xD800; };

    return static_cast<int>(std::find_if_not(text.begin(), text.end(), is_plain) - text.begin());
}

} // namespace

bool Xml_Is_Legal(const QString& text)
{
    int index = Plain_Length(text);
    while (index < text.size()) {
        const int length = Legal_Length(text, index);
        if (length == 0) {
            return false;
        }
        index += length;
    }
    return true;
}

QString Xml_Clean(const QString& text)
{
    QString clean;
    clean.reserve(text.size());

    int index = 0;
    while (index < text.size()) {
        const int length = Legal_Length(text, index);
        clean += text.midRef(index, length);
        index += qMax(length, 1);
    }
    return clean;
}

bool Xml_Is_Blank(const QString& text)
{
    return text.trimmed().isEmpty();
}
