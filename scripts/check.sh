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

# Prints one source with the files given: their headers once, then the files, each that has no header of its own in a
# namespace of its own. Most of what a test costs clang-tidy is the headers of Qt and GoogleTest.
As_One_Source() {
    grep --no-filename '^#include' "$@" | sort --unique
    for file; do
        if [ -f "${file%.cpp}.h" ]; then
            printf '#include "%s"\n' "$PWD/$file"
        else
            printf 'namespace in_%s {\n#include "%s"\n}\n' "$(basename "$file" .cpp)" "$PWD/$file"
        fi
    done
}

echo "Checking the sources with clang-tidy"
batched=('benchmarks/*.cpp' 'tests/*_test.cpp' 'tests/monkey/*.cpp' 'tests/tour/*.cpp')
git ls-files '*.cpp' "${batched[@]/#/:!}" | xargs --max-procs="$(nproc)" --max-args=4 clang-tidy -p build/dev --quiet

echo "Checking the tests and the benchmarks with clang-tidy"
batches=$data/tests
mkdir "$batches"
cp .clang-tidy "$batches"
git ls-files "${batched[@]}" | xargs --max-args=12 | while read -r -a files; do
    As_One_Source "${files[@]}" > "$batches/from_$(basename "${files[0]}")"
done
# In a text of its own: a command that fails within <( ) ends nothing.
qt_flags=$(pkg-config --cflags Qt5PrintSupport Qt5Test Qt5Widgets Qt5Xml)
read -r -a flags <<< "$qt_flags"
flags+=(-std=c++17 -fPIC -I. -Wno-everything)
for text in DOCS EXAMPLES PROGRAM PUBLISHER SAVER SCALE_FACTOR TEST_DATA; do
    flags+=("-DNORVEXA_$text=\"\"")
done
find "$batches" -name '*.cpp' -print0 | xargs --null --max-procs="$(nproc)" --replace \
    clang-tidy --quiet --checks=-bugprone-suspicious-include {} -- "${flags[@]}"
