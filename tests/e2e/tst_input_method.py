# SPDX-License-Identifier: GPL-3.0-or-later
import os

from gi.repository import Atspi

from case import EndToEndCase, main
from desktop import start_tied, stop, wait_until
from launcher import BUILTINS, find

PROFILE = """[Groups/0]
Name=Default
Default Layout=us
DefaultIM=pinyin

[Groups/0/Items/0]
Name=keyboard-us
Layout=

[Groups/0/Items/1]
Name=pinyin
Layout=

[GroupOrder]
0=Default
"""


class Pinyin(EndToEndCase):
    """The window with fcitx, whose pinyin is on from the start."""

    def setUp(self):
        super().setUp()
        folder = self.home.configuration / "fcitx5"
        folder.mkdir()
        (folder / "profile").write_text(PROFILE)
        (folder / "config").write_text("[Behavior]\nActiveByDefault=True\n"
                                       "ShowInputMethodInformation=False\n"
                                       "showInputMethodInformationWhenFocusIn=False\n")
        environment = os.environ | self.desktop.environment() | self.home.environment()
        environment.pop("XDG_DATA_DIRS")  # those of fcitx are the system's
        log = open(self.home.folder / "fcitx.log", "w")
        self.addCleanup(log.close)
        self.fcitx = start_tied(["fcitx5", "--disable=notificationitem,notifications,kimpanel"],
                                env=environment, stdout=log, stderr=log)
        self.addCleanup(stop, self.fcitx)
        wait_until(self.is_on_the_bus, "the input method runs")
        self.launcher.environment["QT_IM_MODULE"] = "fcitx"
        self.addCleanup(self.end_program)

    def is_on_the_bus(self):
        # Any other question to fcitx would make the bus start one of its own.
        answer = self.desktop.run("dbus-send", "--print-reply", "--dest=org.freedesktop.DBus", "/",
                                  "org.freedesktop.DBus.NameHasOwner", "string:org.fcitx.Fcitx5")
        return "boolean true" in answer

    def end_program(self):
        """Ends the program before the input method, which it might start again."""
        if self.launcher.process:
            self.launcher.terminate()

    def start(self):
        super().start()
        wait_until(lambda: self.desktop.run("fcitx5-remote", "-n") == "pinyin",
                   "the window uses pinyin")

    def candidates(self):
        """The window with the candidates, or None."""
        windows = self.desktop.windows_of(self.fcitx.pid)
        return windows[0] if windows else None

    def compose(self, text):
        self.launcher.type(text)
        wait_until(self.candidates, "the candidates show")

    def has_composed(self, text):
        wait_until(lambda: self.candidates() is None, "the candidates hide")
        self.becomes(self.launcher.text, text)


class Keys(Pinyin):
    def test_enter_commits_the_letters_and_launches_nothing(self):
        self.start()
        self.compose("nihao")
        self.launcher.press("Return")
        self.has_composed("nihao")
        self.assertTrue(self.launcher.is_visible())
        self.shows_titles('Search "nihao"')
        self.launcher.press("Return")
        self.hides()
        self.assertIn("nihao", " ".join(self.is_recorded("browser")["arguments"]))

    def test_arrows_move_through_the_candidates_alone(self):
        self.start()
        self.shows_titles(*BUILTINS)
        self.compose("nihao")
        self.launcher.press("Down", "Down", "Up", "Next", "Tab")
        self.launcher.press("Escape")
        self.has_composed("")
        self.assertEqual(self.launcher.current_row(), 0)
        self.assertTrue(self.launcher.is_visible())
        self.launcher.press("Down")
        self.becomes(self.launcher.current_row, 1)
        self.launcher.press("Escape")
        self.hides()

    def test_space_takes_a_candidate_which_finds_a_program(self):
        self.home.add_recorder("画图程序", file="paint")
        self.start()
        self.compose("huatu")
        self.picture("candidates")
        self.launcher.press("space")
        self.has_composed("画图")
        self.shows_titles("画图程序")
        self.launcher.press("Return")
        self.hides()
        self.is_recorded("paint")


class AfterTheHotkey(Pinyin):
    def test_letters_typed_right_after_the_hotkey_are_composed(self):
        self.start()
        self.launcher.press("Escape")
        self.hides()
        self.open_another_window()
        for _ in range(5):
            self.desktop.press_quickly("ctrl+alt+space", *"nihao")
            wait_until(self.candidates, "the candidates show")
            self.launcher.press("Return")
            self.has_composed("nihao")
            self.launcher.empty_box()
            self.launcher.press("Escape")
            self.hides()


class Candidates(Pinyin):
    """Where the candidates show: below the cursor, in pixels of the screen."""

    def scale(self):
        return float(self.launcher.environment.get("QT_SCALE_FACTOR", 1))

    def cursor(self):
        """x of the cursor at the end of the text, and the top and the bottom of the box."""
        edit = find(self.launcher.application(), Atspi.Role.TEXT)[0]
        scale = self.scale()
        box = edit.get_extents(Atspi.CoordType.SCREEN)
        count = Atspi.Text.get_character_count(edit)
        if count:
            letter = Atspi.Text.get_character_extents(edit, count - 1, Atspi.CoordType.SCREEN)
            x = letter.x + letter.width
        else:
            x = box.x
        return x * scale, box.y * scale, (box.y + box.height) * scale

    def show_at_the_cursor(self, step):
        expected, top, bottom = self.cursor()
        self.compose("nihao")
        self.picture(step)
        padding = 12 * self.scale()  # of the box, and the frame of the candidates

        def are_at_the_cursor():
            x, y, _, _ = self.desktop.geometry(self.candidates())
            return abs(x - expected) < padding and top < y < bottom + padding
        self.becomes(are_at_the_cursor, True)
        self.launcher.press("Escape")
        wait_until(lambda: self.candidates() is None, "the candidates hide")

    def check(self):
        self.start()
        self.show_at_the_cursor("empty")
        self.launcher.paste("calc ")
        wait_until(lambda: self.launcher.badge() == "calc", "the badge shows")
        self.show_at_the_cursor("badge")
        self.launcher.paste("12345678901234567890")
        wait_until(lambda: len(self.launcher.text()) == 20, "the arguments are there")
        self.show_at_the_cursor("arguments")

    def test_at_the_cursor(self):
        self.check()

    def test_at_the_cursor_with_factor_two(self):
        self.launcher.environment["QT_SCALE_FACTOR"] = "2"
        self.check()


if __name__ == "__main__":
    main()
