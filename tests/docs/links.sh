#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Every relative link of the texts leads to a file or folder, and every page is reached from the first. Code has no links:
# a lambda looks like one.
#   links.sh ROOT
set -euo pipefail
cd "$1"

failed=0 count=0
for text in *.md docs/*.md; do
    while read -r target; do
        count=$((count + 1))
        if [ ! -e "$(dirname "$text")/${target%%#*}" ]; then
            echo "$text: $target leads nowhere"
            failed=1
        fi
    done < <(sed -e '/^\\code/,/^\\endcode/d' -e '/^```/,/^```/d' "$text" |
                 grep -oP '\]\(\K(?!https?:|@ref|#)[^)]+')
done
for page in docs/*.md; do
    name=${page#docs/}
    [ "$name" = index.md ] && continue
    if ! grep -qF "($name)" docs/index.md || ! grep -qx " *${name%.md})\?" docs/CMakeLists.txt; then
        echo "$page is not in the table of docs/index.md, or not in docs/CMakeLists.txt"
        failed=1
    fi
done
echo "$count links"
[ "$count" -gt 0 ] && [ "$failed" -eq 0 ]
