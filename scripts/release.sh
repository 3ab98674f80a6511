#!/usr/bin/env bash
# Builds what is released, for 32 and 64 bits, into build/release: a zip for developers of hosts (sdk), the demo, ready to
# run, in another one, and an installer of both. Then tries them in new Wine prefixes: each sample is built and run from
# the unpacked zips and from an installation, and after the uninstallation registry and folder are as before.
#
# usage: scripts/release.sh [--quick] [--no-test] [--twice]
#   --quick     for 32 bits only, with the trial: not to be released
#   --no-test   without the trial
#   --twice     packs a second time from builds made anew, and compares

set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/.."
root=$PWD
release=$root/build/release

quick=no
try=yes
twice=no
while (($#)); do
    case $1 in
        --quick) quick=yes ;;
        --no-test) try=no ;;
        --twice) twice=yes ;;
        *)
            sed -n '/^# usage/,/^$/s/^# \{0,1\}//p' "$0"
            [[ $1 = --help || $1 = -h ]] && exit 0
            exit 2
            ;;
    esac
    shift
done

scripts/setup.sh --quiet

# What is packed has the time of the commit.
SOURCE_DATE_EPOCH=$(git log -1 --format=%ct)
export SOURCE_DATE_EPOCH TZ=UTC
umask 022

presets=(release-win32)
[[ $quick = yes ]] || presets+=(release-win64)
KORVANE_RELEASE_PRESETS=$(IFS=';' && echo "${presets[*]}")
export KORVANE_RELEASE_PRESETS

build() {
    local preset
    for preset in "${presets[@]}"; do
        cmake --preset "$preset"
        cmake --build "build/$preset" -j 2 --target KorvaneDlg KorvaneHost
    done
}

pack() {
    local package
    rm -rf "$release"
    mkdir -p "$release"
    for package in sdk demo installer; do
        cpack --config "build/release-win32/package/$package.cmake"
    done
    rm -rf "$release/_CPack_Packages"
}

step() {
    local name=$1 start=$SECONDS log=$root/build/logs/release-${1// /-}.log
    shift
    printf '%-24s ' "$name"
    if "$@" >"$log" 2>&1; then
        printf 'ok (%d s)\n' $((SECONDS - start))
        return 0
    fi
    printf 'FAILED, end of %s:\n' "$log"
    tail -n 40 "$log" | sed 's/^/    /'
    exit 1
}

compare() {
    (cd "$release" && sha256sum -- *) >"$root/build/logs/first.sha256"
    rm -rf "${presets[@]/#/build/}"
    build
    pack
    (cd "$release" && sha256sum --check "$root/build/logs/first.sha256")
}

mkdir -p build/logs
step "build" build
step "pack" pack
if [[ $twice = yes ]]; then step "the same bytes" compare; fi
if [[ $try = yes ]]; then
    step "trial win32" scripts/try-release.sh win32
    if [[ $quick = no ]]; then step "trial win64" scripts/try-release.sh win64; fi
fi
ls -l "$release"
