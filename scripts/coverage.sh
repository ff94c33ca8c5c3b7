#!/usr/bin/env bash
# Counts which lines and branches of core/, share/ and the document their own tests run, prints a table, and fails
# below 100 % of the lines or 95 % of the branches:
#     scripts/coverage.sh [option of gcovr...]
# Given "--html-details=build/coverage/lines.html", it shows the counts of each line as well.
#
# Not counted are
# - the hidden way that an exception takes out of a call, and what the compiler adds to a closing brace;
# - the failing side of an assertion: only a death test goes there, and its child aborts before it writes its counts.
#   The whole condition is left out, so that one of several parts is not counted either. GCOVR_EXCL_LINE marks a line
#   that aborts without being one.
# Run it as root: the tests that mount a disk are skipped otherwise, and the lines that only they reach are missed.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

# The tests mirror the tree: of the document are those that are called after it. What saving does under faults belongs
# to the file writer; but those processes that are killed count nothing.
tests=()
for file in tests/core/*_test.cpp tests/share/*_test.cpp tests/src/norvexa_test.cpp tests/src/norvexa_*_test.cpp \
            tests/faults/*_test.cpp; do
    [ "$file" = tests/faults/savekill_test.cpp ] || tests+=("$(basename "$file" .cpp)")
done

scripts/setup.sh
cmake --preset coverage
cmake --build --preset coverage --target "${tests[@]}"

# Counts add up from run to run.
find build/coverage -name '*.gcda' -delete
ctest --preset coverage --tests-regex "^($(IFS='|'; echo "${tests[*]}"))$"

gcovr --root . --object-directory build/coverage build/coverage/core build/coverage/tests -j "$(nproc)" \
    --filter 'core/' --filter 'share/' --filter 'src/norvexa(_file|_evaluation)?\.' \
    --exclude-throw-branches --exclude-unreachable-branches --exclude-branches-by-pattern '.*NORVEXA_ASSERT.*' \
    --csv build/coverage/counts.csv --fail-under-line 100 --fail-under-branch 95 "$@" || failure=$?

awk -F, '
    function row(name, lines, run, branches, taken) {
        printf "%-30s %5d of %5d %7.1f %% %7d of %5d %7.1f %%\n", name, run, lines, lines ? 100 * run / lines : 100,
            taken, branches, branches ? 100 * taken / branches : 100
    }
    NR == 1 { printf "%-30s %14s %9s %16s %9s\n", "file", "lines", "", "branches", ""; next }
    { row($1, $2, $3, $5, $6); lines += $2; run += $3; branches += $5; taken += $6 }
    END { row("all", lines, run, branches, taken) }' build/coverage/counts.csv
exit "${failure:-0}"
