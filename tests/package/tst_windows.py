# SPDX-License-Identifier: GPL-3.0-or-later
"""Tests the Windows installer and the zip archive under wine.

usage: tst_windows.py PACKAGE-FOLDER PICTURE-FOLDER with-wine PREFIX Everything64.dll BUILD-FOLDER
                      [unittest's own]

The packages have no update server. For its case of an update, the test builds the program in the
build folder with a server and a key of its own, and afterwards again as it was.
"""

import http.server
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import threading
import time
import unittest
import zipfile

packages, pictures, with_wine, prefix, library, build = map(pathlib.Path, sys.argv[1:7])
scripts = pathlib.Path(__file__).resolve().parents[2] / "scripts"
PATIENCE = 90
KEY_PATIENCE = 10  # seconds until a key without an effect is pressed again
FIRST_MOMENT = 1.5  # seconds; longer than the question of an update ignores keys

USER = r"HKEY_CURRENT_USER\Software"
UNINSTALL = USER + r"\Microsoft\Windows\CurrentVersion\Uninstall\Vaskel"
RUN = USER + r"\Microsoft\Windows\CurrentVersion\Run"
PREFERENCES = USER + r"\Vaskel\Vaskel"


class UpdateServer:
    """Offers a program once, after offer()."""

    def __init__(self):
        server = self
        self.checks = 0
        self.program = self.answer = b""

        class Handler(http.server.BaseHTTPRequestHandler):
            def do_GET(self):
                body = server.program
                if self.path.startswith("/api/"):
                    server.checks += 1
                    body = server.answer if server.checks == 1 else b"{}"
                self.send_response(200)
                self.send_header("Content-Length", str(len(body)))
                self.end_headers()
                self.wfile.write(body)

            def log_message(self, *_):
                pass

        self._server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Handler)
        self.address = f"http://127.0.0.1:{self._server.server_port}"
        threading.Thread(target=self._server.serve_forever, daemon=True).start()

    def offer(self, file, key):
        self.program = file.read_bytes()
        self.answer = subprocess.run(
            [scripts / "sign-update", file, "--version", "2.0", "--key", key, "--url", self.address],
            check=True, stdout=subprocess.PIPE).stdout

    def close(self):
        self._server.shutdown()
        self._server.server_close()


def package(ending):
    """The only package with this suffix."""
    found = list(packages.glob(f"Vaskel-*{ending}"))
    assert len(found) == 1, f"in {packages}: {found}"
    return found[0]


def wine(*command, desktop=False):
    # Even a program without a window opens its desktop. All use this display, because the next
    # program finds that desktop for a moment, and would show its window there.
    options = ["--desktop"] if desktop else ["--here"]
    return [with_wine, "--prefix", prefix, *options, *command]


def run(*command, desktop=False):
    """Runs a Windows program that ends by itself and returns its exit status."""
    return subprocess.run(wine(*command, desktop=desktop), timeout=PATIENCE, check=False,
                          stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL).returncode


def xdotool(*arguments):
    return subprocess.run(["xdotool", *arguments], capture_output=True, text=True,
                          check=False).stdout


def windows(title):
    return xdotool("search", "--onlyvisible", "--name", f"^{title} ?$").split()


def launcher_is_shown():
    """Ignores the floating icon, which has the same name but is small."""
    shapes = [subprocess.run(["xwininfo", "-id", window], capture_output=True, text=True,
                             check=False).stdout for window in windows("Vaskel")]
    return any(int(line.split()[1]) >= 720 for shape in shapes for line in shape.splitlines()
               if line.strip().startswith("Width:"))


def registry():
    """HKEY_CURRENT_USER\\Software without wine's own keys, as {key: {name: value}}."""
    with tempfile.NamedTemporaryFile(dir=prefix, suffix=".reg") as file:
        run("reg", "export", USER, f"Z:{file.name}", "/y")
        text = pathlib.Path(file.name).read_text("utf-16")
    content, key = {}, None
    for line in text.replace("\\\n", "").splitlines():
        if line.startswith("["):
            key = line.strip("[]")
            if not key.startswith(USER + r"\Wine"):
                content[key] = {}
        elif "=" in line and key in content:
            name, value = line.split("=", 1)
            value = value[1:-1] if value.startswith('"') else value
            content[key][name.strip('"')] = value.replace(r"\\", "\\").replace(r'\"', '"')
    return content


