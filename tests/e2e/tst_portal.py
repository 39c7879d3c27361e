# SPDX-License-Identifier: GPL-3.0-or-later
"""The hotkeys of a Wayland session, with a stand-in for the desktop's portal.

The screen is an X11 one all the same, so the keys that the program grabs itself can be pressed.
"""

import json
import pathlib
import subprocess
import sys

from case import EndToEndCase, main
from desktop import start_tied, stop, wait_until

from gi.repository import Gio, GLib

STAND_IN = pathlib.Path(__file__).resolve().parents[1] / "support" / "portal.py"
NAME = "org.freedesktop.portal.Desktop"
HOTKEY = "ctrl+alt+space"  # the default
HOLD_TIME = 0.5  # seconds
TOLD_BY_DESKTOP = "The desktop holds this hotkey: CTRL+ALT+space"
TOLD_WITHOUT_PORTAL = ("For a hotkey that works in all windows, bind \"Vaskel --toggle\" in your "
                       "desktop's settings.")
TOLD_BY_VASKEL = "Vaskel holds this hotkey."


class Portal:
    """The stand-in on the bus of the desktop."""

    def __init__(self, desktop, **parameters):
        flags = (Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT
                 | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION)
        self._bus = Gio.DBusConnection.new_for_address_sync(desktop.bus, flags, None, None)
        self._process = start_tied(
            [sys.executable, "-B", "-m", "dbusmock", "--session", "--template", str(STAND_IN),
             "--parameters", json.dumps(parameters)],
            env={"DBUS_SESSION_BUS_ADDRESS": desktop.bus, "PATH": "/usr/bin:/bin"},
            stdout=subprocess.DEVNULL)
        wait_until(self._is_on_the_bus, "the portal is on the bus")

    def control(self, method, *arguments):
        values = GLib.Variant(f"({'s' * len(arguments)})", arguments)
        return self._bus.call_sync(NAME, "/org/freedesktop/portal/desktop", "local.vaskel.Portal",
                                   method, values, None, Gio.DBusCallFlags.NONE, -1,
                                   None).unpack()

    def calls(self):
        return self.control("Calls")[0]

    def send(self, signal, shortcut="toggle"):
        self.control("Send", signal, shortcut)

    def end(self):
        stop(self._process)
        if not self._bus.is_closed():
            self._bus.close_sync()

    def _is_on_the_bus(self):
        owner = self._bus.call_sync("org.freedesktop.DBus", "/org/freedesktop/DBus",
                                    "org.freedesktop.DBus", "NameHasOwner",
                                    GLib.Variant("(s)", (NAME,)), None, Gio.DBusCallFlags.NONE, -1,
                                    None)
        return owner.unpack()[0]


