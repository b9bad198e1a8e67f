#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Runs the examples of the manual page and compares what they print; with --update writes it into their file instead.
#   examples.sh TOOL EXAMPLES SAMPLES CMAKE [--update]
set -euo pipefail
export LC_ALL=C
tool=$1 examples=$2 samples=$3 cmake=$4 update=${5-}

folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
mkdir "$folder/here" "$folder/bin"
cp "$samples"/*.gpx "$folder/here"
ln -s "$tool" "$folder/bin/vexagpx"
export PATH=$folder/bin:$PATH
cd "$folder/here"
"$cmake" -E tar cf walks.zip --format=zip sample.gpx lossy.gpx

while IFS= read -r line; do
    case $line in
    '#'*) printf '%s\n' "$line" ;;
    '$ '*)
        printf '%s\n' "$line"
        # A table ends its lines with CR and LF.
        bash -c "${line#'$ '}" </dev/null 2>&1 | tr -d '\r' || true
        ;;
    esac
done <"$examples" >"$folder/found"

if [ "$update" = --update ]; then
    cp "$folder/found" "$examples"
else
    diff -u "$examples" "$folder/found"
fi
echo "$(grep -c '^\$ ' "$examples") commands"
