#!/bin/bash
# What a parent does with the installer: install, play, upgrade, uninstall. Nothing that the family made or put
# there goes unless asked.
home=$HOME
. "$(dirname "$0")/../../tools/desktop.sh"
HOME=$home "$top/package" --without-fonts --to "$work/new" || fail "nothing was packed"
setup=$(ls "$work"/new/Zubbly-*-setup.exe)
version=${setup##*/Zubbly-} version=${version%-setup.exe}
(cd "$work/new" && sha256sum --check --status SHA256SUMS) || fail "the checksums are wrong"
python3 -m zipfile -e "$work/new/Zubbly-$version-portable.zip" "$work"
portable=$work/Zubbly-$version

# An older version, with a file and a folder that the new one has no more.
cp -r "$portable" "$work/old"
mkdir "$work/old/assets/walrus"
touch "$work/old/assets/walrus/idle.png" "$work/old/assets/penguin/sad.png"
"$top/tools/make-setup" "$work/old" 0.0.9 "$work/old-setup.exe"

desktop 0,0,1280,800
user=$WINEPREFIX/drive_c/users/$(id -un)
place=$user/AppData/Local/Programs/Zubbly
menu="$user/AppData/Roaming/Microsoft/Windows/Start Menu/Programs/Zubbly"
entry='HKCU\Software\Microsoft\Windows\CurrentVersion\Uninstall\Zubbly'
vendor=$user/AppData/Roaming/norvanta
saved=$data/SavedPictures

# does CODE WHAT COMMAND...: the command runs to its end, with this exit code.
does() {
    local code=0
    quietly timeout 60 "${@:3}" || code=$?
    [ $code = "$1" ] || fail "$2 ends with $code"
}
entry_says() { wine reg query "$entry" /v "$1" 2>/dev/null | tr -d '\r' | sed -n "s/^ *$1 *REG_SZ *//p"; }
# menu_has WHAT NAME...: the folder in the Start menu has the program and these entries.
menu_has() { [ "$(ls "$menu")" = "$(printf '%s.lnk\n' Zubbly "${@:2}" | sort)" ] || fail "$1 leaves $(ls "$menu")"; }
# installed FOLDER WHAT VERSION: all of the folder is there and nothing else but the uninstaller and the family's file.
installed() {
    local differs=$(diff -r "$1" "$place" | grep -v "^Only in $place: \(uninstall.exe\|family.txt\)$")
    [ -z "$differs" ] && [ -s "$place/uninstall.exe" ] || fail "$2 leaves $differs, $(ls "$place")"
    [ "$(entry_says DisplayVersion)" = "$3" ] || fail "$2 leaves the entry $(entry_says DisplayVersion)"
    menu_has "$2" 'For parents' 'Saved pictures' Settings
}
# opens ENTRY TITLE: an entry of the Start menu brings up a window of this title.
opens() {
    quietly wine start /unix "$menu/$1.lnk"
    soon 20 x search --onlyvisible --name "$2" || fail "$1 opens no $2"
}
kept() { cmp -s "$work/config.ini" "$data/config.ini" && [ -s "$saved/auto-20261121-101500.png" ]; }
family_has() { [ "$(find "$vendor" -type f -printf %f)" = "$1" ]; }
uninstalled() { [ ! -e "$menu" ] && ! wine reg query "$entry" && [ "$(ls "$place" 2>/dev/null)" = "$1" ]; }

does 0 "the old installer" wine "$work/old-setup.exe" /S
installed "$work/old" "the old installer" 0.0.9
opens Settings Zubbly
opens 'Saved pictures' SavedPictures
mkdir -p "$saved"
settings ShowExitHint=0 VolumeClampPercent=30
cp "$data/config.ini" "$work/config.ini"
for name_of_picture in auto-20261121-101500 holiday; do
    cp "$top/assets/penguin/idle.png" "$saved/$name_of_picture.png"
done
opens Settings config.ini
timeout 20 wineserver -k  # no folder can be removed while a window shows it: all of them go
quietly wineserver -p
echo ours >"$place/family.txt"
does 0 "the upgrade" wine "$setup" /S
installed "$portable" "the upgrade" "$version"
kept && [ -s "$place/family.txt" ] || fail "the upgrade took something of the family's"

wine start /wait /unix "$menu/Zubbly.lnk" </dev/null >/dev/null 2>&1 &
program=$!
soon 60 shows || fail "the entry in the Start menu starts nothing"
does 2 "an upgrade while it runs" wine "$setup" /S
does 2 "uninstalling while it runs" wine "$place/uninstall.exe" /S "_?=C:\\users\\$(id -un)\\AppData\\Local\\Programs\\Zubbly"
installed "$portable" "what was refused" "$version"
move 300 300
leave

IFS='"' read -r _ uninstaller switches < <(entry_says QuietUninstallString)
does 0 "the uninstaller" wine "$uninstaller" $switches
soon 20 uninstalled family.txt || fail "uninstalling left: $(ls "$place")"
kept || fail "uninstalling took pictures or settings"
rm "$place/family.txt"
# A locale that need not be on this machine: Wine looks at its name and at its characters.
again_in() {
    cp -r /usr/lib/locale/C.utf8 "$work/$1.utf8"
    LOCPATH=$work does 0 "installing again" env LC_ALL="$1.UTF-8" wine "$setup" /S
    menu_has "installing in $1" "${@:2}"
    does 0 "the erasing uninstaller" wine "$place/uninstall.exe" /S /ERASE
    soon 20 uninstalled '' && [ ! -e "$place" ] || fail "erasing left: $(ls "$place")"
}
again_in de_DE 'Für Eltern' Einstellungen 'Gespeicherte Bilder'
soon 20 family_has holiday.png || fail "erasing left: $(find "$vendor")"
rm "$saved/holiday.png"
again_in ja_JP おうちの方へ 設定 保存した絵
soon 20 test ! -e "$vendor" || fail "erasing left: $(find "$vendor")"
