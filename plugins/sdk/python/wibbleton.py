# SPDX-License-Identifier: MIT
"""The Wibbleton plug-in client for Python.

A plug-in that Wibbleton starts finds the program's socket in WIBBLETON_SERVER
and its token in WIBBLETON_TOKEN:

    from wibbleton import Wibbleton_Class
    wib = Wibbleton_Class()
    red = wib.Wib_GetRBuffer()
    red[0, 0] = 255
    wib.Wib_SetRbuffer(red)

Every method of the automation object is a method of Wibbleton_Class with the
same name and arguments (wibbleton_methods.py, generated from the program's
method table). A call the program refuses raises WibbletonError with
the program's error code and message. Uses Debian's python3-msgpack.
"""

import os
import socket

import msgpack

from wibbleton_methods import WibbletonMethods

__all__ = ["Plane", "Wibbleton_Class", "WibbletonError", "resolve_server_path"]

_REQUEST = 0
_RESPONSE = 1
_NOTIFICATION = 2

# Room for one plane of the largest document the program accepts, and the rest.
_MAX_MESSAGE = (16384 + 1) ** 2 + (1 << 20)
_READ_CHUNK = 4 << 20
_SOCKET_BUFFER = 4 << 20


class WibbletonError(Exception):
    """A call the program refused: 5 a bad argument, 9 a coordinate outside
    the plane, 70 a wrong token, 438 an unknown method."""

    def __init__(self, code, message):
        super().__init__("%d: %s" % (code, message))
        self.code = code
        self.message = message


class Plane:
    """A byte plane with inclusive upper bounds: plane[x, y] is
    data[y * (ubound_x + 1) + x]. A document W x H has planes with upper
    bounds (W, H)."""

    __slots__ = ("ubound_x", "ubound_y", "data")

    def __init__(self, ubound_x, ubound_y, data=None):
        size = (ubound_x + 1) * (ubound_y + 1)
        if data is None:
            data = bytearray(size)
        elif len(data) != size:
            raise ValueError("a plane with upper bounds (%d, %d) holds %d bytes, not %d"
                             % (ubound_x, ubound_y, size, len(data)))
        self.ubound_x = ubound_x
        self.ubound_y = ubound_y
        self.data = bytearray(data)

    def _index(self, key):
        x, y = key
        if not (0 <= x <= self.ubound_x and 0 <= y <= self.ubound_y):
            raise IndexError("Subscript out of range")
        return y * (self.ubound_x + 1) + x

    def __getitem__(self, key):
        return self.data[self._index(key)]

    def __setitem__(self, key, value):
        self.data[self._index(key)] = value

    def __eq__(self, other):
        return (isinstance(other, Plane) and self.ubound_x == other.ubound_x
                and self.ubound_y == other.ubound_y and self.data == other.data)

    def __repr__(self):
        return "Plane(%d, %d, <%d bytes>)" % (self.ubound_x, self.ubound_y, len(self.data))


def resolve_server_path(name):
    """The socket path of a server name, as Qt's local sockets resolve it: a
    name that starts with '/' is the path; a bare name lies in $TMPDIR, else /tmp."""
    if name.startswith("/"):
        return name
    folder = os.environ.get("TMPDIR") or "/tmp"
    return os.path.normpath(os.path.join(folder, name))


def _to_wire(value):
    if isinstance(value, Plane):
        return [value.ubound_x, value.ubound_y, bytes(value.data)]
    return value


def _from_wire(value):
    # Only planes travel as [int, int, bin].
    if (isinstance(value, list) and len(value) == 3 and isinstance(value[2], bytes)
            and isinstance(value[0], int) and isinstance(value[1], int)):
        return Plane(value[0], value[1], value[2])
    return value


class Wibbleton_Class(WibbletonMethods):
    """The automation object of the running program."""

    def __init__(self, server=None, token=None):
        server = server if server is not None else os.environ.get("WIBBLETON_SERVER")
        token = token if token is not None else os.environ.get("WIBBLETON_TOKEN")
        if not server or not token:
            raise RuntimeError("WIBBLETON_SERVER and WIBBLETON_TOKEN are not set: "
                               "start the plug-in from Wibbleton")
        self._socket = socket.socket(socket.AF_UNIX, socket.SOCK_STREAM)
        for option in (socket.SO_SNDBUF, socket.SO_RCVBUF):
            self._socket.setsockopt(socket.SOL_SOCKET, option, _SOCKET_BUFFER)
        self._socket.connect(resolve_server_path(server))
        self._unpacker = msgpack.Unpacker(raw=False, max_buffer_size=_MAX_MESSAGE)
        self._next_id = 1
        self._events = []
        self.Wib_Connect(token)

    def call(self, method, *args):
        """Calls any method by name and returns its result."""
        msgid = self._next_id
        self._next_id += 1
        request = [_REQUEST, msgid, method, [_to_wire(a) for a in args]]
        self._socket.sendall(msgpack.packb(request, use_bin_type=True))
        return _from_wire(self._await(msgid))

    def events(self):
        """Notifications that have arrived so far, oldest first, as
        (method, params) pairs; taking them empties the queue."""
        events, self._events = self._events, []
        return events

    def wait_event(self, timeout=None):
        """The next notification, waiting for it: after Wib_ListenEvents(-1)
        the canvas's ("WibMouseDown", [button, shift, x, y, pressure]), the
        same for WibMouseMove and WibMouseUp, and ("WibEnd", []). None when
        nothing comes within `timeout` seconds; None as timeout waits for ever."""
        self._socket.settimeout(timeout)
        try:
            while not self._events:
                for message in self._unpacker:
                    if message[0] != _NOTIFICATION:
                        raise RuntimeError("the program answered out of turn")
                    self._events.append((message[1], message[2]))
                if self._events:
                    break
                chunk = self._socket.recv(_READ_CHUNK)
                if not chunk:
                    raise ConnectionError("Wibbleton closed the connection")
                self._unpacker.feed(chunk)
        except socket.timeout:
            return None
        finally:
            self._socket.settimeout(None)
        return self._events.pop(0)

    def close(self):
        self._socket.close()

    def __enter__(self):
        return self

    def __exit__(self, *exc):
        self.close()

    def _await(self, msgid):
        while True:
            for message in self._unpacker:
                kind = message[0]
                if kind == _NOTIFICATION:
                    self._events.append((message[1], message[2]))
                    continue
                if kind != _RESPONSE or message[1] != msgid:
                    raise RuntimeError("the program answered out of turn")
                error = message[2]
                if error is not None:
                    raise WibbletonError(error[0], error[1])
                return message[3]
            chunk = self._socket.recv(_READ_CHUNK)
            if not chunk:
                raise ConnectionError("Wibbleton closed the connection")
            self._unpacker.feed(chunk)
