# SPDX-License-Identifier: GPL-3.0-or-later
"""The window and the icon on a compositor that tiles windows and places them itself.

usage: tst_sway.py PROGRAM PICTURE-FOLDER [unittest's own]
"""

from wayland import ForeignCompositor

from case import EndToEndCase, main
from desktop import stop
from sway import Sway

SIZE = (1280, 1024)
ACCENT = "#0a84ff"


class OnSway(ForeignCompositor, EndToEndCase):
    def test_window_floats(self):
        self.start()
        self.addCleanup(stop, self.desktop.open_terminal())
        for _ in range(2):
            self.launcher.order("--hide")
            self.hides()
            self.launcher.order("--show")
            self.launcher.wait_until_ready()
            self.assertEqual(self.desktop.floating_windows(), [self.launcher.window])
            x, y, width, height = self.launcher.geometry()
            self.assertEqual(width, 760)
            self.assertEqual((2 * x + width, 2 * y + height), SIZE)
        self.launcher.order("--query", "note")
        self.shows_titles("Notepad")
        self.picture("floats")

    def test_icon_keeps_its_size_and_its_place(self):
        self.home.set_preferences(floatIconX=300, floatIconY=80, theme="dark")
        self.start()
        for _ in range(2):
            self.becomes(self.launcher.float_icon, (300, 80, 48, 48))
            # On the disc, beside its letter.
            self.becomes(lambda: self.desktop.pixel(310, 104), ACCENT)
            self.assertEqual(self.desktop.floating_windows(), [self.launcher.window])
            self.addCleanup(stop, self.desktop.open_terminal())
        self.picture("icon")


if __name__ == "__main__":
    main(Sway)
