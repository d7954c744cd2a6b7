#!/bin/bash
# Processor time, memory and size of the program.
. "$(dirname "$0")/../tools/desktop.sh"
desktop 0,0,1280,800
bare=$top/build/windows/bench/bare_window.exe
settings ShowExitHint=1
python3 "$top/bench/load.py" delivered "$bare" "$exe"
alone
settings ShowExitHint=0
python3 "$top/bench/load.py" at-rest "$bare" "$exe"
x86_64-w64-mingw32-strip -o "$work/bare.exe" "$bare"
megabytes() { stat -c %s "$1" | awk '{ printf "%.2f MB", $1 / 1e6 }'; }
echo "cost | The executable | $(megabytes "$exe") | $(megabytes "$work/bare.exe") | 1.2 MB"
