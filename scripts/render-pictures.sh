#!/bin/sh
# Renders the program's pictures: each SVG of resources/ to the PNG files beside it. Run it after changing an SVG, and
# commit both. The output depends on nothing but the SVG and the renderer.
#
# The pictures share one style. Strokes have round caps and joins and are 2 units wide, 12 in the program icon of 256.
# The colours are mid-tones that stand out from white and from the dark grey of dark themes: slate #6f8396 for the
# frame of a picture, blue #2f8fd8 for its subject, amber #c07a10, green #2f9e4f and red #e0483e for what is edited,
# added and removed. The program icon brings its own background, the icon of budget files its own paper, #f2f7fb.
set -eu

if ! command -v rsvg-convert >/dev/null; then
    echo "render-pictures.sh: rsvg-convert is missing; install it with: sudo apt-get install librsvg2-bin" >&2
    exit 1
fi

cd "$(dirname "$0")/../resources"

# render SVG PNG WIDTH
render() {
    rsvg-convert --width "$3" --keep-aspect-ratio --output "$2.png" "$1.svg"
}

# render_pair PICTURE WIDTH: the picture at its own size, and at twice that for screens of high resolution
render_pair() {
    render "$1" "$1" "$2"
    render "$1" "$1@2x" "$(($2 * 2))"
}

for picture in new open save save_as components variables group report log; do
    render_pair "actions/$picture" 32
done
for picture in add remove edit; do
    render_pair "gui/$picture" 16
done
render_pair images/logo 100

# The sizes for the icon theme. The small ones have drawings of their own with less detail.
render icons/norvexaeditor icons/norvexaeditor 256
for icon in norvexaeditor budget; do
    for size in 16 24 32; do
        render "icons/$icon-$size" "icons/$icon-$size" "$size"
    done
    for size in 48 64 128 256; do
        render "icons/$icon" "icons/$icon-$size" "$size"
    done
done
