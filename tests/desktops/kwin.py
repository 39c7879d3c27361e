# SPDX-License-Identifier: GPL-3.0-or-later
"""KWin with Xwayland, and KDE's desktop portal."""

import shutil

from wayland import WaylandDesktop

from fakeinput import FakeInput

SOCKET = "wayland-1"


class KWin(WaylandDesktop):
    name = "KDE"
    session_variables = ["XAUTHORITY"]
    scale = 1  # of the screen

    def _start_compositor(self, width, height):
        # The binary has a capability, for which the system ignores some of the variables.
        program = shutil.copy("/usr/bin/kwin_wayland", self.folder)
        self._start([program, "--virtual", "--width", width, "--height", height,
                     "--scale", str(self.scale), "--xwayland", "--socket", SOCKET,
                     self._session_script()],
                    env=self._base() | {"DBUS_SESSION_BUS_ADDRESS": self.bus,
                                        "KWIN_WAYLAND_NO_PERMISSION_CHECKS": "1",
                                        "KWIN_COMPOSE": "Q"})

    def _make_keyboard(self, socket_path):
        return FakeInput(socket_path)

    def _base(self):
        return super()._base() | {"KDE_FULL_SESSION": "true", "KDE_SESSION_VERSION": "5"}

    # The bus starts the portal, which shows windows.
    def _bus_environment(self):
        return self._base() | {"WAYLAND_DISPLAY": SOCKET}
