#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

/// Prints what Google Benchmark prints by itself and, when all have run, how the program did beside its baselines.
class TRatioReporter : public benchmark::ConsoleReporter
{
public:
    TRatioReporter() : ConsoleReporter(OO_Tabular) {}

    void ReportRuns(const std::vector<Run>& runs) override;

    /// Prints a table in Markdown of the workloads that were run, each with the fastest of its repetitions: whatever
    /// else the machine does only adds to a time.
    void Print_Table() const;

    /// Whether a benchmark failed, or has no row in the table of workloads.
    bool Has_Failed() const { return d_has_failed; }

private:
    /// The seconds that one iteration takes; not a number if it was not measured.
    double Fastest(const std::string& benchmark) const;

    std::map<std::string, double> d_seconds; ///< by the name of the benchmark
    bool d_has_failed = false;
};
