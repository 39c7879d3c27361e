# SPDX-License-Identifier: GPL-3.0-or-later
"""The hotkeys on KWin, with the portal of KDE, while a native Wayland window has the focus.

usage: tst_kwin.py PROGRAM PICTURE-FOLDER [unittest's own]
"""

import os
import signal

from wayland import ForeignCompositor

from case import EndToEndCase, main
from desktop import stop, wait_until
from kwin import KWin

from gi.repository import Gio, GLib

MAIN = ("Control", "Alt", "space")  # the default
COMMAND = ("Control", "Alt", "c")
OTHER = ("Control", "Alt", "k")
ROUNDS = 10
HOLD_TIME = 1.5  # seconds, about forty repetitions of a held key
PORTAL = "org.freedesktop.portal.Desktop"


class OnKWin(ForeignCompositor, EndToEndCase):
    def setUp(self):
        super().setUp()
        self.home.set_preferences({"pluginHotkeys/calc": "Ctrl+Alt+C"})

    def start_behind_terminal(self):
        self.start()
        self.is_bound(1)
        self.launcher.press("Escape")
        self.hides()
        self.addCleanup(stop, self.desktop.open_terminal())

    def is_bound(self, times):
        wait_until(lambda: self.launcher.messages().count("The desktop holds the hotkeys") >= times,
                   "the desktop holds the hotkeys")

    def press(self, keys):
        self.desktop.keyboard.press(*keys)

    def comes_up(self):
        self.launcher.wait_until_ready()
        self.desktop.typed()

    def goes_away(self):
        """Waits until the window is hidden and keys reach the terminal again."""
        self.hides()
        wait_until(self.desktop.reaches_terminal, "the terminal has the focus")

    def test_show_and_hide_the_window(self):
        self.start_behind_terminal()
        for letter in "abcdefghijklmnopqrstuvw"[:ROUNDS]:
            self.press(MAIN)
            self.comes_up()
            self.desktop.keyboard.type(letter)
            wait_until(lambda: letter in self.launcher.text(), "the letter is in the box")
            self.assertEqual(self.desktop.typed(), "")
            self.press(MAIN)
            self.goes_away()

    def test_bring_a_command_up(self):
        self.start_behind_terminal()
        self.press(COMMAND)
        self.comes_up()
        self.becomes(self.launcher.badge, "calc")
        self.desktop.keyboard.type("a")
        self.becomes(self.launcher.text, "a")

    def test_count_a_held_key_once(self):
        self.start_behind_terminal()
        for key in MAIN:
            self.desktop.keyboard.hold(key)
        self.comes_up()
        self.stays(self.launcher.is_visible, "the window shows", HOLD_TIME)
        for key in MAIN:
            self.desktop.keyboard.release(key)
        self.press(MAIN)
        self.goes_away()

    def test_follow_the_preferences(self):
        self.start_behind_terminal()
        self.press(MAIN)
        self.comes_up()
        self.launcher.open_page("set", "Save")
        wait_until(lambda: "The desktop holds this hotkey: Ctrl+Alt+Space" in self.names(),
                   "the page tells the keys")
        self.launcher.tab_to("Global Hotkey")
        self.press(OTHER)
        self.launcher.tab_to("Save")
        self.desktop.keyboard.press("space")
        wait_until(lambda: "The desktop holds this hotkey: Ctrl+Alt+K" in self.names(),
                   "the page tells the new keys")
        self.press(OTHER)
        self.goes_away()
        self.press(MAIN)
        self.press(OTHER)
        self.comes_up()
        self.stays(self.launcher.is_visible, "the old keys do nothing", HOLD_TIME)

    def names(self):
        """The accessible names of all visible controls."""
        return [found.get_name() for found in self.launcher.everything()]

    def test_survive_a_portal_that_dies(self):
        self.start_behind_terminal()
        for times in (2, 3):
            os.kill(self.ask_bus("GetConnectionUnixProcessID"), signal.SIGKILL)
            wait_until(lambda: not self.ask_bus("NameHasOwner"), "the portal has died")
            self.ask_bus("StartServiceByName", GLib.Variant("(su)", (PORTAL, 0)))
            self.is_bound(times)
            self.press(MAIN)
            self.comes_up()
            self.press(MAIN)
            self.goes_away()

    def ask_bus(self, method, arguments=GLib.Variant("(s)", (PORTAL,))):
        bus = Gio.bus_get_sync(Gio.BusType.SESSION)
        return bus.call_sync("org.freedesktop.DBus", "/org/freedesktop/DBus",
                             "org.freedesktop.DBus", method, arguments, None,
                             Gio.DBusCallFlags.NONE, -1, None).unpack()[0]


if __name__ == "__main__":
    main(KWin)
