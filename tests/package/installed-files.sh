#!/usr/bin/env bash
# SPDX-License-Identifier: MIT Compares an installed tree with installed-files.txt: an additional internal
# header and a missing file are differences.
#   installed-files.sh PREFIX LIBDIR shared|static [without-tool] [without-track]
set -euo pipefail
prefix=$1 libdir=$2 kind=$3 without=" ${*:4} "
list=$(dirname "${BASH_SOURCE[0]}")/installed-files.txt

edits="s|^lib/|$libdir/|"
[ "$kind" = shared ] || edits+='; s|\.so$|.a|; /\.so\./d'
[[ $without != *' without-tool '* ]] || edits+='; \|/_\?vexagpx[^/]*$|d'
[[ $without != *' without-track '* ]] || edits+='; /vexaTrackLib/d'
expected=$(sed "$edits" "$list" | LC_ALL=C sort)
found=$(cd "$prefix" && find . \( -type f -o -type l \) -printf '%P\n' |
    sed 's|Targets-[a-z]*\.cmake$|Targets-BUILDTYPE.cmake|' | LC_ALL=C sort)
diff --label installed-files.txt --label "$prefix" -u <(echo "$expected") <(echo "$found")
