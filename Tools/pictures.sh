#!/usr/bin/env bash
# Takes the pictures of docs/pictures anew: plays the scripts of docs/pictures/capture and cuts what they show.
# usage: Tools/pictures.sh [BUILD FOLDER]   (by default build; it needs fastforward, rsrc and the resource files, and Python 3)
set -euo pipefail
cd "$(dirname "$0")/.."

build=${1:-build}
pictures=docs/pictures
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# The journeys that the scripts open lie beside them. A saved game is told by its type and creator, which a checkout does not
# keep as attributes; the same bytes in a companion file do as well.
games=("Dial Rock" "Keld River" "Elbow Landing")

play() {
    mkdir -p "$work/$1"
    for game in "${games[@]}"; do
        cp "$pictures/capture/$game" "$work/$1/"
        { printf 'WRDCWRGN'; head -c 24 /dev/zero; } >"$work/$1/._$game"
    done
    WR_HEADLESS=1 WR_SCRIPT=$pictures/capture/$1.script WR_OUT=$work WR_DATA=$work/$1 WR_DATE=1848-04-01 "$build/fastforward"
}

# The whole screen, or a part of several in rows.
whole() { for name in "$@"; do Tools/art/strip.py "$pictures/$name.png" 1 0,0,512,322 "$work/$name.png"; done; }
strip() {
    local name=$1 columns=$2 part=$3
    shift 3
    Tools/art/strip.py "$pictures/$name.png" "$columns" "$part" "${@/#/$work/}"
}

for script in "$pictures"/capture/*.script; do
    play "$(basename "$script" .script)"
done

whole title letter party store month guide people food rest pace landmark talk offer river far-bank hunted last-choice \
    lost arrival score legends introduction unlock time
for name in travel-3:travel hunt-2:hunt; do
    cp "$work/${name%:*}.png" "$work/${name#*:}.png"
    whole "${name#*:}"
done
strip title-strip 2 16,98,292,232 title-{1,2,3,4}.png
strip travel-strip 2 64,9,326,86 travel-{1,2,3,4}.png
strip crossing-strip 2 64,9,326,164 crossing-{1,2,3,4}.png
strip hunt-strip 2 9,90,265,225 hunt-{1,2,3,4}.png
strip raft-strip 3 9,9,416,313 raft-{1,2,3}.png
strip journal 1 64,211,326,313 journal.png
strip keys-left 1 9,9,61,313 travel.png
strip keys-right 1 451,9,503,313 travel.png
strip status 1 329,9,448,313 travel.png

# The fonts.
for file in System Wainroad; do
    "$build/rsrc" sheet "$build/Wainroad_Wainroad.bundle/$file.rsrc" NFNT "$pictures/fonts-${file,,}.png"
done
