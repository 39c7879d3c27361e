# SPDX-License-Identifier: GPL-3.0-or-later
from gi.repository import Atspi

from case import EndToEndCase, main
from desktop import wait_until
from launcher import has_state

Role = Atspi.Role

CONTROLS = {Role.CHECK_BOX, Role.COMBO_BOX, Role.LIST, Role.LIST_ITEM, Role.MENU, Role.MENU_ITEM,
            Role.PUSH_BUTTON, Role.SCROLL_BAR, Role.TABLE_CELL, Role.TEXT, Role.TREE,
            Role.TREE_ITEM, Role.TREE_TABLE}
# A screen reader does not announce these.
SILENT = {Role.FILLER, Role.FRAME, Role.INVALID, Role.LAYERED_PANE, Role.PANEL, Role.UNKNOWN}

BOX = ["Search apps or type cmd space args...", "Open user management"]
COMMAND_BOX = ["Type arguments...", "Open user management"]
CLOSE = ["Hide main window"]
PLUGINS = ("app", "calc", "cd", "file", "todo")


class AccessibilityCase(EndToEndCase):
    def setUp(self):
        super().setUp()
        self.home.add_recorder("Recorder")
        self.start()

    def names(self):
        """The names of all visible controls."""
        return [found.get_name() for found in self.controls()]

    def controls(self):
        return [found for found in self.launcher.everything()
                if found.get_role() in CONTROLS or has_state(found, Atspi.StateType.FOCUSABLE)]

    def open_page(self, command):
        self.launcher.open_page(command, "Save")

    def open_tasks(self, *titles):
        self.launcher.open_page("todo", "Add a task and press Enter")
        self.launcher.tab_to("Add a task and press Enter")
        for title in titles:
            self.launcher.type(title)
            self.launcher.press("Return")
            wait_until(lambda: title in self.names(), "the task is added")


class Names(AccessibilityCase):
    def assert_all_have_names(self, *expected):
        wait_until(lambda: not set(expected) - set(self.names()), f"{expected} show")
        nameless = [(found.get_role_name(), found.get_name()) for found in self.controls()
                    if not found.get_name().strip() or found.get_role() in SILENT]
        self.assertEqual(nameless, [])

    def test_of_the_list_at_the_start(self):
        self.assert_all_have_names(*BOX, *CLOSE, "Notepad\n", "Task Manager")

    def test_of_results(self):
        self.launcher.type("recor")
        self.shows_rows(("Recorder", "Start Menu"))
        self.assert_all_have_names(*BOX, "Recorder\nStart Menu")

    def test_of_a_web_search(self):
        self.launcher.type("zzzz")
        self.assert_all_have_names('Search "zzzz"\nSearch with Bing')

    def test_of_a_command(self):
        self.launcher.type("calc 1+1")
        self.shows_titles("2")
        self.assert_all_have_names(*COMMAND_BOX)
        self.assertIn("calc", [found.get_name() for found in self.launcher.everything()
                               if found.get_role() == Role.LABEL])

    def test_of_the_task_page(self):
        self.open_tasks("water the plants")
        self.assert_all_have_names(*COMMAND_BOX, "Back", "Add a task and press Enter", "Add",
                                   "Active", "Todo", "water the plants")

    def test_of_the_user_page(self):
        self.open_page("user")
        self.assert_all_have_names("Settings", "User", "Start on boot", "Show float icon",
                                   "Auto hide on focus loss", "Require double-click to launch apps",
                                   "Show all apps when search is empty", "Save", "Cancel")

    def test_of_the_settings_page(self):
        self.open_page("set")
        self.assert_all_have_names("Settings", "Global Hotkey", "System", "Bing", "Save", "Cancel")
        for combo, label in (("System", "Theme"), ("Bing", "Search Engine")):
            relations = self.launcher.control(combo).get_relation_set()
            labels = [relation.get_target(0).get_name() for relation in relations
                      if relation.get_relation_type() == Atspi.RelationType.LABELLED_BY]
            self.assertEqual(labels, [label])

    def test_of_the_plugins_page(self):
        self.open_page("plugin")
        self.assert_all_have_names("Auto enter on empty args", "Enable all", "Disable all",
                                   "app Enabled", "app Hotkey", "todo Enabled", "todo Hotkey",
                                   "Save", "Cancel")

    def test_of_an_open_combo_box(self):
        self.open_page("set")
        self.launcher.tab_to("Bing")
        self.launcher.press("alt+Down")
        self.assert_all_have_names("DuckDuckGo")
        self.launcher.press("Escape")


