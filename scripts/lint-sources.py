"""clang-tidy over our C++ sources, which reports clang's own warnings and the static analyzer's findings too.

Reading the headers of Windows and of the test framework takes most of the time. So sources that are compiled with the
same flags are joined to one text, are read as one, and the findings are told at their places in the sources. A source
that was clean is checked again only when it, a header it includes, or the configuration changed.

usage: scripts/lint-sources.py [PATH-PREFIX...]    (only the sources under these paths)
"""

import hashlib
import json
import os
import re
import shlex
import subprocess
import sys
from concurrent.futures import ThreadPoolExecutor
from itertools import groupby

ROOT = os.getcwd()
DATABASE = "build/win32/compile_commands.json"
LINT = "build/lint"
UNITS = os.path.join(ROOT, LINT, "units")
SEEDS = "scripts/lint-seeds.txt"
CLEAN = os.path.join(LINT, "clean.json")
# One release on every system: another one finds other things, and formats otherwise.
CLANG = "clang-19"
CLANGXX = "clang++-19"
TIDY = "clang-tidy-19"
# What a compiler keeps in memory: the analyzer and the matchers grow with it faster than linearly.
LINES_OF_UNIT = 3500
# In tests the static analyzer loses itself in the branches of the test macros, and takes most of the time.
CHECKS = {True: "-clang-analyzer-*", False: ""}
# In a joined text these would see one source's words in another one: line_findings does it by itself.
JOINED = ",-readability-duplicate-include"

failed = []


def outcome(what, result):
    print(f"{what:<28} {result}", flush=True)


def fail(what):
    outcome(what, "FAILED")
    failed.append(what)


def read(path):
    with open(path, encoding="utf-8") as file:
        return file.read()


def digest(path, known={}):
    if path not in known:
        with open(path, "rb") as file:
            known[path] = hashlib.sha256(file.read()).hexdigest()
    return known[path]


# --- what is there


def own_files(endings):
    for folder, folders, files in os.walk("."):
        if folder == ".":
            # Samples are built as their readers build them, from a release (scripts/try-release.sh).
            folders[:] = [name for name in folders if name not in ("build", "samples")]
        folders[:] = sorted(name for name in folders if name[0] != "." and name != "third_party")
        for name in sorted(files):
            if name.endswith(endings):
                yield os.path.normpath(os.path.join(folder, name))


def translated(arguments, cpp):
    """Flags that clang understands. Each source is to include what it uses: no precompiled header."""
    kept = ["--target=i686-w64-mingw32"]
    if cpp:
        kept += library_flags()
    joined = ("-D", "-U", "-std=", "-fno-rtti", "-fno-exceptions", "-fms-extensions", "-municode", "-msse")
    rest = iter(arguments)
    for argument in rest:
        if argument in ("-D", "-U", "-I", "-isystem", "-iquote", "-include"):
            value = next(rest)
            if not (argument == "-include" and "cmake_pch" in value):
                kept += [argument, value]
        elif argument.startswith("-I"):
            kept += ["-I", argument[2:]]
        elif argument.startswith(joined) and not argument.endswith("_EXPORTS"):
            kept.append(argument)
    # What is outdated is told by the compiler, whose own library uses some of it.
    return tuple(kept + ["-Wall", "-Wextra", "-Wpedantic", "-Wno-deprecated-declarations"])


def library_flags(known=[]):
    if not known:
        compiler = "i686-w64-mingw32-g++-posix"
        libgcc = subprocess.run([compiler, "-print-libgcc-file-name"], capture_output=True, text=True, check=True)
        include = os.path.join(os.path.dirname(libgcc.stdout.strip()), "include/c++")
        known.append("-nostdinc++")
        for folder in (include, include + "/i686-w64-mingw32", include + "/backward"):
            known.extend(["-isystem", folder])
    return known


def tools():
    text = ""
    for command in ([TIDY, "--version"], ["dpkg-query", "-W", "mingw-w64-i686-dev", "g++-mingw-w64-i686-posix"]):
        text += subprocess.run(command, capture_output=True, text=True, check=True).stdout
    return text + "".join(digest(path) for path in (".clang-tidy", "scripts/lint-sources.py"))


