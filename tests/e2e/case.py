# SPDX-License-Identifier: GPL-3.0-or-later
"""The base of the end-to-end tests. usage: tst_NAME.py PROGRAM PICTURE-FOLDER [unittest's own]

With VASKEL_WINE_PREFIX in the environment the program is a Windows one, which runs under wine.
"""

import os
import pathlib
import sys
import time
import unittest

from desktop import PATIENCE, Desktop, stop, wait_until
from launcher import Home, Launcher


class EndToEndCase(unittest.TestCase):
    """Each case has its own home; all cases of a file share one desktop."""

    system = None
    desktop = None
    program = None
    pictures = None

    def setUp(self):
        self.home = self.system.make_home(self.desktop)
        self.addCleanup(self.home.remove)
        self.addCleanup(self._check_sanitizers)
        self.launcher = self.system.make_launcher(self.desktop, self.program, self.home)
        self.addCleanup(self.launcher.stop)
        self.addCleanup(self._report_failure)

    def start(self):
        self.launcher.start()

    def picture(self, step):
        """Saves a picture of the screen at this step."""
        self.desktop.picture(self.pictures / f"{self._testMethodName}-{step}.png")

    def becomes(self, read, expected):
        """Waits until read() returns the expected value."""
        seen = None

        def is_as_expected():
            nonlocal seen
            seen = read()
            return seen == expected
        try:
            wait_until(is_as_expected, f"{read.__name__}() is as expected")
        except AssertionError as in_vain:
            self.assertEqual(seen, expected, in_vain)
            raise

    def hides(self):
        wait_until(lambda: not self.launcher.is_visible(), "the window is hidden")

    def start_again(self):
        """Starts the program a second time, which only shows the window of the first process."""
        before = self.launcher.processes()
        self.assertEqual(self.launcher.start_process().wait(PATIENCE), 0)
        self.launcher.wait_until_ready()
        self.assertEqual(len(before), 1)
        self.assertEqual(self.launcher.processes(), before)

    def open_another_window(self):
        """Opens a focused window of another program; returns it on Linux, and None under wine."""
        return self.system.open_another_window(self)

    def stays(self, probe, what, seconds):
        """Checks that probe() stays true, where a change could only come later."""
        deadline = time.monotonic() + seconds
        while time.monotonic() < deadline:
            seen = probe()
            self.assertTrue(seen, f"not for {seconds} s: {what}; last seen: {seen!r}")

    def shows_rows(self, *rows):
        self.becomes(self.launcher.rows, list(rows))

    def shows_titles(self, *titles):
        self.becomes(self.launcher.titles, list(titles))

    def is_recorded(self, file):
        return wait_until(lambda: self.home.recorded(file), f"the recorder {file!r} has run")

    def _check_sanitizers(self):
        """Fails if the program, which has ended, left a report of a sanitizer."""
        reports = sorted(sanitizer_reports(self.desktop).glob("*"))
        texts = [report.read_text(errors="replace") for report in reports]
        for report in reports:
            report.unlink()
        if texts:
            self.fail("\n".join(texts))

    def _report_failure(self):
        result = self._outcome.result
        if any(case is self for case, _ in result.failures + result.errors):
            self.picture("failed")
            print(self.launcher.messages(), file=sys.stderr)


def sanitizer_reports(desktop):
    return desktop.folder / "reports"


def sanitizer_options(desktop):
    """The variables for a program that is built with the sanitizers."""
    if "ASAN_OPTIONS" not in os.environ:
        return {}
    folder = sanitizer_reports(desktop)
    folder.mkdir(exist_ok=True)
    # Some cases preload a library, which then comes before the sanitizer's.
    options = f"{os.environ['ASAN_OPTIONS']}:verify_asan_link_order=0:log_path={folder}/report"
    return {"ASAN_OPTIONS": options,
            "LSAN_OPTIONS": os.environ.get("LSAN_OPTIONS", "")}


class Linux:
    """The system that the program runs on; wine.Windows is the other one."""

    screen = "1280x1024"

    def make_home(self, _):
        return Home()

    def make_launcher(self, desktop, program, home):
        return Launcher(desktop, program, home.environment() | sanitizer_options(desktop))

    def open_another_window(self, case):
        process, window = case.desktop.open_window()
        case.addCleanup(stop, process)
        return window


def system():
    if "VASKEL_WINE_PREFIX" in os.environ:
        from wine import Windows
        return Windows()
    return Linux()


class ForeignWindowManager:
    """What holds with every window manager; a second base of its end-to-end cases."""

    def test_hotkey_shows_and_hides_it(self):
        self.start()
        other = self.open_another_window()
        self.desktop.press("ctrl+alt+space")
        self.hides()
        wait_until(lambda: self.desktop.active_window() == other, "the other window is active")
        self.desktop.press("ctrl+alt+space", "a", "b")
        self.launcher.wait_until_ready()
        self.becomes(self.launcher.text, "ab")


def main(desktop=Desktop):
    """Runs the cases of the main module on this kind of desktop."""
    program, pictures = sys.argv[1:3]
    EndToEndCase.program = pathlib.Path(program).resolve()
    EndToEndCase.pictures = pathlib.Path(pictures).resolve()
    EndToEndCase.pictures.mkdir(parents=True, exist_ok=True)
    EndToEndCase.system = system()
    EndToEndCase.desktop = desktop(EndToEndCase.system.screen)
    try:
        unittest.main(module="__main__", argv=[sys.argv[0], "--verbose", *sys.argv[3:]])
    finally:
        EndToEndCase.desktop.close()
