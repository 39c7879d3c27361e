# SPDX-License-Identifier: GPL-3.0-or-later
"""A screen reader and what it says.

Orca hands its texts to Speech Dispatcher. Here a server with the same protocol, SSIP, takes them
and speaks none.
"""

import html
import json
import os
import pathlib
import re
import signal
import socket
import subprocess
import tempfile
import threading

from desktop import NotYet, PATIENCE, start_tied, stop, wait_until

REPLIES = {
    "HISTORY GET CLIENT_ID": "245-1\r\n245 OK CLIENT ID SENT",
    "LIST OUTPUT_MODULES": "250-recorder\r\n250 OK MODULE LIST SENT",
    "LIST SYNTHESIS_VOICES": "249-Recorder\ten\tnone\r\n249 OK VOICE LIST SENT",
    "GET OUTPUT_MODULE": "251-recorder\r\n251 OK GET RETURNED",
    "GET LANGUAGE": "251-en\r\n251 OK GET RETURNED",
    "GET RATE": "251-0\r\n251 OK GET RETURNED",
    "GET PITCH": "251-0\r\n251 OK GET RETURNED",
    "GET VOLUME": "251-100\r\n251 OK GET RETURNED",
    "SPEAK": "230 OK RECEIVING DATA",
}


class SpeechServer:
    """Records what its clients want to be spoken, in the order of arrival."""

    def __init__(self, path):
        self.texts = []
        self._socket = socket.socket(socket.AF_UNIX)
        self._socket.bind(str(path))
        self._socket.listen()
        threading.Thread(target=self._accept, daemon=True).start()

    def close(self):
        self._socket.close()

    def _accept(self):
        while True:
            try:
                connection, _ = self._socket.accept()
            except OSError:
                return
            threading.Thread(target=self._serve, args=[connection], daemon=True).start()

    def _serve(self, connection):
        with connection, connection.makefile("rw", encoding="utf-8", newline="\r\n") as stream:
            def reply(text):
                stream.write(text + "\r\n")
                stream.flush()

            for line in stream:
                command = line.strip()
                reply(REPLIES.get(command, "200 OK"))
                if command == "SPEAK":
                    self._record(self._data(stream))
                    reply("225-1\r\n225 OK MESSAGE QUEUED")
                elif command.startswith(("CHAR ", "KEY ")):
                    self._record(command.split(" ", 1)[1])

    def _data(self, stream):
        lines = []
        for line in stream:
            if line == ".\r\n":
                break
            lines.append(line.removeprefix("."))
        return "".join(lines)

    def _record(self, markup):
        text = html.unescape(re.sub("<[^>]*>", "", markup))
        self.texts.append(" ".join(text.split()))


# Seconds for each start. It takes half a second on an idle machine.
START_PATIENCES = [PATIENCE / 9, PATIENCE / 4, PATIENCE / 2, PATIENCE]

ORCA = "/usr/bin/orca"

# Which keys are pressed is of no interest. Newer versions have replaced their own file by GSettings.
SETTINGS = {"enableKeyEcho": False, "enableEchoByCharacter": False}
GSETTINGS = "[org/gnome/orca/default/typing-echo]\nkey-echo=false\n"

# What Orca says of a widget, by the major versions from which on it does so.
WORDS = {
    "alert": {43: ["alert {}."], 51: ["alert {}"]},
    "button": {43: ["{} push button."], 48: ["{} button."], 51: ["{} button"]},
    "dialog": {43: ["{} dialog."], 48: ["{} dialog"]},
    "field": {43: ["{} text."], 51: ["{} text"]},
    "item": {43: ["{}."], 51: ["{}"]},
    "layered pane": {43: ["layered pane"], 48: ["layered pane 0 items"]},
    "list": {43: ["{0}.", "List with {1}."], 48: ["{0} List with {1}"]},
    "notification": {43: ["notification {}."], 48: ["{}"]},
    "tree": {43: ["{} tree."], 48: ["{} tree.", "{}"], 51: ["{} tree"]},
    "window": {43: ["{} frame."], 48: ["{}."], 51: ["{}"]},
}


