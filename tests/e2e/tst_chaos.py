# SPDX-License-Identifier: GPL-3.0-or-later
"""What the program does when the machine fails it: it starts, or ends with one clear line, loses
nothing that was saved, and works again when the cause is gone."""

import datetime
import json
import os
import pathlib
import shutil
import signal
import subprocess

from case import EndToEndCase, main
from desktop import MAXIMUM_PROCESSES, PATIENCE, first_line, start_tied, stop, wait_until

FULL_DISK = os.environ["VASKEL_FULL_DISK"]
FAKETIME = next(map(str, pathlib.Path("/usr/lib").glob("*/faketime/libfaketime.so.1")))
# Root may write everywhere unless it lacks these. It may still read everything: the program may be in
# a folder of another user.
RIGHTS = "-dac_override,-fowner"
ENTRIES = 10_000
LARGE = 100 << 20  # bytes
DAYS = 366

MISSING_DISPLAY = f":{MAXIMUM_PROCESSES}"  # the number of a desktop is a process ID
NO_DISPLAY = "Vaskel: There is no display to show a window on.\n"
STOPPED = "SingleApplication: the running instance is stopped, and answers when it continues"

SAVED_TASK = {"id": "saved", "title": "saved", "parentId": "", "createdTime": "2026-01-02T03:04:05"}
SAVED_PREFERENCES = {"theme": "dark", "showFloatIcon": "false", "globalHotkey": "Ctrl+Alt+K"}


class ChaosCase(EndToEndCase):
    """The user has saved a task, a pin and preferences before."""

    def setUp(self):
        super().setUp()
        self.data = self.home.data / "Vaskel"
        self.data.mkdir(mode=0o700)
        self.entry = self.home.add_recorder("Zebra")
        (self.data / "pins.json").write_text(
            json.dumps([{"name": "Zebra", "path": str(self.entry), "iconPath": ""}]))
        (self.data / "todo.json").write_text(json.dumps([SAVED_TASK]))
        self.home.set_preferences(SAVED_PREFERENCES)

    # What holds in each case

    def works(self):
        """Searches and starts a program."""
        (self.home.records / "zebra").unlink(missing_ok=True)
        self.show()
        self.launcher.type("zebra")
        self.finds_zebra()
        self.launcher.press("Return")
        self.is_recorded("zebra")
        wait_until(lambda: not self.launcher.is_visible(), "the window is hidden")

    def finds_zebra(self):
        self.shows_titles("Zebra")

    def show(self):
        if not self.launcher.is_visible():
            self.launcher.order("--show")
            wait_until(self.launcher.is_visible, "the window shows")
        wait_until(lambda: self.desktop.active_window() == self.launcher.window,
                   "the window is active")
        # The second BackSpace turns a badge into text.
        self.launcher.press("End", "shift+Home", "BackSpace", "BackSpace", "shift+Home", "BackSpace")

    def add_task(self, title):
        self.show()
        self.launcher.type(f"todo {title}")
        self.launcher.press("ctrl+Return")

    def titles_of_tasks(self):
        return sorted(task["title"] for task in json.loads((self.data / "todo.json").read_text()))

    def keeps_saved(self, *tasks):
        """All that was saved is still there, with these new tasks."""
        self.becomes(self.titles_of_tasks, sorted(["saved", *tasks]))
        self.assertEqual([(pin["name"], pin["path"]) for pin in self.home.pins()],
                         [("Zebra", str(self.entry))])
        preferences = self.home.preferences()
        self.assertEqual({key: preferences.get(key) for key in SAVED_PREFERENCES},
                         SAVED_PREFERENCES)

    def works_again(self, *tasks):
        """A new start without the cause."""
        self.launcher.terminate()
        self.start()
        self.works()
        self.add_task("after")
        self.keeps_saved("after", *tasks)

    def lines(self, text):
        return [line for line in self.launcher.messages().splitlines() if text in line]


