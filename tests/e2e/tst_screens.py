# SPDX-License-Identifier: GPL-3.0-or-later
from case import EndToEndCase, main
from desktop import NotYet, wait_until
from monitors import Monitors

# Two monitors, one above the other.
UPPER = (0, 0, 1280, 500)
LOWER = (0, 500, 1280, 524)


def is_inside(geometry, monitor):
    return all(monitor[i] <= geometry[i]
               and geometry[i] + geometry[i + 2] <= monitor[i] + monitor[i + 2] for i in (0, 1))


class Screens(EndToEndCase):
    def setUp(self):
        super().setUp()
        self.monitors = Monitors(self.desktop.display)
        self.addCleanup(self.monitors.close)
        self.monitors.add("upper", *UPPER)
        self.monitors.add("lower", *LOWER)

    def comes_inside(self, monitor, what):
        def probe():
            geometry = self.launcher.geometry()
            if not is_inside(geometry, monitor):
                raise NotYet(geometry)
            return geometry
        wait_until(probe, what)

    def start_on_lower_one(self):
        self.desktop.move_pointer(100, 900)
        self.start()
        self.comes_inside(LOWER, "the window is on the screen of the pointer")

    def toggle(self, is_shown):
        self.launcher.press("ctrl+alt+space")
        if is_shown:
            self.launcher.wait_until_ready()
        else:
            self.hides()

    def test_window_comes_up_on_the_screen_of_the_pointer(self):
        self.start_on_lower_one()
        self.picture("lower")
        x, y, width, height = self.launcher.geometry()
        self.assertEqual((x, width, height), ((1280 - 760) // 2, 760, 460))

    def test_window_comes_back_when_its_screen_goes_while_it_is_hidden(self):
        for factors in ("1;1", "1;1.25", "1.25;1"):
            with self.subTest(factors):
                self.launcher.environment["QT_SCREEN_SCALE_FACTORS"] = factors
                self.start_on_lower_one()
                self.toggle(is_shown=False)
                self.monitors.remove("lower")
                self.toggle(is_shown=True)
                self.comes_inside(UPPER, "the window is wholly on the screen that is left")
                self.launcher.terminate()
                self.monitors.add("lower", *LOWER)
        self.assertNotIn("windowPosition", self.home.preferences())

    def test_icon_comes_back_when_its_screen_goes(self):
        self.home.set_preferences(floatIconX=700, floatIconY=900)
        self.start()
        self.becomes(self.launcher.float_icon, (700, 900, 48, 48))
        self.monitors.remove("lower")
        self.becomes(self.launcher.float_icon, (700, 500 - 48, 48, 48))
        self.picture("upper")
        self.assertEqual(self.home.preferences()["floatIconX"], "700")
        self.assertEqual(self.home.preferences()["floatIconY"], "900")

        self.monitors.add("lower", *LOWER)
        self.becomes(self.launcher.float_icon, (700, 900, 48, 48))


if __name__ == "__main__":
    main()
