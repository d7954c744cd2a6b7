#!/bin/bash
# The probe for a real PC, here on two monitors, the smaller one left of the primary.
. "$(dirname "$0")/desktop.sh"
desktop 0,0,1280,800 -640,100,640,480
probe() {
    timeout 400 wine "$top/build/windows-checked/tests/probe.exe" "$(dirname "$exe")" "$@" </dev/null \
        >"$work/table" 2>"$work/said"
}
seen() { echo "$code; $(cat "$work/table"; grep -a '^probe' "$work/said")"; }

# Without the hook the chords do come through, so the row would notice a leak.
code=0
probe --only chords --set BlockSystemShortcuts=0 || code=$?
grep '^chords.*another program gets it *FAIL' "$work/table" || fail "no chord came through without the hook: $(seen)"

# What the family had is kept, and asked for before pictures could go.
settings SoundEnabled=0
cp "$data/config.ini" "$work/before.ini"
mkdir -p "$data/SavedPictures" && touch "$data/SavedPictures/kept.png"
code=0
probe || code=$?
[ $code = 2 ] && grep -q 'saved pictures' "$work/said" || fail "saved pictures do not stop the probe: $(seen)"
code=0
probe --yes || code=$?
[ $code = 0 ] || fail "a row failed, or there is none: $(seen)"
cat "$work/table"
cmp "$data/config.ini" "$work/before.ini" || fail "the settings are not put back"
[ "$(ls -A "$data/SavedPictures")" = kept.png ] || fail "pictures of the probe stay"

# A row may be "not here" only for what Wine lacks; otherwise all could be.
missing=$(sed -n 's/^\([a-z]*\) .* not here\r*$/\1/p' "$work/table" | tr '\n' ' ')
[ "$missing" = "shift shortcuts turned finger left settings " ] || fail "not here: $missing"
