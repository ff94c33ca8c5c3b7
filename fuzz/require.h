#pragma once

#include <QString>

#include <cstdio>
#include <cstdlib>

/// Ends the program with `what` unless `condition` holds, so that the input at hand is kept as one that fails.
inline void Require(bool condition, const QString& what)
{
    if (!condition) {
        std::fprintf(stderr, "%s\n", qUtf8Printable(what));
        std::abort();
    }
}
