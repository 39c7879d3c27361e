# SPDX-License-Identifier: GPL-3.0-or-later
"""What a blind user hears, by the screen reader Orca."""

import threading

from case import EndToEndCase, main
from speech import Orca
from tst_update import UpdateCase


class SpeechCase(EndToEndCase):
    orca = None

    def setUp(self):
        self.addCleanup(self.close_deaf_orca)
        super().setUp()
        if not SpeechCase.orca:
            SpeechCase.orca = Orca(self.desktop)

    @classmethod
    def close_deaf_orca(cls):
        """Newer versions can miss what a program does that starts after another one has ended."""
        if SpeechCase.orca and SpeechCase.orca.version >= 48:
            SpeechCase.orca.close()
            SpeechCase.orca = None

    def start(self):
        self.orca.forget()
        super().start()
        self.hears(*self.words("window", "Vaskel"),
                   *self.words("field", "Search apps or type cmd space args..."))

    def words(self, kind, *texts):
        return self.orca.words(kind, *texts)

    def items(self, *texts):
        return [words for text in texts for words in self.words("item", text)]

    def results(self, count):
        return self.words("layered pane") + self.words("list", "Results", count)

    def hears(self, *texts):
        """Waits until these are the last texts, and forgets them. Before them may be what a key in
        the middle of a word has brought."""
        def tail():
            return self.orca.said()[-len(texts):]
        self.becomes(tail, list(texts))
        self.orca.forget()

    def hears_among_others(self, *texts):
        """Waits until these were said, in any order, and forgets everything."""
        def has_said_these():
            said = self.orca.said()
            return set(texts) <= set(said) or said
        self.becomes(has_said_these, True)
        self.orca.forget()

    def hears_only(self, *texts):
        self.becomes(self.orca.said, list(texts))
        self.orca.forget()

    def hears_notified(self, notification, *texts, only=False):
        """Like hears() or hears_only(), with a notification. Older versions say it before the texts,
        newer ones when they have nothing more urgent to say."""
        if self.orca.version >= 48:
            self._hears_sometime(notification, texts, only)
            return
        hears = self.hears_only if only else self.hears
        hears(*self.words("notification", notification), *texts)

    def hears_page(self, command, *texts):
        """Like hears(), after a command has opened its page. Older versions have said the command
        before its row and the page."""
        if self.orca.version >= 48:
            self._hears_sometime(command, texts, False)
        else:
            self.hears(*texts)

    def _hears_sometime(self, notification, texts, only):
        words = self.words("notification", notification)

        def heard():
            others = [text for text in self.orca.said() if text not in words]
            return (len(self.orca.said()) - len(others),
                    others if only else others[-len(texts):])
        self.becomes(heard, (1, list(texts)))
        self.orca.forget()


class Window(SpeechCase):
    def setUp(self):
        super().setUp()
        self.home.add_recorder("Recorder")
        self.home.add_recorder("Reader")
        self.start()

    def test_row_on_every_change(self):
        self.launcher.press("Down")
        # Older versions count the rows twice.
        count = "10 items" if self.orca.version < 48 else "5 items"
        self.hears_only(*self.results(count), "Calculator")
        self.launcher.press("Down")
        self.hears_only("Paint")
        self.launcher.press("Up")
        self.hears_only("Calculator")
        self.launcher.type("recor")
        self.hears(*self.items("Recorder Start Menu"))
        self.launcher.press("ctrl+a")
        self.launcher.type("reade")
        self.hears(*self.items("Reader Start Menu"))

    def test_badge(self):
        self.launcher.type("calc ")
        self.hears_notified("Command calc", *self.results("1 item"), *self.items(
            "Enter an expression to calculate e.g. 1+2, sqrt(16), 2^10"))
        self.launcher.type("1+2")
        self.hears(*self.items("3 1+2 = 3"))
        self.launcher.empty_box()
        self.hears("Notepad")
        self.launcher.type("todo")
        self.hears_notified("Command todo",
                            *self.items("Task Management Manage TODO list and subtasks"))

    def test_pages(self):
        self.launcher.open_page("user", "Save")
        navigation = self.words("list", "Settings", "3 items")
        self.hears_page("Command user", *navigation, *self.items("User"))
        self.launcher.tab_to("Settings")
        self.hears(*navigation, *self.row_at_the_list("User"))
        self.launcher.press("Down")
        self.hears_only(*self.items("Settings"))

    def test_saved(self):
        self.launcher.open_page("user", "Save")
        self.hears_page("Command user", *self.words("list", "Settings", "3 items"),
                        *self.items("User"))
        self.launcher.tab_to("Save")
        self.hears(*self.words("button", "Save"))
        self.launcher.press("space")
        self.hears_among_others(*self.words("notification", "Saved"))

    def row_at_the_list(self, title):
        """Newer versions say it again when the list gets the focus."""
        return self.items(title) if self.orca.version >= 48 else []


class Tasks(SpeechCase):
    def setUp(self):
        super().setUp()
        self.start()
        self.launcher.open_page("todo", "Add")
        self.hears_page("Command todo", *self.words("field", "Add a task and press Enter"))
        for title in ("water the plants", "feed the cat"):
            self.launcher.type(title)
            self.launcher.press("Return")
            self.hears(*self.items(title, "Active"))

    def test_state(self):
        self.launcher.tab_to("Active")
        self.launcher.press("Down")
        self.launcher.tab_to("Todo")
        self.hears(*self.words("tree", "Todo"))
        self.launcher.press("Down")
        self.hears_only(*self.items("feed the cat", "Active"))
        self.launcher.press("Up")
        self.hears_only(*self.items("water the plants", "Active"))
        self.launcher.press("space")
        self.hears_notified("Completed", *self.items("water the plants", "Completed"), only=True)
        self.launcher.press("Down")
        self.hears_only(*self.items("feed the cat", "Active"))
        self.launcher.press("Up", "space")
        self.hears_notified("Active", *self.items("water the plants", "Active"))
        self.launcher.press("Delete")
        self.hears_only(*self.items("feed the cat", "Active"))
        self.launcher.press("ctrl+z")
        self.hears(*self.items("water the plants", "Active"))


class Dialogs(SpeechCase, UpdateCase):
    def start(self):
        super().start()
        self.wait_for_the_question()
        self.hears(*self.words("alert", "Update available"),
                   "New version 2.0 is available. - one - two Update now?")

    def test_question_and_error(self):
        self.server.offer()
        self.start()
        self.answer("Yes")
        self.hears(*self.words("button", "OK"), *self.items(
            f"Error transferring {self.server.address}/new - server replied: Not Found"))

    def test_progress(self):
        may_begin, is_announced, may_end = (threading.Event() for _ in range(3))
        for event in (may_begin, is_announced, may_end):
            self.addCleanup(event.set)
        size = 40_000  # so little that no value between 0 and 50 percent is shown
        self.server.answer_in_parts("/new", size, {size - 1: is_announced, size // 2: may_end},
                                    may_begin)
        self.server.offer()
        self.start()
        self.answer("Yes")
        # Orca may miss a dialog that shows while the focus is on its way back to the window.
        self.hears_among_others(*self.words("window", "Vaskel"))
        may_begin.set()
        # Orca may speak a value of the dialog before or after it.
        self.hears_among_others(*self.words("dialog", "Downloading update..."))
        is_announced.set()
        self.hears("50 percent.")


if __name__ == "__main__":
    try:
        main()
    finally:
        if SpeechCase.orca:
            SpeechCase.orca.close()
