# Sourced by the end-to-end scripts, the benches, tools/film and, without a display, ./play. Gives each script a
# display, a Wine prefix and, on request, a sound card of its own; all of it is gone at the end, whatever happens.
# Points are the program's: 0,0 is the upper left corner of the primary monitor.
set -euo pipefail
top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
exe=${ZUBBLY_EXE:-$top/build/windows/Zubbly.exe}
name=$(basename "$0" .sh)
mkdir -p "$top/build/e2e"
work=$(mktemp -d "$top/build/e2e/$name.XXXXXX")
helpers=()
export HOME=$work XDG_RUNTIME_DIR=$work WINEPREFIX=$work/prefix WINEDEBUG=-all
export WINEDLLOVERRIDES="mscoree,mshtml,winedbg.exe,winemenubuilder.exe="  # with a debugger a crash may exit with 0
data=$WINEPREFIX/drive_c/users/$(id -un)/AppData/Roaming/norvanta/Zubworks/Zubbly

fail() { echo "$name: $*" >&2; exit 1; }
x() { timeout 10 xdotool "$@"; }
picture() { timeout 20 import -window root -depth 8 "$1"; }
quietly() { "$@" </dev/null >/dev/null 2>&1; }  # a service of Wine's that starts here keeps no stream open

at_end() {
    local code=$?
    trap - EXIT
    if [ $code != 0 ] && [ -n "${DISPLAY:-}" ]; then picture "$top/build/e2e/$name-failed.png" || true; fi
    timeout 20 wineserver -k || true
    [ ${#helpers[@]} = 0 ] || kill "${helpers[@]}" 2>/dev/null || true
    wait
    rm -rf "$work"
    exit $code
}
trap at_end EXIT
trap 'exit 1' INT TERM HUP

# soon SECONDS COMMAND...: asks again until the command says yes; a failure when it never does.
soon() {
    local limit=$((SECONDS + $1))
    until "${@:2}" >/dev/null 2>&1; do
        [ $SECONDS -lt $limit ] || return 1
        sleep 0.05
    done
}

# retried COMMAND...: for what a busy machine can spoil without any fault of the program. ./check prints each retry.
retried() {
    local try
    for try in 1 2 3 4 5; do
        if "$@"; then return; fi
        echo "retry: $* failed for the ${try}. time"
    done
    fail "$* failed each time"
}

# alone: the program starts from $work/alone, where its pictures are not beside it, so no penguin walks.
alone() { mkdir "$work/alone" && cp "$exe" "$work/alone" && exe=$work/alone/Zubbly.exe; }

# compiled FILE SOURCE...: a Windows program of a script's own, in $work.
compiled() { x86_64-w64-mingw32-g++-posix -static -o "$work/$1" -x c++ "${@:2}"; }

# settings LINE...: what the section [Zubbly] of the settings file holds at the next launch.
settings() {
    mkdir -p "$data"
    { printf '\xff\xfe' && printf '%s\r\n' '[Zubbly]' "$@" | iconv -t UTF-16LE; } >"$data/config.ini"
}

# sound_card: before desktop; everything the program plays is in $work/sound.s16 (mono, 44100 Hz).
sound_card() {
    export PULSE_SERVER=unix:$work/card
    pulseaudio -n --daemonize=no --use-pid-file=no --exit-idle-time=-1 --disable-shm=yes \
        -L "module-native-protocol-unix socket=$work/card auth-anonymous=1" \
        -L "module-null-sink sink_name=card rate=44100 channels=2 norewinds=1" >/dev/null 2>&1 &
    helpers+=($!)
    soon 20 pactl info || fail "no sound server"
    parec -d card.monitor --raw --format=s16le --rate=44100 --channels=1 --latency-msec=20 \
        >"$work/sound.s16" 2>/dev/null &
    helpers+=($!)
}

# desktop X,Y,WIDTH,HEIGHT...: the monitors, the primary one (at 0,0) first. With screen_file=1 and one monitor
# the screen's pixels are in the file $work/Xvfb_screen0 all the time.
desktop() {
    monitors=$#
    mkfifo "$work/number"
    if [ $# = 1 ]; then
        IFS=, read -r origin_x origin_y width height <<<"$1"
        Xvfb -displayfd 3 -screen 0 "${width}x${height}x24" -nolisten tcp ${screen_file:+-fbdir "$work"} \
            3>"$work/number" >/dev/null 2>&1 &
    else
        Xvnc -displayfd 3 -geometry 1280x800 -depth 24 -SecurityTypes None -rfbport -1 \
            -rfbunixpath "$work/screens" 3>"$work/number" >/dev/null 2>&1 &
    fi
    helpers+=($!)
    read -r -t 30 DISPLAY <"$work/number" || fail "no display"
    export DISPLAY=:$DISPLAY
    if [ $# != 1 ]; then
        soon 20 test -S "$work/screens" || fail "no display to divide"
        read -r origin_x origin_y < <(timeout 20 python3 "$top/tools/screens.py" "$work/screens" "$@") ||
            fail "no second monitor"
        xrandr --output VNC-0 --primary
    fi
    "$top/tools/make-prefix" "$top/build/wine-desk"
    cp -al "$top/build/wine-desk" "$WINEPREFIX"
    rm "$WINEPREFIX"/*.reg
    cp "$top"/build/wine-desk/*.reg "$WINEPREFIX"
    quietly wineserver -p
    quietly wine cmd /c exit
}

windows() { x search --onlyvisible --name '^Zubbly$' 2>/dev/null | wc -l; }
shows() { [ "$(windows)" -ge "$monitors" ]; }
gone() { ! kill -0 "$1" 2>/dev/null; }
move() { x mousemove $(($1 + origin_x)) $(($2 + origin_y)); }
tap() { move "$1" "$2"; x click "${3:-1}"; }
key() { x key "$@"; }

# colour FILE X Y: the pixel of a picture as 6 hexadecimal digits.
colour() {
    /usr/bin/convert "$1" -crop "1x1+$(($2 + origin_x))+$(($3 + origin_y))" -depth 8 rgb:- | od -An -tx1 | tr -d ' \n'
}
# differing PICTURE PICTURE: the number of pixels that differ; ImageMagick writes 1.024e+06, version 7 "12 (0.01)".
differing() {
    local said
    said=$(compare -metric AE "$1" "$2" null: 2>&1) || [ $? = 1 ] || return  # 2: there is no such picture
    printf '%.0f\n' "${said%% *}"
}
# mark X Y: a tap there leaves a mark.
marked() { picture "$work/now.ppm" && [ "$(colour "$work/now.ppm" "$1" "$2")" != "$3" ]; }
mark() {
    picture "$work/now.ppm"
    local before=$(colour "$work/now.ppm" "$1" "$2")
    tap "$1" "$2"
    soon 10 marked "$1" "$2" "$before" || fail "no mark at $1,$2"
}
# A window can be up before its first picture is painted. The bare screen is black, no picture of ours is.
painted() { picture "$work/now.ppm" && [ "$(colour "$work/now.ppm" 2 2)" != 000000 ]; }

# launch: starts the program and waits until it covers every monitor. Its pid is $program.
launch() {
    wine "$exe" </dev/null >/dev/null 2>&1 &  # not in a subshell: the pid has to be its own
    program=$!
    soon 60 shows || fail "no window came up"
    soon 20 painted || fail "nothing was painted"
    move 300 300
}

# ended PID: waits for the program's end; $exit_code is what it left.
ended() {
    soon 30 gone "$1" || fail "the program did not end"
    exit_code=0
    wait "$1" || exit_code=$?
}

# leave: Alt+F4, as a parent does, and the program must say that all went well.
leave() {
    x keydown Alt_L key F4 keyup Alt_L
    ended "$program"
    [ $exit_code = 0 ] || fail "exit code $exit_code"
}
