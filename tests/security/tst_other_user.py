# SPDX-License-Identifier: GPL-3.0-or-later
"""Tries on the running program what another user of the same machine could.

usage: tst_other_user.py PROGRAM PICTURE-FOLDER BUILT-PROGRAM [unittest's own]

The other user is "nobody" (65534), so the cases need root and are skipped without it. BUILT-PROGRAM
is what scripts/run starts.
"""

import os
import pathlib
import stat
import subprocess
import sys
import tempfile
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "e2e"))

from case import EndToEndCase, main  # noqa: E402
from desktop import wait_until  # noqa: E402
from elf import readelf  # noqa: E402

NOBODY = 65534
BUILT_PROGRAM = pathlib.Path(sys.argv.pop(3)).resolve()


def as_nobody(script, *arguments):
    """Runs a Python script as the other user and returns what it prints."""
    result = subprocess.run(["/usr/bin/python3", "-c", script, *map(str, arguments)], user=NOBODY,
                            group=NOBODY, extra_groups=[], env={}, cwd="/", text=True,
                            stdout=subprocess.PIPE, stderr=subprocess.PIPE)
    if result.returncode != 0:
        raise AssertionError(f"the other user's script failed:\n{result.stderr}")
    return result.stdout


def readable_by_nobody(path):
    return as_nobody("""
import sys
try:
    sys.stdout.write(open(sys.argv[1], errors="replace").read())
except PermissionError:
    sys.stdout.write("denied")
""", path) != "denied"


@unittest.skipIf(os.geteuid() != 0, "NOT TESTED: only root can act as another user")
class OtherUserCase(EndToEndCase):
    def setUp(self):
        super().setUp()
        # As on many machines, others may enter the home, and new files are readable.
        for folder in (self.home.folder, self.home.folder / ".local", self.home.data):
            folder.chmod(0o755)
        self.addCleanup(os.umask, os.umask(0o022))
        shared = tempfile.TemporaryDirectory(prefix="vaskel-shared-")
        self.addCleanup(shared.cleanup)
        self.shared = pathlib.Path(shared.name)
        self.shared.chmod(0o1777)


class OtherUser(OtherUserCase):
    def icons_in(self, folder):
        return sorted(path.name for path in folder.glob("*.png"))

    def cached_icons(self):
        return self.icons_in(self.home.folder / ".cache/Vaskel/icons")

    def test_plants_libraries_where_the_user_starts_the_program(self):
        lines = readelf("--dynamic", BUILT_PROGRAM).splitlines()
        names = [line.split("[")[1].rstrip("]") for line in lines if "(NEEDED)" in line]
        self.assertIn("libQt6Core.so.6", names)
        for name in names:
            as_nobody("import sys; open(sys.argv[1], 'w').write('planted')", self.shared / name)
        loader = subprocess.run([BUILT_PROGRAM], cwd=self.shared, text=True,
                                env={"LD_TRACE_LOADED_OBJECTS": "1"}, stdout=subprocess.PIPE,
                                stderr=subprocess.STDOUT).stdout
        self.assertRegex(loader, r"libQt6Core\.so\.6 => /")
        for line in loader.splitlines():
            self.assertNotRegex(line, r"=> not found|invalid|error while")
            if " => " in line:
                self.assertTrue(pathlib.Path(line.split(" => ")[1].split()[0]).is_absolute(), line)
                self.assertNotIn(str(self.shared), line)

    def test_offers_pipes_as_icons(self):
        for name in ("pipe.png", "pipe.svg"):
            as_nobody("import os, sys; os.umask(0); os.mkfifo(sys.argv[1], 0o666)",
                      self.shared / name)
            self.assertTrue(stat.S_ISFIFO((self.shared / name).stat().st_mode))
        self.home.add_entry("Quokka one", Icon=self.shared / "pipe.png")
        self.home.add_entry("Quokka two", Icon=self.shared / "pipe.svg")
        self.home.add_entry("Quokka three", Icon="/dev/zero")
        self.start()
        self.launcher.type("quokka")
        self.becomes(lambda: sorted(self.launcher.titles()),
                     ["Quokka one", "Quokka three", "Quokka two"])

    def test_reads_the_log_the_pins_and_the_tasks(self):
        folder = self.home.data / "Vaskel"
        # The folder of an earlier version was open.
        folder.mkdir()
        folder.chmod(0o755)
        (folder / "todo.json").write_text("[]")
        self.start()
        self.launcher.type("a secret")
        logs = list(folder.glob("Vaskel_*.log"))
        self.assertEqual(len(logs), 1)
        control = self.home.data / "control"
        control.write_text("open to all")
        self.assertTrue(readable_by_nobody(control))
        for path in (*logs, folder / "pins.json", folder / "todo.json"):
            self.assertTrue(path.exists(), path)
            self.assertFalse(readable_by_nobody(path), path)

    def test_takes_the_name_of_the_icon_folder(self):
        as_nobody("import sys; open(sys.argv[1], 'w').write('taken')", self.shared / "Vaskel")
        self.launcher.environment["TMPDIR"] = str(self.shared)
        self.home.add_entry("Quokka", Icon="utilities-terminal")
        self.start()
        self.assertNotEqual(self.cached_icons(), [])
        self.assertEqual((self.shared / "Vaskel").read_text(), "taken")

    def test_owns_the_icon_folder(self):
        as_nobody("import os, sys; os.umask(0); os.makedirs(sys.argv[1])",
                  self.shared / "Vaskel/icons")
        self.launcher.environment["TMPDIR"] = str(self.shared)
        self.home.add_entry("Quokka", Icon="utilities-terminal")
        self.start()
        self.assertNotEqual(self.cached_icons(), [])
        self.assertEqual(self.icons_in(self.shared / "Vaskel/icons"), [])

    def test_may_rename_a_parent_of_the_temporary_folder(self):
        temporary = self.shared / "parent/temporary"
        temporary.mkdir(parents=True)
        (self.shared / "parent").chmod(0o777)
        self.launcher.environment["TMPDIR"] = str(temporary)
        self.home.add_entry("Quokka", Icon="utilities-terminal")
        self.start()
        self.assertNotEqual(self.cached_icons(), [])
        self.assertEqual(self.icons_in(temporary / "Vaskel/icons"), [])
        # Nothing but the name of the parent keeps the other user out.
        as_nobody("import os, sys; os.rename(*sys.argv[1:])", temporary,
                  self.shared / "parent/renamed")


class OtherUsersMessages(OtherUserCase):
    def test_sends_messages_to_the_running_program(self):
        self.start()
        runtime = self.home.folder / "runtime"
        socket = next(runtime.glob("SingleApplication-*.socket"))
        send = """
import contextlib, socket, sys
connection = socket.socket(socket.AF_UNIX)
try:
    connection.connect(sys.argv[1])
    with contextlib.suppress(ConnectionError):  # the program may already have hung up
        connection.send(sys.argv[2].encode())
    sys.stdout.write("connected")
except PermissionError:
    sys.stdout.write("denied")
"""
        self.assertEqual(as_nobody(send, socket, "hide"), "denied")
        # Even if the folder were open, only the user's own processes are heard.
        runtime.chmod(0o755)
        socket.chmod(0o777)
        self.assertEqual(as_nobody(send, socket, "hide"), "connected")
        wait_until(lambda: "another user" in self.launcher.messages(), "the message is refused")
        self.assertTrue(self.launcher.is_visible())
        runtime.chmod(0o700)
        self.assertEqual(self.launcher.order("--hide"), (0, "", ""))
        self.hides()


if __name__ == "__main__":
    main()
