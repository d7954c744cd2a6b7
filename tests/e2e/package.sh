#!/bin/bash
# What a parent does with the installer. Nothing that the family made or put there goes unless asked.
home=$HOME
. "$(dirname "$0")/../../tools/desktop.sh"
HOME=$home "$top/package" --without-fonts --to "$work/new" || fail "nothing was packed"
setup=$(ls "$work"/new/Zubbly-*-setup.exe)
version=${setup##*/Zubbly-} version=${version%-setup.exe}
new=$work/Zubbly-$version old=$work/old
python3 -m zipfile -e "$work/new/Zubbly-$version-portable.zip" "$work"
# An older version, with a folder that the new one no longer has.
cp -r "$new" "$old"
install -D /dev/null "$old/assets/walrus/idle.png"
"$top/tools/make-setup" "$old" 0.0.9 "$work/old-setup.exe"

desktop 0,0,1280,800
user=$WINEPREFIX/drive_c/users/$(id -un)
place=$user/AppData/Local/Programs/Zubbly
menu="$user/AppData/Roaming/Microsoft/Windows/Start Menu/Programs/Zubbly"
entry='HKCU\Software\Microsoft\Windows\CurrentVersion\Uninstall\Zubbly'
vendor=$user/AppData/Roaming/norvanta
english=('For parents' 'Saved pictures' Settings)

# does CODE COMMAND...: it ends with this exit code.
does() {
    local code=0
    quietly timeout 60 "${@:2}" || code=$?
    [ $code = "$1" ] || fail "${*:2} ends with $code"
}
# installed VERSION FOLDER NAME...: the folder's files are there and no others but the uninstaller and the family's;
# Windows lists the version, and the Start menu has the program and these entries.
installed() {
    local differs=$(diff -r "$2" "$place" | grep -v "^Only in $place: \(uninstall.exe\|family.txt\)$")
    [ -z "$differs" ] || fail "$1 was installed, but: $differs"
    wine reg query "$entry" /v DisplayVersion 2>/dev/null | grep -qwF "$1" || fail "Windows does not list $1"
    [ "$(ls "$menu")" = "$(printf '%s.lnk\n' Zubbly "${@:3}" | sort)" ] || fail "the menu has $(ls "$menu")"
}
uninstalled() { [ ! -e "$menu" ] && ! wine reg query "$entry" && [ "$(ls "$place")" = "$1" ]; }
family_files() { find "$vendor" "$place/family.txt" -type f -exec sha1sum {} + | sort; }

does 0 wine "$work/old-setup.exe" /S
installed 0.0.9 "$old" "${english[@]}"
wine start /wait /unix "$menu/Zubbly.lnk" </dev/null >/dev/null 2>&1 &
program=$!
soon 60 shows || fail "the entry in the Start menu starts nothing"
does 2 wine "$setup" /S
does 2 wine "$place/uninstall.exe" /S "_?=C:\\users\\$(id -un)\\AppData\\Local\\Programs\\Zubbly"
installed 0.0.9 "$old" "${english[@]}"
leave

for file in "$data"/SavedPictures/{auto-20261121-101500,holiday}.png "$place/family.txt"; do echo ours >"$file"; done
had=$(family_files)
does 0 wine "$setup" /S
installed "$version" "$new" "${english[@]}"
[ "$(family_files)" = "$had" ] || fail "the upgrade took something of the family's: $had"
does 0 wine "$place/uninstall.exe" /S
soon 20 uninstalled family.txt || fail "uninstalling left: $(ls "$place")"
[ "$(family_files)" = "$had" ] || fail "uninstalling took something of the family's: $had"
rm "$place/family.txt"

# A locale that need not be on this machine: Wine looks at its name and at its characters.
again_in() {
    cp -r /usr/lib/locale/C.utf8 "$work/$1.utf8"
    LOCPATH=$work does 0 env LC_ALL="$1.UTF-8" wine "$setup" /S
    installed "$version" "$new" "${@:2}"
    does 0 wine "$place/uninstall.exe" /S /ERASE
    soon 20 test ! -e "$place" || fail "erasing left: $(ls "$place")"
}
again_in de_DE 'Für Eltern' Einstellungen 'Gespeicherte Bilder'
holiday_alone() { [ "$(find "$vendor" -type f -printf %f)" = holiday.png ]; }
soon 20 holiday_alone || fail "erasing left: $(find "$vendor")"
rm "$data/SavedPictures/holiday.png"
again_in ja_JP おうちの方へ 設定 保存した絵
soon 20 test ! -e "$vendor" || fail "erasing left: $(find "$vendor")"
