#include "core/expressionwords.h"

#include <algorithm>
#include <array>

namespace {

// Kinds of characters, as regular expressions tell those of a word from others.
constexpr unsigned LETTER = 1; // and what else may stand in a word
constexpr unsigned DIGIT = 2;
constexpr unsigned SIGN = 4;
constexpr unsigned FOREIGN = 8; // not ASCII

constexpr unsigned ASCII_END = 128;

constexpr unsigned char ASCII_Kind(unsigned code)
{
    const unsigned letter = code | 0x20;

    return (letter >= 'a' && letter <= 'z') || code == '_' ? LETTER : code >= '0' && code <= '9' ? DIGIT : SIGN;
}

constexpr std::array<unsigned char, ASCII_END> ASCII_Kinds()
{
    std::array<unsigned char, ASCII_END> kinds = {};

    for (unsigned code = 0; code < ASCII_END; ++code) {
        kinds[code] = ASCII_Kind(code);
    }
    return kinds;
}

constexpr std::array<unsigned char, ASCII_END> KINDS = ASCII_Kinds();

unsigned Kind(QChar character)
{
    if (character.unicode() < ASCII_END) {
        return KINDS[character.unicode()];
    }
    return character.isLetterOrNumber() || character.isMark() ? LETTER : SIGN;
}

/// The kinds of all characters of a name together. A digit that comes first counts as a sign.
unsigned Kinds(const QString& name)
{
    const QChar* character = name.constData();
    const QChar* const end = character + name.size();
    unsigned kinds = character == end || KINDS[character->unicode() % ASCII_END] == DIGIT ? SIGN : 0;
    unsigned codes = 0;

    for (; character != end; ++character) {
        codes |= character->unicode();
        kinds |= KINDS[character->unicode() % ASCII_END];
    }
    return codes < ASCII_END ? kinds : FOREIGN;
}

bool Is_Word(const TExpression::TVariable& variable)
{
    const QString& name = variable.name;

    return !name.isEmpty() && Kind(name.front()) == LETTER &&
           std::none_of(name.begin(), name.end(), [](QChar character) { return Kind(character) == SIGN; });
}

ushort Capital(QChar character)
{
    const ushort code = character.unicode();

    return code >= 'a' && code <= 'z' ? code - ('a' - 'A') : code;
}

bool Is_Longer(const TExpression::TVariable& one, const TExpression::TVariable& other)
{
    return one.name.size() > other.name.size();
}

/// `word` is in capitals and as long as `name`.
bool Is_Same(QStringView word, const QString& name)
{
    return std::equal(word.begin(), word.end(), name.begin(),
                      [](QChar character, QChar other) { return character.unicode() == Capital(other); });
}

} // namespace

TExpressionWords::TExpressionWords(const std::vector<TExpression::TVariable>& variables) : d_variables(variables)
{
    unsigned kinds = 0;

    for (const TExpression::TVariable& variable : variables) {
        kinds |= Kinds(variable.name);
    }
    if (kinds & FOREIGN) {
        Convert_Names();
    } else {
        d_are_words = !(kinds & SIGN);
    }
}

void TExpressionWords::Convert_Names()
{
    d_in_capitals = d_variables;
    for (TExpression::TVariable& variable : d_in_capitals) {
        variable.name = variable.name.toUpper();
    }
    std::stable_sort(d_in_capitals.begin(), d_in_capitals.end(), Is_Longer);
    d_are_words = std::all_of(d_in_capitals.begin(), d_in_capitals.end(), Is_Word);
}

const TExpression::TVariable* TExpressionWords::Find(QStringView word) const
{
    const std::vector<TExpression::TVariable>& names = d_in_capitals.empty() ? d_variables : d_in_capitals;
    auto name = std::partition_point(names.begin(), names.end(), [word](const TExpression::TVariable& variable) {
        return variable.name.size() > word.size();
    });

    for (; name != names.end() && name->name.size() == word.size(); ++name) {
        if (Is_Same(word, name->name)) {
            return &*name;
        }
    }
    return nullptr;
}
