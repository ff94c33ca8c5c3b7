#pragma once

#include "core/expression.h"

#include <QStringView>

/// Whether the character is a digit of ASCII, the only ones that numbers are read from.
inline bool Is_Digit(QChar character)
{
    return character >= '0' && character <= '9';
}

/// Whether regular expressions take the character for one of a word.
inline bool Is_Word_Character(QChar character)
{
    const uint code = character.unicode();

    if (code < 128) {
        return (code | 0x20) - 'a' < 26 || code - '0' < 10 || code == '_';
    }
    return character.isLetterOrNumber() || character.isMark();
}

/// Names of variables as words: what stands between two word boundaries of an expression. Names that hold nothing but
/// letters, marks, digits and underscores, no digit first, mean in a regular expression what they mean as words, and
/// are never met in the digits that stand for a value: looking each word up once gives what replacing one name after
/// the other gives.
class TExpressionWords
{
public:
    /// The variables stand by the lengths of their names, longer ones first, and must outlive the words. The first of
    /// several whose names differ in their case alone is the one that is met.
    explicit TExpressionWords(const std::vector<TExpression::TVariable>& variables);
    Q_DISABLE_COPY(TExpressionWords)

    /// Whether all the names are such words.
    bool Are_Words() const { return d_are_words; }

    /// The variable that the word, in capitals, names; null if it names none.
    const TExpression::TVariable* Find(QStringView word) const;

private:
    void Convert_Names();

    const std::vector<TExpression::TVariable>* d_variables;
    std::vector<TExpression::TVariable> d_in_capitals; ///< what stands for them if a name is no word of ASCII
    bool d_are_words = true;
};
