#!/usr/bin/env bash
# Holds the sources against .clang-format and .clang-tidy, and what the desktop is told of the program against the rules
# of desktops. Needs the build of scripts/test.sh.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

scripts/setup.sh

echo "Checking the desktop entry, the MIME type and the metainfo"
desktop-file-validate packaging/norvexaeditor.desktop
xmllint --noout packaging/*.xml
data=$(mktemp --directory)
trap 'rm --recursive "$data"' EXIT
install -D packaging/norvexaeditor.mime.xml "$data/mime/packages/norvexaeditor.xml"
# It writes what is wrong with a type, and succeeds all the same.
complaints=$(XDG_DATA_HOME=$data update-mime-database "$data/mime" 2>&1)
[ -z "$complaints" ] || { echo "$complaints" >&2; exit 1; }
appstreamcli validate --no-net --no-color packaging/norvexaeditor.metainfo.xml

echo "Checking the format"
git ls-files '*.h' '*.cpp' | xargs clang-format --dry-run --Werror

echo "Checking the sources with clang-tidy"
git ls-files '*.cpp' | xargs --max-procs="$(nproc)" --max-args=4 clang-tidy -p build/dev --quiet
