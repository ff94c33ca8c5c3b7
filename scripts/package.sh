#!/usr/bin/env bash
# Builds the release, makes the archive and the Debian package in build/release/, and holds the latter against lintian.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

scripts/setup.sh
cmake --preset release
cmake --build --preset release

rm -f build/release/norvexaeditor-*.tar.gz build/release/norvexaeditor_*.deb
cpack --preset release

echo "Checking the package with lintian"
lintian --fail-on error,warning build/release/norvexaeditor_*.deb
