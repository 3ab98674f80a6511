#!/usr/bin/env bash
# Measures the library against the raw platform: sets up, builds, registers the library in a prefix of its own,
# measures on one core, and unregisters it. The table is shown and is in build/bench/bench.txt, the figures for
# programs in build/bench/bench.json. A figure that misses its aim is no failure; one that cannot be taken is.
#
# usage: scripts/bench.sh [--unthemed] [arguments of korvane_bench...]
#   --unthemed   without the theme that is on by default
#   --quick      few samples, to see that everything works
#   GROUP...     only these: texts, creation, dialogs, filling, activities, arranging, messages, rows, calls, size
#
# KORVANE_BENCH_CORE names the core; the last one that this process may use serves otherwise.

set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/.."
# shellcheck source=scripts/wine-env.sh
. scripts/wine-env.sh

prefix=bench
theme_active=1
arguments=()
results=build/bench
built=build/win32
registered=no

usage() {
    sed -n '/^# usage/,/^$/s/^# \{0,1\}//p' "$0"
}

while (($#)); do
    case $1 in
        --unthemed)
            prefix=bench-unthemed
            theme_active=0
            ;;
        --help | -h)
            usage
            exit 0
            ;;
        *) arguments+=("$1") ;;
    esac
    shift
done

die() {
    printf 'bench: %s\n' "$1" >&2
    exit 1
}

# Output goes to a file, never to a pipe of ours: what Wine leaves running would keep that open.
run() {
    local limit=$1 log=$2
    shift 2
    timeout "$limit" "$KORVANE_WINE" "$@" </dev/null >"$log" 2>&1
}

set_theme() {
    run 60 "$results/theme.log" reg add 'HKCU\Software\Microsoft\Windows\CurrentVersion\ThemeManager' \
        /v ThemeActive /t REG_SZ /d "$theme_active" /f
}

register() {
    registered=yes
    run 60 "$results/register.log" regsvr32 /s "$built/KorvaneDlg.dll"
}

unregister() {
    [[ $registered = yes ]] || return 0
    registered=no
    run 60 "$results/unregister.log" regsvr32 /s /u "$built/KorvaneDlg.dll"
}

# shellcheck disable=SC2317 # the trap calls it
finish() {
    unregister || printf 'bench: the library stays registered in %s\n' "$WINEPREFIX" >&2
    stop_all
}
trap finish EXIT

# Calls between cores cost more than what is measured. Priority keeps the rest of the machine out, where allowed.
pin() {
    keep_to_core "${KORVANE_BENCH_CORE:-}" || die "core ${KORVANE_BENCH_CORE:-} cannot be had"
    renice -n -10 -p $$ >/dev/null 2>&1 || true
}

# ---

mkdir -p "$results"
scripts/setup.sh --quiet
{
    cmake --preset win32 && cmake --build "$built" --target KorvaneDlg korvane_bench
} >"$results/build.log" 2>&1 || {
    tail -n 40 "$results/build.log" >&2
    die "it does not build"
}

start_display
pin
prepare_prefix win32 "$prefix"
set_theme || die "the theme cannot be set (see $results/theme.log)"
register || die "the library cannot be registered (see $results/register.log)"

status=0
run 900 "$results/bench.txt" "$built/korvane_bench.exe" --json "$results/bench.json" \
    ${arguments[@]+"${arguments[@]}"} || status=$?
cat "$results/bench.txt"
unregister || die "the library cannot be unregistered (see $results/unregister.log)"
exit "$status"
