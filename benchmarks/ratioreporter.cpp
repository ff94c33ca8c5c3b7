#include "benchmarks/ratioreporter.h"

#include "benchmarks/workloads.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>
#include <ostream>

namespace {

const char* const PROGRAM = "/program";
const char* const BARE = "/bare";

bool Is_Known(const std::string& benchmark)
{
    const auto& workloads = Workloads();
    return std::any_of(workloads.begin(), workloads.end(), [&](const TWorkload& workload) {
        return benchmark == workload.name + PROGRAM || benchmark == workload.name + BARE;
    });
}

/// The time of the processor, or the one that the benchmark took by itself.
double Seconds(const benchmark::BenchmarkReporter::Run& run)
{
    const bool is_manual = run.run_name.time_type == "manual_time";
    return (is_manual ? run.real_accumulated_time : run.cpu_accumulated_time) / static_cast<double>(run.iterations);
}

std::string Number(const char* format, double value)
{
    char text[64];
    std::snprintf(text, sizeof text, format, value);
    return text;
}

std::string Time(double seconds)
{
    if (!std::isfinite(seconds)) {
        return "-";
    }
    if (seconds < 1e-3) {
        return Number("%.4g us", seconds * 1e6);
    }
    return seconds < 1.0 ? Number("%.4g ms", seconds * 1e3) : Number("%.4g s", seconds);
}

std::string Row(const TWorkload& workload, double program, double bare)
{
    const bool is_ratio = workload.kind == TWorkload::TLimit::RATIO;
    const double ratio = program / bare;
    const double reached = is_ratio ? ratio : program;

    std::string row = "| " + workload.work + " | " + Time(program);
    row += " | " + workload.baseline + " | " + Time(bare);
    row += " | " + (std::isfinite(ratio) ? Number("%.3f", ratio) : "-");
    row += " | " + (is_ratio ? Number("%g", workload.limit) : Time(workload.limit));
    row += " | " + std::string(!std::isfinite(reached) ? "-" : reached <= workload.limit ? "yes" : "no");
    return row + " |\n";
}

} // namespace

void TRatioReporter::ReportRuns(const std::vector<Run>& runs)
{
    for (const Run& run : runs) {
        const std::string& name = run.run_name.function_name;
        if (run.error_occurred) {
            d_has_failed = true;
        } else if (!Is_Known(name)) {
            GetErrorStream() << "workloads.cpp has no row for " << name << '\n';
            d_has_failed = true;
        } else if (run.run_type == Run::RT_Iteration) {
            const double seconds = Seconds(run);
            double& fastest = d_seconds.emplace(name, seconds).first->second;
            fastest = std::min(fastest, seconds);
        }
    }
    ConsoleReporter::ReportRuns(runs);
}

void TRatioReporter::Print_Table() const
{
    std::ostream& out = GetOutputStream();

    out << "\n| workload | program | baseline | its time | ratio | limit | reached |\n"
        << "|---|---:|---|---:|---:|---:|---|\n";
    for (const TWorkload& workload : Workloads()) {
        const double program = Fastest(workload.name + PROGRAM);
        const double bare = Fastest(workload.name + BARE);
        if (!std::isnan(program) || !std::isnan(bare)) {
            out << Row(workload, program, bare);
        }
    }
    out.flush();
}

double TRatioReporter::Fastest(const std::string& benchmark) const
{
    const auto found = d_seconds.find(benchmark);
    return found != d_seconds.end() ? found->second : std::numeric_limits<double>::quiet_NaN();
}
