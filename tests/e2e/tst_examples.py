# SPDX-License-Identifier: GPL-3.0-or-later
"""The examples of commands, each on the real tool."""

import os
import pathlib
import re
import shutil
import subprocess

from case import EndToEndCase, main
from desktop import start_tied, stop, wait_until

EXAMPLES = pathlib.Path(__file__).resolve().parents[2] / "examples/commands"
LONGEST = 40  # lines; an example is meant to be read at a glance


class Examples(EndToEndCase):
    def setUp(self):
        super().setUp()
        # The tools come with modules for the system's Python.
        self.environment = {"PATH": f"{self.home.folder / 'bin'}:/usr/bin:/bin"}
        (self.home.folder / "bin").mkdir()
        self.desktop.set_clipboard("nothing yet")

    def install(self, name):
        shutil.copytree(EXAMPLES / name, self.home.data / "Vaskel/commands" / name)

    def start_with(self, name, **environment):
        self.install(name)
        self.launcher.environment |= self.environment | environment
        self.start()

    def record(self, program):
        """Puts a program first on PATH that records its arguments."""
        path = self.home.folder / "bin" / program
        path.write_text(f'#!/bin/sh\nprintf "%s\\n" "$@" >{self.home.folder}/new\n'
                        f'mv {self.home.folder}/new {self.home.folder}/{program}\n')
        path.chmod(0o755)

    def arguments_of(self, program):
        path = self.home.folder / program
        wait_until(path.exists, f"{program} has run")
        return path.read_text().splitlines()

    def test_guide_leads_to_a_first_command(self):
        """Does what docs/COMMANDS.md says, word by word."""
        guide = (EXAMPLES.parents[1] / "docs/COMMANDS.md").read_text()
        section = guide.split("\n## ")[1]
        make, file, program, check, printed = re.findall(r"^```\w+\n(.*?)^```$", section,
                                                         re.DOTALL | re.MULTILINE)
        folder = self.home.data / "Vaskel/commands/up"
        environment = self.launcher.environment | {
            "PATH": f"{pathlib.Path(self.program).parent}:/usr/bin:/bin"}
        subprocess.run(["sh", "-ec", make], env=environment, check=True)
        (folder / re.search(r"Save this in it as `(.+?)`", section)[1]).write_text(file)
        (folder / re.search(r"and this as `(.+?)`", section)[1]).write_text(program)
        output = subprocess.run(["sh", "-ec", check], env=environment, cwd=folder, check=True,
                                stdout=subprocess.PIPE, text=True).stdout
        self.assertEqual(output, printed)
        self.start()
        self.launcher.type(re.search(r"type `(up .+?)`", section)[1])
        self.shows_titles("HELLO")
        self.launcher.press("Return")
        self.hides()
        self.becomes(self.desktop.clipboard, "HELLO")

    def test_guide_leads_to_an_example(self):
        """Copies one as docs/COMMANDS.md says."""
        guide = (EXAMPLES.parents[1] / "docs/COMMANDS.md").read_text()
        copy = re.search(r"^## Examples$.*?^```sh\n(.*?)^```$", guide, re.DOTALL | re.MULTILINE)[1]
        subprocess.run(["sh", "-ec", copy], env=self.launcher.environment | self.environment,
                       cwd=EXAMPLES.parents[1], check=True)
        self.start()
        self.launcher.type("emoji black cat")
        self.shows_titles("\U0001f408\u200d\u2b1b  black cat")

    def test_are_short(self):
        folders = sorted(EXAMPLES.iterdir())
        self.assertEqual([folder.name for folder in folders],
                         ["emoji", "run", "ssh", "sys", "unit", "win"])
        for path in EXAMPLES.glob("*/*"):
            self.assertLessEqual(len(path.read_text().splitlines()), LONGEST, path)

    def test_are_correct(self):
        for folder in EXAMPLES.iterdir():
            self.install(folder.name)
        self.start()
        self.launcher.open_page("plugin", "Enable all")
        names = [control.get_name() for control in self.launcher.everything()]
        for folder in EXAMPLES.iterdir():
            self.assertIn(f"{folder.name} Enabled", names)
        self.assertEqual([name for name in names if "command.json" in name], [])

    def test_win_switches_to_a_window(self):
        # "A note" matches until the last letter is searched for. Once it is gone, no later search
        # moves the selection back to the first row.
        windows = {}
        for title in ("First notes", "Second notes", "A note"):
            process, windows[title] = self.desktop.open_window("-title", title)
            self.addCleanup(stop, process)
        self.start_with("win")
        self.launcher.type("win notes")
        self.shows_rows(("Second notes", "XTerm"), ("First notes", "XTerm"))
        self.launcher.press("Down", "Return")
        self.hides()
        self.becomes(self.desktop.active_window, windows["First notes"])

    def test_win_lists_a_window_without_a_title(self):
        for title in ("Notes", "To be removed"):
            process, window = self.desktop.open_window("-title", title)
            self.addCleanup(stop, process)
        self.desktop.run("xprop", "-id", str(window), "-remove", "WM_NAME",
                         "-remove", "_NET_WM_NAME")
        self.start_with("win")
        self.launcher.type("win ")
        self.shows_rows(("XTerm", "XTerm"), ("Notes", "XTerm"))
        self.picture("win")

    def test_unit_converts(self):
        self.start_with("unit")
        self.launcher.type("unit 5 miles in km")
        self.shows_rows(("8.04672 km", "5 miles in km - Press Enter to copy"))
        self.picture("unit")
        self.launcher.press("Return")
        self.hides()
        self.becomes(self.desktop.clipboard, "8.04672 km")

    def test_unit_keeps_the_units_as_they_are(self):
        # In German, a point separates thousands.
        folder = self.home.folder / "locales"
        folder.mkdir()
        subprocess.run(["localedef", "-i", "de_DE", "-f", "UTF-8", folder / "de_DE.UTF-8"],
                       check=True)
        self.start_with("unit", LC_ALL="de_DE.UTF-8", LOCPATH=str(folder))
        for text, row in (("unit 5 m in cm", "500 cm"),
                          ("unit 5 km in miles", "3.106855961 mi"),
                          ("unit 90 min in h", "1.5 h"),
                          ("unit 1e3 m in km", "1 km"),
                          ("unit 0.5 kg in g", "500 g")):
            self.launcher.empty_box()
            self.launcher.type(text)
            self.shows_titles(row)

    def test_unit_refuses_money_and_nonsense(self):
        self.start_with("unit")
        for text, row in (("unit 20 usd in eur", "Money is left out"),
                          ("unit 5 blub in km", "There is no unit blub"),
                          ("unit 5 m in kg", "m cannot be converted to kg"),
                          ("unit 1.5.2 m in km", "Type something like: 5 miles in km"),
                          ("unit 1,5 m in km", "Type something like: 5 miles in km"),
                          ("unit x", "Type something like: 5 miles in km")):
            self.launcher.empty_box()
            self.launcher.type(text)
            self.shows_titles(row)

    def test_sys_asks_logind(self):
        log = open(self.home.folder / "logind", "wb")
        self.addCleanup(log.close)
        mock = start_tied(["/usr/bin/python3", "-m", "dbusmock", "--system", "--template",
                           "logind"], stdout=log, stderr=subprocess.DEVNULL,
                          env=os.environ | {"DBUS_SYSTEM_BUS_ADDRESS": self.desktop.bus})
        self.addCleanup(stop, mock)
        wait_until(lambda: "login1" in self.desktop.run("busctl", "--user", "list"),
                   "logind is on the bus")
        self.start_with("sys", DBUS_SYSTEM_BUS_ADDRESS=self.desktop.bus)
        self.launcher.type("sys ")
        self.shows_titles("Lock", "Suspend", "Restart", "Shut down")
        self.picture("sys")
        for title, call in (("Lock", 'LockSession "auto"'), ("Suspend", "Suspend True"),
                            ("Restart", "Reboot True"), ("Shut down", "PowerOff True")):
            self.start_again()
            self.launcher.empty_box()
            self.launcher.type(f"sys {title.lower()}")
            self.shows_titles(title)
            self.launcher.press("Return")
            self.hides()
            wait_until(lambda: call in (self.home.folder / "logind").read_text(),
                       f"logind was asked: {call}")

    def test_emoji_is_found_by_its_name(self):
        self.start_with("emoji")
        self.launcher.type("emoji cat grinning")
        self.shows_titles("\U0001f63a  grinning cat", "\U0001f638  grinning cat with smiling eyes")
        self.picture("emoji")
        self.launcher.press("Return")
        self.hides()
        self.becomes(self.desktop.clipboard, "\U0001f63a")

    def test_ssh_logs_in_to_a_host(self):
        (self.home.folder / ".ssh").mkdir()
        (self.home.folder / ".ssh/config").write_text(
            "# Host not-me\nHost web mail\n    User me\nHost *.example.org w?b\nhost\tnas\n")
        self.record("ssh")
        self.start_with("ssh")
        self.launcher.type("ssh ")
        self.shows_titles("web", "mail", "nas")
        self.launcher.type("mai")
        self.shows_titles("mail")
        self.launcher.press("Return")
        self.hides()
        self.assertEqual(self.arguments_of("ssh"), ["--", "mail"])

    def test_run_starts_a_program_with_arguments(self):
        self.record("recording-program")
        self.start_with("run")
        self.launcher.type("run recording-p 'a b' c")
        self.shows_titles("recording-program 'a b' c")
        self.launcher.press("Return")
        self.hides()
        self.assertEqual(self.arguments_of("recording-program"), ["a b", "c"])


if __name__ == "__main__":
    main()