class FullHome(ChaosCase):
    def setUp(self):
        super().setUp()
        # Outside the folder that is full.
        self.flag = pathlib.Path(f"{self.home.folder}-is-full")
        self.addCleanup(self.flag.unlink, missing_ok=True)
        self.launcher.environment |= {"LD_PRELOAD": FULL_DISK, "FULL_DISK_FLAG": str(self.flag),
                                      "FULL_DISK_FOLDER": str(self.home.folder)}

    def fill(self):
        self.flag.touch()
        path = self.home.folder / "text"
        tried = subprocess.run(["sh", "-c", f"echo text >{path}"], env=self.launcher.environment,
                               check=False, stderr=subprocess.DEVNULL)
        self.assertNotEqual(tried.returncode, 0, "the disk is not full")
        self.assertEqual(path.stat().st_size, 0)
        path.unlink()

    def test_while_it_runs(self):
        self.start()
        self.works()
        self.fill()
        self.add_task("while full")
        wait_until(lambda: self.lines("Cannot write task storage"), "the failure is in the log")
        self.launcher.order("--query", "zebra")
        self.shows_titles("Zebra")
        self.launcher.press("ctrl+d")
        wait_until(lambda: self.lines("Cannot write the pins"), "the failure is in the log")
        self.keeps_saved()

        # What the disk refused is saved with the next change.
        self.flag.unlink()
        self.launcher.press("ctrl+d")
        self.add_task("again")
        self.keeps_saved("while full", "again")
        self.works_again("while full", "again")

    def test_settings_page_tells_it(self):
        self.start()
        self.launcher.open_page("user", "Save")
        self.fill()
        self.save()
        # The Tab key shows that Save has been handled.
        self.launcher.tab_to("Require double-click to launch apps")
        self.assertNotIn("The settings cannot be saved.", self.names())
        self.launcher.press("space")
        self.save()
        wait_until(lambda: "The settings cannot be saved." in self.names(), "the page tells it")
        self.picture("unsaved")
        self.flag.unlink()
        self.save()
        self.becomes(lambda: self.home.preferences().get("appLaunchRequiresDoubleClick"), "false")
        wait_until(lambda: "The settings cannot be saved." not in self.names(), "it is saved")

    def save(self):
        self.launcher.tab_to("Save")
        self.launcher.press("space")

    def names(self):
        return [found.get_name() for found in self.launcher.everything()]

    def test_at_the_start(self):
        self.fill()
        self.start()
        self.launcher.order("--query", "zebra")
        self.shows_titles("Zebra")
        self.keeps_saved()
        self.flag.unlink()
        self.works_again()


class ReadOnlyHome(ChaosCase):
    def setUp(self):
        super().setUp()
        self.addCleanup(self.set_writable, True)

    def set_writable(self, is_writable):
        for folder, _, files in os.walk(self.home.folder):
            if pathlib.Path(folder) not in (self.home.records, self.home.folder / "runtime"):
                for path in (folder, *(os.path.join(folder, file) for file in files)):
                    mode = os.stat(path).st_mode
                    os.chmod(path, mode | 0o200 if is_writable else mode & ~0o222)

    def test_starts_and_saves_nothing(self):
        if os.geteuid() == 0:
            self.launcher.prefix = ["setpriv", "--bounding-set", RIGHTS]
        self.set_writable(False)
        self.start()
        self.works()
        self.add_task("lost")
        wait_until(lambda: self.lines("Cannot write task storage"), "the failure is in the log")
        self.keeps_saved()

        self.set_writable(True)
        self.add_task("again")
        self.keeps_saved("lost", "again")
        self.works_again("lost", "again")


class TemporaryFolder(ChaosCase):
    def setUp(self):
        super().setUp()
        self.folder = self.home.folder / "tmp"

    def test_missing(self):
        shutil.rmtree(self.folder)
        self.start()
        self.works()
        self.add_task("new")
        self.keeps_saved("new")
        self.assertFalse(self.folder.exists())
        self.works_again("new")


