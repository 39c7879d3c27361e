# SPDX-License-Identifier: GPL-3.0-or-later
"""A Wayland session without a screen, in which the program is a client of Xwayland."""

import os
import pathlib
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "e2e"))

from desktop import Desktop, NotYet, stop, wait_until  # noqa: E402


class WaylandDesktop(Desktop):
    """What Desktop reads and does with xdotool concerns the X11 windows alone; the keyboard types
    into the window with the focus, whatever it is."""

    name = None  # of the desktop, as the session's variables have it
    session_variables = []  # besides WAYLAND_DISPLAY, that the compositor sets for the programs

    def environment(self):
        return super().environment() | self._session

    def type(self, text):
        self.keyboard.type(text)

    def press(self, *keys):
        for combination in keys:
            names = {"ctrl": "Control", "alt": "Alt", "super": "Meta"}
            self.keyboard.press(*(names.get(key, key) for key in combination.split("+")))

    def open_terminal(self):
        """Opens a native window that writes what is typed into a file for typed(); returns its
        process when it has the focus."""
        self._typed = self.folder / "typed"
        self._typed.write_text("")
        self._length = 0
        shell = self._write_script("shell", "stty -echo -icanon min 1", f"exec cat -u >>{self._typed}")
        process = self._start(["weston-terminal", f"--shell={shell}"],
                              env=self._base() | self._session)
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

    # The compositor and the services that the bus starts share the bus and the variables.
    def _start_screen(self, size):
        self._session = {}
        for name in ("home", "runtime", "tmp"):
            (self.folder / name).mkdir(mode=0o700)
        self.bus = os.environ["DBUS_SESSION_BUS_ADDRESS"] = self._start_dbus(self._bus_environment())
        self._start_compositor(*size.split("x"))
        variables = wait_until(self._variables_of_session, "the compositor starts its session")
        # Not all processes have the session's folder for sockets.
        path = str(self.folder / "runtime" / variables["WAYLAND_DISPLAY"])
        self._session = {name: variables[name] for name in self.session_variables}
        self._session["WAYLAND_DISPLAY"] = path
        os.environ.update(self._session)
        self.keyboard = self._make_keyboard(path)
        return variables["DISPLAY"]

    def _start_dbus(self, environment):
        bus = self._start(["dbus-daemon", "--session", "--nofork", "--print-address=1"],
                          env=environment, stdout=-1, text=True)
        with bus.stdout:
            return self._first_line(bus.stdout, "dbus-daemon")

    def _start_bus(self):
        return self.bus

    def _start_window_manager(self):
        pass

    def _start_compositor(self, width, height):
        """Starts it with a session that runs _session_script()."""
        raise NotImplementedError

    def _make_keyboard(self, socket_path):
        raise NotImplementedError

    def _base(self):
        """The variables of all processes."""
        return {
            "PATH": "/usr/local/bin:/usr/bin:/bin",
            "LANG": "C.UTF-8",
            "HOME": str(self.folder / "home"),
            "TMPDIR": str(self.folder / "tmp"),
            "XDG_RUNTIME_DIR": str(self.folder / "runtime"),
            "XDG_CURRENT_DESKTOP": self.name,
            "XDG_SESSION_TYPE": "wayland",
        }

    def _bus_environment(self):
        return self._base()

    def _session_script(self):
        """A script that stores the variables of the session for the programs."""
        return self._write_script("session", f"env -0 >{self.folder}/tmp/new",
                                  f"mv {self.folder}/tmp/new {self.folder}/tmp/variables",
                                  "exec sleep infinity")

    def _write_script(self, name, *lines):
        path = self.folder / name
        path.write_text("\n".join(["#!/bin/sh", *lines, ""]))
        path.chmod(0o755)
        return str(path)

    def _variables_of_session(self):
        path = self.folder / "tmp/variables"
        if not path.exists():
            raise NotYet("".join(log.read_text()[-500:] for log in self.folder.glob("*.log")))
        return dict(line.split("=", 1) for line in path.read_text().split("\0") if "=" in line)


class ForeignCompositor:
    """What holds on every Wayland compositor; a second base of its end-to-end cases."""

    def test_comes_to_the_front(self):
        self.start()
        for option in ([], ["--show"], ["--query", "y"]):
            self.addCleanup(stop, self.desktop.open_terminal())
            self.assertTrue(self.launcher.is_visible())
            self.assertEqual(self.launcher.order(*option)[0], 0)
            self.launcher.wait_until_ready()
            self.desktop.typed()
        self.desktop.keyboard.type("z")
        self.becomes(self.launcher.text, "yz")
        self.assertEqual(self.desktop.typed(), "")
        self.picture("front")
