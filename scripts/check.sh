#!/usr/bin/env bash
# Holds the sources against .clang-format and .clang-tidy, and what the desktop is told of the program against the rules
# of desktops.
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

# Prints one source with the files given: their headers once, then the files, tests in a namespace of their own. Most of
# what a file costs clang-tidy is the headers of Qt and GoogleTest.
As_One_Source() {
    grep --no-filename '^#include' "$@" | sort --unique | sed 's/^#include \(.*\)/#if __has_include(\1)\n&\n#endif/'
    for file; do
        if [[ $file == tests/* && ! -f "${file%.cpp}.h" ]]; then
            printf 'namespace in_%s {\n#include "%s"\n}\n' "$(basename "$file" .cpp)" "$PWD/$file"
        else
            printf '#include "%s"\n' "$PWD/$file"
        fi
    done
}

# Names of one source may stand in the way of those of another: what counts in the end is each file by itself.
Check_Batch() {
    local batch=$1 files
    mapfile -t files < "$batch"
    As_One_Source "${files[@]}" > "$batch.cpp"
    clang-tidy --quiet --checks=-bugprone-suspicious-include "$batch.cpp" -- $flags &> "$batch.log" ||
        clang-tidy --quiet "${files[@]}" -- $flags
}
export -f As_One_Source Check_Batch

echo "Checking the sources with clang-tidy"
# In a text of its own: a command that fails as part of another one ends nothing.
flags=$(pkg-config --cflags Qt5PrintSupport Qt5Test Qt5Widgets Qt5Xml)
flags+=" -std=c++17 -fPIC -I. -Wno-everything"
for text in DOCS EXAMPLES PROGRAM PUBLISHER SAVER SCALE_FACTOR TEST_DATA YEAR; do
    flags+=" -DNORVEXA_$text=\"\""
done
export flags
batches=$data/batches
mkdir "$batches"
cp .clang-tidy "$batches"
# In turn, since neighbours are the likeliest to have names in common.
git ls-files '*.cpp' | split --number="r/$(($(git ls-files '*.cpp' | wc -l) / 12 + 1))" - "$batches/batch_"
find "$batches" -name 'batch_??' -print0 |
    xargs --null --max-procs="$(nproc)" --replace bash -c 'set -euo pipefail; Check_Batch {}'
