# SPDX-License-Identifier: GPL-3.0-or-later
import shutil

from case import EndToEndCase, main

HINT = ("Enter a filename to search", "Powered by plocate for fast search")


class Files(EndToEndCase):
    """Ignores the system's database, which differs on each machine."""

    def setUp(self):
        super().setUp()
        self.home.add_opener("text-editor", "text/plain;")
        self.docs = self.home.folder / "Docs"
        self.docs.mkdir()
        for name in ("Quarterly Zebra.txt", "zebra herd.md", "other.txt"):
            (self.docs / name).write_text("text")
        self.programs = self.home.folder / "bin"
        self.programs.mkdir()
        self.launcher.environment["PATH"] = f"{self.programs}:{self.launcher.environment['PATH']}"

    def search(self, text):
        """Types until the index answers, since its database may not be complete yet."""
        self.launcher.type(text)

        def answers():
            rows = self.launcher.rows()
            if rows and rows[0][0] == "Search failed":
                self.launcher.type("x")
                self.launcher.press("BackSpace")
            return bool(rows) and rows[0] != HINT and rows[0][0] != "Search failed"

        self.becomes(answers, True)

    def test_finds_files_and_opens_one(self):
        self.home.hide_system_index(self.programs)
        self.start()
        self.search("file zebra")
        self.becomes(lambda: sorted(self.launcher.rows()),
                     [("Quarterly Zebra.txt", str(self.docs)), ("zebra herd.md", str(self.docs))])
        self.becomes(self.launcher.status, "file | File search (Everything)")
        self.picture("found")

        self.launcher.click_row("Quarterly Zebra.txt", times=2)
        self.hides()
        self.assertEqual(self.is_recorded("text-editor")["arguments"],
                         [str(self.docs / "Quarterly Zebra.txt")])

    def test_repeats_the_search_when_the_database_is_complete(self):
        self.home.hide_system_index(self.programs)
        go = self.home.folder / "go"
        real = shutil.which("updatedb.plocate", path="/usr/sbin:/usr/bin")
        updater = self.programs / "updatedb.plocate"
        updater.write_text(f'#!/bin/sh\nwhile [ ! -e {go} ]; do sleep 0.05; done\n'
                           f'exec {real} "$@"\n')
        updater.chmod(0o755)
        self.start()
        self.launcher.type("file zebra")
        self.shows_rows(("Search failed", "Error code: 104"))
        go.touch()
        self.becomes(lambda: sorted(self.launcher.titles()),
                     ["Quarterly Zebra.txt", "zebra herd.md"])

    def test_shows_a_file_in_its_folder(self):
        self.home.add_opener("file-manager", "inode/directory;")
        self.home.hide_system_index(self.programs)
        self.start()
        self.search("file herd")
        self.shows_titles("zebra herd.md")
        self.launcher.press("ctrl+c")
        self.becomes(self.desktop.clipboard, str(self.docs / "zebra herd.md"))
        self.launcher.press("ctrl+Return")
        self.hides()
        self.assertEqual(self.is_recorded("file-manager")["arguments"], [str(self.docs)])
        self.assertIsNone(self.home.recorded("text-editor"))

    def test_hints_and_finds_nothing(self):
        self.home.hide_system_index(self.programs)
        self.start()
        self.launcher.type("file")
        self.shows_rows(HINT)
        self.picture("hint")
        self.launcher.press("Return")
        self.search(" no-such-name")
        self.shows_rows(("No files found", " no-such-name"))
        self.picture("nothing")

    def test_says_that_the_search_failed(self):
        program = self.programs / "plocate"
        program.write_text("#!/bin/sh\nexit 2\n")
        program.chmod(0o755)
        self.start()
        self.launcher.type("file name")
        self.becomes(lambda: self.launcher.titles(), ["Search failed"])
        self.picture("failed-search")
        self.launcher.press("Return")
        # The next key still reaches the window.
        self.launcher.type("x")
        self.becomes(self.launcher.text, " namex")
        self.assertTrue(self.launcher.is_visible())

    def test_says_that_there_is_no_index(self):
        (self.programs / "setpriv").symlink_to(shutil.which("setpriv"))
        self.launcher.environment["PATH"] = str(self.programs)
        self.start()
        self.launcher.type("file name")
        self.shows_rows(("File search is only available on Windows",
                         "Everything SDK only supports Windows"))
        self.picture("no-index")


if __name__ == "__main__":
    main()
