#!/usr/bin/python3
"""One login of a user who has the installed package, told as a story.

    session.py STORY

Runs on a session bus and a display of its own, with the user's real folders."""

import os
import pathlib
import subprocess
import sys

sys.path.insert(0, "/srv/stories")

import gi  # noqa: E402

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, Gio, GLib  # noqa: E402

import screen as on_screen  # noqa: E402
from hands import Mouse, xdotool  # noqa: E402
from play import HISTORY, lists_and_first_fill  # noqa: E402
from screen import NotThere, Screen, State, has, wait_for  # noqa: E402

NAME = "example.velmora.Velmora"
AGENT = f"{NAME}.Reminders"
on_screen.PATIENCE = 120  # an upgrade takes its time
bus = Gio.bus_get_sync(Gio.BusType.SESSION)


def ask_bus(method, name, kind):
    answer = bus.call_sync("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", method,
                           GLib.Variant("(s)", (name,)), GLib.VariantType(kind), Gio.DBusCallFlags.NONE, 5000)
    return answer.unpack()[0]


def is_on_bus(name):
    return ask_bus("NameHasOwner", name, "(b)")


class Owner:
    """The process behind a name on the bus, as far as a screen wants to know it."""

    def __init__(self, name):
        wait_for(lambda: is_on_bus(name), name)
        self.name = name
        self.pid = ask_bus("GetConnectionUnixProcessID", name, "(u)")

    def poll(self):
        return None if is_on_bus(self.name) else 0

    def program(self):
        return os.readlink(f"/proc/{self.pid}/exe")


def window():
    return Screen(Owner(NAME))


def start_from_the_desktop_file():
    subprocess.run(["gio", "launch", f"/usr/share/applications/{NAME}.desktop"], check=True)
    screen = window()
    assert screen.process.program() == "/usr/bin/velmora", screen.process.program()
    return screen


def close(screen):
    xdotool("key", "ctrl+q")
    wait_for(lambda: screen.process.poll() is not None, "the end of the program")


def reminders():
    folder = pathlib.Path.home() / ".local/state/Velmora/reminders"
    return [path.name for path in folder.glob("*.*.*.*")]


def schedule_a_reminder(screen):
    hand = Mouse(screen)
    tab = screen.find(Atspi.Role.PAGE_TAB, "Refill Schedule")
    xdotool("mousemove", *screen.middle(tab), "click", 1)
    hand.press("Show")
    table = screen.find(Atspi.Role.TABLE, "Refill schedule")
    cell = wait_for(lambda: screen.cell(table, 0), "a row of the schedule")
    xdotool("mousemove", *screen.middle(cell), "click", 3)
    wait_for(lambda: has(cell, State.SELECTED), "the row with its menu")
    xdotool("key", "Up", "Return")
    hand.press("OK")
    wait_for(lambda: len(reminders()) == 1, "a scheduled reminder")


def first_day():
    screen = start_from_the_desktop_file()
    lists_and_first_fill(Mouse(screen), screen)
    schedule_a_reminder(screen)
    close(screen)
    assert not (pathlib.Path.home() / ".config/autostart").exists(), "the package's own login entry is enough"


def reminded():
    """By the agent that the login started."""
    assert Owner(AGENT).program() == "/usr/bin/velmora-reminders"

    def told():
        history = subprocess.run(["dunstctl", "count", "displayed"], capture_output=True, text=True, check=False)
        return history.stdout.strip() == "1"
    wait_for(told, "a reminder on the desktop")
    assert not is_on_bus(NAME), "the window was not wanted yet"
    subprocess.run(["dunstctl", "action", "0"], check=True)
    screen = window()
    table = screen.find(Atspi.Role.TABLE, "Refill schedule")
    wait_for(lambda: screen.cell(table, 0), "the prescription that the reminder names")
    wait_for(lambda: not reminders(), "the end of the reminder")
    close(screen)


def history(screen):
    """A hand on the tab with the history, its first fill loaded."""
    hand = Mouse(screen)
    xdotool("mousemove", *screen.middle(screen.find(Atspi.Role.PAGE_TAB, "History")), "click", 1)
    table = screen.find(Atspi.Role.TABLE, HISTORY)
    wait_for(lambda: screen.cell(table, 0), "the fill")
    hand.load_row(HISTORY, 0)
    return hand


def window_over_an_upgrade():
    screen = start_from_the_desktop_file()
    pathlib.Path("/tmp/window-is-open").touch()
    wait_for(pathlib.Path("/tmp/upgraded").exists, "the upgrade")
    hand = history(screen)
    screen.shows(Atspi.Role.TEXT, "Cost", "12.50")
    hand.fill_in("Cost", "8.75")
    hand.press("Change")
    screen.says("Changed 4417203, initial, 2 refills left")
    close(screen)


def all_is_there():
    screen = start_from_the_desktop_file()
    history(screen)
    screen.shows(Atspi.Role.TEXT, "Cost", "8.75")
    close(screen)


def main():
    story = globals()[sys.argv[1]]
    # A window manager that starts what a login starts.
    desktop = subprocess.Popen(["openbox-session"])
    try:
        wait_for(lambda: Atspi.get_desktop(0), "the accessibility bus")
        story()
    except (NotThere, LookupError) as problem:
        sys.exit(f"{problem} is not there")
    finally:
        desktop.terminate()
        desktop.wait()


if __name__ == "__main__":
    main()
