#!/usr/bin/env bash
# Builds the fuzzing programs, replays their corpora and lets each of them look for inputs that fail:
#     scripts/fuzz.sh [seconds for each program, 30 by itself] [program...]
# An input that fails is left in build/fuzz/failures/. Once it is mended it belongs in the corpus,
# which every other build runs as a test.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

seconds=${1:-30}
programs=("${@:2}")
[ ${#programs[@]} -gt 0 ] || programs=(fuzz_expression fuzz_budget fuzz_csv)
declare -A longest=([fuzz_expression]=260 [fuzz_budget]=6000 [fuzz_csv]=1000)

scripts/setup.sh
cmake --preset fuzz
cmake --build --preset fuzz

export ASAN_OPTIONS=allocator_may_return_null=1
export UBSAN_OPTIONS=print_stacktrace=1
build=build/fuzz
mkdir -p "$build/failures"

Fuzz() {
    local program=$1 corpus=fuzz/corpus/$1 found=$build/found/$1
    local options=(-timeout=10 -rss_limit_mb=2048 -artifact_prefix="$build/failures/$program-" -print_final_stats=1
                   -verbosity=0)

    echo "$(find "$corpus" -type f | wc -l) inputs of the corpus"
    "$build/fuzz/$program" "${options[@]}" -runs=0 "$corpus"

    # What is found is kept for the next run, beside the corpus and not in it.
    mkdir -p "$found"
    echo "$seconds seconds"
    "$build/fuzz/$program" "${options[@]}" -max_total_time="$seconds" -max_len="${longest[$program]}" \
        -dict="fuzz/${program#fuzz_}.dict" "$found" "$corpus"
}

# Each of them keeps one core busy.
runs=()
for program in "${programs[@]}"; do
    (Fuzz "$program" 2>&1 | sed --unbuffered "s/^/$program: /") &
    runs+=($!)
done
for run in "${runs[@]}"; do
    wait "$run" || failure=1
done
exit "${failure:-0}"
