#pragma once

#include "tests/monkey/random.h"

#include <QString>

/// What the monkey types: small pools, so that names collide, with every odd text that users are known to enter.

QString Random_Name(TRandom* random);
QString Random_Number(TRandom* random);
QString Random_Expression(TRandom* random);
QString Random_Text(TRandom* random);

/// A text that fits on a line of the journal: long ones shortened, what is not ASCII as its code.
QString Printable(const QString& text);
