# SPDX-License-Identifier: GPL-3.0-or-later
"""A plug-in that gets as far as it is told and then waits to be killed.

Usage: dying_plugin.py SERVER TOKEN MODE, MODE being "plane" (half of a
Wib_SetRbuffer request for a 512 x 512 document) or "locks" (holds the
interface and buffer locks). It writes "ready" on standard output when there.
"""
import socket
import sys
import time

import msgpack


def main():
    server, token, mode = sys.argv[1:4]
    s = socket.socket(socket.AF_UNIX, socket.SOCK_STREAM)
    s.connect(server)
    unpacker = msgpack.Unpacker(raw=False)
    msgid = 0

    def call(method, *params):
        nonlocal msgid
        msgid += 1
        s.sendall(msgpack.packb([0, msgid, method, list(params)]))
        for answer in unpacker:
            return answer
        while True:
            unpacker.feed(s.recv(65536))
            for answer in unpacker:
                return answer

    call("Wib_Connect", token)
    if mode == "plane":
        request = msgpack.packb([0, 99, "Wib_SetRbuffer", [[512, 512, bytes(513 * 513)]]])
        s.sendall(request[: len(request) // 2])
    else:
        call("Wib_LockInterface")
        call("Wib_LockBuffer")
    print("ready", flush=True)
    time.sleep(60)


main()
