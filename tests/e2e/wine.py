# SPDX-License-Identifier: GPL-3.0-or-later
"""Vaskel.exe under wine: its home, and what a user sees and does.

The reader in windows/reader.cpp reports what the Linux tests read from the accessibility bus, so
that Windows shares the rest of the launcher's methods. Needs these variables: VASKEL_WINE_PREFIX,
VASKEL_MAKELINK, VASKEL_RECORDER and VASKEL_READER.
"""

import collections
import json
import os
import pathlib
import select
import shutil
import struct
import subprocess

from desktop import PATIENCE, Atspi, NotYet, start_tied, stop, wait_until
from launcher import Launcher

WITH_WINE = pathlib.Path(__file__).resolve().parent.parent / "support/with-wine"
PREFERENCES = r"HKEY_CURRENT_USER\Software\Vaskel\Vaskel"
# The message font replaces fonts that each Windows has and wine lacks; wine's own default is not
# found by its name.
FONT = struct.pack("<5i8B64s", -12, 0, 0, 0, 400, 0, 0, 0, 0, 0, 0, 0, 0,
                   "DejaVu Sans".encode("utf-16-le"))

# Control types of UI Automation.
ROLES = {50000: Atspi.Role.PUSH_BUTTON, 50002: Atspi.Role.CHECK_BOX, 50003: Atspi.Role.COMBO_BOX,
         50004: Atspi.Role.TEXT, 50007: Atspi.Role.LIST_ITEM, 50008: Atspi.Role.LIST,
         50009: Atspi.Role.POPUP_MENU, 50011: Atspi.Role.MENU_ITEM, 50020: Atspi.Role.LABEL,
         50023: Atspi.Role.TREE, 50024: Atspi.Role.TABLE_CELL}
STATES = {Atspi.StateType.FOCUSED: "focused", Atspi.StateType.FOCUSABLE: "takesFocus",
          Atspi.StateType.ENABLED: "enabled", Atspi.StateType.SELECTED: "selected",
          Atspi.StateType.CHECKED: "checked"}

Extents = collections.namedtuple("Extents", "x y width height")


class Element:
    """A control as the reader reports it, with the methods of the accessibility library."""

    def __init__(self, facts, parent=None):
        self.facts = facts
        self._parent = parent
        self._children = [Element(child, self) for child in facts["children"]]

    def get_name(self):
        return self.facts["name"] or ""

    def get_role(self):
        return ROLES.get(self.facts["type"], Atspi.Role.FILLER)

    def get_parent(self):
        return self._parent

    def get_child_count(self):
        return len(self._children)

    def get_child_at_index(self, index):
        return self._children[index]

    def get_extents(self, _):
        return Extents(*self.facts["rect"])

    def get_state_set(self):
        return self

    def contains(self, state):
        # The reader reports visible controls only.
        return state == Atspi.StateType.SHOWING or bool(self.facts[STATES[state]])


class Windows:
    """The system that the program runs on; case.Linux is the other one."""

    def __init__(self):
        self.prefix = pathlib.Path(os.environ["VASKEL_WINE_PREFIX"])
        self.screen = os.environ.get("VASKEL_SCREEN", "1600x1200")
        # Processes left from an earlier run would keep new programs on their screen.
        for order in ("--kill", "--wait"):
            subprocess.run(["wineserver", order], stderr=subprocess.DEVNULL, timeout=PATIENCE,
                           env=os.environ | {"WINEPREFIX": str(self.prefix / "wine")})

    def make_home(self, desktop):
        return WineHome(desktop, self.prefix)

    def make_launcher(self, desktop, program, home):
        return WineLauncher(desktop, program, home)

    def open_another_window(self, case):
        """Opens an editor, which gets the focus."""
        editor = start_tied(case.home.command("explorer", "/desktop=Vaskel.exe", "notepad.exe"),
                            env=case.launcher.environment, stdout=subprocess.DEVNULL,
                            stderr=subprocess.DEVNULL)
        case.addCleanup(stop, editor)
        case.addCleanup(case.home.run, "taskkill", "/f", "/im", "notepad.exe")


