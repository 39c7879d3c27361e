# SPDX-License-Identifier: GPL-3.0-or-later
"""usage: show.py PROGRAM PICTURE

Starts the program on a virtual screen in the user's own home, types a query and saves a picture of
the result.
"""

import os
import pathlib
import sys

from desktop import Desktop, wait_until
from launcher import Launcher

QUERY = "term"


def main():
    program, picture = map(pathlib.Path, sys.argv[1:])
    desktop = Desktop(size="1024x640")
    # The variables of the screen override the user's.
    launcher = Launcher(desktop, program, os.environ | desktop.environment())
    try:
        launcher.start()
        launcher.type(QUERY)
        rows = wait_until(lambda: found(launcher), "the query shows rows")
        for title, subtitle in rows:
            print(f"{title}\n    {subtitle}")
        desktop.picture(picture)
    finally:
        launcher.stop()
        desktop.close()
    print(f"\nThe rows for \"{QUERY}\" on a virtual screen: {picture.resolve()}")


def found(launcher):
    """The rows, once they belong to the query."""
    rows = launcher.rows()
    return rows if all(QUERY in "\n".join(row).lower() for row in rows) else None


if __name__ == "__main__":
    main()
