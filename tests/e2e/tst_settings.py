# SPDX-License-Identifier: GPL-3.0-or-later
from gi.repository import Atspi

from case import EndToEndCase, main
from desktop import wait_until
from launcher import BUILTINS, children, has_state

DISABLED = ("Plugin disabled", "calc plugin has been disabled in settings")


class SettingsCase(EndToEndCase):
    def setUp(self):
        super().setUp()
        self.start()

    def open_page(self, command):
        self.launcher.open_page(command, "Save")

    def place(self):
        """The current row of the navigation."""
        rows = children(self.launcher.control("Settings", Atspi.Role.LIST))
        return [row.get_name() for row in rows if has_state(row, Atspi.StateType.SELECTED)]

    def is_checked(self, name):
        return has_state(self.launcher.control(name), Atspi.StateType.CHECKED)

    def text(self, name):
        return self.launcher.text_of(self.launcher.control(name))

    def toggle(self, name):
        """Toggles a check box with the keyboard."""
        before = self.is_checked(name)
        self.launcher.tab_to(name)
        self.launcher.press("space")
        self.becomes(lambda: self.is_checked(name), not before)

    def set_hotkey(self, name, keys, text):
        self.launcher.tab_to(name)
        self.launcher.press(keys)
        self.becomes(lambda: self.text(name), text)

    def choose(self, current, key, expected):
        """Changes a combo box, whose name is its current text, with one key."""
        self.launcher.tab_to(current)
        self.launcher.press(key)
        wait_until(lambda: self.launcher.control(expected, Atspi.Role.COMBO_BOX),
                   f"{expected!r} is chosen")

    def press_button(self, name):
        self.launcher.tab_to(name)
        self.launcher.press("space")

    def save(self, **expected):
        """Saves the page with the keyboard and waits until these preferences are stored."""
        self.press_button("Save")
        for key, value in expected.items():
            self.stores(key, value)

    def stores(self, key, value):
        def stored():
            return self.home.preferences().get(key)
        self.becomes(stored, value)

    def start_anew(self):
        self.launcher.terminate()
        self.start()


class Page(SettingsCase):
    def test_opens_at_the_page_of_the_command(self):
        for command, place in (("user", "User"), ("set", "Settings"), ("plugin", "Plugins")):
            self.open_page(command)
            self.becomes(self.place, [place])
            self.picture(command)

    def test_opens_by_the_icon_in_the_box(self):
        self.launcher.tab_to("Open user management")
        self.launcher.press("space")
        self.becomes(self.place, ["User"])
        self.assertEqual(self.launcher.text(), "")

    def test_turns_its_pages_by_the_arrow_keys(self):
        self.open_page("set")
        self.launcher.tab_to("Settings")
        self.launcher.press("Down")
        self.becomes(self.place, ["Plugins"])
        wait_until(lambda: self.launcher.control("Enable all"), "the page turns")
        self.launcher.press("Up", "Up")
        self.becomes(self.place, ["User"])

    def test_cancel_goes_back_to_the_list_and_stores_nothing(self):
        self.open_page("user")
        self.toggle("Start on boot")
        self.press_button("Cancel")
        wait_until(lambda: self.launcher.row_count() == 1, "the list is back")
        self.assertEqual(self.home.preferences(), {})
        self.open_page("user")
        self.assertFalse(self.is_checked("Start on boot"))

    def test_disable_all_then_cancel_disables_nothing(self):
        self.open_page("plugin")
        self.press_button("Disable all")
        self.becomes(lambda: self.is_checked("calc Enabled"), False)
        self.press_button("Cancel")
        self.launcher.empty_box()
        self.launcher.type("calc 1+1")
        self.shows_titles("2")

    def test_escape_closes_the_list_of_a_combo_box_before_it_hides_the_window(self):
        self.open_page("set")
        self.launcher.tab_to("System")
        self.launcher.press("space")
        wait_until(self.launcher.menu_is_open, "the list opens")
        self.launcher.press("Escape")
        wait_until(lambda: not self.launcher.menu_is_open(), "the list closes")
        self.assertTrue(self.launcher.is_visible())
        self.launcher.control("System")
        self.launcher.press("Escape")
        self.hides()

    def test_escape_hides_the_window_from_a_hotkey_field(self):
        self.open_page("set")
        self.launcher.tab_to("Global Hotkey")
        self.launcher.press("Escape")
        self.hides()
        self.start_again()
        self.becomes(lambda: self.text("Global Hotkey"), "Ctrl+Alt+Space")


