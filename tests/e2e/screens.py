#!/usr/bin/env python3
"""Gives a running Xvnc several monitors: screens.py SOCKET X,Y,W,H..."""
import socket
import struct
import sys

boxes = [tuple(map(int, box.split(","))) for box in sys.argv[2:]]
server = socket.socket(socket.AF_UNIX)
server.connect(sys.argv[1])
stream = server.makefile("rb")


def layout():
    """Reads one screen update; its status, or None if it does not speak of the layout."""
    kind, count = struct.unpack(">BxH", stream.read(4))
    assert kind == 0, f"unexpected message {kind}"
    status = None
    for _ in range(count):
        _, y, w, h, encoding = struct.unpack(">HHHHi", stream.read(12))
        if encoding == -308:
            stream.read(16 * struct.unpack(">Bxxx", stream.read(4))[0])
            status = y
        elif encoding == 0:
            stream.read(w * h * 4)
    return status


stream.read(12)
server.sendall(b"RFB 003.008\n")
stream.read(stream.read(1)[0])
server.sendall(b"\1")  # no password
stream.read(4)
server.sendall(b"\1")  # shared
stream.read(20)
stream.read(struct.unpack(">I", stream.read(4))[0])
server.sendall(struct.pack(">BBHiii", 2, 0, 3, 0, -223, -308))  # what layouts are told with
server.sendall(struct.pack(">BBHHHH", 3, 0, 0, 0, 1, 1))
while layout() is None:
    pass
width = max(x + w for x, _, w, _ in boxes)
height = max(y + h for _, y, _, h in boxes)
server.sendall(struct.pack(">BBHHBB", 251, 0, width, height, len(boxes), 0))
for number, box in enumerate(boxes, 1):
    server.sendall(struct.pack(">IHHHHI", number, *box, 0))
server.sendall(struct.pack(">BBHHHH", 3, 1, 0, 0, 1, 1))
while (status := layout()) is None:
    pass
sys.exit(status)
