#!/bin/bash
# What the program costs while nobody touches it: share of one core over 30 s, the hint and the walks apart.
# At rest these tick: 1 (topmost, every 1.5 s), 10 (save), 11 (idle rule, twice a second) and 13 (the penguin
# looks 30 times a second whether it is time to walk). A walk takes some seconds in every half minute or so.
. "$(dirname "$0")/../tests/e2e/desktop.sh"
desktop 0,0,1280,800

# spent: nanoseconds on a core so far, the program's threads together.
spent() { cat /proc/"$1"/task/*/schedstat | awk '{ sum += $1 } END { printf "%.0f\n", sum }'; }

# watch_idle NAME: 30 seconds, and the dearest of them.
watch_idle() {
    local before now begin dearest=0
    begin=$(spent "$program")
    before=$begin
    for _ in {1..30}; do
        sleep 1
        now=$(spent "$program")
        dearest=$((now - before > dearest ? now - before : dearest))
        before=$now
    done
    awk -v name="$1" -v all=$((before - begin)) -v most=$dearest \
        'BEGIN { printf "%-34s %5.2f %% of a core, dearest second %5.2f %%\n", name, all / 3e8, most / 1e7 }'
}

settings ShowExitHint=0
mkdir "$work/alone" && cp "$exe" "$work/alone"  # without its pictures no penguin walks
exe=$work/alone/Zubbly.exe launch
sleep 5
watch_idle "at rest"
leave
settings ShowExitHint=1
launch
watch_idle "penguin and hint come and go"
leave