class Effects(SettingsCase):
    def test_global_hotkey_moves_at_once(self):
        self.open_page("set")
        self.set_hotkey("Global Hotkey", "ctrl+shift+F9", "Ctrl+Shift+F9")
        self.save(globalHotkey="Ctrl+Shift+F9")
        self.launcher.press("ctrl+shift+F9")
        self.hides()
        # If the old hotkey still worked, it would show the window and the new one would hide it.
        self.launcher.press("ctrl+alt+space", "ctrl+shift+F9")
        wait_until(self.launcher.is_visible, "the window is back")

    def test_emptied_global_hotkey_is_gone(self):
        self.open_page("set")
        self.set_hotkey("Global Hotkey", "BackSpace", "")
        self.save(globalHotkey="")
        self.launcher.press("ctrl+alt+space", "Tab")
        wait_until(lambda: self.launcher.focused().get_name() == "Cancel", "the keys have arrived")
        self.assertTrue(self.launcher.is_visible())

    def test_hotkey_of_a_plugin_enters_its_command(self):
        self.open_page("plugin")
        self.set_hotkey("calc Hotkey", "ctrl+shift+F8", "Ctrl+Shift+F8")
        self.save(**{"pluginHotkeys/calc": "Ctrl+Shift+F8"})
        self.launcher.press("Escape")
        self.hides()
        self.launcher.press("ctrl+shift+F8")
        self.launcher.wait_until_ready()
        self.becomes(self.launcher.badge, "calc")

    def test_plugin_can_be_switched_off_and_on(self):
        self.open_page("plugin")
        self.toggle("calc Enabled")
        self.save(**{"plugins/calc": "false"})
        self.launcher.empty_box()
        self.launcher.type("calc 1+1")
        self.shows_rows(DISABLED)
        self.picture("disabled")

        self.open_page("plugin")
        self.press_button("Enable all")
        self.save(**{"plugins/calc": "true"})
        self.launcher.empty_box()
        self.launcher.type("calc 1+1")
        self.shows_titles("2")

    def test_hotkey_of_a_plugin_goes_and_comes_with_its_switch(self):
        self.launcher.terminate()
        self.home.set_preferences({"pluginHotkeys/calc": "Ctrl+Shift+F8"})
        self.start()
        self.switch_calc("false")
        # If the hotkey still worked, it would show the window and the main one would hide it.
        self.launcher.press("ctrl+shift+F8", "ctrl+alt+space")
        self.launcher.wait_until_ready()
        self.assertIsNone(self.launcher.badge())

        self.switch_calc("true")
        self.assertEqual(self.home.preferences()["pluginHotkeys/calc"], "Ctrl+Shift+F8")
        self.launcher.press("ctrl+shift+F8")
        self.launcher.wait_until_ready()
        self.becomes(self.launcher.badge, "calc")

    def switch_calc(self, value):
        """Toggles the plugin's switch to this value on the page, and hides the window, box empty."""
        self.open_page("plugin")
        self.toggle("calc Enabled")
        self.save(**{"plugins/calc": value})
        self.launcher.empty_box()
        self.launcher.press("Escape")
        self.hides()

    def test_command_with_a_page_opens_at_once(self):
        self.open_page("plugin")
        self.toggle("Auto enter on empty args")
        self.save(pluginAutoEnter="true")
        self.launcher.empty_box()
        wait_until(lambda: self.launcher.row_count() > 1, "the list is back")
        self.launcher.type("todo")
        wait_until(lambda: self.launcher.control("Add a task and press Enter"), "the page opens")

    def test_search_engine_serves_the_next_search(self):
        self.open_page("set")
        self.choose("Bing", "Down", "Google")
        self.save(searchEngine="Google")
        self.launcher.empty_box()
        self.launcher.type("zzzz")
        self.shows_rows(('Search "zzzz"', "Search with Google"))
        self.launcher.press("Return")
        self.assertEqual(self.is_recorded("browser")["arguments"],
                         ["https://www.google.com/search?q=zzzz"])

    def test_single_click_starts_a_program(self):
        self.home.add_recorder("Recorder")
        self.start_anew()
        self.open_page("user")
        self.toggle("Require double-click to launch apps")
        self.save(appLaunchRequiresDoubleClick="false")
        self.launcher.empty_box()
        self.launcher.type("recor")
        self.shows_titles("Recorder")
        self.launcher.click_row("Recorder")
        self.is_recorded("recorder")

    def test_empty_box_shows_no_programs(self):
        self.open_page("user")
        self.toggle("Show all apps when search is empty")
        self.save(showAllAppsWhenSearchEmpty="false")
        self.launcher.empty_box()
        self.becomes(self.launcher.row_count, 0)
        self.open_page("user")
        self.toggle("Show all apps when search is empty")
        self.save(showAllAppsWhenSearchEmpty="true")
        self.launcher.empty_box()
        self.becomes(self.launcher.row_count, len(BUILTINS))

    def test_window_hides_when_another_one_takes_over(self):
        self.open_page("user")
        self.toggle("Auto hide on focus loss")
        self.save(autoHideOnFocusLoss="true")
        self.open_another_window()
        self.hides()

    def test_program_starts_at_log_in_while_the_preference_is_on(self):
        entry = self.home.configuration / "autostart/Vaskel.desktop"
        self.open_page("user")
        self.assertFalse(entry.exists())
        self.toggle("Start on boot")
        self.save(autoStart="true")
        self.assertIn(str(self.program), entry.read_text())
        self.toggle("Start on boot")
        self.save(autoStart="false")
        self.assertFalse(entry.exists())

    def test_theme_changes_at_once(self):
        self.open_page("set")
        self.becomes(self.margin, "#1e1e1e")
        self.choose("System", "Down", "Light")
        self.save(theme="light")
        self.becomes(self.margin, "#f5f5f7")
        self.picture("light")
        self.choose("Light", "End", "Dark")
        self.save(theme="dark")
        self.becomes(self.margin, "#1e1e1e")

    def test_float_icon_goes_and_comes_back_to_its_place(self):
        place = wait_until(self.launcher.float_icon, "the icon shows")
        self.open_page("user")
        self.toggle("Show float icon")
        self.save(showFloatIcon="false")
        wait_until(lambda: not self.launcher.float_icon(), "the icon hides")
        self.toggle("Show float icon")
        self.save(showFloatIcon="true")
        self.becomes(self.launcher.float_icon, place)

    def test_float_icon_that_was_off_comes_to_its_stored_place(self):
        self.launcher.terminate()
        self.home.set_preferences(showFloatIcon="false", floatIconX=300, floatIconY=80)
        self.start()
        self.assertIsNone(self.launcher.float_icon())
        self.open_page("user")
        self.toggle("Show float icon")
        self.save(showFloatIcon="true")
        self.becomes(self.launcher.float_icon, (300, 80, 48, 48))

    def margin(self):
        """The colour of the window's margin."""
        x, y, _, _ = self.launcher.geometry()
        return self.desktop.pixel(x + 6, y + 60)


