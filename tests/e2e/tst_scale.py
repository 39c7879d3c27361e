# SPDX-License-Identifier: GPL-3.0-or-later
from case import EndToEndCase, main
from desktop import Desktop
from monitors import Monitors


class LargeDesktop(Desktop):
    def __init__(self, _):
        super().__init__("2560x2048")


def edges(pixels, width):
    """How many squares of 2x2 pixels have more than one colour, for squares that begin at even
    coordinates. There are none in a picture that was drawn at scale 1 and enlarged."""
    colours = [pixels[i:i + 3] for i in range(0, len(pixels), 3)]
    return sum(len({colours[i], colours[i + 1], colours[i + width], colours[i + width + 1]}) > 1
               for row in range(0, len(colours), 2 * width) for i in range(row, row + width, 2))


class ScaleTwo(EndToEndCase):
    def is_sharp(self):
        """The window and the icon have twice the usual size, and the text its own pixels."""
        x, y, width, _ = self.launcher.geometry()
        self.assertEqual(width, 2 * 760)
        self.assertEqual(self.launcher.float_icon()[2:], (2 * 48, 2 * 48))
        self.launcher.type("note")
        self.shows_titles("Notepad")
        size = (1000, 140)  # the box, at the left
        self.assertGreater(edges(self.desktop.pixels(x + 40, y + 80, *size), size[0]), 100)

    def set_resources(self, resources):
        self.desktop.run("xprop", "-root", "-f", "RESOURCE_MANAGER", "8s", "-set",
                         "RESOURCE_MANAGER", resources)

    def test_by_the_resolution_of_fonts(self):
        self.set_resources("Xft.dpi:\t192\n")
        self.addCleanup(self.set_resources, "")
        self.start()
        self.is_sharp()
        self.picture("resources")

    def test_by_the_factor_of_the_screen(self):
        monitors = Monitors(self.desktop.display)
        self.addCleanup(monitors.close)
        monitors.add("left", 0, 0, 960, 2048)
        monitors.add("right", 960, 0, 1600, 2048)
        self.launcher.environment["QT_SCREEN_SCALE_FACTORS"] = "1;2"
        self.home.set_preferences(floatIconX=1000, floatIconY=900)
        self.desktop.move_pointer(2000, 1000)
        self.start()
        self.is_sharp()
        self.picture("factor")


if __name__ == "__main__":
    main(LargeDesktop)
