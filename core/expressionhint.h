#pragma once

#include "core/expression.h"

#include <QStringList>

#include <vector>

/// What can be said of an expression while it is being written.
struct TExpressionHint
{
    bool is_valid = true;        ///< it has a value
    QStringList undefined_names; ///< the variables that nothing defines, each once, as first written
};

/// What a report with these variables would make of `expression`. An invalid part of a sum of squares counts as 0, so
/// that an expression may have a value in spite of undefined names. Names are compared without regard to case.
TExpressionHint Expression_Hint(const QString& expression, const std::vector<TExpression::TVariable>& variables);
