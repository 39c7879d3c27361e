# SPDX-License-Identifier: GPL-3.0-or-later

# Key codes of the kernel, linux/input-event-codes.h.
KEYS = {"Escape": 1, "Tab": 15, "Return": 28, "Control": 29, "Shift": 42, "Alt": 56, "space": 57, "F8": 66,
        "F9": 67, "Meta": 125}
for first, letters in ((16, "qwertyuiop"), (30, "asdfghjkl"), (44, "zxcvbnm")):
    KEYS.update((letter, first + index) for index, letter in enumerate(letters))


class Keyboard:
    """Types on a Wayland compositor; a subclass sends the keys."""

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
        raise NotImplementedError

    def _send_key(self, key, state):
        raise NotImplementedError
