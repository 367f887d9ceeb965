#!/usr/bin/env bash
# Installs a build into an empty folder and runs the game from there without a window: Tools/checks/install.sh build-folder
# Then looks at what the desktop is given: entry, metainfo, manual page, icons.
set -euo pipefail
build=$1
place=$(mktemp -d)
trap 'rm -rf "$place"' EXIT
fail() { echo "install: $*" >&2; exit 1; }

cmake --install "$build" --prefix "$place" >"$place/log" || fail "$(cat "$place/log")"
printf 'wait 4\nshot title.png\nmenudump menus.txt\nquit\n' >"$place/script"
WR_HEADLESS=1 WR_SCRIPT=$place/script WR_OUT=$place WR_DATA=$place/data "$place/bin/wainroad" || fail "the installed game ends with status $?"
[ "$(stat -c %s "$place/title.png")" -gt 5000 ] || fail "the title is missing"
grep -q Quit "$place/menus.txt" || fail "the menus are missing"
[ -e "$place/data/Wainroad Settings" ] || fail "the settings are missing"

if command -v man >/dev/null; then
    words=$(MANWIDTH=80 LC_ALL=C.UTF-8 man --warnings -E UTF-8 -l "$place/share/man/man6/wainroad.6" 2>&1 >/dev/null)
    [ -z "$words" ] || fail "manual page: $words"
fi
for variable in WR_HEADLESS WR_SCRIPT WR_OUT WR_MUTE WR_DATE WR_DATA; do
    grep -q "$variable" "$place/share/man/man6/wainroad.6" || fail "the manual page does not name $variable"
done
[ -e "$place/lib/wainroad/wainroad-desktop.so" ] || { echo "The window is not built: the rest is not looked at."; exit 0; }

# The module is found: what is missing now is a display.
status=0
words=$(env -u DISPLAY -u WAYLAND_DISPLAY -u WR_HEADLESS -u QT_QPA_PLATFORM WR_DATA="$place/data" "$place/bin/wainroad" 2>&1) || status=$?
[ "$status" -eq 1 ] && [[ $words == *display* ]] || fail "without a display: status $status, $words"
id=org.wainroad.Wainroad
if command -v desktop-file-validate >/dev/null; then
    words=$(desktop-file-validate "$place/share/applications/$id.desktop")
    [ -z "$words" ] || fail "$words"
fi
if command -v appstreamcli >/dev/null; then
    appstreamcli validate --no-net "$place/share/metainfo/$id.metainfo.xml" || fail "metainfo"
fi
for size in 16 24 32 48 64 128 256 512; do
    icon=$place/share/icons/hicolor/${size}x${size}/apps/$id.png
    # Width and height stand at byte 16 of a PNG file, four bytes each, big-endian.
    read -r width height < <(od -A n -t u4 --endian=big -j 16 -N 8 "$icon")
    [ "$width" -eq "$size" ] && [ "$height" -eq "$size" ] || fail "$icon is $width by $height"
done
