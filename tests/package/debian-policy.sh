#!/usr/bin/env bash
# SPDX-License-Identifier: MIT Lets lintian check the Debian packages against Debian's policy: errors and
# warnings make the test fail.
#   debian-policy.sh PACKAGES [hardened [FOLDER...]]
# With "hardened" the programs must be built with hardening flags; the packages must not name the FOLDERs, which are
# those of the build.
set -euo pipefail
hardened=${2-}
shopt -s nullglob # builds of some types have no debug symbols
packages=("$1"/*.deb "$1"/*.ddeb)
[ ${#packages[@]} -gt 0 ]
found=0
suppressed=()
if dpkg-deb --contents "$1"/libvexatransferlib-dev_*.deb | grep ' \./usr/lib/pkgconfig/' >/dev/null; then
    echo 'This build installs into lib, not into a folder for its architecture: lintian is not asked about that'
    suppressed=(--suppress-tags pkg-config-unavailable-for-cross-compilation)
fi
said=$(lintian --allow-root --display-info --fail-on error,warning "${suppressed[@]}" "${packages[@]}") || found=1
[ -z "$said" ] || echo "$said"
if [ -n "$hardened" ] && grep 'hardening-no-' <<<"$said" >/dev/null; then
    echo 'not hardened'
    found=1
fi

folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
for package in "${packages[@]}"; do
    unpacked=$folder/$(basename "$package")
    dpkg-deb --raw-extract "$package" "$unpacked"
    if [ ! -s "$unpacked/DEBIAN/md5sums" ] || ! (cd "$unpacked" && md5sum --quiet --check DEBIAN/md5sums); then
        echo "the checksums of $package are wrong"
        found=1
    fi
done
for name in "${@:3}"; do
    if grep -rlF "$name" "$folder"; then
        echo "name the folder $name"
        found=1
    fi
done
exit "$found"
