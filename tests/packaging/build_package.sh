#!/usr/bin/env bash
# build_package.sh FOLDER   builds the Debian package into FOLDER, and once more in another folder, zone, language and
# by another umask: the bytes are equal, and lintian finds no fault. Then builds a source archive without the tests
# and installs it below a prefix of its own. Half an hour.
set -euo pipefail
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)"
scratch="$(mktemp -d)"
trap 'rm -rf "$scratch"' EXIT

package="$("$root/packaging/make-package.sh" "$1")"
echo "$package: $(stat -c %s "$package") bytes"
again="$(umask 077 && mkdir "$scratch/elsewhere" && cd / && TMPDIR="$scratch/elsewhere" TZ=Asia/Tokyo LC_ALL=C LANG=de_DE.UTF-8 \
    "$root/packaging/make-package.sh" "$scratch")"
cmp "$package" "$again"

# Notes are shown too; errors and warnings stand for faults.
told="$(lintian --allow-root --pedantic --display-info "$package")"
echo "${told:-lintian has nothing to say.}"
! grep -E '^[EW]:' <<<"$told"

tar -xf "$("$root/packaging/make-source.sh" "$scratch")" -C "$scratch"
cd "$scratch"/velmora-*/
cmake --preset release -DBUILD_TESTING=OFF >"$scratch/configure.log"
cmake --build --preset release >"$scratch/build.log"
tests/packaging/test_install.py "$(command -v cmake)" build/release
