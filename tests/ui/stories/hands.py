"""Three ways to use the program: by the mouse, by the keyboard alone, and through assistive technology alone.

Each can press a button, choose from a pop-up or a menu, open a tab, fill in a field, and select and load a row. What comes
of it is seen on the screen."""

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

    def open_tab(self, name):
        self._act(self.screen.find(Role.PAGE_TAB, name), "Press")

    def turn_on(self, role, name):
        self._act(self.screen.find(role, name), "Toggle")

    def choose_from_menu(self, *path):
        self._act(self.screen.menu_items(path)[-1], "Press")

    def load_row(self, table, row):
        self._act(self.screen.cell(self.screen.find(Role.TABLE, table), row), "Press")

    def select_row(self, table, row):
        self._act(self.screen.cell(self.screen.find(Role.TABLE, table), row), "Toggle")

    def choose_of_row(self, table, row, item):
        self._act(self.screen.cell(self.screen.find(Role.TABLE, table), row), "ShowMenu")
        self._act(self.screen.context_menu_item(item), "Press")

    def choose_of_button(self, name, item):
        self._act(self.screen.find(Role.PUSH_BUTTON, name), "ShowMenu")
        self._act(self.screen.context_menu_item(item), "Press")


class Mouse:
    """The pointer for everything, the keys for texts only."""

    name = "mouse"

    def __init__(self, screen):
        self.screen = screen

    def _click(self, node, times=1, button=1):
        x, y = wait_for(lambda: self.screen.middle(node), f"a place for {node.get_name()}")
        xdotool("mousemove", x, y, "click", "--repeat", times, "--delay", 30, button)

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

    def open_tab(self, name):
        self._click(self.screen.find(Role.PAGE_TAB, name))

    def turn_on(self, role, name):
        self._click(self.screen.find(role, name))

    def choose_from_menu(self, *path):
        for item in self.screen.menu_items(path):
            wait_for(lambda: has(item, State.SHOWING), item.get_name())
            self._click(item)

    def load_row(self, table, row):
        self._click(self.screen.cell(self.screen.find(Role.TABLE, table), row), 2)

    def select_row(self, table, row):
        self._click(self.screen.cell(self.screen.find(Role.TABLE, table), row))

    def choose_of_row(self, table, row, item):
        self._click(self.screen.cell(self.screen.find(Role.TABLE, table), row), button=3)
        self._click(self.screen.context_menu_item(item))

    def choose_of_button(self, name, item):
        self._click(self.screen.find(Role.PUSH_BUTTON, name), button=3)
        self._click(self.screen.context_menu_item(item))


class Keyboard:
    """Tab to get there, keys to act. The screen is only looked at."""

    name = "keyboard"
    MOST_STOPS = 120

    def __init__(self, screen):
        self.screen = screen

    def _go_to(self, role, name):
        if name is not None:
            self.screen.find(role, name)
        stops = wait_for(self.screen.stops, "what may have the focus")
        at = wait_for(self.screen.focused, "the focus")
        for _ in range(self.MOST_STOPS):
            if at.get_role() == role and (name is None or name in names(at)):
                return at
            xdotool("key", "Tab")
            at = wait_for(lambda: not has(at, State.FOCUSED) and self.screen.focused_of(stops, at),
                          f"the stop after {at.get_role_name()} {names(at)[0]}, on the way to {name},")
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

    def open_tab(self, name):
        xdotool("key", f"ctrl+{self.screen.find(Role.PAGE_TAB, name).get_index_in_parent() + 1}")

    def turn_on(self, role, name):
        at = self._go_to(role, None)
        while name not in names(at):
            xdotool("key", "Tab" if role == Role.CHECK_BOX else self._arrow(at, self.screen.find(role, name)))
            wait_for(lambda: not has(at, State.FOCUSED), f"what follows {names(at)[0]}")
            at = wait_for(self.screen.focused, "the focus")
        xdotool("key", "space")

    def _arrow(self, at, target):
        """Radio buttons are one stop, and the arrows lead through them."""
        (x, y), (goal_x, goal_y) = self.screen.middle(at), self.screen.middle(target)
        if goal_x != x:
            return "Right" if goal_x > x else "Left"
        return "Down" if goal_y > y else "Up"

    def _go_down_to(self, item):
        def step():
            if has(item, State.FOCUSED):
                return True
            xdotool("key", "Down")
            return False
        wait_for(step, item.get_name())

    def choose_from_menu(self, *path):
        menu, *items = self.screen.menu_items(path)
        xdotool("key", "F10", *["Right"] * menu.get_index_in_parent())
        for item in items:
            self._go_down_to(item)
            xdotool("key", "Return")

    def load_row(self, table, row):
        self.select_row(table, row)
        xdotool("key", "Return")

    def select_row(self, table, row):
        self._go_to(Role.TABLE, table)
        xdotool("key", "ctrl+Home")
        for position in range(row):
            xdotool("key", "Down")
        cell = self.screen.cell(self.screen.find(Role.TABLE, table), row)
        wait_for(lambda: has(cell, State.SELECTED), f"row {row}")

    def choose_of_row(self, table, row, item):
        self.select_row(table, row)
        self._choose_of_menu(item)

    def choose_of_button(self, name, item):
        self._go_to(Role.PUSH_BUTTON, name)
        self._choose_of_menu(item)

    def _choose_of_menu(self, item):
        xdotool("key", "Menu")
        self._go_down_to(self.screen.context_menu_item(item))
        xdotool("key", "Return")
