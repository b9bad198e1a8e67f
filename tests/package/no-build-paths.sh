#!/usr/bin/env bash
# SPDX-License-Identifier: MIT Fails when the installation names a folder of the machine that built it, in its
# text files or in the tool's search path.
#   no-build-paths.sh PREFIX FOLDER...
set -euo pipefail
prefix=$1
shift
patterns=()
for folder in "$@"; do
    patterns+=(-e "$folder")
done

count=$(find "$prefix" -type f | wc -l)
[ "$count" -gt 10 ]
# Binaries are not searched as a whole, because their debug information may name the sources.
if grep -rIlF "${patterns[@]}" "$prefix"; then
    exit 1
fi
while read -r file; do
    if readelf -d "$file" | grep -F "${patterns[@]}"; then
        echo "in $file"
        exit 1
    fi
done < <(find "$prefix" -type f \( -name '*.so*' -o -path '*/bin/*' \))
echo "$count files"
