#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Every example is built, run by a test and shown whole by the manual; all that the tests print is shown or compared.
#   examples.sh ROOT
set -euo pipefail
cd "$1"

failed=0 count=0
complain() {
    echo "$1"
    failed=1
}
for source in examples/*.cpp; do
    file=${source#examples/} name=$(basename "$source" .cpp)
    count=$((count + 1))
    grep -qx "\\\\include $file" docs/*.md || complain "$source: no page includes it"
    grep -qx " *$name)\?" examples/CMakeLists.txt || complain "$source: not built"
    grep -q "[ .]$name\b" tests/examples/CMakeLists.txt || complain "$source: not run"
done
for output in tests/data/examples/*; do
    grep -qF "${output##*/}" tests/examples/CMakeLists.txt || complain "$output: compared with nothing"
done
echo "$count examples"
[ "$count" -gt 0 ] && [ "$failed" -eq 0 ]
