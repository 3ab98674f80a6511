#!/usr/bin/env bash
# Sets up, builds for 32 and 64 bits, checks and tests everything. The 32-bit tests, those of the product, come
# last. Details of each step are in build/logs.
#
# usage: scripts/test.sh [--quick] [--no-lint] [ctest arguments...]
#   --quick     the 32-bit build and its tests only
#   --no-lint   without formatting and static checks

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

# wine_failures PRESET LOG: the numbers of the tests in which Wine failed, and not what was tested.
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

# A run without any test is no success, unless a selection of tests was asked for that has none of 64 bits. Where Wine
# failed, tests are run once more.
run_tests() {
    local preset=$1 no_tests=$2 failures=build/$1/Testing/Temporary/LastTestsFailed.log log=$logs/ctest-$1.log
    prepare_prefix "$preset" || return
    if ctest --preset "$preset" -j 2 --timeout 120 --output-on-failure --no-tests="$no_tests" --output-log "$log" \
        ${ctest_arguments[@]+"${ctest_arguments[@]}"}; then
        return 0
    fi
    if [[ -s $failures && -z $(comm -23 <(cut -d: -f1 "$failures" | sort -u) <(wine_failures "$preset" "$log")) ]]; then
        echo "Wine failed in these; once more:"
        ctest --preset "$preset" --rerun-failed --timeout 120 --output-on-failure
        return
    fi
    return 1
}

test_win64() {
    local no_tests=error
    if [[ $win64_built = no ]]; then
        not_run "test win64" "no 64-bit build"
        return 0
    fi
    if ! have_wine64; then
        printf '%-16s no 64-bit Wine here: compiled only\n' "test win64"
        return 0
    fi
    ((${#ctest_arguments[@]} == 0)) || no_tests=ignore
    prepare "wine win64" prepare_prefix win64 || {
        not_run "test win64" "no 64-bit Wine prefix"
        return 0
    }
    if step "test win64" run_tests win64 "$no_tests"; then
        grep -E '^[0-9]+% tests passed' "$logs/test-win64.log" | sed 's/^/    /' || echo "    none selected"
    fi
}

test_win32() {
    if [[ $win32_built = no ]]; then
        not_run "test win32" "no 32-bit build"
        return 0
    fi
    prepare "wine win32" prepare_prefix win32 || {
        not_run "test win32" "no 32-bit Wine prefix"
        return 0
    }
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
fi

keep_to_core "" || true # slower, but no less true
prepare "display" start_display || exit 1
if [[ $quick = no ]]; then test_win64; fi
test_win32

if ((${#failed[@]})); then
    printf '\nfailed:\n'
    printf '  %s\n' "${failed[@]}"
    exit 1
fi
