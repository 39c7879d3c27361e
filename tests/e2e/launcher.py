# SPDX-License-Identifier: GPL-3.0-or-later
"""The program under test: its home, and what a user sees and does."""

import configparser
import json
import os
import pathlib
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import time

from gi.repository import Atspi, GLib

from desktop import PATIENCE, NotYet, start_tied, stop, wait_until

BUILTINS = ("Notepad", "Calculator", "Paint", "Command Prompt", "File Explorer", "Task Manager",
            "Settings", "Browser")
RECORDER = pathlib.Path(__file__).resolve().parent / "recorder.py"
TRAY_PAUSE = 0.3  # seconds; longer than a tray takes to arrange its icons


def has_state(accessible, state):
    return accessible.get_state_set().contains(state)


def children(accessible):
    found = [accessible.get_child_at_index(i) for i in range(accessible.get_child_count())]
    if None in found:
        raise NotYet("widgets come and go")
    return found


def find(accessible, role):
    """All visible descendants with this role, except those within a match or a list."""
    found = []
    for child in children(accessible):
        if not has_state(child, Atspi.StateType.SHOWING):
            continue
        if child.get_role() == role:
            found.append(child)
        elif child.get_role() != Atspi.Role.LIST:
            found += find(child, role)
    return found


def everything(accessible):
    """All visible descendants, from the top down."""
    found = []
    for child in children(accessible):
        if has_state(child, Atspi.StateType.SHOWING):
            found += [child] + everything(child)
    return found


def centre(accessible):
    extents = accessible.get_extents(Atspi.CoordType.SCREEN)
    return extents.x + extents.width // 2, extents.y + extents.height // 2


class FocusLog:
    """Records the names of the focused controls of a role while it is entered. Nothing else reads a
    popup menu, because its application does not list it as a child. With the state "showing", it
    records those that show, however briefly."""

    def __init__(self, role, state="focused"):
        self._role = role
        self._event = f"object:state-changed:{state}"
        self._names = []
        self._listener = Atspi.EventListener.new(self._note)

    def __enter__(self):
        self._listener.register(self._event)
        return self

    def __exit__(self, *_):
        self._listener.deregister(self._event)

    def names(self):
        while GLib.MainContext.default().iteration(False):
            pass
        return list(self._names)

    def _note(self, event):
        # The same focus may be reported more than once.
        name = event.source.get_name()
        if event.source.get_role() == self._role and name not in self._names[-1:]:
            self._names.append(name)


def walk_through_menu(launcher, open_menu, count):
    """Opens a menu, moves down to the entry of this number and returns the names on the way."""
    # Listen before the menu opens: the program learns of a listener only after a moment.
    with FocusLog(Atspi.Role.MENU_ITEM) as log:
        open_menu()
        press_until(lambda: launcher.press("Down"), lambda: len(log.names()) == 1,
                    "the first entry is current")
        for number in range(2, count + 1):
            launcher.press("Down")
            wait_until(lambda: len(log.names()) == number, f"entry {number} is current")
        return log.names()


def press_until(press, is_done, what, interval=5):
    """Presses a key until it has its effect. A menu grabs the keyboard after its window shows, so
    the first key may go to another window."""
    pressed = None

    def presses_or_is_done():
        nonlocal pressed
        if is_done():
            return True
        if pressed is None or time.monotonic() - pressed > interval:
            press()
            pressed = time.monotonic()
        return False

    wait_until(presses_or_is_done, what)


