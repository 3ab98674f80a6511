#!/usr/bin/env bash
# What needs thousands of rounds to show itself, in both word sizes at the same time: dialogs that are opened and closed
# again and again, a long run of the random link groups, and the demo's tour beside four busy loops. A tour mostly waits
# until its screen is at rest, so several of them go on side by side. Stops at the first failure and keeps what it left
# in build/soak.
#
# usage: scripts/soak.sh [--rounds N] [--tours N] [--at-once N] [win32 | win64]
#   --rounds N   N times the rounds of the tests (20 unless given)
#   --tours N    N tours (200 unless given); with one of the two options, only that
#   --at-once N  N tours side by side in each word size (4 unless given)
#   win32|win64  only this word size

set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/.."
# shellcheck source=scripts/wine-env.sh
. scripts/wine-env.sh

rounds=
tours=
at_once=4
presets=()
results=$PWD/build/soak
stopped=$results/stopped
soaks=()
loops=()

usage() {
    sed -n '/^# usage/,/^$/s/^# \{0,1\}//p' "$0"
}

while (($#)); do
    case $1 in
        --rounds | --tours | --at-once)
            if [[ ! ${2:-} =~ ^[1-9][0-9]*$ ]]; then
                usage >&2
                exit 2
            fi
            case $1 in
                --rounds) rounds=$2 ;;
                --tours) tours=$2 ;;
                *) at_once=$2 ;;
            esac
            shift
            ;;
        win32 | win64) presets+=("$1") ;;
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
if [[ -z $rounds$tours ]]; then
    rounds=20
    tours=200
fi
((${#presets[@]})) || presets=(win64 win32)

say() {
    printf '%s %-6s %s\n' "$(date +%T)" "$1" "$2"
}

# run LOG PROGRAM ARGUMENTS...: a program that ends with this shell.
run() {
    local log=$1
    shift
    setpriv --pdeathsig TERM timeout 7200 "$KORVANE_WINE" "$@" </dev/null >"$log" 2>&1
}

fail() {
    : >"$stopped"
    say "$1" "FAILED: $2; end of $3:"
    tail -n 40 "$3" | sed 's/^/    /'
    exit 1
}

soak_tests() {
    local preset=$1 program log
    cd "$korvane_root/build/$preset"
    # Strings are to be freed at once: the platform's cache of them would hide a leak.
    export KORVANE_SOAK=$rounds OANOCACHE=1
    for program in korvane_leak_tests korvane_activity_command_tests; do
        log=$results/$program-$preset.log
        run "$log" "./$program.exe" --gtest_filter='*Leak*:*PropertyTests.*' || fail "$preset" "$program" "$log"
        grep -qE '^\[  PASSED  \] [1-9]' "$log" || fail "$preset" "$program ran no case" "$log"
        say "$preset" "$program: $rounds times the rounds, ok"
        [[ ! -e $stopped ]] || return 0
    done
}

# How many tours of a word size were begun, or ended, so far: several count at the same time.
count() {
    local file=$1 number=0
    {
        flock 9
        [[ ! -s $file ]] || read -r number <"$file"
        echo $((number + 1)) | tee "$file"
    } 9>>"$file.lock"
}

# soak_tours PRESET PLACE: one tour after the other in a folder of their own, until enough were begun anywhere.
soak_tours() {
    local preset=$1 folder=$results/$1/$2 log=$results/tour-$1-$2.log number
    mkdir -p "$folder"
    cd "$folder"
    while [[ ! -e $stopped ]] && number=$(count "$results/$preset/begun") && ((number <= tours)); do
        run "$log" "$korvane_root/build/$preset/KorvaneHost.exe" --tour . || fail "$preset" "tour $number" "$log"
        number=$(count "$results/$preset/passed")
        if ((number % 10 == 0 || number == tours)); then say "$preset" "$number of $tours tours, ok"; fi
    done
}

# soak CORE NAME WHAT ARGUMENTS...: on a display, a prefix and a core of its own.
soak() {
    local core=$1 name=$2
    shift 2
    trap stop_all EXIT
    keep_to_core "$core" || true
    start_display
    prepare_prefix "${name%%-*}" "soak-$name"
    "$@"
}

# begin CORE NAME WHAT ARGUMENTS...
begin() {
    soak "$@" &
    soaks+=($!)
}

# Ends with 1 if one of them failed.
await() {
    local job status=0
    for job in "${soaks[@]}"; do wait "$job" || status=1; done
    soaks=()
    return "$status"
}

# shellcheck disable=SC2317 # the trap calls it
finish() {
    local job
    for job in ${soaks[@]+"${soaks[@]}"} ${loops[@]+"${loops[@]}"}; do kill "$job" 2>/dev/null || true; done
    wait
}
trap finish EXIT

# ---

scripts/setup.sh --quiet
mkdir -p "$results"
rm -f "$stopped"
for preset in "${presets[@]}"; do
    {
        cmake --preset "$preset" && cmake --build "build/$preset" -j 2
    } >"$results/build-$preset.log" 2>&1 || fail "$preset" "the build" "$results/build-$preset.log"
done

mapfile -t cores < <(allowed_cores)
if [[ -n $rounds ]]; then
    for preset in "${presets[@]}"; do
        begin "${cores[${#soaks[@]} % ${#cores[@]}]}" "$preset" soak_tests "$preset"
    done
    await
fi
if [[ -n $tours ]]; then
    for _ in 1 2 3 4; do
        (trap - EXIT; exec setpriv --pdeathsig TERM bash -c 'while :; do :; done') &
        loops+=($!)
    done
    for preset in "${presets[@]}"; do
        rm -f "$results/$preset"/{begun,passed}
    done
    for ((place = 1; place <= at_once; ++place)); do
        for preset in "${presets[@]}"; do
            begin "${cores[${#soaks[@]} % ${#cores[@]}]}" "$preset-$place" soak_tours "$preset" "$place"
        done
    done
    await
fi
