#!/usr/bin/env python3
"""first_window.py RUNS PROGRAM...: how long each takes under Wine from its start until its window covers the
screen, in milliseconds. The programs take turns, so that whatever else the machine does meets all alike."""
import ctypes
import os
import statistics
import subprocess
import sys
import time

MAP_NOTIFY = 19
SUBSTRUCTURE_NOTIFY = 1 << 19
x11 = ctypes.CDLL("libX11.so.6")
x11.XOpenDisplay.restype = ctypes.c_void_p
x11.XDefaultRootWindow.restype = ctypes.c_ulong
x11.XDefaultRootWindow.argtypes = [ctypes.c_void_p]
x11.XSelectInput.argtypes = [ctypes.c_void_p, ctypes.c_ulong, ctypes.c_long]
x11.XNextEvent.argtypes = [ctypes.c_void_p, ctypes.c_void_p]
x11.XGetGeometry.argtypes = [ctypes.c_void_p, ctypes.c_ulong] + [ctypes.c_void_p] * 7
x11.XSync.argtypes = [ctypes.c_void_p, ctypes.c_int]
# A window can be gone before it is looked at; that is no reason to end.
ON_ERROR = ctypes.CFUNCTYPE(ctypes.c_int, ctypes.c_void_p, ctypes.c_void_p)(lambda display, error: 0)
x11.XSetErrorHandler(ON_ERROR)
display = x11.XOpenDisplay(None)
root = x11.XDefaultRootWindow(display)
x11.XSelectInput(display, root, SUBSTRUCTURE_NOTIFY)


def size(window):
    parent, x, y = ctypes.c_ulong(), ctypes.c_int(), ctypes.c_int()
    w, h, border, depth = (ctypes.c_uint() for _ in range(4))
    known = x11.XGetGeometry(display, window, *map(ctypes.byref, (parent, x, y, w, h, border, depth)))
    return (w.value, h.value) if known else (0, 0)


def milliseconds(program):
    event = (ctypes.c_long * 24)()  # an XEvent; type, serial, sent, display, parent, window
    begin = time.perf_counter()
    wine = subprocess.Popen(["wine", program], stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                            stderr=subprocess.DEVNULL)
    while True:
        x11.XNextEvent(display, event)
        if event[0] & 0xFFFFFFFF == MAP_NOTIFY and size(event[5]) == size(root):
            break
    taken = 1000 * (time.perf_counter() - begin)
    wine.kill()
    wine.wait()
    time.sleep(0.2)
    return taken


runs, programs = int(sys.argv[1]), sys.argv[2:]
for program in programs:  # the first of each only warms what the machine caches
    milliseconds(program)
times = {program: [] for program in programs}
for _ in range(runs):
    for program in programs:
        times[program].append(milliseconds(program))
floor = statistics.median(times[programs[0]])
for program in programs:
    middle = statistics.median(times[program])
    name = os.path.basename(program)
    print(f"{name:20} median {middle:6.1f} ms  {min(times[program]):6.1f} to {max(times[program]):6.1f}"
          f"  {middle / floor:.2f} of the bare window")
