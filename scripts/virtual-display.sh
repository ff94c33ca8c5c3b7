#!/usr/bin/env bash
# Runs a command on a virtual display with a window manager, and ends with the command's status:
#     scripts/virtual-display.sh WIDTHxHEIGHT COMMAND [ARGUMENT]...
# The program looks the same on every machine: what the desktop around would change (its theme, its scale, its
# language) is taken out of the environment.
set -euo pipefail

if [ $# -lt 2 ]; then
    echo "usage: $0 WIDTHxHEIGHT COMMAND [ARGUMENT]..." >&2
    exit 2
fi
size=$1
shift

state=$(mktemp --directory)
display_file=$state/display
managed_file=$state/managed
helpers=()
stop_helpers() {
    [ ${#helpers[@]} -eq 0 ] || kill "${helpers[@]}" 2>/dev/null || true
    rm -rf "$state"
}

# wait_for FILE WHAT: until the file has been written
wait_for() {
    for _ in $(seq 100); do
        [ -s "$1" ] && return
        sleep 0.1
    done
    echo "The $2 did not start." >&2
    exit 1
}
trap stop_helpers EXIT

Xvfb -displayfd 3 -screen 0 "${size}x24" -dpi 96 -nolisten tcp 3>"$display_file" 2>/dev/null &
helpers+=($!)
wait_for "$display_file" "virtual display"
DISPLAY=":$(cat "$display_file")"
export DISPLAY

unset WAYLAND_DISPLAY XDG_CURRENT_DESKTOP XDG_SESSION_DESKTOP DESKTOP_SESSION KDE_FULL_SESSION GNOME_DESKTOP_SESSION_ID
unset QT_STYLE_OVERRIDE QT_QPA_PLATFORMTHEME QT_FONT_DPI QT_SCREEN_SCALE_FACTORS QT_AUTO_SCREEN_SCALE_FACTOR
export QT_QPA_PLATFORM=xcb LC_ALL=C.UTF-8 XDG_RUNTIME_DIR=$state
# Qt asks the display about windows of dialogs that have just closed, and would print each refusal.
export QT_LOGGING_RULES="qt.qpa.xcb.warning=false"

# A window that opens before the window manager is there never becomes the active one.
openbox --startup "sh -c 'echo yes > $managed_file'" >/dev/null 2>&1 &
helpers+=($!)
wait_for "$managed_file" "window manager"

"$@"
