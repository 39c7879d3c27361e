# SPDX-License-Identifier: GPL-3.0-or-later
"""Compares the pictures of the documents with the program, except the icons where the icon theme is
of another version.

usage: tst_pictures.py PROGRAM PICTURE-FOLDER
"""

import pathlib
import subprocess
import sys
import unittest

import gallery
from desktop import PATIENCE, Desktop

STORED = pathlib.Path(__file__).resolve().parents[2] / "docs/pictures"
TOLERANCE = 100  # pixels; one letter has more
FUZZ = "5%"  # of the brightness, by which a pixel may differ


def size_of(path):
    """Width and height of a picture, or None if there is none."""
    result = subprocess.run(["identify", "-format", "%w %h", path], text=True,
                            stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, timeout=PATIENCE)
    return tuple(map(int, result.stdout.split())) if result.returncode == 0 else None


def differing_pixels(path, width, height, pixels):
    """How many pixels of a picture file of that size differ."""
    result = subprocess.run(["compare", "-metric", "AE", "-fuzz", FUZZ, path,
                             "-size", f"{width}x{height}", "-depth", "8", "rgb:-", "null:"],
                            input=pixels, stderr=subprocess.PIPE, timeout=PATIENCE)
    # ImageMagick 7 adds the number's share of all pixels, in brackets.
    return int(float(result.stderr.split()[0]))


def with_places_of(path, width, height, pixels, places):
    """The pixels with those of a picture file at some places. Without the file, the same pixels."""
    if size_of(path) != (width, height):
        return pixels
    stored = subprocess.run(["convert", path, "-depth", "8", "rgb:-"], stdout=subprocess.PIPE,
                            check=True, timeout=PATIENCE).stdout
    changed = bytearray(pixels)
    for left, top, right, bottom in places:
        for y in range(top, bottom):
            part = slice(3 * (y * width + left), 3 * (y * width + right))
            changed[part] = stored[part]
    return bytes(changed)


def difference_from(path, width, height, pixels):
    """What is different in a picture file, or an empty string."""
    size = size_of(path)
    if size != (width, height):
        return f"its size is {size}, not {(width, height)}" if size else "it is missing"
    count = differing_pixels(path, width, height, pixels)
    return f"{count} pixels differ" if count > TOLERANCE else ""


class Pictures(unittest.TestCase):
    program = None
    pictures = None

    def setUp(self):
        self.version = gallery.icon_theme_version()
        self.stored_version = (STORED / gallery.ICON_THEME_VERSION).read_text().strip()

    def test_match_the_program(self):
        if self.version != self.stored_version:
            print(f"The icons are left out: the icon theme is {self.version}, but "
                  f"{self.stored_version} in docs/pictures.", file=sys.stderr)
        with gallery.only_run():
            desktop = Desktop(gallery.SCREEN)
            try:
                taken = [self.check(*shot) for shot in gallery.all_shots(desktop, self.program)]
            finally:
                desktop.close()
        stored = {path.relative_to(STORED) for path in STORED.rglob("*.png")}
        self.assertEqual(stored - set(taken), set(), "no longer made by scripts/screenshots")

    def check(self, path, width, height, pixels, icons):
        with self.subTest(str(path)):
            if self.version != self.stored_version:
                pixels = with_places_of(STORED / path, width, height, pixels, icons)
            difference = difference_from(STORED / path, width, height, pixels)
            if difference:
                gallery.save(self.pictures / path, width, height, pixels)
                self.fail(f"docs/pictures/{path} does not match the program: {difference}. Compare "
                          f"it with {self.pictures / path}. If the program is right, run "
                          "scripts/screenshots, look at the new pictures and commit them.")
        return path


def main():
    program, pictures = map(pathlib.Path, sys.argv[1:3])
    Pictures.program = program.resolve()
    Pictures.pictures = pictures.resolve() / "documents"
    unittest.main(argv=[sys.argv[0], "--verbose", *sys.argv[3:]])


if __name__ == "__main__":
    main()
