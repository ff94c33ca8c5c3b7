#!/usr/bin/env bash
# Installs the Debian packages that the program is built, tested and run with. Does nothing when all are there.
set -euo pipefail

packages=(
    # build
    g++ cmake ninja-build qtbase5-dev pkg-config
    # tests and checks
    libgtest-dev libgmock-dev clang-format clang-tidy gcovr strace poppler-utils libxml2-utils
    # benchmarks
    libbenchmark-dev libmuparser-dev
    # fuzzing
    clang libclang-rt-dev
    # the package, and what the desktop is told of the program
    dpkg-dev file lintian desktop-file-utils appstream shared-mime-info
    # the pages of the manual
    lowdown
    # the tour on a machine without a display
    xvfb openbox
    # fonts that the log, the report and the exports use
    fonts-dejavu-core fonts-liberation
)

is_installed() {
    [ "$(dpkg-query --show --showformat='${db:Status-Status}' "$1" 2>/dev/null)" = installed ]
}

missing=()
for package in "${packages[@]}"; do
    is_installed "$package" || missing+=("$package")
done
[ ${#missing[@]} -gt 0 ] || exit 0

as_root=()
if [ "$(id --user)" -ne 0 ]; then
    if ! command -v sudo >/dev/null; then
        echo "These Debian packages are missing: ${missing[*]}" >&2
        echo "Install them as root, or run this script as root or where sudo is available." >&2
        exit 1
    fi
    as_root=(sudo)
fi

echo "Installing the missing Debian packages: ${missing[*]}"
"${as_root[@]}" apt-get update --quiet --quiet
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install --quiet --quiet --yes --no-install-recommends \
    "${missing[@]}"
