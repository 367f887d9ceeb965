#!/usr/bin/env bash
# Makes the Debian packages of a build, unpacks them into an empty folder and runs the game from there without a window:
# Tools/checks/packages.sh build-folder
set -euo pipefail
build=$1
for tool in dpkg-shlibdeps file; do
    command -v $tool >/dev/null || { echo "$tool (packages dpkg-dev, file) is not installed: the packages are not made"; exit 77; }
done
place=$(mktemp -d)
trap 'rm -rf "$place"' EXIT
fail() { echo "packages: $*" >&2; exit 1; }

(cd "$place" && cpack --config "$build/CPackConfig.cmake" -G DEB -B "$place/made" >log 2>&1) || fail "$(cat "$place/log")"
for package in wainroad wainroad-desktop; do
    files=("$place"/made/"${package}"_[0-9]*.deb)
    [ -e "${files[0]}" ] || fail "there is no package $package"
    dpkg-deb -x "${files[0]}" "$place/root"
    depends=$(dpkg-deb -f "${files[0]}" Depends)
    case $package in
    wainroad) [[ $depends != *[Qq]t* && $depends != *sdl* ]] || fail "the game needs a window's libraries: $depends" ;;
    *) [[ $depends == *"wainroad (="* && $depends == *qt6-qpa-plugins* && $depends == *libsdl2* ]] || fail "the window needs: $depends" ;;
    esac
done
printf 'wait 4\nshot title.png\nquit\n' >"$place/script"
WR_HEADLESS=1 WR_SCRIPT=$place/script WR_OUT=$place WR_DATA=$place/data "$place/root/usr/bin/wainroad" || fail "the game ends with status $?"
[ "$(stat -c %s "$place/title.png")" -gt 5000 ] || fail "the title is missing"
[ -e "$place/root/usr/lib/wainroad/wainroad-desktop.so" ] || fail "the window's module is missing"
