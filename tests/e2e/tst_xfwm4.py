# SPDX-License-Identifier: GPL-3.0-or-later
from case import EndToEndCase, main
from desktop import Desktop, wait_until


class Xfwm4(Desktop):
    """The window manager of Xfce, with its rules against stealing the focus."""

    window_manager = ["xfwm4", "--compositor=off"]


class Focus(EndToEndCase):
    def test_comes_to_the_front(self):
        self.start()
        for option in ([], ["--show"], ["--query", "y"]):
            other = self.open_another_window()
            self.desktop.type("typing")
            self.assertEqual(self.desktop.active_window(), other)
            self.assertEqual(self.launcher.order(*option)[0], 0)
            self.launcher.wait_until_ready()
            self.assertEqual(self.launcher.top_window(), self.launcher.window)
        self.launcher.type("x")
        self.becomes(self.launcher.text, "yx")
        self.picture("front")

    def test_hotkey_shows_and_hides_it(self):
        self.start()
        other = self.open_another_window()
        self.desktop.press("ctrl+alt+space")
        self.hides()
        wait_until(lambda: self.desktop.active_window() == other, "the other window is active")
        self.desktop.press("ctrl+alt+space", "a", "b")
        self.launcher.wait_until_ready()
        self.becomes(self.launcher.text, "ab")


if __name__ == "__main__":
    main(Xfwm4)