class WineHome:
    """A Windows with its user, in a folder that is kept between runs."""

    def __init__(self, desktop, prefix):
        self.folder = prefix
        self._variables = {"DISPLAY": desktop.display, "HOME": str(prefix / "home"),
                           "LC_ALL": "C.UTF-8", "LANGUAGE": ""}
        self.records = prefix / "records"
        (prefix / "home").mkdir(parents=True, exist_ok=True)
        drive = prefix / "wine/drive_c"
        self._menu = drive / "ProgramData/Microsoft/Windows/Start Menu/Programs"
        self._links = []
        # The first program that runs creates the drive.
        self.run("reg", "add", r"HKCU\Control Panel\Desktop\WindowMetrics", "/f", "/v",
                 "MessageFont", "/t", "REG_BINARY", "/d", FONT.hex())
        user = next(user for user in (drive / "users").iterdir() if user.name != "Public")
        self.data = user / "AppData/Roaming"
        self.temporary = user / "Temp"
        self.remove()

    def environment(self):
        return dict(self._variables)

    def command(self, *arguments, options=("--here",)):
        return [str(WITH_WINE), "--prefix", str(self.folder), *options, *map(str, arguments)]

    def run(self, *arguments):
        """Runs a Windows program and returns its output."""
        output = subprocess.run(self.command(*arguments), env=os.environ | self._variables,
                                stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                                stderr=subprocess.DEVNULL, timeout=PATIENCE).stdout
        return output.decode("utf-8", "replace").replace("\r", "")

    def add_recorder(self, name, file=None):
        """Adds a link to a program that records its start; recorded(file) returns the record."""
        target = self.records / (file or name.lower())
        self.run(os.environ["VASKEL_MAKELINK"], name, f"Z:{os.environ['VASKEL_RECORDER']}",
                 f"Z:{target}")
        link = self._menu / f"{name}.lnk"
        if not link.exists():
            raise RuntimeError(f"There is no {link}")
        self._links.append(link)
        return link

    def add_entry(self, name):
        return self.add_recorder(name)

    def recorded(self, file):
        """The lines of the recorder, or None until it has run."""
        path = self.records / file
        return path.read_text("utf-8").splitlines() if path.exists() else None

    def set_preferences(self, preferences=(), **more):
        """Writes the preferences; a key may have a group in front, as in "plugins/calc"."""
        for key, value in (dict(preferences) | more).items():
            group, _, name = key.rpartition("/")
            path = "\\".join([PREFERENCES, group] if group else [PREFERENCES])
            self.run("reg", "add", path, "/f", "/v", name, "/d", str(value))

    def preferences(self):
        """The stored preferences, by the keys of the program."""
        found, group = {}, ""
        for line in self.run("reg", "query", PREFERENCES, "/s").splitlines():
            if line.startswith("HKEY"):
                group = line.removeprefix(PREFERENCES).replace("\\", "/").lstrip("/")
            elif line.startswith("    "):
                name, _, value = (line.split(None, 2) + [""])[:3]
                found[f"{group}/{name}" if group else name] = value
        return found

    def pins(self):
        return json.loads((self.data / "Vaskel/pins.json").read_text("utf-8"))

    def remove(self):
        """Removes everything that a case has created."""
        for link in self._links:
            link.unlink(missing_ok=True)
        self._links.clear()
        for folder in (self.records, self.data / "Vaskel", self.temporary / "Vaskel"):
            shutil.rmtree(folder, ignore_errors=True)
        self.records.mkdir()
        self.run("reg", "delete", r"HKCU\Software\Vaskel", "/f")


class Reader:
    """The process that reports what the program shows."""

    def __init__(self, home, environment):
        command = home.command(os.environ["VASKEL_READER"], "Vaskel.exe",
                               options=["--here", "--input"])
        self._process = start_tied(command, env=environment, stdin=subprocess.PIPE,
                                   stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True,
                                   encoding="utf-8")

    def ask(self, question):
        try:
            self._process.stdin.write(f"{question}\n")
            self._process.stdin.flush()
        except BrokenPipeError:
            pass
        if not select.select([self._process.stdout], [], [], PATIENCE)[0]:
            raise AssertionError(f"Waited {PATIENCE} s in vain for an answer to {question!r}")
        answer = self._process.stdout.readline()
        if not answer:
            raise NotYet("there is no desktop to read")
        return json.loads(answer)

    def is_running(self):
        return self._process.poll() is None

    def close(self):
        self._process.stdout.close()
        try:
            self._process.stdin.close()
        except BrokenPipeError:
            pass
        stop(self._process)


