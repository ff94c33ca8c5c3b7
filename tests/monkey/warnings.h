#pragma once

#include <QStringList>

/// What Qt warns of: a program that uses it wrongly is told in this way.
namespace Warnings {

/// From here on nothing is written but what ends the program.
void Catch();

/// The warnings since the last call, without those that are about the platform or that a user causes at will.
QStringList Take();

} // namespace Warnings
