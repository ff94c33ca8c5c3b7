#include "core/expressionhint.h"

#include "core/expressionnames.h"

#include <QSet>

TExpressionHint Expression_Hint(const QString& expression, const std::vector<TExpression::TVariable>& variables)
{
    TExpressionHint hint;
    TExpression evaluator;
    // A function's name still stands as a name where a blank parts it from its parenthesis.
    QSet<QString> known = {QStringLiteral("sqrt"), QStringLiteral("sumsq")};

    for (const TExpression::TVariable& variable : variables) {
        evaluator.Add_Variable(variable);
        known.insert(variable.name.toCaseFolded());
    }
    for (const QString& name : Expression_Names(expression)) {
        const QString folded = name.toCaseFolded();
        if (!known.contains(folded)) {
            hint.undefined_names.append(name);
            known.insert(folded);
        }
    }
    evaluator.Evaluate(expression, &hint.is_valid);
    return hint;
}
