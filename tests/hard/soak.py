# SPDX-License-Identifier: GPL-3.0-or-later
"""usage: soak.py [--rounds N] PROGRAM

Shows the window, types a search and hides the window, over and over and as fast as the program
answers: 5,760 rounds are one a minute for four days. Fails if the program ends, or if its memory
has grown by more than 1 MiB, or its descriptors and X resources at all, since round 100.
"""

import argparse
import pathlib
import sys
import time

from monkey import HOTKEY, SIZE, Failure, Figures
from program import Harmless, Program
from screen import Screen

from desktop import Desktop

MEMORY_LIMIT = 1 << 20  # bytes
WARM_UP = 100  # rounds
PROGRESS = 500  # rounds from line to line
SEARCHES = ("note", "zhong", "e", "calc 1+2", "nothing is found", "todo", "wjgl", "echo x")


class Soak:
    def __init__(self, program, screen):
        self._program = program
        self._screen = screen

    def go_round(self, number):
        search = SEARCHES[number % len(SEARCHES)]
        if not self._program.is_showing():
            self._toggle(True)
        self._screen.press("End")
        self._screen.press("shift+Home")
        for _ in range(2):  # the second one turns a badge into text
            self._screen.press("BackSpace")
        self._screen.press("shift+Home")
        self._screen.type(search)
        self._program.searches()
        self._toggle(False)

    def _toggle(self, is_showing):
        self._screen.press(HOTKEY)
        self._program.becomes_visible(is_showing)
        if self._program.is_showing() != is_showing:
            raise Failure(f"The window does not {'show' if is_showing else 'hide'}")


def run(path, rounds, desktop):
    begin = time.monotonic()
    harmless = Harmless()
    try:
        screen = Screen(desktop.display)
        screen.make_window(1080, 924, 200, 100)
        program = Program(path, desktop, screen, harmless)
        try:
            soak = Soak(program, screen)
            before = None
            for number in range(1, rounds + 1):
                soak.go_round(number)
                if program.has_ended() is not None:
                    raise Failure(f"The program ended in round {number}")
                if number % PROGRESS == 0:
                    print(f"{number} rounds, {program.memory() >> 10} KiB", file=sys.stderr)
                if number == WARM_UP:
                    before = Figures(program, screen)
            after = Figures(program, screen)
        finally:
            program.stop()
    finally:
        harmless.remove()
    print(f"{rounds} rounds in {time.monotonic() - begin:.0f} s\n"
          f"after {WARM_UP} rounds: {before}\nafter {rounds} rounds: {after}")
    gained = after.gained(before, MEMORY_LIMIT)
    if gained:
        raise Failure(f"since round {WARM_UP}: {', '.join(gained)}")


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("program", type=pathlib.Path)
    parser.add_argument("--rounds", type=int, default=5_760)
    arguments = parser.parse_args()
    desktop = Desktop(SIZE)
    try:
        run(arguments.program.resolve(), arguments.rounds, desktop)
    finally:
        desktop.close()


if __name__ == "__main__":
    main()
