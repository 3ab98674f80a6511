#!/usr/bin/env bash
# Formats our C++ sources in place; with --check only says which ones are not formatted.
#
# usage: scripts/format.sh [--check]

set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/.."

own_sources() {
    find . \( -path ./build -o -path './.*' -o -name third_party \) -prune -o \
        -type f \( -name '*.cpp' -o -name '*.h' \) -print0 | sort -z
}

mapfile -d '' -t sources < <(own_sources)
if ((${#sources[@]} == 0)); then
    echo "format: no C++ sources found" >&2
    exit 1
fi

case ${1:-} in
    '') clang-format-19 -i -- "${sources[@]}" ;;
    --check) clang-format-19 --dry-run -Werror -- "${sources[@]}" ;;
    *)
        echo "usage: scripts/format.sh [--check]" >&2
        exit 2
        ;;
esac
