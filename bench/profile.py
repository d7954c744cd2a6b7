#!/usr/bin/env python3
"""profile.py play: hits ten keys a second for 20 s. profile.py WHAT: reads perf's report by file and prints the
shares. Wine copies a program's code into memory without a name, which perf takes for generated code."""
import itertools
import re
import sys
import time

from screen import cost, flush, key

GROUPS = (
    ("the program's own code", r"Zubbly\.exe|\[JIT\]"),
    ("the kernel", r"\[kernel|\[vdso"),
    ("GDI+", r"gdiplus"),
    ("windows and their drawing", r"win32u|gdi32|user32|winex11|libX|libxcb|libfreetype"),
    ("sound", r"winmm|mmdevapi|winepulse|winealsa|libpulse|libasound|msacm|dsound"),
    ("the C library and Wine's core", r"libc\.|libm\.|ntdll|ucrtbase|msvcrt|kernel32|kernelbase|ld-linux"),
    ("all else", r""),
)


def play():
    letters, begin = itertools.cycle("asdfjklgh"), time.monotonic()
    for i in range(400):
        time.sleep(max(0, begin + i / 20 - time.monotonic()))
        if i % 2 == 0:
            letter = next(letters)
        key(letter, i % 2 == 0)
        flush()


def print_shares(what):
    shares = dict.fromkeys((name for name, _ in GROUPS), 0.0)
    for line in sys.stdin:
        row = re.match(r"\s+([\d.]+)%\s+(\S.*)", line)
        if row:
            shares[next(name for name, of_it in GROUPS if re.match(of_it, row[2]))] += float(row[1])
    if sum(shares.values()) < 99:
        sys.exit(f"only {sum(shares.values()):.1f} % of the time is in the report")
    for name, share in shares.items():
        goal = "2 %" if name == GROUPS[0][0] else ""
        cost(f"Ten keys a second {what}, share of {name}", f"{share:.1f} %", "", goal)


if sys.argv[1] == "play":
    play()
else:
    print_shares(sys.argv[1])
