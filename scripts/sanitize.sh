#!/usr/bin/env bash
# Runs every test under the address and undefined-behaviour sanitizers.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

scripts/setup.sh
cmake --preset asan
cmake --build --preset asan
ctest --preset asan
