# SPDX-License-Identifier: GPL-3.0-or-later
from case import EndToEndCase, main

HINT = ("Enter an expression to calculate", "e.g. 1+2, sqrt(16), 2^10")
MISSING_OPERAND = "Expected number, constant, or function at position {}"


class Calculator(EndToEndCase):
    def setUp(self):
        super().setUp()
        self.desktop.set_clipboard("nothing yet")
        self.start()

    def test_turns_into_the_badge_at_the_last_letter_of_the_command(self):
        self.launcher.type("cal")
        self.becomes(self.launcher.text, "cal")
        self.becomes(self.launcher.badge, None)

        self.launcher.type("c")
        self.becomes(self.launcher.badge, "calc")
        self.becomes(self.launcher.text, "")
        self.becomes(self.launcher.status, "calc | Calculator")
        self.shows_rows(HINT)
        self.picture("badge")

    def test_counts_the_typed_blank_as_part_of_the_arguments(self):
        self.launcher.type("calc 1+")
        self.becomes(self.launcher.text, " 1+")
        self.shows_rows(("Expression Error", MISSING_OPERAND.format(4)))
        self.picture("error")

        self.launcher.type("2")
        self.becomes(self.launcher.text, " 1+2")
        self.shows_rows(("3", " 1+2 = 3"))
        self.picture("value")

    def test_takes_the_pasted_blank_as_the_end_of_the_command(self):
        self.launcher.paste("calc 1+")
        self.becomes(self.launcher.badge, "calc")
        self.becomes(self.launcher.text, "1+")
        self.shows_rows(("Expression Error", MISSING_OPERAND.format(3)))

        self.launcher.type("2")
        self.shows_rows(("3", "1+2 = 3"))
        self.picture("pasted")

    def test_needs_no_blank_after_the_command(self):
        self.launcher.type("calc2^10")
        self.becomes(self.launcher.badge, "calc")
        self.shows_rows(("1024", "2^10 = 1024"))

    def test_gives_the_command_back_at_backspace(self):
        self.launcher.type("calc")
        self.becomes(self.launcher.badge, "calc")
        self.launcher.press("BackSpace")
        self.becomes(self.launcher.badge, None)
        self.becomes(self.launcher.text, "calc")

        self.launcher.type(" ")
        self.becomes(self.launcher.badge, "calc")
        self.becomes(self.launcher.text, "")

    def test_puts_the_value_on_the_clipboard_at_enter(self):
        self.launcher.type("calc 1+2")
        self.shows_rows(("3", " 1+2 = 3"))
        self.launcher.press("Return")
        self.hides()
        self.becomes(self.desktop.clipboard, "3")

    def test_stays_open_at_enter_on_an_error(self):
        self.launcher.type("calc 1+")
        self.shows_rows(("Expression Error", MISSING_OPERAND.format(4)))
        self.launcher.press("Return")

        # The next key still reaches the window.
        self.launcher.type("4")
        self.shows_rows(("5", " 1+4 = 5"))
        self.assertEqual(self.desktop.clipboard(), "nothing yet")


if __name__ == "__main__":
    main()
