#!/bin/bash
# Every chord of one or two modifiers with the keys that lead out of programs; only Alt+F4 may leave. Not
# reached by this: Windows keeps Ctrl+Alt+Del and Win+L to itself, and this display server Ctrl+Alt+F1 to F12.
. "$(dirname "$0")/desktop.sh"
desktop 0,0,1024,768

# Another program below ours claims these chords as a desktop's shell does.
x86_64-w64-mingw32-g++-posix -static -o "$work/other_shell.exe" "$top/tests/e2e/other_shell.cpp"
wine "$work/other_shell.exe" </dev/null >"$work/claimed" 2>/dev/null &
helpers+=($!)
soon 20 grep -q ready "$work/claimed" || fail "no other shell"

# Without the hook it gets them, so it would notice a leak.
settings ShowExitHint=0 BlockSystemShortcuts=0
launch
x keydown Alt_L key Tab keyup Alt_L
soon 10 grep -q 'modifiers 1 key 9' "$work/claimed" || fail "the other shell is deaf"
leave

: >"$work/claimed"
settings ShowExitHint=0
launch
modifiers=(Control_L Alt_L Shift_L Super_L Super_R)
for first in "${modifiers[@]}"; do
    for second in '' "${modifiers[@]}"; do
        [ "$first" != "$second" ] || continue
        for key in Tab Escape space F{1..12} Delete {a..z} Left Up Right Down; do
            case "$first$second$key" in *Alt_L*F[14]) continue ;; esac
            echo "keydown $first ${second:+keydown $second} key $key ${second:+keyup $second} keyup $first"
        done
    done
done >"$work/chords"
timeout 500 xdotool - <"$work/chords"

# Alt+F1 is a grown-up's: its dialog comes in front, and Escape takes it away. Without a window manager Wine
# may then leave the focus to the other program: the click takes it back, and the next refresh the front.
asks() { x search --onlyvisible --name "^Save$"; }
dismissed() { key Escape; sleep 0.3; ! asks; }
for second in '' Shift_L Super_L; do
    x keydown Alt_L ${second:+keydown $second} key F1 ${second:+keyup $second} keyup Alt_L
    soon 90 asks || fail "no save dialog at Alt+F1 with $second"
    soon 20 dismissed || fail "the save dialog stayed"
    tap 700 600
done

in_front() {
    local X Y SCREEN WINDOW
    eval "$(x getmouselocation --shell)" && [ "$(x getwindowname "$WINDOW")" = Zubbly ]
}
soon 3 in_front || fail "another window is in front"
! gone "$program" || fail "a chord ended the program"
! grep modifiers "$work/claimed" || fail "chords came through to the other shell"
echo "$(wc -l <"$work/chords") chords led nowhere"

# What puts itself over the program is covered again at its next look, a cursor that is shut in gets the whole
# screen back, and when the program leaves the cursor is free.
x86_64-w64-mingw32-g++-posix -static -o "$work/intruder.exe" "$top/tests/e2e/intruder.cpp"
intruder() { wine "$work/intruder.exe" "$1" </dev/null 2>/dev/null; }
intruder cover || fail "a window stayed over the program"
intruder shut || fail "the cursor stayed shut in"
intruder leave && leave
intruder free || fail "the cursor is not free at the end"
