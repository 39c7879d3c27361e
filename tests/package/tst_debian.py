# SPDX-License-Identifier: GPL-3.0-or-later
"""Checks the Debian package, installs it in a separate tree, runs the program and removes it.

usage: tst_debian.py PACKAGE-FOLDER PICTURE-FOLDER [unittest's own]
"""

import configparser
import gzip
import os
import pathlib
import shlex
import shutil
import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree

TESTS = pathlib.Path(__file__).resolve().parents[1]
sys.path[:0] = [str(TESTS / "e2e"), str(TESTS / "security")]

from case import EndToEndCase, main  # noqa: E402
from desktop import start_tied  # noqa: E402
from elf import missing_protections, search_path  # noqa: E402

FOLDER = pathlib.Path(sys.argv[1])
SIZES = (16, 22, 24, 32, 48, 64, 128, 256, 512)


def package():
    """The only package in the folder."""
    packages = list(FOLDER.glob("*.deb"))
    assert len(packages) == 1, f"in {FOLDER}: {packages}"
    return packages[0]


def output(*command):
    return subprocess.run(command, check=True, text=True, stdout=subprocess.PIPE).stdout.strip()


def field(name):
    return output("dpkg-deb", "--field", package(), name)


def is_known_to_lintian(tag):
    return subprocess.run(["lintian-explain-tags", tag], stdout=subprocess.DEVNULL,
                          stderr=subprocess.DEVNULL).returncode == 0


class Tree:
    """An empty system to install in, with this machine's dpkg database."""

    def __init__(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="vaskel-tree-"))
        self.database = self.folder / "var/lib/dpkg"
        for name in ("info", "updates"):
            (self.database / name).mkdir(parents=True)
        shutil.copy("/var/lib/dpkg/status", self.database)

    def dpkg(self, *arguments):
        # Without root, fakeroot pretends that root owns the files.
        fake = [] if os.geteuid() == 0 else ["fakeroot"]
        return subprocess.run([*fake, "dpkg", f"--root={self.folder}", "--force-not-root",
                               "--force-bad-path", "--log=/dev/null", *arguments], text=True,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT)

    def files(self):
        """Its files except dpkg's own."""
        return {str(path.relative_to(self.folder)) for path in self.folder.rglob("*")
                if not path.is_relative_to(self.database) and not path.is_dir()}

    def folders(self):
        return {str(path.relative_to(self.folder)) for path in self.folder.rglob("*")
                if not path.is_relative_to(self.database) and path.is_dir()}

    def remove(self):
        shutil.rmtree(self.folder, ignore_errors=True)


