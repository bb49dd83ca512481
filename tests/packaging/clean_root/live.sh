#!/usr/bin/env bash
# live.sh PACKAGE   lives with the Debian package in a root of its own, made of the distribution's packages: installed, a
# reminder in a later session, an upgrade under the open window, removed, installed again. Needs root and the
# distribution's mirrors; outside a throw-away folder and namespaces of its own nothing is touched.
set -euo pipefail
here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
package="$(realpath "$1")"
root="${2:-}"

if [[ -z $root ]]; then
    "$here/../../../packaging/install-missing.sh" root
    scratch="$(mktemp -d)"
    trap 'rm -rf --one-file-system "$scratch"' EXIT
    # A desktop for the smallest purse, assistive technology to see the windows with, and a clock to set.
    mmdebstrap --quiet --variant=minbase \
        --include=ca-certificates,xvfb,xauth,openbox,python3-xdg,dbus,dunst,libglib2.0-bin,procps \
        --include=at-spi2-core,python3-gi,gir1.2-atspi-2.0,xdotool,faketime,fonts-dejavu-core \
        "$(. /etc/os-release && echo "$VERSION_CODENAME")" "$scratch/root"
    # Whatever is mounted or started from here on ends with these namespaces.
    unshare --mount --pid --fork --kill-child --ipc --uts --mount-proc "$0" "$package" "$scratch/root"
    exit
fi

step() { printf '\n-- %s\n' "$*"; }
fail() { echo "live.sh: $*" >&2; exit 1; }
inside() { chroot "$root" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin DEBIAN_FRONTEND=noninteractive LC_ALL=C.UTF-8 "$@"; }
apt() { inside apt-get -qq -o Dpkg::Use-Pty=0 "$@" >"$root/apt.log" 2>&1 || { cat "$root/apt.log"; fail "apt-get $*"; }; }

# session DAY STORY   a login of Ann's on that day, without a network, that lasts for the story; nothing of hers may
# outlive it.
session() {
    step "Ann, on $1: $2"
    chroot "$root" unshare --net setpriv --reuid=ann --regid=ann --init-groups \
        env -i PATH=/usr/bin:/bin HOME=/home/ann USER=ann XDG_RUNTIME_DIR=/run/user/1000 LC_ALL=en_US.UTF-8 \
        QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1 \
        xvfb-run --auto-servernum --server-args='-screen 0 1600x1200x24' \
        faketime -m "$1 09:00:00" dbus-run-session -- python3 /srv/clean_root/session.py "$2"
    timeout 20 sh -c 'while pgrep -u 1000 >/dev/null; do sleep 0.1; done' || fail "outlives the session: $(pgrep -u 1000 -a)"
}

home_as_it_is() { find "$root/home/ann" -xdev -printf '%P %y %m %s %T@ %l\n' -type f -exec sha256sum {} + | sort; }

# What names us outside the homes and the logs, in its own name or inside.
of_ours() {
    local places=(etc usr var)
    cd "$root"
    find "${places[@]}" -iname '*velmora*' -not -path 'var/log/*' -not -path 'var/cache/apt/*'
    grep -rils velmora "${places[@]}" --exclude-dir=log --exclude-dir=apt --exclude=status-old || true
}

# older PACKAGE NEW   the package as it might have been before, with one file that the next one no longer has
older() {
    local scratch="$root/tmp/older"
    dpkg-deb --raw-extract "$1" "$scratch"
    sed -i 's/^Version: .*/Version: 0.9/' "$scratch/DEBIAN/control"
    echo "of 0.9" >"$scratch/usr/share/velmora/of-the-version-before"
    dpkg-deb --root-owner-group --build "$scratch" "$2" >"$root/build.log"
    rm -rf "$scratch"
}

mount -t proc proc "$root/proc"
mount -t devpts -o newinstance,ptmxmode=0666 devpts "$root/dev/pts"
for folder in dev/shm tmp run; do mount -t tmpfs -o mode=1777 tmpfs "$root/$folder"; done
inside useradd --create-home --uid 1000 ann
install -d -m 700 -o 1000 -g 1000 "$root/run/user/1000"
cp -r "$here" "$here/../../ui/stories" "$root/srv"
cp "$package" "$root/srv/velmora.deb"
older "$package" "$root/srv/velmora-older.deb"

step "Install the version before"
apt update
apt install --no-install-recommends /srv/velmora-older.deb
inside dpkg --verify velmora
session 2024-03-06 first_day
session 2024-04-05 reminded

step "Upgrade under the open window"
session 2024-04-06 window_over_an_upgrade &
window=$!
timeout 120 sh -c "until [ -e '$root/tmp/window-is-open' ]; do sleep 0.1; done" || fail "no window opens"
apt install --no-install-recommends /srv/velmora.deb
touch "$root/tmp/upgraded"
wait "$window"
inside dpkg --verify velmora
[[ ! -e $root/usr/share/velmora/of-the-version-before ]] || fail "the version before left a file"
session 2024-04-07 all_is_there

step "Remove"
before="$(home_as_it_is)"
apt remove velmora
# The login entry is a configuration file, which stays until all is purged; without the program it starts nothing.
entry=etc/xdg/autostart/example.velmora.Velmora.Reminders.desktop
[[ "$(cd "$root" && find etc usr -iname '*velmora*')" == "$entry" ]] || fail "not all is removed: $(of_ours)"
grep -q '^TryExec=/usr/bin/velmora-reminders$' "$root/$entry" || fail "the login entry does not look for its program"
apt purge velmora
apt autoremove --purge
[[ -z "$(of_ours)" ]] || fail "left behind: $(of_ours)"
[[ "$(home_as_it_is)" == "$before" ]] || fail "the user's own folders were touched"

step "Install again"
apt install --no-install-recommends /srv/velmora.deb
session 2024-04-08 all_is_there
step "All was there."
