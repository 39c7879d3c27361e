# SPDX-License-Identifier: GPL-3.0-or-later
"""What a blind user hears, by the screen reader Orca."""

import threading

from case import EndToEndCase, main
from speech import Orca
from tst_update import UpdateCase

RESULTS = ("layered pane", "Results.")


class SpeechCase(EndToEndCase):
    orca = None

    def setUp(self):
        super().setUp()
        if not SpeechCase.orca:
            SpeechCase.orca = Orca(self.desktop)

    def start(self):
        self.orca.forget()
        super().start()
        self.hears("Vaskel frame.", "Search apps or type cmd space args dot dot dot text.")

    def hears(self, *texts):
        """Waits until these are the last texts, and forgets them. Before them may be what a key in
        the middle of a word has brought."""
        def tail():
            return self.orca.said()[-len(texts):]
        self.becomes(tail, list(texts))
        self.orca.forget()

    def hears_only(self, *texts):
        self.becomes(self.orca.said, list(texts))
        self.orca.forget()


class Window(SpeechCase):
    def setUp(self):
        super().setUp()
        self.home.add_recorder("Recorder")
        self.home.add_recorder("Reader")
        self.start()

    def test_row_on_every_change(self):
        self.launcher.press("Down")
        self.hears_only(*RESULTS, "List with 10 items.", "Calculator")
        self.launcher.press("Down")
        self.hears_only("Paint")
        self.launcher.press("Up")
        self.hears_only("Calculator")
        self.launcher.type("recor")
        self.hears("Recorder Start Menu.")
        self.launcher.press("ctrl+a")
        self.launcher.type("reade")
        self.hears("Reader Start Menu.")

    def test_badge(self):
        self.launcher.type("calc ")
        self.hears("notification Command calc.", *RESULTS, "List with 1 item.",
                   "Enter an expression to calculate e.g. 1+2, sqrt(16), 2^10.")
        self.launcher.type("1+2")
        self.hears("3 1+2 = 3.")
        self.launcher.empty_box()
        self.hears("Notepad")
        self.launcher.type("todo")
        self.hears("notification Command todo.",
                   "Task Management Manage TODO list and subtasks.")

    def test_pages(self):
        self.launcher.open_page("user", "Save")
        self.hears("Settings.", "List with 3 items.", "User.")
        self.launcher.tab_to("Settings")
        self.hears("Settings.", "List with 3 items.")
        self.launcher.press("Down")
        self.hears_only("Settings.")


class Tasks(SpeechCase):
    def setUp(self):
        super().setUp()
        self.start()
        self.launcher.open_page("todo", "Add")
        self.hears("Add a task and press Enter text.")
        for title in ("water the plants", "feed the cat"):
            self.launcher.type(title)
            self.launcher.press("Return")
            self.hears(f"{title}.", "Active.")

    def test_state(self):
        self.launcher.tab_to("Active")
        self.launcher.press("Down")
        self.launcher.tab_to("Todo")
        self.hears("Todo tree.")
        self.launcher.press("Down")
        self.hears_only("feed the cat.", "Active.")
        self.launcher.press("Up")
        self.hears_only("water the plants.", "Active.")
        self.launcher.press("space")
        self.hears_only("notification Completed.", "water the plants.", "Completed.")
        self.launcher.press("Down")
        self.hears_only("feed the cat.", "Active.")
        self.launcher.press("Up", "space")
        self.hears("notification Active.", "water the plants.", "Active.")
        self.launcher.press("Delete")
        self.hears_only("feed the cat.", "Active.")
        self.launcher.press("ctrl+z")
        self.hears("water the plants.", "Active.")


class Dialogs(SpeechCase, UpdateCase):
    def start(self):
        super().start()
        self.wait_for_the_question()
        self.hears("alert Update available.",
                   "New version 2.0 is available. - one - two Update now?")

    def test_question_and_error(self):
        self.server.offer()
        self.start()
        self.answer("Yes")
        self.hears("OK push button.", f"Error transferring {self.server.address}/new - "
                   "server replied: Not Found.")

    def test_progress(self):
        is_announced, may_end = threading.Event(), threading.Event()
        for event in (is_announced, may_end):
            self.addCleanup(event.set)
        size = 40_000  # so little that no value between 0 and 50 percent is shown
        self.server.answer_in_parts("/new", size, {size - 1: is_announced, size // 2: may_end})
        self.server.offer()
        self.start()
        self.answer("Yes")
        self.hears("Downloading update dot dot dot dialog.")
        is_announced.set()  # Orca may speak a value before the dialog that appears with it
        self.hears("50 percent.")


if __name__ == "__main__":
    try:
        main()
    finally:
        if SpeechCase.orca:
            SpeechCase.orca.close()
