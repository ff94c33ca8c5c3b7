#include "core/expressiontokens.h"

#include <QString>

#include <cmath>

namespace {

const QLatin1String SUM_OF_SQUARES("SUMSQ(");
const QLatin1String SQUARE_ROOT("SQRT(");

bool Is_Digit(QChar character)
{
    return character >= '0' && character <= '9';
}

/// The number that `magnitude` reads as once it is written with 16 decimals. From a half on that is the number itself:
/// numbers lie further apart there than texts. Below, the units of the last decimal are counted without an error, ties
/// away from zero as Qt writes them.
double As_Written(double magnitude)
{
    __extension__ using TWide = unsigned __int128;
    constexpr double units_of_one = 1e16;
    constexpr double mantissas = 9007199254740992.0; // 2^53
    constexpr int mantissa_bits = 53;
    constexpr int smallest_shift_to_zero = 108; // a mantissa times 1e16 has 107 bits at most

    if (magnitude >= 0.5) {
        return magnitude;
    }
    int exponent = 0;
    const auto mantissa = static_cast<TWide>(std::frexp(magnitude, &exponent) * mantissas);
    const int shift = mantissa_bits - exponent;

    if (shift >= smallest_shift_to_zero) {
        return 0.0;
    }
    const TWide units = (mantissa * static_cast<TWide>(units_of_one) + (static_cast<TWide>(1) << (shift - 1))) >> shift;
    return static_cast<double>(static_cast<quint64>(units)) / units_of_one;
}

struct TNumber
{
    double value = 0.0;
    bool is_valid = false;
};

/// Digits with a point among them. Up to 15 of them the quotient of two numbers that are exact is, rounded once, what
/// the text reads as.
TNumber Read_Number(QStringView text)
{
    static constexpr double powers[] = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                        1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
    static constexpr int exact_characters = 16;
    qint64 digits = 0;
    qsizetype decimals = 0;
    int points = 0;

    for (qsizetype index = 0; index < text.size() && index < exact_characters; ++index) {
        if (text[index] == '.') {
            ++points;
            decimals = text.size() - index - 1;
        } else {
            digits = digits * 10 + (text[index].unicode() - '0');
        }
    }
    const bool is_short = text.size() - points < exact_characters;

    if (is_short && (points == 0 || (points == 1 && decimals > 0 && decimals < text.size() - 1))) {
        return {static_cast<double>(digits) / powers[decimals], true};
    }
    TNumber number;
    number.value = text.toString().toDouble(&number.is_valid);
    return number;
}

} // namespace

TExpressionTokens::TExpressionTokens(QStringView text)
{
    for (int position = 0; position < text.size();) {
        position = Append_Next(text, position);
    }
}

TExpressionTokens::TExpressionTokens(QStringView text, const TExpressionWords& words)
{
    bool is_in_word = false;

    for (int position = 0; position < text.size();) {
        const bool was_in_word = is_in_word;
        is_in_word = Is_Word_Character(text[position]);
        int next = position;

        if (is_in_word && !was_in_word && !Is_Digit(text[position])) {
            next = Append_Variable(text, position, words);
        }
        if (next == position) {
            next = Append_Next(text, position);
            is_in_word = Is_Word_Character(text[next - 1]);
        }
        position = next;
    }
}

/// Returns the position behind what it appended, as do the next ones.
int TExpressionTokens::Append_Next(QStringView text, int position)
{
    const QChar character = text[position];

    switch (character.unicode()) {
    case '+':
    case '-':
    case '*':
    case '/':
    case '^':
        Append_Operator(character.toLatin1());
        return position + 1;
    case '(':
        Append_Opening(TExpressionToken::OPEN_GROUP);
        return position + 1;
    case ')':
        Append_Closing();
        return position + 1;
    case ',':
        Append_Comma();
        return position + 1;
    default:
        return Is_Digit(character) || character == '.' ? Append_Digits(text, position) : Append_Other(text, position);
    }
}

/// Appends nothing if the word at `position` names no variable.
int TExpressionTokens::Append_Variable(QStringView text, int position, const TExpressionWords& words)
{
    int end = position + 1;
    while (end < text.size() && Is_Word_Character(text[end])) {
        ++end;
    }
    const TExpression::TVariable* const variable = words.Find(text.mid(position, end - position));

    if (variable == nullptr) {
        return position;
    }
    Append_Value(variable->value);
    return end;
}

void TExpressionTokens::Append_Value(double value)
{
    if (value < 0.0) {
        Append_Opening(TExpressionToken::OPEN_GROUP);
        Append_Operator('-');
        Append_Magnitude(-value);
        Append_Closing();
    } else {
        Append_Magnitude(value);
    }
}

void TExpressionTokens::Append_Magnitude(double magnitude)
{
    if (std::isfinite(magnitude)) {
        Append_Number(As_Written(magnitude), true);
    } else {
        Append(TExpressionToken::OTHER); // "inf" and "nan"
    }
}

void TExpressionTokens::Append(TExpressionToken::TKind kind)
{
    TExpressionToken token;

    token.kind = kind;
    d_tokens.append(token);
}

void TExpressionTokens::Append_Number(double value, bool is_valid)
{
    Append(TExpressionToken::NUMBER);
    d_tokens.last().value = value;
    d_tokens.last().is_valid = is_valid;
}

void TExpressionTokens::Append_Operator(char oper)
{
    Append(TExpressionToken::OPERATOR);
    d_tokens.last().oper = oper;
}

void TExpressionTokens::Append_Opening(TExpressionToken::TKind kind)
{
    d_open.append(d_tokens.size());
    Append(kind);
    d_tokens.last().commas_before = d_commas.size();
}

void TExpressionTokens::Append_Closing()
{
    if (!d_open.isEmpty()) {
        d_tokens[d_open.last()].closing = d_tokens.size();
        d_open.removeLast();
    }
    Append(TExpressionToken::CLOSE);
}

void TExpressionTokens::Append_Comma()
{
    d_commas.append(d_tokens.size());
    Append(TExpressionToken::COMMA);
}

int TExpressionTokens::Append_Digits(QStringView text, int position)
{
    int end = position + 1;
    while (end < text.size() && (Is_Digit(text[end]) || text[end] == '.')) {
        ++end;
    }
    const TNumber number = Read_Number(text.mid(position, end - position));

    Append_Number(number.value, number.is_valid);
    return end;
}

int TExpressionTokens::Append_Other(QStringView text, int position)
{
    const QStringView rest = text.mid(position);

    if (rest.startsWith(SUM_OF_SQUARES, Qt::CaseInsensitive)) {
        Append_Opening(TExpressionToken::SUM_OF_SQUARES);
        return position + SUM_OF_SQUARES.size();
    }
    if (rest.startsWith(SQUARE_ROOT, Qt::CaseInsensitive)) {
        Append_Opening(TExpressionToken::SQUARE_ROOT);
        return position + SQUARE_ROOT.size();
    }
    Append(TExpressionToken::OTHER);
    return position + 1;
}
