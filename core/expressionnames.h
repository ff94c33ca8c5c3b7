#pragma once

#include <QStringList>

/// The names that stand in an expression as variables, in the order of their first appearance and with their case kept:
/// the words between operators, commas and parentheses that begin with a letter. The two functions are no names.
/// Nothing is computed; a name need not be defined.
QStringList Expression_Names(const QString& expression);
