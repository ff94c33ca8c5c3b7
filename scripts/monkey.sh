#!/usr/bin/env bash
# Lets the monkey play with the main window, each seed in a program of its own, several at a time:
#     scripts/monkey.sh [seeds, 20 by itself] [events of each, 10000] [preset, dev]
# A seed that finds something, crashes or hangs writes its last events; it does the same again with
#     build/dev/tests/monkey/norvexa_monkey --seed N --events M --from K
# which writes the events from number K on as they come. What was written is kept in build/monkey/.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

seeds=${1:-20}
events=${2:-10000}
preset=${3:-dev}

scripts/setup.sh
cmake --preset "$preset"
cmake --build --preset "$preset" --target norvexa_monkey

export LSAN_OPTIONS=suppressions=$PWD/tests/support/leaks.supp
export monkey=build/$preset/tests/monkey/norvexa_monkey logs=build/monkey events
mkdir -p "$logs"

play() {
    local log=$logs/seed_$1.log
    if "$monkey" --seed "$1" --events "$events" >"$log" 2>&1; then
        tail -n 1 "$log"
    else
        cat "$log"
        echo "seed $1: failed"
        return 1
    fi
}
export -f play

# A monkey waits most of its time, so there are more of them than processors.
seq "$seeds" | xargs --max-procs=$((2 * $(nproc))) -I{} bash -c 'play {}'
echo "$seeds seeds, $events events each: nothing wrong"
