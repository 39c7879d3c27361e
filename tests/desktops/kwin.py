# SPDX-License-Identifier: GPL-3.0-or-later
"""A Wayland session without a screen: KWin with Xwayland, and KDE's desktop portal."""

import os
import pathlib
import shutil
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "e2e"))

from desktop import Desktop, NotYet, wait_until  # noqa: E402
from fakeinput import FakeInput  # noqa: E402

SOCKET = "wayland-1"


class KWin(Desktop):
    """What Desktop reads and does with xdotool concerns the X11 windows alone; the keyboard types
    into the window with the focus, whatever it is."""

    def environment(self):
        return super().environment() | self._session

    def open_terminal(self):
        """Opens a native window that writes what is typed into a file for typed(); returns its
        process when it has the focus."""
        self._typed = self.folder / "typed"
        self._typed.write_text("")
        self._length = 0
        shell = self._write_script("shell", "stty -echo -icanon min 1", f"exec cat -u >>{self._typed}")
        process = self._start(["weston-terminal", f"--shell={shell}"],
                              env=self._base() | {"WAYLAND_DISPLAY": SOCKET})
        wait_until(self.reaches_terminal, "the terminal has the focus")
        return process

    def typed(self):
        """What the terminal has got since the last time."""
        data = self._typed.read_text()
        new, self._length = data[self._length:], len(data)
        return new

    def reaches_terminal(self):
        self.keyboard.type("x")
        return "x" in self.typed()

    def close(self):
        if hasattr(self, "keyboard"):
            self.keyboard.close()
        super().close()

    # The compositor and the portal, which the bus starts, have to share the bus and the variables.
    def _start_screen(self, size):
        self._session = {}
        for name in ("home", "runtime", "tmp"):
            (self.folder / name).mkdir(mode=0o700)
        bus = self._start(["dbus-daemon", "--session", "--nofork", "--print-address=1"],
                          env=self._base() | {"WAYLAND_DISPLAY": SOCKET}, stdout=-1, text=True)
        with bus.stdout:
            self.bus = self._first_line(bus.stdout, "dbus-daemon")
        self._start_compositor(*size.split("x"))
        variables = wait_until(self._variables_of_session, "KWin starts its session")
        self._session = {name: variables[name] for name in ("XAUTHORITY", "WAYLAND_DISPLAY")}
        os.environ["XAUTHORITY"] = variables["XAUTHORITY"]
        self.keyboard = FakeInput(self.folder / "runtime" / SOCKET)
        return variables["DISPLAY"]

    def _start_bus(self):
        return self.bus

    def _start_window_manager(self):
        pass

    def _start_compositor(self, width, height):
        # The binary has a capability, for which the system ignores some of the variables.
        program = shutil.copy("/usr/bin/kwin_wayland", self.folder)
        session = self._write_script("session", f"env -0 >{self.folder}/new",
                                     f"mv {self.folder}/new {self.folder}/variables",
                                     "exec sleep infinity")
        self._start([program, "--virtual", "--width", width, "--height", height, "--xwayland",
                     "--socket", SOCKET, session],
                    env=self._base() | {"DBUS_SESSION_BUS_ADDRESS": self.bus,
                                        "KWIN_WAYLAND_NO_PERMISSION_CHECKS": "1",
                                        "KWIN_COMPOSE": "Q"})

    def _base(self):
        """The variables of all processes."""
        return {
            "PATH": "/usr/local/bin:/usr/bin:/bin",
            "LANG": "C.UTF-8",
            "HOME": str(self.folder / "home"),
            "TMPDIR": str(self.folder / "tmp"),
            "XDG_RUNTIME_DIR": str(self.folder / "runtime"),
            "XDG_CURRENT_DESKTOP": "KDE",
            "XDG_SESSION_TYPE": "wayland",
            "KDE_FULL_SESSION": "true",
            "KDE_SESSION_VERSION": "5",
        }

    def _write_script(self, name, *lines):
        path = self.folder / name
        path.write_text("\n".join(["#!/bin/sh", *lines, ""]))
        path.chmod(0o755)
        return str(path)

    def _variables_of_session(self):
        path = self.folder / "variables"
        if not path.exists():
            raise NotYet((self.folder / "kwin_wayland.log").read_text()[-500:])
        return dict(line.split("=", 1) for line in path.read_text().split("\0") if "=" in line)
