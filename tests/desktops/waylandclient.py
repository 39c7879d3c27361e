# SPDX-License-Identifier: GPL-3.0-or-later
"""The wire protocol of Wayland, as far as a client with nothing but a keyboard needs it."""

import os
import socket
import struct

DISPLAY, REGISTRY, CALLBACK = 1, 2, 3  # ids of objects
FIRST_FREE = 4


class WaylandClient:
    def __init__(self, socket_path):
        self._socket = socket.socket(socket.AF_UNIX)
        self._socket.settimeout(30)
        self._socket.connect(os.fspath(socket_path))
        self._received = b""
        self._next = FIRST_FREE
        self.send(DISPLAY, 1, struct.pack("=I", REGISTRY))  # get_registry
        self._globals = self._read_globals()

    def bind(self, interface, version):
        """Returns the id of an object for a global of the compositor."""
        if interface not in self._globals:
            raise RuntimeError(f"the compositor has no {interface}")
        number = self.new_id()
        self.send(REGISTRY, 0, struct.pack("=I", self._globals[interface]) + text(interface)
                  + struct.pack("=II", version, number))
        return number

    def new_id(self):
        self._next += 1
        return self._next - 1

    def send(self, target, opcode, arguments, descriptors=()):
        message = struct.pack("=IHH", target, opcode, 8 + len(arguments)) + arguments
        socket.send_fds(self._socket, [message], descriptors)

    def close(self):
        self._socket.close()

    def _read_globals(self):
        """The names of the interfaces in the registry."""
        self.send(DISPLAY, 0, struct.pack("=I", CALLBACK))  # sync: all globals come before it
        found = {}
        while True:
            sender, opcode, arguments = self._receive()
            if sender == REGISTRY and opcode == 0:
                length = struct.unpack_from("=I", arguments, 4)[0]
                interface = arguments[8:8 + length - 1].decode()
                found[interface] = struct.unpack_from("=I", arguments)[0]
            elif sender == CALLBACK:
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
