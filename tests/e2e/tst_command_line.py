# SPDX-License-Identifier: GPL-3.0-or-later
import socket

from case import EndToEndCase, main
from desktop import PATIENCE, wait_until


class CommandLineCase(EndToEndCase):
    def answer(self, *options, **variables):
        """Runs the program where it cannot open a window; returns the status and its texts."""
        return self.launcher.order(*options, **self.launcher.nowhere, **variables)

    def order(self, *options):
        """Orders the running program, and only the running one."""
        before = self.launcher.processes()
        self.assertEqual(self.answer(*options), (0, "", ""))
        # One that quits may be gone already, or have a copy that looks for leaks.
        wait_until(lambda: set(self.launcher.processes()) <= set(before), "the order has ended")

    def comes_up(self):
        self.launcher.wait_until_ready()


class CommandLine(CommandLineCase):
    """What holds on both systems."""

    def test_shows_and_hides(self):
        self.start()
        self.order("--hide")
        self.hides()
        self.order("--show")
        self.comes_up()
        self.order("--show")
        self.order("--toggle")
        self.hides()
        self.order("--hide")
        self.order("--toggle")
        self.comes_up()

    def test_queries(self):
        self.start()
        self.launcher.type("earlier")
        self.order("--hide")
        self.hides()
        self.order("--query", "calc 1+2")
        self.comes_up()
        self.becomes(self.launcher.badge, "calc")
        self.becomes(self.launcher.text, "1+2")
        self.shows_titles("3")
        self.order("--query", "")
        self.order("--query", "set")
        self.becomes(self.launcher.badge, "set")
        self.shows_titles("Settings")
        self.order("--query", "计算器 --quit")
        self.becomes(self.launcher.text, "计算器 --quit")
        self.order("--query", "")
        self.becomes(self.launcher.text, "")
        self.assertIsNone(self.launcher.badge())
        self.launcher.type("note")
        self.becomes(self.launcher.text, "note")

    def test_quits(self):
        self.start()
        self.order("--quit")
        self.assertEqual(self.launcher.process.wait(PATIENCE), 0)
        for option in ("--quit", "--hide"):
            self.assertEqual(self.answer(option), (1, "", "Vaskel: Vaskel is not running.\n"))
            self.assertEqual(self.launcher.processes(), [])

    def test_starts_for_what_shows_the_window(self):
        for option in (["--show"], ["--toggle"], ["--query", "calc 2*3"]):
            with self.subTest(option[0]):
                self.launcher.start(*option)
                if option[0] == "--query":
                    self.becomes(self.launcher.badge, "calc")
                    self.shows_titles("6")
                self.order("--quit")
                self.assertEqual(self.launcher.process.wait(PATIENCE), 0)

    def test_tells_of_errors(self):
        status, output, errors = self.answer("--frob")
        self.assertEqual((status, output), (2, ""))
        self.assertIn("Unknown option: --frob", errors)
        status, output, errors = self.answer("--version")
        self.assertEqual((status, errors), (0, ""))
        self.assertRegex(output, r"^Vaskel \d+\.\d+\.\d+\n$")
        status, output, errors = self.answer("--help")
        self.assertEqual((status, errors), (0, ""))
        self.assertIn("Usage: Vaskel [--toggle", output)

    def test_knows_the_options_of_qt(self):
        self.launcher.start("-style", "fusion", "--query", "-platform", "-name", "--quit")
        self.becomes(self.launcher.text, "-platform")


class OnLinux(CommandLineCase):
    def test_brings_the_window_to_the_front(self):
        self.start()
        for option in ("--show", "--query"):
            other = self.open_another_window()
            self.assertEqual(self.desktop.active_window(), other)
            self.order(option, *(["x"] if option == "--query" else []))
            self.comes_up()
            self.assertEqual(self.launcher.top_window(), self.launcher.window)

    def test_answers_in_chinese(self):
        self.assertIn("用法：Vaskel [--toggle", self.answer("--help", LANG="zh_CN.UTF-8")[1])


class ForeignMessages(EndToEndCase):
    def test_ignores_other_messages(self):
        self.start()
        channel = next((self.home.folder / "runtime").glob("SingleApplication-*.socket"))
        for message in (b"restart", b"query", b"show\n", b"hide " + bytes(20_000), b"query \xff"):
            with socket.socket(socket.AF_UNIX) as connection:
                connection.connect(str(channel))
                connection.sendall(message)
        wait_until(lambda: self.launcher.messages().count("Ignored a message") == 4,
                   "the messages are refused")
        wait_until(lambda: "a message that is too long" in self.launcher.messages(),
                   "the long message is refused")
        self.assertTrue(self.launcher.is_visible())
        self.assertEqual(self.launcher.text(), "")


if __name__ == "__main__":
    main()
