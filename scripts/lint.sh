#!/usr/bin/env bash
# The checks that need no run: formatting, shellcheck, the list of texts, and clang as a second compiler with clang-tidy and the static
# analyzer. A source that was clean is checked again only when it, a header it includes, or the configuration changed.
#
# usage: scripts/lint.sh [PATH-PREFIX...]    (only the C++ sources under these paths)

set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$root"

lint=build/lint
failed=()

outcome() {
    printf '%-28s %s\n' "$1" "$2"
}

fail() {
    outcome "$1" "FAILED"
    failed+=("$1")
}

check_format() {
    if scripts/format.sh --check >"$lint/format.log" 2>&1; then
        outcome "format" "ok"
    else
        fail "format"
        grep -oE '^[^:]+\.(cpp|h):[0-9]+' "$lint/format.log" | cut -d: -f1 | sort | uniq -c |
            awk '{ print "  " $2 ": " $1 " places" }'
        grep -vE '\.(cpp|h):[0-9]+:|^ *\^|^$' "$lint/format.log" | grep -E '^(error|clang-format)|No such' || true
        echo "  scripts/format.sh puts it right"
    fi
}

check_scripts() {
    # SC2317 takes functions that only a trap calls for unreachable.
    if shellcheck -x -e SC2317 scripts/*.sh .ci/run >"$lint/shellcheck.log" 2>&1; then
        outcome "shellcheck" "ok"
    else
        fail "shellcheck"
        cat "$lint/shellcheck.log"
    fi
}

check_texts() {
    if scripts/list-texts.py --check >"$lint/texts.log" 2>&1; then
        outcome "texts" "ok"
    else
        fail "texts"
        cat "$lint/texts.log"
    fi
}

check_sources() {
    /usr/bin/python3 scripts/lint-sources.py "$@" || failed+=("C++ sources")
}

mkdir -p "$lint"
check_format
check_scripts
check_texts
check_sources "$@"
if ((${#failed[@]})); then
    printf 'lint: failed: %s\n' "$(IFS=,; echo "${failed[*]}")"
    exit 1
fi
