#!/usr/bin/env bash
# The checks that need no run: formatting, clang as a second compiler, clang-tidy, shellcheck.
# A source that was clean is checked again only when it, a header it includes, or the configuration changed.
#
# usage: scripts/lint.sh [PATH-PREFIX...]    (only the C++ sources under these paths)

set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$root"

database=build/win32/compile_commands.json
lint=build/lint
jobs=$(nproc)
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

# Writes, for each of our sources in the build, the flags clang understands: a database for clang-tidy, one file
# of arguments per source for the compiler, and the list of sources.
translate_database() {
    local gcc_include
    gcc_include=$(dirname "$(i686-w64-mingw32-g++-posix -print-libgcc-file-name)")/include/c++
    /usr/bin/python3 - "$database" "$lint" "$gcc_include" <<'PYTHON'
import json, os, shlex, sys

database, lint, gcc_include = sys.argv[1:]
root = os.getcwd()
with_value = {"-D", "-U", "-I", "-isystem", "-iquote", "-include"}
joined = ("-D", "-U", "-I", "-std=", "-fno-rtti", "-fno-exceptions", "-fms-extensions", "-municode", "-msse")
library = ["-nostdinc++"]
for folder in (gcc_include, gcc_include + "/i686-w64-mingw32", gcc_include + "/backward"):
    library += ["-isystem", folder]


def own_sources():
    for folder, folders, files in os.walk(root):
        if folder == root:
            folders[:] = [name for name in folders if name != "build"]
        folders[:] = sorted(name for name in folders if name[0] != "." and name != "third_party")
        for name in files:
            if name.endswith((".cpp", ".c")):
                yield os.path.join(folder, name)


def understood(arguments):
    kept = []
    rest = iter(arguments)
    for argument in rest:
        if argument in with_value:
            kept += [argument, next(rest)]
        elif argument.startswith(joined):
            kept.append(argument)
    return kept


def response_file(arguments):
    return "".join('"%s"\n' % a.replace("\\", "\\\\").replace('"', '\\"') for a in arguments)


def write_if_changed(path, text):
    try:
        with open(path) as file:
            if file.read() == text:
                return
    except FileNotFoundError:
        pass
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "w") as file:
        file.write(text)


built = {}
with open(database) as file:
    for entry in json.load(file):
        path = os.path.normpath(os.path.join(entry["directory"], entry["file"]))
        built.setdefault(path, entry)

translated, names, unbuilt = [], [], []
for path in own_sources():
    name = os.path.relpath(path, root)
    entry = built.get(path)
    if entry is None:
        unbuilt.append(name)
        continue
    flags = ["--target=i686-w64-mingw32"] + (library if name.endswith(".cpp") else [])
    flags += understood(entry.get("arguments") or shlex.split(entry["command"])) + ["-Wall", "-Wextra", "-Wpedantic"]
    compiler = "clang++" if name.endswith(".cpp") else "clang"
    translated.append({"directory": entry["directory"], "file": path, "arguments": [compiler] + flags + ["-c", path]})
    write_if_changed(os.path.join(lint, "sources", name + ".rsp"), response_file(flags))
    names.append(name)

write_if_changed(os.path.join(lint, "compile_commands.json"), json.dumps(translated, indent=1))
write_if_changed(os.path.join(lint, "sources.txt"), "".join(name + "\n" for name in names))
write_if_changed(os.path.join(lint, "unbuilt.txt"), "".join(name + "\n" for name in unbuilt))
PYTHON
}

note_tools() {
    {
        clang++ --version
        clang-tidy --version
        dpkg-query -W mingw-w64-i686-dev g++-mingw-w64-i686-posix
    } >"$lint/tools.txt"
}

# A source is clean when the stamp of its last clean check still fits everything that went into that check.
is_clean() {
    sha256sum --check --status --strict "$lint/sources/$1.ok" 2>/dev/null
}

