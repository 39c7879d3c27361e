# SPDX-License-Identifier: GPL-3.0-or-later
from case import EndToEndCase, main
from desktop import PATIENCE, stop, wait_until
from launcher import centre, find, walk_through_menu

from gi.repository import Atspi

ENTRIES = ["Show", "Settings", "Restart", "Quit"]
FOCUS_LOSS_TIME = 0.5  # seconds; longer than the toolkit's delay
MESSAGE_TIME = 3  # seconds; longer than the delay of the first message


class TrayCase(EndToEndCase):
    place = 0

    def start_tray(self):
        host = self.desktop.start_tray()
        self.addCleanup(stop, host)

    def hide_window(self):
        self.launcher.press("Escape")
        self.hides()

    def click_icon(self, button=1):
        x, y, width, height = self.launcher.tray_icon_place()
        # Alternate between two positions: two clicks at one would be a double click.
        self.place = 1 - self.place
        self.desktop.click(x + width // 4 + self.place * width // 2, y + height // 2, button)

    def icon(self):
        return wait_until(self.launcher.tray_icon, "the tray shows the icon")

    def is_up(self):
        self.launcher.wait_until_ready()


class Tray(TrayCase):
    def setUp(self):
        super().setUp()
        self.start_tray()
        self.start()
        self.icon()

    def menu(self):
        """The menu's window in a list, or an empty list. No other window is as small."""
        return [window for window in self.launcher.windows()
                if self.desktop.geometry(window)[2] < 400]

    def open_menu(self):
        # The toolkit reports a lost focus with a delay of a tenth of a second, and then closes its
        # menus.
        self.stays(lambda: not self.menu(), "no menu is open", FOCUS_LOSS_TIME)
        self.click_icon(button=3)
        wait_until(self.menu, "the menu opens")

    def walk_to(self, entry):
        """Opens the menu, moves down to an entry and returns the names of all on the way."""
        return walk_through_menu(self.launcher, self.open_menu, ENTRIES.index(entry) + 1)

    def close_menu(self):
        self.launcher.press("Escape")
        wait_until(lambda: not self.menu(), "the menu closes")

    def choose(self, entry):
        self.assertEqual(self.walk_to(entry)[-1], entry)
        self.launcher.press("Return")

    def test_shows_the_icon(self):
        width, height = self.launcher.tray_icon_place()[2:]
        self.assertTrue(16 <= width <= 64 and 16 <= height <= 64)
        self.picture("icon")
        # The tray shows the program's icon, which is blue and white.
        colours = self.desktop.colours(self.icon())
        blue = sum(count for (r, g, b), count in colours.items() if b > 150 and b > r + 60)
        self.assertGreater(blue, width * height // 4, colours)

    def test_icon_says_whose_it_is(self):
        x, y, width, height = self.launcher.tray_icon_place()
        self.desktop.move_pointer(x + width // 2, y + height // 2)
        wait_until(lambda: ["Vaskel"] == [found.get_name() for found in self.launcher.everything()
                                          if found.get_role() == Atspi.Role.TOOL_TIP],
                   "the tool tip shows")
        self.picture("tip")

    def test_left_click_hides_and_shows(self):
        for _ in range(3):
            self.click_icon()
            self.hides()
            self.click_icon()
            self.is_up()
        self.launcher.type("note")
        self.shows_titles("Notepad")

    def test_double_click_counts_as_one(self):
        x, y, width, height = self.launcher.tray_icon_place()
        self.desktop.click(x + width // 2, y + height // 2, times=2)
        self.hides()
        self.stays(lambda: not self.launcher.is_visible(), "the window is hidden", 1)
        self.click_icon()
        self.is_up()

    def test_other_clicks_leave_the_window_alone(self):
        self.click_icon(button=2)
        self.assertEqual(self.walk_to("Quit"), ENTRIES)
        self.picture("menu")
        self.assertTrue(self.launcher.is_visible())
        self.close_menu()
        self.assertTrue(self.launcher.is_visible())

        self.hide_window()
        self.click_icon(button=2)
        self.open_menu()
        self.assertFalse(self.launcher.is_visible())
        self.close_menu()
        self.assertFalse(self.launcher.is_visible())

    def test_show_brings_the_window_up(self):
        self.launcher.type("note")
        self.hide_window()
        self.choose("Show")
        self.is_up()
        self.becomes(self.launcher.text, "note")

        self.open_another_window()
        self.choose("Show")
        self.is_up()

    def test_settings_brings_the_window_up_with_its_text(self):
        self.launcher.type("note")
        self.shows_titles("Notepad")
        self.hide_window()
        self.choose("Settings")
        wait_until(self.launcher.is_visible, "the window shows")
        wait_until(lambda: self.launcher.control("Save"), "the page opens")
        self.becomes(self.launcher.text, "note")
        self.assertIsNone(self.launcher.badge())
        self.picture("settings")

    def test_quit_ends_the_program_while_the_window_shows(self):
        self.choose("Quit")
        self.ends_in_order()

    def test_quit_ends_the_program_while_the_window_is_hidden(self):
        self.hide_window()
        self.choose("Quit")
        self.ends_in_order()

    def ends_in_order(self):
        self.assertEqual(self.launcher.process.wait(PATIENCE), 0)
        self.assertEqual(self.launcher.processes(), [])
        wait_until(lambda: self.launcher.tray_icon() is None, "the icon is gone")

    def test_restart_begins_anew_while_the_window_shows(self):
        self.launcher.type("note")
        self.shows_titles("Notepad")
        self.choose("Restart")
        self.begins_anew()

    def test_restart_begins_anew_while_the_window_is_hidden(self):
        self.hide_window()
        self.choose("Restart")
        self.begins_anew()

    def begins_anew(self):
        self.assertEqual(self.launcher.process.wait(PATIENCE), 0)
        pid = wait_until(lambda: next(iter(self.launcher.processes()), None),
                         "another process runs")
        self.assertNotEqual(pid, self.launcher.process.pid)
        self.launcher.attach_to_foreign(pid)
        self.becomes(self.launcher.text, "")
        self.icon()
        self.launcher.type("note")
        self.shows_titles("Notepad")


class FirstStart(TrayCase):
    def setUp(self):
        super().setUp()
        self.start_tray()
        wait_until(self.desktop.tray, "the tray runs")

    def message(self, text):
        """Whether a message of the icon, a small window of its own, begins with this text."""
        return any(found.get_name().startswith(text) for found in self.launcher.everything())

    def test_names_the_hotkey_at_the_first_start_alone(self):
        self.start()
        wait_until(lambda: self.message("Press Ctrl+Alt+Space to show"), "the message shows")
        self.picture("message")
        self.launcher.terminate()
        self.start()
        self.stays(lambda: not self.message("Press"), "there is no message", MESSAGE_TIME)

    def test_message_closes_at_its_button(self):
        self.start()
        wait_until(lambda: self.message("Press Ctrl+Alt+Space to show"), "the message shows")
        # Those of the window come first, and have other sizes.
        button = find(self.launcher.application(), Atspi.Role.PUSH_BUTTON)[-1]
        extents = button.get_extents(Atspi.CoordType.SCREEN)
        self.assertEqual((extents.width, extents.height), (15, 15))
        self.desktop.click(*centre(button))
        wait_until(lambda: not self.message("Press"), "the message is gone")
        self.assertTrue(self.launcher.is_visible())

    def test_tells_that_the_hotkey_is_held(self):
        # The window manager's default configuration uses it to switch desktops.
        self.home.set_preferences(globalHotkey="Ctrl+Alt+Left")
        self.start()
        wait_until(lambda: self.message("The hotkey Ctrl+Alt+Left is held by another program."),
                   "the message shows")
        self.picture("message")


class WithoutTray(TrayCase):
    def test_runs_without_a_tray(self):
        self.start()
        self.assertIsNone(self.launcher.tray_icon())
        self.hide_window()
        self.start_again()
        self.launcher.type("note")
        self.shows_titles("Notepad")

    def test_comes_into_a_tray_that_starts_later_and_outlives_it(self):
        self.start()
        host = self.desktop.start_tray()
        self.icon()
        stop(host)
        wait_until(lambda: self.launcher.tray_icon() is None, "the icon is gone")
        self.launcher.type("note")
        self.shows_titles("Notepad")

        self.start_tray()
        self.click_icon()
        self.hides()


if __name__ == "__main__":
    main()
