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

display_file=$(mktemp)
helpers=()
stop_helpers() {
    [ ${#helpers[@]} -eq 0 ] || kill "${helpers[@]}" 2>/dev/null || true
    rm -f "$display_file"
}
trap stop_helpers EXIT

Xvfb -displayfd 3 -screen 0 1920x1080x24 -nolisten tcp 3>"$display_file" 2>/dev/null &
helpers+=($!)
for _ in $(seq 100); do
    [ -s "$display_file" ] && break
    sleep 0.1
done
[ -s "$display_file" ] || { echo "The virtual display did not start." >&2; exit 1; }
DISPLAY=":$(cat "$display_file")"
export DISPLAY

openbox >/dev/null 2>&1 &
helpers+=($!)

rm -rf build/tour
mkdir -p build/tour
build/release/tests/tour/norvexa_tour examples build/tour

for document in build/tour/*.pdf; do
    pdftoppm -png -r 75 "$document" "${document%.pdf}_page"
done
