#!/usr/bin/env bash
# make-source.sh [FOLDER]   writes the sources to FOLDER (build/ by default) as velmora-VERSION.tar.gz: of a checkout what
# is under version control or new, of an unpacked archive everything but build/. Equal sources make equal bytes.
set -euo pipefail
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
mkdir -p "${1:-$root/build}"
folder="$(cd "${1:-$root/build}" && pwd)"
cd "$root"

version="$(sed -nE 's/^project\(Velmora VERSION ([0-9.]+).*/\1/p' CMakeLists.txt)"
date="$(sed -nE 's/^ -- .*  (.*)$/\1/p' packaging/debian/changelog | head -n 1)"

list_files() {
    if [[ -e .git ]]; then
        git ls-files -z --cached --others --exclude-standard
    else
        find . -path ./build -prune -o \( -type f -o -type l \) -printf '%P\0'
    fi
}

list_files | LC_ALL=C sort -zu | while IFS= read -r -d '' file; do
    [[ ! -e $file ]] || printf '%s\0' "$file"
done | tar --create --format=ustar --mtime="$date" --owner=0 --group=0 --numeric-owner --mode=go=rX,u+rw \
    --transform "flags=r;s,^,velmora-$version/," --no-recursion --null --files-from=- |
    gzip -9n >"$folder/velmora-$version.tar.gz"
echo "$folder/velmora-$version.tar.gz"
