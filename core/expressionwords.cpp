#include "core/expressionwords.h"

#include "core/characterblock.h"

#include <algorithm>

namespace {

/// Tells whether names are words of ASCII. Each evaluation looks at all characters of all names, more of them than its
/// text has.
class TPlainWords
{
public:
    void Add(const QString& name);
    bool Are_Plain() const { return All_Hold(d_are_of_words) && d_least_first > '9'; }

private:
    TCharacterBlock d_are_of_words = ~TCharacterBlock();
    ushort d_least_first = 'z'; ///< the least code of all that come first
};

/// Whether all characters of a name, a block of them at least, are those of words. The last block may overlap the one
/// in front of it.
TCharacterBlock Are_All_Of_Words(const QChar* characters, int size)
{
    TCharacterBlock are_of_words = Are_Of_Words(Block_At(characters + size - BLOCK_SIZE));

    for (int position = BLOCK_SIZE; position < size; position += BLOCK_SIZE) {
        are_of_words &= Are_Of_Words(Block_At(characters + position - BLOCK_SIZE));
    }
    return are_of_words;
}

void TPlainWords::Add(const QString& name)
{
    const QChar* const characters = name.constData();
    const int size = name.size();

    d_are_of_words &= size < BLOCK_SIZE ? Are_Of_Words(Block_Of_Short(characters, static_cast<unsigned>(size)))
                                        : Are_All_Of_Words(characters, size);
    d_least_first = std::min(d_least_first, characters->unicode());
}

bool Are_Plain_Words(const std::vector<TExpression::TVariable>& variables)
{
    TPlainWords words;

    for (const TExpression::TVariable& variable : variables) {
        words.Add(variable.name);
    }
    return words.Are_Plain();
}

bool Is_Word(const TExpression::TVariable& variable)
{
    const QString& name = variable.name;

    return !name.isEmpty() && !Is_Digit(name.front()) && std::all_of(name.begin(), name.end(), Is_Word_Character);
}

bool Is_Longer(const TExpression::TVariable& one, const TExpression::TVariable& other)
{
    return one.name.size() > other.name.size();
}

ushort Capital(QChar character)
{
    const ushort code = character.unicode();

    return code >= 'a' && code <= 'z' ? code - ('a' - 'A') : code;
}

/// `word` is in capitals and as long as `name`. Names of one length mostly differ at their ends: CTEm, CTEc, CTEd.
bool Is_Same(QStringView word, const QString& name)
{
    const QChar* const characters = name.constData();
    qsizetype index = word.size();

    while (index > 0 && word[index - 1].unicode() == Capital(characters[index - 1])) {
        --index;
    }
    return index == 0;
}

} // namespace

TExpressionWords::TExpressionWords(const std::vector<TExpression::TVariable>& variables) : d_variables(&variables)
{
    if (!Are_Plain_Words(variables)) {
        Convert_Names();
    }
}

void TExpressionWords::Convert_Names()
{
    d_in_capitals = *d_variables;
    for (TExpression::TVariable& variable : d_in_capitals) {
        variable.name = variable.name.toUpper();
    }
    std::stable_sort(d_in_capitals.begin(), d_in_capitals.end(), Is_Longer);
    d_are_words = std::all_of(d_in_capitals.begin(), d_in_capitals.end(), Is_Word);
    d_variables = &d_in_capitals;
}

const TExpression::TVariable* TExpressionWords::Find(QStringView word) const
{
    auto variable =
        std::partition_point(d_variables->begin(), d_variables->end(),
                             [word](const TExpression::TVariable& entry) { return entry.name.size() > word.size(); });

    for (; variable != d_variables->end() && variable->name.size() == word.size(); ++variable) {
        if (Is_Same(word, variable->name)) {
            return &*variable;
        }
    }
    return nullptr;
}
