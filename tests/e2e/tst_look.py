# SPDX-License-Identifier: GPL-3.0-or-later
from case import EndToEndCase, main

# Background of the page, background of the title bar, and frame of the focused control.
DARK = ("#1e1e1e", "#2c2c2e", "#0a84ff")
LIGHT = ("#f5f5f7", "#ffffff", "#0a84ff")


class Look(EndToEndCase):
    def colors(self):
        """The colours on the screen in the window's margin, its title bar and its box's frame."""
        x, y, width, _ = self.launcher.geometry()
        return tuple(self.desktop.pixel(x + dx, y + dy)
                     for dx, dy in ((6, 60), (width // 2, 10), (width // 2, 36 + 8)))

    def wears(self, colors):
        self.becomes(self.colors, colors)

    def test_is_dark_where_the_desktop_has_no_preference(self):
        self.start()
        self.wears(DARK)
        self.picture("dark")

    def test_is_light_if_the_user_prefers_it(self):
        self.home.set_preferences(theme="light")
        self.start()
        self.wears(LIGHT)
        self.picture("light")

    def test_takes_an_unknown_theme_for_the_desktops(self):
        self.home.set_preferences(theme="Light")
        self.start()
        self.wears(DARK)

    def test_box_shows_whether_it_has_the_focus(self):
        self.start()
        self.wears(DARK)
        self.launcher.press("Tab")
        self.wears((*DARK[:2], "#48484a"))
        self.launcher.press("shift+Tab")
        self.wears(DARK)


if __name__ == "__main__":
    main()
