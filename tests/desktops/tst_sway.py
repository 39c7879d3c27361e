# SPDX-License-Identifier: GPL-3.0-or-later
"""The window and the icon on a compositor that tiles windows and places them itself.

usage: tst_sway.py PROGRAM PICTURE-FOLDER [unittest's own]
"""

from wayland import ForeignCompositor

from case import EndToEndCase, main
from desktop import PATIENCE, stop, wait_until
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
            self.is_centred()
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

    def test_is_enlarged_at_scale_two(self):
        self.desktop.set_screen(*(2 * size for size in SIZE), 2)
        self.addCleanup(self.desktop.set_screen, *SIZE, 1)
        self.home.set_preferences(floatIconX=300, floatIconY=80, theme="dark")
        self.start()
        self.is_centred()
        self.becomes(self.launcher.float_icon, (300, 80, 48, 48))
        self.becomes(lambda: self.desktop.pixel(310, 104), ACCENT)
        self.picture("enlarged")

    def test_native_client_shows_no_icon_that_it_cannot_place(self):
        self.launcher.process = self.launcher.start_process(QT_QPA_PLATFORM="wayland")
        wait_until(self.windows, "the window shows")
        self.stays(lambda: self.windows() == ["Vaskel"], "there is no other window", 1)
        self.picture("native")
        self.assertEqual(self.launcher.order("--quit")[0], 0)
        self.assertEqual(self.launcher.process.wait(PATIENCE), 0)

    def is_centred(self):
        def width_and_twice_the_centre():
            x, y, width, height = self.launcher.geometry()
            return width, (2 * x + width, 2 * y + height)

        # sway activates a window first, and moves it once all other windows have their new sizes.
        self.becomes(width_and_twice_the_centre, (760, SIZE))

    def windows(self):
        return self.desktop.native_windows(self.launcher.process.pid)


if __name__ == "__main__":
    main(Sway)
