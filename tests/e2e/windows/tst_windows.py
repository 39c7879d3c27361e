# SPDX-License-Identifier: GPL-3.0-or-later
"""Tests what only Windows has: links in the start menu, the registry, and the taskbar's tray."""

import re

from gi.repository import Atspi

from case import EndToEndCase, main
from desktop import PATIENCE, wait_until
from launcher import children, find

LIGHT, DARK = "#f5f5f7", "#1e1e1e"
PERSONALIZE = r"HKCU\Software\Microsoft\Windows\CurrentVersion\Themes\Personalize"
APPS_USE_LIGHT = "AppsUseLightTheme"
LINE = re.compile(r"\[\d{4}-\d\d-\d\d \d\d:\d\d:\d\d\.\d{3}\] \[Vaskel\] "
                  r"\[(debug|info|warning|error)\] \S")


class WindowsCase(EndToEndCase):
    clicks = 0

    def click(self, place, button=1):
        x, y, width, height = place
        # Alternate between positions: two clicks at one would be a double click.
        self.clicks += 1
        self.desktop.click(x + width // 4 + self.clicks % 2 * width // 2, y + height // 2, button)

    def background(self):
        """The colour of the window's margin."""
        x, y, _, _ = self.launcher.geometry()
        return self.desktop.pixel(x + 6, y + 60)

    def margin_is(self, color):
        self.becomes(self.background, color)

    def log(self):
        return "".join(path.read_text("utf-8") for path
                       in sorted((self.home.data / "Vaskel").glob("Vaskel_*.log")))


class Programs(WindowsCase):
    def test_are_found_by_name_and_pinyin_and_started_by_enter(self):
        self.home.add_recorder("Probe One", "one")
        self.home.add_recorder("Probe 计算器", "calculator")
        self.start()
        self.picture("start")
        self.launcher.type("probe")
        self.shows_rows(("Probe One", "Start Menu"), ("Probe 计算器", "Start Menu"))
        self.picture("both")
        self.launcher.empty_box()

        self.launcher.type("jsq")
        self.shows_rows(("Probe 计算器", "Start Menu"))
        self.picture("pinyin")
        self.launcher.press("Return")
        self.hides()
        program = wait_until(lambda: self.home.recorded("calculator"), "the program has run")
        self.assertEqual(len(program), 1)
        self.assertTrue(program[0].split("\t")[0].endswith("/recorder.exe"), program)
        self.assertIsNone(self.home.recorded("one"))

    def test_system_program_is_started(self):
        self.start()
        self.launcher.type("notepad")
        self.shows_titles("Notepad")
        self.launcher.press("Return")
        self.hides()
        notepad = wait_until(lambda: self.desktop.run("xdotool", "search", "--name", "Notepad"),
                             "the program's window shows")
        self.picture("notepad")
        self.home.run("taskkill", "/f", "/im", "notepad.exe")
        self.assertTrue(notepad)


class Commands(WindowsCase):
    def test_calculator_copies_its_value(self):
        self.start()
        self.launcher.type("calc 1+2")
        self.shows_rows(("3", " 1+2 = 3"))
        self.picture("value")
        self.launcher.press("Return")
        self.hides()
        self.becomes(self.launcher.clipboard, "3")

    def test_file_search_asks_everything(self):
        self.launcher.environment |= {"VASKEL_TEST_FILES": r"C:\files\yearly report.txt"}
        self.start()
        self.launcher.type("file report")
        self.shows_titles("yearly report.txt")
        self.picture("row")

    def test_folder_is_listed(self):
        folder = self.home.folder / "wine/drive_c/probe"
        (folder / "inner").mkdir(parents=True, exist_ok=True)
        self.start()
        self.launcher.type("cd C:/probe")
        self.shows_rows(("Open probe", "C:/probe"), ("inner", "Folder"))
        self.picture("row")


class Tray(WindowsCase):
    def setUp(self):
        super().setUp()
        self.start()
        self.icon()

    def icon(self):
        return wait_until(self.launcher.tray_icon, "the tray shows the icon")

    def open_menu(self):
        self.click(self.icon(), button=3)
        return wait_until(self.launcher.menu, "the menu opens")

    def hide_window(self):
        self.launcher.press("Escape")
        self.hides()

    def test_left_click_hides_and_shows(self):
        self.picture("icon")
        self.click(self.icon())
        self.hides()
        self.click(self.icon())
        self.launcher.wait_until_ready()

    def test_right_click_opens_the_menu_alone(self):
        self.assertEqual(list(self.open_menu()), ["Show", "Settings", "Restart", "Quit"])
        self.picture("menu")
        self.assertTrue(self.launcher.is_visible())
        self.launcher.press("Escape")
        wait_until(lambda: not self.launcher.menu(), "the menu closes")

        self.launcher.take_keyboard()
        self.hide_window()
        self.open_menu()
        self.assertFalse(self.launcher.is_visible())

    def test_show_brings_the_window_up(self):
        self.hide_window()
        self.open_menu()
        self.launcher.choose("Show")
        self.launcher.wait_until_ready()

    def test_settings_opens_the_page_and_keeps_the_text(self):
        self.launcher.type("paint")
        self.shows_titles("Paint")
        self.hide_window()
        self.open_menu()
        self.launcher.choose("Settings")
        wait_until(lambda: self.launcher.control("Save"), "the page opens")
        self.assertEqual(self.launcher.text(), "paint")
        self.picture("settings")

    def test_quit_ends_the_program(self):
        self.open_menu()
        self.launcher.choose("Quit")
        self.assertEqual(self.launcher.process.wait(PATIENCE), 0)
        self.becomes(self.launcher.processes, [])

    def test_restart_begins_anew(self):
        before = self.launcher.processes()
        self.launcher.type("paint")
        self.shows_titles("Paint")
        self.open_menu()
        self.launcher.choose("Restart")
        self.assertEqual(self.launcher.process.wait(PATIENCE), 0)
        wait_until(lambda: self.launcher.processes() not in ([], before), "another process runs")
        self.addCleanup(self.home.run, "taskkill", "/f", "/im", "Vaskel.exe")
        self.launcher.wait_until_ready()
        self.assertEqual(self.launcher.text(), "")
        self.assertEqual(len(self.launcher.processes()), 1)


class FloatIcon(WindowsCase):
    def setUp(self):
        super().setUp()
        # The tray's message of a first start covers the corner of the screen.
        self.home.set_preferences(floatIconX=300, floatIconY=100)
        self.start()

    def icon(self):
        return wait_until(self.launcher.float_icon, "the icon shows")

    def test_click_hides_the_window_and_shows_it_ready_to_type(self):
        self.assertEqual(self.icon()[2:], (48, 48))
        self.picture("icon")
        self.click(self.icon())
        self.hides()
        self.click(self.icon())
        self.launcher.wait_until_ready()
        self.launcher.type("paint")
        self.shows_titles("Paint")

    def test_drag_moves_it_and_its_place_is_kept(self):
        x, y, _, _ = self.icon()
        # Wine compares the pointer with where the window will be. If the button is released before
        # the window arrives, wine moves it as far again.
        with self.desktop.drag((x + 24, y + 24), (x - 176, y - 76),
                               lambda: self.icon()[:2] != (x, y)):
            self.becomes(self.icon, (x - 200, y - 100, 48, 48))
        self.becomes(lambda: self.home.preferences().get("floatIconX"), hex(x - 200))
        self.becomes(self.icon, (x - 200, y - 100, 48, 48))
        self.assertTrue(self.launcher.is_visible())

    def test_menu_switches_it_off(self):
        self.click(self.icon(), button=3)
        entries = wait_until(self.launcher.menu, "the menu opens")
        self.assertEqual(list(entries), ["Hide main window", "Hide float icon"])
        self.picture("menu")
        self.launcher.choose("Hide float icon")
        wait_until(lambda: not self.launcher.float_icon(), "the icon is gone")
        self.becomes(lambda: self.home.preferences().get("showFloatIcon"), "false")


class Pages(WindowsCase):
    def choose(self, name, key, expected):
        """Changes a combo box with one key."""
        self.launcher.tab_to(name)
        self.launcher.press(key)
        self.becomes(lambda: self.launcher.text_of(
            self.launcher.control(name, Atspi.Role.COMBO_BOX)), expected)

    def stores(self, key, value):
        self.becomes(lambda: self.home.preferences().get(key), value)

    def test_theme_takes_effect_at_once_and_is_kept(self):
        self.start()
        self.margin_is(LIGHT)
        self.launcher.open_page("set", "Save")
        self.choose("Theme", "End", "Dark")
        self.picture("light")
        self.launcher.tab_to("Save")
        self.launcher.press("space")
        self.stores("theme", "dark")
        self.margin_is(DARK)
        self.launcher.open_page("set", "Save")
        self.launcher.tab_to("Theme")
        self.picture("dark")

        self.launcher.terminate()
        self.start()
        self.margin_is(DARK)

    def test_follows_the_colors_of_the_system(self):
        self.addCleanup(self.home.run, "reg", "delete", PERSONALIZE, "/f", "/v", APPS_USE_LIGHT)
        self.start()
        self.margin_is(LIGHT)
        for light, color in (("0", DARK), ("1", LIGHT)):
            self.home.run("reg", "add", PERSONALIZE, "/f", "/v", APPS_USE_LIGHT, "/t", "REG_DWORD",
                          "/d", light)
            self.assertTrue(self.launcher.ask("colors"))
            self.margin_is(color)

    def test_box_icon_opens_the_page_of_the_user(self):
        self.start()
        icon = wait_until(lambda: self.launcher.control("Open user management"), "the icon shows")
        self.click(tuple(icon.get_extents(Atspi.CoordType.SCREEN)))
        wait_until(lambda: self.launcher.control("Start on boot"), "the page opens")
        self.picture("user")
        self.launcher.open_page("plugin", "Enable all")
        self.picture("plugin")

    def test_task_is_written_to_disk(self):
        self.start()
        self.launcher.open_page("todo", "Add a task and press Enter")
        self.launcher.type("buy milk")
        self.launcher.press("Return")
        wait_until(lambda: find(self.launcher.content(), Atspi.Role.TABLE_CELL), "the task shows")
        cells = children(find(self.launcher.content(), Atspi.Role.TREE)[0])
        self.assertIn("buy milk", [cell.get_name() for cell in cells])
        self.picture("task")
        file = (self.home.data / "Vaskel/todo.json").read_text("utf-8")
        self.assertIn('"buy milk"', file)


class Process(WindowsCase):
    def test_hotkey_hides_and_shows_the_window(self):
        self.start()
        for _ in range(2):
            self.launcher.press("ctrl+alt+space")
            self.hides()
            self.launcher.press("ctrl+alt+space")
            self.launcher.wait_until_ready()
        self.launcher.type("paint")
        self.shows_titles("Paint")

    def test_second_start_brings_the_window_up(self):
        self.start()
        self.launcher.press("Escape")
        self.hides()
        self.start_again()

    def test_comes_to_the_front(self):
        self.start()
        for options in ([], ["--show"], ["--query", "paint"]):
            self.open_another_window()
            wait_until(lambda: not self.launcher.is_active(), "the other window is active")
            self.assertTrue(self.launcher.is_visible())
            self.assertEqual(self.launcher.order(*options)[0], 0)
            wait_until(self.launcher.is_active, "the window is active")
        self.launcher.wait_until_ready()
        self.shows_titles("Paint")

    def test_close_button_hides_the_window(self):
        self.start()
        self.click(tuple(find(self.launcher.application(), Atspi.Role.PUSH_BUTTON)[0]
                         .get_extents(Atspi.CoordType.SCREEN)))
        self.hides()
        self.assertEqual(len(self.launcher.processes()), 1)

    def test_logs_to_file_and_console(self):
        self.start()
        lines = self.log().splitlines()
        self.assertRegex(lines[0], r"\[info\] Logger initialized, log dir: C:/users/\w+/"
                                   r"AppData/Roaming/Vaskel$")
        self.assertTrue(any('Plugin registered: "todo"' in line for line in lines), lines)
        for line in lines:
            self.assertRegex(line, LINE)
        self.assertEqual(self.launcher.messages().splitlines()[:len(lines)], lines)


if __name__ == "__main__":
    main()
