# SPDX-License-Identifier: GPL-3.0-or-later
from case import EndToEndCase, main
from desktop import wait_until
from launcher import press_until

SHOW_TIME = 1  # seconds, enough for a window that is shown by mistake


class FloatIcon(EndToEndCase):
    def start_with_icon(self, **preferences):
        """Starts the program and returns the icon's geometry when it first shows."""
        if preferences:
            self.home.set_preferences(**preferences)
        self.start()
        return wait_until(self.launcher.float_icon, "the icon shows")

    def centre(self):
        x, y, width, height = self.launcher.float_icon()
        return x + width // 2, y + height // 2

    def stored_place(self):
        preferences = self.home.preferences()
        return preferences.get("floatIconX"), preferences.get("floatIconY")

    def open_menu(self):
        # The toolkit closes a menu that opens just when the window has lost the focus.
        press_until(lambda: self.desktop.click(*self.centre(), button=3),
                    self.launcher.menu_is_open, "the menu opens")

    def test_stands_in_the_corner_and_above_other_windows(self):
        self.assertEqual(self.start_with_icon(), (1280 - 1 - 60, 1024 - 1 - 60, 48, 48))
        self.open_another_window()
        self.assertEqual(self.launcher.float_icon(),
                         self.desktop.geometry(self.desktop.stack()[-1]))
        self.picture("corner")

    def test_click_hides_the_window_and_shows_it_ready_to_type(self):
        self.start_with_icon()
        self.assertEqual(self.stored_place(), (None, None))
        self.desktop.click(*self.centre())
        self.hides()
        self.becomes(self.stored_place, ("1219", "963"))

        self.desktop.click(*self.centre())
        self.launcher.wait_until_ready()
        self.launcher.type("note")
        self.shows_titles("Notepad")

    def test_slow_click_hides_a_window_that_hides_at_focus_loss(self):
        self.start_with_icon(floatIconX=300, floatIconY=80, autoHideOnFocusLoss="true")
        self.desktop.move_pointer(*self.centre())
        self.desktop.run("xdotool", "mousedown", "1")
        # The press leaves the focus where it is.
        self.stays(lambda: self.desktop.active_window() == self.launcher.window,
                   "the window is active", SHOW_TIME)
        self.desktop.run("xdotool", "mouseup", "1")
        self.hides()
        self.stays(lambda: not self.launcher.is_visible(), "the window is hidden", SHOW_TIME)

        self.desktop.click(*self.centre())
        self.launcher.wait_until_ready()

    def test_never_takes_the_focus(self):
        self.start_with_icon()
        icon = self.icon_window()
        self.launcher.press("Escape")
        self.hides()
        self.desktop.run("xdotool", "windowactivate", icon)
        self.stays(lambda: self.desktop.run("xdotool", "getwindowfocus") != icon,
                   "the icon has no focus", SHOW_TIME)

    def test_is_round_without_a_compositor(self):
        self.home.set_preferences(theme="light", floatIconX=300, floatIconY=80)
        self.start()
        wait_until(self.launcher.float_icon, "the icon shows")
        shape = self.desktop.run("xwininfo", "-id", self.icon_window(), "-shape")
        self.assertIn("Window shape extents:  42x42+3+3", shape)
        self.picture("round")

    def icon_window(self):
        """The id of the icon's window, which is on top of all."""
        return self.desktop.stack()[-1]

    def test_drag_moves_it_without_a_click_and_its_place_is_kept(self):
        x, y, width, height = self.start_with_icon(floatIconX=300, floatIconY=80)
        self.assertEqual((x, y), (300, 80))
        start = self.centre()
        with self.desktop.drag(start, (start[0] - 200, start[1] + 30),
                               lambda: self.launcher.float_icon()[:2] != (x, y)):
            self.becomes(self.launcher.float_icon, (100, 110, width, height))
        self.becomes(self.stored_place, ("100", "110"))
        self.becomes(self.launcher.float_icon, (100, 110, width, height))
        self.assertTrue(self.launcher.is_visible())
        self.picture("dragged")

        self.launcher.kill()
        self.start()
        self.becomes(self.launcher.float_icon, (100, 110, width, height))

    def test_one_pixel_is_a_drag(self):
        self.start_with_icon(floatIconX=300, floatIconY=80)
        x, y = self.centre()
        self.desktop.move_pointer(x, y)
        self.desktop.run("xdotool", "mousedown", "1", "mousemove", str(x), str(y + 1),
                         "mouseup", "1")
        self.becomes(self.stored_place, ("300", "81"))
        self.becomes(self.launcher.float_icon, (300, 81, 48, 48))
        self.assertTrue(self.launcher.is_visible())

    def test_menu_hides_and_shows_the_window(self):
        self.start_with_icon(floatIconX=300, floatIconY=80)
        self.open_menu()
        self.picture("menu")
        self.launcher.press("Down", "Return")
        self.hides()
        self.open_menu()
        self.launcher.press("Down", "Return")
        self.launcher.wait_until_ready()

    def test_menu_switches_it_off_for_good(self):
        self.start_with_icon()
        self.open_menu()
        self.launcher.press("Up", "Return")
        wait_until(lambda: not self.launcher.float_icon(), "the icon is gone")
        self.assertTrue(self.launcher.is_visible())
        self.becomes(lambda: self.home.preferences().get("showFloatIcon"), "false")

        self.launcher.kill()
        self.start()
        self.assertIsNone(self.launcher.float_icon())


if __name__ == "__main__":
    main()
