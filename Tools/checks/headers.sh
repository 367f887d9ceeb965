#!/usr/bin/env bash
# Every header compiles alone: Tools/checks/headers.sh COMPILER
set -euo pipefail
cd "$(dirname "$0")/../.."
compiler=${1:-c++}

find MacToolbox Wainroad Tools Tests -name '*.h' -not -path 'Tests/Desktop/*' | sort | # those need the flags of Qt
    xargs -P "$(nproc)" -I{} sh -c '"$1" -std=c++20 -fsyntax-only -Wall -Wextra -I. -x c++ -include "$2" /dev/null || { echo "does not compile alone: $2"; exit 255; }' sh "$compiler" {}
echo "Every header compiles alone."
