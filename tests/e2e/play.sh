#!/bin/bash
# The child draws on two monitors, the smaller one left of the primary; then the ways in and out.
. "$(dirname "$0")/desktop.sh"
desktop 0,0,1280,800 -640,100,640,480
settings ShowExitHint=0
launch

# A second start says nothing and leaves the first alone.
wine "$exe" </dev/null >/dev/null 2>&1 &
ended $!
[ $exit_code = 0 ] || fail "a second start ended with $exit_code"
[ "$(windows)" = 2 ] || fail "a second start changed the windows"

# Sixty moves as fast as they go: thirty to the left over the seam, thirty back below it, up and down, so far
# apart that a turn can only be painted by its own segments.
path=()
for i in {0..59}; do
    column=$((i < 30 ? i : 59 - i))
    path+=("$((900 - 48 * column)),$((150 + (i % 2) * 150 + (i < 30 ? 0 : 230)))")
done
drag() {
    local moves=() point
    for point in "${path[@]}"; do
        moves+=(mousemove $((${point%,*} + origin_x)) $((${point#*,} + origin_y)) sleep "$1")
    done
    picture "$work/empty.ppm"
    move 900 120
    x mousedown 1 "${moves[@]}" mouseup 1
}

# The whole way is painted.
painted() {
    picture "$work/drawn.ppm"
    python3 - "$work/empty.ppm" "$work/drawn.ppm" "$origin_x" "$origin_y" "${path[@]}" <<'P'
import sys
def pixels(path):
    data = open(path, "rb").read()
    size = data.split(b"\n", 3)[1]
    return int(size.split()[0]), data.split(b"\n", 3)[3]
width, empty = pixels(sys.argv[1])
_, drawn = pixels(sys.argv[2])
left, top = int(sys.argv[3]), int(sys.argv[4])
path = [tuple(map(int, point.split(","))) for point in sys.argv[5:]]
holes = []
for (ax, ay), (bx, by) in zip(path, path[1:]):
    for step in range(0, 50):
        x, y = ax + (bx - ax) * step // 49 + left, ay + (by - ay) * step // 49 + top
        at = 3 * (y * width + x)
        if drawn[at:at + 3] == empty[at:at + 3]:
            holes.append((x - left, y - top))
print(len(holes), "holes", holes[:10])
sys.exit(bool(holes))
P
}
# A busy X server merges moves that nobody fetched yet; so a broken stroke gets a second, slower try.
drag 0.008
if ! soon 3 painted; then
    leave
    launch
    drag 0.05
    soon 10 painted || fail "the stroke is broken: $(painted)"
fi

leave
[ "$(windows)" = 0 ] || fail "a window stayed"

# DLLs that somebody put beside the program are not let in; they are into one that needs them from the start.
# Wine, other than Windows, has to be asked to look at them.
mkdir "$work/beside"
export WINEDLLOVERRIDES="$WINEDLLOVERRIDES;winmm,msimg32=n,b"
for dll in winmm msimg32; do
    x86_64-w64-mingw32-g++-posix -shared -static -o "$work/beside/$dll.dll" "$top/tests/e2e/planted.cpp"
done
planted() { ls "$work/beside" | grep -c '\.ran$'; }
echo 'int main() { return !PlaySoundW(nullptr, nullptr, 0) && !AlphaBlend({}, 0, 0, 0, 0, {}, 0, 0, 0, 0, {}); }' |
    x86_64-w64-mingw32-g++-posix -static -include windows.h -x c++ - -o "$work/beside/needy.exe" -lwinmm -lmsimg32
wine "$work/beside/needy.exe" </dev/null >/dev/null 2>&1 || true
[ "$(planted)" = 2 ] || fail "the planted DLLs do not work"
rm "$work/beside"/*.ran
shipped=$exe
cp "$exe" "$work/beside" && exe=$work/beside/Zubbly.exe
launch
tap 300 300
sleep 1
leave
[ "$(planted)" = 0 ] || fail "planted DLLs ran: $(ls "$work/beside")"
exe=$shipped

# A crash turns a run red, or none of this would prove anything.
x86_64-w64-mingw32-g++-posix -static -o "$work/crash.exe" "$top/tests/e2e/crash.cpp"
launch
wine "$work/crash.exe" </dev/null >/dev/null 2>&1 || fail "nothing could be made to crash"
ended "$program"
[ $exit_code != 0 ] || fail "a crash ended with code 0"
