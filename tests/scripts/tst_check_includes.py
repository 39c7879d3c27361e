# SPDX-License-Identifier: GPL-3.0-or-later
"""Tests scripts/check-includes with a small tree for each case.

usage: tst_check_includes.py [unittest's own]
"""

import pathlib
import subprocess
import tempfile
import unittest

SCRIPT = pathlib.Path(__file__).resolve().parents[2] / "scripts/check-includes"

# The rules come from the page, so this table differs from that of the project.
TABLE = """
| Folder | What it holds | What it includes |
|---|---|---|
| `start/` | the start | everything, log |
| `window/` | what is seen | `model/`, `system/`, Frame |
| `model/` | what is known | `store/` (`Reader` alone) |
| `store/`, `colour/` | what is kept | Qt alone |
| `system/` | the system | Qt alone |
| `compat/` | stand-ins | Qt alone |
| `docs/` | the page | |
| `tests/` | the tests | everything |
"""
RULES = """
Every version of Qt is known to `system/Version.h`, which any
folder may include. The operating system appears only in `system/one/`,
`compat/` and `tests/`.
"""
FILES = {
    "start/main.cpp": '#include "window/Window.h"\n#include <log/log.h>\n#include <Frame>\n',
    "window/Window.h": "#pragma once\n#include <QtWidgets/QWidget>\n#include <memory>\n",
    "window/Window.cpp": '#include "window/Window.h"\n#include "model/Reader.h"\n'
                         "#include <Frame>\n#include <qnamespace.h>\n",
    "model/Reader.h": "#pragma once\n",
    "model/Reader.cpp": '#include "model/Reader.h"\n#include "store/Store.h"\n',
    "model/Writer.cpp": '#include "model/Reader.h"\n',
    "store/Store.h": "#pragma once\n",
    "colour/Colour.h": '#pragma once\n#include "system/Version.h"\n',
    "system/Version.h": "#pragma once\n",
    "system/Link.h": "#pragma once\n",
    "system/one/Link.cpp": '#include "system/Link.h"\n#include "system/one/Handle.h"\n'
                           "#include <windows.h>\n#ifdef Q_OS_WIN\n#endif\n",
    "system/one/Handle.h": "#pragma once\n#include <sys/stat.h>\n",
    "compat/Frame/Frame": '#include "frame.h"\n',
    "compat/Frame/frame.h": "#pragma once\n#include <X11/Xlib.h>\n",
    "tests/tst_Window.cpp": '#include "helpers/Helper.h"\n#include <unistd.h>\n',
    "README.md": "Not in a folder.\n",
    ".ci/run": "Not a folder of the program.\n",
}


