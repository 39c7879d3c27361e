# SPDX-License-Identifier: GPL-3.0-or-later
import os
import pathlib
import re
import signal

from case import EndToEndCase, main
from desktop import wait_until
from launcher import BUILTINS

ICON = pathlib.Path(__file__).parents[2] / "assets/icons/48.png"


class Applications(EndToEndCase):
    def test_lists_the_builtins_before_the_installed_programs(self):
        self.home.add_entry("Zebra")
        self.home.add_entry("Antelope")
        self.home.add_entry("Otter", root=self.home.applications / "Water")
        self.home.add_entry("Heron", root=self.home.system / "applications")
        self.start()
        self.shows_titles(*BUILTINS, "Antelope", "Zebra", "Otter", "Heron")
        self.assertEqual(self.launcher.rows()[len(BUILTINS):], [
            ("Antelope", "Start Menu"), ("Zebra", "Start Menu"),
            ("Otter", "Start Menu / Water"), ("Heron", "Start Menu")])
        self.picture("list")

    def test_reads_the_icons_of_later_starts_without_plugins(self):
        self.home.add_entry("Otter", Icon=ICON)
        for _ in range(2):
            self.start()
            self.launcher.type("otter")
            self.shows_titles("Otter")
            self.picture("icon")
            maps = pathlib.Path(f"/proc/{self.launcher.process.pid}/maps").read_text()
            self.launcher.terminate()
        self.assertEqual(re.findall(r"/imageformats/(\S+)", maps), [])

    def test_finds_a_chinese_name_by_its_pinyin_and_its_initials(self):
        self.home.add_entry("计算器", file="org.example.Numbers")
        self.home.add_entry("记事本", file="org.example.Notes")
        self.start()
        for query, name in (("jisuanqi", "计算器"), ("jsq", "计算器"), ("suanq", "计算器"),
                            ("jishiben", "记事本"), ("jsb", "记事本")):
            with self.subTest(query):
                self.launcher.type(query)
                self.shows_titles(name)
                self.picture(query)
                self.launcher.empty_box()

    def test_starts_the_row_at_enter(self):
        self.home.add_recorder("Recorder")
        self.start()
        self.launcher.type("recor")
        self.shows_rows(("Recorder", "Start Menu"))
        self.picture("found")
        self.launcher.press("Return")
        self.is_recorded("recorder")
        self.hides()

    def test_starts_a_visible_row_by_its_digit(self):
        self.home.add_recorder("Recorder 1", file="first")
        self.home.add_recorder("Recorder 2", file="second")
        self.start()
        self.launcher.type("recor")
        self.shows_titles("Recorder 1", "Recorder 2")
        self.launcher.press("alt+2")
        self.is_recorded("second")
        self.hides()
        self.assertIsNone(self.home.recorded("first"))

    def test_types_into_the_box_after_a_click_on_a_row(self):
        self.home.add_entry("Otter")
        self.start()
        self.shows_titles(*BUILTINS, "Otter")
        self.launcher.click_row("Paint")
        self.becomes(self.launcher.current_row, BUILTINS.index("Paint"))
        self.launcher.type("otter")
        self.becomes(self.launcher.text, "otter")
        self.shows_titles("Otter")

    def test_pins_the_row_by_a_key(self):
        self.start()
        self.shows_titles(*BUILTINS)
        self.launcher.press("ctrl+End", "ctrl+d")
        self.becomes(self.launcher.pins, ["Calculator", "Task Manager", BUILTINS[-1]])

    def test_starts_the_row_that_the_keys_moved_to(self):
        for name in ("Recorder A", "Recorder B", "Recorder C"):
            self.home.add_recorder(name, file=name[-1])
        # "Recorded" matches until the last letter is searched for. Once it is gone, no later search
        # moves the selection back to the first row.
        self.home.add_entry("Recorded")
        self.start()
        self.launcher.type("recorder")
        self.shows_titles("Recorder A", "Recorder B", "Recorder C")
        self.becomes(self.launcher.current_row, 0)
        for keys, row in ((["Down"], 1), (["ctrl+n"], 2), (["Down"], 2), (["Up"], 1),
                          (["ctrl+p"], 0), (["Up"], 0), (["Down"], 1)):
            self.launcher.press(*keys)
            self.becomes(self.launcher.current_row, row)
        self.launcher.press("Return")
        self.is_recorded("B")

    def test_starts_the_row_at_a_double_click_and_not_at_a_single_one(self):
        self.home.add_recorder("Recorder")
        self.home.add_recorder("Recorder Two", file="two")
        self.start()
        self.launcher.type("recorder")
        self.shows_titles("Recorder", "Recorder Two")
        self.launcher.click_row("Recorder Two")
        self.becomes(self.launcher.current_row, 1)

        self.launcher.click_row("Recorder", times=2)
        self.is_recorded("recorder")
        self.hides()
        self.assertIsNone(self.home.recorded("two"))

    def test_starts_the_row_at_a_single_click_if_the_user_prefers_it(self):
        self.home.add_recorder("Recorder")
        self.home.set_preferences(appLaunchRequiresDoubleClick="false")
        self.start()
        self.launcher.type("recorder")
        self.shows_titles("Recorder")
        self.launcher.click_row("Recorder")
        self.is_recorded("recorder")
        self.hides()

    def test_starts_a_program_as_its_entry_says(self):
        folder = self.home.folder / "a folder"
        folder.mkdir()
        entry = self.home.add_recorder("Recorder", arguments='"two words" %c %k 100%% %U',
                                       Path=folder)
        self.start()
        self.launcher.type("recorder")
        self.shows_titles("Recorder")
        self.launcher.press("Return")
        record = self.is_recorded("recorder")
        self.assertEqual(record["arguments"], ["two words", "Recorder", str(entry), "100%"])
        self.assertEqual(record["folder"], str(folder))

    def test_starts_a_program_that_outlives_it_in_a_session_of_its_own(self):
        self.home.add_recorder("Recorder", arguments="--stay")
        self.start()
        self.launcher.type("recorder")
        self.shows_titles("Recorder")
        self.launcher.press("Return")
        record = self.is_recorded("recorder")
        self.assertNotEqual(record["session"], os.getsid(self.launcher.process.pid))

        os.killpg(self.launcher.process.pid, signal.SIGKILL)
        self.launcher.process.wait()
        os.kill(record["pid"], 0)

    def test_keeps_the_tokens_of_its_own_start_to_itself(self):
        self.home.add_recorder("Recorder")
        tokens = {"DESKTOP_STARTUP_ID": "own_TIME0", "XDG_ACTIVATION_TOKEN": "own",
                  "GIO_LAUNCHED_DESKTOP_FILE": "/own.desktop",
                  "GIO_LAUNCHED_DESKTOP_FILE_PID": "1"}
        self.launcher.environment |= tokens | {"VASKEL_TEST_KEPT": "kept"}
        self.start()
        for text, title, record in (("recorder", "Recorder", "recorder"),
                                    ("browser", "Browser", "browser")):
            with self.subTest(text):
                self.launcher.press("ctrl+a")
                self.launcher.type(text)
                self.shows_titles(title)
                self.launcher.press("Return")
                inherited = self.is_recorded(record)["environment"]
                self.assertEqual(inherited["VASKEL_TEST_KEPT"], "kept")
                for name, own in tokens.items():
                    self.assertNotEqual(inherited.get(name), own, name)
                self.start_again()

    def test_lists_a_program_that_can_be_started_among_entries_that_are_none(self):
        entries = self.home.applications
        self.home.add_entry("Good")
        self.home.add_entry("Hidden", Hidden="true")
        self.home.add_entry("Not displayed", NoDisplay="true")
        self.home.add_entry("Elsewhere", OnlyShowIn="Some-Other-Desktop;")
        self.home.add_entry("Missing", TryExec="/no/such/program")
        self.home.add_entry("Masked", Hidden="true", file="masked")
        self.home.add_entry("Masked", root=self.home.system / "applications", file="masked")
        (entries / "link.desktop").write_text("[Desktop Entry]\nType=Link\nName=Link\nURL=file:/\n")
        (entries / "nameless.desktop").write_text("[Desktop Entry]\nType=Application\nExec=true\n")
        (entries / "empty.desktop").touch()
        (entries / "noise.desktop").write_bytes(bytes(range(256)) * 40_000)
        (entries / "folder.desktop").mkdir()
        (entries / "dangling.desktop").symlink_to("nowhere.desktop")
        (entries / "one.desktop").symlink_to("other.desktop")
        (entries / "other.desktop").symlink_to("one.desktop")
        (entries / "circle").symlink_to(entries, target_is_directory=True)
        unreadable = self.home.add_entry("Unreadable")
        unreadable.chmod(0)
        self.start()

        # Root can read every file.
        others = ["Unreadable"] if os.access(unreadable, os.R_OK) else []
        self.shows_titles(*BUILTINS, "Good", *others)

    def test_lists_five_thousand_programs(self):
        for number in range(5000):
            self.home.add_entry(f"Program{number:04}")
        self.start()
        self.becomes(self.launcher.row_count, len(BUILTINS) + 5000)
        self.picture("all")

        self.launcher.type("program")
        self.becomes(self.launcher.row_count, 5000)
        self.launcher.type("4321")
        self.becomes(self.launcher.row_count, 1)
        self.launcher.empty_box()
        self.becomes(self.launcher.row_count, len(BUILTINS) + 5000)


