# SPDX-License-Identifier: GPL-3.0-or-later
"""Checks that the built program takes libraries from nowhere but the system and Qt's folder.

usage: tst_program.py PROGRAM QT-FOLDER [unittest's own]
"""

import pathlib
import sys
import unittest

from elf import readelf, search_path

PROGRAM, QT_FOLDER = sys.argv[1:3]


class Program(unittest.TestCase):
    def test_looks_for_libraries_in_absolute_folders_alone(self):
        self.assertIn("NEEDED", readelf("--dynamic", PROGRAM))
        self.assertEqual([folder for folder in search_path(PROGRAM)
                          if not folder.startswith("/")], [])

    def test_looks_for_libraries_in_no_folder_but_that_of_qt(self):
        self.assertEqual([folder for folder in search_path(PROGRAM)
                          if pathlib.Path(folder).resolve() != pathlib.Path(QT_FOLDER).resolve()], [])


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1] + sys.argv[3:])
