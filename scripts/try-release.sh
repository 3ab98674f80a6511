#!/usr/bin/env bash
# Tries what scripts/release.sh has made as its user would, in a new Wine prefix: builds each sample by the commands of
# samples/README.md and runs it, from the unpacked zips and, registered, from an installation. Both leave the registry and
# the folders as they were.
#
# usage: scripts/try-release.sh win32|win64

set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/.."
root=$PWD
export KORVANE_WINE_DIR=$root/build/try
# shellcheck source=scripts/wine-env.sh
. scripts/wine-env.sh

prefix=${1:?win32 or win64}
release=$root/build/release
case $prefix in
    win32) arch=x86 ;;
    win64) arch=x64 ;;
    *) exit 2 ;;
esac
if [[ $prefix = win64 ]] && ! have_wine64; then
    echo "no 64-bit Wine here: not tried"
    exit 0
fi

rm -rf "${KORVANE_WINE_DIR:?}/$prefix"
keep_to_core 0 || true
start_display
prepare_prefix "$prefix"
drive=$WINEPREFIX/drive_c
output=$KORVANE_WINE_DIR/output.txt

fail() {
    printf 'FAILED: %s\n' "$*"
    [[ ! -s $output ]] || sed 's/^/    /' "$output"
    exit 1
}

wine() {
    timeout "${limit:-120}" "$KORVANE_WINE" "$@" </dev/null
}

# Everything that registrations and installers write, and what else names the library. The prefix's own files hold it
# only after the server's end: the running server is asked.
registry() {
    local key
    for key in 'HKLM\Software\Classes' 'HKCU\Software\Classes' 'HKLM\Software\Microsoft\Windows\CurrentVersion\Uninstall' \
        'HKCU\Software\Microsoft\Windows\CurrentVersion\Uninstall'; do
        rm -f "$drive/export.reg"
        wine reg export "$key" 'C:\export.reg' /y >/dev/null 2>&1 || true
        [[ ! -e $drive/export.reg ]] || iconv -f UTF-16 -t UTF-8 "$drive/export.reg"
    done
    rm -f "$drive/export.reg"
}

files() {
    (cd "$drive" && find . -path ./windows/Temp -prune -o -path '*/Temp' -prune -o -print | sort)
}

remember() {
    # The platform's script host registers itself on first use.
    echo 'WScript.Echo 1' >"$drive/first.vbs"
    wine cscript //nologo 'C:\first.vbs' >/dev/null 2>&1 || fail "cscript"
    rm "$drive/first.vbs"
    # A new prefix lacks these folders of keys, which every user of Windows has.
    local key
    for key in Classes\\CLSID Classes\\Interface Classes\\TypeLib 'Microsoft\Windows\CurrentVersion\Uninstall'; do
        wine reg add "HKCU\\Software\\$key" /f >/dev/null 2>&1 || fail "reg"
    done
    registry >"$KORVANE_WINE_DIR/registry.txt"
    files >"$KORVANE_WINE_DIR/files.txt"
}

expect_as_before() {
    registry | diff "$KORVANE_WINE_DIR/registry.txt" - >"$output" || fail "$1: the registry is not as before"
    files | diff "$KORVANE_WINE_DIR/files.txt" - >"$output" || fail "$1: the folders are not as before"
    echo "$1: registry and folders as before"
}

winepath_of() {
    local path=C:${1#"$drive"}
    echo "${path//\//\\}"
}

say() {
    wine cscript //nologo "$1" >"$output" 2>&1 || fail "$1"
    grep -q "$2" "$output" || fail "$1: no \"$2\""
    tr -d '\r' <"$output"
}

change_registration() {
    local file
    for file in "$@"; do
        wine regsvr32 /s ${undo:+"$undo"} "$file" || fail "regsvr32 ${undo:-} $file"
    done
}

# --- from the zips

remember
cd "$drive"
for package in sdk demo; do
    cmake -E tar xf "$release"/KorvaneDlg-*-$package.zip
done
cd KorvaneDlg-*/
folder=$(basename "$PWD")

"$root/scripts/try-samples.sh" "$PWD" "$arch"

change_registration "$arch\\KorvaneDlg.dll" "$arch\\KorvaneData.dll"
say 'samples\Booking.vbs' '^booked: '
say 'samples\Group.js' '^added, renamed and deleted: '
undo=/u change_registration "$arch\\KorvaneDlg.dll" "$arch\\KorvaneData.dll"

mkdir tour
limit=900 wine "$arch/KorvaneHost.exe" --tour tour --db tour.sqlite >"$output" 2>&1 || fail "the tour"
tail -n 1 "$output"

cd "$drive"
rm -rf "${drive:?}/$folder"
expect_as_before "zips"

# --- installed

# The folder of the user has no blank: neither Wine nor the installer takes quotes around it.
for mode in AllUsers CurrentUser; do
    options=(/S "/$mode")
    place="$drive/Program Files/KorvaneDlg"
    if [[ $mode = CurrentUser ]]; then
        options+=('/D=C:\Korvane')
        place=$drive/Korvane
    elif [[ $prefix = win64 ]]; then
        place="$drive/Program Files (x86)/KorvaneDlg"
    fi
    wine "$release"/KorvaneDlg-*-setup.exe "${options[@]}" >"$output" 2>&1 || fail "the installer, /$mode"
    [[ -e $place/$arch/KorvaneDlg.dll && -e $place/Uninstall.exe ]] || fail "/$mode: nothing is installed"
    registry | grep -q KorvaneDlg.ctlEditGroups || fail "/$mode: nothing is registered"
    if [[ $mode = AllUsers ]]; then # Wine does not show scripts what is registered for a user
        cd "$drive"
        say "$(winepath_of "$place")"'\samples\Group.js' '^added, renamed and deleted: '
        rm sample.sqlite
    fi
    # It goes on in a copy of its own, in the temporary folder.
    wine "$place/Uninstall.exe" /S "/$mode" >"$output" 2>&1 || fail "the uninstaller, /$mode"
    for ((tries = 0; tries < 150; ++tries)); do
        [[ -e $place ]] || break
        sleep 0.2
    done
    if [[ -e $place ]]; then
        find "$place" >"$output"
        fail "/$mode: files are left"
    fi
    expect_as_before "installer, /$mode"
done
