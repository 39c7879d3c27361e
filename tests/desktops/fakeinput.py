# SPDX-License-Identifier: GPL-3.0-or-later
import struct

from keyboard import KEYS, Keyboard
from waylandclient import WaylandClient, text


class FakeInput(Keyboard):
    """Types on KWin, through its Wayland protocol for fake input."""

    def __init__(self, socket_path):
        self._client = WaylandClient(socket_path)
        self._input = self._client.bind("org_kde_kwin_fake_input", 4)
        self._client.send(self._input, 0, text("tests") + text("types"))  # authenticate

    def close(self):
        self._client.close()

    def _send_key(self, key, state):
        self._client.send(self._input, 10, struct.pack("=II", KEYS[key], state))  # keyboard_key
