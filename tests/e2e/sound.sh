#!/bin/bash
# What the child hears, recorded from a sound card and compared with the clips as they should be.
. "$(dirname "$0")/../../tools/desktop.sh"
chrt -r -p 5 $$ 2>/dev/null || true  # where allowed: on a busy machine the recording has holes
now() { stat -c %s "$work/sound.s16"; }
hear() { "$python" "$top/tests/e2e/heard.py" "$work/sound.s16" "$@"; }
for python in /usr/bin/python3 python3; do "$python" -c 'import numpy' 2>/dev/null && break; done

# recorded FROM SECONDS: waits until the recording, which goes on whatever sounds, has that stretch.
reaches() { [ "$(now)" -ge "$1" ]; }
recorded() { soon 60 reaches "$(awk "BEGIN { printf \"%d\", $1 + $2 * 88200 }")" || fail "the recording stands still"; }

# sounds FROM SECONDS CLIP...: one of the clips was played in that stretch. Undisturbed the likeness is 0.97
# and more, that of another key or jingle below 0.65; what lies between leaves room for a busy machine.
sounds() {
    [ "$1" = "$started" ] || recorded "$1" "$2"
    local found=$(hear "$@")
    echo "${FUNCNAME[1]}: clip, likeness, place: $found"
    awk "BEGIN { split(\"$found\", word); exit !(word[2] >= 0.8) }"
}
silent() {
    local loudest=$(hear "$2" "$3" silence)
    echo "$1: loudest sample $loudest"
    [ "$loudest" = 0 ] || fail "$1 sounded"
}

# drag: about 1.5 s, with Space pressed on the way.
drag() {
    local i moves=()
    for i in {1..70}; do moves+=(mousemove $((200 + 10 * i)) $((300 + i % 7 * 20)) sleep 0.02); done
    move 200 300
    x mousedown 1 "${moves[@]:0:140}" key space "${moves[@]:140}"
    released=$(now)
    x mouseup 1
}

# Each try is another start.
the_start() {
    started=$(now)
    launch
    recorded "$started" 3
    sounds "$started" 60 "arpeggio 523/659/784/1047 78 .13" "arpeggio 392/494/587/784/988 72 .13" \
        "arpeggio 440/554/659/880 80 .14" || { leave && return 1; }
}
a_letter() {
    from=$(now)
    key a
    sounds "$from" 1 "sine 880 55 .11"
}
the_space_key() {
    from=$(now)
    key space
    sounds "$from" 1 "drum .19" "drop 420 .17" "arpeggio 262/330/392/523 70 .15"
}
# Four times end to end leave no room for a gap, nor for the Space key, which has to yield.
a_stroke() {
    from=$(now)
    drag
    sounds "$from" "$(awk "BEGIN { print ($released - $from) / 88200 + 0.2 }")" "4*loop loop0 .16 .105 .2" "4*loop loop1 .16 .098 .19" "4*loop loop2 .16 .105 .2" \
        "4*loop loop3 .16 0 .21" "4*loop loop4 .16 .105 .2" "4*loop loop5 .16 0 .21" "4*loop loop6 .16 .098 .19" \
        "4*loop loop7 .16 .105 .2" "4*loop loop8 .16 0 .21" "4*loop chirps .2 0 .24"
}
the_fifth_press() {
    local press
    for press in a k k k k k; do
        from=$(now)
        key $press
        recorded "$from" 0.65
    done
    sounds "$from" 1 "chime 523 262 175 .171"
}

sound_card
desktop 0,0,1280,800
settings ShowExitHint=0
for what in the_start a_letter the_space_key a_stroke; do retried $what; done
recorded "$released" 0.8
silent "the released stroke" $((released + 88200 / 4)) 0.3
retried the_fifth_press
leave

settings ShowExitHint=0 SoundEnabled=0
from=$(now)
launch
key a space
drag
recorded "$released" 0.5
leave
silent "the sound that is switched off" "$from" 60

# With no sound card the child plays on.
settings ShowExitHint=0
wineserver -k
unset PULSE_SERVER
launch
picture "$work/empty.ppm"
plays() { picture "$work/drawn.ppm" && [ "$(differing "$work/empty.ppm" "$work/drawn.ppm")" -gt 10000 ]; }
drag
key a space
soon 10 plays || fail "no play without sound: $(differing "$work/empty.ppm" "$work/drawn.ppm") pixels differ"
leave
echo "no sound card: played on"
