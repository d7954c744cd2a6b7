#!/bin/bash
# What a parent does with the installer: install, play, upgrade, uninstall. Nothing that the family made or put
# there goes unless asked.
home=$HOME
. "$(dirname "$0")/desktop.sh"
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
link="$user/AppData/Roaming/Microsoft/Windows/Start Menu/Programs/Zubbly.lnk"
entry='HKCU\Software\Microsoft\Windows\CurrentVersion\Uninstall\Zubbly'
vendor=$user/AppData/Roaming/norvanta

# does CODE WHAT COMMAND...: the command under Wine, to the end, with this exit code.
does() {
    local code=0
    timeout 60 wine "${@:3}" </dev/null >/dev/null 2>&1 || code=$?
    [ $code = "$1" ] || fail "$2 ends with $code"
}
entry_says() { wine reg query "$entry" /v "$1" 2>/dev/null | tr -d '\r' | sed -n "s/^ *$1 *REG_SZ *//p"; }
installed() {
    local differs=$(diff -r "$1" "$place" | grep -v "^Only in $place: \(uninstall.exe\|family.txt\)$")
    [ -z "$differs" ] || fail "$2 leaves $differs"
    [ -s "$link" ] && [ -s "$place/uninstall.exe" ] && [ "$(entry_says DisplayVersion)" = "$3" ] ||
        fail "$2 leaves no link, uninstaller or entry"
}
kept() { cmp -s "$work/config.ini" "$data/config.ini" && [ -s "$saved/auto-20261121-101500.png" ]; }
family_things() {
    mkdir -p "$saved"
    settings ShowExitHint=0 VolumeClampPercent=30
    cp "$data/config.ini" "$work/config.ini"
    cp "$top/assets/penguin/idle.png" "$saved/auto-20261121-101500.png"
    cp "$top/assets/penguin/idle.png" "$saved/holiday.png"
}
saved=$data/SavedPictures
family_has() { [ "$(find "$vendor" -type f -printf %f)" = "$1" ]; }
uninstalled() { [ ! -e "$link" ] && ! wine reg query "$entry" && [ "$(ls "$place" 2>/dev/null)" = "$1" ]; }

does 0 "the old installer" "$work/old-setup.exe" /S
installed "$work/old" "the old installer" 0.0.9
family_things
echo ours >"$place/family.txt"
does 0 "the upgrade" "$setup" /S
installed "$portable" "the upgrade" "$version"
kept && [ -s "$place/family.txt" ] || fail "the upgrade took something of the family's"

wine start /wait /unix "$link" </dev/null >/dev/null 2>&1 &
program=$!
soon 60 shows || fail "the entry in the Start menu starts nothing"
does 2 "an upgrade while it runs" "$setup" /S
does 2 "uninstalling while it runs" "$place/uninstall.exe" /S "_?=C:\\users\\$(id -un)\\AppData\\Local\\Programs\\Zubbly"
installed "$portable" "what was refused" "$version"
move 300 300
leave

IFS='"' read -r _ uninstaller switches < <(entry_says QuietUninstallString)
does 0 "the uninstaller" "$uninstaller" $switches
soon 20 uninstalled family.txt || fail "uninstalling left: $(ls "$place")"
kept || fail "uninstalling took pictures or settings"
rm "$place/family.txt"
for rest in holiday.png ''; do
    does 0 "installing again" "$setup" /S
    does 0 "the erasing uninstaller" "$place/uninstall.exe" /S /ERASE
    soon 20 uninstalled '' && [ ! -e "$place" ] || fail "erasing left: $(ls "$place")"
    soon 5 family_has "$rest" || fail "erasing left: $(find "$vendor")"
    rm -f "$saved/holiday.png"
done
soon 5 test ! -e "$vendor" || fail "erasing left an empty folder"
