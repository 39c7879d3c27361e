# SPDX-License-Identifier: GPL-3.0-or-later
import datetime
import os

from case import EndToEndCase, main
from launcher import BUILTINS


class Log(EndToEndCase):
    def setUp(self):
        super().setUp()
        self.folder = self.home.data / "Vaskel"

    def lines(self):
        """The lines as (date and time, logger, level, text), also across midnight."""
        text = "".join(path.read_text() for path in sorted(self.folder.glob("Vaskel_*.log")))
        return [line.split("] ", 3) for line in text.splitlines()]

    def names_of_today(self):
        """The names of today's file, and of tomorrow's in case the day ends now."""
        today = datetime.date.today()
        return [self.folder / f"Vaskel_{day}.log"
                for day in (today, today + datetime.timedelta(days=1))]

    def works(self, console=None):
        self.launcher.attach(self.launcher.start_process(console=console))
        self.shows_titles(*BUILTINS)
        self.launcher.type("note")
        self.shows_titles("Notepad")

    def test_begins_before_all_else_and_goes_on_at_the_next_start(self):
        self.works()
        first = self.lines()
        self.assertEqual(first[0][1:], ["[Vaskel", "[info",
                                        f"Logger initialized, log dir: {self.folder}"])
        self.assertTrue(any("Plugin registered" in line[3] for line in first[1:]), first)
        self.assertEqual([line[1] for line in first], ["[Vaskel"] * len(first))

        self.launcher.kill()
        self.works()
        self.assertEqual(self.lines()[:len(first)], first)
        self.assertEqual([line[3] for line in self.lines()].count(first[0][3]), 2)

    def test_tells_the_order_of_the_start(self):
        self.works()
        texts = [line[3] for line in self.lines()]
        # The last plugin reads the tasks before it is registered.
        steps = ["Logger initialized", "Plugin registered: \"app\"", "Plugin registered: \"calc\"",
                 "Plugin registered: \"cd\"", "Plugin registered: \"set\"",
                 "Plugin registered: \"user\"", "Plugin registered: \"plugin\"",
                 "Plugin registered: \"file\"", "Task storage not found",
                 "Plugin registered: \"todo\""]
        found = [next(step for step in steps if step in text) for text in texts
                 if any(step in text for step in steps)]
        self.assertEqual(found, steps)

    def test_removes_what_is_older_than_seven_days(self):
        self.folder.mkdir()
        old, young = (self.folder / f"Vaskel_{datetime.date.today() - datetime.timedelta(days)}.log"
                      for days in (9, 6))
        other = self.folder / "Vaskel_notes.log"
        for path in (old, young, other):
            path.touch()
        self.start()
        self.assertFalse(old.exists())
        self.assertTrue(young.exists())
        self.assertTrue(other.exists())

    def test_works_where_nobody_reads_the_console(self):
        reader, writer = os.pipe()
        os.close(reader)
        with os.fdopen(writer, "w") as console:
            self.works(console)
        self.assertTrue(any("Plugin registered" in line[3] for line in self.lines()))

    def test_works_on_a_full_disk(self):
        self.folder.mkdir()
        for path in self.names_of_today():
            path.symlink_to("/dev/full")
        self.works()

    def test_works_where_the_file_cannot_be_opened(self):
        for path in self.names_of_today():
            path.mkdir(parents=True)
        self.works()

    def test_works_where_the_folder_cannot_be_made(self):
        self.folder.touch()
        self.works()


if __name__ == "__main__":
    main()
