#!/bin/bash
# What a child drew is kept, in the save dialog and by itself; what lies over the canvas gets into no saved
# picture; and a full disk or a kill in the middle of a save costs nothing that was saved before. That the time to
# save comes by itself is seen in probe.sh; here it is brought forward.
. "$(dirname "$0")/../../tools/desktop.sh"
desktop 0,0,1280,800
x86_64-w64-mingw32-g++-posix -static -o "$work/nudge.exe" "$top/tests/e2e/nudge.cpp"
mkdir "$work/bare" && cp "$exe" "$work/bare" && exe=$work/bare/Zubbly.exe  # no mascot: only the card lies above
saved=$data/SavedPictures
kept=$WINEPREFIX/drive_c/users/$(id -un)/Pictures/kept.png
trap '' XFSZ  # a write beyond the limit fails, as on a full disk
same() { [ "$(differing "$1" "$2")" = 0 ]; }
clear_of_card() { convert "$1" -fill black -draw "rectangle 170,10 1110,232" "$2"; }
dialogs_are() { [ "$(x search --onlyvisible --name '^Save$' 2>/dev/null | wc -l)" = "$1" ]; }
# open_dialog COUNT: so many are open then.
open_dialog() {
    x keydown Alt_L key F1 keyup Alt_L
    soon 20 dialogs_are "$1" || fail "Alt+F1 does not lead to $1 open dialogs"
}
# closes KEY COUNT: closes one, and so many stay open.
closes() { key "$1" && soon 10 dialogs_are "$2" || fail "after $1 there are not $2 dialogs"; }
marked() { picture "$work/now.ppm" && [ "$(colour "$work/now.ppm" "$1" "$2")" != "$background" ]; }
mark() { tap "$1" "$2"; soon 10 marked "$1" "$2" || fail "no mark at $1 $2${3:-}"; }
card() { picture "$work/now.ppm" && [ "$(colour "$work/now.ppm" 640 30)" != "$(colour "$work/now.ppm" 640 700)" ]; }
# start TYPEFACE: starts it, and keeps the white letters of the card's heading as a picture.
start() {
    launch
    soon 10 card || fail "no card"
    background=$(colour "$work/now.ppm" 640 700)
    convert "$work/now.ppm" -crop 900x50+190+30 -threshold 80% "$work/$1.png"
}
saved_after() { [ "$(stat -c %y "$saved")" != "$1" ] && [ "$(ls "$saved" | wc -l)" = 10 ]; }
# saves: the time to save has come; waits until something was written and ten files are left.
saves() {
    local before=$(stat -c %y "$saved")
    quietly wine "$work/nudge.exe" save || fail "no window to save"
    soon 30 saved_after "$before"
}

# The card is set in the typeface that lies beside the program: another one in its place shows.
mkdir "$work/bare/Fonts"
for weight in Regular Black; do cp /usr/share/wine/fonts/tahoma.ttf "$work/bare/Fonts/MPLUSRounded1c-$weight.ttf"; done
start beside
mark 300 400
open_dialog 1
closes Escape 0
[ ! -e "$kept" ] && [ -z "$(ls "$(dirname "$kept")")" ] || fail "a cancelled dialog left a file"
mark 200 600 " after the dialog"

picture "$work/before.ppm"
open_dialog 1
x key Home key shift+End type kept
closes Return 0
soon 10 same "$kept" "$kept" || fail "the dialog saves nothing"
clear_of_card "$work/before.ppm" "$work/before.png"
clear_of_card "$kept" "$work/kept.png"
same "$work/before.png" "$work/kept.png" || fail "the file is not the canvas at the key"
[ "$(colour "$kept" 640 30)" = "$background" ] || fail "the card is in the file"

key Return  # the program draws by itself
open_dialog 1
picture "$work/before.ppm"
draws_on() { picture "$work/now.ppm" && ! same "$work/before.ppm" "$work/now.ppm"; }
soon 10 draws_on || fail "all stands still while the dialog is open"
closes Escape 0
mark 100 700 " after it drew"

for day in {10..19}; do cp "$kept" "$saved/auto-202001$day-000000.png"; done
whole=$(cd "$saved" && sha1sum ./*)
all_whole() { (cd "$saved" && sha1sum --status -c <<<"$whole"); }
prlimit --pid "$program" --fsize=1000:
saves && all_whole || fail "a full disk cost or left a file: $(ls -l "$saved")"
prlimit --pid "$program" --fsize=unlimited:

# The picture still waits to be saved. It is killed as its file appears.
timeout 30 python3 - "$saved" "$program" wine "$work/nudge.exe" save >"$work/out" 2>&1 <<'P' || fail "no file appears"
import os, signal, subprocess, sys
nudge = subprocess.Popen(sys.argv[3:])
while len(os.listdir(sys.argv[1])) == 10:
    pass
os.kill(int(sys.argv[2]), signal.SIGKILL)
nudge.wait()
P
ended "$program"
half=$(ls "$saved" | tail -n 1)
echo "killed after $(stat -c %s "$saved/$half") bytes; as a picture: $(identify "$saved/$half" 2>&1 | tail -n 1)"
[ "$(ls "$saved" | wc -l)" = 11 ] && all_whole || fail "the kill cost a picture: $(ls -l "$saved")"

rm -r "$work/bare/Fonts"
start installed
[ "$(differing "$work/beside.png" "$work/installed.png")" -gt 1000 ] || fail "the card does not use its typeface"
mark 300 300 " after the kill"
tap 207 197  # the checkbox
opted_out() { iconv -f UTF-16 "$data/config.ini" | grep -q '^ShowExitHint=0'; }
opted_out && fail "the checkbox acts before the card closes"
soon 15 opted_out || fail "the checkbox does not turn the card off"
saves && identify "$saved/$(ls "$saved" | tail -n 1)" || fail "nothing is saved after the kill"

# A second dialog over the first; neither holds the program up.
open_dialog 1
open_dialog 2
closes Escape 1
mark 300 600 " over a forgotten dialog"
leave
