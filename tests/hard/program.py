# SPDX-License-Identifier: GPL-3.0-or-later
"""The program with a made-up home in which nothing can do harm, and the figures of its process."""

import collections
import os
import pathlib
import re
import shutil
import subprocess
import sys
import time

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "e2e"))

from desktop import PATIENCE, start_tied, stop, wait_until  # noqa: E402
from launcher import Home  # noqa: E402

SEARCH_TIME = 0.14  # seconds; longer than the window waits for more text
VISIBILITY_TIME = 1  # seconds; a menu that is open may keep the window as it is
MAIN_WIDTH = 500  # pixels; no other window is as wide
# What the program itself starts, besides what entries name.
TOOLS = ("setpriv", "sh", "updatedb.plocate")
NAMES = ("Terminal", "Text Editor", "Note Taker", "Image Viewer", "Web Mail", "Music", "Video Player",
         "Spreadsheet", "Presentation", "Chess", "文件管理器", "终端", "Éditeur d’image", "Übersicht",
         "Calendar", "Clock", "Backup", "Disk Usage", "Fonts", "System Monitor")
PLAIN_ACTIONS = ("x-scheme-handler/http", "x-scheme-handler/https", "inode/directory", "text/plain",
                 "application/octet-stream", "image/png", "text/html")


class Harmless:
    """A home whose programs do no more than write a line into a file, and a PATH without others."""

    def __init__(self):
        self.home = Home()
        self.folder = self.home.folder
        self.programs = self.folder / "bin"
        self.programs.mkdir()
        self.records = self.folder / "started"
        for tool in TOOLS:
            (self.programs / tool).symlink_to(shutil.which(tool, path="/usr/bin:/usr/sbin:/bin"))
        self.home.hide_system_index(self.programs)
        self._make_recorder()
        for name in NAMES:
            self.home.add_entry(name, f"{self.recorder} {len(name)}", Icon="applications-other")
        self.home.add_entry("Opener", f"{self.recorder} %U", "opener",
                            self.home.system / "applications", NoDisplay="true",
                            MimeType=";".join(PLAIN_ACTIONS) + ";")
        (self.home.configuration / "mimeapps.list").write_text(
            "[Default Applications]\n" +
            "".join(f"{kind}=opener.desktop\n" for kind in PLAIN_ACTIONS))
        self._make_documents()
        self._make_command()

    def environment(self):
        return self.home.environment() | {"PATH": str(self.programs), "BROWSER": str(self.recorder)}

    def remove(self):
        self.home.remove()

    def _make_recorder(self):
        self.recorder = self.programs / "recorder"
        self.recorder.write_text(f'#!/bin/sh\necho "$@" >>{self.records}\n')
        self.recorder.chmod(0o755)
        for name in ("xterm", "xdg-open", "htop", "gvim"):
            (self.programs / name).symlink_to(self.recorder)

    def _make_documents(self):
        for number in range(40):
            path = self.folder / "Documents" / f"folder {number % 5}" / f"file {number}.txt"
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text("text\n")

    def _make_command(self):
        folder = self.home.data / "Vaskel/commands/echo"
        folder.mkdir(parents=True)
        (folder / "command.json").write_text(
            '{"command": "echo", "name": "Echo", "description": "Say it again", '
            '"exec": ["sh", "echo.sh", "{query}"], "output": "lines"}\n')
        (folder / "echo.sh").write_text('printf "%s\\n" "$1" again "and again"\n')


class GrowingFile:
    def __init__(self, path):
        self.path = path
        path.touch()
        self._read = 0

    def read_new(self):
        """The whole lines since the last call."""
        if self.path.stat().st_size == self._read:
            return []
        with open(self.path, "rb") as file:
            file.seek(self._read)
            data = file.read()
        data = data[:data.rfind(b"\n") + 1]
        self._read += len(data)
        return data.decode(errors="replace").splitlines()


