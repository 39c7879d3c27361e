# SPDX-License-Identifier: GPL-3.0-or-later
"""Takes the pictures of the documents: the program in a made-up home, in two languages and themes.

usage: gallery.py PROGRAM FOLDER

The pictures are the same in each run: the home has a fixed path, fixed fonts, one icon theme and a
desktop whose text cursor does not blink.
"""

import contextlib
import dataclasses
import fcntl
import itertools
import json
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

from desktop import PATIENCE, Desktop, NotYet, wait_until
from launcher import Home, Launcher, children, find

from gi.repository import Atspi

FACTOR = 2  # of the scale
SCREEN = "1680x1400"  # large enough for the window at that scale
THEMES = ("light", "dark")
ICON_THEME = pathlib.Path("/usr/share/icons/elementary")
ICON_THEME_VERSION = "icon-theme-version.txt"  # beside the pictures: that of the icons in them
FONT = "WenQuanYi Micro Hei"  # has Latin and Chinese characters
FONT_FOLDER = "/usr/share/fonts/truetype/wqy"

FONT_SETTINGS = f"""<?xml version="1.0"?>
<fontconfig>
  <dir>{FONT_FOLDER}</dir>
  <match target="pattern">
    <edit name="family" mode="assign" binding="strong"><string>{FONT}</string></edit>
  </match>
  <match target="font">
    <edit name="antialias" mode="assign"><bool>true</bool></edit>
    <edit name="hintstyle" mode="assign"><const>hintslight</const></edit>
    <edit name="rgba" mode="assign"><const>none</const></edit>
  </match>
</fontconfig>
"""

# A text cursor that does not blink.
DESKTOP_SETTINGS = f"""[KDE]
CursorBlinkRate=0

[Icons]
Theme={ICON_THEME.name}
"""

# The path shows in the pictures.
HOME = pathlib.Path("/tmp/ann")
MARK = ".made-for-pictures"


@dataclasses.dataclass
class Language:
    """What is particular to the pictures in one language."""

    folder: str
    locale: str
    programs: dict  # the keys of PROGRAMS -> name
    files: tuple  # paths in the home
    tasks: tuple  # triples of level, title and whether it is completed
    texts: dict  # picture -> typed text after the command
    titles: dict  # picture -> the rows that it shows, or the first of them
    controls: dict  # picture -> a control of the page


# The name of each desktop entry and its icon. The first eight are for the program's own entries,
# such as "Notepad", and are not listed a second time.
PROGRAMS = {
    "org.gnome.TextEditor": "accessories-text-editor",
    "org.gnome.Calculator": "accessories-calculator",
    "pinta": "applications-graphics",
    "org.gnome.Terminal": "utilities-terminal",
    "org.gnome.Nautilus": "system-file-manager",
    "org.gnome.SystemMonitor": "utilities-system-monitor",
    "org.gnome.Settings": "preferences-desktop",
    "org.gnome.Epiphany": "applications-internet",
    "calendar": "office-calendar",
    "camera": "camera-web",
    "characters": "accessories-character-map",
    "chat": "internet-chat",
    "fonts": "org.gnome.font-viewer",
    "games": "input-gaming",
    "help": "system-help",
    "music": "applications-multimedia",
    "photos": "multimedia-photo-viewer",
    "printers": "printer",
    "software": "system-software-update",
}
OWN_ENTRIES = tuple(PROGRAMS)[:8]
PINS = ("org.gnome.Nautilus", "calendar", "photos", "chat", "software")

ENGLISH = Language(
    folder="en",
    locale="C",
    programs=dict(zip(PROGRAMS, (
        "Text Editor", "Calculator", "Drawing", "Terminal", "Files", "System Monitor", "Settings",
        "Web", "Calendar", "Camera", "Characters", "Chat", "Fonts", "Games", "Help", "Music",
        "Photos", "Printers", "Software"))),
    files=("Documents/Accounts/", "Documents/Recipes/", "Documents/Travel/Hotel.pdf",
           "Documents/Accounts/Annual report 2025.ods", "Documents/Annual report.odt",
           "Documents/Garden plan.svg", "Documents/Letter to Ben.odt", "Documents/Notes.md",
           "Downloads/Weather report.pdf", "Pictures/Summer.jpg", "Projects/report.py"),
    tasks=((0, "Plan the trip to the lake", False), (1, "Book the hotel", True),
           (1, "Buy train tickets", False), (1, "Ask Ben to water the plants", False),
           (0, "Finish the annual report", False), (1, "Check the figures", True),
           (0, "Bring back the library books", True)),
    texts={"app": "ca", "calc": "2^10 + sqrt(16)", "cd": "~/Documents", "file": "report"},
    titles={"window": "Notepad", "app": "Calculator", "calc": "1028", "cd": "Open Documents",
            "file": "Annual report.odt"},
    controls={"todo": "Add a task and press Enter", "set": "Global Hotkey"},
)