class Package(EndToEndCase):
    def setUp(self):
        super().setUp()
        self.tree = Tree()
        self.addCleanup(self.tree.remove)

    def install(self):
        result = self.tree.dpkg("--install", str(package()))
        self.assertEqual(result.returncode, 0, result.stdout)

    def desktop_file(self):
        file = configparser.ConfigParser(interpolation=None, delimiters="=", comment_prefixes="#")
        file.optionxform = str
        file.read(self.tree.folder / "usr/share/applications/vaskel.desktop", "utf-8")
        return file

    def desktop_entry(self):
        return self.desktop_file()["Desktop Entry"]

    def passes(self, *command):
        result = subprocess.run(command, text=True, stdout=subprocess.PIPE,
                                stderr=subprocess.STDOUT)
        self.assertEqual(result.returncode, 0, result.stdout)

    def test_keeps_to_the_policy(self):
        # Newer versions of Lintian validate the metadata too, but without the exception of
        # test_has_valid_metadata().
        tag = "appstream-metadata-validation-failed"
        options = ["--suppress-tags", tag] if is_known_to_lintian(tag) else []
        self.passes("lintian", "--fail-on", "error,warning", *options, package())

    def test_has_valid_metadata(self):
        self.install()
        shares = self.tree.folder / "usr/share"
        self.passes("desktop-file-validate", shares / "applications/vaskel.desktop")
        # The project has no home page, of which AppStream 1.0 warns.
        version = output("appstreamcli", "--version").split()[-1]
        options = [] if version.startswith("0.") else ["--override=url-homepage-missing=info"]
        self.passes("appstreamcli", "validate-tree", "--no-net", *options, self.tree.folder)

    def test_names_one_version_everywhere(self):
        self.install()
        shares = self.tree.folder / "usr/share"
        version = field("Version").rsplit("-", 1)[0]
        metadata = xml.etree.ElementTree.parse(next((shares / "metainfo").iterdir()))
        self.assertEqual(metadata.find("releases/release").get("version"), version)
        with gzip.open(shares / "man/man1/Vaskel.1.gz", "rt") as page:
            self.assertIn(f'"Vaskel {version}"', page.read())
        program = (self.tree.folder / "usr/bin/Vaskel").read_bytes()
        self.assertTrue(version.encode("utf-16-le") in program)

    def test_has_an_icon_of_each_size(self):
        self.install()
        theme = self.tree.folder / "usr/share/icons/hicolor"
        name = self.desktop_entry()["Icon"]
        for size in SIZES:
            picture = (theme / f"{size}x{size}/apps/{name}.png").read_bytes()
            width, height = (int.from_bytes(picture[at:at + 4], "big") for at in (16, 20))
            self.assertEqual((width, height), (size, size))
        drawing = xml.etree.ElementTree.parse(theme / f"scalable/apps/{name}.svg")
        self.assertTrue(drawing.getroot().tag.endswith("svg"))

    def test_depends_on_what_the_program_loads(self):
        dependencies = field("Depends")
        for name in ("libqt6widgets6", "libqt6network6", "libqt6svg6", "xdg-utils"):
            self.assertIn(name, dependencies)

    def test_takes_libraries_from_the_system_alone(self):
        self.install()
        self.assertEqual(search_path(self.tree.folder / "usr/bin/Vaskel"), [])

    def test_is_built_with_the_protections_of_the_compiler(self):
        self.install()
        self.assertEqual(missing_protections(self.tree.folder / "usr/bin/Vaskel"), [])

    def test_does_not_install_where_a_dependency_is_missing(self):
        status = self.tree.database / "status"
        packages = status.read_text().split("\n\n")
        plugin = ("Package: libqt6svg6\n", "Package: qt6-svg-plugins\n")
        status.write_text("\n\n".join(text for text in packages if not text.startswith(plugin)))
        result = self.tree.dpkg("--install", str(package()))
        self.assertNotEqual(result.returncode, 0)
        self.assertIn("libqt6svg6", result.stdout)

    def test_runs_from_the_menu_and_finds_itself_there(self):
        self.start_from_menu()
        entry = self.desktop_entry()
        self.assertEqual(entry["TryExec"], shlex.split(entry["Exec"])[0])
        classes = self.desktop.run("xprop", "-id", self.launcher.window, "WM_CLASS")
        self.assertIn(f'"{entry["StartupWMClass"]}"', classes)
        self.launcher.type("vaskel")
        self.shows_rows((entry["Name"], "Start Menu"))
        self.picture("found")

        self.launcher.press("Escape")
        self.hides()
        self.assertEqual(self.choose(entry).wait(60), 0)
        self.launcher.wait_until_ready()

    def test_obeys_the_actions_in_the_menu(self):
        self.start_from_menu()
        self.assertEqual(self.desktop_entry()["Actions"], "toggle;quit;")
        toggle, leave = (self.desktop_file()[f"Desktop Action {name}"] for name in ("toggle", "quit"))
        self.assertEqual(self.choose(toggle).wait(60), 0)
        self.hides()
        self.assertEqual(self.choose(toggle).wait(60), 0)
        self.launcher.wait_until_ready()
        self.assertEqual(self.choose(leave).wait(60), 0)
        self.assertEqual(self.launcher.process.wait(60), 0)

    def start_from_menu(self):
        """Installs the program and starts it with what else it needs from this machine."""
        self.install()
        tree = self.tree.folder
        self.launcher.environment["PATH"] = f"{tree}/usr/bin:{self.launcher.environment['PATH']}"
        self.launcher.environment["XDG_DATA_DIRS"] = f"{tree}/usr/share:{self.home.system}"
        self.launcher.attach(self.choose(self.desktop_entry()))

    def choose(self, entry):
        """Runs the command of an entry or of an action, as the menu of a desktop does."""
        command = shlex.split(entry["Exec"])
        command[0] = shutil.which(command[0], path=self.launcher.environment["PATH"])
        self.assertEqual(command[0], f"{self.tree.folder}/usr/bin/Vaskel")
        return start_tied(command, env=self.launcher.environment, stdout=self.launcher.log,
                          stderr=self.launcher.log)

    def test_leaves_nothing_behind(self):
        self.assertEqual(self.tree.files(), set())
        before = self.tree.folders()
        self.install()
        self.assertIn("usr/bin/Vaskel", self.tree.files())
        for package in ("libfmt-dev", "libspdlog-dev", "unicode-data"):
            self.assertIn(f"usr/share/doc/vaskel/licenses/{package}.txt", self.tree.files())
        result = self.tree.dpkg("--purge", "vaskel")
        self.assertEqual(result.returncode, 0, result.stdout)
        self.assertEqual(self.tree.files(), set())
        self.assertEqual(self.tree.folders(), before)
        self.assertEqual(list((self.tree.database / "info").glob("vaskel*")), [])


if __name__ == "__main__":
    sys.argv.insert(1, str(package()))
    del sys.argv[2]
    main()
