#include "fuzz/expressioncomparison.h"

#include "tests/support/expressionvariables.h"
#include "tests/support/literalexpression.h"

#include <QStringList>

#include <algorithm>
#include <ctime>
#include <sstream>

namespace {

using TVariables = std::vector<TExpression::TVariable>;

constexpr int LONGEST_TEXT = 200;
constexpr int LONGEST_NAME = 24;
// Values have up to 327 characters, and a name may be met at every position.
constexpr int LONGEST_SUBSTITUTED_TEXT = 1600;
// Of names with repetitions TExpression meets only those whose search is quick.
constexpr int LONGEST_REPETITION = 12;
constexpr int LONGEST_REPEATED_TEXT = 500;
constexpr int UNTOUCHED = -77;

bool Is_Comparable(const TExpression::TVariable& variable, int text_length)
{
    const QString& name = variable.name;
    const auto digits = std::count_if(name.begin(), name.end(), [](QChar character) { return character.isDigit(); });

    if (!name.contains('{') && !name.contains(',')) {
        return name.size() <= LONGEST_NAME && text_length <= LONGEST_SUBSTITUTED_TEXT;
    }
    return name.size() <= LONGEST_REPETITION && digits <= 2 && text_length <= LONGEST_REPEATED_TEXT;
}

/// The text that is scanned. False where it becomes too long on the way.
bool Substitute(const QString& text, const TVariables& variables, QString* scanned)
{
    if (text.isEmpty()) {
        return true; // Nothing is substituted, not even for names that match an empty text.
    }
    *scanned = Literal_Working_Text(text);
    for (const TExpression::TVariable& variable : variables) {
        if (!Is_Comparable(variable, scanned->size())) {
            return false;
        }
        *scanned = Literal_Substituted(*scanned, variable);
    }
    return scanned->size() <= LONGEST_SUBSTITUTED_TEXT;
}

/// The flag is the opposite of what is expected beforehand, so that it must be written.
TLiteralResult Evaluated(const TExpression& expression, const QString& text, bool expected)
{
    TLiteralResult result = {-1.0, !expected};

    result.value = expression.Evaluate(text, &result.valid);
    return result;
}

bool Functions_Are_Equal(const QString& text)
{
    int expected_length = UNTOUCHED;
    int length = UNTOUCHED;
    const TLiteralResult expected = Literal_Process_Function(text, &expected_length);
    TLiteralResult result = {-1.0, !expected.valid};

    result.value = TExpression().Process_Function(text, &length, &result.valid);
    return result == expected && length == expected_length;
}

bool Closing_Braces_Are_Equal(const QString& text)
{
    for (int start = text.indexOf('('); start >= 0; start = text.indexOf('(', start + 1)) {
        for (const int from : {start, start + 1}) {
            if (TExpression().Find_Closing_Brace(text, from) != Literal_Find_Closing_Brace(text, from)) {
                return false;
            }
        }
    }
    return true;
}

} // namespace

TComparison Compare(const TExpressionCase& expression_case)
{
    const TExpression expression = Expression_With(expression_case.variables);
    TComparison comparison;
    QString scanned;

    comparison.is_comparable = expression_case.text.size() <= LONGEST_TEXT &&
                               Substitute(expression_case.text, Variables_Of(expression), &scanned);
    if (!comparison.is_comparable) {
        return comparison;
    }
    const TLiteralResult expected = Literal_Process_Expression(scanned, &comparison.is_endless);
    const std::clock_t start = std::clock();
    const TLiteralResult result = Evaluated(expression, expression_case.text, expected.valid);

    comparison.seconds = static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
    comparison.is_valid = expected.valid;
    comparison.is_equal = result == expected && Functions_Are_Equal(scanned) && Closing_Braces_Are_Equal(scanned);
    return comparison;
}

QString Description(const TExpressionCase& expression_case)
{
    const TExpression expression = Expression_With(expression_case.variables);
    const TLiteralResult literal = Literal_Evaluate(expression_case.text, Variables_Of(expression));
    std::ostringstream results;
    QStringList lines = {"expression: " + expression_case.text};

    for (const TExpression::TVariable& variable : expression_case.variables) {
        lines.append("variable: " + variable.name + " = " + QString::number(variable.value, 'g', 17));
    }
    results << "literally: ";
    PrintTo(literal, &results);
    results << "\nevaluated: ";
    PrintTo(Evaluated(expression, expression_case.text, literal.valid), &results);
    lines.append(QString::fromStdString(results.str()));
    return lines.join('\n');
}
