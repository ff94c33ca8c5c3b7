#pragma once

#include "src/norvexa.h"

#include <vector>

/// A budget of any size as a laboratory might have it: each component has identifiers, each item a replacement item for
/// each of them, and variables and report groups come along.
class TLargeBudget : public TNorvexa
{
public:
    static constexpr int IDENTIFIERS = 2; ///< of each component

    TLargeBudget(int components, int items);

    std::vector<TVariable> variables;
    std::vector<TGroup> groups;
    TInputData input_data;
};