class HotkeysOfThePortal(EndToEndCase):
    def start_portal(self, **parameters):
        self.portal = Portal(self.desktop, **parameters)
        self.addCleanup(self.portal.end)

    def start_hidden(self):
        """Starts the program in a Wayland session, and hides it once its hotkeys are bound."""
        self.launcher.environment["WAYLAND_DISPLAY"] = "wayland-0"
        self.start()
        self.launcher.press("Escape")
        self.hides()

    def is_bound(self):
        return "The desktop holds the hotkeys" in self.launcher.messages()

    def press(self, shortcut="toggle"):
        """A press that is held for a moment."""
        for _ in range(5):
            self.portal.send("Activated", shortcut)
        self.portal.send("Deactivated", shortcut)

    def comes_up(self):
        wait_until(self.launcher.is_visible, "the window shows")
        self.launcher.wait_until_ready()

    def names(self):
        """The accessible names of all visible controls."""
        return [found.get_name() for found in self.launcher.everything()]

    def test_shows_and_hides_the_window(self):
        self.start_portal()
        self.start_hidden()
        wait_until(self.is_bound, "the hotkey is bound")
        for _ in range(10):
            self.press()
            self.comes_up()
            self.press()
            self.hides()

    def test_brings_a_command_up(self):
        self.home.set_preferences({"pluginHotkeys/calc": "Ctrl+Alt+C"})
        self.start_portal()
        self.start_hidden()
        wait_until(self.is_bound, "the hotkeys are bound")
        self.press("command-calc-CTRL+ALT+c")
        self.comes_up()
        self.becomes(self.launcher.badge, "calc")

    def test_takes_the_keys_while_there_is_no_portal(self):
        self.start_portal()
        self.start_hidden()
        wait_until(self.is_bound, "the hotkey is bound")
        # The desktop of this test does not hold the key, and the program no longer does.
        self.desktop.press(HOTKEY)
        self.stays(lambda: not self.launcher.is_visible(), "the window is hidden", HOLD_TIME)

        self.portal.end()
        wait_until(self.grabs, "the program takes the key itself")
        self.launcher.press("Escape")
        self.hides()
        self.start_portal()
        wait_until(lambda: "BindShortcuts" in " ".join(self.portal.calls()), "the hotkey is asked for")
        self.press()
        self.comes_up()

    def grabs(self):
        self.desktop.press(HOTKEY)
        return self.launcher.is_visible()

    def test_follows_the_preferences(self):
        self.start_portal()
        self.start_hidden()
        wait_until(self.is_bound, "the hotkey is bound")
        self.portal.calls()
        self.press()
        self.comes_up()
        self.launcher.open_page("set", "Save")
        wait_until(lambda: TOLD_BY_DESKTOP in self.names(), "the page tells the keys")
        self.picture("desktop")
        self.launcher.tab_to("Global Hotkey")
        self.launcher.press("ctrl+alt+k")
        wait_until(lambda: TOLD_BY_DESKTOP not in self.names(), "the keys belong to the old hotkey")
        self.launcher.tab_to("Save")
        self.launcher.press("space")
        wait_until(lambda: TOLD_BY_DESKTOP.replace("space", "k") in self.names(),
                   "the page tells the new keys")
        self.assertIn("BindShortcuts x11 toggle-CTRL+ALT+k=CTRL+ALT+k", self.portal.calls())

    def test_opens_the_dialog_of_the_desktop(self):
        self.start_portal(version=2)
        self.start_hidden()
        wait_until(self.is_bound, "the hotkey is bound")
        self.press()
        self.comes_up()
        self.launcher.open_page("set", "Save")
        wait_until(lambda: TOLD_BY_DESKTOP in self.names(), "the page tells the keys")
        self.picture("dialog")
        self.launcher.tab_to("Change…")
        self.launcher.press("space")
        wait_until(lambda: "ConfigureShortcuts vaskel x11" in self.portal.calls(),
                   "the desktop is asked for its dialog")
        self.portal.control("SetTrigger", "toggle", "Meta+Space")
        wait_until(lambda: "The desktop holds this hotkey: Meta+Space" in self.names(),
                   "the page tells the new keys")

    def test_does_without_a_portal_that_refuses(self):
        self.start_portal(responses={"BindShortcuts": 1})
        self.start_hidden()
        wait_until(lambda: "BindShortcuts: the answer is 1" in self.launcher.messages(),
                   "the log has a line")
        self.desktop.press(HOTKEY)
        self.comes_up()
        self.launcher.open_page("set", "Save")
        wait_until(lambda: TOLD_WITHOUT_PORTAL in self.names(), "the page tells what to do")
        self.picture("refused")
        self.assertEqual(self.launcher.messages().count("does not hold the hotkeys"), 1)

    def test_leaves_the_portal_alone_on_x11(self):
        self.start_portal()
        self.start()
        self.launcher.open_page("set", "Save")
        wait_until(lambda: TOLD_BY_VASKEL in self.names(), "the page tells it")
        self.picture("x11")
        self.launcher.press("Escape")
        self.assertEqual(self.portal.calls(), [])


if __name__ == "__main__":
    main()