def is_aside(text):
    """What newer versions say of a field some time after its text was replaced, or of a panel
    around a widget, once or twice and with its tool tip."""
    return text == "Text unselected." or text.endswith(" panel")


def output_of_orca(option):
    return subprocess.run([ORCA, option], stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
                          text=True, timeout=PATIENCE).stdout


def options_of_orca():
    """Newer versions cannot be told to leave out braille, and do not speak if they are."""
    return ["--disable", "braille"] if "--disable" in output_of_orca("--help") else []


class Orca:
    """The running screen reader."""

    def __init__(self, desktop):
        self._folder = tempfile.TemporaryDirectory(prefix="vaskel-orca-")
        folder = pathlib.Path(self._folder.name)
        address = folder / "speech"
        self._server = SpeechServer(address)
        self._write_settings(folder / ".local/share/orca")
        self._write_gsettings(folder / ".config/glib-2.0/settings")
        self._hide_others(folder / "bin")
        self._environment = desktop.environment() | {
            "PATH": f"{folder}/bin:{os.environ['PATH']}", "HOME": str(folder),
            "XDG_RUNTIME_DIR": str(folder), "LANG": "C.UTF-8",
            "SPEECHD_ADDRESS": f"unix_socket:{address}", "PYTHONFAULTHANDLER": "1",
            "GSETTINGS_BACKEND": "keyfile"}
        self.mark = 0
        self.version = int(re.search(r"[0-9]+", output_of_orca("--version"))[0])
        self._start()

    def _start(self):
        """Starts it until it speaks: often the first one on a new bus waits for something for ever."""
        for patience in START_PATIENCES:
            with tempfile.TemporaryFile("w+") as messages:
                self._process = start_tied([ORCA, *options_of_orca()],
                                           env=self._environment, stdout=messages, stderr=messages)
                try:
                    wait_until(self._speaks, "the screen reader speaks", patience)
                    return
                except AssertionError:
                    self._process.send_signal(signal.SIGABRT)  # it writes what it waits for
                    self._process.wait()
                messages.seek(0)
                last_words = messages.read()
        raise AssertionError(f"The screen reader never came up; it said {self.said()} and wrote "
                             + last_words)

    @staticmethod
    def _hide_others(folder):
        """It would end at once beside another one of the same user, even on another bus."""
        folder.mkdir()
        pgrep = folder / "pgrep"
        pgrep.write_text("#!/bin/sh\nexit 1\n")
        pgrep.chmod(0o755)

    def _speaks(self):
        if self._process.poll() is not None:
            raise NotYet(f"it ended with {self._process.returncode}")
        return "Screen reader on." in self.said()

    @staticmethod
    def _write_settings(folder):
        folder.mkdir(parents=True)
        profile = {"profile": ["Default", "default"], "pronunciations": {}, "keybindings": {}}
        (folder / "user-settings.conf").write_text(json.dumps({
            "general": {"startingProfile": profile["profile"]}, "pronunciations": {},
            "keybindings": {}, "profiles": {"default": profile | SETTINGS}}))

    @staticmethod
    def _write_gsettings(folder):
        folder.mkdir(parents=True)
        (folder / "keyfile").write_text(GSETTINGS)

    def close(self):
        stop(self._process)
        self._server.close()
        self._folder.cleanup()

    def forget(self):
        """Leaves out of said() what has been said so far."""
        self.mark = len(self._server.texts)

    def said(self):
        """What has been said since the last forget()."""
        texts = self._server.texts[self.mark:]
        return texts if self.version < 48 else [text for text in texts if not is_aside(text)]

    def words(self, kind, *texts):
        """What this version says of a widget of that kind with these texts."""
        newest = max(version for version in WORDS[kind] if version <= self.version)
        said = [words.format(*texts) for words in WORDS[kind][newest]]
        return [text.replace("...", " dot dot dot") for text in said] if self.version < 48 else said
