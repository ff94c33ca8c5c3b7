#!/usr/bin/env bash
# Builds the program with all warnings as errors and runs every test. Arguments go to CMake.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

scripts/setup.sh
cmake --preset dev "$@"
cmake --build --preset dev
ctest --preset dev
