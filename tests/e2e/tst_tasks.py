# SPDX-License-Identifier: GPL-3.0-or-later
import json

from case import EndToEndCase, main
from desktop import NotYet, wait_until
from launcher import children, find, has_state

from gi.repository import Atspi

INDENTATION = 22
UP, DOWN = 4, 5  # mouse buttons of the wheel
TICK_BOX = 18  # from the left edge of a row to the middle of its check box


class TaskPage(EndToEndCase):
    """Where a step changes the rows, the file is checked right after them, without a further wait."""

    def setUp(self):
        super().setUp()
        self.file = self.home.data / "Vaskel/todo.json"

    def open_page(self):
        self.launcher.type("todo")
        self.shows_titles("Task Management")
        self.launcher.press("Return")
        wait_until(lambda: has_state(self.entry(), Atspi.StateType.FOCUSED),
                   "the entry line has the focus")

    # What the page shows

    def tree(self):
        return self.one(Atspi.Role.TREE, "Todo")

    def entry(self):
        return self.one(Atspi.Role.TEXT, "Add a task and press Enter")

    def one(self, role, name):
        for found in find(self.launcher.content(), role):
            if found.get_name() == name:
                return found
        raise NotYet(f"{name!r} does not show")

    def cells(self):
        return [cell for cell in children(self.tree())
                if cell.get_role() == Atspi.Role.TABLE_CELL]

    def rows(self):
        """The rows from top to bottom, as pairs of level and title."""
        left = self.tree().get_extents(Atspi.CoordType.SCREEN).x
        return [((cell.get_extents(Atspi.CoordType.SCREEN).x - left) // INDENTATION,
                 cell.get_name()) for cell in self.cells()]

    def cell(self, title):
        return self.cells()[[name for _, name in self.rows()].index(title)]

    def summary(self):
        return next((label.get_name() for label in find(self.launcher.content(), Atspi.Role.LABEL)
                     if "total" in label.get_name()), None)

    # What the file contains

    def tasks(self):
        return json.loads(self.file.read_text())

    def by_title(self):
        return {task["title"]: task for task in self.tasks()}

    def states(self):
        return {task["title"]: task.get("completed", False) for task in self.tasks()}

    def stored_path(self, title):
        """The titles of the task and its ancestors, from the top down."""
        by_id = {task["id"]: task for task in self.tasks()}
        task, path = self.by_title()[title], []
        while task:
            path.insert(0, task["title"])
            task = by_id.get(task["parentId"])
        return path

    def version(self):
        """Changes with every write, even of the same bytes."""
        status = self.file.stat()
        return status.st_ino, status.st_mtime_ns

    # What the user does

    def add(self, title):
        self.launcher.type(title)
        self.launcher.press("Return")

    def place(self, title):
        """Scrolls to the row with the wheel and returns its position on the screen."""
        tree = self.tree().get_extents(Atspi.CoordType.SCREEN)

        def seen():
            row = self.cell(title).get_extents(Atspi.CoordType.SCREEN)
            if tree.y <= row.y and row.y + row.height <= tree.y + tree.height:
                return row
            wheel = UP if row.y < tree.y else DOWN
            self.desktop.click(tree.x + tree.width // 2, tree.y + tree.height // 2, wheel)
            return None
        return wait_until(seen, f"the row of {title!r} is in view")

    def click_row(self, title, button=1, times=1):
        extents = self.place(title)
        self.desktop.click(extents.x + 40, extents.y + extents.height // 2, button, times)

    def tick(self, title):
        extents = self.place(title)
        self.desktop.click(extents.x + TICK_BOX, extents.y + extents.height // 2)

    def click(self, name):
        extents = self.one(Atspi.Role.PUSH_BUTTON, name).get_extents(Atspi.CoordType.SCREEN)
        self.desktop.click(extents.x + extents.width // 2, extents.y + extents.height // 2)

    def choose(self, title, entry, picture=None):
        """Triggers an entry of the context menu of a row, counted from 1."""
        self.click_row(title, button=3)
        wait_until(lambda: len(self.launcher.windows()) == 2, "the menu opens")
        if picture:
            self.picture(picture)
        self.launcher.press(*["Down"] * entry, "Return")
        wait_until(lambda: len(self.launcher.windows()) == 1, "the menu closes")

    def filter_by(self, name):
        box = find(self.launcher.content(), Atspi.Role.COMBO_BOX)[0]
        extents = box.get_extents(Atspi.CoordType.SCREEN)
        self.desktop.click(extents.x + extents.width // 2, extents.y + extents.height // 2)
        wait_until(lambda: len(self.launcher.windows()) == 2, "the filters show")
        index = ["Active", "All", "Completed"].index(name)
        self.launcher.press("Home", *["Down"] * index, "Return")
        wait_until(lambda: len(self.launcher.windows()) == 1, "a filter is chosen")
        self.becomes(lambda: find(self.launcher.content(), Atspi.Role.COMBO_BOX)[0].get_name(),
                     name)

    # The steps

    def shows(self, *rows):
        self.becomes(self.rows, list(rows))

    def open_editor_by_double_click(self, title):
        self.click_row(title, times=2)

    def open_editor_by_key(self, title):
        self.click_row(title)
        wait_until(lambda: has_state(self.cell(title), Atspi.StateType.SELECTED),
                   "the row is selected")
        self.launcher.press("F2")

    def enter_title(self, title):
        """Replaces the text of the editor; no other control of the page reacts to these keys."""
        self.launcher.press("ctrl+a", "BackSpace")
        self.launcher.type(title)
        self.launcher.press("Return")

    def test_adds_and_renames(self):
        self.start()
        self.assertFalse(self.file.exists())
        self.open_page()
        self.assertEqual(self.summary(), "0 active · 0 total")

        self.add("Call the bank")
        self.shows((1, "Call the bank"))
        self.assertEqual([task["title"] for task in self.tasks()], ["Call the bank"])
        self.assertEqual(self.launcher.text_of(self.entry()), "")

        self.launcher.type("Buy milk")
        self.click("Add")
        self.shows((1, "Call the bank"), (1, "Buy milk"))
        self.assertEqual(self.stored_path("Buy milk"), ["Buy milk"])
        self.assertEqual(len(self.tasks()), 2)
        self.becomes(self.summary, "2 active · 2 total")
        self.picture("added")

        version = self.version()
        self.desktop.click(*self.entry_middle())
        self.add("   ")
        self.becomes(lambda: self.launcher.text_of(self.entry()), "   ")
        self.assertEqual(self.version(), version)

        self.open_editor_by_double_click("Buy milk")
        self.enter_title("Buy oats")
        self.shows((1, "Call the bank"), (1, "Buy oats"))
        self.assertEqual(set(self.by_title()), {"Call the bank", "Buy oats"})

        self.open_editor_by_key("Call the bank")
        self.picture("editor")
        self.enter_title("Write to the bank")
        self.shows((1, "Write to the bank"), (1, "Buy oats"))
        self.assertEqual(set(self.by_title()), {"Write to the bank", "Buy oats"})
        self.picture("renamed")

        # A blank title is refused, and Escape closes the editor but not the page. The last change
        # shows that the earlier steps are done.
        version = self.version()
        self.open_editor_by_double_click("Buy oats")
        self.enter_title(" ")
        self.shows((1, "Write to the bank"), (1, "Buy oats"))
        self.open_editor_by_double_click("Buy oats")
        self.launcher.type("never")
        self.launcher.press("Escape")
        self.shows((1, "Write to the bank"), (1, "Buy oats"))
        self.assertEqual(self.version(), version)
        self.assertTrue(self.launcher.is_visible())
        self.open_editor_by_key("Buy oats")
        self.enter_title("Buy peas")
        self.shows((1, "Write to the bank"), (1, "Buy peas"))
        self.assertEqual(set(self.by_title()), {"Write to the bank", "Buy peas"})

    def entry_middle(self):
        extents = self.entry().get_extents(Atspi.CoordType.SCREEN)
        return extents.x + extents.width // 2, extents.y + extents.height // 2

    def test_adds_subtasks_down_to_the_fifth_level_and_deletes_them_together(self):
        self.start()
        self.open_page()
        self.add("1")
        self.shows((1, "1"))
        self.click_row("1")
        path = ["1"]
        for level in range(2, 6):
            self.choose(path[-1], 1, picture=f"menu-{level}")
            self.shows(*enumerate([*path, "New Subtask"], 1))
            self.assertEqual(self.stored_path("New Subtask"), [*path, "New Subtask"])

            self.open_editor_by_key("New Subtask")
            self.enter_title(str(level))
            path.append(str(level))
            self.shows(*enumerate(path, 1))
            self.assertEqual(self.stored_path(path[-1]), path)
        self.picture("five-levels")

        version = self.version()
        self.choose("5", 1)
        self.shows(*enumerate(path, 1))
        self.assertEqual(self.version(), version)

        # Only what follows the refusal has an effect.
        self.choose("1", 1)
        self.shows(*enumerate(path, 1), (2, "New Subtask"))
        self.assertEqual(self.stored_path("New Subtask"), ["1", "New Subtask"])
        self.assertEqual(len(self.tasks()), 6)

        self.choose("3", 2)
        self.shows((1, "1"), (2, "2"), (2, "New Subtask"))
        self.assertEqual(set(self.by_title()), {"1", "2", "New Subtask"})
        self.becomes(self.summary, "3 active · 3 total")

        self.choose("1", 2)
        self.shows()
        self.assertEqual(self.file.read_text(), "[]")
        self.becomes(self.summary, "0 active · 0 total")

    def test_ticks_under_each_filter(self):
        self.write_tasks(("bank", None), ("form", "bank"), ("stamp", "form"), ("milk", None))
        self.start()
        self.open_page()
        every_row = ((1, "bank"), (2, "form"), (3, "stamp"), (1, "milk"))
        self.shows(*every_row)

        # The last open child completes its ancestors.
        self.tick("stamp")
        self.shows((1, "milk"))
        self.assertEqual(self.states(), {"bank": True, "form": True, "stamp": True, "milk": False})
        self.becomes(self.summary, "1 active · 4 total")
        self.picture("active")

        self.filter_by("All")
        self.shows(*every_row)
        self.picture("all")
        self.tick("form")
        self.becomes(self.states, {"bank": False, "form": False, "stamp": False, "milk": False})
        self.becomes(self.summary, "4 active · 4 total")
        self.tick("milk")
        self.becomes(self.states, {"bank": False, "form": False, "stamp": False, "milk": True})
        self.tick("stamp")
        self.becomes(self.states, {"bank": True, "form": True, "stamp": True, "milk": True})

        self.filter_by("Completed")
        self.shows(*every_row)
        self.picture("completed")
        self.tick("form")
        self.shows((1, "milk"))
        self.assertEqual(self.states(),
                         {"bank": False, "form": False, "stamp": False, "milk": True})
        self.tick("milk")
        self.shows()
        self.assertFalse(any(self.states().values()))

    def test_has_its_keys_to_itself(self):
        self.write_tasks(("one", None), ("two", None), ("three", None))
        self.start()
        self.open_page()
        self.shows((1, "one"), (1, "two"), (1, "three"))
        self.click_row("one")
        self.launcher.press("Down", "Down", "Up", "space")
        self.shows((1, "one"), (1, "three"))
        self.assertEqual(self.states(), {"one": False, "two": True, "three": False})
        self.picture("keys")

        # The row that has moved up is now the current one.
        self.launcher.press("space")
        self.shows((1, "one"))
        self.assertEqual(self.states(), {"one": False, "two": True, "three": True})

    def test_deletes_and_restores_by_key(self):
        self.write_tasks(("bank", None), ("form", "bank"), ("stamp", "form"), ("milk", None))
        self.start()
        self.open_page()
        every_row = ((1, "bank"), (2, "form"), (3, "stamp"), (1, "milk"))
        self.shows(*every_row)
        before = self.by_title()
        self.click_row("form")
        self.launcher.press("Delete")
        self.shows((1, "bank"), (1, "milk"))
        self.assertEqual(set(self.by_title()), {"bank", "milk"})
        self.launcher.press("Up", "Delete")
        self.shows((1, "milk"))
        self.launcher.press("Delete")
        self.shows()
        self.becomes(lambda: self.tree().get_description(),
                     "No tasks yet\nPress Ctrl+Z here to bring back what you deleted")
        self.picture("empty")

        self.launcher.press("ctrl+z")
        self.shows((1, "milk"))
        self.launcher.press("ctrl+z")
        self.shows((1, "bank"), (1, "milk"))
        self.launcher.press("ctrl+z")
        self.shows(*every_row)
        restored = self.by_title()
        for title, task in before.items():
            self.assertEqual({key: restored[title][key] for key in task}, task)

        # The restored row is the current one.
        self.launcher.press("Insert")
        self.shows((1, "bank"), (2, "form"), (3, "stamp"), (3, "New Subtask"), (1, "milk"))
        self.assertEqual(self.stored_path("New Subtask"), ["bank", "form", "New Subtask"])
        self.picture("inserted")

        # An open editor has the same keys to itself.
        self.launcher.press("F2")
        self.launcher.press("Delete")
        self.launcher.type("envelope")
        self.launcher.press("Return")
        self.shows((1, "bank"), (2, "form"), (3, "stamp"), (3, "envelope"), (1, "milk"))
        self.assertEqual(self.stored_path("envelope"), ["bank", "form", "envelope"])

    def test_goes_back_and_keeps_its_filter(self):
        self.write_tasks(("one", None), ("two", None))
        self.start()
        self.open_page()
        self.filter_by("All")
        self.tick("one")
        self.becomes(self.states, {"one": True, "two": False})
        version = self.version()
        self.click("Back")
        self.becomes(self.launcher.titles, ["Task Management"])
        self.picture("back")
        self.launcher.type("x")
        self.becomes(self.launcher.text, "x")

        self.launcher.empty_box()
        self.open_page()
        self.shows((1, "one"), (1, "two"))
        self.assertEqual(self.version(), version)

        # Escape hides the window without closing the page.
        self.launcher.press("Escape")
        self.hides()
        self.start_again()
        self.shows((1, "one"), (1, "two"))

    def test_loses_nothing_when_it_is_killed(self):
        self.start()
        self.open_page()
        self.add("Call the bank")
        self.shows((1, "Call the bank"))
        self.launcher.kill()
        self.start()
        self.open_page()
        self.shows((1, "Call the bank"))

    def write_tasks(self, *titles_and_parents):
        """Writes the file; a task's title is its id, and the tasks are created in this order."""
        self.file.parent.mkdir(parents=True)
        self.file.write_text(json.dumps([
            {"id": title, "parentId": parent or "", "title": title,
             "createdTime": f"2026-03-01T09:30:{second:02}"}
            for second, (title, parent) in enumerate(titles_and_parents)]))


if __name__ == "__main__":
    main()
