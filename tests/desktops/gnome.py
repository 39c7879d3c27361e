# SPDX-License-Identifier: GPL-3.0-or-later
import json
import sys

from gi.repository import Gio, GLib
from wayland import WaylandDesktop

from desktop import wait_until
from keyboard import KEYS, Keyboard

REMOTE = "org.gnome.Mutter.RemoteDesktop"
SHELL = "org.gnome.Shell"


class Bus:
    def __init__(self):
        self._connection = Gio.bus_get_sync(Gio.BusType.SESSION)

    def call(self, name, path, interface, method, arguments=None):
        return self._connection.call_sync(name, path, interface, method, arguments, None,
                                          Gio.DBusCallFlags.NONE, -1, None).unpack()


class RemoteKeyboard(Keyboard):
    """Types through the interface for remote desktops."""

    def __init__(self, bus):
        self._bus = bus
        self._session = bus.call(REMOTE, "/org/gnome/Mutter/RemoteDesktop", REMOTE, "CreateSession")[0]
        self._call("Start")

    def close(self):
        self._call("Stop")

    def _send_key(self, key, state):
        self._call("NotifyKeyboardKeycode", GLib.Variant("(ub)", (KEYS[key], bool(state))))

    def _call(self, method, arguments=None):
        self._bus.call(REMOTE, self._session, f"{REMOTE}.Session", method, arguments)


class Gnome(WaylandDesktop):
    """GNOME Shell with a system bus of its own."""

    name = "GNOME"
    session_variables = ["XAUTHORITY"]

    def picture(self, path):
        self._bus.call(f"{SHELL}.Screenshot", "/org/gnome/Shell/Screenshot", f"{SHELL}.Screenshot",
                       "Screenshot", GLib.Variant("(bbs)", (False, False, str(path))))

    def evaluate(self, expression):
        """The value of a JavaScript expression in the shell."""
        text = GLib.Variant("(s)", (expression,))
        succeeded, value = self._bus.call(SHELL, "/org/gnome/Shell", SHELL, "Eval", text)
        if not succeeded:
            raise RuntimeError(value)
        return json.loads(value or "null")

    def _start_compositor(self, width, height):
        self._bus = Bus()
        system_bus = self._start_dbus(self._base())
        environment = self._base() | {"DBUS_SESSION_BUS_ADDRESS": self.bus,
                                      "DBUS_SYSTEM_BUS_ADDRESS": system_bus}
        self._start([sys.executable, "-m", "dbusmock", "--system", "--template", "logind"],
                    env=environment)
        self._start(["gnome-shell", "--headless", "--wayland", "--unsafe-mode", "--wayland-display",
                     "wayland-1", "--virtual-monitor", f"{width}x{height}"], env=environment)

    def _variables_of_session(self):
        names = json.dumps(["DISPLAY", "WAYLAND_DISPLAY", *self.session_variables])
        values = self.evaluate("imports.ui.main.layoutManager._startingUp ? null : Object.fromEntries("
                               f"{names}.map(name => [name, imports.gi.GLib.getenv(name)]))")
        if values:
            # It would keep the focus from the windows.
            wait_until(self._leaves_overview, "the overview has gone")
        return values

    def _leaves_overview(self):
        return self.evaluate("imports.ui.main.overview.hide(), !imports.ui.main.overview.visible")

    def _make_keyboard(self, socket_path):
        return RemoteKeyboard(self._bus)

    def _base(self):
        return super()._base() | {"GSETTINGS_BACKEND": "memory"}
