# SPDX-License-Identifier: GPL-3.0-or-later
"""Types on KWin, through its Wayland protocol for fake input."""

import os
import socket
import struct

DISPLAY, REGISTRY, CALLBACK, INPUT = 1, 2, 3, 4  # ids of objects
INTERFACE = "org_kde_kwin_fake_input"

# Key codes of the kernel, linux/input-event-codes.h.
KEYS = {"Escape": 1, "Return": 28, "Control": 29, "Shift": 42, "Alt": 56, "space": 57, "F8": 66,
        "F9": 67, "Meta": 125}
for first, letters in ((16, "qwertyuiop"), (30, "asdfghjkl"), (44, "zxcvbnm")):
    KEYS.update((letter, first + index) for index, letter in enumerate(letters))


class FakeInput:
    """A client with nothing but a keyboard."""

    def __init__(self, socket_path):
        self._socket = socket.socket(socket.AF_UNIX)
        self._socket.settimeout(30)
        self._socket.connect(os.fspath(socket_path))
        self._received = b""
        self._send(DISPLAY, 1, struct.pack("=I", REGISTRY))  # get_registry
        name = self._find()
        self._send(REGISTRY, 0, struct.pack("=I", name) + text(INTERFACE)  # bind
                   + struct.pack("=II", 4, INPUT))
        self._send(INPUT, 0, text("tests") + text("types"))  # authenticate

    def hold(self, key):
        self._send_key(key, 1)

    def release(self, key):
        self._send_key(key, 0)

    def press(self, *keys):
        """Presses the keys one after the other, and releases them in reverse order."""
        for key in keys:
            self.hold(key)
        for key in reversed(keys):
            self.release(key)

    def type(self, letters):
        for letter in letters:
            self.press({"\n": "Return", " ": "space"}.get(letter, letter))

    def close(self):
        self._socket.close()

    def _send_key(self, key, state):
        self._send(INPUT, 10, struct.pack("=II", KEYS[key], state))  # keyboard_key

    def _send(self, target, opcode, arguments):
        self._socket.sendall(struct.pack("=IHH", target, opcode, 8 + len(arguments)) + arguments)

    def _find(self):
        """The name of the interface in the registry."""
        self._send(DISPLAY, 0, struct.pack("=I", CALLBACK))  # sync: all globals come before it
        found = None
        while True:
            sender, opcode, arguments = self._receive()
            if sender == REGISTRY and opcode == 0:
                length = struct.unpack_from("=I", arguments, 4)[0]
                if arguments[8:8 + length - 1] == INTERFACE.encode():
                    found = struct.unpack_from("=I", arguments)[0]
            elif sender == CALLBACK:
                if found is None:
                    raise RuntimeError(f"the compositor has no {INTERFACE}")
                return found

    def _receive(self):
        sender, opcode, size = struct.unpack("=IHH", self._read(8))
        return sender, opcode, self._read(size - 8)

    def _read(self, size):
        while len(self._received) < size:
            chunk = self._socket.recv(4096)
            if not chunk:
                raise RuntimeError("the compositor has closed the connection")
            self._received += chunk
        data, self._received = self._received[:size], self._received[size:]
        return data


def text(value):
    """A string as an argument: its length with the final zero, and padding."""
    data = value.encode() + b"\0"
    return struct.pack("=I", len(data)) + data + b"\0" * (-len(data) % 4)