class Source:
    def __init__(self, name, flags):
        self.name = name
        self.flags = flags
        self.text = read(name)
        if not self.text.endswith("\n"):
            self.text += "\n"

    @property
    def is_test(self):
        return self.name.startswith("tests/")

    @property
    def kind(self):
        """What sources of one text have in common: not the folders of headers, which no two share a name in."""
        folder = os.path.dirname(self.name) if self.is_test else ""
        return (folder, os.path.splitext(self.name)[1], tuple(flag for flag in self.flags if flag[:2] == "-D"))

    def stamp(self, headers, configuration):
        parts = [configuration, *self.flags, digest(self.name)]
        return hashlib.sha256("\n".join(parts + [digest(header) for header in headers]).encode()).hexdigest()


# --- what can stand in one text


def names_of(text):
    """What a source has for itself, and no other one in its text may have too: more than enough, but not all."""
    text = re.sub(r'//[^\n]*|/\*.*?\*/|R"\((?:.|\n)*?\)"', " ", text, flags=re.S)
    text = re.sub(r'"(?:\\.|[^"\\\n])*"|\'(?:\\.|[^\'\\\n])+\'', '""', text)
    names = set(re.findall(r"^\s*#\s*define\s+(\w+)", text, re.M))
    names |= {"_".join(test) for test in re.findall(r"^TEST(?:_F|_P)?\((\w+),\s*(\w+)\)", text, re.M)}
    names |= set(re.findall(r"^(?:int|BOOL)\s+(?:WINAPI\s+)?(w?main|wWinMain|WinMain)\(", text, re.M))
    for start in re.finditer(r"\bnamespace\s*\{", text):
        depth, level = 1, []
        for token in re.finditer(r"[{}()]|[^{}()]+", text[start.end() :]):
            word = token.group()
            if word in "{(":
                level.append(word if depth == 1 else "")
                depth += 1
            elif word in "})":
                depth -= 1
                if depth == 0:
                    break
                level.append(word if depth > 1 or word == ")" else "};" if depth == 1 else "")
            elif depth == 1:
                level.append(word)
        for statement in re.split(r"[;]", re.sub(r"template\s*<[^{;]*?>(?=\s*\w)", "", "".join(level))):
            kind = re.search(r"\b(?:class|struct|enum(?:\s+class)?|union|using|concept)\s+(\w+)\b(?!::)", statement)
            word = kind or re.search(r"(\w+)\s*(?:[({\[=]|$)", statement.strip())
            if word and not word.group(1).isupper():  # else a macro of the tests
                names.add(word.group(1))
    return names


def units_of(sources):
    """Joins sources of one kind, each to the first text that has room and none of its names."""
    units = []
    for _, alike in groupby(sorted(sources, key=lambda source: (source.kind, source.name)), lambda source: source.kind):
        open_units = []
        for source in alike:
            names, lines = names_of(source.text), source.text.count("\n")
            for unit in open_units:
                if not names & unit[1] and unit[2] + lines <= LINES_OF_UNIT:
                    unit[0].append(source)
                    unit[1] |= names
                    unit[2] += lines
                    break
            else:
                open_units.append([[source], names, lines])
        units += open_units
    units.sort(key=lambda unit: -unit[2])
    return [Unit(unit[0]) for unit in units]


