#!/usr/bin/env bash
# SPDX-License-Identifier: MIT Compiles each installed header alone, in the oldest language standard that
# hosts use.
#   headers-alone.sh PREFIX LIBDIR COMPILER
set -euo pipefail
root=$1/include/vexaTransferLib libdir=$2 compiler=$3

export PKG_CONFIG_PATH=$libdir/pkgconfig
read -ra flags <<<"$(pkg-config --cflags vexaTransferLib)"
failed=0 count=0
while read -r header; do
    count=$((count + 1))
    if ! "$compiler" -x c++ -std=c++17 -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror \
        "${flags[@]}" -fsyntax-only - <<<"#include <$header>"; then
        echo "does not compile alone: $header"
        failed=1
    fi
done < <(cd "$root" && find . -name '*.h' -printf '%P\n')
echo "$count headers"
[ "$count" -gt 0 ] && [ "$failed" -eq 0 ]
