# SPDX-License-Identifier: GPL-3.0-or-later
"""The window on GNOME Shell.

usage: tst_gnome.py PROGRAM PICTURE-FOLDER [unittest's own]
"""

from wayland import ForeignCompositor

from case import EndToEndCase, main
from gnome import Gnome


class OnGnome(ForeignCompositor, EndToEndCase):
    pass


if __name__ == "__main__":
    main(Gnome)
