#!/usr/bin/env bash
# Holds the sources against .clang-format and .clang-tidy. Needs the build of scripts/test.sh.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

scripts/setup.sh

echo "Checking the format"
git ls-files '*.h' '*.cpp' | xargs clang-format --dry-run --Werror

echo "Checking the sources with clang-tidy"
git ls-files '*.cpp' | xargs --max-procs="$(nproc)" --max-args=4 clang-tidy -p build/dev --quiet
