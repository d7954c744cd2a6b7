#!/bin/bash
# Saving and capturing on a screen of 3840 by 2160, whose pixels PrintScreen asks the display for.
. "$(dirname "$0")/../tools/desktop.sh"
desktop 0,0,3840,2160
wine "$top/build/windows/bench/saving_bench.exe" </dev/null >"$work/printed" 2>/dev/null
tr -d '\r' <"$work/printed"