class Unit:
    """Sources that are checked as one text."""

    def __init__(self, sources):
        self.sources = sources
        # Named after all of its sources, so that a text never takes another one's place.
        self.name = hashlib.sha256("\n".join(source.name for source in sources).encode()).hexdigest()[:12]
        self.flags = self.joined_flags()
        self.path = os.path.join(UNITS, self.name + os.path.splitext(sources[0].name)[1])
        self.log = ""
        self.findings = []
        self.ended_well = False

    def joined_flags(self):
        flags = list(self.sources[0].flags)
        folders = set(zip(flags, flags[1:]))
        for source in self.sources[1:]:
            for pair in zip(source.flags, source.flags[1:]):
                if pair[0] in ("-I", "-isystem") and pair not in folders:
                    folders.add(pair)
                    flags += pair
        return flags

    def prepare(self):
        text, self.starts = "", []
        for source in self.sources:
            self.starts.append((text.count("\n"), source.name))
            text += source.text
        with open(self.path, "w", encoding="utf-8") as file:
            file.write(text)

    def headers(self):
        command = [CLANGXX, *self.flags, "-M", "-MF", "-", self.path]
        if self.path.endswith(".c"):
            command[0] = CLANG
        told = subprocess.run(command, capture_output=True, text=True, cwd=os.path.dirname(DATABASE)).stdout
        words = told.replace("\\\n", " ").split()[1:]
        folder = os.path.join(ROOT, os.path.dirname(DATABASE))
        paths = {os.path.normpath(os.path.join(folder, word)) for word in words}
        return sorted(path for path in paths if not path.startswith("/usr/") and path != self.path)

    def check(self):
        command = [TIDY, "--quiet", f"--header-filter=^{re.escape(ROOT)}/"]
        command += [f"--checks={CHECKS[self.sources[0].is_test]}{JOINED}", self.path, "--", *self.flags]
        run = subprocess.run(command, capture_output=True, text=True, cwd=os.path.dirname(DATABASE))
        errors = [line for line in run.stderr.splitlines() if not re.match(r"\d+ warnings?.* (generated|treated)", line)]
        self.log = self.translate(run.stdout) + "\n".join(errors)
        with open(self.path + ".log", "w", encoding="utf-8") as file:
            file.write(self.log)
        pattern = r"^([^:\n]+):(\d+):\d+: (?:fatal )?error: .*$|^(?:fatal )?error: .*$"
        self.findings = [match.group() for match in re.finditer(pattern, self.log, re.M)]
        self.ended_well = run.returncode == 0 and not self.findings
        return self

    def translate(self, text):
        def place(match):
            line = int(match.group(1))
            start, name = max(entry for entry in self.starts if entry[0] < line)
            return f"{name}:{line - start}:"

        return re.sub(rf"{re.escape(self.path)}:(\d+):", place, text).replace(ROOT + "/", "")

    def clashes(self):
        """Whether it does not compile, which may come from its sources standing together."""
        return len(self.sources) > 1 and any("[clang-diagnostic-error]" in finding for finding in self.findings)


def checked(units, done):
    """Checks units, those that clash in halves of them, and tells each outcome to `done`. Returns how many clashed."""

    def check(unit):
        unit.prepare()
        headers = unit.headers()
        # Taken down before clang-tidy reads them, so that a change in between is not missed.
        for header in headers:
            digest(header)
        return unit.check(), headers

    os.makedirs(UNITS, exist_ok=True)
    clashes = 0
    with ThreadPoolExecutor(len(os.sched_getaffinity(0))) as pool:
        while units:
            halves = []
            for unit, headers in pool.map(check, units):
                if unit.clashes():
                    clashes += 1
                    middle = len(unit.sources) // 2
                    halves += [Unit(unit.sources[:middle]), Unit(unit.sources[middle:])]
                else:
                    done(unit, headers)
            units = halves
    return clashes


# --- what a joined text cannot tell


def line_findings(name, text):
    findings, included = [], set()
    depth = 0
    for number, line in enumerate(text.splitlines(), 1):
        directive = re.match(r"\s*#\s*(\w+)\s*([<\"][^>\"]+[>\"])?", line)
        if directive:
            word = directive.group(1)
            depth += word.startswith("if") - (word == "endif")
            if word == "include" and depth == 0:
                if directive.group(2) in included:
                    findings.append(f"{name}:{number}:1: error: duplicate include [readability-duplicate-include]")
                included.add(directive.group(2))
        using = re.match(r"\s*using\s+(?:\w+::)+(\w+);", line)
        if using and name.endswith(".cpp") and len(re.findall(rf"\b{using.group(1)}\b", code_of(text))) < 2:
            findings.append(f"{name}:{number}:1: error: {using.group(1)} is unused [misc-unused-using-decls]")
    return findings


def code_of(text):
    return re.sub(r"//[^\n]*", "", text)


