#!/bin/bash
# Where the processor time of ten keys a second goes, without and with sound.
. "$(dirname "$0")/../tools/desktop.sh"
sound_card
desktop 0,0,1280,800
alone
for sound in 0 1; do
    settings ShowExitHint=0 SoundEnabled=$sound
    launch
    sleep 3
    perf record -q -e cpu-clock -F 3999 -p "$program" -o "$work/perf.data" -- python3 "$top/bench/profile.py" play
    perf report -i "$work/perf.data" --stdio --sort dso 2>/dev/null |
        python3 "$top/bench/profile.py" "$([ $sound = 1 ] && echo "with sound" || echo "without sound")"
    leave
done