class EmptyBox(EndToEndCase):
    def test_shows_the_pins_above_all_programs(self):
        self.home.add_entry("Good")
        self.start()
        self.becomes(self.launcher.pins, ["Calculator", "Task Manager"])
        self.shows_titles(*BUILTINS, "Good")

        self.launcher.type("goo")
        self.becomes(self.launcher.pins, [])
        self.shows_titles("Good")

        self.launcher.empty_box()
        self.becomes(self.launcher.pins, ["Calculator", "Task Manager"])
        self.shows_titles(*BUILTINS, "Good")
        self.picture("empty-again")

    def test_shows_the_pins_alone_if_the_user_prefers_it(self):
        self.home.set_preferences(showAllAppsWhenSearchEmpty="false")
        self.start()
        self.becomes(self.launcher.pins, ["Calculator", "Task Manager"])
        self.shows_titles()
        self.picture("small")
        small = self.launcher.geometry()[3]

        self.launcher.type("note")
        self.shows_titles("Notepad")
        wait_until(lambda: self.launcher.geometry()[3] > small, "the window makes room for the row")
        self.launcher.empty_box()
        wait_until(lambda: self.launcher.geometry()[3] == small, "the window is small again")


class Pins(EndToEndCase):
    def test_pins_a_row_starts_it_from_the_strip_and_unpins_it(self):
        self.home.add_recorder("Recorder")
        self.start()
        self.launcher.type("recorder")
        self.shows_titles("Recorder")
        self.launcher.click_row("Recorder", button=3)
        self.picture("menu")
        self.launcher.choose_from_menu()
        self.becomes(lambda: [pin["name"] for pin in self.home.pins()],
                     ["Calculator", "Task Manager", "Recorder"])

        self.launcher.empty_box()
        self.becomes(self.launcher.pins, ["Calculator", "Task Manager", "Recorder"])
        self.picture("pinned")
        self.launcher.click_pin("Recorder")
        self.is_recorded("recorder")
        self.hides()

        self.launcher.kill()
        self.start()
        self.becomes(self.launcher.pins, ["Calculator", "Task Manager", "Recorder"])
        self.launcher.click_pin("Recorder", button=3)
        self.launcher.choose_from_menu()
        self.becomes(self.launcher.pins, ["Calculator", "Task Manager"])


if __name__ == "__main__":
    main()
