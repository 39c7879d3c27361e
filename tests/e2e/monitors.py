# SPDX-License-Identifier: GPL-3.0-or-later
"""Divides the virtual screen into monitors, which can be added and removed like real ones."""

import ctypes


class _Monitor(ctypes.Structure):
    """XRRMonitorInfo of libXrandr."""

    _fields_ = [("name", ctypes.c_ulong), ("primary", ctypes.c_int), ("automatic", ctypes.c_int),
                ("noutput", ctypes.c_int), ("x", ctypes.c_int), ("y", ctypes.c_int),
                ("width", ctypes.c_int), ("height", ctypes.c_int), ("mwidth", ctypes.c_int),
                ("mheight", ctypes.c_int), ("outputs", ctypes.POINTER(ctypes.c_ulong))]


class Monitors:
    def __init__(self, display):
        self._x11 = ctypes.CDLL("libX11.so.6")
        self._randr = ctypes.CDLL("libXrandr.so.2")
        pointer, number = ctypes.c_void_p, ctypes.c_ulong
        self._x11.XOpenDisplay.restype = pointer
        self._x11.XCloseDisplay.argtypes = [pointer]
        self._x11.XDefaultRootWindow.argtypes = [pointer]
        self._x11.XDefaultRootWindow.restype = number
        self._x11.XInternAtom.argtypes = [pointer, ctypes.c_char_p, ctypes.c_int]
        self._x11.XInternAtom.restype = number
        self._x11.XSync.argtypes = [pointer, ctypes.c_int]
        self._randr.XRRGetMonitors.argtypes = [pointer, number, ctypes.c_int,
                                               ctypes.POINTER(ctypes.c_int)]
        self._randr.XRRGetMonitors.restype = ctypes.POINTER(_Monitor)
        self._randr.XRRSetMonitor.argtypes = [pointer, number, ctypes.POINTER(_Monitor)]
        self._randr.XRRDeleteMonitor.argtypes = [pointer, number, number]

        self._display = self._x11.XOpenDisplay(display.encode())
        self._root = self._x11.XDefaultRootWindow(self._display)
        self._names = []

    def add(self, name, x, y, width, height):
        """Adds a monitor; the first one takes the place of the whole screen and is primary."""
        is_first = not self._names
        # The output of the whole screen, which has a monitor of its own until it is in another.
        whole = self._randr.XRRGetMonitors(self._display, self._root, 1,
                                           ctypes.byref(ctypes.c_int()))[0]
        monitor = _Monitor(self._atom(name), is_first, 0, whole.noutput if is_first else 0, x, y,
                           width, height, width // 4, height // 4, whole.outputs)
        self._randr.XRRSetMonitor(self._display, self._root, ctypes.byref(monitor))
        self._x11.XSync(self._display, 0)
        self._names.append(name)

    def remove(self, name):
        self._randr.XRRDeleteMonitor(self._display, self._root, self._atom(name))
        self._x11.XSync(self._display, 0)
        self._names.remove(name)

    def close(self):
        """Removes all; the whole screen is one monitor again."""
        for name in reversed(list(self._names)):
            self.remove(name)
        self._x11.XCloseDisplay(self._display)

    def _atom(self, name):
        return self._x11.XInternAtom(self._display, name.encode(), 0)
