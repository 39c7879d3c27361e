# SPDX-License-Identifier: GPL-3.0-or-later
import os
import shutil
import subprocess

from case import EndToEndCase, main
from desktop import stop, wait_until
from launcher import BUILTINS, press_until, walk_through_menu

CHINESE_BUILTINS = ("记事本", "计算器", "画图", "命令提示符", "文件资源管理器", "任务管理器", "设置",
                    "浏览器")
QT_VERSION = tuple(map(int, os.environ["VASKEL_QT_VERSION"].split(".")))


class LanguageCase(EndToEndCase):
    def speak(self, locale, languages=""):
        self.launcher.environment |= {"LANG": f"{locale}.UTF-8", "LANGUAGE": languages or locale}

    def names(self):
        """The accessible names of all visible controls."""
        return [found.get_name() for found in self.launcher.everything()]

    def shows(self, *names):
        """Waits until all of the names are visible."""
        wait_until(lambda: set(names) <= set(self.names()), f"{names} show")

    def opens_menu(self, click, *entries):
        before = len(self.launcher.windows())

        # A window that has just got the focus may close the first menu.
        def open_menu():
            press_until(click, lambda: len(self.launcher.windows()) > before, "the menu opens")

        names = walk_through_menu(self.launcher, open_menu, len(entries))
        self.assertEqual(names, list(entries))


