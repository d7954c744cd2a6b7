#!/usr/bin/env python3
"""Refuses what no compiler sees. gates.py FILE...: the sources below src; prints what is wrong, exits with 1."""
import re
import sys

DRAW = re.compile(r"\b(randInt|randColor|soundRand|drawInt|drawReal|(?:mark|sound|clip|spare)Rng|random\w+|hostRandom|penguinHost\.random|"
                  r"freshPenStart|farPointFrom|pickBackgroundColor|pickMenuColor)\s*\(")
WINDOWS_HEADER = re.compile(r'#\s*include\s*[<"](windows|windowsx|gdiplus\w*|gdiplus/\w+|mmsystem|mmdeviceapi|'
                            r"endpointvolume|sapi|imm|shlobj\w*|shobjidl\w*|objidl|objbase|knownfolders|"
                            r"win\w+|commctrl|initguid)\.h", re.I)
OUR_WINDOWS_HEADER = "shell/base/windows_api.h"
COMPUTES = re.compile(r"src/(sound/(clip|bank_\w+)|marks/random)\.(cpp|h)$")


def blanked(text):
    """The code without comments and strings, every line where it was."""
    pattern = r'//[^\n]*|/\*.*?\*/|"(?:\\.|[^"\\\n])*"'
    return re.sub(pattern, lambda m: re.sub(r"[^\n]", " ", m[0]), text, flags=re.S)


def findings(path):
    text = open(path, encoding="utf-8").read()
    code = blanked(text)
    start = 0
    for end in re.finditer(r"[;{}]", code):
        piece = code[start:end.start()]
        if len(DRAW.findall(piece)) > 1:
            line = code.count("\n", 0, start + len(piece) - len(piece.lstrip())) + 1
            yield line, "two draws in one statement: their order would be the compiler's"
        start = end.end()
    for number, (line, bare) in enumerate(zip(text.splitlines(), code.splitlines()), 1):
        if path.endswith(".cpp") and re.match(r"\s*extern\b", bare):
            yield number, "extern in a source file: include the owner's header"
        if WINDOWS_HEADER.match(line) and not path.endswith(OUR_WINDOWS_HEADER):
            yield number, "a Windows header: include " + OUR_WINDOWS_HEADER
        if OUR_WINDOWS_HEADER in line and line.startswith("#include") and COMPUTES.search(path):
            yield number, "Windows where only computing is allowed"


bad = [f"{path}:{line}: {text}" for path in sys.argv[1:] for line, text in findings(path)]
print("\n".join(bad) if bad else f"gates: {len(sys.argv) - 1} files, nothing refused")
sys.exit(1 if bad else 0)
