# SPDX-License-Identifier: GPL-3.0-or-later
import json

from case import EndToEndCase, main
from desktop import wait_until
from launcher import BUILTINS

from gi.repository import Atspi


def is_near(geometry, expected):
    """Whether the sizes are equal and the positions differ at most by the start of a drag."""
    return geometry[2:] == expected[2:] and \
        all(abs(a - b) < 25 for a, b in zip(geometry[:2], expected[:2]))


class Window(EndToEndCase):
    def test_hides_at_escape_and_keeps_its_text(self):
        self.start()
        self.launcher.type("note")
        self.shows_titles("Notepad")
        self.launcher.press("Escape")
        self.hides()

        self.start_again()
        self.becomes(self.launcher.text, "note")
        self.shows_titles("Notepad")

    def test_hides_at_its_close_button_and_lives_on(self):
        self.start()
        self.launcher.click_close()
        self.hides()
        self.assertIsNone(self.launcher.process.poll())
        self.start_again()

    def test_hides_when_another_window_takes_over_if_the_user_prefers_it(self):
        self.home.set_preferences(autoHideOnFocusLoss="true")
        self.start()
        self.open_another_window()
        self.hides()

    def test_follows_the_mouse_at_its_title_bar(self):
        self.start()
        x, y, width, height = self.settled_geometry()
        grip = (x + width // 2, y + 18)
        with self.desktop.drag(grip, (grip[0] + 120, grip[1] - 90),
                               lambda: self.launcher.geometry()[:2] != (x, y)):
            wait_until(lambda: is_near(self.launcher.geometry(), (x + 120, y - 90, width, height)),
                       "the window is where the pointer took it")
        self.picture("moved")

    def test_shows_more_rows_when_it_is_pulled_taller_and_remembers_it(self):
        for number in range(30):
            self.home.add_entry(f"Program {number:02}")
        self.start()
        x, y, width, height = self.settled_geometry()
        rows = self.launcher.list_height()
        self.picture("before")

        edge = (x + width // 2, y + height - 2)
        with self.desktop.drag(edge, (edge[0], edge[1] + 150),
                               lambda: self.launcher.geometry()[3] != height):
            self.becomes(self.launcher.geometry, (x, y, width, height + 150))
        self.becomes(self.launcher.list_height, rows + 150)
        self.picture("taller")

        self.launcher.type("program 07")
        wait_until(lambda: self.launcher.geometry()[3] < height, "the window fits its one row")
        self.launcher.empty_box()
        self.becomes(lambda: self.launcher.geometry()[3], height + 150)

    def test_becomes_wider_when_it_is_pulled_at_its_side(self):
        self.start()
        full = self.settled_geometry()[3]
        self.launcher.type("note")
        wait_until(lambda: self.launcher.geometry()[3] < full, "the window fits its one row")
        x, y, width, height = self.settled_geometry()
        edge = (x + width - 2, y + height // 2)
        with self.desktop.drag(edge, (edge[0] + 100, edge[1]),
                               lambda: self.launcher.geometry()[2] != width):
            self.becomes(self.launcher.geometry, (x, y, width + 100, height))

        # That height does not limit the next rows.
        self.launcher.empty_box()
        self.becomes(lambda: self.launcher.geometry()[3], full)
        self.assertLessEqual(abs(self.launcher.geometry()[2] - (width + 100)), 1)

    def settled_geometry(self):
        """The geometry after the window has adapted to its rows."""
        wait_until(lambda: self.launcher.row_count() > 0, "rows show")
        last = None

        def settles():
            nonlocal last
            previous, last = last, self.launcher.geometry()
            return previous == last
        wait_until(settles, "the window stands still")
        return last


class ManyPins(EndToEndCase):
    SCREEN = 1280

    def test_stay_on_the_screen_and_scroll(self):
        names = [f"Some Application {number}" for number in range(14)]
        folder = self.home.data / "Vaskel"
        folder.mkdir()
        (folder / "pins.json").write_text(json.dumps(
            [{"name": name, "path": f"/{name}.desktop", "icon": ""} for name in names]))
        self.start()
        self.becomes(lambda: (self.launcher.geometry()[0], self.launcher.geometry()[2]),
                     (0, self.SCREEN))
        self.picture("start")
        self.launcher.tab_to(names[0])
        for name in names[1:]:
            self.launcher.press("Tab")
            self.becomes(lambda: self.launcher.focused().get_name(), name)
            self.is_in_the_window(self.launcher.focused())
        self.picture("end")

    def is_in_the_window(self, button):
        left, _, width, _ = self.launcher.geometry()
        extents = button.get_extents(Atspi.CoordType.SCREEN)
        self.assertGreaterEqual(extents.x, left)
        self.assertLessEqual(extents.x + extents.width, left + width)


class Focus(EndToEndCase):
    def test_stays_in_the_list_when_a_row_is_pinned(self):
        self.start()
        self.shows_all()
        self.launcher.click_row("Notepad", button=3)
        self.launcher.choose_from_menu()
        self.becomes(self.launcher.pins, ["Calculator", "Task Manager", "Notepad"])
        wait_until(lambda: self.launcher.focused().get_role() == Atspi.Role.LIST,
                   "the list has the focus")
        self.launcher.press("Home")
        self.becomes(self.launcher.current_row, 0)
        self.launcher.press("space", "Down")
        self.becomes(self.launcher.current_row, 1)

    def test_goes_to_the_box_when_its_pin_is_unpinned(self):
        self.start()
        self.shows_all()
        self.launcher.tab_to("Calculator")
        self.launcher.press("Menu")
        self.launcher.choose_from_menu()
        self.becomes(self.launcher.pins, ["Task Manager"])
        self.launcher.wait_until_ready()
        self.picture("unpinned")
        self.launcher.type("note")
        self.shows_titles("Notepad")

    def shows_all(self):
        self.becomes(self.launcher.row_count, len(BUILTINS))


class MinimisedWindow(EndToEndCase):
    def setUp(self):
        super().setUp()
        self.start()
        self.desktop.run("xdotool", "windowminimize", self.launcher.window)
        self.hides()

    def comes_back(self):
        self.launcher.wait_until_ready()
        self.launcher.type("note")
        self.shows_titles("Notepad")

    def test_comes_back_at_a_second_start(self):
        self.start_again()
        self.comes_back()
        self.picture("back")

    def test_comes_back_by_one_press_of_the_hotkey(self):
        self.launcher.press("ctrl+alt+space")
        self.comes_back()

    def test_comes_back_by_one_click_on_the_floating_icon(self):
        x, y, width, height = self.launcher.float_icon()
        self.desktop.click(x + width // 2, y + height // 2)
        self.comes_back()


class Instances(EndToEndCase):
    def test_comes_back_at_a_second_start(self):
        self.start()
        self.launcher.press("Escape")
        self.hides()
        self.start_again()
        self.launcher.type("note")
        self.shows_titles("Notepad")

    def test_takes_keys_however_soon_it_comes_back(self):
        self.start()
        for text in ("a", "b", "c", "d", "e"):
            self.launcher.press("Escape")
            self.hides()
            self.start_again()
            self.launcher.type(text)
        self.becomes(self.launcher.text, "abcde")

    def test_comes_to_the_front_at_a_second_start(self):
        self.start()
        self.open_another_window()
        wait_until(lambda: self.launcher.top_window() != self.launcher.window,
                   "the other window is on top")
        self.start_again()
        self.becomes(self.launcher.top_window, self.launcher.window)
        self.picture("front")

    def test_leaves_one_of_two_that_start_together(self):
        both = [self.launcher.start_process() for _ in range(2)]
        self.addCleanup(lambda: [process.kill() for process in both])
        wait_until(lambda: any(process.poll() is not None for process in both), "one ends")
        stays, ended = sorted(both, key=lambda process: process.returncode is not None)
        self.assertEqual(ended.returncode, 0)

        self.launcher.attach(stays)
        self.assertEqual(self.launcher.processes(), [stays.pid])

    def test_starts_after_an_instance_that_was_killed(self):
        for _ in range(2):
            self.start()
            self.launcher.kill()
        self.start()
        self.assertEqual(self.launcher.processes(), [self.launcher.process.pid])



class ScaledWindow(EndToEndCase):
    def test_takes_up_the_rows_it_has_room_for(self):
        for number in range(30):
            (self.home.folder / f"Folder {number:02}").mkdir()
        for scale in (1, 1.25, 1.5, 1.75, 2):
            with self.subTest(scale):
                self.launcher.environment["QT_SCALE_FACTOR"] = str(scale)
                self.start()
                for _ in range(3):
                    self.launcher.type("calc 1+2")
                    self.shows_titles("3")
                    self.launcher.empty_box()
                    self.launcher.type("cd ~")
                    wait_until(lambda: self.launcher.row_count() > 30, "the folders are listed")
                    wait_until(lambda: abs(self.launcher.geometry()[3] - 460 * scale) <= 2 * scale,
                               "the window is as tall as it may be")
                    self.launcher.empty_box()
                self.launcher.terminate()


if __name__ == "__main__":
    main()