class Home:
    """A user's home and a system of installed programs, in a folder that remove() deletes."""

    def __init__(self, folder=None):
        self.folder = folder or pathlib.Path(tempfile.mkdtemp(prefix="vaskel-home-"))
        self.data = self.folder / ".local/share"
        self.applications = self.data / "applications"
        self.configuration = self.folder / ".config"
        self.system = self.folder / "system"
        self.records = self.folder / "records"
        for folder in (self.applications, self.configuration, self.system / "applications",
                       self.records, self.folder / "tmp"):
            folder.mkdir(parents=True)
        (self.folder / "runtime").mkdir(mode=0o700)
        # Icon themes and file types come from this machine, programs do not.
        for shared in ("icons", "mime"):
            (self.system / shared).symlink_to(f"/usr/share/{shared}")
        self._install_browser()

    def environment(self):
        return {
            "PATH": "/usr/local/bin:/usr/bin:/bin",
            "LANG": "C.UTF-8",
            "HOME": str(self.folder),
            "TMPDIR": str(self.folder / "tmp"),
            "XDG_DATA_DIRS": str(self.system),
            "XDG_RUNTIME_DIR": str(self.folder / "runtime"),
            "BROWSER": str(self.browser),
            # The real SingleApplication names the running instance after it. With newer Qt, that
            # name is the only thing that keeps two tests apart.
            "APPIMAGE": str(self.folder),
        }

    def _install_browser(self):
        """Installs a browser that records the address, in each place where one is searched."""
        self.browser = self.folder / "browser"
        self.browser.write_text(f'#!/bin/sh\nexec {sys.executable} {RECORDER} '
                                f'{self.records / "browser"} "$@"\n')
        self.browser.chmod(0o755)
        self.add_entry("Test Browser", f"{self.browser} %u", "browser",
                       self.system / "applications", NoDisplay="true",
                       MimeType="x-scheme-handler/http;x-scheme-handler/https;")
        (self.configuration / "mimeapps.list").write_text(
            "[Default Applications]\n"
            "x-scheme-handler/http=browser.desktop\nx-scheme-handler/https=browser.desktop\n")

    def add_entry(self, name, command="true", file=None, root=None, **keys):
        """Writes a desktop entry for a program of that name and returns its path."""
        path = (root or self.applications) / f"{file or name}.desktop"
        path.parent.mkdir(parents=True, exist_ok=True)
        lines = {"Type": "Application", "Name": name, "Exec": command} | keys
        path.write_text("[Desktop Entry]\n" + "".join(f"{k}={v}\n" for k, v in lines.items()))
        return path

    def add_recorder(self, name, file=None, arguments="", **keys):
        """Adds an entry whose program records its start; recorded(file) returns the record."""
        file = file or name.lower()
        command = f'{sys.executable} {RECORDER} {self.records / file} {arguments}'
        return self.add_entry(name, command, file, **keys)

    def add_opener(self, name, types):
        """Makes a recorder the default program for files of these types."""
        self.add_entry(name, f"{sys.executable} {RECORDER} {self.records / name} %f", name,
                       self.system / "applications", NoDisplay="true", MimeType=types)
        with open(self.configuration / "mimeapps.list", "a") as file:
            file.writelines(f"{type}={name}.desktop\n" for type in types.split(";") if type)

    def hide_system_index(self, programs):
        """Makes plocate behave as on a system without a database, by a program in this folder."""
        program = programs / "plocate"
        missing = self.folder / "missing.db"
        program.write_text(f'#!/bin/sh\n[ "$1" = --database ] || set -- --database {missing} "$@"\n'
                           f'exec {shutil.which("plocate")} "$@"\n')
        program.chmod(0o755)

    def recorded(self, file):
        """The recorder's record, or None until it has run."""
        path = self.records / file
        return json.loads(path.read_text()) if path.exists() else None

    def set_preferences(self, preferences=(), **more):
        """Writes the preferences; a key may have a group in front, as in "plugins/calc"."""
        separator = "\\"  # between a group and its keys, in the section without a name
        lines = [f"{key.replace('/', separator)}={value}"
                 for key, value in (dict(preferences) | more).items()]
        path = self.configuration / "Vaskel/Vaskel.conf"
        path.parent.mkdir(exist_ok=True)
        path.write_text("\n".join(["[General]", *lines, ""]))

    def preferences(self):
        """The stored preferences, by the keys of the program."""
        path = self.configuration / "Vaskel/Vaskel.conf"
        parser = configparser.ConfigParser(interpolation=None)
        parser.optionxform = str
        parser.read(path)
        return {key if section == "General" else f"{section}/{key}": value
                for section in parser.sections() for key, value in parser[section].items()}

    def pins(self):
        return json.loads((self.data / "Vaskel/pins.json").read_text())

    def remove(self):
        for path in self.records.iterdir():
            record = json.loads(path.read_text())
            if record["stays"]:
                try:
                    os.kill(record["pid"], signal.SIGKILL)
                except ProcessLookupError:
                    pass
        self._remove_shared_memory()
        shutil.rmtree(self.folder, ignore_errors=True)

    def _remove_shared_memory(self):
        """Removes what the library SingleApplication leaves of a killed program.

        Its key is made of the number of a file, which another file may get later.
        """
        for path in (self.folder / "tmp").glob("qipc_*"):
            status = path.stat()
            key = ord("Q") << 24 | (status.st_dev & 0xff) << 16 | status.st_ino & 0xffff
            kind = "--semaphore-key" if "systemsem" in path.name else "--shmem-key"
            subprocess.run(["ipcrm", kind, str(key)], stderr=subprocess.DEVNULL, check=False)


