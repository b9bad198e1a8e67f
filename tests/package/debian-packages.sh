#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Looks into the Debian packages, unpacks them into an empty folder, and builds and runs the consumer against that.
#   debian-packages.sh PACKAGES WORK SOURCE VERSION LIBDIR COMPILER
set -euo pipefail
packages=$1 work=$2 source=$3 version=$4 libdir=$5 compiler=$6
root=$work/root
rm -rf "$work"
mkdir -p "$root"

failed=0
same() {
    if ! diff --label "$1, wanted" --label found -u <(echo "$2") <(echo "$3"); then
        failed=1
    fi
}

architecture=$(dpkg --print-architecture)
expected=(libvexatracklib1 libvexatransferlib-dev libvexatransferlib1 vexagpx)
same 'packages' "$(printf '%s\n' "${expected[@]/%/_${version}_$architecture.deb}" | LC_ALL=C sort)" \
    "$(cd "$packages" && printf '%s\n' ./*.deb | sed 's|^\./||' | LC_ALL=C sort)"

# depends PACKAGE NEEDED...: checks that a package depends on these, among others.
depends() {
    local found
    found=", $(dpkg-deb -f "$packages/$1_${version}_$architecture.deb" Depends), "
    for needed in "${@:2}"; do
        if ! grep -qE ", $needed( [^,]*)?," <<<"$found"; then
            echo "$1 does not need $needed, but: $found"
            failed=1
        fi
    done
}
depends libvexatransferlib1 libc6 'libicu[0-9]+' 'libxerces-c[0-9.]+(t64)?' 'libminizip[0-9a-z]+' zlib1g 'libstdc\+\+6'
depends libvexatracklib1 "libvexatransferlib1 \(= $version\)" libc6 'libgeographic[a-z]*[0-9]+'
depends libvexatransferlib-dev "libvexatransferlib1 \(= $version\)" "libvexatracklib1 \(= $version\)" libicu-dev libxerces-c-dev libboost-dev
depends vexagpx "libvexatransferlib1 \(= $version\)" "libvexatracklib1 \(= $version\)" libc6

count=0
for package in "$packages"/*.deb "$packages"/*.ddeb; do
    dpkg-deb -x "$package" "$root"
    count=$((count + $(dpkg-deb -c "$package" | grep -c '^[-l]')))
done
same 'files that only one package holds' "$count" "$(find "$root" \( -type f -o -type l \) | wc -l)"
same 'files' "$(sed "s|^lib/|$libdir/|; s|\.1$|&.gz|; s|\.so\.1\.gz$|.so.1|; s|site-functions|vendor-completions|; /^share\/doc\//d" \
    "$source/tests/package/installed-files.txt" | LC_ALL=C sort)" \
    "$(cd "$root/usr" && find . \( -type f -o -type l \) -printf '%P\n' | grep -v -e '^share/doc/' -e '^share/lintian/' -e '^lib/debug/' |
        sed 's|Targets-[a-z]*\.cmake$|Targets-BUILDTYPE.cmake|' | LC_ALL=C sort)"
for package in "${expected[@]}"; do
    for document in copyright changelog.gz CHANGELOG.md.gz; do
        [ -s "$root/usr/share/doc/$package/$document" ] || { echo "$package has no $document" && failed=1; }
    done
done

for library in libvexatransferlib1 libvexatracklib1; do
    same "how $library is made known" 'activate-noawait ldconfig' \
        "$(dpkg-deb -I "$packages/${library}_${version}_$architecture.deb" triggers)"
done

# The debug symbols that the packages hold are those of the files in them.
if compgen -G "$packages/*.ddeb" >/dev/null; then
    for file in "$root/usr/$libdir/"libvexa{Transfer,Track}Lib.so.1 "$root/usr/bin/vexagpx"; do
        id=$(readelf -n "$file" | sed -n 's/.*Build ID: //p')
        [ -s "$root/usr/lib/debug/.build-id/${id:0:2}/${id:2}.debug" ] || {
            echo "there are no debug symbols for $file"
            failed=1
        }
    done
else
    echo 'this type of build has no debug symbols: there are no packages of them'
fi

cmake -S "$source/tests/package/consumer" -B "$work/consumer" -DCMAKE_PREFIX_PATH="$root/usr" \
    -DCMAKE_CXX_COMPILER="$compiler" >/dev/null
same 'vexaTransferLib_DIR' "$root/usr/$libdir/cmake/vexaTransferLib" \
    "$(sed -n 's/^vexaTransferLib_DIR:PATH=//p' "$work/consumer/CMakeCache.txt")"
cmake --build "$work/consumer" >/dev/null
(cd "$work/consumer" && ctest --output-on-failure)
"$root/usr/bin/vexagpx" show "$source/examples/sample.gpx"
[ "$failed" -eq 0 ]
