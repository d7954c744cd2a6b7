#!/bin/bash
# From the start of the program until it covers the screen, beside what Wine needs for a bare window, and for one after
# the calls that the program cannot do without.
. "$(dirname "$0")/../tools/desktop.sh"
desktop 0,0,1280,800
settings ShowExitHint=0
python3 "$top/bench/first_window.py" "${1:-15}" "$top"/build/windows/bench/bare_{window,start}.exe "$exe"
