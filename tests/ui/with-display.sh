#!/bin/sh
# with-display.sh [--wayland] PROGRAM [ARGUMENT…]: runs the program on a virtual display of its own, with a window
# manager and a session bus, and in throw-away folders. With --wayland it is a Wayland desktop, which stands in a
# window that fills that display, so that its pointer and keys are real. Ends with the program's exit status.
set -eu

if [ "${1:-}" != --inside ]; then
    platform=xcb
    if [ "${1:-}" = --wayland ]; then
        platform=wayland
        shift
    fi
    folder=$(mktemp -d)
    trap 'rm -rf "$folder"' EXIT
    mkdir -m 700 "$folder/run" "$folder/data" "$folder/config" "$folder/state" "$folder/cache" "$folder/home"
    env -u WAYLAND_DISPLAY -u DISPLAY -u LANGUAGE -u QT_STYLE_OVERRIDE -u QT_QPA_PLATFORMTHEME \
        HOME="$folder/home" XDG_RUNTIME_DIR="$folder/run" XDG_DATA_HOME="$folder/data" \
        XDG_CONFIG_HOME="$folder/config" XDG_STATE_HOME="$folder/state" XDG_CACHE_HOME="$folder/cache" \
        LC_ALL="${VELMORA_TEST_LOCALE:-en_US.UTF-8}" QT_QPA_PLATFORM=$platform QT_LOGGING_RULES='qt.accessibility.*=false' \
        dbus-run-session -- "$0" --inside "$folder" "$@"
    exit
fi

folder=$2
shift 2
screen=${VELMORA_TEST_SCREEN:-2600x1800x24}
Xvfb -displayfd 3 -screen 0 "$screen" -nolisten tcp 3>"$folder/display" 2>"$folder/xvfb.log" &
server=$!
manager=
trap 'kill $manager $server 2>/dev/null || true; wait $manager $server 2>/dev/null || true' EXIT

# wait_for FILE LOG: until what was started last is there; it has failed when it ends before.
wait_for() {
    tries=0
    while [ ! -e "$1" ] || [ "$1" = "$folder/display" -a ! -s "$1" ]; do
        tries=$((tries + 1))
        if [ $tries -gt 200 ] || ! kill -0 $! 2>/dev/null; then
            cat "$2" >&2
            exit 1
        fi
        sleep 0.05
    done
}

wait_for "$folder/display" "$folder/xvfb.log"
DISPLAY=:$(cat "$folder/display")
export DISPLAY
if [ "$QT_QPA_PLATFORM" = wayland ]; then
    size=${screen%x*}
    printf '[core]\nidle-time=0\n[shell]\npanel-position=none\nanimation=none\nstartup-animation=none\nclose-animation=none\nlocking=false\n' >"$folder/weston.ini"
    WAYLAND_DISPLAY=wayland-velmora
    weston --config="$folder/weston.ini" --backend=x11-backend.so --use-pixman --width="${size%x*}" --height="${size#*x}" \
        --socket=$WAYLAND_DISPLAY >"$folder/weston.log" 2>&1 &
    manager=$!
    export WAYLAND_DISPLAY
    wait_for "$XDG_RUNTIME_DIR/$WAYLAND_DISPLAY" "$folder/weston.log"
    xdotool windowfocus --sync "$(sed -n 's/.* window id //p' "$folder/weston.log")"
    # Weston adds up how far the mouse goes from where it first saw it. In the corner, where both end, they agree.
    xdotool mousemove "${size%x*}" "${size#*x}" mousemove 0 0
else
    openbox --startup "touch $folder/managed" >"$folder/openbox.log" 2>&1 &
    manager=$!
    wait_for "$folder/managed" "$folder/openbox.log"
fi
"$@"
