#!/usr/bin/env python3
"""Refuses what no compiler checks. Run it from the top folder: gates.py FILE..., the sources below src.
Prints every finding and exits with 1 if there is one. The floors come from the table in docs/architecture.md."""
import re
import sys
from typing import NamedTuple

TABLE = "docs/architecture.md"
DRAW = re.compile(r"\b(randInt|randColor|anyColor|brightColor|strayFrom|soundRand|drawInt|drawReal|(?:mark|sound|clip|spare)Rng|random\w+|hostRandom|penguinHost\.random|"
                  r"freshPenStart|farPointFrom|pickBackgroundColor|pickMenuColor)\s*\(")
WINDOWS_HEADER = re.compile(r'#\s*include\s*[<"](windows|windowsx|gdiplus\w*|gdiplus/\w+|mmsystem|mmdeviceapi|'
                            r"endpointvolume|sapi|imm|shlobj\w*|shobjidl\w*|objidl|objbase|knownfolders|"
                            r"win\w+|commctrl|initguid)\.h", re.I)
OUR_WINDOWS_HEADER = "shell/base/windows_api.h"
COMPUTES = re.compile(r"src/(sound/(clip|bank_\w+|generators_\w+|synthesis)|marks/random|settings/language_table|"
                      r"hint/count_parser|shell/base/launch_monitor)\.(cpp|h)$")
OUR_INCLUDE = re.compile(r'\s*#\s*include\s*"([^"]+)"')


def blanked(text):
    """The code with comments and strings blanked out, every line in its place."""
    pattern = r'//[^\n]*|/\*.*?\*/|"(?:\\.|[^"\\\n])*"'
    return re.sub(pattern, lambda m: re.sub(r"[^\n]", " ", m[0]), text, flags=re.S)


def line_findings(path, text):
    code = blanked(text)
    start = 0
    for end in re.finditer(r"[;{}]", code):
        piece = code[start:end.start()]
        if len(DRAW.findall(piece)) > 1:
            line = code.count("\n", 0, start + len(piece) - len(piece.lstrip())) + 1
            yield line, "two draws in one statement: the compiler would choose their order"
        start = end.end()
    for number, (line, bare) in enumerate(zip(text.splitlines(), code.splitlines()), 1):
        if path.endswith(".cpp") and re.match(r"\s*extern\b", bare):
            yield number, "extern in a source file: include the owner's header"
        if WINDOWS_HEADER.match(line) and not path.endswith(OUR_WINDOWS_HEADER):
            yield number, "a Windows header: include " + OUR_WINDOWS_HEADER
        if OUR_WINDOWS_HEADER in line and line.startswith("#include") and COMPUTES.search(path):
            yield number, "a Windows header in a file that only computes"


def stem(path):
    """A source's path below src without its suffix, as the table names it."""
    return re.sub(r"^src/|\.(cpp|h)$", "", path)


class Place(NamedTuple):
    """A room's part on one floor."""
    floor: int
    room: str

    def __str__(self):
        return f"{self.room} ({self.floor})"


def floors():
    """The table as {stem: Place}, and the stems that it lists more than once."""
    places, twice = {}, []
    for line in open(TABLE, encoding="utf-8"):
        row = re.match(r"\| (\d) \| `(\S+)` \| (.+) \|$", line)
        for name in re.findall(r"`(\w+)`", row[3]) if row else []:
            name = f"{row[2]}/{name}"
            if name in places:
                twice.append(name)
            places[name] = Place(int(row[1]), row[2])
    return places, twice


def circle(graph):
    """The nodes of one circle in the graph, the first one repeated at its end; None if there is none."""
    done, path = set(), []

    def visit(node):
        if node in path:
            return path[path.index(node):] + [node]
        if node in done:
            return None
        path.append(node)
        for follower in sorted(graph.get(node, ())):
            if found := visit(follower):
                return found
        done.add(path.pop())
        return None

    return next(filter(None, map(visit, sorted(graph))), None)


def includes(sources, places):
    """Each include of one listed file by another: path, line, includer, included."""
    for path, text in sources.items():
        own = stem(path)
        for number, line in enumerate(text.splitlines(), 1):
            include = OUR_INCLUDE.match(line)
            target = include and include[1].removesuffix(".h")
            if own in places and target in places and target != own:
                yield path, number, own, target


def house_findings(sources):
    """Every file has a floor; includes go down, or sideways without a circle."""
    places, twice = floors()
    for name in twice:
        yield TABLE, f"{name} is listed twice"
    for path in sources:
        if stem(path) not in places:
            yield path, f"no floor: list it in {TABLE}"
    for name in sorted(places.keys() - {stem(path) for path in sources}):
        yield TABLE, f"{name} is listed, but there is no such file"
    files, rooms = {}, {}
    for path, number, own, target in includes(sources, places):
        floor, target_floor = places[own][0], places[target][0]
        if target_floor > floor:
            yield f"{path}:{number}", f"floor {floor} includes {target} on floor {target_floor}"
            continue  # not reported again as part of a circle
        files.setdefault(own, set()).add(target)
        if places[own] != places[target]:
            rooms.setdefault(places[own], set()).add(places[target])
    for kind, graph in ("files", files), ("rooms", rooms):
        if found := circle(graph):
            yield TABLE, f"a circle of {kind}: {' -> '.join(map(str, found))}"


def main():
    sources = {path: open(path, encoding="utf-8").read() for path in sys.argv[1:]}
    bad = [f"{path}:{line}: {what}" for path, text in sources.items() for line, what in line_findings(path, text)]
    bad += [f"{where}: {what}" for where, what in house_findings(sources)]
    print("\n".join(bad) if bad else f"gates: {len(sources)} files, nothing refused")
    sys.exit(1 if bad else 0)


if __name__ == "__main__":
    main()
