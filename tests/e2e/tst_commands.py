# SPDX-License-Identifier: GPL-3.0-or-later
import json
import os
import subprocess

from case import EndToEndCase, main
from desktop import wait_until

PROGRAM = """#!/usr/bin/env python3
import json
import os
import sys
import time

if sys.argv[1] == "slow":
    with open("pid.new", "w") as file:
        print(os.getpid(), file=file)
    os.rename("pid.new", "pid")
    time.sleep(1000)
print(json.dumps({"items": [
    {"title": "One " + sys.argv[1], "subtitle": "First", "arg": "1", "autocomplete": "whole text"},
    {"title": "Two", "valid": False}]}))
"""


class Commands(EndToEndCase):
    """Commands of the user's own."""

    def setUp(self):
        super().setUp()
        self.desktop.set_clipboard("nothing yet")
        self.folder = self.home.data / "Vaskel/commands/mine"
        self.folder.mkdir(parents=True)
        self.write(command="mine", name="My command", description="What it does",
                   exec=["./program", "{query}"], output="items")
        program = self.folder / "program"
        program.write_text(PROGRAM)
        program.chmod(0o755)

    def write(self, **keys):
        (self.folder / "command.json").write_text(json.dumps(keys))

    def test_shows_the_rows_of_the_program_and_copies(self):
        self.start()
        self.launcher.type("mine x")
        self.becomes(self.launcher.badge, "mine")
        self.becomes(self.launcher.status, "mine | What it does")
        self.shows_rows(("One x", "First"), ("Two", ""))
        self.picture("rows")
        self.launcher.press("Return")
        self.hides()
        self.becomes(self.desktop.clipboard, "1")

    def test_completes_the_text_at_tab(self):
        self.start()
        self.launcher.type("mine x")
        self.shows_rows(("One x", "First"), ("Two", ""))
        self.launcher.press("Tab")
        self.becomes(self.launcher.text, "whole text")
        self.shows_rows(("One whole text", "First"), ("Two", ""))

    def test_waits_for_a_slow_program_and_ends_it(self):
        self.start()
        self.launcher.type("mine slow")
        self.shows_rows(("Waiting for My command...", "What it does"))
        self.picture("waiting")
        pid = self.folder / "pid"
        wait_until(pid.exists, "the program runs")
        process = int(pid.read_text())
        self.launcher.press("Return")  # does nothing
        self.launcher.type("er")
        self.shows_rows(("One slower", "First"), ("Two", ""))
        wait_until(lambda: not self.is_running(process), "the program of the earlier text has ended")

    def test_shows_what_failed(self):
        (self.folder / "program").write_text("#!/bin/sh\necho no network >&2\nexit 3\n")
        self.start()
        self.launcher.type("mine x")
        self.shows_rows(("./program has ended with status 3", "no network"))
        self.picture("failed-program")

    def test_passes_no_private_variable(self):
        (self.folder / "program").write_text(
            "#!/bin/sh\necho \"{\\\"items\\\": [{\\\"title\\\": \\\"$1 ($DESKTOP_STARTUP_ID)\\\"}]}\"\n")
        self.launcher.environment["DESKTOP_STARTUP_ID"] = "for-vaskel-alone"
        self.start()
        self.launcher.type("mine x")
        self.shows_titles("x ()")

    def test_names_a_wrong_file_on_the_page_of_the_plugins(self):
        self.write(command="mine", name="My command", exec="./program", output="items")
        other = self.home.data / "Vaskel/commands/other"
        other.mkdir()
        (other / "command.json").write_text(json.dumps({
            "command": "other", "name": "Other", "exec": ["true"], "output": "lines"}))
        self.start()
        self.launcher.open_page("plugin", "Enable all")
        line = (f"{self.folder}/command.json: exec: "
                "expected a list of strings: a program and its arguments")
        names = [control.get_name() for control in self.launcher.everything()]
        self.assertIn("other Enabled", names)
        self.assertIn("other Hotkey", names)
        self.assertNotIn("mine Enabled", names)
        self.assertIn(line, names)
        self.picture("wrong-file")

    def test_has_a_switch_and_a_hotkey(self):
        self.write(command="abc", name="My command", exec=["./program", "{query}"],
                   output="items")  # the first on the page
        self.start()
        self.launcher.open_page("plugin", "Save")
        self.launcher.tab_to("abc Hotkey")
        self.launcher.press("ctrl+shift+F8")
        self.save("pluginHotkeys/abc", "Ctrl+Shift+F8")
        self.launcher.empty_box()
        self.launcher.press("Escape")
        self.hides()
        self.launcher.press("ctrl+shift+F8")
        self.launcher.wait_until_ready()
        self.becomes(self.launcher.badge, "abc")
        self.launcher.type("x")
        self.shows_titles("One x", "Two")

        self.launcher.open_page("plugin", "Save")
        self.launcher.tab_to("abc Enabled")
        self.launcher.press("space")
        self.save("plugins/abc", "false")
        self.launcher.empty_box()
        self.launcher.type("abc x")
        self.shows_titles("Plugin disabled")

    def save(self, key, value):
        self.launcher.tab_to("Save")
        self.launcher.press("space")
        self.becomes(lambda: self.home.preferences().get(key), value)

    def test_speaks_chinese(self):
        self.write(**{"command": "mine", "name": "My command", "name[zh_CN]": "我的命令",
                      "exec": ["./missing", "{query}"], "output": "items"})
        self.launcher.environment |= {"LANG": "zh_CN.UTF-8", "LANGUAGE": "zh_CN"}
        self.start()
        self.launcher.type("mine x")
        self.becomes(self.launcher.status, "mine | 我的命令")
        self.shows_rows(("无法启动 ./missing", "没有这个程序。"))
        self.picture("error")

    def test_is_checked_without_a_display(self):
        environment = {**os.environ, **self.home.environment()}
        for variable in ("DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"):
            environment.pop(variable, None)
        check = subprocess.run([self.program, "--check-command", self.folder, "x"],
                               env=environment, capture_output=True, text=True, check=False)
        self.assertEqual(check.stderr, "")
        self.assertEqual(check.returncode, 0)
        self.assertEqual(check.stdout, "One x\n    subtitle: First\n    autocomplete: whole text\n"
                         "    Enter: copy 1\nTwo\n    Enter: nothing\n")

    def is_running(self, process):
        try:
            with open(f"/proc/{process}/stat", encoding="utf-8") as file:
                return ") Z " not in file.read()
        except FileNotFoundError:
            return False


if __name__ == "__main__":
    main()
