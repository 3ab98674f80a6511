#!/usr/bin/env bash
# Sets up, builds for 32 and 64 bits, checks and tests everything. The tests of both word sizes run at the same time,
# each on a display, a prefix and a core of its own. Details of each step are in build/logs.
#
# usage: [GTEST_FILTER=CASES] scripts/test.sh [--quick] [--no-lint] [ctest arguments...]
#   --quick     the 32-bit build and its tests only
#   --no-lint   without formatting and static checks
#   -R REGEX    (ctest's) only these test programs; GTEST_FILTER selects cases of theirs:
#               GTEST_FILTER='LeakTests.*' scripts/test.sh --quick -R korvane_leak_tests

set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/.."
# shellcheck source=scripts/wine-env.sh
. scripts/wine-env.sh

quick=no
lint=yes
ctest_arguments=()
logs=build/logs
failed=()

usage() {
    sed -n '/^# usage/,/^$/s/^# \{0,1\}//p' "$0"
}

while (($#)); do
    case $1 in
        --quick) quick=yes ;;
        --no-lint) lint=no ;;
        --help | -h)
            usage
            exit 0
            ;;
        *) ctest_arguments+=("$1") ;;
    esac
    shift
done

# step NAME COMMAND...: one line for its outcome; the end of its log where it failed.
step() {
    local name=$1 log=$logs/${1// /-}.log start=$SECONDS
    shift
    printf '%-16s ' "$name"
    if "$@" >"$log" 2>&1; then
        printf 'ok (%d s)\n' $((SECONDS - start))
        return 0
    fi
    printf 'FAILED (%d s), end of %s:\n' $((SECONDS - start)) "$log"
    tail -n 60 "$log" | sed 's/^/    /'
    failed+=("$name")
    return 1
}

# prepare NAME COMMAND...: a step of this shell itself, which speaks for itself.
prepare() {
    local name=$1 start=$SECONDS
    shift
    printf '%-16s ' "$name"
    if "$@"; then
        printf 'ok (%d s)\n' $((SECONDS - start))
        return 0
    fi
    failed+=("$name")
    return 1
}

not_run() {
    printf '%-16s not run: %s\n' "$1" "$2"
    failed+=("$1 (not run)")
}

build() {
    step "configure $1" cmake --preset "$1" && step "build $1" cmake --build "build/$1" -j 2
}

# The library does not need what the demo needs: SQLite's sources.
configure_alone() {
    local folder=build/alone
    rm -rf "$folder"
    cmake --preset win32 -B "$folder" -DKORVANE_SQLITE_DIR="$PWD/$folder/none" &&
        grep -q 'build KorvaneDlg.dll' "$folder/build.ninja" && ! grep -i sqlite "$folder/build.ninja"
}

# wine_failures PRESET LOG: the numbers of the programs in which Wine failed, and not what was tested.
# A test program first tells what it runs: one that has said nothing was not started. One that a signal of the system
# ends was ended by a fault in Wine itself, now and then when it exits while a thread of Wine's is just starting:
# faults of the program's own, its end included, are Wine's to handle, and end it with an exit code.
wine_failures() {
    {
        awk '/^[0-9]+\/[0-9]+ Testing: / { number = $1; sub(/\/.*/, "", number) }
             /^Output:$/ { reading = 1; lines = 0; getline; next }
             /^<end of output>$/ { reading = 0 }
             reading { ++lines }
             /^Test Failed\.$/ && lines == 0 { print number }' "build/$1/Testing/Temporary/LastTest.log"
        sed -nE 's/.* Test +#([0-9]+): .*\*\*\*Exception: SegFault.*/\1/p' "$2"
    } | sort -u
}

# Of a failed program's cases, only those that did not pass are worth reading.
without_passed_cases() {
    awk 'function tell() { if (held != "") print held; held = ""; fflush() }
         /^\[ RUN  / { tell(); held = $0; next }
         /^\[       OK / && held != "" { held = ""; next }
         /^\[  FAILED  \]|^ *[0-9]+\/[0-9]+ Test +#|^ +Start +[0-9]+: / { tell(); print; fflush(); next }
         held != "" { held = held "\n" $0; next }
         !/^\[-+\]/ { print }
         END { tell() }'
}

# run_ctest PRESET ARGUMENTS...: as a part of a pipeline, which it takes over in order to end with the shell.
run_ctest() {
    local preset=$1
    shift
    exec setpriv --pdeathsig TERM ctest --preset "$preset" --timeout 120 "$@" </dev/null
}

# not_passed LOG: the cases that failed in a run of whole programs, and those in the midst of which one ended.
not_passed() {
    tr -d '\r' <"$1" | awk '/^\[ RUN  / { if (running != "") print running; running = $4 }
        /^\[       OK / { running = "" }
        /^\[  FAILED  \] [^ ]+ \([0-9]+ ms\)/ { print $4; running = "" }
        END { if (running != "") print running }' | sed 's/,$//' | sort -u
}

# report_cases PRESET LOG PROGRAM...: each case of programs that failed, by itself, to tell what fails only after others
# and what only alone. A report, no second chance.
report_cases() {
    local preset=$1 whole=$2 program name scratch=$logs/case-$1 outcome end=$((SECONDS + 600))
    local cases=() bad=()
    shift 2
    mapfile -t bad < <(not_passed "$whole")
    for program; do
        [[ -e build/$preset/$program.exe ]] || continue
        (cd "build/$preset" && timeout 60 "$KORVANE_WINE" "./$program.exe" --gtest_list_tests) \
            </dev/null >"$scratch.list" 2>/dev/null || true
        mapfile -t cases < <(tr -d '\r' <"$scratch.list" | awk '/^[^ ]/ { suite = $1 } /^  / { print suite $1 }')
        printf '\n%s, its %s cases one by one:\n' "$program" "${#cases[@]}"
        for name in ${cases[@]+"${cases[@]}"}; do
            if ((SECONDS > end)); then
                echo "  no time for the others, from $name on"
                return 0
            fi
            outcome=passes
            GTEST_FILTER=$name timeout 130 ctest --preset "$preset" -R "^$program\$" </dev/null >"$scratch.log" 2>&1 ||
                outcome=$([[ $? = 124 ]] && echo "does not end" || echo fails)
            if [[ " ${bad[*]} " = *" $name "* ]]; then
                printf '  %s: did not pass with the others, %s alone\n' "$name" "$outcome"
            elif [[ $outcome != passes ]]; then
                printf '  %s: passed with the others, %s alone\n' "$name" "$outcome"
                without_passed_cases <"$scratch.log" | sed 's/^/    /'
            fi
        done
    done
}

# run_tests PRESET NO_TESTS: on the current prefix. A run without any test is no success, unless a selection was asked
# for that has none of this word size. Where Wine failed, programs are run once more.
run_tests() {
    local preset=$1 no_tests=$2 last=build/$1/Testing/Temporary log=$logs/ctest-$1.log bad=()
    if run_ctest "$preset" -j 2 --output-on-failure --no-tests="$no_tests" --output-log "$log" \
        ${ctest_arguments[@]+"${ctest_arguments[@]}"} | without_passed_cases; then
        count_cases "$last/LastTest.log"
        return
    fi
    mapfile -t bad < <(sort "$last/LastTestsFailed.log")
    if ((${#bad[@]})) && [[ -z $(comm -23 <(printf '%s\n' "${bad[@]%%:*}" | sort -u) <(wine_failures "$preset" "$log")) ]]; then
        echo "Wine failed in these; once more:"
        run_ctest "$preset" --rerun-failed --output-on-failure | without_passed_cases
        return
    fi
    report_cases "$preset" "$log" "${bad[@]#*:}"
    return 1
}

# Programs of which no case was selected have tested nothing.
count_cases() {
    tr -d '\r' <"$1" | awk '/^\[=+\] [0-9]+ tests? from .* ran\./ { ++programs; cases += $2 }
        END { if (programs) printf "%d cases in %d programs\n", cases, programs; exit programs && !cases }'
}

# On a display, a core and a prefix of its own, so that it can run beside the other word size.
run_win64() {
    local no_tests=error
    ((${#ctest_arguments[@]} == 0)) || no_tests=ignore
    trap stop_all EXIT
    keep_to_core "$(allowed_cores | tail -n 2 | head -n 1)" || true
    start_display && prepare_prefix win64 && run_tests win64 "$no_tests"
}

win64_run=
start_win64() {
    if [[ $win64_built = no ]]; then
        not_run "test win64" "no 64-bit build"
    elif ! have_wine64; then
        printf '%-16s no 64-bit Wine here: compiled only\n' "test win64"
    else
        step "test win64" run_win64 >"$logs/outcome-win64.log" &
        win64_run=$!
        # A display that is given has one focus for both.
        [[ -z ${KORVANE_DISPLAY:-} ]] || wait "$win64_run" || true
    fi
}

finish_win64() {
    [[ -n $win64_run ]] || return 0
    wait "$win64_run" || failed+=("test win64")
    win64_run=
    cat "$logs/outcome-win64.log"
    grep -E '^[0-9]+% tests passed|^[0-9]+ cases in' "$logs/test-win64.log" | sed 's/^/    /' || echo "    none selected"
}

# shellcheck disable=SC2317 # the trap calls it
finish() {
    if [[ -n $win64_run ]]; then
        kill "$win64_run" 2>/dev/null || true
        wait "$win64_run" 2>/dev/null || true
    fi
    stop_all
}
trap finish EXIT

# What a developer of hosts is given, without the packing: scripts/release.sh does all of it.
try_samples() {
    local folder=build/sdk component
    rm -rf "$folder"
    for component in sdk demo; do
        cmake --install build/win32 --component "$component" --prefix "$folder" || return
    done
    scripts/try-samples.sh "$folder" x86
}

test_win32() {
    if [[ $win32_built = no ]]; then
        not_run "test win32" "no 32-bit build"
        return 0
    fi
    keep_to_core || true # slower, but no less true
    if ! prepare "display" start_display || ! prepare "wine win32" prepare_prefix win32; then
        not_run "test win32" "no 32-bit Wine prefix"
        return 0
    fi
    ((${#ctest_arguments[@]})) || step "samples" try_samples || true
    printf '%-16s\n' "test win32"
    if run_tests win32 error 2>&1 | tee "$logs/test-win32.log"; then return 0; fi
    failed+=("test win32")
}

# ---

scripts/setup.sh
mkdir -p "$logs"

win32_built=no
win64_built=no
if build win32; then win32_built=yes; fi
if [[ $quick = no ]]; then
    if [[ $lint = no ]]; then
        printf '%-16s left out (--no-lint)\n' "lint"
    elif [[ $win32_built = no ]]; then
        not_run "lint" "it needs the 32-bit build"
    else
        step "lint" scripts/lint.sh || true
    fi
    if build win64; then win64_built=yes; fi
    step "library alone" configure_alone || true
fi

if [[ $quick = no ]]; then start_win64; fi
test_win32
finish_win64

if ((${#failed[@]})); then
    printf '\nfailed:\n'
    printf '  %s\n' "${failed[@]}"
    exit 1
fi
