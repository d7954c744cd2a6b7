# Sourced by ./play, ./check and ./package: sees to it that the tools they need are there, and builds. A thing
# counts as there when its command or file is, whoever put it there; only what is missing is installed.

# Without such a locale Wine has no name for a file with a Japanese or an accented letter in it.
[ "$(locale charmap)" = UTF-8 ] || export LC_ALL=C.UTF-8

# command or file that proves it            Debian package
package_table() {
    case $1 in
    build) cat <<'T'
x86_64-w64-mingw32-g++-posix                g++-mingw-w64-x86-64-posix
cmake                                       cmake
ninja                                       ninja-build
T
    ;;
    run) cat <<'T'
wine                                        wine
wineserver                                  wine
/usr/share/wine/fonts/tahoma.ttf            fonts-wine
T
    ;;
    desk) cat <<'T'
Xvfb                                        xvfb
xdotool                                     xdotool
import                                      imagemagick
T
    ;;
    cjk) cat <<'T'
/usr/share/fonts/opentype/noto/NotoSansCJK-Regular.ttc  fonts-noto-cjk
T
    ;;
    check) cat <<'T'
g++                                         g++
git                                         git
python3                                     python3
/usr/src/googletest/CMakeLists.txt          googletest
clang-format-19                             clang-format-19
Xvnc                                        tigervnc-standalone-server
xrandr                                      x11-xserver-utils
pulseaudio                                  pulseaudio
pactl                                       pulseaudio-utils
/usr/lib/python3/dist-packages/numpy        python3-numpy
T
    ;;
    bench) cat <<'T'
/usr/lib/x86_64-linux-gnu/libXdamage.so.1   libxdamage1
/usr/lib/x86_64-linux-gnu/libXtst.so.6      libxtst6
perf                                        linux-perf
T
    ;;
    analyse) cat <<'T'
clang-tidy                                  clang-tidy
cppcheck                                    cppcheck
T
    ;;
    page) cat <<'T'
chromium                                    chromium
T
    ;;
    pack) cat <<'T'
makensis                                    nsis
zip                                         zip
git                                         git
T
    ;;
    fonts) cat <<'T'
npm                                         npm
/usr/lib/python3/dist-packages/fontTools    python3-fonttools
T
    ;;
    sign) cat <<'T'
osslsigncode                                osslsigncode
T
    ;;
    esac
}

missing_packages() {
    local group proof package
    for group; do package_table "$group"; done | while read -r proof package; do
        case $proof in
        /*) [ -e "$proof" ] ;;
        *) command -v "$proof" >/dev/null ;;
        esac || echo "$package"
    done | sort -u | tr '\n' ' '
}

# need_packages GROUP...: installs what is missing, or ends the script with one line that says what to do.
need_packages() {
    local missing sudo='' log
    missing=$(missing_packages "$@")
    [ -n "$missing" ] || return 0
    if ! command -v apt-get >/dev/null; then
        echo "$0: please install these (Debian's names), then start again: $missing" >&2
        exit 1
    fi
    if [ "$(id -u)" != 0 ]; then
        sudo=sudo
        if ! command -v sudo >/dev/null || { [ ! -t 0 ] && ! sudo -n true 2>/dev/null; }; then
            echo "$0: cannot become root; please let somebody who can run: apt-get install $missing" >&2
            exit 1
        fi
    fi
    echo "Installing with apt-get: $missing"
    log=$(mktemp)
    if ! { $sudo apt-get update && $sudo env DEBIAN_FRONTEND=noninteractive apt-get install -y \
        --no-install-recommends $missing; } >"$log" 2>&1 </dev/null || [ -n "$(missing_packages "$@")" ]; then
        echo "$0: apt-get could not install them (is there a network? what it said: $log); needed: $missing" >&2
        exit 1
    fi
    rm "$log"
}

# build PRESET [TARGET]: quietly, unless it fails; and yielding to whatever plays meanwhile.
build() {
    if command -v ccache >/dev/null; then
        export CMAKE_CXX_COMPILER_LAUNCHER=ccache CCACHE_SLOPPINESS=pch_defines,time_macros
    fi
    mkdir -p build
    [ -f "build/$1/build.ninja" ] || cmake --preset "$1" >"build/$1.log" 2>&1 || { cat "build/$1.log"; return 1; }
    nice cmake --build --preset "$1" ${2:+--target "$2"} >"build/$1.log" 2>&1 || { grep -vE '^\[[0-9]+/[0-9]+\] [A-Z]' "build/$1.log"; return 1; }
    tail -n 1 "build/$1.log"
}
