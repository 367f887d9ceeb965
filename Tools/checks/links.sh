#!/usr/bin/env bash
# Every file that a page of the repository links to or shows is there, and so is every heading of its own that it links to.
# usage: links.sh [FOLDER]
set -euo pipefail
cd "${1:-$(dirname "$0")/../..}"

faults=0
while IFS= read -r page; do
    folder=$(dirname "$page")
    anchors=$(sed -n 's/^##* //p' "$page" | tr '[:upper:]' '[:lower:]' | sed 's/[^a-z0-9 _-]//g; s/ /-/g')
    while IFS= read -r link; do
        case $link in
        http*) continue ;;
        '#'*) grep -qxF -- "${link#\#}" <<<"$anchors" && continue ;;
        *) [ -e "$folder/${link%%#*}" ] && continue ;;
        esac
        echo "$page: $link leads nowhere"
        faults=$((faults + 1))
    done < <(grep -o '](\([^)]*\))' "$page" | sed 's/^](//; s/)$//')
done < <(find . -name '*.md' -not -path './build*' -not -path './.git/*')
[ "$faults" -eq 0 ]
