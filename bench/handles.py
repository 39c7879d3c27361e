# SPDX-License-Identifier: GPL-3.0-or-later
"""Counts the system resources of Vaskel.exe after rounds of showing, typing and hiding.

usage: handles.py Vaskel.exe [--rounds NUMBER] [--strict]

Uses the variables of tests/e2e/wine.py. The counts after the first ten rounds are the limit for the
counts after all rounds; --strict exits with 1 if they exceed it.
"""

import argparse
import pathlib
import sys
import time

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "tests/e2e"))
from desktop import Desktop, wait_until  # noqa: E402
from wine import Windows  # noqa: E402

FIRST_ROUNDS = 10
TEXTS = ("note", "paint", "nonesuch", "settings")
KINDS = {"handles": "kernel handles", "gdi": "GDI objects", "user": "USER objects"}
SAMPLES = 5


class Rounds:
    def __init__(self, desktop, launcher):
        self._desktop = desktop
        self._launcher = launcher
        self._done = 0
        # The window keeps its place.
        x, y, width, _ = launcher.geometry()
        self._box = (x + width // 2, y + 36 + 28)

    def run(self, count):
        while self._done < count:
            self._desktop.click(*self._box)
            self._desktop.press("ctrl+a")
            self._desktop.type(TEXTS[self._done % len(TEXTS)])
            self._press_until("Escape", False)
            self._press_until("ctrl+alt+space", True)
            self._done += 1

    def counts(self):
        """The minimum of several counts, since threads and timers come and go."""
        samples = []
        for _ in range(SAMPLES):
            samples.append(self._launcher.ask("counts"))
            time.sleep(1)
        return {kind: min(sample[kind] for sample in samples) for kind in KINDS}

    def _press_until(self, keys, active):
        def is_so():
            return self._launcher.ask("active") == active
        self._desktop.press(keys)
        wait_until(is_so, f"the window is {'active' if active else 'hidden'}")


def measure(program, rounds):
    system = Windows()
    desktop = Desktop(system.screen)
    home = system.make_home(desktop)
    launcher = system.make_launcher(desktop, program, home)
    try:
        launcher.start()
        work = Rounds(desktop, launcher)
        work.run(FIRST_ROUNDS)
        first = work.counts()
        work.run(rounds)
        return first, work.counts()
    finally:
        launcher.stop()
        home.remove()
        desktop.close()


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("program")
    parser.add_argument("--rounds", type=int, default=1000)
    parser.add_argument("--strict", action="store_true")
    options = parser.parse_args()
    first, last = measure(options.program, options.rounds)
    print(f"{'':16}{FIRST_ROUNDS:>6} rounds{options.rounds:>6} rounds")
    missed = False
    for kind, name in KINDS.items():
        grown = last[kind] > first[kind]
        missed = missed or grown
        print(f"{name:16}{first[kind]:>13}{last[kind]:>13}{'  MISSED' if grown else ''}")
    sys.exit(options.strict and missed)


if __name__ == "__main__":
    main()
