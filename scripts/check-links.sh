#!/usr/bin/env bash
# Looks up every link and every picture in documents: the file must exist, and the heading or place in it, too. Takes
# Markdown and HTML files; without any, all Markdown documents of the program. Web addresses are left alone.
set -euo pipefail
export LC_ALL=C.UTF-8
shopt -s globstar nullglob

if [ $# -eq 0 ]; then
    cd "$(dirname "${BASH_SOURCE[0]}")/.."
    set -- ./*.md docs/**/*.md examples/*.md
fi

# The lines of a Markdown document that are text: no blocks of code, and nothing within backticks.
text_of() {
    awk '/^ *(```|~~~)/ { code = !code; next } !code && !/^    / { gsub(/`[^`]*`/, "`"); print }' "$1"
}

targets_of() {
    case $1 in
        *.html) grep -oE '(href|src)="[^"]*"' "$1" | sed -E 's/^[a-z]+="(.*)"$/\1/' ;;
        *) text_of "$1" | grep -oE '\]\([^)[:space:]]+|^\[[^]]+\]: +[^[:space:]]+' | sed -E 's/^\]\(|^\[[^]]+\]: +//' ;;
    esac || true
}

# What a link can name behind the #. In Markdown, headings without their signs and with dashes for blanks.
places_of() {
    case $1 in
        *.html) grep -oE ' id="[^"]*"' "$1" | sed -E 's/^ id="(.*)"$/\1/' ;;
        *)
            awk '/^ *(```|~~~)/ { code = !code } !code && /^#+ /' "$1" |
                sed -E 's/^#+ +//; s/ +$//; s/[^[:alnum:] _-]//g; s/ /-/g' | tr '[:upper:]' '[:lower:]'
            ;;
    esac || true
}

broken=0
for document in "$@"; do
    while IFS= read -r target; do
        case $target in
            http://* | https://* | mailto:*) continue ;;
        esac
        path=${target%%#*}
        place=${target#"$path"}
        file=$document
        [ -z "$path" ] || file=$(dirname "$document")/$path

        if [ ! -e "$file" ]; then
            echo "$(basename "$document"): there is no $path"
            broken=1
        elif [ -n "$place" ] && ! places_of "$file" | grep -qxF -- "${place#\#}"; then
            echo "$(basename "$document"): there is no $place in $(basename "$file")"
            broken=1
        fi
    done < <(targets_of "$document" | sort -u)
done
exit $broken
