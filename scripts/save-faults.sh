#!/usr/bin/env bash
# Tests saving in its long form: every fault at every call for every kind of file, and 400 kills of each. The suite of
# scripts/test.sh runs a part of it. NORVEXA_SEED=N has the kills come at other times.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

tests=(savedcalls_test savefault_test saveroom_test saverights_test savekill_test)

scripts/setup.sh
cmake --preset dev
cmake --build --preset dev --target "${tests[@]}"
for test in "${tests[@]}"; do
    NORVEXA_LONG_RUN=1 "build/dev/tests/$test"
done