class WineLauncher(Launcher):
    """The running Vaskel.exe."""

    nowhere = {}  # wine needs the display

    def __init__(self, desktop, program, home):
        super().__init__(desktop, program, home.environment())
        self.environment = os.environ | home.environment()
        self._home = home
        self._reader = None

    def start_process(self, *options, console=None, **variables):
        return start_tied(self._home.command(self.program, *options, options=["--desktop"]),
                          env=self.environment | variables, stdout=console or self.log,
                          stderr=self.log)

    def order(self, *options, **variables):
        result = subprocess.run(self._home.command(self.program, *options, options=["--desktop"]),
                                env=self.environment | variables, stdin=subprocess.DEVNULL,
                                stdout=subprocess.PIPE, stderr=subprocess.PIPE, timeout=PATIENCE)
        return (result.returncode, result.stdout.decode("utf-8", "replace"),
                result.stderr.decode("utf-8", "replace"))

    def stop(self):
        if self._reader:
            self._reader.close()
        super().stop()

    def wait_until_ready(self):
        wait_until(self.is_visible, "the window shows")
        wait_until(self.is_active, "the window is active")
        wait_until(lambda: self._edit().contains(Atspi.StateType.FOCUSED),
                   "the command box has the focus")
        self.take_keyboard()

    def take_keyboard(self):
        """Clicks behind the text. Wine sometimes sends keys to no window after its taskbar or a
        hotkey was used, although the right window has the focus."""
        x, y, width, height = self._edit().get_extents(Atspi.CoordType.SCREEN)
        self.desktop.click(x + width - 8, y + height // 2)

    def processes(self):
        return self.ask("processes")

    def is_visible(self):
        return self._main_window() is not None

    def is_active(self):
        window = self._main_window()
        if not window:
            raise NotYet("the window does not show")
        return window["active"]

    def geometry(self):
        window = self._main_window()
        if not window:
            raise NotYet("the window does not show")
        return tuple(window["rect"])

    def float_icon(self):
        return next((tuple(window["rect"]) for window in self._all_windows()
                     if self._is_float_icon(window)), None)

    def tray_icon(self):
        """x, y, width and height of the only icon in the system tray, or None."""
        bar = self.ask("taskbar")
        if not bar:
            return None
        x, y, width, height = bar
        # Wine draws the icons itself. It puts the first one at the end of a bar, and newer versions
        # at the start of a window.
        for left in (x + width - height, x):
            place = (left, y, height, height)
            pixels = self.desktop.pixels(*place)
            blue = sum(b > 150 and b > r + 60 for r, b in zip(pixels[::3], pixels[2::3]))
            if blue > height * height // 4:
                return place
        return None

    def menu(self):
        """The entries of the open menu with their geometry."""
        for window in self._all_windows():
            if window["root"]["class"] == "QMenu":
                return {entry["name"]: entry["rect"] for entry in window["root"]["children"]
                        if entry["name"]}
        return {}

    def choose(self, name):
        """Clicks an entry of the menu once it is open."""
        x, y, width, height = wait_until(self.menu, "the menu opens")[name]
        self.desktop.click(x + width // 2, y + height // 2)
        wait_until(lambda: not self.menu(), "the menu closes")

    def clipboard(self):
        units = self.ask("clipboard") or []
        return b"".join(unit.to_bytes(2, "little") for unit in units).decode("utf-16-le")

    def ask(self, question):
        if self._reader and not self._reader.is_running():
            self._reader.close()
            self._reader = None
        if not self._reader:
            self._reader = Reader(self._home, self.environment)
        return self._reader.ask(question)

    def windows(self):
        return [window for window in self._all_windows() if not self._is_float_icon(window)]

    def application(self):
        root = dict.fromkeys(["name", "type", "class", "rect", *STATES.values()])
        # A window is no control, although it reports that it can have the focus.
        windows = [window["root"] | {"takesFocus": False} for window in self.windows()]
        return Element(root | {"children": windows})

    def focused(self):
        try:
            return super().focused()
        except NotYet:
            # A list with the focus reports it only for its current row.
            rows = [found for found in self.everything() if found.contains(Atspi.StateType.FOCUSED)
                    and found.get_role() in (Atspi.Role.LIST_ITEM, Atspi.Role.TABLE_CELL)]
            if not rows:
                raise
            return rows[-1].get_parent()

    def text_of(self, accessible):
        return accessible.facts["value"]

    def _find_window(self):
        if self.process.poll() is not None:
            raise RuntimeError(f"The program ended with {self.process.returncode}: {self.messages()}")
        return self._main_window()

    def _main_window(self):
        return next((window for window in self._all_windows()
                     if window["root"]["class"] == "MainWindow"), None)

    def _all_windows(self):
        return [window for window in self.ask("windows") if window["root"]]

    def _is_float_icon(self, window):
        return window["root"]["class"] == "FloatIcon"

    def _scale(self):
        return 1  # the reader reports physical pixels

    def _own_geometry(self):
        return self.geometry()
