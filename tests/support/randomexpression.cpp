#include "tests/support/randomexpression.h"

#include <cmath>
#include <limits>

namespace {

const QStringList& Operands()
{
    static const QStringList operands = {"1", "2.5", ".75", "12"};
    return operands;
}

const QStringList& Tokens()
{
    static const QStringList tokens = {"1",
                                       "0",
                                       "9.5",
                                       ".",
                                       "+",
                                       "-",
                                       "*",
                                       "/",
                                       "^",
                                       "(",
                                       "(",
                                       ")",
                                       ")",
                                       ",",
                                       "SQRT(",
                                       "SQRT((",
                                       "SUMSQ(",
                                       "SUMSQ((",
                                       "E",
                                       "s",
                                       " ",
                                       "%1",
                                       "\t",
                                       "BBB",
                                       "SQRT",
                                       "-2",
                                       QString::fromUtf8("Ж"),
                                       QChar(0x0129),
                                       QString::fromUtf8("ſqrt(")};
    return tokens;
}

const QStringList& Parts_Of_Names()
{
    static const QStringList parts = {"X",
                                      "x",
                                      "L",
                                      "LX",
                                      "lx",
                                      "A",
                                      "a",
                                      "B",
                                      "_",
                                      "A_1",
                                      "1",
                                      "12",
                                      "0",
                                      "2X",
                                      "E",
                                      "S",
                                      "SQRT",
                                      "NAN",
                                      "SUMSQ",
                                      "sqrt(",
                                      "[A-X]",
                                      "[",
                                      "]",
                                      "[^1]",
                                      "(",
                                      ")",
                                      "(A|L)",
                                      "|",
                                      "||",
                                      ".",
                                      "*",
                                      "+",
                                      "?",
                                      "^",
                                      "$",
                                      "\\",
                                      "\\d",
                                      "\\b",
                                      "\\1",
                                      "{2}",
                                      "{0,3}",
                                      "{",
                                      "%1",
                                      "%2",
                                      " ",
                                      "(?=X)",
                                      "(?!X)",
                                      "(?:L)",
                                      "-",
                                      ",",
                                      "/",
                                      "5",
                                      "00",
                                      QString::fromUtf8("ß"),
                                      QString::fromUtf8("Ä"),
                                      QString::fromUtf8("ſ"),
                                      QString::fromUtf8("ı"),
                                      QString::fromUtf8("😀")};
    return parts;
}

} // namespace

TRandomExpression::TRandomExpression(unsigned int seed) : d_random(seed), d_names({"X", "l", "LX", "A_1", "_"}) {}

QString TRandomExpression::Text()
{
    QStringList tokens;

    Append_Expression(&tokens, 3);
    if (Below(2) == 0) {
        Spoil(&tokens);
    }
    return tokens.join(QString());
}

QString TRandomExpression::Jumble()
{
    QString text;

    for (int count = Below(14); count > 0; --count) {
        text += Any_Token();
    }
    return text;
}

QString TRandomExpression::Mutated(QString text)
{
    for (int count = 1 + Below(3); count > 0; --count) {
        const int begin = Below(text.size() + 1);
        const int length = Below(4);

        switch (Below(4)) {
        case 0:
            text.remove(begin, length);
            break;
        case 1:
            text.insert(Below(text.size() + 1), text.mid(begin, 4 * length));
            break;
        case 2:
            text = text.mid(begin) + text.left(begin);
            break;
        default:
            text.replace(begin, Below(2), Any_Token());
        }
    }
    return text;
}

std::vector<TExpression::TVariable> TRandomExpression::Variables()
{
    std::vector<TExpression::TVariable> variables;

    for (int count = Below(6); count > 0; --count) {
        variables.push_back({Any_Name(), Any_Value()});
    }
    return variables;
}

void TRandomExpression::Append_Expression(QStringList* tokens, int depth)
{
    static const QStringList operators = {"+", "-", "*", "/", "^"};

    if (Below(5) == 0) {
        tokens->append(Below(4) == 0 ? "+" : "-");
    }
    Append_Operand(tokens, depth);
    while (Below(5) < 2) {
        tokens->append(Any_Of(operators));
        Append_Operand(tokens, depth);
    }
}

void TRandomExpression::Append_Operand(QStringList* tokens, int depth)
{
    const int kind = depth > 0 ? Below(6) : 5;

    if (kind > 2) {
        tokens->append(Any_Of(Operands() + d_names));
        return;
    }
    Append_Group(tokens, kind, depth);
}

void TRandomExpression::Append_Group(QStringList* tokens, int kind, int depth)
{
    static const QStringList openings = {"(", "SQRT(", "SUMSQ("};

    tokens->append(openings.at(kind));
    Append_Expression(tokens, depth - 1);
    while (kind == 2 && Below(3) > 0) {
        tokens->append(",");
        Append_Expression(tokens, depth - 1);
    }
    tokens->append(")");
}

void TRandomExpression::Spoil(QStringList* tokens)
{
    for (int count = 1 + Below(2); count > 0 && !tokens->isEmpty(); --count) {
        const int index = Below(tokens->size());

        switch (Below(3)) {
        case 0:
            tokens->removeAt(index);
            break;
        case 1:
            tokens->insert(index, Any_Token());
            break;
        default:
            tokens->replace(index, Any_Token());
        }
    }
}

QString TRandomExpression::Any_Token()
{
    return Any_Of(Tokens() + d_names);
}

QString TRandomExpression::Any_Name()
{
    static const QStringList words = {"X", "x", "L", "LX", "lx", "A", "_", "A_1", "2X", "1", "SQRT", "E"};
    QString name;

    if (Below(2) == 0) {
        return Any_Of(words);
    }

    for (int count = 1 + Below(3) * Below(2); count > 0; --count) {
        name += Any_Of(Parts_Of_Names());
    }
    return name;
}

double TRandomExpression::Any_Value()
{
    static const std::vector<double> values = {0.0,
                                               -0.0,
                                               1.0,
                                               -1.5,
                                               2.0,
                                               0.25,
                                               -4.0,
                                               1e-9 / 3.0,
                                               -1e-20,
                                               5e-324,
                                               1e22,
                                               -std::numeric_limits<double>::max(),
                                               std::numeric_limits<double>::infinity(),
                                               -std::numeric_limits<double>::infinity(),
                                               std::numeric_limits<double>::quiet_NaN()};
    const int index = Below(2 * static_cast<int>(values.size()));

    return index < static_cast<int>(values.size()) ? values[static_cast<std::size_t>(index)]
                                                   : std::ldexp(Below(2'000'001) - 1'000'000, Below(40) - 30);
}