CHINESE = Language(
    folder="zh-CN",
    locale="zh_CN",
    programs=dict(zip(PROGRAMS, (
        "文本编辑器", "计算器", "绘图", "终端", "文件", "系统监视器", "设置", "网络浏览器", "日历",
        "相机", "字符映射表", "聊天", "字体", "游戏", "帮助", "音乐", "照片", "打印机", "软件"))),
    files=("文档/家庭账目/", "文档/菜谱/", "文档/旅行/酒店订单.pdf", "文档/家庭账目/年度报告 2025.ods",
           "文档/年度报告.odt", "文档/花园设计.svg", "文档/给小本的信.odt", "文档/笔记.md",
           "下载/天气报告.pdf", "图片/夏天.jpg", "项目/报告.py"),
    tasks=((0, "安排湖边旅行", False), (1, "预订酒店", True), (1, "买火车票", False),
           (1, "请小本浇花", False), (0, "完成年度报告", False), (1, "核对数据", True),
           (0, "归还图书馆的书", True)),
    texts={"app": "zi", "calc": "2^10 + sqrt(16)", "cd": "~/文档", "file": "报告"},
    titles={"window": "记事本", "app": "文件资源管理器", "calc": "1028", "cd": "打开 文档",
            "file": "天气报告.pdf"},
    controls={"todo": "输入后回车新增任务", "set": "全局唤醒快捷键"},
)

LANGUAGES = (ENGLISH, CHINESE)
PAGES = ("todo", "set")
NAMES = ("window", "app", "calc", "cd", "file", *PAGES)


def icon_theme_version():
    """The version of the icon theme on this machine."""
    description = next(pathlib.Path("/usr/share/metainfo").glob("io.elementary.icons.*.xml"))
    return re.search('<release version="([^"]+)"', description.read_text())[1]


def path_of(language, name, theme):
    """The path of a picture within docs/pictures."""
    return pathlib.Path(language.folder, f"{name}-{theme}.png")


class PictureHome(Home):
    """The home of the made-up user."""

    def __init__(self, language, theme):
        super().__init__(make_folder())
        self.language = language
        self.fonts = self.folder / "fonts.conf"
        # Only one icon theme, whatever this machine has.
        icons = self.system / "icons"
        icons.unlink()
        icons.mkdir()
        (icons / ICON_THEME.name).symlink_to(ICON_THEME)
        self._add_programs()
        self._add_files()
        self._add_tasks()
        self.fonts.write_text(FONT_SETTINGS)
        (self.configuration / "kdeglobals").write_text(DESKTOP_SETTINGS)
        self.set_preferences(theme=theme, showFloatIcon="false")
        self.programs = self.folder / ".bin"
        self.programs.mkdir()
        self.hide_system_index(self.programs)

    def environment(self):
        environment = super().environment()
        return environment | {
            "PATH": f"{self.programs}:{environment['PATH']}",
            "LANG": f"{self.language.locale}.UTF-8",
            "LANGUAGE": self.language.locale,
            "FONTCONFIG_FILE": str(self.fonts),
            "QT_SCALE_FACTOR": str(FACTOR),
            # The platform theme that reads DESKTOP_SETTINGS.
            "QT_QPA_PLATFORMTHEME": "kde",
            "KDE_SESSION_VERSION": "5",
        }

    def _add_programs(self):
        for file, icon in PROGRAMS.items():
            hidden = {"NoDisplay": "true"} if file in OWN_ENTRIES else {}
            self.add_entry(self.language.programs[file], file=file, Icon=icon,
                           Categories="Graphics;2DGraphics;", **hidden)
        pins = [{"name": self.language.programs[file], "path": f"{self.applications}/{file}.desktop",
                 "iconPath": self._icon_file(PROGRAMS[file])} for file in PINS]
        folder = self.data / "Vaskel"
        folder.mkdir()
        (folder / "pins.json").write_text(json.dumps(pins))

    def _icon_file(self, icon):
        return str(next(ICON_THEME.glob(f"*/64/{icon}.svg")))

    def _add_files(self):
        for name in self.language.files:
            path = self.folder / name
            path.parent.mkdir(parents=True, exist_ok=True)
            if name.endswith("/"):
                path.mkdir()
            else:
                path.touch()

    def _add_tasks(self):
        # The creation times order the tasks; none of them shows.
        parents, tasks = [""], []
        for number, (level, title, completed) in enumerate(self.language.tasks):
            time = f"2026-03-02T10:{number:02}:00"
            tasks.append({"id": f"task-{number}", "parentId": parents[level], "title": title,
                          "completed": completed, "createdTime": time, "updatedTime": time})
            parents[level + 1:] = [f"task-{number}"]
        (self.data / "Vaskel/todo.json").write_text(json.dumps(tasks))


