#!/bin/bash
# What a child drew is kept, in the save dialog and by itself; what lies over the canvas gets into no saved
# picture; and a full disk or a kill in the middle of a save costs nothing that was saved before.
. "$(dirname "$0")/desktop.sh"
desktop 0,0,1280,800
mkdir "$work/bare" && cp "$exe" "$work/bare" && exe=$work/bare/Zubbly.exe  # no mascot: only the card lies above
settings AutoSaveIntervalSeconds=60
saved=$data/SavedPictures
kept=$WINEPREFIX/drive_c/users/$(id -un)/Pictures/kept.png
trap '' XFSZ  # a write beyond the limit fails, as on a full disk
same() { [ "$(compare -metric AE "$1" "$2" null: 2>&1)" = 0 ]; }
clear_of_card() { convert "$1" -fill black -draw "rectangle 170,10 1110,232" "$2"; }
dialogs() { x search --onlyvisible --name '^Save$' 2>/dev/null | wc -l; }
dialogs_are() { [ "$(dialogs)" = "$1" ]; }
open_dialog() {
    local open=$(dialogs)
    x keydown Alt_L key F1 keyup Alt_L
    soon 20 dialogs_are $((open + 1)) || fail "Alt+F1 opens no dialog over $open"
}
marked() { picture "$work/now.ppm"; [ "$(colour "$work/now.ppm" "$1" "$2")" != "$background" ]; }
mark() { tap "$1" "$2"; soon 10 marked "$1" "$2" || fail "no mark at $1 $2${3:-}"; }

card() { picture "$work/now.ppm"; [ "$(colour "$work/now.ppm" 640 30)" != "$(colour "$work/now.ppm" 640 700)" ]; }
start() {
    launch
    began=$SECONDS
    soon 10 card || fail "no card"
    background=$(colour "$work/now.ppm" 640 700)
}

start
mark 300 400
mark 100 300

open_dialog
key Escape
soon 10 dialogs_are 0 || fail "Escape leaves the dialog"
[ ! -e "$kept" ] && [ -z "$(ls "$(dirname "$kept")")" ] || fail "a cancelled dialog left a file"
mark 200 600 " after the dialog"

picture "$work/before.ppm"
open_dialog
x key Home key shift+End type kept
x key Return
soon 10 dialogs_are 0 && soon 10 same "$kept" "$kept" || fail "the dialog saves nothing"
clear_of_card "$work/before.ppm" "$work/before.png"
clear_of_card "$kept" "$work/kept.png"
same "$work/before.png" "$work/kept.png" || fail "the file is not the canvas at the key"
[ "$(colour "$kept" 640 30)" = "$background" ] || fail "the card is in the file"

key Return  # the program draws by itself
open_dialog
picture "$work/before.ppm"
draws_on() { picture "$work/now.ppm"; ! same "$work/before.ppm" "$work/now.ppm"; }
soon 10 draws_on || fail "all stands still while the dialog is open"
key Escape
soon 10 dialogs_are 0 || fail "the dialog stays"
tap 100 700

for day in {10..19}; do cp "$kept" "$saved/auto-202001$day-000000.png"; done
whole=$(cd "$saved" && sha1sum ./*)
all_whole() { (cd "$saved" && sha1sum --status -c <<<"$whole"); }
prlimit --pid "$program" --fsize=1000:
sleep $((began + 66 - SECONDS))
[ "$(ls "$saved" | wc -l)" = 10 ] && all_whole || fail "a full disk cost or left a file: $(ls -l "$saved")"
prlimit --pid "$program" --fsize=unlimited:

# The picture still waits to be saved. It is killed as its file appears.
python3 - "$saved" "$program" <<'P' || fail "the picture was not saved later"
import os, signal, sys, time
end = time.time() + 70
while len(os.listdir(sys.argv[1])) == 10 and time.time() < end:
    time.sleep(0.002)
os.kill(int(sys.argv[2]), signal.SIGKILL)
sys.exit(time.time() >= end)
P
wait "$program" || true
half=$(ls "$saved" | tail -n 1)
echo "killed after $(stat -c %s "$saved/$half") bytes; as a picture: $(identify "$saved/$half" 2>&1 | tail -n 1)"
all_whole || fail "the kill cost a picture"
start
mark 300 300 " after the kill"
tap 207 197  # the checkbox
opted_out() { iconv -f UTF-16 "$data/config.ini" | grep -q '^ShowExitHint=0'; }
opted_out && fail "the checkbox acts before the card closes"
soon 15 opted_out || fail "the checkbox does not turn the card off"
pruned() { [ "$(ls "$saved" | wc -l)" = 10 ]; }
soon 70 pruned && identify "$saved/$(ls "$saved" | tail -n 1)" || fail "nothing is saved after the kill"

# A second dialog over the first; neither holds the program up.
open_dialog
open_dialog
key Escape
soon 10 dialogs_are 1 || fail "Escape leaves both dialogs"
mark 300 600 " over a forgotten dialog"
leave
