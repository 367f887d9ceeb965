#!/usr/bin/env bash
# Holds every C++ file to .clang-format. `Tools/checks/format.sh --fix` formats what differs.
# Ends with status 77 (skipped) where clang-format 14 is missing: other versions break lines differently.
set -euo pipefail
cd "$(dirname "$0")/../.."

tool=$(command -v clang-format-14 || command -v clang-format || true)
if [ -z "$tool" ] || ! "$tool" --version | grep -q 'version 14\.'; then
    echo "clang-format 14 is missing: the format is not checked"
    exit 77
fi
sources() { find MacToolbox Wainroad Desktop Tools Bench Tests \( -name '*.cpp' -o -name '*.h' \) -print0; }
if [ "${1:-}" = --fix ]; then
    sources | xargs -0 "$tool" -i
else
    sources | xargs -0 "$tool" --dry-run --Werror
fi
