# SPDX-License-Identifier: GPL-3.0-or-later
import os
import struct
import time

from keyboard import KEYS, Keyboard
from waylandclient import WaylandClient

# The compositor completes it from the system's files.
KEYMAP = b"""xkb_keymap {
    xkb_keycodes { include "evdev+aliases(qwerty)" };
    xkb_types { include "complete" };
    xkb_compatibility { include "complete" };
    xkb_symbols { include "pc+us+inet(evdev)" };
};
\0"""
MODIFIERS = {"Shift": 1 << 0, "Control": 1 << 2, "Alt": 1 << 3, "Meta": 1 << 6}


class VirtualKeyboard(Keyboard):
    """Types on a compositor of wlroots, through the Wayland protocol for virtual keyboards."""

    def __init__(self, socket_path):
        self._client = WaylandClient(socket_path)
        seat = self._client.bind("wl_seat", 1)
        manager = self._client.bind("zwp_virtual_keyboard_manager_v1", 1)
        self._keyboard = self._client.new_id()
        self._client.send(manager, 0, struct.pack("=II", seat, self._keyboard))
        self._send_keymap()
        self._modifiers = 0

    def close(self):
        self._client.close()

    def _send_keymap(self):
        file = os.memfd_create("keymap")
        try:
            os.write(file, KEYMAP)
            self._client.send(self._keyboard, 0, struct.pack("=II", 1, len(KEYMAP)), [file])
        finally:
            os.close(file)

    def _send_key(self, key, state):
        milliseconds = int(time.monotonic() * 1000) & 0xffffffff
        self._client.send(self._keyboard, 1, struct.pack("=III", milliseconds, KEYS[key], state))
        if key in MODIFIERS:
            # The compositor does not find out by itself.
            self._modifiers ^= MODIFIERS[key]
            self._client.send(self._keyboard, 2, struct.pack("=IIII", self._modifiers, 0, 0, 0))
