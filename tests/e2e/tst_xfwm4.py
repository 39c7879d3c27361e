# SPDX-License-Identifier: GPL-3.0-or-later
from case import EndToEndCase, ForeignWindowManager, main
from desktop import Desktop


class Xfwm4(Desktop):
    """The window manager of Xfce, with its rules against stealing the focus."""

    window_manager = ["xfwm4", "--compositor=off"]


class Focus(ForeignWindowManager, EndToEndCase):
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

    def test_icon_stays_above_others(self):
        self.home.set_preferences(floatIconX=300, floatIconY=80)
        self.start()
        self.becomes(self.launcher.float_icon, (300, 80, 48, 48))
        self.open_another_window()
        for _ in range(2):
            self.launcher.order("--hide")
            self.hides()
            self.desktop.click(324, 104)
            self.launcher.wait_until_ready()
        self.picture("icon")


if __name__ == "__main__":
    main(Xfwm4)