class Keyboard(AccessibilityCase):
    """The Tab key reaches every control, and each shows that it has the focus."""

    def assert_walk(self, *expected):
        """Walks with the Tab key from the focused control once through the whole window."""
        self.make_room()
        start = self.launcher.focused().get_name()
        names = [start]
        while len(names) <= 40:
            name = self.step()
            if name == start:
                break
            names.append(name)
        self.assertEqual(names, list(expected))

    def step(self):
        """Presses Tab and returns the name of the focused control, once the previous control has
        shown with and without the focus."""
        control = self.launcher.focused()
        place = control.get_extents(Atspi.CoordType.SCREEN)
        self.leave(control, "Tab")
        without = self.still_picture(place)
        self.leave(self.launcher.focused(), "shift+Tab")
        # A blinking text cursor counts as an indication, so this may take a moment.
        wait_until(lambda: self.pixels(place) != without,
                   f"{control.get_name()!r} shows that it has the focus", 20)
        self.leave(control, "Tab")
        return self.launcher.focused().get_name()

    def leave(self, control, key):
        self.launcher.press(key)
        wait_until(lambda: not has_state(control, Atspi.StateType.FOCUSED), "the focus moves")

    def still_picture(self, place):
        last = None

        def is_still():
            nonlocal last
            previous, last = last, self.pixels(place)
            return previous == last
        wait_until(is_still, "nothing changes")
        return last

    def make_room(self):
        """Enlarges the window so that no page scrolls and only the focus changes the picture."""
        self.desktop.run("xdotool", "windowsize", self.launcher.window, "800", "900")
        self.becomes(lambda: self.launcher.geometry()[2:], (800, 900))
        self.desktop.move_pointer(1, 1)

    def pixels(self, place):
        return self.desktop.pixels(place.x - 3, place.y - 3, place.width + 6, place.height + 6)

    def test_walks_through_the_list(self):
        self.assert_walk(*BOX, "Calculator", "Task Manager", "Results", *CLOSE)

    def test_walks_through_the_user_page(self):
        self.open_page("user")
        self.assert_walk(*COMMAND_BOX, "Settings", "Start on boot", "Show float icon",
                         "Auto hide on focus loss", "Require double-click to launch apps",
                         "Show all apps when search is empty", "Save", "Cancel", *CLOSE)

    def test_walks_through_the_settings_page(self):
        self.open_page("set")
        self.assert_walk(*COMMAND_BOX, "Settings", "Global Hotkey", "System", "Bing", "Save",
                         "Cancel", *CLOSE)

    def test_walks_through_the_plugins_page(self):
        self.open_page("plugin")
        self.assert_walk(*COMMAND_BOX, "Settings", "Auto enter on empty args", "Enable all",
                         "Disable all", *(f"{command} {control}" for command in PLUGINS
                                          for control in ("Enabled", "Hotkey")),
                         "Save", "Cancel", *CLOSE)

    def test_walks_through_the_task_page(self):
        self.open_tasks("water the plants", "feed the cat")
        self.assert_walk("Add a task and press Enter", "Add", "Active", "Todo", *CLOSE,
                         *COMMAND_BOX, "Back")

    def test_completes_a_task_by_keyboard(self):
        self.open_tasks("water the plants", "feed the cat")
        self.launcher.tab_to("Todo")
        self.launcher.press("Home", "Down", "space")
        wait_until(lambda: "1 active · 2 total" in self.labels(), "one task is done")
        self.launcher.tab_to("Active")
        self.launcher.press("Down", "Down")
        wait_until(lambda: "Completed" in self.names(), "the done task shows")
        self.assertIn("feed the cat", self.names())
        self.assertNotIn("water the plants", self.names())

    def labels(self):
        return [found.get_name() for found in self.launcher.everything()
                if found.get_role() == Role.LABEL]


if __name__ == "__main__":
    main()
