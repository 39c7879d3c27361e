# SPDX-License-Identifier: GPL-3.0-or-later
import random

from case import EndToEndCase, main
from desktop import wait_until
from launcher import press_until

from gi.repository import Atspi

ROUNDS = 200
SIZE = (760, 460)  # of the window with many rows


class Placement(EndToEndCase):
    def place(self):
        return self.launcher.geometry()[:2]

    def toggle_hides(self):
        # After a drag the window manager has the keyboard for a moment.
        press_until(lambda: self.launcher.press("Escape"), lambda: not self.launcher.is_visible(),
                    "the window is hidden")

    def toggle_shows(self):
        self.launcher.press("ctrl+alt+space")
        self.launcher.wait_until_ready()

    def drag_to(self, x, y):
        """Drags the window by its title bar and returns the place where it then is."""
        left, top, width, _ = self.launcher.geometry()
        grip = (left + width // 2, top + 18)
        step = ((x > left) - (x < left), (y > top) - (y < top))
        # The window manager may not count the way to the start of the drag.
        ends = [(x - way * step[0], y - way * step[1]) for way in range(25)]
        with self.desktop.drag(grip, (grip[0] + x - left, grip[1] + y - top),
                               lambda: self.place() != (left, top)):
            wait_until(lambda: self.place() in ends, "the window is where the pointer took it")
        return self.place()

    def stored_place(self):
        stored = self.home.preferences().get("windowPosition")
        return stored and tuple(map(int, stored.removeprefix("@Point(").rstrip(")").split()))

    def test_comes_up_centred_a_fifth_down(self):
        self.start()
        self.assertEqual(self.place(), ((1280 - SIZE[0]) // 2, 1024 // 5))
        self.picture("first")
        self.assertIsNone(self.stored_place())

    def test_comes_up_where_the_last_run_left_it(self):
        self.start()
        place = self.drag_to(49, 45)
        self.becomes(self.stored_place, place)
        self.launcher.kill()
        self.start()
        self.becomes(self.place, place)

    def test_comes_up_inside_a_screen_that_has_become_smaller(self):
        self.home.set_preferences(windowPosition="@Point(3000 -20)")
        self.start()
        self.becomes(self.place, (1280 - SIZE[0], 0))
        self.becomes(self.stored_place, (3000, -20))

    def test_fits_a_screen_that_is_smaller_than_its_sizes(self):
        for scale in (2, 2.4):
            with self.subTest(scale):
                self.launcher.environment["QT_SCALE_FACTOR"] = str(scale)
                self.start()
                self.launcher.open_page("set", "Save")
                self.picture(f"settings-{scale}")
                x, y, width, height = self.launcher.geometry()
                self.assertGreaterEqual(min(x, y), 0)
                self.assertLessEqual(x + width, 1280)
                self.assertLessEqual(y + height, 1024)

                extents = self.launcher.control("Save").get_extents(Atspi.CoordType.SCREEN)
                self.assertLessEqual((extents.x + extents.width) * scale, x + width)
                self.assertLessEqual((extents.y + extents.height) * scale, y + height)
                self.launcher.tab_to("Save")
                self.launcher.terminate()

    def test_never_jumps(self):
        """Shows, types, hides and drags, with windows of different heights."""
        for number in range(20):
            self.home.add_entry(f"Item{number:02}")
        texts = ("item07", "item", "note", "")
        picks = random.Random(200)
        self.start()
        place = self.place()
        jumps = []

        def check(step):
            if self.place() != place:
                jumps.append((step, place, self.place()))

        for number in range(ROUNDS):
            text = texts[number % len(texts)]
            self.launcher.press("ctrl+a", "BackSpace")
            self.launcher.type(text)
            has_many_rows = text in ("item", "")
            wait_until(lambda: (self.launcher.geometry()[3] == SIZE[1]) == has_many_rows,
                       "the window fits its rows")
            check(f"{number}: typed {text!r}")
            self.toggle_hides()
            self.toggle_shows()
            check(f"{number}: shown")
            place = self.drag_to(picks.randrange(500), picks.randrange(500))
            self.toggle_hides()
            self.toggle_shows()
            check(f"{number}: shown after a drag")
        self.assertEqual(jumps, [])


if __name__ == "__main__":
    main()
