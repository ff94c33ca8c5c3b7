#!/usr/bin/env bash
# Builds the editor and starts it. Without a display, the tour is taken on a virtual one instead: the real window is
# driven through the examples, and its pictures and figures are left in build/tour/.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

scripts/setup.sh
cmake --preset release
cmake --build --preset release

if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
    exec build/release/norvexaeditor
fi

echo "There is no display: taking the tour on a virtual one."
cmake --build --preset release --target norvexa_tour

rm -rf build/tour
mkdir -p build/tour
tour() {
    scripts/virtual-display.sh 1920x1080 build/release/tests/tour/norvexa_tour "$@"
}
tour examples examples build/tour
tour tutorial docs/manual/first-budget.md build/tour build/tour
echo "Pictures of every page and the figures (figures.txt) are in $PWD/build/tour"

for document in build/tour/*.pdf; do
    pdftoppm -png -r 75 "$document" "${document%.pdf}_page"
done
