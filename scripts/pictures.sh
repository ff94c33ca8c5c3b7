#!/usr/bin/env bash
# Makes every picture of the documentation anew, on a virtual display:
#     docs/manual/pictures/   the pictures of the manual; those of the first budget come from following its chapter word
#                             for word, which fails where the program shows another figure than the chapter states
#     docs/screenshots/       every page in the light and in a dark palette, and at 200 %
# Run it after a change of the window or of the manual, look at what changed, and commit it. The pictures depend on the
# program, the fonts and the libraries alone; the year in the window's last line is that of the build.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

scripts/setup.sh
cmake --preset release
cmake --build --preset release --target norvexa_tour

pictures=docs/manual/pictures
screenshots=docs/screenshots
exports=$(mktemp --directory)
trap 'rm -rf "$exports"' EXIT

# The tour needs no more of a home than the folder of its exports.
tour() {
    HOME=$exports scripts/virtual-display.sh "$size" build/release/tests/tour/norvexa_tour "$@"
}

# picture_of_page PDF PAGE DPI PICTURE [OPTION OF PDFTOPPM]...
picture_of_page() {
    pdftoppm -png -singlefile -f "$2" -l "$2" -r "$3" "${@:5}" "$1" "${4%.png}"
}

rm -rf "$pictures" "$screenshots"
mkdir -p "$pictures" "$screenshots"/{light,dark,scale-200}

size=1280x960
tour tutorial docs/manual/first-budget.md "$pictures" "$exports"
picture_of_page "$exports/first-budget.pdf" 3 100 "$pictures/first-budget-11-pdf.png"
tour manual examples "$pictures" "$exports"
picture_of_page "$exports/export.pdf" 4 100 "$pictures/export-formula.png" -x 20 -y 455 -W 1130 -H 80
tour screenshots examples "$screenshots/light"
tour dark-screenshots examples "$screenshots/dark"

size=2560x1920
QT_SCALE_FACTOR=2 tour screenshots examples "$screenshots/scale-200"

# A picture that a chapter shows and nobody takes, or the other way round
status=0
for chapter in docs/manual/*.md; do
    grep --only-matching --no-filename 'pictures/[^)]*' "$chapter" || true
done | sort --unique >"$exports/shown"
(cd docs/manual && ls pictures/*.png) | sort >"$exports/taken"
if ! diff "$exports/shown" "$exports/taken"; then
    echo "The chapters show other pictures (<) than there are (>)." >&2
    status=1
fi
exit $status
