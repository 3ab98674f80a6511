#!/usr/bin/env bash
# What needs thousands of rounds to show itself, in both word sizes at the same time: dialogs that are opened and closed
# again and again, a long run of the random link groups, and the demo's tour beside four busy loops. Stops at the first
# failure and keeps what it left in build/soak.
#
# usage: scripts/soak.sh [--rounds N] [--tours N] [win32 | win64]
#   --rounds N   N times the rounds of the tests (20 unless given)
#   --tours N    N tours (200 unless given); with one of the two options, only that
#   win32|win64  only this word size

set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/.."
# shellcheck source=scripts/wine-env.sh
. scripts/wine-env.sh

rounds=
tours=
presets=()
results=$PWD/build/soak
stopped=$results/stopped
started=()

usage() {
    sed -n '/^# usage/,/^$/s/^# \{0,1\}//p' "$0"
}

while (($#)); do
    case $1 in
        --rounds | --tours)
            if [[ ! ${2:-} =~ ^[1-9][0-9]*$ ]]; then
                usage >&2
                exit 2
            fi
            if [[ $1 = --rounds ]]; then rounds=$2; else tours=$2; fi
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

soak_tours() {
    local preset=$1 number log
    mkdir -p "$results/$preset"
    cd "$results/$preset"
    for ((number = 1; number <= tours; ++number)); do
        [[ ! -e $stopped ]] || break
        log=$results/tour-$preset.log
        run "$log" "$korvane_root/build/$preset/KorvaneHost.exe" --tour . || fail "$preset" "tour $number" "$log"
        if ((number % 10 == 0 || number == tours)); then say "$preset" "$number of $tours tours, ok"; fi
    done
}

# On a display, a prefix and a core of its own.
soak() {
    local preset=$1 core=$2
    trap stop_all EXIT
    keep_to_core "$core" || true
    start_display
    prepare_prefix "$preset" "soak-$preset"
    [[ -z $rounds ]] || soak_tests "$preset"
    [[ -z $tours || -e $stopped ]] || soak_tours "$preset"
}

# shellcheck disable=SC2317 # the trap calls it
finish() {
    local job
    for job in ${started[@]+"${started[@]}"}; do kill "$job" 2>/dev/null || true; done
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
soaks=()
for preset in "${presets[@]}"; do
    soak "$preset" "${cores[${#soaks[@]} % ${#cores[@]}]}" &
    soaks+=($!)
    started+=($!)
done
if [[ -n $tours ]]; then
    for _ in 1 2 3 4; do
        (trap - EXIT; exec setpriv --pdeathsig TERM bash -c 'while :; do :; done') &
        started+=($!)
    done
fi

status=0
for job in "${soaks[@]}"; do wait "$job" || status=1; done
exit "$status"
