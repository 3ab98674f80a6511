#!/usr/bin/env bash
# Builds the sample host and opens it on this display. Without a display, or with --tour, it runs a tour on a
# virtual one instead: keystrokes and mouse, each step checked, and a picture of every dialog in build/demo. What was
# done in each step, what the data layer was asked for and what then stood in the database is in build/demo/tour.txt.
#
# usage: scripts/demo.sh [--tour] [--verbose] [--dpi N] [--db FILE] [--user ACCOUNT]
#   --tour           the tour also where there is a display
#   --verbose        the tour prints all of build/demo/tour.txt, instead of a line for each step
#   --dpi N          the tour on a screen of that resolution, in place of 96; its pictures are in build/demo-N
#   --db FILE        the database, which is made on first use (build/demo/demo.sqlite unless given). The tour makes
#                    new ones, one for each chapter; the one of the chapter on groups may be given
#   --user ACCOUNT   who works with it: admin (as without the option), andrea, ben or employee in a new database with
#                    its sample; the tour works as admin

set -euo pipefail

called_from=$PWD
cd "$(dirname "${BASH_SOURCE[0]}")/.."

demo=$PWD/build/demo
dpi=96
log=build/logs/demo.log
tour=no
database=
options=()
verbose=()

usage() {
    sed -n '/^# usage/,/^$/s/^# \{0,1\}//p' "$0"
}

# windows_path PATH: as the programs under Wine call it.
windows_path() {
    local path
    path=$(cd "$called_from" && realpath -m -- "$1")
    printf 'Z:%s\n' "${path//\//\\}"
}

build() {
    [[ -e build/win32/build.ninja ]] || cmake --preset win32 || return
    cmake --build build/win32 -j 2 --target KorvaneDlg KorvaneData KorvaneHost
}

build_or_die() {
    mkdir -p "${log%/*}"
    build >"$log" 2>&1 && return 0
    tail -n 40 "$log" >&2
    echo "demo: the build failed (see $log)" >&2
    exit 1
}

open_host() {
    export KORVANE_DISPLAY=$DISPLAY
    start_display
    prepare_prefix win32 desktop
    # Here is a window manager, other than on the displays of the tests.
    in_prefix "$KORVANE_WINE" reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /t REG_SZ /d Y /f
    "$KORVANE_WINE" build/win32/KorvaneHost.exe --db "$(windows_path "${database:-$demo/demo.sqlite}")" \
        ${options[@]+"${options[@]}"} </dev/null
}

# Through a pipe: on a terminal of its own, Wine would draw a console.
run_tour() {
    rm -f "$demo"/*.png
    start_display
    prepare_prefix win32 "${demo##*/}"
    in_prefix "$KORVANE_WINE" reg add 'HKCU\Control Panel\Desktop' /v LogPixels /t REG_DWORD /d "$dpi" /f
    [[ -z $database ]] || options+=(--db "$(windows_path "$database")")
    timeout 900 "$KORVANE_WINE" build/win32/KorvaneHost.exe --tour "$(windows_path "$demo")" \
        ${verbose[@]+"${verbose[@]}"} ${options[@]+"${options[@]}"} </dev/null 2>>"$log" | cat
}

while (($#)); do
    case $1 in
        --tour) tour=yes ;;
        --verbose) verbose=("$1") ;;
        --db | --user | --dpi)
            if (($# < 2)); then
                usage >&2
                exit 2
            fi
            case $1 in
                --db) database=$2 ;;
                --dpi) dpi=$2 ;;
                *) options+=("$1" "$2") ;;
            esac
            shift
            ;;
        --help | -h)
            usage
            exit 0
            ;;
        *)
            usage >&2
            exit 2
            ;;
    esac
    shift
done

scripts/setup.sh
build_or_die
[[ $dpi = 96 ]] || demo+=-$dpi
mkdir -p "$demo"
# shellcheck source=scripts/wine-env.sh
. scripts/wine-env.sh

if [[ $tour = no && -n ${DISPLAY:-} ]]; then
    open_host
else
    run_tour
    echo "pictures and all details (tour.txt): $demo"
fi