class Session(ChaosCase):
    def test_bus_missing(self):
        # Without the bus nothing reads the window, so its effects are checked.
        self.launcher.environment["DBUS_SESSION_BUS_ADDRESS"] = \
            f"unix:path={self.home.folder / 'missing'}"
        process = self.launcher.start_process()
        self.launcher.process = process
        self.launcher.window = wait_until(lambda: next(iter(self.launcher.windows()), None),
                                          "the window shows")
        full = wait_until(lambda: self.launcher.geometry()[3], "the window has a height")
        self.finds_zebra = lambda: wait_until(lambda: self.launcher.geometry()[3] < full,
                                              "there are fewer rows")
        self.works()
        self.add_task("new")
        self.keeps_saved("new")
        self.launcher.environment["DBUS_SESSION_BUS_ADDRESS"] = self.desktop.bus
        del self.finds_zebra
        self.works_again("new")

    def test_display_gone_while_it_runs(self):
        reader, writer = os.pipe()
        server = start_tied(["Xvfb", "-displayfd", str(writer), "-screen", "0", "640x480x24",
                             "-noreset", "-nolisten", "tcp"], pass_fds=[writer],
                            stderr=subprocess.DEVNULL)
        self.addCleanup(stop, server)
        os.close(writer)
        with os.fdopen(reader) as pipe:
            display = f":{first_line(pipe)}"
        self.assertNotEqual(display, ":", f"Xvfb did not start within {PATIENCE} s")
        process = self.launcher.start_process(DISPLAY=display)
        self.addCleanup(stop, process)
        wait_until(lambda: self.lines("Plugin registered: \"todo\""), "the program runs")
        self.launcher.order("--query", "x", DISPLAY=display)
        server.kill()
        self.assertEqual(process.wait(PATIENCE), 1)
        self.assertEqual(len(self.lines("The X11 connection broke")), 1, self.launcher.messages())
        self.keeps_saved()
        self.start()
        self.works()

    def test_display_missing_at_the_start(self):
        for arguments in ([], ["--show"]):
            with self.subTest(arguments):
                status, _, errors = self.launcher.order(*arguments, DISPLAY=MISSING_DISPLAY)
                self.assertEqual((status, errors), (1, NO_DISPLAY))
        self.keeps_saved()
        self.start()
        self.works()

    def test_platform_plugin_missing_at_the_start(self):
        for plugins in ("nothing", "nothing;xcb"):
            with self.subTest(plugins):
                status, _, errors = self.launcher.order(QT_QPA_PLATFORM=plugins,
                                                        DISPLAY=MISSING_DISPLAY)
                self.assertEqual(status, 1)
                first, *said = errors.splitlines()
                self.assertEqual(first, "Vaskel: The start failed. Qt says:")
                self.assertIn('Could not find the Qt platform plugin "nothing"', errors)
                self.assertIn("no Qt platform plugin could be initialized", errors)
                log = next(self.data.glob("Vaskel_*.log")).read_text()
                self.assertIn(first.removeprefix("Vaskel: "), log)
                for line in said:
                    self.assertIn(line, log)
        self.keeps_saved()


class SingleInstance(ChaosCase):
    def test_first_instance_stopped(self):
        self.start()
        self.launcher.press("Escape")
        self.hides()
        os.kill(self.launcher.process.pid, signal.SIGSTOP)
        self.addCleanup(self.launcher.process.send_signal, signal.SIGCONT)
        self.assertEqual(self.launcher.order("--show"), (0, "", f"{STOPPED}\n"))
        status, output, errors = self.launcher.order()
        self.assertEqual((status, errors), (0, ""))
        self.assertTrue(output.endswith(f"{STOPPED}\n"), output)
        self.keeps_saved()
        os.kill(self.launcher.process.pid, signal.SIGCONT)
        wait_until(self.launcher.is_visible, "the window shows")
        self.works()
        self.works_again()

    def test_temporary_folder_replaced(self):
        folder = self.home.folder / "tmp"
        self.start()
        self.works()
        shutil.rmtree(folder)
        folder.write_text("a file")
        self.works()
        self.add_task("new")
        self.keeps_saved("new")
        folder.unlink()
        folder.mkdir()
        self.works_again("new")


