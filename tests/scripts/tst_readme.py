# SPDX-License-Identifier: GPL-3.0-or-later
"""Compares README.md with README.zh-CN.md: what does not depend on the language must be the same."""

import dataclasses
import itertools
import pathlib
import re
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
ENGLISH = "README.md"
CHINESE = "README.zh-CN.md"

HEADING = re.compile(r"(#+) (.+)")
CODE = re.compile(r"`([^`]+)`")
KEY = re.compile(r"<kbd>(.+?)</kbd>")
LINK = re.compile(r"\]\(([^)]+)\)")
PICTURE = re.compile(r'(?:src|srcset)="([^"]+)"')
CHINESE_CHARACTER = re.compile(r"[\u4e00-\u9fff]")
LICENCE = "GPL-3.0-or-later"
LETTER = re.compile(r"[A-Za-z]")


def read(name):
    return (ROOT / name).read_text("utf-8")


@dataclasses.dataclass
class Section:
    """What is below a heading, up to the next one."""

    level: int
    title: str
    lines: list = dataclasses.field(default_factory=list)

    def prose(self):
        return "\n".join(line for line in self.lines if not is_example(line))

    def examples(self):
        return [line for line in self.lines if is_example(line)]

    def tables(self):
        """A list of tables, each a list of rows, each a list of cells."""
        groups = itertools.groupby(self.lines, key=lambda line: line.startswith("|"))
        return [[line.strip("|").split("|") for line in lines] for is_table, lines in groups
                if is_table]


def is_example(line):
    return line.startswith("    ")


def sections(name):
    found = []
    for line in read(name).splitlines():
        heading = HEADING.fullmatch(line)
        if heading:
            found.append(Section(len(heading[1]), heading[2]))
        elif found:
            found[-1].lines.append(line)
    return found


def pairs():
    """The sections of both pages side by side."""
    return zip(sections(ENGLISH), sections(CHINESE))


def commands(text):
    """The first words of the code; the words after a command are in the reader's language."""
    return sorted(code.split()[0] for code in CODE.findall(text))


def in_every_language(target):
    """The target of a link or picture without the language in its name."""
    return target.replace(".zh-CN.md", ".md").replace("/zh-CN/", "/en/")


def anchors(name):
    """What a link can have after the number sign."""
    titles = re.findall(r"^#+ (.+)$", read(name), re.MULTILINE)
    return {re.sub(r"[^\w\- ]", "", title.lower()).replace(" ", "-") for title in titles}


class Readme(unittest.TestCase):
    maxDiff = None

    def same(self, read_section):
        for english, chinese in pairs():
            with self.subTest(section=english.title):
                self.assertEqual(read_section(english), read_section(chinese))

    def test_headings_agree(self):
        def shape(name):
            return [(section.level, CODE.findall(section.title)) for section in sections(name)]
        self.assertGreater(len(shape(ENGLISH)), 10)
        self.assertEqual(shape(ENGLISH), shape(CHINESE))

    def test_tables_have_the_same_cells(self):
        def contents(section):
            return [[[(KEY.findall(cell), commands(cell)) for cell in row] for row in table]
                    for table in section.tables()]
        self.same(contents)

    def test_keys_agree(self):
        self.same(lambda section: sorted(KEY.findall(section.prose())))

    def test_keys_in_the_text_agree(self):
        names = re.compile(r"\b(?:(?:Ctrl|Alt)\+[A-Z]\w*|Enter|Tab|Space|Backspace|Insert|Delete"
                           r"|F\d+)(?![A-Za-z+])", re.ASCII)
        self.same(lambda section: sorted(set(names.findall(section.prose()))))

    def test_commands_agree(self):
        self.same(lambda section: commands(section.prose()))

    def test_examples_agree(self):
        self.same(Section.examples)

    def test_links_and_pictures_agree(self):
        def targets(section):
            text = section.prose()
            return sorted(in_every_language(target)
                          for target in LINK.findall(text) + PICTURE.findall(text)
                          if target not in (ENGLISH, CHINESE))
        self.same(targets)

    def test_each_section_is_translated(self):
        for english, chinese in pairs():
            with self.subTest(section=english.title):
                if LETTER.search(english.prose().replace(LICENCE, "")):
                    self.assertRegex(chinese.prose(), CHINESE_CHARACTER)

    def test_links_lead_somewhere(self):
        for name in (ENGLISH, CHINESE):
            for target in LINK.findall(read(name)):
                path, _, anchor = target.partition("#")
                if not target.startswith("https:"):
                    with self.subTest(page=name, target=target):
                        self.assertTrue((ROOT / path).is_file())
                        self.assertTrue(not anchor or anchor in anchors(path))

    def test_each_picture_is_shown_in_its_language_and_for_both_themes(self):
        for name, folder in ((ENGLISH, "en"), (CHINESE, "zh-CN")):
            shown = PICTURE.findall(read(name))
            files = [path.relative_to(ROOT) for path in (ROOT / "docs/pictures" / folder).iterdir()]
            self.assertEqual(sorted(shown), sorted(map(str, files)))


if __name__ == "__main__":
    unittest.main(verbosity=2)
