#!/usr/bin/env python3
"""latency.py ROUNDS BARE PROGRAM: milliseconds from input to the first changed pixel, measured from outside: XTEST
sends the event, the X server reports what is drawn, and its pixels must differ from those before. A letter's mark
comes with its release, a tap's with the release of the button, so press and release are sent together and the time
counts from the press. The programs take turns."""
import ctypes
import os
import random
import select
import statistics
import sys
import time

from screen import button, cost, declare, display, end, flush, key, move, pointer, root, size, start, whole, x11
from screen import number as ulong

EACH = 16  # events of a kind in a round
Z_PIXMAP, ALL_PLANES, RAW_RECTANGLES = 2, 0xFFFFFFFF, 0
xdamage = ctypes.CDLL("libXdamage.so.1")
declare(xdamage.XDamageQueryExtension, whole, pointer, pointer, pointer)
declare(xdamage.XDamageCreate, ulong, pointer, ulong, whole)
declare(x11.XDefaultVisual, pointer, pointer, whole)
declare(x11.XCreateImage, pointer, pointer, pointer, ctypes.c_uint, whole, whole, pointer, ctypes.c_uint,
        ctypes.c_uint, whole, whole)
declare(x11.XGetSubImage, pointer, pointer, ulong, whole, whole, ctypes.c_uint, ctypes.c_uint, ulong, whole,
        pointer, whole, whole)
declare(x11.XConnectionNumber, whole, pointer)
declare(x11.XPending, whole, pointer)
declare(x11.XSync, whole, pointer, whole)


class DamageEvent(ctypes.Structure):
    _fields_ = [("type", whole), ("serial", ulong), ("sent", whole), ("display", pointer), ("drawable", ulong),
                ("damage", ulong), ("level", whole), ("more", whole), ("time", ulong), ("x", ctypes.c_short),
                ("y", ctypes.c_short), ("w", ctypes.c_ushort), ("h", ctypes.c_ushort),
                ("rest", ctypes.c_long * 24)]


first_event, first_error = whole(), whole()
xdamage.XDamageQueryExtension(display, ctypes.byref(first_event), ctypes.byref(first_error))
xdamage.XDamageCreate(display, root, RAW_RECTANGLES)
width, height = size(root)
screen = bytearray(4 * width * height)
image = x11.XCreateImage(display, x11.XDefaultVisual(display, 0), 24, Z_PIXMAP, 0,
                         ctypes.addressof(ctypes.c_char.from_buffer(screen)), width, height, 32, 0)


def look(x, y, w, h):
    """Fetches a part of the screen into its place."""
    x11.XGetSubImage(display, root, x, y, w, h, ALL_PLANES, Z_PIXMAP, image, x, y)


def differs(before, left, top, right, bottom):
    """Whether that part of the screen is not what it was."""
    look(left, top, right - left, bottom - top)
    rows = (slice(4 * (y * width + left), 4 * (y * width + right)) for y in range(top, bottom))
    return any(screen[row] != before[row] for row in rows)


def to_first_change(send):
    """Milliseconds, or None if nothing changed within a second."""
    x11.XSync(display, True)  # forgets what was reported so far
    look(0, 0, width, height)
    before = bytes(screen)
    event = DamageEvent()
    begin = time.perf_counter()
    send()
    flush()
    while time.perf_counter() < begin + 1:
        if not x11.XPending(display):
            select.select([x11.XConnectionNumber(display)], [], [], 0.1)
            continue
        x11.XNextEvent(display, ctypes.byref(event))
        now = time.perf_counter()
        if event.type != first_event.value:
            continue
        left, top = max(event.x, 0), max(event.y, 0)
        right, bottom = min(event.x + event.w, width), min(event.y + event.h, height)
        if left < right and top < bottom and differs(before, left, top, right, bottom):
            return 1000 * (now - begin)
    return None


def release(letter):
    key(letter, True)
    flush()
    time.sleep(0.05)  # long before timer 6 takes the letter for one that is held
    taken = to_first_change(lambda: key(letter, False))
    time.sleep(0.65)  # so that no two count as mashing
    return taken


def tap(x, y):
    move(x, y)
    flush()
    time.sleep(0.2)

    def press():
        button(True)
        button(False)
    return to_first_change(press)


def round_of(program, releases, taps):
    wine, _ = start(program)
    move(300, 300)
    flush()
    time.sleep(2)
    releases += [release(letter) for letter in random.sample("abcdefghijklmnopqrstuvwxyz", EACH)]
    taps += [tap(random.randint(50, width - 50), random.randint(50, height - 50)) for _ in range(EACH)]
    end(wine)


random.seed(1)
rounds, programs = int(sys.argv[1]), sys.argv[2:]
times = [([], []) for _ in programs]  # of releases, of taps
for _ in range(rounds):
    for program, (releases, taps) in zip(programs, times):
        round_of(program, releases, taps)
for kind, what in enumerate(("a key's release", "a mouse press")):
    rows = []
    for program, of_program in zip(programs, times):
        seen = [taken for taken in of_program[kind] if taken is not None]
        ranked = statistics.quantiles(seen, n=20, method="inclusive")
        rows.append((ranked[9], ranked[18]))
        print(f"{what:16} {os.path.basename(program):16} {len(seen)} of {len(of_program[kind])} seen: median "
              f"{ranked[9]:5.2f} ms, 95 % within {ranked[18]:5.2f}, {min(seen):.2f} to {max(seen):.2f}")
    for rank, name, goal in ((0, "median", 4), (1, "95th percentile", 6)):
        cost(f"From {what} to the first changed pixel, {name}", f"{rows[1][rank]:.1f} ms", f"{rows[0][rank]:.1f} ms",
             f"{goal} ms")
