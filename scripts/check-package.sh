#!/usr/bin/env bash
# Checks the Debian package in fresh roots of Debian 12, apart from everything that this machine has installed:
#
# - On a bare system apt resolves the dependencies, the program comes up with its window, finds its fonts, and ends when
#   its window is closed.
# - On a system with a desktop's tools budgets are recognised and have their icon, the program runs for a user, and
#   removing the package leaves every file of the system as it was before.
#
#     scripts/check-package.sh [PACKAGE.deb]     the package that scripts/package.sh made, if none is given
#
# Needs to be root, about 2 GB in the folder for temporary files, and a mirror of Debian: that of DEBIAN_MIRROR, or
# debootstrap's own. The machine's installed packages stay as they are.
set -euo pipefail
[ $# -eq 0 ] || set -- "$(realpath "$1")"
cd "$(dirname "${BASH_SOURCE[0]}")/.."

fail() {
    echo "check-package.sh: $*" >&2
    exit 1
}

[ "$(id --user)" -eq 0 ] || fail "run this as root: it makes root file systems and starts programs in them."
for tool in debootstrap Xvfb openbox xdotool; do
    command -v "$tool" >/dev/null ||
        fail "$tool is missing; install it with: apt-get install debootstrap xvfb openbox xdotool"
done
package=${1:-$(echo build/release/norvexaeditor_*.deb)}
[ -f "$package" ] || fail "there is no package '$package'; make one with scripts/package.sh"

# The display is this machine's, so that no package of its brings along what the program should depend on.
[ -n "${NORVEXA_VIRTUAL_DISPLAY:-}" ] ||
    NORVEXA_VIRTUAL_DISPLAY=yes exec scripts/virtual-display.sh 1280x1024 scripts/check-package.sh "$package"

suite=bookworm
mirror=()
[ -z "${DEBIAN_MIRROR:-}" ] || mirror=("$DEBIAN_MIRROR")
version=$(dpkg-deb --field "$package" Version)
title="Norvexa Editor - Version ${version%-*}"
dependencies=$(dpkg-deb --field "$package" Depends)
examples=/usr/share/doc/norvexaeditor/examples

work=$(mktemp --directory)
bare=$work/bare
desktop=$work/desktop
program=

clean_up() {
    [ -z "$program" ] || kill "$program" 2>/dev/null || true
    wait
    local folder
    for folder in "$bare" "$desktop"; do
        leave_root "$folder"
    done
    rm --recursive --force --one-file-system "$work"
}

# in_root ROOT COMMAND...: runs a command as the root user of a fresh root
in_root() {
    local root=$1
    shift
    env --ignore-environment PATH=/usr/sbin:/usr/bin:/sbin:/bin LC_ALL=C.UTF-8 DEBIAN_FRONTEND=noninteractive \
        chroot "$root" "$@" </dev/null
}

# install_in ROOT PACKAGE...: without recommended packages, so that nothing but the dependencies can help the program
install_in() {
    local root=$1
    shift
    in_root "$root" apt-get install --quiet --quiet --yes --no-install-recommends "$@" >"$work/apt.log" 2>&1 ||
        { cat "$work/apt.log" >&2; fail "apt could not install $*"; }
}

count_packages() {
    in_root "$1" dpkg-query --show | wc --lines
}

enter_root() {
    mount -t proc proc "$1/proc"
    mkdir --parents "$1/tmp/.X11-unix"
    mount --bind /tmp/.X11-unix "$1/tmp/.X11-unix"
    in_root "$1" apt-get update --quiet --quiet
}

leave_root() {
    local folder
    for folder in tmp/.X11-unix proc; do
        ! mountpoint --quiet "$1/$folder" || umount "$1/$folder"
    done
}

make_roots() {
    debootstrap --variant=minbase "$suite" "$bare" "${mirror[@]}" >"$work/debootstrap.log" ||
        { cat "$work/debootstrap.log" >&2; fail "debootstrap could not make the root"; }
    # Services of installed packages shall not start.
    printf '#!/bin/sh\nexit 101\n' >"$bare/usr/sbin/policy-rc.d"
    chmod +x "$bare/usr/sbin/policy-rc.d"
    in_root "$bare" useradd --create-home tester
    cp "$package" "$bare/package.deb"
    cp --archive "$bare" "$desktop"
}

# run_program ROOT: the window comes up, and closing it ends the program without an error or a word
run_program() {
    local window status=0
    install --directory --owner=1000 --group=1000 --mode=700 "$1/run/tester"
    env --ignore-environment PATH=/usr/sbin:/usr/bin LC_ALL=C.UTF-8 HOME=/home/tester USER=tester DISPLAY="$DISPLAY" \
        XDG_RUNTIME_DIR=/run/tester chroot --userspec=tester "$1" norvexaeditor >"$work/program.log" 2>&1 </dev/null &
    program=$!

    window=$(timeout 30 xdotool search --sync --onlyvisible --name "^$title\$") ||
        { cat "$work/program.log" >&2; fail "no window with the title '$title' came up"; }
    sleep 3
    kill -0 "$program" 2>/dev/null || { cat "$work/program.log" >&2; fail "the program ended by itself"; }
    echo "  window: $(xdotool getwindowname "$window")," \
        "$(xdotool getwindowgeometry "$window" | sed -n 's/ *Geometry: //p') pixels"

    xdotool windowactivate --sync "$window" key alt+F4
    for _ in $(seq 100); do
        kill -0 "$program" 2>/dev/null || break
        sleep 0.1
    done
    ! kill -0 "$program" 2>/dev/null || fail "the program still runs although its window was closed"
    wait "$program" || status=$?
    program=
    [ "$status" -eq 0 ] || fail "the program ended with status $status"
    [ ! -s "$work/program.log" ] || { cat "$work/program.log" >&2; fail "the program complained"; }
    echo "  closed: exit status 0, nothing written to the terminal"
    rm --recursive "$1/run/tester"
}

# expect WHAT WANTED SEEN
expect() {
    [ "$2" = "$3" ] || fail "$1 is '$3' instead of '$2'"
    echo "  $1: $3"
}

# every_file ROOT: one line with owner, mode and content for each file, but for what apt and dpkg know of packages, and
# the caches and logs of theirs
every_file() {
    in_root "$1" find / -xdev \
        \( -path /proc -o -path /sys -o -path /dev -o -path /tmp -o -path /run -o -path /package.deb \
        -o -path /var/lib/apt -o -path /var/cache/apt -o -path '/var/lib/dpkg/status*' -o -path '/var/lib/dpkg/lock*' \
        -o -path /var/lib/dpkg/triggers -o -path /var/log/apt -o -path /var/log/dpkg.log \) -prune \
        -o -type f -printf '%p %M %u:%g ' -exec sha256sum {} \; \
        -o -printf '%p %M %u:%g %l\n' | sort
}

check_bare_system() {
    echo "On a bare system:"
    enter_root "$bare"
    local packages_before
    packages_before=$(count_packages "$bare")
    install_in "$bare" /package.deb
    echo "  installed: norvexaeditor $version and $(($(count_packages "$bare") - packages_before - 1)) dependencies"
    run_program "$bare"
    expect "font of the exports" "DejaVu Sans" "$(in_root "$bare" fc-match --format '%{family}' Verdana)"
    expect "font of the log" "Liberation Mono" "$(in_root "$bare" fc-match --format '%{family}' 'Courier New')"
    leave_root "$bare"
    rm --recursive --force --one-file-system "$bare"
}

# attribute FILE ATTRIBUTE: what the desktop's libraries say of a file
attribute() {
    in_root "$desktop" gio info --attributes="$2" "$1" | sed -n "s/^ *$2: //p"
}

check_recognition() {
    local type=application/x-norvexa+xml example name
    for example in "$desktop$examples"/*.norvexa; do
        name=$(basename "$example")
        expect "type of $name" "$type" "$(attribute "$examples/$name" standard::content-type)"
        cp "$example" "$desktop/tmp/budget"
        expect "type of the same by its content" "$type" "$(attribute /tmp/budget standard::content-type)"
    done
    expect "icon of $name" application-x-norvexa+xml \
        "$(attribute "$examples/$name" standard::icon | cut --delimiter=, --fields=1)"
    for name in norvexaeditor application-x-norvexa+xml; do
        grep --quiet --text --fixed-strings "$name" "$desktop/usr/share/icons/hicolor/icon-theme.cache" ||
            fail "the cache of the icon theme has no icon $name"
        echo "  in the cache of the icon theme: $name"
    done
    in_root "$desktop" desktop-file-validate /usr/share/applications/norvexaeditor.desktop
    rm "$desktop/tmp/budget"
}

check_desktop_system() {
    echo "On a system with a desktop's tools:"
    enter_root "$desktop"
    in_root "$desktop" apt-get satisfy --quiet --quiet --yes --no-install-recommends "$dependencies" \
        >"$work/apt.log" 2>&1 || { cat "$work/apt.log" >&2; fail "apt could not install the dependencies"; }
    install_in "$desktop" desktop-file-utils gtk-update-icon-cache hicolor-icon-theme libglib2.0-bin

    every_file "$desktop" >"$work/before"
    install_in "$desktop" /package.deb
    echo "  installed: norvexaeditor $version"
    check_recognition
    run_program "$desktop"

    in_root "$desktop" apt-get purge --quiet --quiet --yes norvexaeditor >"$work/apt.log" 2>&1 ||
        { cat "$work/apt.log" >&2; fail "apt could not remove the package"; }
    every_file "$desktop" >"$work/after"
    diff "$work/before" "$work/after" || fail "removing the package left the differences above"
    echo "  removed: all $(wc --lines <"$work/after") files and folders are as they were before"
    leave_root "$desktop"
}

trap clean_up EXIT
echo "Checking $package on $suite"
make_roots
check_bare_system
check_desktop_system
echo "The package installs, starts and removes cleanly."