check_source() {
    local name=$1 base=$lint/sources/$1 compiler=clang++ also=
    [[ $name = *.cpp ]] || compiler=clang
    # In tests the static analyzer loses itself in the branches of the test macros, and takes most of the time.
    [[ $name != tests/* ]] || also="-clang-analyzer-*"
    rm -f "$base.ok" "$base.bad"
    "$compiler" "@$base.rsp" -Werror -ferror-limit=0 -fsyntax-only -fno-color-diagnostics -MD -MF "$base.d" "$name" \
        >"$base.log" 2>&1 || printf 'clang\n' >>"$base.bad"
    # Everything included is taken down before clang-tidy reads it, so that a change in between is not missed.
    {
        printf '%s\n' "$base.rsp" "$lint/tools.txt" .clang-tidy scripts/lint.sh
        sed -e 's/^[^:]*: *//' -e 's/ *\\$//' "$base.d" | tr ' ' '\n' | grep -vE '^(/usr/.*)?$'
    } | sort -u | xargs -d '\n' sha256sum >"$base.sums"
    clang-tidy --quiet -p "$lint" --header-filter="^$root/" --checks="$also" "$name" \
        >>"$base.log" 2>"$base.err" || {
        grep -vE '^[0-9]+ warnings? .*generated\.$' "$base.err" >>"$base.log" || true
        printf 'clang-tidy\n' >>"$base.bad"
    }
    [[ -e $base.bad ]] || mv "$base.sums" "$base.ok"
}

check_sources() {
    local what="clang and clang-tidy" name sources=() changed=() bad=()
    if [[ ! -f $database ]]; then
        fail "$what"
        echo "  $database is missing: build first (cmake --preset win32 && cmake --build build/win32)"
        return 0
    fi
    translate_database
    note_tools
    if [[ -s $lint/unbuilt.txt ]]; then
        fail "all sources built"
        sed 's/$/: is in no target of the build, so nothing checks it/; s/^/  /' "$lint/unbuilt.txt"
    fi
    while read -r name; do
        wanted "$name" || continue
        sources+=("$name")
        is_clean "$name" || changed+=("$name")
    done <"$lint/sources.txt"
    if ((${#sources[@]} == 0)); then
        fail "$what"
        echo "  no sources to check"
        return 0
    fi
    if ((${#changed[@]})); then
        export -f check_source
        export lint root
        # shellcheck disable=SC2016 # the inner shell expands it
        printf '%s\0' "${changed[@]}" | xargs -0 -n 1 -P "$jobs" bash -euo pipefail -c 'check_source "$1"' _
    fi
    for name in ${changed[@]+"${changed[@]}"}; do
        [[ -e $lint/sources/$name.ok ]] || bad+=("$name")
    done
    if ((${#bad[@]} == 0)); then
        outcome "$what" "ok (${#sources[@]} sources, ${#changed[@]} checked anew)"
        return 0
    fi
    fail "$what"
    printf '  %s of %s sources; details in %s/sources/*.log\n' "${#bad[@]}" "${#sources[@]}" "$lint"
    for name in "${bad[@]}"; do
        [[ -n $(findings "$name") ]] || printf '  %s: ended without a finding, see its log\n' "$name"
    done
    # A header's finding comes up in every source that includes it: once is enough.
    for name in "${bad[@]}"; do findings "$name"; done | sort -u
}

findings() {
    sed -nE -e '/(^|: )(fatal )?error: /!d' -e "s|^$root/||" -e 's/^/  /p' "$lint/sources/$1.log"
}

prefixes=("$@")
wanted() {
    local prefix
    ((${#prefixes[@]})) || return 0
    for prefix in "${prefixes[@]}"; do
        [[ $1 != "${prefix#./}"* ]] || return 0
    done
    return 1
}

mkdir -p "$lint"
check_format
check_scripts
check_sources
if ((${#failed[@]})); then
    printf 'lint: failed: %s\n' "$(IFS=,; echo "${failed[*]}")"
    exit 1
fi
