#pragma once

#include "core/expressionwords.h"

#include <QStringView>
#include <QVarLengthArray>

/// The smallest piece of an expression that its scan tells apart.
struct TExpressionToken
{
    enum TKind : unsigned char
    {
        NUMBER,         ///< digits and points, or the value of a variable
        OPERATOR,       ///< + - * / ^
        OPEN_GROUP,     ///< an opening parenthesis
        SQUARE_ROOT,    ///< "SQRT(" in any case
        SUM_OF_SQUARES, ///< "SUMSQ(" in any case
        CLOSE,          ///< a closing parenthesis
        COMMA,
        OTHER ///< what belongs nowhere: a character, or a value that is not finite
    };

    TKind kind = OTHER;
    bool is_valid = false; ///< of a number: whether its characters make one
    char oper = 0;         ///< of an operator: its character
    int closing = -1;      ///< of an opening token: the index of the token that closes it; -1 if none does
    union
    {
        double value = 0.0; ///< of a number
        int commas_before;  ///< of an opening token: how many commas stand before it
    };
};

/// The tokens of one expression, found in one pass; the partners of parentheses and the places of commas are known
/// without a search.
class TExpressionTokens
{
public:
    /// The tokens of `text` as it stands. White space is no part of an expression.
    explicit TExpressionTokens(QStringView text);

    /// The tokens of `text`, in capitals, with each word that names a variable replaced by what the variable stands
    /// for: its value as its text with 16 decimals reads, a negative one in parentheses. What is not finite is no
    /// number in an expression.
    TExpressionTokens(QStringView text, const TExpressionWords& words);

    int Size() const { return d_tokens.size(); }
    const TExpressionToken& At(int index) const { return d_tokens[index]; }

    int Comma_Count() const { return d_commas.size(); }
    /// The index of the token that is the comma with that number.
    int Comma(int number) const { return d_commas[number]; }

private:
    void Append_All(QStringView text, const TExpressionWords* words);
    int Append_Next(QStringView text, int position, const TExpressionWords* words);
    int Append_Variable(QStringView text, int position, const TExpressionWords& words);
    void Append_Value(double value);
    void Append(TExpressionToken::TKind kind);
    void Append_Magnitude(double magnitude);
    void Append_Number(double value, bool is_valid);
    void Append_Operator(char oper);
    void Append_Opening(TExpressionToken::TKind kind);
    void Append_Closing();
    void Append_Comma();
    int Append_Digits(QStringView text, int position);
    int Append_Other(QStringView text, int position);

    QVarLengthArray<TExpressionToken, 64> d_tokens;
    QVarLengthArray<int, 16> d_commas;
    QVarLengthArray<int, 16> d_open; ///< the opening tokens that still lack their partner
};