class ForeignProcess:
    """Has the methods that Launcher calls, for a process that is no child of this one."""

    def __init__(self, pid):
        self.pid = pid
        self.returncode = None

    def poll(self):
        return None if os.path.exists(f"/proc/{self.pid}") else 0

    def send_signal(self, number):
        try:
            os.kill(self.pid, number)
        except ProcessLookupError:
            pass

    def terminate(self):
        self.send_signal(signal.SIGTERM)

    def kill(self):
        self.send_signal(signal.SIGKILL)

    def wait(self, timeout=PATIENCE):
        try:
            wait_until(lambda: self.poll() is not None, f"process {self.pid} ends", timeout)
        except AssertionError as in_vain:
            raise subprocess.TimeoutExpired(f"process {self.pid}", timeout) from in_vain
        return self.returncode


class Launcher:
    """The running program, read through the accessibility bus and driven by keys and mouse."""

    # The variables of a place where no program can open a window.
    nowhere = {"DISPLAY": "", "QT_QPA_PLATFORM": ""}

    def __init__(self, desktop, program, environment):
        self.desktop = desktop
        self.program = str(program)
        self.environment = desktop.environment() | environment
        self.prefix = []  # a command that starts the program, with its arguments
        self.log = tempfile.TemporaryFile("w+", errors="replace")
        self.process = None
        self.window = None

    def start(self, *options):
        """Starts the program and waits until a user could type."""
        self.attach(self.start_process(*options))

    def attach(self, process):
        """Makes a process of this program the one under test."""
        self.process = process
        self.window = wait_until(self._find_window, "the window shows")
        self.wait_until_ready()

    def attach_to_foreign(self, pid):
        """Like attach(), for a process that this one did not start."""
        self.attach(ForeignProcess(pid))

    def start_process(self, *options, console=None, **variables):
        """Starts the program with further variables; its output goes to the log or to "console"."""
        return start_tied([*self.prefix, self.program, *options], env=self.environment | variables,
                          stdout=console or self.log, stderr=self.log)

    def order(self, *options, **variables):
        """Runs the program to its end; returns the status, the output and the errors."""
        result = subprocess.run([*self.prefix, self.program, *options], env=self.environment | variables,
                                stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                                stderr=subprocess.PIPE, text=True, timeout=PATIENCE)
        return result.returncode, result.stdout, result.stderr

    def wait_until_ready(self):
        wait_until(self.is_visible, "the window shows")
        wait_until(lambda: self.desktop.active_window() == self.window, "the window is active")
        wait_until(lambda: has_state(self._edit(), Atspi.StateType.FOCUSED),
                   "the command box has the focus")

    def kill(self):
        self.process.send_signal(signal.SIGKILL)
        self.process.wait()

    def terminate(self):
        """Ends the program like the session at log-out."""
        stop(self.process)

    def stop(self):
        if self.process:
            stop(self.process)
        self.log.close()

    def messages(self):
        self.log.seek(0)
        return self.log.read()

    def processes(self):
        """The process IDs of all instances of this program with this home."""
        return [pid for pid in map(int, filter(str.isdigit, os.listdir("/proc")))
                if self._is_instance(pid)]

    # What the user sees

    def is_visible(self):
        return "IsViewable" in self.desktop.run("xwininfo", "-id", self.window)

    def geometry(self):
        """x, y, width and height of the window on the screen."""
        return self.desktop.geometry(self.window)

    def float_icon(self):
        """x, y, width and height of the floating icon, or None if it is hidden."""
        icon = self.float_icon_window()
        return self.desktop.geometry(icon) if icon else None

    def float_icon_window(self):
        return next(filter(self._is_float_icon, self._all_windows()), None)

    def top_window(self):
        """The topmost window of any program, except for the floating icon."""
        return [window for window in self.desktop.stack() if not self._is_float_icon(window)][-1]

    def menu_is_open(self):
        return len(self.windows()) == (2 if self.is_visible() else 1)

    def tray_icon(self):
        """The window of the icon in the system tray, or None."""
        return next(filter(self._is_embedded, self._all_windows()), None)

    def tray_icon_place(self):
        """x, y, width and height of the icon once the tray has stopped moving it."""
        last = since = None

        def stands_still():
            nonlocal last, since
            icon = self.tray_icon()
            place = self.desktop.geometry(icon) if icon else None
            if place != last:
                last, since = place, time.monotonic()
            return place and time.monotonic() - since > TRAY_PAUSE

        wait_until(stands_still, "the icon stands still in the tray")
        return last

    def text(self):
        """The text of the line edit, without the command in the badge."""
        return self.text_of(self._edit())

    def text_of(self, accessible):
        """The text of a text control."""
        return Atspi.Text.get_text(accessible, 0, -1)

    def badge(self):
        """The command in the badge, or None."""
        return self._shown_label(self._edit().get_parent())

    def status(self):
        """The status line, or None."""
        return self._shown_label(self.content())

    def rows(self):
        """The rows of the list as pairs of title and subtitle."""
        rows = self._list()
        return [tuple(row.get_name().split("\n", 1)) for row in children(rows)] if rows else []

    def titles(self):
        return [row[0] for row in self.rows()]

    def row_count(self):
        rows = self._list()
        return rows.get_child_count() if rows else 0

    def current_row(self):
        selected = [i for i, row in enumerate(children(self._list()))
                    if has_state(row, Atspi.StateType.SELECTED)]
        return selected[0] if len(selected) == 1 else None

    def list_height(self):
        return self._list().get_extents(Atspi.CoordType.SCREEN).height

    def pins(self):
        """The names in the pinned strip; empty if it is hidden."""
        return [button.get_name() for button in self._pin_buttons()]

    def everything(self):
        """All visible controls from the top down, including menus."""
        return everything(self.application())

    def control(self, name, role=None):
        """The visible control with this name that can have the focus."""
        for found in self.everything():
            if found.get_name() == name and has_state(found, Atspi.StateType.FOCUSABLE) \
                    and role in (None, found.get_role()):
                return found
        raise NotYet(f"there is no control {name!r}")

    def focused(self):
        """The control with the focus; for a list this is the list, not its current row."""
        rows = (Atspi.Role.LIST_ITEM, Atspi.Role.TABLE_CELL, Atspi.Role.TREE_ITEM)
        for found in self.everything():
            if has_state(found, Atspi.StateType.FOCUSED) and found.get_role() not in rows \
                    and has_state(found, Atspi.StateType.FOCUSABLE):
                return found
        raise NotYet("no control has the focus")

    def dialog(self, role):
        """The name of the visible dialog with this role, or None."""
        found = find(self.application(), role)
        return found[0].get_name() if found else None

    def progress(self):
        """The value of the visible progress bar, or None."""
        bars = find(self.application(), Atspi.Role.PROGRESS_BAR)
        return Atspi.Value.get_current_value(bars[0]) if bars else None

    def dialog_texts(self, role):
        """The texts in the dialog with this role."""
        dialog = self._dialog(role)
        return [label.get_name() for label in find(dialog, Atspi.Role.LABEL)] + \
            [self.text_of(text) for text in find(dialog, Atspi.Role.TEXT)]

    # What the user does

    def type(self, text):
        self.desktop.type(text)

    def press(self, *keys):
        self.desktop.press(*keys)

    def empty_box(self):
        """Empties the command box with its badge, wherever the focus is."""
        self._click_on(self._edit)
        if self.text():
            self.press("End", "shift+Home", "BackSpace")
            wait_until(lambda: self.text() == "", "the arguments are gone")
        if self.badge():
            self.press("BackSpace", "shift+Home", "BackSpace")
        wait_until(lambda: self.badge() is None and self.text() == "", "the box is empty")

    def enter(self, text):
        """Types the text, or pastes it if it has characters that the keyboard lacks."""
        if text.isascii():
            self.type(text)
        else:
            self.paste(text)

    def paste(self, text):
        self.desktop.set_clipboard(text)
        self.press("ctrl+v")

    def click_row(self, title, button=1, times=1):
        self._click_on(lambda: children(self._list())[self.titles().index(title)], button, times)

    def click_close(self):
        self._click_on(lambda: find(self.application(), Atspi.Role.PUSH_BUTTON)[0])

    def click_pin(self, name, button=1):
        self._click_on(lambda: next(p for p in self._pin_buttons() if p.get_name() == name), button)

    def tab_to(self, name):
        """Moves the focus to a control with the Tab key."""
        def is_there():
            if self.focused().get_name() == name:
                return True
            self.press("Tab")
            return False
        wait_until(is_there, f"the Tab key leads to {name!r}")

    def open_page(self, command, control):
        """Types a command to open its page; waits for this control of the page."""
        self.empty_box()
        self.type(command)
        # The badge shows while typing, the status only after the search.
        wait_until(lambda: (self.status() or "").startswith(f"{command} | "), "the command is known")
        self.press("Return")
        wait_until(lambda: self.control(control), "the page opens")

    def click_button(self, role, name):
        """Clicks a button of the dialog with this role."""
        buttons = wait_until(lambda: [button for button
                                      in find(self._dialog(role), Atspi.Role.PUSH_BUTTON)
                                      if button.get_name().replace("&", "") == name],
                             f"the dialog has a button {name!r}")
        last = None

        def stands_still():
            nonlocal last
            previous, last = last, centre(buttons[0])
            return previous == last
        wait_until(stands_still, "the dialog stands still")
        self.desktop.click(*last)

    def choose_from_menu(self):
        """Triggers the only entry of the context menu that a right click has opened."""
        wait_until(lambda: len(self.windows()) == 2, "the menu opens")
        self.press("Down", "Return")
        wait_until(lambda: len(self.windows()) == 1, "the menu closes")

    # How it is found

    def _is_instance(self, pid):
        try:
            if os.readlink(f"/proc/{pid}/exe") != os.path.realpath(self.program):
                return False
            variables = pathlib.Path(f"/proc/{pid}/environ").read_bytes().split(b"\0")
        except OSError:
            return False
        return f"HOME={self.environment['HOME']}".encode() in variables

    def _find_window(self):
        if self.process.poll() is not None:
            raise RuntimeError(f"The program ended with {self.process.returncode}: {self.messages()}")
        return next(iter(self.windows()), None)

    def windows(self):
        """All visible windows of the process without its icons; a menu is a window too."""
        return [window for window in self._all_windows()
                if not self._is_float_icon(window) and not self._is_embedded(window)]

    def _all_windows(self):
        return self.desktop.windows_of(self.process.pid)

    def _is_float_icon(self, window):
        # The only utility window of the program.
        return "_UTILITY" in self.desktop.run("xprop", "-id", window, "_NET_WM_WINDOW_TYPE")

    def _is_embedded(self, window):
        """Whether another program contains the window, not just the window manager's frame."""
        tree = self.desktop.run("xwininfo", "-id", window, "-tree")
        ids = re.findall(r"(?:Root|Parent) window id: (\w+)", tree)
        if not ids:
            raise NotYet("the window has gone")
        root, parent = ids
        return parent != root and "window state" not in self.desktop.run("xprop", "-id", window,
                                                                         "WM_STATE")

    def application(self):
        desktop = Atspi.get_desktop(0)
        for index in range(desktop.get_child_count()):
            application = desktop.get_child_at_index(index)
            if application and application.get_process_id() == self.process.pid:
                # Read the current state; the library would return cached values.
                application.set_cache_mask(Atspi.Cache.NONE)
                return application
        raise NotYet("the program is not on the accessibility bus")

    def _dialog(self, role):
        found = find(self.application(), role)
        if not found:
            raise NotYet("no such dialog shows")
        return found[0]

    def _click_on(self, find_it, button=1, times=1):
        # A window that has just been placed learns its position a moment later.
        wait_until(self._knows_its_place, "the window knows its place")
        x, y = centre(find_it())
        self.desktop.click(int(x * self._scale()), int(y * self._scale()), button, times)

    def _scale(self):
        """Pixels of the screen per device-independent pixel, the unit of reported positions."""
        return float(self.environment.get("QT_SCALE_FACTOR", 1))

    def _knows_its_place(self):
        return all(abs(own * self._scale() - seen) < self._scale()
                   for own, seen in zip(self._own_geometry(), self.geometry()))

    def _own_geometry(self):
        extents = [window.get_extents(Atspi.CoordType.SCREEN)
                   for window in children(self.application())]
        widest = max(extents, key=lambda rect: rect.width)
        return widest.x, widest.y, widest.width, widest.height

    def _edit(self):
        found = find(self.application(), Atspi.Role.TEXT)
        if not found:
            raise NotYet("no line edit shows")
        return found[0]

    def content(self):
        return self._edit().get_parent().get_parent()

    def _list(self):
        return next(iter(find(self.application(), Atspi.Role.LIST)), None)

    def _pin_buttons(self):
        for label in find(self.content(), Atspi.Role.LABEL):
            if label.get_name() == "Pinned":
                return find(label.get_parent(), Atspi.Role.PUSH_BUTTON)
        return []

    def _shown_label(self, parent):
        labels = [child for child in children(parent)
                  if child.get_role() == Atspi.Role.LABEL
                  and has_state(child, Atspi.StateType.SHOWING)]
        return labels[0].get_name() if labels else None
