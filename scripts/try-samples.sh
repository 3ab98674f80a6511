#!/usr/bin/env bash
# Builds the samples in C and C++ by the commands of samples/README.md, as their reader would, and uses them with real keys:
# each of their events has to come. On the display and in the Wine prefix that are prepared (scripts/wine-env.sh).
#
# usage: scripts/try-samples.sh FOLDER x86|x64     FOLDER holds samples, include, and x86 or x64

set -euo pipefail

cd "${1:?the folder}"
arch=${2:?x86 or x64}
output=$PWD/output.txt
trap 'rm -f "$output"' EXIT

fail() {
    printf 'FAILED: %s\n' "$*"
    sed 's/^/    /' "$output"
    exit 1
}

# until_says TEXT: waits for a line of the running sample.
until_says() {
    local tries
    for ((tries = 0; tries < 150; ++tries)); do
        if grep -q "^$1" "$output"; then return 0; fi
        sleep 0.2
    done
    fail "the sample does not say \"$1\""
}

# close_by_button WINDOW PROCESS: until it ends.
close_by_button() {
    local tries width
    width=$(xdotool getwindowgeometry --shell "$1" | sed -n 's/^WIDTH=//p')
    for ((tries = 0; tries < 10; ++tries)); do
        xdotool mousemove --window "$1" $((width - 14)) 14 click 1
        sleep 1
        if ! kill -0 "$2" 2>/dev/null; then return 0; fi
    done
    fail "the window does not close"
}

# use TITLE PROGRAM ARGUMENTS... -- KEY LINE KEY LINE...: starts a sample and presses keys, each of which makes it say a line;
# without keys, closes its window.
use() {
    local title=$1 command=() sample window
    shift
    while [[ $1 != -- ]]; do
        command+=("$1")
        shift
    done
    shift
    : >"$output"
    (exec timeout 120 "$KORVANE_WINE" "${command[@]}") </dev/null >"$output" 2>&1 &
    sample=$!
    window=$(timeout 60 xdotool search --sync --onlyvisible --name "$title") || fail "${command[*]}: no window"
    (($#)) || close_by_button "${window%%$'\n'*}" "$sample"
    while (($#)); do
        # A key that comes before the dialog has the focus is lost: once more, then.
        local tries keys=()
        for ((tries = 0; tries < 10; ++tries)); do
            read -ra keys <<<"$1"
            xdotool key "${keys[@]}"
            sleep 1
            if grep -q "^$2" "$output"; then break; fi
        done
        until_says "$2"
        shift 2
    done
    wait "$sample" || fail "${command[*]}: exit code $?"
    echo "${command[*]}: $(tr -d '\r' <"$output" | cut -d: -f1 | xargs)"
}

# In place of 32 bits and x86, which the commands name. Whoever reads a sample is to meet no warning.
compiler=i686
[[ $arch = x86 ]] || compiler=x86_64
while read -r line; do
    line=${line//i686/$compiler}
    line=${line//x86\//$arch/}
    echo "$line"
    bash -c "$line -Wall -Wextra" >"$output" 2>&1 || fail "it does not build"
    [[ ! -s $output ]] || fail "it builds with warnings"
done < <(sed -n 's/^    \(i686-w64-mingw32-.*\)/\1/p' samples/README.md)

use Activity "$arch/AtlHost.exe" -- alt+r Resize Return Submit
use Activity "$arch/AtlHost.exe" employee -- Return Error Escape Done
use Group "$arch/SiteHost.exe" -- "v a n s Return" Submit
use Group "$arch/SiteHost.exe" --
