# SPDX-License-Identifier: GPL-3.0-or-later
"""The window at several screen densities: its size, its title bar, its edges and its button."""

from gi.repository import Atspi

import tst_window
from case import EndToEndCase, main
from desktop import wait_until
from launcher import find

SIZE = (760, 460)  # of the window with rows, in device-independent pixels
DPI = 96


class Scaled:
    """The cases for one scale factor."""

    factor = 1

    def setUp(self):
        super().setUp()
        self.launcher.environment |= {"QT_SCALE_FACTOR": str(self.factor)}
        # The tray's message of a first start covers the corner of the screen.
        self.home.set_preferences(floatIconX=100, floatIconY=100)

    def picture(self, step):
        super().picture(f"{self.factor}-{step}")

    def test_shows_its_pages_in_its_size(self):
        self.start()
        size = tuple(round(length * self.factor) for length in SIZE)
        self.becomes(lambda: self.launcher.geometry()[2:], size)
        button = find(self.launcher.application(), Atspi.Role.PUSH_BUTTON)[0]
        self.assertEqual(button.get_extents(Atspi.CoordType.SCREEN)[2:],
                         (round(32 * self.factor), round(28 * self.factor)))
        self.picture("rows")

        self.launcher.open_page("set", "Save")
        self.launcher.tab_to("Theme")
        self.becomes(lambda: self.launcher.geometry()[2:], size)
        self.picture("settings")
        self.launcher.open_page("todo", "Add a task and press Enter")
        self.launcher.type("milk")
        self.launcher.press("Return")
        wait_until(lambda: find(self.launcher.content(), Atspi.Role.TABLE_CELL), "the task shows")
        self.launcher.press("Tab")
        self.picture("tasks")
        x, y, width, height = self.launcher.float_icon()
        self.assertEqual((width, height), (round(48 * self.factor), round(48 * self.factor)))
        self.desktop.click(x + width // 2, y + height // 2, 3)
        wait_until(self.launcher.menu, "the menu opens")
        self.picture("menu")


class AtFactor1(Scaled, tst_window.Window):
    factor = 1


class AtFactor1Point5(Scaled, tst_window.Window):
    factor = 1.5


class AtFactor2(Scaled, tst_window.Window):
    factor = 2


class OnDenseScreen(EndToEndCase):
    """The scale factor comes from Windows' own setting for the screen."""

    def set_dpi(self, dpi):
        self.home.run("reg", "add", r"HKCU\Control Panel\Desktop", "/f", "/v", "LogPixels",
                      "/t", "REG_DWORD", "/d", str(dpi))

    def works_at(self, factor):
        self.addCleanup(self.set_dpi, DPI)
        self.set_dpi(round(DPI * factor))
        self.start()
        size = tuple(round(length * factor) for length in SIZE)
        self.becomes(lambda: self.launcher.geometry()[2:], size)
        self.picture("rows")

        x, y, width, _ = self.launcher.geometry()
        grip = (x + width // 2, y + round(18 * factor))
        with self.desktop.drag(grip, (grip[0] - 100, grip[1] - 60),
                               lambda: self.launcher.geometry()[:2] != (x, y)):
            wait_until(lambda: tst_window.is_near(self.launcher.geometry(),
                                                  (x - 100, y - 60, *size)),
                       "the window is where the pointer took it")
        self.launcher.click_close()
        self.hides()

    def test_at_one_and_a_half(self):
        self.works_at(1.5)

    def test_at_two(self):
        self.works_at(2)


if __name__ == "__main__":
    main()
