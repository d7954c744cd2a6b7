#!/bin/bash
# The child draws on two monitors, the smaller one left of the primary; then the ways in and out.
. "$(dirname "$0")/../../tools/desktop.sh"
desktop 0,0,1280,800 -640,100,640,480
compiled() { x86_64-w64-mingw32-g++-posix -static -o "$work/$1" -x c++ "${@:2}"; }
settings ShowExitHint=0
launch

quietly wine "$exe" &
ended $!
[ $exit_code = 0 ] && [ "$(windows)" = 2 ] || fail "a second start ends with $exit_code over $(windows) windows"
leave
[ "$(windows)" = 0 ] || fail "a window stayed"

# Sixty moves, thirty to the left over the seam and thirty back below, up and down, so far apart that a turn can
# only be painted by its own segments. What is painted hangs together from the first point to each other one.
points=() moves=()
for i in {0..59}; do
    column=$((i < 30 ? i : 59 - i))
    points+=("$((900 - 48 * column + origin_x)),$((150 + i % 2 * 150 + (i < 30 ? 0 : 230) + origin_y))")
    moves+=(mousemove ${points[i]/,/ } sleep 0.05)
done
unpainted() {
    convert "$work/empty.ppm" "$work/drawn.ppm" -compose difference -composite -separate -evaluate-sequence max \
        -threshold 0 -set colorspace sRGB -type TrueColor -fill red -draw "color ${points[0]} floodfill" \
        -fill white +opaque red -fill black -opaque red \
        \( +clone -fill black -colorize 100 -fill none -stroke white +antialias -draw "polyline ${points[*]}" \) \
        -compose darken -composite -alpha off -format '%[fx:round(mean*w*h)]' info:
}
whole() { picture "$work/drawn.ppm" && [ "$(unpainted)" = 0 ]; }
stroke() {
    launch
    picture "$work/empty.ppm"
    x mousemove ${points[0]/,/ } mousedown 1 "${moves[@]}" mouseup 1
    soon 5 whole || true
    leave
    echo "$(unpainted) pixels of the way are not painted" && [ "$(unpainted)" = 0 ]
}
retried stroke  # a busy X server merges moves

# DLLs that somebody put beside the program are not let in; they are into one that takes them from anywhere.
# Wine, other than Windows, has to be asked to look at them.
mkdir "$work/beside"
export WINEDLLOVERRIDES="$WINEDLLOVERRIDES;winmm,msimg32=n,b"
for dll in winmm msimg32; do compiled beside/$dll.dll -shared "$top/tests/e2e/planted.cpp"; done
planted() { ls "$work/beside" | grep -c '\.ran$'; }
echo 'int main() { return !LoadLibraryA("winmm") || !LoadLibraryA("msimg32"); }' |
    compiled beside/trusting.exe -include windows.h -
quietly wine "$work/beside/trusting.exe" || true
[ "$(planted)" = 2 ] || fail "the planted DLLs do not work"
rm "$work/beside"/*.ran
cp "$exe" "$work/beside"
exe=$work/beside/Zubbly.exe
launch
picture "$work/empty.ppm"
tapped() { picture "$work/now.ppm" && ! cmp -s "$work/empty.ppm" "$work/now.ppm"; }
tap 300 300
soon 10 tapped || fail "a tap leaves no mark"
leave
[ "$(planted)" = 0 ] || fail "planted DLLs ran: $(ls "$work/beside")"

# A crash turns a run red, or none of this would prove anything.
compiled nudge.exe "$top/tests/e2e/nudge.cpp"
launch
quietly wine "$work/nudge.exe" crash || fail "nothing could be made to crash"
ended "$program"
[ $exit_code != 0 ] || fail "a crash ended with code 0"
