#!/usr/bin/env python3
"""table.py LOG: writes docs/cost.md from the rows that the benches printed: cost | what | figure | floor | goal."""
import datetime
import os
import re
import subprocess
import sys

HEAD = """# What it costs

Written by `./check --bench` on {date} at commit {commit}; do not edit. Machine: {machine}; load before the run {load}.
Everything runs under Wine. A floor is what a bare window or the same system calls alone took in the same run.

| What | Figure | Floor | Goal | |
|---|---|---|---|---|
"""
GOAL = re.compile(r"(?P<number>[\d.]+) (?:(?P<times>times the floor)|\S+?(?P<above> above the floor)?)$")


def number(text):
    return float(text.split()[0])


def verdict(figure, floor, goal):
    """Met or missed; empty without a goal."""
    if not goal:
        return ""
    parts = GOAL.match(goal)
    limit = float(parts["number"])
    if parts["times"]:
        limit *= number(floor)
    elif parts["above"]:
        limit += number(floor)
    return "met" if number(figure) <= limit else "**missed**"


def output_of(command):
    return subprocess.run(command, capture_output=True, text=True, check=True).stdout.strip()


top = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
with open(sys.argv[1]) as log:
    lines = [line.strip() for line in log]
rows = [[cell.strip() for cell in line.split("|")[1:]] for line in lines if line.startswith("cost |")]
with open("/proc/cpuinfo") as info:
    processor = next((line.split(":")[1].strip() for line in info if line.startswith("model name")), "unknown")
load = next((line.split(": ")[1] for line in lines if line.startswith("load before: ")), "unknown")
commit = output_of(["git", "-C", top, "describe", "--always", "--dirty"])
machine = f"{os.cpu_count()} cores of {processor}, {output_of(['wine', '--version'])}"
with open(os.path.join(top, "docs", "cost.md"), "w") as table:
    table.write(HEAD.format(date=datetime.date.today(), commit=commit, machine=machine, load=load))
    for what, figure, floor, goal in rows:
        table.write(f"| {what} | {figure} | {floor} | {goal} | {verdict(figure, floor, goal)} |\n")
print(f"docs/cost.md: {len(rows)} rows")
