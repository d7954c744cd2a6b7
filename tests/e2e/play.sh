#!/bin/bash
# The child draws on two monitors, the smaller one left of the primary; then the ways in and out. All the while
# there are DLLs beside the program that somebody has put there.
. "$(dirname "$0")/../../tools/desktop.sh"
desktop 0,0,1280,800 -640,100,640,480
settings ShowExitHint=0
alone

# A program that takes DLLs from anywhere ends with 77 there. Wine, other than Windows, has to be asked to do so.
export WINEDLLOVERRIDES="$WINEDLLOVERRIDES;winmm,msimg32=n,b"
for dll in winmm msimg32; do
    echo 'BOOL WINAPI DllMain(HINSTANCE, DWORD, LPVOID) { ExitProcess(77); }' |
        compiled alone/$dll.dll -shared -include windows.h -
    echo "int main() { LoadLibraryA(\"$dll\"); }" | compiled alone/trusting.exe -include windows.h -
    quietly wine "$work/alone/trusting.exe" && fail "the planted $dll.dll does not work"
done

picture "$work/bare.ppm"
launch
covered() { picture "$work/empty.ppm" && [ "$(differing "$work/bare.ppm" "$work/empty.ppm")" = 1331200 ]; }
soon 10 covered || fail "the program does not cover both monitors"

# Over the seam in steps that are wider than the pen: each pixel of the way is painted.
move 450 300
x mousedown 1 $(printf 'mousemove_relative -- -100 0 sleep 0.05 %.0s' {1..8}) mouseup 1
way="[801x1+$((origin_x - 350))+$((origin_y + 300))]"
painted_pixels() { picture "$work/drawn.ppm" && differing "$work/empty.ppm$way" "$work/drawn.ppm$way"; }
whole() { [ "$(painted_pixels)" = 801 ]; }
soon 10 whole || fail "of 801 pixels of the way $(painted_pixels) are painted"

quietly wine "$exe" &
ended $!
[ $exit_code = 0 ] && [ "$(windows)" = 2 ] || fail "a second start ends with $exit_code over $(windows) windows"
leave
[ "$(windows)" = 0 ] || fail "a window stayed"

# A crash turns a run red, or none of this would prove anything.
compiled crash.exe -include windows.h - <<'C'
int main()
{
    DWORD id = 0;
    GetWindowThreadProcessId(FindWindowW(L"ZubblyWindow", nullptr), &id);
    const HANDLE program = OpenProcess(PROCESS_ALL_ACCESS, FALSE, id);
    return !CreateRemoteThread(program, nullptr, 0, nullptr, nullptr, 0, nullptr);  // at no address
}
C
launch
quietly wine "$work/crash.exe" || fail "nothing could be made to crash"
ended "$program"
[ $exit_code != 0 ] || fail "a crash ends with code 0"