def make_folder():
    """Makes the home's folder; removes what a run that was killed has left."""
    if (HOME / MARK).exists():
        shutil.rmtree(HOME)
    try:
        HOME.mkdir(mode=0o700)
    except FileExistsError:
        sys.exit(f"{HOME} is in the way: the pictures need a home of this name. Please rename it.")
    (HOME / MARK).touch()
    return HOME


@contextlib.contextmanager
def only_run():
    """Waits for other runs on this machine, which use the same home."""
    folder = os.open(HOME.parent, os.O_RDONLY | os.O_DIRECTORY)
    try:
        fcntl.flock(folder, fcntl.LOCK_EX)
        yield
    finally:
        os.close(folder)


class Photographer:
    """Runs the program in one language and theme and takes its pictures."""

    def __init__(self, desktop, program, language, theme):
        self.desktop = desktop
        self.language = language
        self.home = PictureHome(language, theme)
        self.launcher = Launcher(desktop, program, self.home.environment())

    def close(self):
        self.launcher.stop()
        self.home.remove()

    def shots(self):
        """Yields the name and the pixels of each picture, with its width and height."""
        self.launcher.start()
        for name in NAMES:
            self._show(name)
            yield name, self._still_picture()

    def _show(self, name):
        if name in PAGES:
            self.launcher.open_page(name, self.language.controls[name])
            return
        self.launcher.empty_box()
        if name in self.language.texts:
            self.launcher.type(f"{name} ")
            self.launcher.enter(self.language.texts[name])
        title = self.language.titles[name]

        def shows():
            titles = self.launcher.titles()
            if titles[:1] != [title]:
                raise NotYet(f"the rows are {titles}")
            return True

        wait_until(shows, f"{name} shows {title!r}")

    def _still_picture(self):
        """The window once it has stopped changing."""
        self.desktop.move_pointer(0, 0)
        last = None

        def stands_still():
            nonlocal last
            previous, last = last, self._picture()
            return previous == last

        wait_until(stands_still, "the window stands still")
        return last

    def _picture(self):
        x, y, width, height = self.launcher.geometry()
        return width, height, self.desktop.pixels(x, y, width, height)

    def icon_places(self):
        """The left, top, right and bottom of each icon in the picture: a square at the left end of
        each pinned program and of each visible row."""
        content = self.launcher.content()
        pins = [self.language.programs[file] for file in PINS]
        places = [self._place(button) for button in find(content, Atspi.Role.PUSH_BUTTON)
                  if button.get_name() in pins]
        for rows in find(content, Atspi.Role.LIST):
            bottom = self._place(rows, square=False)[3]
            places += [(left, top, right, min(down, bottom)) for left, top, right, down
                       in map(self._place, children(rows)) if top < bottom]
        return places

    def _place(self, accessible, square=True):
        x, y, *_ = self.launcher.geometry()
        extents = accessible.get_extents(Atspi.CoordType.SCREEN)
        width = extents.height if square else extents.width
        left, top = extents.x * FACTOR - x, extents.y * FACTOR - y
        return left, top, left + width * FACTOR, top + extents.height * FACTOR


def all_shots(desktop, program):
    """Yields the path of each picture within docs/pictures, its width, its height, its pixels and the
    places of the icons in it."""
    for language, theme in itertools.product(LANGUAGES, THEMES):
        photographer = Photographer(desktop, program, language, theme)
        try:
            for name, shot in photographer.shots():
                places = photographer.icon_places() if name not in PAGES else []
                yield path_of(language, name, theme), *shot, places
        finally:
            photographer.close()


def save(path, width, height, pixels):
    """Writes pixels as a small PNG file."""
    path.parent.mkdir(parents=True, exist_ok=True)
    subprocess.run(["convert", "-size", f"{width}x{height}", "-depth", "8", "rgb:-", "-strip",
                    "-define", "png:compression-level=9", f"png:{path}"], input=pixels, check=True,
                   timeout=PATIENCE)


def main():
    program, folder = map(pathlib.Path, sys.argv[1:])
    with only_run():
        desktop = Desktop(SCREEN)
        try:
            for path, *shot, _ in all_shots(desktop, program.resolve()):
                save(folder / path, *shot)
                print(folder / path)
        finally:
            desktop.close()
    (folder / ICON_THEME_VERSION).write_text(f"{icon_theme_version()}\n")


if __name__ == "__main__":
    main()