class Program:
    """The running program, without the accessibility bus, whose cache of widgets would count."""

    def __init__(self, program, desktop, screen, harmless):
        self.path = str(program)
        self.screen = screen
        self.environment = {name: value for name, value in desktop.environment().items()
                            if name != "QT_LINUX_ACCESSIBILITY_ALWAYS_ON"} | harmless.environment()
        self._log = GrowingFile(harmless.folder / "log")
        self._preferences = harmless.home.configuration / "Vaskel/Vaskel.conf"
        self._stretches = GrowingFile(harmless.folder / "stretches")
        self.environment["VASKEL_TEST_WATCHDOG"] = str(self._stretches.path)
        with open(self._log.path, "a") as log:
            self._process = start_tied([self.path], env=self.environment, stdout=log, stderr=log)
        self.pid = self._process.pid
        self._clients = []
        self._window = wait_until(self._find_window, "the window shows")
        self.rests()
        self._clients = self.screen.clients(self.pid)

    def stop(self):
        stop(self._process)

    def has_ended(self):
        return self._process.poll()

    def new_messages(self):
        """The lines of the log since the last call."""
        return self._log.read_new()

    def new_stretches(self):
        """What the watchdog of the event loop has written since the last call."""
        return self._stretches.read_new()

    def order(self, *options):
        """Tells the running program something by a second start; waits for the effect."""
        with open(self._log.path, "a") as log:
            status = subprocess.run([self.path, *options], env=self.environment, timeout=PATIENCE,
                                    check=False, stdin=subprocess.DEVNULL, stdout=log,
                                    stderr=log).returncode
        if status != 0:
            raise AssertionError(f"the order {options} ended with {status}")
        self.becomes_visible(options != ("--hide",))

    def becomes_visible(self, is_expected):
        """Waits a while until the window shows or hides. What tells it to do so does not come from
        the X server with the events of the window, so settle() alone would not wait for it."""
        deadline = time.monotonic() + VISIBILITY_TIME
        while self.is_showing() != is_expected and time.monotonic() < deadline:
            time.sleep(0.002)
        self.settle()

    def windows(self):
        """The visible windows, the topmost last."""
        return self.screen.windows(self._clients)

    def is_showing(self):
        return self.screen.is_visible(self._window)

    def place(self):
        """x, y, width and height of the main window, which may be hidden."""
        return self.screen.place(self._window)

    def move_back(self):
        """Moves the main window into the screen; returns its place."""
        self.screen.put(self._window, 200, 100)
        self.settle()
        return self.place()[:2]

    def _find_window(self):
        self._clients = self.screen.clients(self.pid)
        places = ((window, self.screen.place(window)) for window in self.windows())
        return next((window for window, place in places if place and place[2] >= MAIN_WIDTH), None)

    def settle(self):
        """Waits until the program has handled what it got, and what followed from that."""
        # It handles the input after the first ping, and then what the X server answers to that,
        # such as that the window has gone, before the third one.
        for _ in range(3):
            self.screen.ping(self._window)
            deadline = time.monotonic() + PATIENCE
            while (state := self._state()) not in "SZX":
                if time.monotonic() > deadline:
                    raise AssertionError(f"the program is busy for {PATIENCE} s, in state {state}")
                time.sleep(0.0005)

    def searches(self):
        """Waits until the program has searched for what was typed."""
        self.settle()
        time.sleep(SEARCH_TIME)
        self.settle()

    def _state(self):
        try:
            with open(f"/proc/{self.pid}/stat") as file:
                return file.read().rpartition(")")[2].split()[0]
        except OSError:
            return "X"

    def rests(self, seconds=1.0):
        """Waits until the program has used no processor time for a while."""
        last, since = None, time.monotonic()

        def is_quiet():
            nonlocal last, since
            ticks = self._ticks()
            if ticks != last:
                last, since = ticks, time.monotonic()
            return time.monotonic() - since > seconds
        wait_until(is_quiet, "the program rests")

    def has_pooled_threads(self):
        """Whether Qt's pool has threads, which end after half a minute without work."""
        return any(name.startswith("Thread (pooled)") for name in self.threads())

    def threads(self):
        """How many threads there are of each name."""
        names = collections.Counter()
        for thread in pathlib.Path(f"/proc/{self.pid}/task").iterdir():
            try:
                names[(thread / "comm").read_text().strip()] += 1
            except OSError:  # it has just ended
                pass
        return names

    def _ticks(self):
        with open(f"/proc/{self.pid}/stat") as file:
            return file.read().rpartition(")")[2].split()[11:13]

    def hotkey(self):
        """The stored hotkey, in the words of Screen.press(), or None for the default one."""
        try:
            text = self._preferences.read_text()
        except OSError:
            return None
        stored = re.search("^globalHotkey=(.*)$", text, re.MULTILINE)
        return stored and stored[1].lower()

    def memory(self):
        """The bytes that are the process's own; the code of libraries comes in at its first use."""
        rollup = pathlib.Path(f"/proc/{self.pid}/smaps_rollup").read_text()
        return sum(int(kilobytes) << 10 for kilobytes
                   in re.findall(r"^(?:Private_Dirty|Swap): +(\d+) kB", rollup, re.MULTILINE))

    def descriptors(self):
        """What each open descriptor leads to, with how many do."""
        folder = f"/proc/{self.pid}/fd"
        return sorted(re.sub(r":\[\d+\]", "", os.readlink(f"{folder}/{number}"))
                      for number in os.listdir(folder))
