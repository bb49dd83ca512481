#!/usr/bin/env bash
# make-package.sh [FOLDER]   builds the Debian package into FOLDER (build/ by default) with the ordinary tools, from the
# sources as make-source.sh collects them, in a throw-away folder. Equal sources make equal bytes.
set -euo pipefail
packaging="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
mkdir -p "${1:-$packaging/../build}"
folder="$(cd "${1:-$packaging/../build}" && pwd)"

"$packaging/install-missing.sh" build window package >&2
scratch="$(mktemp -d)"
trap 'rm -rf "$scratch"' EXIT

archive="$("$packaging/make-source.sh" "$scratch")"
tar -xf "$archive" -C "$scratch"
cd "$scratch"/velmora-*/
# Where Debian's tools look for it.
cp -r packaging/debian debian
export DEB_BUILD_OPTIONS="noautodbgsym parallel=$(nproc)"
if ! dpkg-buildpackage --build=binary --no-sign >"$scratch/build.log" 2>&1; then
    tail -n 60 "$scratch/build.log" >&2
    exit 1
fi
cp "$scratch"/*.deb "$folder"
printf '%s\n' "$scratch"/*.deb | sed "s,^$scratch,$folder,"
