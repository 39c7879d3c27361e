# SPDX-License-Identifier: GPL-3.0-or-later
"""The order of the start's steps, as other processes can see it."""

import ctypes
import os
import pathlib
import re
import select
import shutil
import struct

from case import EndToEndCase, main
from desktop import MAXIMUM_PROCESSES, start_tied, stop, wait_until

# From <sys/inotify.h>.
IN_OPEN, IN_CREATE = 0x20, 0x100
EVENT = struct.Struct("iIII")  # watch, mask, cookie and length of the name behind it


class FileWatch:
    """Records the names of what is opened or made in some folders, in this order."""

    def __init__(self, *folders):
        library = ctypes.CDLL(None, use_errno=True)
        self._descriptor = library.inotify_init1(os.O_NONBLOCK)
        for folder in folders:
            if library.inotify_add_watch(self._descriptor, os.fsencode(folder),
                                         IN_OPEN | IN_CREATE) < 0:
                raise OSError(ctypes.get_errno(), "inotify_add_watch", str(folder))
        self._folders = folders
        self._names = []

    def close(self):
        os.close(self._descriptor)

    def names(self):
        while select.select([self._descriptor], [], [], 0)[0]:
            events = os.read(self._descriptor, 65536)
            while events:
                watch, _, _, length = EVENT.unpack_from(events)
                name = events[EVENT.size:EVENT.size + length].rstrip(b"\0").decode()
                self._names.append(name or self._folders[watch - 1].name)
                events = events[EVENT.size + length:]
        return self._names


def in_first_order(patterns, texts):
    """The patterns in the order in which each first matches in a text."""
    first = {pattern: next((number for number, text in enumerate(texts)
                            if re.search(pattern, text)), None) for pattern in patterns}
    return sorted((pattern for pattern in patterns if first[pattern] is not None), key=first.get)


class Start(EndToEndCase):
    def test_files_are_read_in_order(self):
        program = self.home.folder / "program"
        translations = program / "i18n"
        translations.mkdir(parents=True)
        (translations / "Vaskel_de_DE.qm").touch()
        data = self.home.data / "Vaskel"
        (data / "commands").mkdir(parents=True)
        (data / "todo.json").write_text("[]")
        self.home.set_preferences(theme="dark")
        watch = FileWatch(self.home.folder / "runtime", translations, self.home.applications, data,
                          data / "commands", self.home.configuration / "Vaskel")
        self.addCleanup(watch.close)

        self.launcher.program = shutil.copy(self.program, program)
        self.launcher.environment |= {"LANG": "de_DE.UTF-8"}
        self.start()
        steps = [r"Vaskel_.*\.log", r"SingleApplication-.*\.lock", r"Vaskel_de_DE\.qm",
                 "applications", r"Vaskel\.conf", r"todo\.json", "commands"]
        if "VASKEL_WITHOUT_LOCK_FILE" in os.environ:
            del steps[1]
        self.assertEqual(in_first_order(steps, watch.names()), steps)

    def test_windows_and_hotkey_come_in_order(self):
        self.addCleanup(stop, self.desktop.start_tray())
        wait_until(self.desktop.tray, "the tray runs")
        # The tracer's display has a number that no desktop has: it is above every process ID.
        display = f":{MAXIMUM_PROCESSES + int(self.desktop.display.lstrip(':'))}"
        socket = pathlib.Path(f"/tmp/.X11-unix/X{display[1:]}")
        socket.unlink(missing_ok=True)  # the tracer leaves it
        self.addCleanup(socket.unlink, missing_ok=True)
        requests = self.home.folder / "requests"
        tracer = start_tied(["xtrace", "--keeprunning", "--nocopyauthentication", "--outfile",
                             requests, "--display", self.desktop.display, "--fakedisplay", display],
                            stdout=self.launcher.log, stderr=self.launcher.log)
        self.addCleanup(stop, tracer)
        wait_until(socket.is_socket, "the tracer listens")

        # The tracer cannot pass on the memory that the program would share with the server.
        self.launcher.environment |= {"DISPLAY": display, "QT_XCB_NO_MITSHM": "1"}
        self.start()
        wait_until(self.launcher.tray_icon, "the tray shows the icon")
        icon = self.launcher.float_icon_window()
        steps = (f"MapWindow window=0x{int(icon):08x}",
                 f"MapWindow window=0x{int(self.launcher.window):08x}",
                 "GrabKey .*modifiers=Control,Mod1 ", "SendEvent .*_NET_SYSTEM_TRAY_OPCODE")
        # The tracer also writes bytes of other encodings.
        self.assertEqual(in_first_order(steps, requests.read_text("latin-1").splitlines()),
                         list(steps))


if __name__ == "__main__":
    main()
