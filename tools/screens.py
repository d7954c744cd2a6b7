#!/usr/bin/env python3
"""screens.py SOCKET X,Y,W,H...: gives a running Xvnc several monitors, in the coordinates of the first, and prints
where that one's corner is on the X screen, which has no negative ones."""
import socket
import struct
import sys

boxes = [tuple(map(int, box.split(","))) for box in sys.argv[2:]]
left, top = min(box[0] for box in boxes), min(box[1] for box in boxes)
right, bottom = max(x + w for x, _, w, _ in boxes), max(y + h for _, y, _, h in boxes)
server = socket.socket(socket.AF_UNIX)
server.connect(sys.argv[1])
stream = server.makefile("rb")


def layout(incremental):
    """Asks for screen updates until one is about the layout; its status."""
    server.sendall(struct.pack(">BBHHHH", 3, incremental, 0, 0, 1, 1))
    status = None
    while status is None:
        _, count = struct.unpack(">BxH", stream.read(4))
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
server.sendall(struct.pack(">BBHiii", 2, 0, 3, 0, -223, -308))  # SetEncodings: raw pixels, and reports of the layout
layout(0)
server.sendall(struct.pack(">BBHHBB", 251, 0, right - left, bottom - top, len(boxes), 0))
for number, (x, y, w, h) in enumerate(boxes, 1):
    server.sendall(struct.pack(">IHHHHI", number, x - left, y - top, w, h, 0))
if layout(1):
    sys.exit("the display refuses these monitors")
print(-left, -top)
