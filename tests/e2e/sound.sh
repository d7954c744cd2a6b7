#!/bin/bash
# What the child hears, recorded from a sound card and compared with the clips as they should be.
. "$(dirname "$0")/../../tools/desktop.sh"
chrt -r -p 5 $$ 2>/dev/null || true  # where allowed: on a busy machine the recording has holes
second=88200  # bytes of the recording
now() { stat -c %s "$work/sound.s16"; }
reaches() { [ "$(now)" -ge "$1" ]; }
# heard FROM TO CLIPS [TIMES]: see heard.py, which would disturb the sound if it began before its end.
heard() {
    soon 60 reaches "$2" || fail "the recording stands still"
    /usr/bin/python3 "$top/tests/e2e/heard.py" "$work/sound.s16" "$@"
}
# drag: about 1.5 s, with Space pressed on the way.
drag() {
    local moves=($(printf 'mousemove_relative 10 0 sleep 0.02 %.0s' {1..70}))
    move 200 300
    x mousedown 1 "${moves[@]:0:150}" key space "${moves[@]:150}"
    released=$(now)
    x mouseup 1
}

the_start() {
    from=$(now)
    launch
    heard "$from" $(($(now) + second)) startClips || { leave && return 1; }
}
after_key() {
    from=$(now)
    key "$1"
    heard "$from" $((from + second)) "$2"
}
the_fifth_press() {
    x key a $(printf 'sleep 0.65 key k %.0s' {1..4}) sleep 0.65
    after_key k 'chime 523 262 175 .171'
}
# Four times end to end leave no room for a gap, nor for the Space key, which has to yield.
a_stroke() {
    from=$(now)
    drag
    heard "$from" $((released + second / 5)) strokeLoops 4
}

sound_card
desktop 0,0,1280,800
alone  # the penguin would be heard, too
settings ShowExitHint=0
retried the_start
retried after_key a 'sine 880 55 .11'
retried after_key space spaceClips
retried a_stroke
heard $((released + second / 4)) $((released + second / 2)) silence || fail "the released stroke sounds on"
retried the_fifth_press
leave

settings ShowExitHint=0 SoundEnabled=0
from=$(now)
launch
key a space
drag
heard "$from" $((released + second / 2)) silence || fail "it sounds although that is switched off"
leave

# With no sound card the child plays on.
wineserver -k
unset PULSE_SERVER
settings ShowExitHint=0
launch
drag
mark 300 600
leave