class CheckIncludes(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="vaskel-includes-")
        self.addCleanup(folder.cleanup)
        self.tree = pathlib.Path(folder.name)
        subprocess.run(["git", "init", "--quiet", self.tree], check=True)
        for path, text in FILES.items():
            self.write(path, text)
        self.write_page(TABLE)

    def write(self, path, text):
        (self.tree / path).parent.mkdir(parents=True, exist_ok=True)
        (self.tree / path).write_text(text)

    def write_page(self, table, rules=RULES):
        self.write("docs/ARCHITECTURE.md", f"# A page\n{table}{rules}")

    def faults(self):
        """The output of the script; checks that it matches the exit status."""
        result = subprocess.run([SCRIPT, self.tree], stdout=subprocess.PIPE, text=True)
        lines = result.stdout.splitlines()
        self.assertEqual(result.returncode, 1 if lines else 0, result.stdout)
        return lines

    def fails_with(self, *parts):
        """Checks that there is one fault with all these parts."""
        faults = self.faults()
        self.assertEqual(len(faults), 1, faults)
        for part in parts:
            self.assertIn(part, faults[0])

    def test_accepts_what_the_table_allows(self):
        self.assertEqual(self.faults(), [])

    def test_reports_a_forbidden_edge_by_file_and_line(self):
        self.write("window/Window.h", '#pragma once\n\n# include  "store/Store.h"\n')
        self.fails_with("window/Window.h:3: ", '"store/Store.h"',
                        "window/ include: `model/`, `system/`, Frame")

    def test_reports_each_forbidden_edge(self):
        self.write("store/Store.h", '#include "model/Reader.h"\n#include "window/Window.h"\n')
        self.assertEqual([fault.split(" ")[0] for fault in self.faults()[:2]],
                         ["store/Store.h:1:", "store/Store.h:2:"])

    def test_lets_no_folder_include_the_start(self):
        self.write("start/Log.h", "#pragma once\n")
        self.write("window/Window.h", '#include "start/Log.h"\n')
        self.fails_with("window/Window.h:1: ", '"start/Log.h"')

    def test_finds_a_forbidden_edge_in_any_form(self):
        for include in ('"../store/Store.h"', "<store/Store.h>"):
            with self.subTest(include):
                self.write("window/Window.h", f"#include {include}\n")
                self.fails_with("window/Window.h:1: ", include)

    def test_allows_the_edge_of_a_class_only_to_that_class(self):
        self.write("model/Writer.cpp", '#include "store/Store.h"\n')
        self.fails_with("model/Writer.cpp:1: ", '"store/Store.h"', "(`Reader` alone)")

    def test_reports_an_edge_of_a_missing_class(self):
        self.write_page(TABLE.replace("`Reader`", "`Editor`"))
        self.write("model/Reader.cpp", "\n")
        self.fails_with("docs/ARCHITECTURE.md:7: ", "model/Editor.h")

    def test_reports_an_include_of_an_unknown_folder(self):
        self.write("window/Window.h", '#include "nowhere/Thing.h"\n')
        self.fails_with("window/Window.h:1: ", '"nowhere/Thing.h"')

    def test_reports_a_folder_without_a_row(self):
        self.write("stray/Thing.h", "#pragma once\n")
        self.fails_with("no row for stray/")

    def test_reports_a_row_without_a_folder(self):
        self.write_page(TABLE + "| `stray/` | nothing yet | Qt alone |\n")
        self.fails_with("docs/ARCHITECTURE.md:13: ", "no folder stray/")

    def test_reports_an_edge_to_a_folder_without_a_row(self):
        self.write_page(TABLE.replace("`model/`, `system/`", "`model/`, `system/`, `stray/`"))
        self.fails_with("docs/ARCHITECTURE.md:6: ", "no row for stray/")

    def test_reports_a_source_in_a_folder_without_sources(self):
        self.write("docs/Example.cpp", "\n")
        self.fails_with("docs/Example.cpp: ")

    def test_allows_system_headers_only_in_their_folders(self):
        headers = ("windows.h", "unistd.h", "xcb/xcb.h", "X11/Xlib.h", "gio/gio.h",
                   "QDBusConnection", "QtDBus/QtDBus", "QtCore/qt_windows.h")
        for path in ("window/Window.h", "system/Version.h", "start/main.cpp"):
            with self.subTest(path):
                self.write(path, "".join(f"#include <{header}>\n" for header in headers))
                self.assertEqual([fault.split(">")[0] for fault in self.faults()],
                                 [f"{path}:{line}: #include <{header}"
                                  for line, header in enumerate(headers, 1)])
                self.write(path, FILES[path])

    def test_allows_system_names_only_in_their_folders(self):
        code = ("#ifdef Q_OS_WIN", "#if defined(_WIN32)", "#if __linux__",
                'QSettings run("HKEY_CURRENT_USER");')
        self.write("window/Window.h", "\n".join(code))
        faults = self.faults()
        self.assertEqual([fault.split(" ")[0] for fault in faults],
                         [f"window/Window.h:{line}:" for line in range(1, len(code) + 1)])
        for fault in faults:
            self.assertIn("the operating system appears only in system/one/", fault)

    def test_ignores_a_comment_that_names_a_system(self):
        self.write("window/Window.h", "#pragma once // as without Q_OS_WIN\n")
        self.assertEqual(self.faults(), [])

    def test_allows_headers_of_a_system_only_in_its_folder(self):
        self.write("window/Window.h", '#include "system/one/Handle.h"\n')
        self.fails_with("window/Window.h:1: ", "only the files of system/one/")

    def test_lets_any_folder_include_only_the_header_of_versions(self):
        self.write("store/Store.h", '#include "system/Version.h"\n')
        self.assertEqual(self.faults(), [])
        self.write("store/Store.h", '#include "system/Link.h"\n')
        self.fails_with("store/Store.h:1: ", "store/ include: Qt alone")

    def test_reads_the_header_of_versions_from_the_page(self):
        self.write_page(TABLE, RULES.replace("Version.h", "Link.h"))
        self.fails_with("colour/Colour.h:2: ", '"system/Version.h"')

    def test_lets_a_folder_of_qt_alone_include_nothing_else(self):
        for include in ('"store/Store.h"', "<Frame>", "<log/log.h>"):
            with self.subTest(include):
                self.write("colour/Colour.h", f"#include {include}\n")
                self.fails_with("colour/Colour.h:1: ", include)

    def test_lets_only_the_named_folder_include_a_library(self):
        self.write_page(TABLE.replace("`store/` (`Reader` alone)", "`store/` (`Reader` alone), crypt"))
        self.write("model/Writer.cpp", "#include <crypt.h>\n#include <crypt/more.h>\n")
        self.assertEqual(self.faults(), [])
        self.write("store/Store.h", "#include <crypt.h>\n")
        self.fails_with("store/Store.h:1: ", "<crypt.h>", "the table does not name it for store/")

    def test_reports_a_cycle_of_the_table(self):
        self.write_page(TABLE.replace("what is kept | Qt alone", "what is kept | `window/`"))
        self.fails_with("cycle", "window/ -> model/")

    def test_reports_a_cycle_through_the_edge_of_one_class(self):
        self.write_page(TABLE.replace("| `store/`, `colour/` | what is kept | Qt alone |",
                                      "| `store/` | kept | `model/` (`Store` alone) |\n"
                                      "| `colour/` | shown | Qt alone |"))
        self.assertEqual(self.faults()[0].split(":")[0], "a cycle of includes")
        self.write("store/Other.h", "#pragma once\n")
        self.write("model/Reader.cpp", '#include "store/Other.h"\n')
        self.assertEqual(self.faults(), [])

    def test_reports_an_unreadable_cell(self):
        self.write_page(TABLE.replace("`model/`, `system/`", "`model/`; `system/`"))
        self.assertIn("docs/ARCHITECTURE.md:6: cannot read '`model/`; `system/`'", self.faults())

    def test_fails_without_the_table_and_the_rules(self):
        self.write_page("", "")
        faults = "\n".join(self.faults())
        for part in ("no table of folders", "which any folder may include",
                     "where the operating system appears"):
            self.assertIn(part, faults)


if __name__ == "__main__":
    unittest.main()
