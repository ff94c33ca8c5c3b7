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

# Where the names of one file stand in the way of those of another, they are given in two halves.
Check_Together() {
    local source complaints
    if [ $# -eq 1 ]; then
        clang-tidy --quiet "$1" -- $flags
        return
    fi
    source=$(mktemp --tmpdir="$sources" --suffix=.cpp)
    As_One_Source "$@" > "$source"
    if complaints=$(clang-tidy --quiet --checks=-bugprone-suspicious-include "$source" -- $flags 2>&1); then
        return
    fi
    if [[ $complaints == *clang-diagnostic-error* ]]; then
        Check_Together "${@:1:$# / 2}"
        Check_Together "${@:$# / 2 + 1}"
    else
        echo "$complaints"
        return 1
    fi
}
export -f As_One_Source Check_Together

echo "Checking the sources with clang-tidy"
flags=$(pkg-config --cflags Qt5PrintSupport Qt5Test Qt5Widgets Qt5Xml)
flags+=" -std=c++17 -fPIC -I. -Wno-everything"
for text in DOCS EXAMPLES PROGRAM PUBLISHER SAVER SCALE_FACTOR TEST_DATA TEST_PLUGINS YEAR; do
    flags+=" -DNORVEXA_$text=\"\""
done
sources=$data/sources
mkdir "$sources"
cp .clang-tidy "$sources"
export flags sources
# Programs, which each have a main function, and neighbours, which are the likeliest to have names in common, go different
# ways.
entry='^(int main|extern "C" int LLVM)'
{ git grep -lE "$entry" -- '*.cpp'; git grep -LE "$entry" -- '*.cpp'; } |
    awk -v groups=20 '{ group[NR % groups] = group[NR % groups] " " $0 } END { for (i in group) print group[i] }' |
    xargs --max-procs="$(nproc)" --max-lines=1 bash -c 'set -euo pipefail; Check_Together "$@"' _
