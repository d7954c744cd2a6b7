#!/usr/bin/env python3
"""load.py at-rest|delivered BARE PROGRAM: processor time of each program while idle, at ten keys a second and in a
drag at the 125 moves a second of an ordinary mouse, and its memory afterwards. The bare window gets the same input.
At rest, without pictures and hint, nothing moves by itself, so all processor time is the input's; "delivered" is
the program as installed, for idling and memory. There is no sound card: with one, Wine's mixing takes about as much
again."""
import itertools
import math
import os
import sys
import time

from screen import button, cost, end, flush, key, move, start

SECONDS = 20
DELIVERED_SECONDS = 60  # in which the penguin walks about twice
TICK = os.sysconf("SC_CLK_TCK")


def spent(pid):
    """Seconds on a core so far, all threads, kernel included."""
    with open(f"/proc/{pid}/stat") as file:
        fields = file.read().rsplit(") ", 1)[1].split()
    return (int(fields[11]) + int(fields[12])) / TICK


def resident(pid):
    """MiB."""
    with open(f"/proc/{pid}/status") as file:
        return next(int(line.split()[1]) for line in file if line.startswith("VmRSS:")) / 1024


def server():
    """The one wineserver of this prefix."""
    mine = f"WINEPREFIX={os.environ['WINEPREFIX']}\0".encode()
    for pid in filter(str.isdigit, os.listdir("/proc")):
        try:
            with open(f"/proc/{pid}/comm") as name, open(f"/proc/{pid}/environ", "rb") as environment:
                if name.read().startswith("wineserver") and mine in environment.read():
                    return int(pid)
        except OSError:
            pass
    sys.exit("no wineserver")


def paced(rate):
    """Counts at this many a second, by the clock, for the length of a load."""
    begin = time.monotonic()
    for i in range(SECONDS * rate):
        time.sleep(max(0, begin + i / rate - time.monotonic()))
        yield i
        flush()


def idle():
    time.sleep(DELIVERED_SECONDS if delivered else SECONDS)


def keys():
    letters = itertools.cycle("asdfjklgh")
    for i in paced(20):
        if i % 2 == 0:
            letter = next(letters)
        key(letter, i % 2 == 0)


def drag():
    move(640, 400)
    button(True)
    for i in paced(125):
        move(640 + 560 * math.sin(i / 50), 400 + 330 * math.sin(i / 31))
    button(False)
    flush()


def loads(program):
    """Seconds of processor time for each load, program and wineserver, and MiB afterwards."""
    wine, _ = start(program)
    move(300, 300)
    flush()
    time.sleep(3)
    of_server, result = server(), []
    for load in (idle, keys, drag):
        before = spent(wine.pid), spent(of_server)
        load()
        result.append((spent(wine.pid) - before[0], spent(of_server) - before[1]))
        time.sleep(2)
    memory = resident(wine.pid)
    end(wine)
    return result, memory


delivered = sys.argv[1] == "delivered"
(bare, bare_memory), (program, memory) = loads(sys.argv[2]), loads(sys.argv[3])
for name, row, row_memory in (("bare window", bare, bare_memory), (sys.argv[1], program, memory)):
    parts = ", ".join(f"{what} {own:.2f} + {of_server:.2f}"
                      for what, (own, of_server) in zip(("idle", "keys", "drag"), row))
    print(f"{name:12} s of a core, own + wineserver's: {parts}; resident {row_memory:.1f} MiB")


def cost_of_load(what, index, share, goal):
    cost(f"{what}, processor time", f"{program[index][0] * share:.2f} s", f"{bare[index][0] * share:.2f} s", goal)
    cost(f"{what}, wineserver's besides", f"{program[index][1] * share:.2f} s", f"{bare[index][1] * share:.2f} s", "")


if delivered:
    cost_of_load("20 s idle with penguin and hint (a third of 60 s)", 0, SECONDS / DELIVERED_SECONDS,
                 "0.3 s")
    cost("Memory resident after idling, keys and dragging", f"{memory:.1f} MiB", f"{bare_memory:.1f} MiB",
         "60 MiB above the floor")
else:
    cost_of_load("20 s idle, nothing moving by itself", 0, 1, "0.1 s above the floor")
    cost_of_load("20 s of ten keys a second", 1, 1, "")  # nearly all of it is the system's, see bench/profile.sh
    cost_of_load("20 s of dragging, 125 moves a second", 2, 1, "4 s")