def check_lines(wanted):
    findings = []
    for name in own_files((".cpp", ".h")):
        if wanted(name):
            findings += line_findings(name, read(name))
    if findings:
        fail("includes and usings")
        print("\n".join("  " + finding for finding in findings))
    else:
        outcome("includes and usings", "ok")


# --- whether it would notice


def check_seeds(flags):
    """Faults of each kind, the second of two joined texts: each is to be told at its line."""
    text = read(SEEDS)
    before, faults = text.split("//--- faults.cpp\n")
    sources = []
    for is_test in (False, True):
        pair = []
        for name, part in (("before.cpp", before), ("faults.cpp", faults)):
            source = Source.__new__(Source)
            source.name, source.flags, source.text = ("tests/" if is_test else "") + name, flags, part
            pair.append(source)
        sources.append(Unit(pair))
    missed = []

    def compare(unit, _):
        name = unit.sources[1].name
        told = unit.findings + line_findings(name, faults)
        for number, line in enumerate(faults.splitlines(), 1):
            for check in re.findall(r"//! (\S+)", line):
                if unit.sources[1].is_test and check.startswith("clang-analyzer"):
                    continue
                if not any(finding.startswith(f"{name}:{number}:") and check in finding for finding in told):
                    missed.append(f"{name}:{number}: {check} was not told")

    checked(sources, compare)
    count = faults.count("//! ")
    if missed or not count:
        fail("seeded faults")
        print("\n".join("  " + line for line in missed))
    else:
        outcome("seeded faults", f"ok ({count} noticed)")


# ---


def check_sources(wanted):
    what = "clang-tidy"
    if not os.path.exists(DATABASE):
        fail(what)
        print(f"  {DATABASE} is missing: build first (cmake --preset win32 && cmake --build build/win32)")
        return
    built = {}
    for entry in json.loads(read(DATABASE)):
        path = os.path.relpath(os.path.join(entry["directory"], entry["file"]), ROOT)
        built.setdefault(path, entry.get("arguments") or shlex.split(entry["command"]))
    sources = []
    for name in own_files((".cpp", ".c")):
        if name not in built:
            fail("all sources built")
            print(f"  {name}: is in no target of the build, so nothing checks it")
        elif wanted(name):
            sources.append(Source(name, translated(built[name], name.endswith(".cpp"))))
    if not sources:
        fail(what)
        print("  no sources to check")
        return
    check_seeds(translated(["-std=c++20"], True))

    configuration = tools()
    clean = json.loads(read(CLEAN)) if os.path.exists(CLEAN) else {}
    changed = []
    for source in sources:
        headers, stamp = clean.get(source.name, ([], ""))
        if not all(map(os.path.exists, headers)) or source.stamp(headers, configuration) != stamp:
            changed.append(source)
    bad = []

    def done(unit, headers):
        if not unit.ended_well:
            bad.append(unit)
            return
        for source in unit.sources:
            clean[source.name] = (headers, source.stamp(headers, configuration))
        with open(CLEAN + ".new", "w", encoding="utf-8") as file:
            json.dump(clean, file)
        os.replace(CLEAN + ".new", CLEAN)

    units = units_of(changed)
    count, clashes = len(units), checked(units, done)
    if not bad:
        told = f"ok ({len(sources)} sources, {len(changed)} checked anew in {count} texts"
        outcome(what, told + (f", {clashes} of which clashed and were halved)" if clashes else ")"))
        return
    fail(what)
    for unit in bad:
        if not unit.findings:
            print(f"  {unit.path}: ended without a finding, see {unit.path}.log")
    # A header's finding comes up in every text that includes it: once is enough.
    print("\n".join(sorted({"  " + finding for unit in bad for finding in unit.findings})))


def main():
    prefixes = [os.path.normpath(prefix) for prefix in sys.argv[1:]]

    def wanted(name):
        return not prefixes or name.startswith(tuple(prefixes))

    os.makedirs(LINT, exist_ok=True)
    check_lines(wanted)
    check_sources(wanted)
    return 1 if failed else 0


sys.exit(main())
