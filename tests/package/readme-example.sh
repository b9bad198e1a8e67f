#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# The C++ shown in the README is the example that the tests build, without its licence line.
#   readme-example.sh README EXAMPLE
set -euo pipefail
diff -u <(sed 1d "$2") <(sed -n '/^```cpp$/,/^```$/p' "$1" | grep -v '^```')
