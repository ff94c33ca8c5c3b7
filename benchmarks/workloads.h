#pragma once

#include <string>
#include <vector>

/// What a pair of benchmarks measures, and how much the program may take.
struct TWorkload
{
    enum class TLimit
    {
        RATIO,  ///< of the program's time to that of its baseline
        SECONDS ///< of the program alone
    };

    std::string name;     ///< of the benchmarks, without "/program" and "/bare"
    std::string work;     ///< what the program does
    std::string baseline; ///< what it is held against
    double limit = 0.0;
    TLimit kind = TLimit::RATIO;
};

/// Every workload, in the order of the table.
const std::vector<TWorkload>& Workloads();
