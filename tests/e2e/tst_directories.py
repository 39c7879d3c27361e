# SPDX-License-Identifier: GPL-3.0-or-later
from case import EndToEndCase, main


class Directories(EndToEndCase):
    def setUp(self):
        super().setUp()
        self.home.add_opener("file-manager", "inode/directory;")
        self.home.add_opener("text-editor", "text/plain;")
        self.docs = self.home.folder / "Docs"
        (self.docs / "Letters").mkdir(parents=True)
        (self.docs / "archive").mkdir()
        (self.docs / "notes.txt").write_text("notes")
        (self.docs / "Makefile").write_text("all:")
        (self.docs / ".hidden").write_text("hidden")
        self.start()

    def shows_docs(self):
        self.shows_rows(("Open Docs", str(self.docs)), ("Letters", "Folder"),
                        ("archive", "Folder"), ("Makefile", ""), ("notes.txt", "TXT"))

    def test_lists_the_home_folder_until_a_folder_is_named(self):
        self.launcher.type("cd")
        self.becomes(self.launcher.status, "cd | Directory browser and navigation")
        self.becomes(lambda: self.launcher.rows()[0],
                     (f"Open {self.home.folder.name}", str(self.home.folder)))
        self.launcher.type(" Doc")
        self.becomes(lambda: self.launcher.rows()[0],
                     (f"Open {self.home.folder.name}", str(self.home.folder)))
        self.launcher.type("s")
        self.shows_docs()
        self.picture("folder")

    def test_opens_the_folder_itself(self):
        self.launcher.type("cd ~/Docs")
        self.shows_docs()
        self.launcher.press("Return")
        self.hides()
        self.assertEqual(self.is_recorded("file-manager")["arguments"], [str(self.docs)])

    def test_opens_a_folder_in_it(self):
        self.launcher.type("cd ~/Docs")
        self.shows_docs()
        self.launcher.press("Down")
        self.becomes(self.launcher.current_row, 1)
        self.launcher.press("Return")
        self.hides()
        self.assertEqual(self.is_recorded("file-manager")["arguments"],
                         [str(self.docs / "Letters")])

    def test_opens_a_file_in_it(self):
        self.launcher.type("cd ~/Docs")
        self.shows_docs()
        self.launcher.click_row("notes.txt", times=2)
        self.hides()
        self.assertEqual(self.is_recorded("text-editor")["arguments"],
                         [str(self.docs / "notes.txt")])
        self.assertIsNone(self.home.recorded("file-manager"))

    def test_goes_into_a_folder_and_back(self):
        (self.docs / "archive" / "2025").mkdir()
        self.launcher.type("cd ~/Docs")
        self.shows_docs()
        self.launcher.press("ctrl+End", "Up", "Up")
        self.becomes(self.launcher.current_row, 2)
        self.launcher.press("Tab")
        self.shows_titles("Open archive", "2025")
        self.becomes(self.launcher.text, f"{self.docs}/archive/")
        self.launcher.press("alt+Up")
        self.shows_docs()
        self.assertEqual(self.launcher.text(), f"{self.docs}/")

    def test_stays_open_at_enter_on_a_file(self):
        self.launcher.type("cd ~/Docs/notes.txt")
        self.shows_rows(("Directory does not exist", " ~/Docs/notes.txt"))
        self.picture("file")
        self.launcher.press("Return")
        self.launcher.press(*["BackSpace"] * len("/notes.txt"))
        self.shows_docs()

    def test_lists_ten_thousand_files(self):
        many = self.home.folder / "Many"
        many.mkdir()
        for number in range(10000):
            (many / f"{number:05}").touch()
        self.launcher.paste("cd ~/Many")
        self.becomes(self.launcher.row_count, 10001)
        self.picture("many")
        self.launcher.press("BackSpace")
        self.becomes(lambda: self.launcher.row_count() < 100, True)


if __name__ == "__main__":
    main()
