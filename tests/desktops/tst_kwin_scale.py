# SPDX-License-Identifier: GPL-3.0-or-later
"""The window on a screen of KWin with scale 2, where X11 programs scale themselves.

usage: tst_kwin_scale.py PROGRAM PICTURE-FOLDER [unittest's own]
"""

from kwin import KWin

from case import EndToEndCase, main
from tst_scale import edges


class KWinAtScaleTwo(KWin):
    scale = 2

    def _start_compositor(self, width, height):
        # What KDE writes for "Apply scaling themselves".
        configuration = self.folder / "home/.config"
        configuration.mkdir()
        (configuration / "kwinrc").write_text("[Xwayland]\nScale=2\n")
        super()._start_compositor(width, height)


class AtScaleTwo(EndToEndCase):
    def test_is_sharp(self):
        self.assertEqual(self.desktop.run("xdotool", "getdisplaygeometry").split(), ["2560", "2048"])
        # KDE sets this resource from the scale of the screen.
        self.desktop.run("xprop", "-root", "-f", "RESOURCE_MANAGER", "8s", "-set",
                         "RESOURCE_MANAGER", "Xft.dpi:\t192\n")
        self.start()
        self.assertEqual(self.launcher.geometry()[2], 2 * 760)
        self.assertEqual(self.launcher.float_icon()[2:], (2 * 48, 2 * 48))
        self.launcher.type("note")
        self.shows_titles("Notepad")
        size = (1000, 140)  # the box, at the left
        pixels = self.desktop.pixels(40, 80, *size, window=self.launcher.window)
        self.assertGreater(edges(pixels, size[0]), 100)


if __name__ == "__main__":
    main(KWinAtScaleTwo)
