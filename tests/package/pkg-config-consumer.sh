#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Builds the consumer by pkg-config alone and runs it.
#   pkg-config-consumer.sh LIBDIR SOURCE OUTPUT COMPILER [FLAGS...]
set -euo pipefail
libdir=$1 source=$2 output=$3
shift 3

export PKG_CONFIG_PATH=$libdir/pkgconfig
read -ra flags <<<"$(pkg-config --cflags --libs vexaTransferLib)"
"$@" -std=c++17 "$source" "${flags[@]}" -o "$output"
LD_LIBRARY_PATH=$libdir "$output" "$output.gpx"