class Chinese(LanguageCase):
    def setUp(self):
        super().setUp()
        self.speak("zh_CN")

    def test_window(self):
        self.start()
        self.shows_titles(*CHINESE_BUILTINS)
        self.shows("搜索应用 或 输入 命令 空格 参数...", "已固定")
        self.picture("empty")

        self.launcher.type("nonesuch")
        self.shows_rows(("搜索 “nonesuch”", "用 Bing 搜索"))
        self.picture("web-search")

        self.launcher.empty_box()
        self.shows_titles(*CHINESE_BUILTINS)
        self.opens_menu(lambda: self.launcher.click_row("记事本", button=3), "固定到开始界面")
        self.picture("row-menu")

    def test_finds_the_builtins_by_their_pinyin(self):
        self.start()
        for query, name in (("jsq", "计算器"), ("jisuanqi", "计算器"), ("jishiben", "记事本"),
                            ("jsb", "记事本"), ("huatu", "画图"), ("mltsf", "命令提示符"),
                            ("wjzyglq", "文件资源管理器"), ("renwu", "任务管理器"),
                            ("shezhi", "设置"), ("llq", "浏览器")):
            with self.subTest(query):
                self.launcher.type(query)
                self.shows_titles(name)
                self.launcher.empty_box()
        self.launcher.type("jsq")
        self.shows_titles("计算器")
        self.picture("jsq")

    def test_finds_no_builtin_by_its_english_name(self):
        self.start()
        self.shows_titles(*CHINESE_BUILTINS)
        self.launcher.type("notepad")
        self.shows_titles("搜索 “notepad”")

    def test_answers_of_commands(self):
        self.start()
        for command, *row in (
                ("calc", "输入表达式进行计算", "例如: 1+2, sqrt(16), 2^10"),
                ("cd ~/browser", "目录不存在", " ~/browser"),
                ("todo", "任务管理", "管理 TODO 列表与子任务"),
                ("set", "设置", "修改全局热键、窗口样式等配置")):
            with self.subTest(command):
                self.launcher.type(command)
                self.shows_rows(tuple(row))
                self.picture(command.split()[0])
                self.launcher.empty_box()

    def test_answer_of_a_command_that_is_off(self):
        self.home.set_preferences(**{"[plugins]\ncalc": "false"})
        self.start()
        self.launcher.type("calc 1+2")
        self.shows_rows(("插件已禁用", "calc 插件已在设置中关闭"))
        self.picture("row")

    def test_task_page(self):
        self.start()
        self.launcher.open_page("todo", "输入后回车新增任务")
        self.launcher.tab_to("输入后回车新增任务")
        self.launcher.paste("买牛奶")
        self.launcher.press("Return")
        self.shows("任务", "返回", "添加", "1 活动 1 全部", "活动")
        self.picture("page")

    def test_settings_page(self):
        self.start()
        places = ("用户", "设置", "插件")
        self.launcher.open_page("set", "全局唤醒快捷键")
        self.shows(*places, "主题", "跟随系统", "搜索引擎", "保存", "取消")
        self.picture("set")
        self.launcher.open_page("user", "跟随系统启动")
        self.shows(*places, "软件信息", "显示浮动图标", "失去焦点时隐藏", "进入应用需双击",
                   "默认显示所有的应用")
        self.picture("user")
        self.launcher.open_page("plugin", "自动进入不需要参数的命令")
        self.shows(*places, "全部启用", "全部关闭")
        self.picture("plugin")

    def test_float_icon_menu(self):
        self.home.set_preferences(showFloatIcon="true")
        self.start()
        x, y, width, height = wait_until(self.launcher.float_icon, "the icon shows")
        self.opens_menu(lambda: self.desktop.click(x + width // 2, y + height // 2, 3),
                        "隐藏主界面", "隐藏浮动图标")
        self.picture("menu")

    def test_tray_menu(self):
        self.start()
        self.addCleanup(stop, self.desktop.start_tray())
        x, y, width, height = self.launcher.tray_icon_place()
        self.opens_menu(lambda: self.desktop.click(x + width // 2, y + height // 2, 3),
                        "显示", "设置", "重启", "退出")
        self.picture("menu")

    def test_is_found_after_a_language_without_a_translation(self):
        self.speak("fr_FR", "fr_FR:zh_CN")
        self.start()
        self.shows_titles(*CHINESE_BUILTINS)


class OtherLanguages(LanguageCase):
    """Runs a copy of the program in a folder of its own."""

    def setUp(self):
        super().setUp()
        self.folder = self.home.folder / "program"
        (self.folder / "i18n").mkdir(parents=True)
        self.launcher.program = shutil.copy(self.program, self.folder)

    def add_translation(self, name, **translations):
        """Compiles a translation of program names into the program's folder."""
        source = self.home.folder / f"{name}.ts"
        messages = "".join(f"<message><source>{source}</source>"
                           f"<translation>{translation}</translation></message>"
                           for source, translation in translations.items())
        source.write_text('<TS version="2.1"><context><name>AppLauncher</name>'
                          f"{messages}</context></TS>")
        subprocess.run([os.environ["VASKEL_LRELEASE"], "-silent", source, "-qm",
                        self.folder / f"i18n/{name}.qm"], check=True)

    def test_takes_the_translation_beside_the_program(self):
        self.add_translation("Vaskel_de_DE", Calculator="Rechner", Settings="Einstellungen")
        self.speak("de_DE")
        self.start()
        self.shows_titles("Notepad", "Rechner", "Paint", "Command Prompt", "File Explorer",
                          "Task Manager", "Einstellungen", "Browser")
        self.picture("german")

    def test_prefers_its_own_translation_to_one_beside_the_program(self):
        self.add_translation("Vaskel_zh_CN", Calculator="Another")
        self.speak("zh_CN")
        self.start()
        self.shows_titles(*CHINESE_BUILTINS)

    def test_is_english_without_a_translation(self):
        self.add_translation("Vaskel_de_DE", Calculator="Rechner")
        # Since Qt 6.9, the languages of a locale end with the bare language, which stands for its
        # usual territory.
        german = ["Rechner" if name == "Calculator" else name for name in BUILTINS]
        usual = {"de_AT": german, "zh_TW": CHINESE_BUILTINS} if QT_VERSION >= (6, 9) else {}
        for locale in ("de_AT", "zh_TW", "fr_FR"):
            with self.subTest(locale):
                self.speak(locale)
                self.start()
                try:
                    self.shows_titles(*usual.get(locale, BUILTINS))
                finally:
                    self.launcher.terminate()


if __name__ == "__main__":
    main()
