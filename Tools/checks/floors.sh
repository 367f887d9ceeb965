#!/usr/bin/env bash
# Reads the #includes of the product's rooms: a file may include its own floor and those below it, the Toolbox knows no
# game, Frame and Simulation never include each other, and Qt and SDL are named in Desktop/ alone.
# Tools/checks/floors.sh [ROOT]
set -euo pipefail
cd "${1:-$(dirname "$0")/../..}"

find . -path './build*' -prune -o \( -name '*.h' -o -name '*.cpp' \) -printf '%P\n' |
    grep -E '^(MacToolbox|Wainroad|Desktop|Tools)/' | sort | xargs awk '
BEGIN {
    n = split("MacToolbox/Base MacToolbox/Data MacToolbox/QuickDraw MacToolbox/Host MacToolbox/Managers MacToolbox/App " \
              "Wainroad/Errors Wainroad/Frame Wainroad/Simulation Wainroad/Persistence Wainroad/Journal Wainroad/Screens Wainroad/Game", order, " ")
    for (i = 1; i <= n; i++) level[order[i]] = i
}
function floorOf(path,   part) { split(path, part, "/"); return part[1] "/" part[2] }
function wrong(why) { print FILENAME ":" FNR ": " why ": " $0; bad = 1 }
/^#include/ {
    from = floorOf(FILENAME); to = $2; gsub(/[<>"]/, "", to); target = floorOf(to)
    if (to ~ /^(Q[A-Z]|SDL)/ && FILENAME !~ /^Desktop\//) wrong("Qt and SDL belong to Desktop/")
    if (to ~ /^(MacToolbox|Wainroad|Desktop)\// && !(target in level) && to !~ /^Desktop\//) wrong("no such floor")
    if (!(from in level)) next
    if ((target in level) && level[target] > level[from]) wrong("reaches up to " target)
    if (from == "Wainroad/Simulation" && target == "Wainroad/Frame") wrong("the model knows no view")
    if (from ~ /^MacToolbox/ && to ~ /^(yaml|gtest|benchmark)/) wrong("a library of the tools")
    if (to ~ /^Desktop\//) wrong("only the host includes Desktop/")
}
END { exit bad }'
echo "The floors hold."
