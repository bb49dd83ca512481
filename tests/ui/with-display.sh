#!/bin/sh
# with-display.sh PROGRAM [ARGUMENT…]: runs the program on a virtual display of its own, with a window
# manager and a session bus, and in throw-away folders. Ends with the program's exit status.
set -eu

if [ "${1:-}" != --inside ]; then
    folder=$(mktemp -d)
    trap 'rm -rf "$folder"' EXIT
    mkdir -m 700 "$folder/run" "$folder/data" "$folder/config" "$folder/state" "$folder/cache" "$folder/home"
    env -u WAYLAND_DISPLAY -u DISPLAY -u LANGUAGE -u QT_STYLE_OVERRIDE -u QT_QPA_PLATFORMTHEME \
        HOME="$folder/home" XDG_RUNTIME_DIR="$folder/run" XDG_DATA_HOME="$folder/data" \
        XDG_CONFIG_HOME="$folder/config" XDG_STATE_HOME="$folder/state" XDG_CACHE_HOME="$folder/cache" \
        LC_ALL="${VELMORA_TEST_LOCALE:-en_US.UTF-8}" QT_QPA_PLATFORM=xcb QT_LOGGING_RULES='qt.accessibility.*=false' \
        dbus-run-session -- "$0" --inside "$folder" "$@"
    exit
fi

folder=$2
shift 2
screen=${VELMORA_TEST_SCREEN:-2600x1800x24}
Xvfb -displayfd 3 -screen 0 "$screen" -nolisten tcp 3>"$folder/display" 2>"$folder/xvfb.log" &
server=$!
trap 'kill $manager $server 2>/dev/null || true; wait $server 2>/dev/null || true' EXIT
manager=
tries=0
while [ ! -s "$folder/display" ]; do
    tries=$((tries + 1))
    if [ $tries -gt 200 ] || ! kill -0 $server 2>/dev/null; then
        cat "$folder/xvfb.log" >&2
        exit 1
    fi
    sleep 0.05
done
DISPLAY=:$(cat "$folder/display")
export DISPLAY
openbox --startup "touch $folder/managed" >"$folder/openbox.log" 2>&1 &
manager=$!
tries=0
while [ ! -e "$folder/managed" ] && [ $tries -lt 200 ]; do
    tries=$((tries + 1))
    sleep 0.05
done
"$@"
