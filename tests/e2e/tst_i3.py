# SPDX-License-Identifier: GPL-3.0-or-later
from case import EndToEndCase, ForeignWindowManager, main
from desktop import Desktop

CONFIGURATION = """# i3 config file (v4)
font pango:DejaVu Sans 10
"""


class I3(Desktop):
    """A window manager that tiles the windows."""

    def _start_window_manager(self):
        configuration = self.folder / "i3"
        configuration.write_text(CONFIGURATION)
        self.window_manager = ["i3", "-c", str(configuration)]
        super()._start_window_manager()


class Tiling(ForeignWindowManager, EndToEndCase):
    def test_window_floats_at_its_place(self):
        self.start()
        x, y, width, _ = self.launcher.geometry()
        self.assertEqual(width, 760)
        # The frame moves it a little.
        self.assertLess(abs(x - (1280 - 760) // 2), 10)
        self.assertLess(abs(y - 1024 // 5), 40)
        self.open_another_window()
        self.becomes(lambda: self.launcher.geometry()[:3], (x, y, width))
        self.launcher.order("--hide")
        self.hides()
        self.launcher.order("--show")
        self.launcher.wait_until_ready()
        self.becomes(lambda: self.launcher.geometry()[:3], (x, y, width))
        self.launcher.type("note")
        self.shows_titles("Notepad")
        self.picture("floats")

    def test_icon_keeps_its_size_and_its_place(self):
        self.home.set_preferences(floatIconX=300, floatIconY=80)
        self.start()
        self.becomes(self.launcher.float_icon, (300, 80, 48, 48))
        self.open_another_window()
        self.becomes(self.launcher.float_icon, (300, 80, 48, 48))
        self.picture("icon")
        self.launcher.order("--hide")
        self.hides()
        self.desktop.click(324, 104)
        self.launcher.wait_until_ready()
        self.desktop.click(324, 104)
        self.hides()

    def test_comes_to_the_front(self):
        self.start()
        for option in ([], ["--show"]):
            other = self.open_another_window()
            self.assertEqual(self.desktop.active_window(), other)
            self.assertEqual(self.launcher.order(*option)[0], 0)
            self.launcher.wait_until_ready()
        self.launcher.type("x")
        self.becomes(self.launcher.text, "x")


if __name__ == "__main__":
    main(I3)
