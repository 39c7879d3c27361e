# SPDX-License-Identifier: GPL-3.0-or-later
import itertools
import string

from case import EndToEndCase, main
from desktop import wait_until
from launcher import FocusLog, find

from gi.repository import Atspi

MAIN = "ctrl+alt+space"  # the default
ROUNDS = 200
HOLD_TIME = 1.5  # seconds, about twenty auto-repeats of a held key


class Hotkeys(EndToEndCase):
    """The other window has the focus whenever a hotkey is to show the launcher."""

    def start_behind_another_window(self):
        self.start()
        self.launcher.press("Escape")
        self.hides()
        self.other = self.open_another_window()

    def press_hotkey(self, combination):
        """Presses and releases the keys as fast as xdotool can."""
        self.desktop.press_quickly(combination)

    def comes_up(self):
        wait_until(lambda: self.desktop.active_window() == self.launcher.window,
                   "the launcher is active")

    def goes_away(self):
        self.hides()
        # The window manager decides which window becomes active.
        wait_until(lambda: self.desktop.activate(self.other), "the other window is active")

    def test_brings_the_window_up_with_every_key_that_is_typed(self):
        self.start_behind_another_window()
        typed = ""
        for _, letter in zip(range(ROUNDS), itertools.cycle(string.ascii_lowercase)):
            self.press_hotkey(MAIN)
            self.comes_up()
            self.press_hotkey(letter)
            typed += letter
            self.becomes(self.launcher.text, typed)
            self.press_hotkey(MAIN)
            self.goes_away()
        self.assertEqual(len(typed), ROUNDS)

    def test_hides_the_window_however_it_came_up(self):
        self.start()
        self.press_hotkey(MAIN)
        self.hides()
        self.start_again()
        self.other = self.open_another_window()
        self.press_hotkey(MAIN)
        self.hides()

    def test_brings_a_command_up(self):
        self.home.set_preferences({"pluginHotkeys/calc": "Ctrl+Alt+C"})
        self.start_behind_another_window()
        self.press_hotkey("ctrl+alt+c")
        self.comes_up()
        self.becomes(self.launcher.badge, "calc")
        self.launcher.type("1+2")
        self.shows_titles("3")
        self.picture("calc")

        # If the window is visible, the hotkey of a command does not hide it.
        self.launcher.type("0")
        self.becomes(self.launcher.text, "1+20")
        self.press_hotkey("ctrl+alt+c")
        self.becomes(self.launcher.text, "")
        self.assertEqual(self.launcher.badge(), "calc")
        self.assertTrue(self.launcher.is_visible())

    def test_brings_a_page_up(self):
        self.home.set_preferences({"pluginHotkeys/todo": "Meta+F5"})
        self.start_behind_another_window()
        self.press_hotkey("super+F5")
        self.comes_up()
        self.becomes(self.launcher.badge, "todo")
        wait_until(lambda: find(self.launcher.content(), Atspi.Role.TREE), "the page shows")
        self.picture("todo")

    def test_follows_the_preferences(self):
        self.home.set_preferences({"globalHotkey": "Ctrl+Alt+K", "pluginHotkeys/calc": "Ctrl+Alt+C",
                                   "plugins/calc": "false"})
        self.start_behind_another_window()
        for freed in (MAIN, "ctrl+alt+c"):
            self.press_hotkey(freed)
        self.press_hotkey("ctrl+alt+k")
        self.comes_up()
        self.assertEqual((self.launcher.badge(), self.launcher.text()), (None, ""))
        self.press_hotkey("ctrl+alt+k")
        self.goes_away()

    def test_does_without_a_combination_that_another_program_holds(self):
        # The window manager's default configuration uses it to switch desktops.
        self.home.set_preferences({"globalHotkey": "Ctrl+Alt+Left",
                                   "pluginHotkeys/calc": "Ctrl+Alt+C"})
        self.start_behind_another_window()
        # As our stand-in or as the library says it.
        self.assertRegex(self.launcher.messages(), "another program holds|Failed to register")
        self.press_hotkey("ctrl+alt+Left")
        self.press_hotkey("ctrl+alt+c")
        self.comes_up()
        self.becomes(self.launcher.badge, "calc")
        self.assertIsNone(self.launcher.process.poll())
        self.launcher.press("Escape")
        self.goes_away()
        self.start_again()

    def test_settings_page_tells_that_another_program_holds_it(self):
        self.home.set_preferences({"globalHotkey": "Ctrl+Alt+Left", "pluginHotkeys/app": "F8"})
        self.start()
        self.launcher.open_page("set", "Save")
        held = "This hotkey is held by another program."
        wait_until(lambda: held in self.names(), "the page tells it")
        self.picture("held")
        # The notice may be gone again before all controls are read.
        with FocusLog(Atspi.Role.LABEL, "showing") as log:
            self.launcher.tab_to("Global Hotkey")
            self.launcher.press("ctrl+alt+k")
            wait_until(lambda: held not in self.names(), "another hotkey may be free")
            self.launcher.tab_to("Save")
            self.launcher.press("space")
            wait_until(lambda: "Saved" in log.names(), "the page tells that it has saved")
        wait_until(lambda: "Saved" not in self.names(), "the notice goes")
        self.assertNotIn(held, self.names())

        self.launcher.open_page("plugin", "Enable all")
        wait_until(lambda: "This key is taken from all programs." in self.names(),
                   "the page tells it")
        self.picture("bare")

    def names(self):
        """The accessible names of all visible controls."""
        return [found.get_name() for found in self.launcher.everything()]

    def test_takes_keys_while_the_hotkey_is_held(self):
        self.home.set_preferences(globalHotkey="F9")
        self.start_behind_another_window()
        self.desktop.hold("F9")
        self.addCleanup(self.desktop.release, "F9")
        self.comes_up()
        self.launcher.type("note")
        self.becomes(self.launcher.text, "note")
        self.shows_titles("Notepad")
        self.desktop.release("F9")
        self.launcher.type("p")
        self.becomes(self.launcher.text, "notep")
        self.assertTrue(self.launcher.is_visible())

    def test_counts_a_held_hotkey_once(self):
        self.home.set_preferences({"globalHotkey": "F9", "pluginHotkeys/calc": "F8",
                                   "autoHideOnFocusLoss": "true"})
        self.start_behind_another_window()
        for key in ("F9", "F8"):
            self.desktop.hold(key)
            self.addCleanup(self.desktop.release, key)
            self.comes_up()
            self.stays(lambda: self.desktop.active_window() == self.launcher.window,
                       "the launcher is active", HOLD_TIME)
            self.desktop.release(key)
            self.launcher.press("Escape")
            self.goes_away()

        self.desktop.hold("F9")
        self.comes_up()
        self.desktop.release("F9")
        self.desktop.hold("F9")
        self.goes_away()
        self.stays(lambda: not self.launcher.is_visible(), "the window is hidden", HOLD_TIME)


if __name__ == "__main__":
    main()
