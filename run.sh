#!/usr/bin/env bash
# Builds Velmora and opens it on the household's own data folder. Without a display it takes the tour
# instead: the real window on a virtual display, with made-up data in a throw-away folder, its pictures
# left in build/tour/.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"

# build_release TARGET
build_release() {
    cmake --preset release >build/configure-release.log || { cat build/configure-release.log >&2; return 1; }
    cmake --build --preset release --target "$1"
}

open_window() {
    local purposes=(build window)
    [[ -n ${DISPLAY:-} ]] || purposes+=(wayland)
    packaging/install-missing.sh "${purposes[@]}"
    build_release velmora
    exec build/release/bin/velmora "$@"
}

take_tour() {
    echo "There is no display here, so this takes the tour on a virtual one."
    packaging/install-missing.sh build window display
    build_release velmora_tour

    rm -rf build/tour
    mkdir -p build/tour
    tests/ui/with-display.sh build/release/bin/velmora_tour "$PWD/build/tour" </dev/null

    echo "The tour is over. It left in build/tour/:"
    find build/tour -type f -printf '  %P\n' | sort
}

mkdir -p build
if [[ -n ${DISPLAY:-}${WAYLAND_DISPLAY:-} ]]; then
    open_window "$@"
else
    take_tour
fi
