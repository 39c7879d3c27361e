# SPDX-License-Identifier: GPL-3.0-or-later
"""Keys and pointer of an X display, and what one of its clients holds there. One connection does
all, since a process for each event would be slower than the program that it drives."""

import collections
import select

import time

from Xlib import X, XK, Xatom, display, error
from Xlib.ext import res, xtest
from Xlib.protocol import event

PATIENCE = 90  # seconds; far more than a program needs to answer
SHIFT = "Shift_L"
ANSWERS = X.StructureNotifyMask | X.SubstructureNotifyMask  # of the root window, to pings
MODIFIERS = {"ctrl": "Control_L", "alt": "Alt_L", "shift": SHIFT, "meta": "Super_L"}


class Screen:
    def __init__(self, name):
        self._display = display.Display(name)
        self._root = self._display.screen().root
        self._stacking = self._display.intern_atom("_NET_CLIENT_LIST_STACKING")
        self._protocols = self._display.intern_atom("WM_PROTOCOLS")
        self._ping = self._display.intern_atom("_NET_WM_PING")
        self._type = self._display.intern_atom("_NET_WM_WINDOW_TYPE")
        self._normal = self._display.intern_atom("_NET_WM_WINDOW_TYPE_NORMAL")
        self._pings = 0
        self._keysyms = {}
        self._root.change_attributes(event_mask=ANSWERS)

    def press(self, combination):
        """Presses and releases keys such as "ctrl+Return"."""
        *modifiers, key = combination.split("+") if combination != "+" else ["plus"]
        code, needs_shift = self._key(XK.string_to_keysym(key))
        held = [self._key(XK.string_to_keysym(MODIFIERS[modifier]))[0] for modifier in modifiers]
        if needs_shift and "shift" not in modifiers:
            held.append(self._key(XK.string_to_keysym(SHIFT))[0])
        for held_code in held:
            self._fake(X.KeyPress, held_code)
        self._fake(X.KeyPress, code)
        self._fake(X.KeyRelease, code)
        for held_code in reversed(held):
            self._fake(X.KeyRelease, held_code)
        self._display.sync()

    def type(self, text):
        for character in text:
            code, needs_shift = self._key(ord(character))
            shift = self._key(XK.string_to_keysym(SHIFT))[0]
            if needs_shift:
                self._fake(X.KeyPress, shift)
            self._fake(X.KeyPress, code)
            self._fake(X.KeyRelease, code)
            if needs_shift:
                self._fake(X.KeyRelease, shift)
        self._display.sync()

    def move(self, x, y):
        xtest.fake_input(self._display, X.MotionNotify, x=int(x), y=int(y))
        self._display.sync()

    def click(self, button=1):
        self._fake(X.ButtonPress, button)
        self._fake(X.ButtonRelease, button)
        self._display.sync()

    def hold(self, button):
        self._fake(X.ButtonPress, button)
        self._display.sync()

    def release(self, button):
        self._fake(X.ButtonRelease, button)
        self._display.sync()

    def ping(self, window):
        """Waits until the program has got all events that were sent to this window of it before."""
        self._pings += 1
        self._window(window).send_event(event.ClientMessage(
            window=window, client_type=self._protocols,
            data=(32, [self._ping, self._pings, window, 0, 0])))
        self._display.flush()
        deadline = time.monotonic() + PATIENCE
        while not self._has_answered():
            if time.monotonic() > deadline:
                raise AssertionError("the program does not answer")

    def _has_answered(self):
        """Reads the events until there is an answer to the last ping, or no more event."""
        if not self._display.pending_events():
            select.select([self._display.fileno()], [], [], 1)
        while self._display.pending_events():
            answer = self._display.next_event()
            if answer.type & 0x7f == X.ClientMessage and answer.client_type == self._protocols \
                    and answer.data[1][:2].tolist() == [self._ping, self._pings]:
                return True
        return False

    def make_window(self, x, y, width, height):
        """A window of this process, which takes the focus and ignores all keys."""
        window = self._root.create_window(x, y, width, height, 0, X.CopyFromParent)
        window.set_wm_name("Another program")
        window.set_wm_hints(flags=1, input=1)
        window.map()
        self._display.sync()
        return window

    def clients(self, pid):
        """The identifiers of the connections of a process."""
        found = []
        for client in self._display.res_query_clients().clients:
            answer = self._display.res_query_client_ids(
                [{"client": client.resource_base, "mask": res.LocalClientPIDMask}])
            if [value for identity in answer.ids for value in identity.value] == [pid]:
                found.append((client.resource_base, client.resource_mask))
        return found

    def resources(self, pid):
        """How many resources of each type the process holds in the server."""
        counts = collections.Counter()
        for base, _ in self.clients(pid):
            for kind in self._display.res_query_client_resources(base).types:
                counts[self._display.get_atom_name(kind.resource_type)] += kind.count
        return counts

    def hidden_lists(self, pid):
        """How many windows of lists of combo boxes the process holds: those that are hidden, that
        the window manager ignores, and that are no menu or tool tip."""
        clients = self.clients(pid)
        return sum(1 for window in self._tree(self._root)
                   if any(window.id & ~mask == base for base, mask in clients)
                   and self._is_hidden_list(window))

    def _is_hidden_list(self, window):
        try:
            attributes = window.get_attributes()
            types = window.get_full_property(self._type, Xatom.ATOM)
        except error.XError:  # it has gone
            return False
        return (attributes.override_redirect and attributes.map_state == X.IsUnmapped
                and types is not None and list(types.value) == [self._normal])

    def _tree(self, window):
        """All windows below this one."""
        try:
            children = window.query_tree().children
        except error.XError:  # it has gone
            return
        for child in children:
            yield child
            yield from self._tree(child)

    def windows(self, clients):
        """The visible windows of these clients, the topmost last."""
        managed = self._root.get_full_property(self._stacking, X.AnyPropertyType)
        ids = [child.id for child in self._root.query_tree().children]
        ids = (list(managed.value) if managed else []) + ids  # menus have no frame
        return [window for window in ids if any(window & ~mask == base for base, mask in clients)
                and self.is_visible(window)]

    def is_visible(self, window):
        try:
            return self._window(window).get_attributes().map_state == X.IsViewable
        except error.XError:  # it has gone
            return False

    def place(self, window):
        """x, y, width and height on the screen, or None if the window has gone."""
        try:
            geometry = self._window(window).get_geometry()
            corner = self._window(window).translate_coords(self._root, 0, 0)
        except error.XError:
            return None
        return -corner.x, -corner.y, geometry.width, geometry.height

    def put(self, window, x, y):
        """Asks the window manager for another place of a window."""
        self._window(window).configure(x=x, y=y)
        self._display.sync()

    def _window(self, identifier):
        return self._display.create_resource_object("window", identifier)

    def _fake(self, kind, detail):
        xtest.fake_input(self._display, kind, detail)

    def _key(self, keysym):
        """The code of a key, and whether its character needs the shift key."""
        if keysym not in self._keysyms:
            codes = sorted(self._display.keysym_to_keycodes(keysym), key=lambda code: code[1])
            if not codes or codes[0][1] > 1:
                raise ValueError(f"The keyboard lacks the symbol {keysym:#x}")
            self._keysyms[keysym] = (codes[0][0], codes[0][1] == 1)
        return self._keysyms[keysym]
