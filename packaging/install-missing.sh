#!/usr/bin/env bash
# install-missing.sh PURPOSE…   installs the Debian packages that dependencies.txt lists for these purposes
# and that are not there yet. Asks the package manager for nothing when all are there.
set -euo pipefail

list="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)/dependencies.txt"

wanted=()
for purpose in "$@"; do
    mapfile -t packages < <(awk -v purpose="$purpose" '$1 == purpose { for (i = 2; i <= NF; ++i) print $i }' "$list")
    if [[ ${#packages[@]} -eq 0 ]]; then
        echo "install-missing.sh: dependencies.txt has no purpose '$purpose'" >&2
        exit 2
    fi
    wanted+=("${packages[@]}")
done
[[ ${#wanted[@]} -gt 0 ]] || exit 0

if ! command -v dpkg-query >/dev/null; then
    echo "Not a Debian system: please see to it that these (or their likes) are installed: ${wanted[*]}" >&2
    exit 0
fi

# dpkg-query fails when it does not know one of the packages; what it does know is printed all the same.
mapfile -t names < <(printf '%s\n' "${wanted[@]}" | tr '|' '\n' | sed 's/(.*//')
declare -A installed=()
while read -r status name version; do
    [[ $status != installed ]] || installed[$name]="$version"
done < <(dpkg-query -W -f='${db:Status-Status} ${Package} ${Version}\n' "${names[@]}" 2>/dev/null || true)

# is_there PACKAGE   or one of its alternatives, older than its limit where it has one
is_there() {
    local alternatives alternative name limit
    IFS='|' read -ra alternatives <<<"$1"
    for alternative in "${alternatives[@]}"; do
        name="${alternative%%(*}"
        limit="${alternative#"$name"}"
        limit="${limit//[(<)]/}"
        [[ -n ${installed[$name]:-} ]] || continue
        [[ -z $limit ]] || dpkg --compare-versions "${installed[$name]}" lt "$limit" || continue
        return 0
    done
    return 1
}

missing=()
for package in "${wanted[@]}"; do
    is_there "$package" || missing+=("$package")
done
[[ ${#missing[@]} -gt 0 ]] || exit 0
dependencies="$(printf ', %s' "${missing[@]}")"
dependencies="${dependencies#, }"

as_root=()
if [[ $EUID -ne 0 ]]; then
    if ! command -v sudo >/dev/null; then
        echo "Please have these packages installed, then start again: apt-get satisfy '$dependencies'" >&2
        exit 1
    fi
    as_root=(sudo)
fi

echo "Installing ${missing[*]}"
apt=("${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -qq -o Acquire::Retries=3)
"${apt[@]}" update </dev/null
"${apt[@]}" satisfy --yes --no-install-recommends "$dependencies" </dev/null
