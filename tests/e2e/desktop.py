# SPDX-License-Identifier: GPL-3.0-or-later
"""A separate desktop: a virtual screen, a window manager and a session bus.

Waits here are for conditions, so a slow machine only takes longer. Only drag() waits for time to
pass.
"""

import collections
import contextlib
import itertools
import os
import pathlib
import select
import shutil
import subprocess
import tempfile
import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

SLOWNESS = float(os.environ.get("VASKEL_TEST_SLOWNESS", "1"))  # more for a build with sanitizers
PATIENCE = 90 * SLOWNESS  # seconds; far more than any step needs
END_PATIENCE = 60 * SLOWNESS  # seconds; a sanitizer looks for leaks at the end
PRESS_PAUSE = 0.5  # seconds; longer than a program needs to handle a press

# From the kernel's <linux/threads.h>; process IDs are below it.
MAXIMUM_PROCESSES = 4 * 1024 * 1024

# System trays for the lower right corner, of which a system has one.
TRAYS = (["trayer", "--edge", "bottom", "--align", "right", "--widthtype", "request",
          "--height", "26"],
         ["stalonetray", "--geometry", "1x1-0-0", "--icon-size", "24", "--window-type", "dock"])

# With newer keymaps, xdotool adds Alt to the name of a function key, but not to its code.
FUNCTION_KEYS = {f"F{number}": str(66 + number) for number in range(1, 11)}


class NotYet(Exception):
    """Raised while a value cannot be read yet; wait_until() tries again."""


def wait_until(probe, what, patience=PATIENCE):
    """Returns the first true value of probe(), or raises AssertionError with the last one."""
    deadline = time.monotonic() + patience
    while True:
        try:
            value = probe()
            if value:
                return value
        except NotYet as missing:
            value = str(missing)
        except GLib.Error as error:  # the widget disappeared while it was read
            value = error.message
        if time.monotonic() > deadline:
            raise AssertionError(f"Waited {patience} s in vain until {what}; last seen: {value!r}")
        time.sleep(0.03)


def with_key_codes(combination):
    """A combination of keys for xdotool, such as "ctrl+F8", with the codes of the function keys."""
    return "+".join(FUNCTION_KEYS.get(key, key) for key in combination.split("+"))


def first_line(pipe):
    """The first line in the pipe, or an empty one if its writer ends or stays silent."""
    ready, _, _ = select.select([pipe], [], [], PATIENCE)
    return pipe.readline().strip() if ready else ""


def start_tied(command, **options):
    """Starts a process in a new session; the kernel ends it when this process ends."""
    return subprocess.Popen(["setpriv", "--pdeathsig", "TERM", *command], start_new_session=True,
                            **{"stdin": subprocess.DEVNULL, **options})


def stop(process):
    """Ends a process that we started and waits for it."""
    if process.poll() is None:
        process.terminate()
        try:
            process.wait(END_PATIENCE)
        except subprocess.TimeoutExpired:
            process.kill()
            process.wait()


