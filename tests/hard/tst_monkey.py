# SPDX-License-Identifier: GPL-3.0-or-later
"""Some random actions of a fixed seed; scripts/monkey sends more of them.

usage: tst_monkey.py PROGRAM limited|unlimited [unittest's own]
"""

import pathlib
import sys
import unittest

import monkey

from desktop import Desktop

SEED = 1
ACTIONS = 2_000
WARM_UP = 1_000


class Monkey(unittest.TestCase):
    def test_program_bears_it(self):
        desktop = Desktop(monkey.SIZE)
        self.addCleanup(desktop.close)
        monkey.run(pathlib.Path(sys.argv[1]).resolve(), SEED, ACTIONS, WARM_UP, desktop,
                   sys.argv[2] == "unlimited")


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], "--verbose", *sys.argv[3:]])
