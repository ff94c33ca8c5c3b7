// Evaluates expressions and compares each result with that of the literal rules, where these can be followed. The first
// line of the input is the expression, the others are variables: "name=value".

#include "fuzz/expressioncomparison.h"
#include "fuzz/require.h"

#include <QStringList>

#include <cstddef>
#include <cstdint>

namespace {

constexpr int MOST_VARIABLES = 8;

TExpression::TVariable Variable(const QString& line)
{
    const int sign = line.lastIndexOf('=');

    return sign < 0 ? TExpression::TVariable{line, 1.0}
                    : TExpression::TVariable{line.left(sign), line.mid(sign + 1).toDouble()};
}

TExpressionCase Case(const QString& input)
{
    QStringList lines = input.split('\n');
    TExpressionCase expression_case = {lines.takeFirst(), {}};

    for (const QString& line : lines.mid(0, MOST_VARIABLES)) {
        expression_case.variables.push_back(Variable(line));
    }
    return expression_case;
}

/// An evaluation ends, whatever its result is.
void Evaluate(const TExpressionCase& expression_case)
{
    TExpression expression;

    for (const TExpression::TVariable& variable : expression_case.variables) {
        expression.Add_Variable(variable);
    }
    expression.Evaluate(expression_case.text, nullptr);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const TExpressionCase expression_case =
        Case(QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<int>(size)));
    const TComparison comparison = Compare(expression_case);

    if (!comparison.is_comparable) {
        Evaluate(expression_case);
    } else if (!comparison.is_equal) {
        Require(false, Description(expression_case));
    }
    return 0;
}
