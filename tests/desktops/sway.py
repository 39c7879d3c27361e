# SPDX-License-Identifier: GPL-3.0-or-later
import json
import os
import shutil
import subprocess
import sys

from wayland import WaylandDesktop

from desktop import PATIENCE
from virtualkeyboard import VirtualKeyboard

NOBODY = 65534
ALLOW_ROOT = r"""
from Xlib import X, display
display = display.Display()
display.change_hosts(X.HostInsert, X.FamilyServerInterpreted, b"localuser\0root")
display.sync()
"""


class Sway(WaylandDesktop):
    """A compositor that tiles the windows."""

    name = "sway"
    session_variables = ["SWAYSOCK"]

    def picture(self, path):
        self.run("grim", str(path))

    def pixels(self, x, y, width, height):
        command = ["grim", "-t", "ppm", "-g", f"{x},{y} {width}x{height}", "-"]
        return subprocess.run(command, env=os.environ | self.environment(), stdout=subprocess.PIPE,
                              check=True, timeout=PATIENCE).stdout[-3 * width * height:]

    def floating_windows(self):
        """The ids of the X11 windows that are not tiled."""
        return [str(window["window"]) for workspace in self._workspaces()
                for window in workspace["floating_nodes"]]

    def native_windows(self, pid):
        """The names of the windows of this process that are no X11 windows."""
        return [window["name"] for workspace in self._workspaces()
                for window in workspace["nodes"] + workspace["floating_nodes"]
                if window["pid"] == pid and window["shell"] == "xdg_shell"]

    def set_screen(self, width, height, scale):
        """Sets the size of the screen in pixels, and its scale."""
        self.run("swaymsg", f"output HEADLESS-1 resolution {width}x{height} scale {scale}")

    def _workspaces(self):
        tree = json.loads(self.run("swaymsg", "--type", "get_tree", "--raw"))
        return [workspace for output in tree["nodes"] for workspace in output["nodes"]]

    def _start_compositor(self, width, height):
        configuration = self.folder / "configuration"
        configuration.write_text(f"""xwayland force
output HEADLESS-1 resolution {width}x{height} position 0 0
exec {self._session_script()}
""")
        if self._is_root():
            self.folder.chmod(0o755)
            for name in ("home", "runtime", "tmp"):
                shutil.chown(self.folder / name, NOBODY)
        self._start([*self._as_user(), "sway", "-c", str(configuration)],
                    env=self._base() | {"DBUS_SESSION_BUS_ADDRESS": self.bus,
                                        "WLR_BACKENDS": "headless", "WLR_RENDERER": "pixman",
                                        "WLR_LIBINPUT_NO_DEVICES": "1"})

    def _start_screen(self, size):
        display = super()._start_screen(size)
        if self._is_root():
            subprocess.run([*self._as_user(), sys.executable, "-c", ALLOW_ROOT], check=True,
                           env=self._base() | {"DISPLAY": display})
        return display

    def _make_keyboard(self, socket_path):
        return VirtualKeyboard(socket_path)

    # Sway does not run as root.
    def _is_root(self):
        return os.geteuid() == 0

    def _as_user(self):
        if not self._is_root():
            return []
        # The kernel forgets the signal of start_tied() when the user changes.
        return ["setpriv", f"--reuid={NOBODY}", f"--regid={NOBODY}", "--clear-groups",
                "--pdeathsig", "TERM", "--"]
