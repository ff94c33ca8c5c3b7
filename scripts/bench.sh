#!/usr/bin/env bash
# Measures the program beside its baselines and prints a table of the ratios:
#     scripts/bench.sh [option of Google Benchmark...]     all by itself; --benchmark_filter=Expressions/ only these
#     scripts/bench.sh --smoke                             each once, to see that all still run
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

# Program and baseline in turn, several times: a machine is not equally fast all the time.
options=(--benchmark_repetitions=5 --benchmark_enable_random_interleaving=true --benchmark_min_time=0.2)
if [ "${1:-}" = --smoke ]; then
    options=(--benchmark_min_time=0)
    shift
fi

scripts/setup.sh
cmake --preset bench
cmake --build --preset bench
build/release/benchmarks/norvexa_benchmarks "${options[@]}" "$@"
