#include "core/expressiontokens.h"

#include <QString>

#include <cmath>

namespace {

const QLatin1String SUM_OF_SQUARES("SUMSQ(");
const QLatin1String SQUARE_ROOT("SQRT(");

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
    const auto mantissa = static_cast<quint64>(std::frexp(magnitude, &exponent) * mantissas);
    const int shift = mantissa_bits - exponent;

    if (shift >= smallest_shift_to_zero) {
        return 0.0;
    }
    const TWide units =
        (static_cast<TWide>(mantissa) * static_cast<quint64>(units_of_one) + (static_cast<TWide>(1) << (shift - 1))) >>
        shift;
    return static_cast<double>(static_cast<quint64>(units)) / units_of_one;
}

/// Whether a word begins there.
bool Begins_Word(QStringView text, int position)
{
    return Is_Word_Character(text[position]) && (position == 0 || !Is_Word_Character(text[position - 1]));
}

/// The function that the text begins with, in any case; OTHER if none does.
TExpressionToken::TKind Function_At(QStringView text)
{
    // Most texts are in capitals, and a comparison without regard to case is a long one.
    for (const Qt::CaseSensitivity sensitivity : {Qt::CaseSensitive, Qt::CaseInsensitive}) {
        if (text.startsWith(SQUARE_ROOT, sensitivity)) {
            return TExpressionToken::SQUARE_ROOT;
        }
        if (text.startsWith(SUM_OF_SQUARES, sensitivity)) {
            return TExpressionToken::SUM_OF_SQUARES;
        }
    }
    return TExpressionToken::OTHER;
}

/// Digits and points as they are read one after the other.
struct TDigits
{
    bool Take(QChar character);
    bool Are_Short_Number() const;
    double Short_Number() const;

    quint64 number = 0; ///< that the digits make, without regard to points
    int count = 0;
    int points = 0;
    int before_point = 0; ///< digits in front of the last point
};

/// False for a character that is neither.
bool TDigits::Take(QChar character)
{
    if (Is_Digit(character)) {
        number = number * 10 + (character.unicode() - '0');
        ++count;
        return true;
    }
    if (character == '.') {
        before_point = count;
        ++points;
        return true;
    }
    return false;
}

bool TDigits::Are_Short_Number() const
{
    constexpr int exact_digits = 15;

    return count <= exact_digits && (points == 0 || (points == 1 && before_point > 0 && before_point < count));
}

/// The quotient of two numbers that are exact is, rounded once, what the text reads as.
double TDigits::Short_Number() const
{
    static constexpr double powers[] = {1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14};

    return static_cast<double>(number) / powers[points == 0 ? 0 : count - before_point];
}

} // namespace

TExpressionTokens::TExpressionTokens(QStringView text)
{
    Append_All(text, nullptr);
}

TExpressionTokens::TExpressionTokens(QStringView text, const TExpressionWords& words)
{
    Append_All(text, &words);
}

void TExpressionTokens::Append_All(QStringView text, const TExpressionWords* words)
{
    for (int position = 0; position < text.size();) {
        position = Append_Next(text, position, words);
    }
}

/// Returns the position behind what it appended, as do the next ones.
int TExpressionTokens::Append_Next(QStringView text, int position, const TExpressionWords* words)
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
        break;
    }
    if (Is_Digit(character) || character == '.') {
        return Append_Digits(text, position);
    }
    const int next =
        words != nullptr && Begins_Word(text, position) ? Append_Variable(text, position, *words) : position;

    return next == position ? Append_Other(text, position) : next;
}

/// Appends nothing if the word at `position` names no variable.
int TExpressionTokens::Append_Variable(QStringView text, int position, const TExpressionWords& words)
{
    int end = position + 1;
    while (end < text.size() && Is_Word_Character(text[end])) {
        ++end;
    }
    const TExpression::TVariable* const variable = words.Find(QStringView(text.data() + position, end - position));

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
    TDigits digits;
    int end = position;

    while (end < text.size() && digits.Take(text[end])) {
        ++end;
    }
    if (digits.Are_Short_Number()) {
        Append_Number(digits.Short_Number(), true);
    } else {
        bool is_valid = false;
        const double value = text.mid(position, end - position).toString().toDouble(&is_valid);

        Append_Number(value, is_valid);
    }
    return end;
}

int TExpressionTokens::Append_Other(QStringView text, int position)
{
    const TExpressionToken::TKind kind = Function_At(text.mid(position));

    switch (kind) {
    case TExpressionToken::SQUARE_ROOT:
        Append_Opening(kind);
        return position + SQUARE_ROOT.size();
    case TExpressionToken::SUM_OF_SQUARES:
        Append_Opening(kind);
        return position + SUM_OF_SQUARES.size();
    default:
        Append(kind);
        return position + 1;
    }
}
