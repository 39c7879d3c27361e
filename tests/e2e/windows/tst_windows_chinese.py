# SPDX-License-Identifier: GPL-3.0-or-later
"""Vaskel.exe on a Chinese Windows."""

import shutil
import subprocess

from gi.repository import Atspi

from case import EndToEndCase, main
from desktop import wait_until
from launcher import find


class Chinese(EndToEndCase):
    def setUp(self):
        super().setUp()
        # Wine takes its language from the host's locale; few machines have this one installed.
        locales = self.home.folder / "locales"
        if not (locales / "zh_CN.UTF-8").exists():
            shutil.rmtree(locales, ignore_errors=True)
            locales.mkdir()
            subprocess.run(["localedef", "--no-archive", "-i", "zh_CN", "-f", "UTF-8",
                            str(locales / "zh_CN.UTF-8")], check=True)
        self.launcher.environment |= {"LOCPATH": str(locales), "LC_ALL": "zh_CN.UTF-8"}

    def shows(self, *names):
        """Waits until all of the names are visible."""
        def shown():
            return {found.get_name() for found in self.launcher.everything()}
        wait_until(lambda: set(names) <= shown(), f"{names} show")

    def test_window_and_pages(self):
        self.start()
        self.shows("搜索应用 或 输入 命令 空格 参数...", "已固定", "记事本\nWindows 记事本",
                   "计算器\nWindows 计算器")
        self.picture("window")

        self.launcher.type("jsq")
        self.shows_titles("计算器")
        self.picture("jsq")
        self.launcher.empty_box()
        self.launcher.type("jishiben")
        self.shows_titles("记事本")
        self.launcher.empty_box()

        self.launcher.type("calc 1+")
        self.becomes(self.launcher.status, "calc | 计算器")
        self.picture("calc")
        self.launcher.type("2")
        self.shows_rows(("3", " 1+2 = 3"))
        self.launcher.empty_box()
        self.launcher.type("nonesuch")
        self.shows_rows(("搜索 “nonesuch”", "用 Bing 搜索"))
        self.picture("web-search")

        self.launcher.open_page("set", "全局唤醒快捷键")
        self.shows("用户", "设置", "插件", "主题", "搜索引擎")
        self.picture("set")
        self.launcher.open_page("user", "跟随系统启动")
        self.shows("显示浮动图标", "失去焦点时隐藏", "进入应用需双击", "默认显示所有的应用")
        self.picture("user")
        self.launcher.open_page("plugin", "自动进入不需要参数的命令")
        self.shows("全部启用", "全部关闭")
        self.picture("plugin")

        self.launcher.open_page("todo", "输入后回车新增任务")
        self.launcher.type("milk")
        self.launcher.press("Return")
        wait_until(lambda: find(self.launcher.content(), Atspi.Role.TABLE_CELL), "the task shows")
        self.shows("任务", "返回", "添加", "1 活动 1 全部")
        self.picture("todo")

    def test_menus(self):
        self.start()
        x, y, width, height = wait_until(self.launcher.tray_icon, "the tray shows the icon")
        self.desktop.click(x + width // 2, y + height // 2, 3)
        entries = wait_until(self.launcher.menu, "the menu opens")
        self.assertEqual(list(entries), ["显示", "设置", "重启", "退出"])
        self.picture("tray")
        self.launcher.choose("显示")

        x, y, width, height = self.launcher.float_icon()
        self.desktop.click(x + width // 2, y + height // 2, 3)
        entries = wait_until(self.launcher.menu, "the menu opens")
        self.assertEqual(list(entries), ["隐藏主界面", "隐藏浮动图标"])
        self.picture("float-icon")
        self.launcher.choose("隐藏浮动图标")

        self.launcher.click_row("记事本", button=3)
        self.assertEqual(list(wait_until(self.launcher.menu, "the menu opens")), ["固定到开始界面"])
        self.picture("row")


if __name__ == "__main__":
    main()