def values(key):
    return registry().get(key, {})


class WindowsPackages(unittest.TestCase):
    """Each case starts and ends without any trace of Vaskel in the user's folders and registry."""

    @classmethod
    def setUpClass(cls):
        # Processes left from an earlier run would keep new programs on their screen.
        for order in ("--kill", "--wait"):
            subprocess.run(["wineserver", order], stderr=subprocess.DEVNULL, timeout=PATIENCE,
                           check=False, env=os.environ | {"WINEPREFIX": str(prefix / "wine")})

    def setUp(self):
        if not (prefix / "ready").exists():
            run("wineboot")
        self.drive = prefix / "wine/drive_c"
        self.provide_timeout()
        self.user = next(path for path in (self.drive / "users").iterdir() if path.name != "Public")
        self.data = self.user / "AppData/Roaming/Vaskel"
        self.link = (self.user / "AppData/Roaming/Microsoft/Windows/Start Menu/Programs"
                     / "Vaskel.lnk")
        self.program_folder = self.user / "AppData/Local/Programs/Vaskel"
        self.downloads = pathlib.Path(tempfile.mkdtemp(dir=self.drive))
        self.addCleanup(shutil.rmtree, self.downloads)
        self.installer = pathlib.Path(shutil.copy(package("-setup.exe"), self.downloads))
        self.clean()
        self.addCleanup(self.clean)
        self.addCleanup(self.report_failure)

    def provide_timeout(self):
        """Installs the program with which the update script waits."""
        program = self.drive / "windows/system32/timeout.exe"
        if not program.exists():
            source = pathlib.Path(__file__).with_name("timeout.cpp")
            subprocess.run(["x86_64-w64-mingw32-g++-posix", "-static", "-o", program, source],
                           check=True)

    def clean(self):
        for uninstaller in (self.program_folder / "Uninstall.exe", self.other_folder() / "Uninstall.exe"):
            if uninstaller.exists():
                self.uninstall(uninstaller.parent)
        for folder in (self.program_folder, self.other_folder(), self.data):
            shutil.rmtree(folder, ignore_errors=True)
        for update in self.user.rglob("Vaskel_update*"):
            update.unlink()
        for key in (USER + r"\Vaskel", UNINSTALL):
            run("reg", "delete", key, "/f")
        run("reg", "delete", RUN, "/f", "/v", "Vaskel")

    def other_folder(self):
        return self.user / "my programs/启动器"

    def report_failure(self):
        result = self._outcome.result
        if any(case is self for case, _ in result.failures + result.errors):
            self.picture("failed")

    def picture(self, step):
        pictures.mkdir(parents=True, exist_ok=True)
        subprocess.run(["import", "-silent", "-window", "root",
                        pictures / f"{self._testMethodName}-{step}.png"], check=False)

    def wait_until(self, probe, what):
        deadline = time.monotonic() + PATIENCE
        while not probe():
            self.assertLess(time.monotonic(), deadline,
                            f"waited {PATIENCE} s in vain until {what}; the picture shows the rest")
            time.sleep(0.1)

    def press_until(self, key, probe, what):
        """Presses the key again if nothing happens: a window that shows may not have the focus yet."""
        pressed = -KEY_PATIENCE

        def press_and_probe():
            nonlocal pressed
            if probe():
                return True
            if time.monotonic() - pressed >= KEY_PATIENCE:
                xdotool("key", key)
                pressed = time.monotonic()
            return False
        self.wait_until(press_and_probe, what)

    def windows_path(self, path):
        return "C:\\" + str(path.relative_to(self.drive)).replace("/", "\\")

    def command(self, program):
        """The Windows path with forward slashes; wine looks for other forms on another drive."""
        return self.windows_path(program).replace("\\", "/")

    def install(self, *options):
        self.assertEqual(run(self.command(self.installer), "/S", *options), 0)

    def uninstall(self, folder):
        # The uninstaller continues as a copy, so that it can remove its own file.
        self.assertEqual(run(self.command(folder / "Uninstall.exe"), "/S"), 0)
        self.wait_until(lambda: UNINSTALL not in registry(), "the uninstaller has done its work")

    def files(self):
        """The files in the user's folders, except the uninstaller's copy of itself: Windows removes
        that at its next start."""
        found = {str(path.relative_to(self.user)) for path in self.user.rglob("*")
                 if not path.is_dir()}
        return {path for path in found if "Temp/~nsu" not in path}

    def start(self, folder):
        program = self.command(folder / "Vaskel.exe")
        vaskel = subprocess.Popen(wine(program, desktop=True), stdout=subprocess.DEVNULL,
                                  stderr=subprocess.DEVNULL)
        self.addCleanup(self.stop, vaskel)
        self.wait_until(launcher_is_shown, "the window at the start")
        return vaskel

    def stop(self, process):
        process.terminate()
        process.wait(PATIENCE)
        self.wait_until(lambda: not windows("Vaskel"), "the program is gone")

    def contents(self, folder):
        return {str(path.relative_to(folder)): path.read_bytes() for path in folder.rglob("*")
                if path.is_file()}

    def portable(self):
        """Unpacks the zip archive and returns its files."""
        folder = self.downloads / "a folder"
        with zipfile.ZipFile(package(".zip")) as archive:
            archive.extractall(folder)
        return next(folder.iterdir())

    def test_installs_runs_and_leaves_only_what_is_the_users(self):
        shutil.copy(library, self.downloads / "Everything64.dll")
        files, keys = self.files(), registry()

        self.install()
        installed = self.contents(self.program_folder)
        self.assertIn("Uninstall.exe", installed)
        del installed["Uninstall.exe"]
        expected = self.contents(self.portable()) | {"Everything64.dll": library.read_bytes()}
        self.assertEqual(sorted(installed), sorted(expected))
        self.assertTrue(installed == expected)
        self.assertTrue(self.link.exists())

        folder = self.windows_path(self.program_folder)
        entry = values(UNINSTALL)
        self.assertEqual(entry["DisplayName"], "Vaskel")
        self.assertIn(f"Vaskel-{entry['DisplayVersion']}-windows", self.installer.name)
        self.assertEqual(entry["InstallLocation"], folder)
        self.assertEqual(entry["DisplayIcon"], rf"{folder}\Vaskel.exe")
        self.assertEqual(entry["UninstallString"], rf'"{folder}\Uninstall.exe"')
        self.assertEqual(entry["QuietUninstallString"], rf'"{folder}\Uninstall.exe" /S')
        self.assertEqual(int(entry["EstimatedSize"].removeprefix("dword:"), 16),
                         len(installed["Vaskel.exe"]) // 1024)

        # Auto-start and update use the path that the program has for its own file.
        run("reg", "add", PREFERENCES, "/f", "/v", "autoStart", "/d", "true")
        self.data.mkdir()
        tasks = self.data / "todo.json"
        tasks.write_text("[]")
        vaskel = self.start(self.program_folder)
        self.picture("runs")
        self.assertEqual(values(RUN)["Vaskel"], rf"{folder}\Vaskel.exe")

        self.press_until("Escape", lambda: not launcher_is_shown(), "Escape hides the window")
        self.assertEqual(run("start", "/wait", self.windows_path(self.link), desktop=True), 0)
        self.wait_until(launcher_is_shown, "the link brings the window up")

        # Neither may change a running program.
        uninstaller = self.command(self.program_folder / "Uninstall.exe")
        self.assertNotEqual(run(self.command(self.installer), "/S"), 0)
        self.assertNotEqual(run(uninstaller, "/S", f"_?={folder}"), 0)
        self.assertTrue((self.program_folder / "Vaskel.exe").exists())
        self.assertTrue(self.link.exists())
        self.assertIsNone(vaskel.poll())
        self.stop(vaskel)

        self.uninstall(self.program_folder)
        self.assertFalse(self.program_folder.exists())
        left = {path.name for path in self.data.iterdir()
                if path.suffix != ".log"}
        self.assertEqual(left, {"pins.json", "todo.json"})
        data = str(self.data.relative_to(self.user))
        self.assertEqual([path for path in self.files() - files if not path.startswith(data)], [])
        self.assertEqual(tasks.read_text(), "[]")
        self.assertEqual(files - self.files(), set())
        after = registry()
        self.assertEqual(after.pop(PREFERENCES)["autoStart"], "true")
        after.pop(USER + r"\Vaskel")
        self.assertEqual(after, keys)

    def build_with(self, server, key):
        """The program with this update server and key."""
        cache = (build / "CMakeCache.txt").read_text()
        before = [f"-D{line}" for line in cache.splitlines() if line.startswith("VASKEL_UPDATE_")]
        self.assertEqual(len(before), 2)
        self.addCleanup(self.configure, *before)
        self.configure(f"-DVASKEL_UPDATE_SERVER={server}", f"-DVASKEL_UPDATE_KEY={key}")
        return (build / "Vaskel.exe").read_bytes()

    def configure(self, *options):
        for command in (["cmake", *options, build], ["cmake", "--build", build, "--target", "Vaskel"]):
            subprocess.run(command, check=True, stdout=subprocess.DEVNULL)

    def test_updates_itself_where_it_is_installed(self):
        shutil.copy(library, self.downloads / "Everything64.dll")
        files = self.files()
        self.install()
        program = self.program_folder / "Vaskel.exe"
        server = UpdateServer()
        self.addCleanup(server.close)
        key = self.downloads / "key"
        public = subprocess.run([scripts / "new-update-key", key], check=True, text=True,
                                stdout=subprocess.PIPE).stdout.strip()
        original = self.build_with(server.address, public)
        newer = self.downloads / "newer.exe"
        newer.write_bytes(original + b"newer")
        server.offer(newer, key)
        program.write_bytes(original)

        vaskel = self.start(self.program_folder)
        self.addCleanup(run, "taskkill", "/f", "/im", "Vaskel.exe")
        self.wait_until(lambda: windows("Update available"), "the program asks")
        self.picture("question")
        time.sleep(FIRST_MOMENT)
        self.press_until("alt+y", lambda: vaskel.poll() is not None, "the old program ends")
        self.wait_until(launcher_is_shown, "the new program runs")
        self.assertTrue(program.read_bytes() == original + b"newer")

        run("taskkill", "/f", "/im", "Vaskel.exe")
        self.wait_until(lambda: not windows("Vaskel"), "the new program is gone")
        self.uninstall(self.program_folder)
        data = str(self.data.relative_to(self.user))
        self.assertEqual([path for path in self.files() - files if not path.startswith(data)], [])

    def test_starts_the_program_from_its_last_page(self):
        shutil.copy(library, self.downloads / "Everything64.dll")
        self.click_through("ready", answer="y")
        self.addCleanup(run, "taskkill", "/f", "/im", "Vaskel.exe")
        self.wait_until(launcher_is_shown, "the program starts")

    def test_asks_before_it_installs_a_library_from_beside_it(self):
        shutil.copy(library, self.downloads / "Everything64.dll")
        # Return is "No": whoever hurries installs nothing.
        self.click_through("refused", answer="Return")
        self.assertEqual([path.name for path in self.program_folder.glob("Everything64*")], [])
        self.wait_until(lambda: windows("Vaskel"), "the folder opens")
        self.press_until("alt+F4", lambda: not windows("Vaskel"), "the folder closes")

    def test_opens_the_folder_for_the_library_that_is_missing(self):
        self.click_through("lacking")
        self.wait_until(lambda: windows("Vaskel"), "the folder opens")
        self.picture("folder")
        self.press_until("alt+F4", lambda: not windows("Vaskel"), "the folder closes")

    def click_through(self, name, answer=None):
        """Answers the question about the library by this key, if it is expected."""
        setup = subprocess.Popen(wine(self.command(self.installer), desktop=True),
                                 stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.addCleanup(setup.terminate)
        self.wait_until(lambda: windows("Vaskel Setup"), "the first page shows")
        if answer:
            self.press_until("Return", lambda: len(windows("Vaskel Setup")) == 2,
                             "the question shows")
            self.picture(f"{name}-question")
            self.press_until(answer, lambda: len(windows("Vaskel Setup")) == 1,
                             "the question is answered")
            self.wait_until(lambda: UNINSTALL in registry(), "everything is installed")
        else:
            self.press_until("Return", lambda: UNINSTALL in registry(), "everything is installed")
        self.picture(name)
        self.press_until("Return", lambda: setup.poll() is not None, "the last page is left")

    def test_leaves_the_users_own_files_in_the_programs_folder(self):
        self.install()
        self.assertFalse((self.program_folder / "Everything64.dll").exists())
        own = self.program_folder / "Everything64.dll"
        shutil.copy(library, own)
        self.uninstall(self.program_folder)
        self.assertEqual(list(self.program_folder.iterdir()), [own])

    def test_updates_what_is_installed_elsewhere(self):
        folder = self.other_folder()
        # /D takes the rest of the line as the folder and allows no quotation marks.
        self.install(*f"/D={self.windows_path(folder)}".split(" "))
        program = folder / "Vaskel.exe"
        whole = program.read_bytes()
        program.write_bytes(b"old")
        self.install()
        self.assertTrue(program.read_bytes() == whole)
        self.assertFalse(self.program_folder.exists())
        self.assertEqual(values(UNINSTALL)["InstallLocation"], self.windows_path(folder))
        self.uninstall(folder)
        self.assertFalse(folder.exists())

    def test_does_not_remove_the_start_of_another_vaskel_at_log_in(self):
        self.install()
        run("reg", "add", RUN, "/f", "/v", "Vaskel", "/d", r"D:\portable\Vaskel.exe")
        self.uninstall(self.program_folder)
        self.assertEqual(values(RUN)["Vaskel"], r"D:\portable\Vaskel.exe")

    def test_runs_from_the_archive_without_being_installed(self):
        folder = self.portable()
        for name in ("GPL-3", "LGPL-3"):
            text = pathlib.Path("/usr/share/common-licenses", name).read_bytes()
            self.assertTrue(text in self.contents(folder / "licenses").values())
        shutil.copy(library, folder)
        files = self.contents(folder)
        self.stop(self.start(folder))
        self.assertTrue(self.contents(folder) == files)
        self.assertFalse(self.link.exists())

    def test_speaks_the_language_of_the_system(self):
        for language, title in (("en_US", "Vaskel Setup"), ("zh_CN", "Vaskel 安装"),
                                ("de_DE", "Vaskel Setup")):
            with self.subTest(language):
                self.see_the_pages(language, title)

    def see_the_pages(self, language, title):
        locales = self.downloads / "locales"
        locales.mkdir(exist_ok=True)
        subprocess.run(["localedef", "-i", language, "-f", "UTF-8", locales / f"{language}.UTF-8"],
                       check=True)
        environment = os.environ | {"LOCPATH": str(locales), "LC_ALL": f"{language}.UTF-8"}
        setup = subprocess.Popen(wine(self.command(self.installer), desktop=True), env=environment)
        self.addCleanup(setup.terminate)
        self.wait_until(lambda: windows(title), f"the installer is called {title}")
        self.picture(f"{language}-folder")
        self.press_until("Escape", lambda: setup.poll() is not None, "Escape ends the installer")
        self.assertEqual(setup.returncode, 1)
        self.assertFalse(self.program_folder.exists())


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], "--verbose", *sys.argv[7:]])
