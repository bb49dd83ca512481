#!/usr/bin/python3
"""Lives the manual's stories in the real window, by mouse, by keyboard alone and through assistive technology alone, and
compares the files at the end.

    with-display.sh play.py VELMORA
"""

import base64
import datetime
import os
import pathlib
import plistlib
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
BUTTON, RADIO, BOX = Atspi.Role.PUSH_BUTTON, Atspi.Role.RADIO_BUTTON, Atspi.Role.CHECK_BOX
HISTORY, SCHEDULE = "Prescription history", "Refill schedule"
HISTORY_FILE = "prescriptionHistoryFileForKPX"
RECEIPT = "spring.png"
# One pixel.
PICTURE = base64.b64decode("iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAQAAAC1HAwCAAAAC0lEQVR42mNk+A8AAQUBAScY42YAAAAASUVORK5CYII=")


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


def filter_and_all(hand, screen):
    # A tab is opened for a history when it is chosen.
    hand.open_tab("Refill Schedule")
    screen.says("Nothing is due.")
    hand.open_tab("History")
    hand.press("Filter…")
    screen.titled("Filter the History")
    hand.turn_on(RADIO, "Refill")
    hand.fill_in("Begin date", "1/1/2024", DAY)
    hand.fill_in("End date", "12/31/2024", DAY)
    hand.press("Show")
    hand.press("Close")
    screen.titled("Velmora")
    screen.has_rows(HISTORY, 1)
    wait_for(lambda: screen.look(Atspi.Role.LABEL, "Refill · 1/1/24 – 12/31/24"), "the filter")
    hand.press("All")
    screen.has_rows(HISTORY, 2)


def attach_a_receipt(hand, screen):
    hand.load_row(HISTORY, 0)
    hand.choose_of_button("Receipt", "Choose…")
    screen.titled("Choose a Receipt")
    hand.fill_in("File name:", str(screen.folder / "Velmora" / RECEIPT))
    hand.press("Open")
    if screen.stays(BUTTON, "Open"):
        hand.press("Open")  # the first one closed the list of what the name could be completed to
    screen.titled("Velmora")
    screen.describes(BUTTON, "Receipt", RECEIPT)
    hand.press("Change")
    screen.says("Changed 4417203, refill, 1 refill left")


def take_the_receipt_off(hand, screen):
    hand.load_row(HISTORY, 1)
    screen.describes(BUTTON, "Receipt", RECEIPT)
    hand.choose_of_button("Receipt", "Remove")
    hand.press("Change")
    # The status line says what it said already.
    wait_for(lambda: not any(fill.get("MHReceiptKey") for fill in content_of(screen.folder / "Velmora" / HISTORY_FILE)),
             "a history without a receipt")


def schedule_and_reminders(hand, screen):
    """A fill of today, as only the future is reminded of."""
    hand.choose("Fill type", "Initial")
    for name, text in {"Rx number": "5500", "Days supply": "30", "Refills authorised": "1"}.items():
        hand.fill_in(name, text)
    hand.fill_in("Dispense date", screen.today, DAY)
    hand.fill_in("Expiration date", "12/31/2099", DAY)
    hand.press("Add")
    screen.says("Added 5500, initial, 1 refill left")
    hand.open_tab("Refill Schedule")
    screen.says("Nothing is due.")
    hand.turn_on(RADIO, "Whole history")
    hand.press("Show")
    screen.has_rows(SCHEDULE, 3)
    hand.turn_on(RADIO, "Latest fill of each prescription")
    hand.press("Show")
    screen.has_rows(SCHEDULE, 1)
    hand.choose_of_row(SCHEDULE, 0, "Send a reminder to the System Notification Center for this item")
    hand.press("OK")


def withdraw_a_reminder(hand, screen):
    hand.choose_from_menu("Reminders", "Scheduled…")
    screen.titled("Scheduled Reminders")
    hand.select_row("Scheduled reminders", 0)
    hand.press("Remove")
    screen.has_rows("Scheduled reminders", 0)
    hand.press("Close")
    screen.titled("Velmora")
    hand.choose_from_menu("Reminders", "Every Refill", "3 Days Before")
    wait_for(lambda: reminders_in(screen.folder), "the reminder of every refill")


def costs(hand, screen):
    hand.open_tab("Costs")
    hand.fill_in("Begin date", "1/1/2024", DAY)
    hand.fill_in("End date", "12/31/2024", DAY)
    hand.press("Show")
    screen.shows(TEXT, "Total cost", "21.25")
    hand.choose("Chart of costs", "By Drug")
    hand.press("Print Chart")
    close_the_preview(hand, screen)


def reports(hand, screen):
    hand.open_tab("Reports")
    hand.turn_on(BOX, "Patient list")
    hand.press("Print")
    close_the_preview(hand, screen)
    hand.open_tab("History")


def close_the_preview(hand, screen):
    wait_for(lambda: (screen.window() or screen.application).get_name().endswith("Print Preview"), "the preview")
    hand.choose_from_menu("Report", "Close")
    screen.titled("Velmora")


def bring_back(hand, screen):
    hand.choose_from_menu("File", "Earlier States…")
    screen.titled("Earlier States")
    hand.select_row("Earlier states, newest first", 0)
    hand.press("Bring Back…")
    hand.press("Yes")
    screen.titled("Earlier States")
    hand.press("Close")
    screen.titled("Velmora")
    screen.has_rows(HISTORY, 2)


STORIES = (lists_and_first_fill, refill_and_change, filter_and_all, attach_a_receipt, take_the_receipt_off, delete,
           bring_back, schedule_and_reminders, withdraw_a_reminder, costs, reports)


def content_of(path):
    """A receipt is kept as where its file lies, in another household elsewhere: that there is one is told instead."""
    if path.name != HISTORY_FILE:
        return path.read_bytes()
    return [{key: bool(value) if key == "MHReceiptKey" else value for key, value in fill.items()}
            for fill in plistlib.loads(path.read_bytes())]


def reminders_in(folder):
    """What the reminders hold, whose names are their times and states. What else lies beside them is the agent's, which
    comes and goes when it likes, or on its way to be one."""
    schedule = folder / "state" / "Velmora" / "reminders"
    return [path.read_bytes() for path in sorted(schedule.glob("[!.]*.*.*.*"))]


def files_of(folder):
    """The data files by their names, and the reminders."""
    data = {path.name: content_of(path) for path in sorted((folder / "Velmora").iterdir())
            if path.is_file() and path.name != RECEIPT}
    return data | {"the reminders": reminders_in(folder)}


def live(program, way, folder):
    """The files after each story."""
    environment = dict(os.environ, XDG_DATA_HOME=str(folder), XDG_STATE_HOME=str(folder / "state"),
                       QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1")
    (folder / "Velmora").mkdir()
    (folder / "Velmora" / RECEIPT).write_bytes(PICTURE)
    process = subprocess.Popen([program], env=environment)
    states = []
    try:
        screen = Screen(process)
        screen.folder = folder
        today = datetime.date.today()
        screen.today = f"{today.month}/{today.day}/{today.year}"
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
    for story, now, then in zip(STORIES, states, expected):
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
