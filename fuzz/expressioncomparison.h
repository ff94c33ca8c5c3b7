#pragma once

#include "core/expression.h"

#include <QString>

#include <vector>

/// An expression with the variables that it is evaluated with.
struct TExpressionCase
{
    QString text;
    std::vector<TExpression::TVariable> variables;
};

/// What came of evaluating a case by TExpression and by the literal rules.
struct TComparison
{
    bool is_comparable = false; ///< false where the rules cannot be followed to the letter; then nothing else is set
    bool is_equal = false;      ///< the same flag and, bit for bit, the same value in every step
    bool is_valid = false;
    bool is_endless = false; ///< by the literal rules; equal results are invalid then
    double seconds = 0.0;    ///< of the processor that TExpression took for the evaluation
};

/// Compares evaluation, scan, functions and closing parentheses. Texts and names that the literal rules would take too
/// long for, or that no longer fit their recursion, are not comparable.
TComparison Compare(const TExpressionCase& expression_case);

/// The case and both its results in one readable text.
QString Description(const TExpressionCase& expression_case);
