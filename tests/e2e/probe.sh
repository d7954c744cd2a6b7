#!/bin/bash
# The probe for a real PC, here on two monitors, the smaller one left of the primary.
. "$(dirname "$0")/../../tools/desktop.sh"
desktop 0,0,1280,800 -640,100,640,480
probe() {
    code=0
    timeout 400 wine "$top/build/windows-checked/tests/probe.exe" "$(dirname "$exe")" "$@" </dev/null \
        >"$work/table" 2>"$work/errors" || code=$?
    said=$(cat "$work/table" && grep -a '^probe' "$work/errors") || true
}

# Without the hook the chords do come through, so the row would notice a leak.
probe --only chords --set BlockSystemShortcuts=0
[[ $said == *' leaks '*FAIL* ]] || fail "no chord comes through without the hook: $code, $said"

# What the family had is kept, and asked for before anything is touched.
settings SoundEnabled=0
mkdir "$data/SavedPictures" && touch "$data/SavedPictures/kept.png"
cp -r "$data" "$work/before"
probe
[[ $code = 2 && $said == *'saved pictures'* ]] || fail "saved pictures do not stop the probe: $code, $said"
probe --yes
echo "$said"
[ $code = 0 ] || fail "it ends with $code"
diff -r "$data" "$work/before" || fail "settings and pictures are not put back"
# A row may be "not here" only for what Wine lacks; otherwise all could be.
missing=$(sed -n 's/^\([a-z]*\) .* not here\r*$/\1/p' "$work/table" | tr '\n' ' ')
[ "$missing" = "shift finger left " ] || fail "not here: $missing"
