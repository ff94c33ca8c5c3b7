#pragma once

#include "core/expression.h"

#include <optional>

/// `text`, in capitals and without white space, with each variable in turn replaced by the text of its value. The name,
/// in capitals, acts as a regular expression between two word boundaries. Nothing if the text becomes too long: more
/// than 4 million characters by names that match next to nothing.
std::optional<QString> Substituted_Patterns(const QString& text, const std::vector<TExpression::TVariable>& variables);
