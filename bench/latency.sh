#!/bin/bash
# From a key's release and a mouse press to the first changed pixel, beside a bare window that fills itself.
. "$(dirname "$0")/../tools/desktop.sh"
desktop 0,0,1280,800
settings ShowExitHint=0
alone
python3 "$top/bench/latency.py" "${1:-4}" "$top/build/windows/bench/bare_window.exe" "$exe"
