#pragma once

#include "core/expression.h"

#include <vector>

inline TExpression Expression_With(const std::vector<TExpression::TVariable>& variables)
{
    TExpression expression;

    for (const TExpression::TVariable& variable : variables) {
        expression.Add_Variable(variable);
    }
    return expression;
}

/// In the order of the substitution.
inline std::vector<TExpression::TVariable> Variables_Of(const TExpression& expression)
{
    std::vector<TExpression::TVariable> variables;

    variables.reserve(static_cast<size_t>(expression.Variable_Count()));
    for (int index = 0; index < expression.Variable_Count(); ++index) {
        variables.push_back(expression.Variable(index));
    }
    return variables;
}
