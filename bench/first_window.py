#!/usr/bin/env python3
"""first_window.py RUNS BARE-WINDOW BARE-START PROGRAM: milliseconds from the start of each program under Wine until
its window covers the screen. The programs take turns, so that other work on the machine affects all alike."""
import os
import statistics
import sys

from screen import cost, end, start


def milliseconds(program):
    wine, taken = start(program)
    end(wine)
    return taken


runs, programs = int(sys.argv[1]), sys.argv[2:]
for program in programs:  # the first run of each only fills the caches
    milliseconds(program)
times = {program: [] for program in programs}
for _ in range(runs):
    for program in programs:
        times[program].append(milliseconds(program))
middle = [statistics.median(times[program]) for program in programs]
for program, median in zip(programs, middle):
    print(f"{os.path.basename(program):20} median {median:6.1f} ms  {min(times[program]):6.1f} to "
          f"{max(times[program]):6.1f}  {median / middle[0]:.2f} of the bare window")
bare_window, bare_start, program = (f"{median:.0f} ms" for median in middle)
cost("First full window with all sounds made", program, bare_window, "1.6 times the floor")
cost("The same over the calls that its start needs", program, bare_start, "1.15 times the floor")