class Desktop:
    """Starts the screen, the window manager and the bus; close() ends them.

    Only one per process, since the accessibility library connects to one bus for good.
    """

    window_manager = ["openbox"]

    def __init__(self, size):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="vaskel-desktop-"))
        self._processes = []
        try:
            self.display = self._start_screen(size)
            self.bus = self._start_bus()
            self._start_window_manager()
            self._connect_to_accessibility()
        except BaseException:
            self.close()
            raise

    def environment(self):
        """The variables that lead a program to this desktop."""
        return {
            "DISPLAY": self.display,
            "DBUS_SESSION_BUS_ADDRESS": self.bus,
            "QT_QPA_PLATFORM": "xcb",
            "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1",
        }

    def run(self, *command, text=None):
        """Returns the output of a command; an empty string if it fails."""
        result = subprocess.run(command, env=os.environ | self.environment(), input=text, text=True,
                                stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
                                timeout=PATIENCE)
        return result.stdout.strip() if result.returncode == 0 else ""

    def type(self, text):
        """Types the text key by key into the active window."""
        self.run("xdotool", "type", "--delay", "15", "--", text)

    def press(self, *keys):
        self.run("xdotool", "key", "--delay", "15", "--", *map(with_key_codes, keys))

    def press_quickly(self, *keys):
        """Presses and releases the keys as fast as xdotool can."""
        self.run("xdotool", "key", "--delay", "0", *map(with_key_codes, keys))

    def hold(self, *keys):
        """Presses the keys one by one without releasing them."""
        for key in keys:
            self.run("xdotool", "keydown", with_key_codes(key))

    def release(self, *keys):
        for key in reversed(keys):
            self.run("xdotool", "keyup", with_key_codes(key))

    def move_pointer(self, x, y):
        self.run("xdotool", "mousemove", str(x), str(y))

    def click(self, x, y, button=1, times=1):
        self.move_pointer(x, y)
        self.run("xdotool", "click", "--repeat", str(times), "--delay", "60", str(button))

    @contextlib.contextmanager
    def drag(self, start, end, has_begun):
        """Drags with the left button; releases it after the body, which waits for the effect.

        The pointer stays near the start until has_begun().
        """
        step = [(b > a) - (b < a) for a, b in zip(start, end)]
        self.move_pointer(*start)
        self.run("xdotool", "mousedown", "1")
        # The toolkit reads the position of the pointer when it handles the press, and nothing shows
        # when it has.
        time.sleep(PRESS_PAUSE)

        # The window manager must notice the press before the release, and it reacts to motion only.
        ways = itertools.cycle((20, 24))

        def begins():
            way = next(ways)
            self.move_pointer(*(a + way * s for a, s in zip(start, step)))
            return has_begun()

        try:
            wait_until(begins, "the window follows the pointer")
            self.move_pointer(*end)
            yield
        finally:
            self.run("xdotool", "mouseup", "1")

    def set_clipboard(self, text):
        # xclip keeps running to serve the text, so do not wait for its output.
        subprocess.run(["xclip", "-selection", "clipboard", "-in"], input=text, text=True,
                       env=os.environ | self.environment(), stdout=subprocess.DEVNULL,
                       stderr=subprocess.DEVNULL, check=True, timeout=PATIENCE)

    def clipboard(self):
        return self.run("xclip", "-selection", "clipboard", "-out")

    def picture(self, path):
        """Saves a picture of the screen."""
        self.run("import", "-silent", "-window", "root", str(path))

    def pixel(self, x, y):
        """The colour of one pixel of the screen, as #rrggbb."""
        return f"#{self.pixels(x, y, 1, 1).hex()}"

    def pixels(self, x, y, width, height, window="root"):
        """The colours of a rectangle of the screen, or of a window, three bytes per pixel."""
        return subprocess.run(["import", "-silent", "-window", window, "-crop",
                               f"{width}x{height}+{max(x, 0)}+{max(y, 0)}", "-depth", "8", "rgb:-"],
                              env=os.environ | self.environment(), stdout=subprocess.PIPE,
                              check=True, timeout=PATIENCE).stdout

    def active_window(self):
        return self.run("xdotool", "getactivewindow")

    def activate(self, window):
        """Activates a window unless it is active; returns whether it already was."""
        if self.active_window() == window:
            return True
        self.run("xdotool", "windowactivate", window)
        return False

    def stack(self):
        """The managed windows, the topmost last."""
        listing = self.run("xprop", "-root", "_NET_CLIENT_LIST_STACKING")
        return [str(int(window.split()[-1], 16)) for window in listing.split(",")]

    def windows_of(self, process):
        """The windows of a process that show."""
        return self.run("xdotool", "search", "--onlyvisible", "--pid", str(process)).splitlines()

    def open_window(self, *options):
        """Opens a window of another program, xterm with these options, and waits until it is
        active; returns its process and the window."""
        process = self._start(["xterm", "-geometry", "80x24+10+10", *options],
                              env=os.environ | self.environment())

        def active():
            window, windows = self.active_window(), self.windows_of(process.pid)
            if window not in windows:
                stack = self.run("xprop", "-root", "_NET_CLIENT_LIST_STACKING")
                status = pathlib.Path(f"/proc/{process.pid}/stat").read_text()
                raise NotYet(f"the active window is {window!r}, those of xterm are {windows}, "
                             f"all are {stack!r}; xterm's process: {status}")
            return window

        # Not any other window: the manager activates one after the other has just been hidden, too.
        try:
            return process, wait_until(active, "the window of the other program is active")
        except BaseException:
            stop(process)
            raise

    def start_tray(self):
        """Starts a system tray in the lower right corner; returns its process."""
        command = next(tray for tray in TRAYS if shutil.which(tray[0]))
        return self._start(command, env=os.environ | self.environment())

    def tray(self):
        """The window that receives the icons, or an empty string while no tray runs."""
        return self.run("xdotool", "search", "--class", "trayer|stalonetray").strip()

    def geometry(self, window):
        """x, y, width and height of a window on the screen."""
        lines = self.run("xwininfo", "-id", window).splitlines()
        values = dict(line.strip().split(":", 1) for line in lines if ":" in line)
        if not values:
            raise NotYet("the window has gone")
        return tuple(int(values[key]) for key in ("Absolute upper-left X", "Absolute upper-left Y",
                                                  "Width", "Height"))

    def colours(self, window):
        """Counts the pixels of each (red, green, blue), up to 255 each, where the window is."""
        pixels = self.pixels(*self.geometry(window))
        return collections.Counter(zip(pixels[::3], pixels[1::3], pixels[2::3]))

    def close(self):
        for process in reversed(self._processes):
            stop(process)
        wait_until(self._remove_folder, f"{self.folder} is removed")

    def _remove_folder(self):
        # The services that the bus has started end after it. One of them has mounted a folder.
        mounts = pathlib.Path("/proc/self/mounts").read_text()
        if str(self.folder) in mounts:
            raise NotYet(mounts)
        shutil.rmtree(self.folder, ignore_errors=True)
        return not self.folder.exists()

    def _start(self, command, **options):
        log = open(self.folder / f"{pathlib.Path(command[0]).name}.log", "w")
        process = start_tied(command, stderr=log, **{"stdout": log, **options})
        log.close()
        self._processes.append(process)
        return process

    def _start_screen(self, size):
        # The process ID is a number that no other desktop has. A number that the server finds by
        # itself may be one that another server is just leaving, which then removes the new socket.
        display = f":{os.getpid()}"
        reader, writer = os.pipe()
        self._start(["Xvfb", display, "-displayfd", str(writer), "-screen", "0", f"{size}x24",
                     "-noreset", "-nolisten", "tcp"], pass_fds=[writer])
        os.close(writer)
        with os.fdopen(reader) as pipe:
            self._first_line(pipe, "Xvfb")
        return display

    def _start_bus(self):
        runtime = self.folder / "runtime"
        runtime.mkdir(mode=0o700)
        environment = os.environ | {"DISPLAY": self.display, "XDG_RUNTIME_DIR": str(runtime)}
        bus = self._start(["dbus-daemon", "--session", "--nofork", "--print-address=1"],
                          env=environment, stdout=subprocess.PIPE, text=True)
        with bus.stdout:
            return self._first_line(bus.stdout, "dbus-daemon")

    def _first_line(self, pipe, program):
        """What a program that has just been started says when it is ready."""
        line = first_line(pipe)
        if not line:
            log = (self.folder / f"{program}.log").read_text()
            raise RuntimeError(f"{program} did not start within {PATIENCE} s: {log}")
        return line

    def _start_window_manager(self):
        home = self.folder / "home"
        home.mkdir()
        command, started = list(self.window_manager), self.folder / "started"
        if command[0] == "openbox":
            # Openbox never shows the windows that appear before this command runs.
            command += ["--startup", f"touch {started}"]
        # Without its own way to accessibility, which would hide the one of this desktop.
        self._start(command, env={
            "PATH": os.environ["PATH"], "HOME": str(home), "DISPLAY": self.display,
            "LANG": "C.UTF-8", "NO_AT_BRIDGE": "1", "DBUS_SESSION_BUS_ADDRESS": self.bus})
        wait_until(lambda: "window id" in self.run("xprop", "-root", "_NET_SUPPORTING_WM_CHECK"),
                   "the window manager runs")
        if command[0] == "openbox":
            wait_until(started.exists, "openbox has started")

    def _connect_to_accessibility(self):
        os.environ.update(DISPLAY=self.display, DBUS_SESSION_BUS_ADDRESS=self.bus)
        Atspi.init()
        Atspi.set_timeout(10_000, 60_000)
