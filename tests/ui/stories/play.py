#!/usr/bin/python3
"""Lives the manual's stories in the real window, by mouse, by keyboard alone and through assistive technology alone, and
compares the files at the end.

    with-display.sh play.py VELMORA
"""

import os
import pathlib
import subprocess
import sys
import tempfile

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi  # noqa: E402

from hands import Keyboard, Mouse, Technology  # noqa: E402
from screen import NotThere, Screen, wait_for  # noqa: E402

BUS_LAUNCHER = "/usr/libexec/at-spi-bus-launcher"
TEXT, DAY, POP_UP = Atspi.Role.TEXT, Atspi.Role.SPIN_BUTTON, Atspi.Role.COMBO_BOX
HISTORY = "Prescription history"


def add_entry(hand, screen, step, sheet, fields):
    """From the first steps: a sheet, an entry, and back."""
    hand.press(step)
    screen.titled(sheet)
    for name, text in fields.items():
        hand.fill_in(name, text)
        screen.shows(TEXT, name, text)
    hand.press("Add")
    for name in fields:
        screen.shows(TEXT, name, "")
    hand.press("Close")
    screen.titled("Velmora")


def enter_fill(hand, screen, fill_type, dispensed, cost):
    hand.choose("Fill type", fill_type)
    screen.shows(POP_UP, "Fill type", fill_type)
    for name, text in {"Rx number": "4417203", "Days supply": "30", "Refills authorised": "2", "Cost": cost}.items():
        hand.fill_in(name, text)
        screen.shows(TEXT, name, text)
    for name, day in {"Dispense date": dispensed, "Expiration date": "3/5/2025"}.items():
        hand.fill_in(name, day, DAY)
        screen.shows(DAY, name, day)
    hand.choose("When to take", "in the morning")
    hand.press("Add")


def lists_and_first_fill(hand, screen):
    add_entry(hand, screen, "Patient…", "Patients", {"Name": "Ann Holloway", "City": "Springfield"})
    add_entry(hand, screen, "Drug…", "Drugs", {"Drug name": "Lisinopril 10 mg", "Description": "blood pressure"})
    add_entry(hand, screen, "Prescriber…", "Prescribers", {"Name": "Dr. Amara Okafor"})
    add_entry(hand, screen, "Pharmacy…", "Pharmacies", {"Name": "Corner Pharmacy"})
    hand.press("Enter the Fill")
    enter_fill(hand, screen, "Initial", "3/5/2024", "12.50")
    screen.says("Added 4417203, initial, 2 refills left")


def refill_and_change(hand, screen):
    enter_fill(hand, screen, "Refill", "4/4/2024", "9.00")
    screen.says("Added 4417203, refill, 1 refill left")
    hand.load_row(HISTORY, 1)
    screen.shows(TEXT, "Cost", "9.00")
    hand.fill_in("Note", "with a glass of water")
    hand.fill_in("Cost", "8.75")
    hand.press("Change")
    screen.says("Changed 4417203, refill, 1 refill left")


def delete(hand, screen):
    hand.load_row(HISTORY, 0)
    screen.shows(TEXT, "Rx number", "4417203")
    hand.press("Delete")
    hand.press("Yes")
    screen.says("Deleted 2 fills of 4417203")


STORIES = (lists_and_first_fill, refill_and_change, delete)


def files_of(folder):
    return {path.name: path.read_bytes() for path in sorted((folder / "Velmora").iterdir()) if path.is_file()}


def live(program, way, folder):
    """The files after each story."""
    environment = dict(os.environ, XDG_DATA_HOME=str(folder), QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1")
    process = subprocess.Popen([program], env=environment)
    states = []
    try:
        screen = Screen(process)
        hand = way(screen)
        for story in STORIES:
            print(f"{way.name}: {story.__name__.replace('_', ' ')}", flush=True)
            story(hand, screen)
            states.append(files_of(folder))
    finally:
        process.terminate()
        process.wait()
    return states


def difference(way, states, expected):
    for story, (now, then) in zip(STORIES, zip(states, expected)):
        for name in sorted(now.keys() | then.keys()):
            if now.get(name) != then.get(name):
                return f"{way.name}: after {story.__name__} {name} is another one than by {Mouse.name}"
    return None


def main():
    program = str(pathlib.Path(sys.argv[1]).resolve())
    launcher = subprocess.Popen([BUS_LAUNCHER, "--launch-immediately"])
    try:
        wait_for(lambda: Atspi.get_desktop(0), "the accessibility bus")
        expected = None
        for way in (Mouse, Keyboard, Technology):
            with tempfile.TemporaryDirectory() as folder:
                states = live(program, way, pathlib.Path(folder))
            if expected is None:
                expected = states
            elif problem := difference(way, states, expected):
                sys.exit(problem)
        print("The files are equal after every story.")
    except (NotThere, LookupError) as problem:
        sys.exit(f"{problem} is not there")
    finally:
        launcher.terminate()
        launcher.wait()


if __name__ == "__main__":
    main()
