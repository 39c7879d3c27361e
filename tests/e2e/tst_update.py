# SPDX-License-Identifier: GPL-3.0-or-later
import http.server
import json
import os
import pathlib
import platform
import shutil
import signal
import stat
import subprocess
import threading

from case import EndToEndCase, main
from desktop import PATIENCE, NotYet, wait_until

from gi.repository import Atspi  # after desktop, which selects the version

ARCHITECTURE = {"x86_64": "amd64", "aarch64": "arm64"}.get(platform.machine(), platform.machine())
QUESTION = WARNING = Atspi.Role.ALERT  # the role of all Qt message boxes
SIZE = 100_000_000
SCRIPTS = pathlib.Path(__file__).resolve().parents[2] / "scripts"
FIRST_MOMENT = 1.5  # seconds; longer than the question ignores clicks and keys after it shows


class Server:
    """An update server. A case sets a function that answers each path."""

    CHECK = f"/api/v1/update/latest?platform=linux&arch={ARCHITECTURE}"

    def __init__(self):
        self.answers = {}
        self.requests = []
        server = self

        class Handler(http.server.BaseHTTPRequestHandler):
            def do_GET(self):
                server.requests.append(self.path)
                answer = server.answers.get(self.path)
                if answer:
                    answer(self)
                else:
                    self.send_error(404)

            def log_message(self, *_):
                pass

        self._server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Handler)
        self._server.daemon_threads = True
        self.address = f"http://127.0.0.1:{self._server.server_port}"
        threading.Thread(target=self._server.serve_forever, daemon=True).start()

    def offer(self, changelog="- one\n- two", path="/new"):
        self.answer(self.CHECK, json.dumps({
            "has_update": True, "version": "2.0", "changelog": changelog,
            "download_url": self.address + path, "mandatory": False}).encode())

    def answer(self, path, body):
        def send(request):
            request.send_response(200)
            request.send_header("Content-Length", str(len(body)))
            request.end_headers()
            request.wfile.write(body)
        self.answers[path] = send

    def answer_in_two_halves(self, path, size, may_go_on):
        """Sends half of this many zeros, and the rest once the event is set."""
        self.answer_in_parts(path, size, {size // 2: may_go_on})

    def answer_in_parts(self, path, size, pauses, may_begin=None):
        """Sends this many zeros, after may_begin if there is one. The keys of "pauses" are numbers of
        zeros that are left; there it waits for the event."""
        def send(request):
            if may_begin:
                may_begin.wait()
            request.send_response(200)
            request.send_header("Content-Length", str(size))
            request.end_headers()
            rest = size
            for left, may_go_on in pauses.items():
                rest = self.send_zeros(request, rest, down_to=left)
                # Qt reports received data only when more arrives.
                while not may_go_on.wait(0.05):
                    rest = self.send_zeros(request, rest, down_to=rest - 1)
            self.send_zeros(request, rest, down_to=0)
        self.answers[path] = send

    @staticmethod
    def send_zeros(request, rest, down_to):
        while rest > down_to:
            rest -= request.wfile.write(bytes(min(rest - down_to, 100_000)))
        return rest

    def close(self):
        self._server.shutdown()
        self._server.server_close()


class UpdateCase(EndToEndCase):
    def setUp(self):
        super().setUp()
        self.server = Server()
        self.addCleanup(self.server.close)
        # Run a copy, because it replaces itself.
        folder = self.home.folder / "my programs"
        folder.mkdir()
        self.copy = folder / "Vaskel"
        shutil.copy2(self.program, self.copy)
        self.launcher.program = str(self.copy)
        self.launcher.environment["VASKEL_TEST_UPDATE_SERVER"] = self.server.address

    def kill_all(self):
        for pid in self.launcher.processes():
            os.kill(pid, signal.SIGKILL)

    def wait_for_the_question(self):
        wait_until(lambda: self.launcher.dialog(QUESTION) is not None, "the question is asked")

    def answer(self, button):
        self.stays(lambda: self.launcher.dialog(QUESTION), "the question is open", FIRST_MOMENT)
        self.launcher.click_button(QUESTION, button)

    def warning_text(self):
        return self.launcher.dialog_texts(WARNING)[0]

    def temporary_files(self):
        return [path.name for path in (self.home.folder / "tmp").iterdir()
                if path.name.startswith("Vaskel_")]


class Update(UpdateCase):
    def test_replaces_itself_when_the_user_agrees(self):
        new = f'#!/bin/sh\necho "$0" >"{self.home.folder}/new-runs"\n'
        self.server.answer("/new", new.encode())
        self.server.offer()
        self.start()
        self.wait_for_the_question()
        self.assertIn("New version 2.0 is available.\n\n- one\n- two\n\nUpdate now?",
                      self.launcher.dialog_texts(QUESTION))
        self.picture("question")
        mode = stat.S_IMODE(self.copy.stat().st_mode)
        self.answer("Yes")

        self.assertEqual(self.launcher.process.wait(PATIENCE), 0)
        mark = self.home.folder / "new-runs"
        wait_until(lambda: mark.exists() and mark.read_text(), "the new program runs")
        self.assertEqual(mark.read_text(), f"{self.copy}\n")
        self.assertEqual(self.copy.read_text(), new)
        self.assertEqual(stat.S_IMODE(self.copy.stat().st_mode), mode)
        self.becomes(self.temporary_files, [])
        self.assertEqual([path.name for path in self.copy.parent.iterdir()], ["Vaskel"])

    def test_comes_back_as_the_new_version(self):
        new = self.copy.read_bytes() + b"newer"
        self.server.answer("/new", new)
        self.server.offer()
        self.start()
        old = self.launcher.process.pid
        self.wait_for_the_question()
        del self.server.answers[Server.CHECK]
        self.answer("Yes")
        self.assertEqual(self.launcher.process.wait(PATIENCE), 0)

        self.addCleanup(self.kill_all)
        wait_until(lambda: self.launcher.processes() not in ([], [old]), "the new version runs")
        self.assertEqual(self.copy.read_bytes(), new)
        self.becomes(self.temporary_files, [])
        # It is the primary instance, once it is ready: a second start ends at once.
        [pid] = self.launcher.processes()
        self.launcher.attach_to_foreign(pid)
        self.assertEqual(self.launcher.start_process().wait(PATIENCE), 0)

    def test_runs_on_when_the_user_declines(self):
        self.server.offer()
        self.start()
        self.wait_for_the_question()
        self.answer("No")
        wait_until(lambda: self.launcher.dialog(QUESTION) is None, "the question is gone")
        self.launcher.type("note")
        self.shows_titles("Notepad")
        self.assertEqual(self.server.requests, [Server.CHECK])
        self.assertEqual(self.temporary_files(), [])

    def test_shows_how_far_the_download_is_and_streams_it(self):
        may_go_on = threading.Event()
        self.addCleanup(may_go_on.set)
        self.server.answer_in_two_halves("/new", SIZE, may_go_on)
        self.server.offer()
        # A folder takes the script's name: the download ends, but the program runs on.
        (self.home.folder / "tmp/Vaskel_updater.bat").mkdir()
        self.start()
        self.wait_for_the_question()
        before = self.memory()
        self.answer("Yes")
        self.becomes(self.launcher.progress, 50)
        self.picture("progress")
        may_go_on.set()

        self.becomes(lambda: self.warning_text(), "Failed to create updater script")
        self.assertIsNone(self.launcher.progress())
        self.assertEqual((self.home.folder / "tmp/Vaskel_update.exe").stat().st_size, SIZE)
        self.picture("script-warning")
        growth = self.memory("VmHWM") - before
        print(f"The most that the memory grew by: {growth} kB")
        if "ASAN_OPTIONS" not in os.environ:  # the address sanitizer keeps what was freed
            self.assertLess(growth, 8 * 1024)

    def test_warns_when_the_download_fails_and_runs_on(self):
        self.server.offer(path="/missing")
        self.start()
        self.wait_for_the_question()
        self.answer("Yes")
        self.becomes(lambda: self.warning_text(), f"Error transferring {self.server.address}/missing"
                                                  " - server replied: Not Found")
        self.picture("warning")
        self.launcher.click_button(WARNING, "OK")
        wait_until(lambda: self.launcher.dialog(WARNING) is None, "the warning is gone")
        self.assertEqual(self.temporary_files(), [])
        self.launcher.type("note")
        self.shows_titles("Notepad")

    def test_keeps_a_long_change_log_on_the_screen_and_out_of_markup(self):
        self.server.offer(changelog="<h1>Changes</h1>\n" + "\n".join(
            f"* a change with the number {number}" for number in range(1000)))
        self.start()
        self.wait_for_the_question()
        text = self.launcher.dialog_texts(QUESTION)[-1]
        self.assertTrue(text.startswith("New version 2.0 is available.\n\n<h1>Changes</h1>\n* a"))
        self.picture("long")
        self.answer("No")
        wait_until(lambda: self.launcher.dialog(QUESTION) is None, "the question is gone")

    def test_asks_even_if_the_window_is_hidden(self):
        self.server.offer()
        self.start()
        self.launcher.press("Escape")
        self.hides()
        self.wait_for_the_question()
        self.picture("hidden")
        self.answer("No")
        wait_until(lambda: self.launcher.dialog(QUESTION) is None, "the question is gone")
        self.assertIsNone(self.launcher.process.poll())
        self.start_again()

    def test_asks_on_even_if_the_window_hides_when_it_loses_the_focus(self):
        self.home.set_preferences(autoHideOnFocusLoss="true")
        self.server.offer()
        self.start()
        self.wait_for_the_question()
        self.hides()
        self.picture("unfocused")
        self.answer("No")
        wait_until(lambda: self.launcher.dialog(QUESTION) is None, "the question is gone")
        self.start_again()

    def test_leaves_what_is_being_typed_to_the_box(self):
        self.server.offer()
        self.start()
        # The question does not come while the user types, so that no letter is lost.
        typed = ""

        def asks():
            nonlocal typed
            self.desktop.run("xdotool", "type", "--delay", "40", 20 * "y")
            typed += 20 * "y"
            if len(typed) < 100 or not self.server.requests:
                raise NotYet(self.server.requests)
            return self.server.requests
        self.assertEqual(wait_until(asks, "the server is asked"), [Server.CHECK])
        wait_until(lambda: self.launcher.text() == typed, "the box has the keys")
        self.wait_for_the_question()
        # Letters that would answer it.
        self.desktop.run("xdotool", "key", "n", "space", "y")
        typed += "n y"
        wait_until(lambda: self.launcher.text() == typed, "the box has the keys")
        self.picture("typed")
        self.assertIsNotNone(self.launcher.dialog(QUESTION))
        self.assertEqual(self.server.requests, [Server.CHECK])

        # Later, a letter answers with Alt alone, and Space only on a button.
        self.stays(lambda: self.launcher.dialog(QUESTION), "the question is open", FIRST_MOMENT)
        for key in ("y", "Return", "space"):
            self.launcher.press(key)
        self.stays(lambda: self.launcher.dialog(QUESTION), "the question is open", 0.5)
        self.launcher.press("alt+n")
        wait_until(lambda: self.launcher.dialog(QUESTION) is None, "the question is gone")
        self.assertEqual(self.launcher.text(), typed)

    def test_stays_silent_without_an_answer(self):
        is_over = threading.Event()
        self.addCleanup(is_over.set)
        self.server.answers[Server.CHECK] = lambda _: is_over.wait()
        self.start()
        wait_until(lambda: self.server.requests == [Server.CHECK], "the server is asked")
        self.launcher.type("note")
        self.shows_titles("Notepad")
        self.assertIsNone(self.launcher.dialog(QUESTION))

    def memory(self, field="VmRSS"):
        """A size of the process in kilobytes."""
        with open(f"/proc/{self.launcher.process.pid}/status") as status:
            return next(int(line.split()[1]) for line in status if line.startswith(field))


class SignedUpdate(UpdateCase):
    """From the maintainer's scripts to the program that runs."""

    def setUp(self):
        super().setUp()
        self.public = [self.run_script("new-update-key", self.home.folder / name).strip()
                       for name in ("first", "second")]
        self.launcher.environment["VASKEL_TEST_UPDATE_KEYS"] = " ".join(self.public)
        self.new = self.copy.read_bytes() + b"newer"

    def run_script(self, name, *arguments):
        return subprocess.run([SCRIPTS / name, *arguments], check=True, text=True,
                              stdout=subprocess.PIPE).stdout

    def offer_signed(self, key="first", version="2.0.0"):
        file, news = self.home.folder / "new", self.home.folder / "news"
        file.write_bytes(self.new)
        news.write_text("- one é")
        self.server.answer("/new", self.new)
        self.server.answer(Server.CHECK, self.run_script(
            "sign-update", file, "--version", version, "--key", self.home.folder / key,
            "--changelog", news, "--url", f"{self.server.address}/new").encode())

    def log(self):
        return "".join(path.read_text() for path in (self.home.data / "Vaskel").glob("*.log"))

    def test_goes_from_the_scripts_to_the_running_program(self):
        for key in ("first", "second"):
            with self.subTest(key):
                self.offer_signed(key)
                self.start()
                old = self.launcher.process.pid
                self.wait_for_the_question()
                self.assertIn("New version 2.0.0 is available.\n\n- one é\n\nUpdate now?",
                              self.launcher.dialog_texts(QUESTION))
                del self.server.answers[Server.CHECK]
                self.answer("Yes")
                self.assertEqual(self.launcher.process.wait(PATIENCE), 0)
                wait_until(lambda: self.launcher.processes() not in ([], [old]),
                           "the new version runs")
                self.assertEqual(self.copy.read_bytes(), self.new)
                self.becomes(self.temporary_files, [])
                self.kill_all()
                self.new += b"!"

    def test_asks_nothing_for_what_nobody_trusted_has_signed(self):
        self.run_script("new-update-key", self.home.folder / "stranger")
        self.offer_signed("stranger")
        self.start()
        wait_until(lambda: "Ignoring an update without a valid signature" in self.log(),
                   "the offer is ignored")
        self.assertIsNone(self.launcher.dialog(QUESTION))
        self.assertEqual(self.server.requests, [Server.CHECK])

    def test_asks_nothing_for_an_older_version(self):
        self.offer_signed(version="0.9")
        self.start()
        wait_until(lambda: "Ignoring an update that is not newer" in self.log(),
                   "the offer is ignored")
        self.assertIsNone(self.launcher.dialog(QUESTION))

    def test_keeps_itself_if_the_server_sends_another_file(self):
        before = self.copy.read_bytes()
        self.offer_signed()
        self.server.answer("/new", self.new[:-1] + b"!")
        self.start()
        self.wait_for_the_question()
        self.answer("Yes")
        self.becomes(self.warning_text, "The downloaded file is not the one that was signed."
                                        " Nothing was changed.")
        self.picture("another-file")
        self.assertEqual(self.temporary_files(), [])
        self.assertEqual(self.copy.read_bytes(), before)


if __name__ == "__main__":
    main()
