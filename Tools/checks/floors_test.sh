#!/usr/bin/env bash
# The floor check finds each kind of wrong include, and lets a right one pass.
set -euo pipefail
floors=$(cd "$(dirname "$0")" && pwd)/floors.sh
root=$(mktemp -d)
trap 'rm -rf "$root"' EXIT

expect() { # expect pass|fail FILE INCLUDE
    local wanted=$1 file=$root/$2 got=pass
    mkdir -p "$(dirname "$file")"
    echo "#include $3" >"$file"
    "$floors" "$root" >/dev/null 2>&1 || got=fail
    rm "$file"
    [ "$got" = "$wanted" ] || { echo "$2 including $3: expected $wanted, got $got"; exit 1; }
}

expect pass MacToolbox/Host/A.cpp '"MacToolbox/Base/Clock.h"'
expect fail MacToolbox/Base/A.cpp '"MacToolbox/Host/Input.h"'
expect fail MacToolbox/App/A.h '"Wainroad/Errors/Errors.h"'
expect fail Wainroad/Simulation/A.cpp '"Wainroad/Frame/Panels.h"'
expect fail Wainroad/Frame/A.cpp '"Wainroad/Simulation/Model.h"'
expect fail Wainroad/Screens/A.cpp '<QWidget>'
expect fail Wainroad/Screens/A.cpp '"MacToolbox/Nowhere/A.h"'
expect pass Desktop/A.cpp '<QWidget>'
echo "The floor check bites."
