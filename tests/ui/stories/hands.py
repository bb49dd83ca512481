"""Three ways to use the program: by the mouse, by the keyboard alone, and through assistive technology alone.

Each can press a button, choose from a pop-up, fill in a field and load a row. What comes of it is seen on the screen."""

import subprocess

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi  # noqa: E402

from screen import State, has, names, wait_for  # noqa: E402

Role = Atspi.Role


def xdotool(*words):
    subprocess.run(["xdotool", *map(str, words)], check=True)


def item_named(screen, pop_up, title):
    return next(item for item in screen.items(pop_up) if item.get_name() == title)


class Technology:
    """Only acts that the accessibility bus has a word for."""

    name = "assistive technology"

    def __init__(self, screen):
        self.screen = screen

    def _act(self, node, action):
        for index in range(Atspi.Action.get_n_actions(node)):
            if Atspi.Action.get_action_name(node, index) == action:
                Atspi.Action.do_action(node, index)
                return
        raise LookupError(f"{node.get_name()} has no action {action}")

    def press(self, name):
        self._act(self.screen.find(Role.PUSH_BUTTON, name), "Press")

    def choose(self, name, title):
        pop_up = self.screen.find(Role.COMBO_BOX, name)
        self._act(item_named(self.screen, pop_up, title), "Press")

    def fill_in(self, name, text, role=Role.TEXT):
        Atspi.EditableText.set_text_contents(self.screen.find(role, name), text)

    def load_row(self, table, row):
        self._act(self.screen.cell(self.screen.find(Role.TABLE, table), row), "Press")


class Mouse:
    """The pointer for everything, the keys for texts only."""

    name = "mouse"

    def __init__(self, screen):
        self.screen = screen

    def _click(self, node, times=1):
        x, y = wait_for(lambda: self.screen.middle(node), f"a place for {node.get_name()}")
        xdotool("mousemove", x, y, "click", "--repeat", times, "--delay", 30, 1)

    def press(self, name):
        self._click(self.screen.find(Role.PUSH_BUTTON, name))

    def choose(self, name, title):
        pop_up = self.screen.find(Role.COMBO_BOX, name)
        self._click(pop_up)
        item = item_named(self.screen, pop_up, title)
        wait_for(lambda: has(item, State.SHOWING), f"the list of {name}")
        self._click(item)

    def fill_in(self, name, text, role=Role.TEXT):
        field = self.screen.find(role, name)
        self._click(field, 3)
        wait_for(lambda: has(field, State.FOCUSED), f"the focus in {name}")
        xdotool("key", "ctrl+a", "type", "--delay", 5, text)

    def load_row(self, table, row):
        self._click(self.screen.cell(self.screen.find(Role.TABLE, table), row), 2)


class Keyboard:
    """Tab to get there, keys to act. The screen is only looked at."""

    name = "keyboard"
    MOST_STOPS = 120

    def __init__(self, screen):
        self.screen = screen

    def _go_to(self, role, name):
        self.screen.find(role, name)
        for _ in range(self.MOST_STOPS):
            at = wait_for(self.screen.focused, "the focus")
            if at.get_role() == role and name in names(at):
                return at
            xdotool("key", "Tab")
            wait_for(lambda: not has(at, State.FOCUSED) and self.screen.focused(), f"the stop after {names(at)[0]}")
        raise LookupError(f"Tab does not lead to {name}")

    def press(self, name):
        self._go_to(Role.PUSH_BUTTON, name)
        xdotool("key", "space")

    def choose(self, name, title):
        pop_up = self._go_to(Role.COMBO_BOX, name)
        xdotool("key", "space")
        item = item_named(self.screen, pop_up, title)
        wait_for(lambda: has(item, State.SHOWING), f"the list of {name}")
        xdotool("key", "Home")
        while not has(item, State.FOCUSED):
            before = [each for each in self.screen.items(pop_up) if has(each, State.FOCUSED)]
            xdotool("key", "Down")
            wait_for(lambda: not before or not has(before[0], State.FOCUSED), f"the next item of {name}")
        xdotool("key", "Return")

    def fill_in(self, name, text, role=Role.TEXT):
        self._go_to(role, name)
        xdotool("key", "ctrl+a", "type", "--delay", 5, text)

    def load_row(self, table, row):
        self._go_to(Role.TABLE, table)
        xdotool("key", "ctrl+Home")
        for position in range(row):
            xdotool("key", "Down")
        cell = self.screen.cell(self.screen.find(Role.TABLE, table), row)
        wait_for(lambda: has(cell, State.SELECTED), f"row {row}")
        xdotool("key", "Return")