class IconTheme(ChaosCase):
    def test_missing(self):
        (self.home.system / "icons").unlink()
        self.start()
        self.works()
        self.launcher.order("--query", "zebra")
        self.shows_titles("Zebra")
        self.picture("rows")
        self.keeps_saved()
        (self.home.system / "icons").symlink_to("/usr/share/icons")
        self.works_again()


class Clock(ChaosCase):
    def setUp(self):
        super().setUp()
        self.clock = self.home.folder / "clock"
        self.set_clock("+0")
        self.launcher.environment |= {
            "LD_PRELOAD": FAKETIME, "FAKETIME_TIMESTAMP_FILE": str(self.clock),
            "FAKETIME_NO_CACHE": "1", "FAKETIME_DONT_FAKE_MONOTONIC": "1"}

    def set_clock(self, offset):
        part = self.home.folder / "clock.part"
        part.write_text(f"{offset}\n")
        part.rename(self.clock)

    def log(self, days):
        day = datetime.datetime.now() + datetime.timedelta(days)
        return self.data / f"Vaskel_{day:%Y-%m-%d}.log"

    def test_set_back_while_it_runs(self):
        self.start()
        self.works()
        log = next(self.data.glob("Vaskel_*.log"))
        self.set_clock(f"-{DAYS}d")
        self.works()
        self.add_task("a year ago")
        self.keeps_saved("a year ago")
        self.set_clock("+0")
        self.add_task("now")
        self.keeps_saved("a year ago", "now")
        self.assertTrue(log.exists())
        self.works_again("a year ago", "now")

    def test_set_back_at_the_start(self):
        self.start()
        self.add_task("now")
        self.keeps_saved("now")
        log = next(self.data.glob("Vaskel_*.log"))
        self.launcher.terminate()
        self.set_clock(f"-{DAYS}d")
        self.start()
        self.works()
        self.add_task("a year ago")
        self.keeps_saved("now", "a year ago")
        self.assertTrue(log.exists())
        self.set_clock("+0")
        self.works_again("now", "a year ago")


class Locale(ChaosCase):
    def calculates(self):
        self.show()
        self.launcher.type("calc 1/2+1000.25")
        self.shows_titles("1000.75")
        self.launcher.press("Return")
        wait_until(lambda: self.desktop.clipboard() == "1000.75", "the result is copied")

    def test_c(self):
        self.launcher.environment["LANG"] = "C"
        self.start()
        self.calculates()
        self.works()
        self.launcher.environment["LANG"] = "C.UTF-8"
        self.works_again()

    def test_comma_as_the_decimal_sign(self):
        folder = self.home.folder / "locales"
        folder.mkdir()
        subprocess.run(["localedef", "-i", "de_DE", "-f", "UTF-8", folder / "de_DE.UTF-8"], check=True)
        self.launcher.environment |= {"LC_ALL": "de_DE.UTF-8", "LOCPATH": str(folder)}
        printed = subprocess.run(["bash", "-c", "printf %.1f 0,5"], check=True, text=True,
                                 env=self.launcher.environment, stdout=subprocess.PIPE).stdout
        self.assertEqual(printed, "0,5")
        self.start()
        self.calculates()
        self.works()
        self.works_again()


class Entries(ChaosCase):
    def setUp(self):
        super().setUp()
        # Reading ten thousand rows would take longer than all else.
        self.home.set_preferences(SAVED_PREFERENCES | {"showAllAppsWhenSearchEmpty": "false"})

    def test_ten_thousand_and_a_huge_one(self):
        for number in range(ENTRIES):
            self.home.add_entry(f"Entry{number}")
        huge = self.home.add_entry("Huge")
        with open(huge, "a") as file:
            file.truncate(LARGE)
        self.start()
        self.works()
        for query, title in ((f"entry{ENTRIES - 1}", f"Entry{ENTRIES - 1}"),
                             ("huge", 'Search "huge"')):
            self.launcher.order("--query", query)
            self.shows_titles(title)
        self.keeps_saved()
        for path in self.home.applications.glob("Entry*.desktop"):
            path.unlink()
        huge.unlink()
        self.works_again()


if __name__ == "__main__":
    main()
