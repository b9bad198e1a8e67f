#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Runs an example in the folder of the samples and compares what it prints, byte for byte.
#   run.sh EXPECTED PROGRAM [ARGUMENTS...]
set -euo pipefail
expected=$1
shift
output=$(mktemp)
trap 'rm -f "$output"' EXIT

cd "$(dirname "${BASH_SOURCE[0]}")/../../examples"
"$@" >"$output"
diff -u "$expected" "$output"
