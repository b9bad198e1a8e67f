#!/usr/bin/env bash
# SPDX-License-Identifier: MIT Builds the consumer with pkg-config alone, in each language standard that hosts
# use, and runs it.
#   pkg-config-consumer.sh LIBDIR SOURCE OUTPUT COMPILER [FLAGS...]
# With STATIC=1 in the environment pkg-config is asked for the flags that static libraries need.
set -euo pipefail
libdir=$1 source=$2 output=$3
shift 3

export PKG_CONFIG_PATH=$libdir/pkgconfig
read -ra flags <<<"$(pkg-config ${STATIC:+--static} --cflags --libs vexaTransferLib)"
definition=-DCONSUMER_VERSION="\"$(pkg-config --modversion vexaTransferLib)\""
for standard in 17 20; do
    "$@" -std=c++$standard -DCONSUMER_STANDARD=20$standard "$definition" "$source" "${flags[@]}" -o "$output-$standard"
    LD_LIBRARY_PATH=$libdir "$output-$standard" "$output-$standard.gpx"
done