class Restart(SettingsCase):
    def test_keeps_what_was_saved(self):
        self.open_page("set")
        self.set_hotkey("Global Hotkey", "ctrl+shift+F9", "Ctrl+Shift+F9")
        self.choose("System", "Down", "Light")
        self.choose("Bing", "End", "DuckDuckGo")
        self.save(searchEngine="DuckDuckGo")
        self.open_page("user")
        for name in ("Start on boot", "Show float icon", "Auto hide on focus loss"):
            self.toggle(name)
        self.save(autoHideOnFocusLoss="true")
        self.open_page("plugin")
        self.toggle("todo Enabled")
        self.set_hotkey("todo Hotkey", "ctrl+shift+F7", "Ctrl+Shift+F7")
        self.save(**{"pluginHotkeys/todo": "Ctrl+Shift+F7"})

        self.start_anew()
        self.open_page("set")
        self.becomes(lambda: self.text("Global Hotkey"), "Ctrl+Shift+F9")
        for name in ("Light", "DuckDuckGo"):
            self.launcher.control(name, Atspi.Role.COMBO_BOX)
        self.open_page("user")
        wait_until(lambda: self.is_checked("Start on boot"), "the box is checked")
        self.assertFalse(self.is_checked("Show float icon"))
        self.assertTrue(self.is_checked("Auto hide on focus loss"))
        self.assertTrue(self.is_checked("Require double-click to launch apps"))
        self.open_page("plugin")
        self.becomes(lambda: self.text("todo Hotkey"), "Ctrl+Shift+F7")
        self.assertFalse(self.is_checked("todo Enabled"))
        self.assertTrue(self.is_checked("calc Enabled"))

        self.launcher.press("ctrl+shift+F9")
        self.hides()
        self.launcher.press("ctrl+shift+F9")
        self.launcher.wait_until_ready()


if __name__ == "__main__":
    main()
