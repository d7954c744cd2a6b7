#!/bin/bash
# What a child drew is kept, in the save dialog and by itself, without what lies over it; a full disk or a kill in the
# middle of a save costs nothing that was saved before. The time to save is brought forward; probe.sh waits for it.
. "$(dirname "$0")/../../tools/desktop.sh"
desktop 0,0,1280,800
alone  # only the card lies over the canvas
echo 'int main() { return !PostMessageW(FindWindowW(L"ZubblyWindow", nullptr), WM_TIMER, 10, 0); }' |
    compiled save_now.exe -include windows.h -
saved=$data/SavedPictures
pictures=$WINEPREFIX/drive_c/users/$(id -un)/Pictures
trap '' XFSZ  # a write beyond the limit fails, as on a full disk

dialog() { x search --onlyvisible --name '^Save$'; }
no_dialog() { ! dialog; }
has_keys() { dialog && [ "$(x getwindowfocus)" = "$(dialog)" ]; }
open_dialog() { x keydown Alt_L key F1 keyup Alt_L && soon 20 has_keys || fail "Alt+F1 opens no dialog"; }
close_dialog() { soon 20 has_keys && key "$1" && soon 20 no_dialog || fail "$1 does not close the dialog"; }
card() { picture "$work/now.ppm" && [ "$(colour "$work/now.ppm" 640 30)" != "$(colour "$work/now.ppm" 640 700)" ]; }
# start TYPEFACE: starts it, and keeps the white letters of the card's heading as a picture.
start() {
    launch
    soon 10 card || fail "no card"
    convert "$work/now.ppm" -crop 900x50+190+30 -threshold 80% "$work/$1.png"
}
saved_since() { [ "$(stat -c %y "$saved")" != "$1" ] && [ "$(ls "$saved" | wc -l)" = 10 ]; }
# saves: the time to save has come; waits until something was written and ten files are left.
saves() {
    local before=$(stat -c %y "$saved")
    quietly wine "$work/save_now.exe" && soon 30 saved_since "$before"
}

# The card is set in the typeface that lies beside the program: another one in its place shows.
install -D /usr/share/wine/fonts/tahoma.ttf "$work/alone/Fonts/MPLUSRounded1c-Black.ttf"
start beside
open_dialog
close_dialog Escape
[ -z "$(ls "$pictures")" ] || fail "a cancelled dialog left a file"

# The play goes on while the dialog is open. What it draws is not in the file, nor is the card.
mark 300 400
picture "$work/before.ppm"
convert "$work/before.ppm" -fill "#$(colour "$work/before.ppm" 640 700)" -draw "rectangle 170,10 1110,232" \
    "$work/canvas.png"
open_dialog
mark 100 700
under=$(dialog)
x windowraise "$under" mousemove --window "$under" 200 15 click 1
close_dialog Return
is_canvas() { [ "$(differing "$work/canvas.png" "$pictures"/*.png)" = 0 ]; }
soon 10 is_canvas || fail "the file is not the canvas at the key: $(ls "$pictures")"

for day in {10..19}; do cp "$pictures"/*.png "$saved/auto-202001$day-000000.png"; done
whole=$(cd "$saved" && sha1sum ./*)
all_whole() { (cd "$saved" && sha1sum --status -c <<<"$whole"); }
prlimit --pid "$program" --fsize=1000:
saves && all_whole || fail "a full disk cost or left a file: $(ls -l "$saved")"
prlimit --pid "$program" --fsize=unlimited:

# The picture still waits to be saved. The kill comes as its file appears, so nothing slow may look for that.
quietly wine "$work/save_now.exe" &
limit=$((SECONDS + 30))
until files=("$saved"/*) && [ ${#files[@]} = 11 ]; do [ $SECONDS -lt $limit ] || fail "no file appears"; done
kill -KILL "$program"
ended "$program"
[ "$(ls "$saved" | wc -l)" = 11 ] && all_whole || fail "the kill cost a picture: $(ls -l "$saved")"
rm "${files[10]}"  # the next save makes eleven again

rm -r "$work/alone/Fonts"
start installed
[ "$(differing "$work/beside.png" "$work/installed.png")" -gt 1000 ] || fail "the card does not use its typeface"
mark 207 197  # the checkbox
opted_out() { iconv -f UTF-16 "$data/config.ini" | grep -q '^ShowExitHint=0'; }
opted_out && fail "the checkbox acts before the card closes"
soon 15 opted_out || fail "the checkbox does not turn the card off"
mark 300 300
saves && identify "$saved/$(ls "$saved" | tail -n 1)" || fail "nothing is saved after the kill"
leave
