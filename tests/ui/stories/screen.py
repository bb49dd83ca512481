"""What is on the screen, read through the accessibility bus as a screen reader does."""

import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

PATIENCE = 30
# What lies in them is asked for by its place, not looked for.
CLOSED = (Atspi.Role.TABLE, Atspi.Role.LIST, Atspi.Role.COMBO_BOX)
State = Atspi.StateType


class NotThere(Exception):
    """What should be on the screen never was."""


def wait_for(condition, what):
    """The condition's value once there is one."""
    end = time.monotonic() + PATIENCE
    while True:
        try:
            value = condition()
        except GLib.Error:  # it went away while it was looked at
            value = None
        if value:
            return value
        if time.monotonic() > end:
            raise NotThere(what)
        time.sleep(0.02)


def children(node):
    count = node.get_child_count()
    return [child for child in (node.get_child_at_index(index) for index in range(count)) if child]


def has(node, state):
    return node.get_state_set().contains(state)


def names(node):
    """A pop-up's name is what it stands on; what it is for is its description."""
    if node.get_role() == Atspi.Role.COMBO_BOX:
        return (node.get_description(),)
    return (node.get_name(),)


def everything(node):
    yield node
    if node.get_role() not in CLOSED:
        for child in children(node):
            # What is not seen, as the other tabs, is not looked through.
            if has(child, State.SHOWING):
                yield from everything(child)


class Screen:
    def __init__(self, process):
        self.process = process
        self.application = wait_for(self._find_application, "the program on the accessibility bus")
        # Each look is a new one.
        self.application.set_cache_mask(Atspi.Cache.NONE)
        wait_for(self._is_started, "the window without the splash")

    def _find_application(self):
        if self.process.poll() is not None:
            raise NotThere("the program")
        for candidate in children(Atspi.get_desktop(0)):
            if candidate.get_process_id() == self.process.pid and candidate.get_child_count():
                return candidate
        return None

    def _is_started(self):
        """The start shows the splash and fills the pop-ups. The splash goes by itself, which a slow look may well miss;
        the mouse could not reach what lies below. Only a look that begins once they are filled is sure to see it."""
        window = self.window()
        shown = everything(window) if window else ()
        filled = next((node.get_name() for node in shown if node.get_role() == Atspi.Role.COMBO_BOX), "")
        return filled and not self.look(Atspi.Role.LABEL, "Velmora")

    def _windows(self):
        return [window for window in children(self.application) if has(window, State.SHOWING)]

    def window(self):
        """The window that the keyboard writes to."""
        active = [window for window in self._windows() if has(window, State.ACTIVE)]
        return active[0] if active else None

    def titled(self, title):
        return wait_for(lambda: (self.window() or self.application).get_name() == title and self.window(),
                        f"the window {title}")

    def look(self, role, name):
        window = self.window()
        for node in everything(window) if window else ():
            if node.get_role() == role and name in names(node) and has(node, State.SHOWING):
                return node
        return None

    def find(self, role, name):
        """A control of the active window, once it can be used."""
        def usable():
            node = self.look(role, name)
            return node if node and has(node, State.ENABLED) else None
        return wait_for(usable, f"{role.value_nick} {name}")

    def focused(self):
        """The control with the focus in the active window; a row of buttons says so of its button's."""
        window = self.window()
        for node in everything(window) if window else ():
            if has(node, State.FOCUSED) and has(node, State.FOCUSABLE):
                return node
        return None

    def stays(self, role, name):
        end = time.monotonic() + 3
        is_there = True
        while is_there and time.monotonic() < end:
            time.sleep(0.1)
            try:
                is_there = bool(self.look(role, name))
            except GLib.Error:  # something went away while it was looked at
                pass
        return is_there

    def stops(self):
        """What may have the focus; a tab has it with the list of tabs."""
        window = self.window()
        return [node for node in everything(window)
                if has(node, State.FOCUSABLE) and node.get_role() != Atspi.Role.PAGE_TAB] if window else []

    def focused_of(self, stops, last):
        """The same, looked for where Tab leads from the last one: mostly the next."""
        place = stops.index(last) + 1 if last in stops else 0
        for node in stops[place:] + stops[:place]:
            if has(node, State.FOCUSED):
                return node
        return self.focused()

    def menu_items(self, path):
        """The menu of the menu bar, and the items that lead to the last one of the path; open or not."""
        bar = wait_for(lambda: self.look(Atspi.Role.MENU_BAR, ""), "the menu bar")
        items, around = [], bar
        for name in path:
            items.append(next(item for item in children(around) if item.get_name() == name))
            around = next(iter(children(items[-1])), None)
        return items

    def context_menu_item(self, name):
        """Of the context menu that is open."""
        def shown():
            for node in everything(self.window()):
                if node.get_role() == Atspi.Role.POPUP_MENU:
                    return next((item for item in children(node) if item.get_name() == name), None)
            return None
        return wait_for(shown, f"{name} in a context menu")

    def describes(self, role, name, text):
        wait_for(lambda: (node := self.look(role, name)) and text in node.get_description(), f"“{text}” about {name}")

    def has_rows(self, table, count):
        wait_for(lambda: (node := self.look(Atspi.Role.TABLE, table)) and Atspi.Table.get_n_rows(node) == count,
                 f"{count} rows in {table}")

    def says(self, text):
        wait_for(lambda: (bar := self.look(Atspi.Role.STATUS_BAR, text)) and bar, f"“{text}” in the status line")

    def shows(self, role, name, text):
        """A field, once it holds the text."""
        seen = []

        def holds():
            node = self.look(role, name)
            seen[:] = [self.text(node)] if node else []
            return seen == [text]
        try:
            wait_for(holds, f"“{text}” in {name}")
        except NotThere as missing:
            raise NotThere(f"{missing}, but {seen},") from None

    @staticmethod
    def text(node):
        if node.get_role() == Atspi.Role.COMBO_BOX:
            return node.get_name()
        return Atspi.Text.get_text(node, 0, Atspi.Text.get_character_count(node))

    @staticmethod
    def items(pop_up):
        """The items of a pop-up, open or not."""
        return children(children(pop_up)[0])

    @staticmethod
    def cell(table, row, column=0):
        return Atspi.Table.get_accessible_at(table, row, column)

    @staticmethod
    def middle(node):
        box = Atspi.Component.get_extents(node, Atspi.CoordType.SCREEN)
        return (box.x + box.width // 2, box.y + box.height // 2) if box.width > 0 and box.height > 0 else None
