#!/usr/bin/env python3
"""Writes docs/texts.md: every text of the string table, and which of them the dialogs and errors of the library use.

    list-texts.py            writes it
    list-texts.py --check    fails where what stands there is not what would be written

A source names the id of a text in one of these ways: in quotation marks in a layout, as a number of the dialogs' areas,
or as the code of an error. That nothing is missing is tested too: the dialogs ask for no other text.
"""

import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
TABLE = ROOT / "resources/strings/Strings.rc"
PAGE = ROOT / "docs/texts.md"
USERS = {
    "framework": "every dialog",
    "groups": "groups",
    "activities": "activities",
    "masterdata": "resources and types",
    "messages": "messages",
}
# What stands in the framework, and on some dialogs only.
SHARED = {"framework/control/OrderButtons.cpp": ["messages", "masterdata"]}
NAMED = re.compile(r'L"(\d{4,5})"|\b(2[0-9]{4})\b|(?:\berror\w*\s*=\s*|RaiseAppError\()(\d{4})\b')
# Where a source names the first text of several and adds to it: a kind of recurrence has a caption and the four words
# around two numbers, and what the list editors say of their items has the same place in either area.
COMPUTED = {
    25010: [25010 + 10 * kind + word for kind in range(5) for word in range(5)],
    22000: [22001, 22002, 22003, 22050, 22051, 22096],
    23000: [23001, 23002, 23003, 23050, 23051, 23096],
}

HEAD = """# Texts

Made from the string table by `scripts/list-texts.py`. A host that gives the dialogs its own `Resources` answers
`GetString` for the ids of the first table; those of the second are the host's own business. A `\\n` is a line break, and
blanks at either end are part of a text. `&` stands before the access key: keys must not clash within a dialog.
`LocaleID` is the number in text 0.
"""


def texts_of_table():
    entry = re.compile(r'^\s*(\d+)\s+"((?:[^"]|"")*)"\s*$')
    found = {}
    for line in TABLE.read_text(encoding="utf-8").splitlines():
        if match := entry.match(line):
            found[int(match[1])] = match[2].replace('""', '"')
    return found


def uses(texts):
    found = {number: set() for number in texts}
    found[0].add(USERS["framework"])
    for folder, user in USERS.items():
        for source in sorted((ROOT / folder).glob("**/*.[ch]*")):
            shared = SHARED.get(source.relative_to(ROOT).as_posix())
            users = [USERS[each] for each in shared] if shared else [user]
            code = re.sub(r"//.*", "", source.read_text(encoding="utf-8"))
            for match in NAMED.finditer(code):
                number = int(next(group for group in match.groups() if group))
                for each in [number, *COMPUTED.get(number, [])]:
                    if each not in texts:
                        sys.exit(f"list-texts: {source.relative_to(ROOT)} names {each}, which is no text")
                    found[each].update(users)
    return found


def rows(texts, users):
    for number, text in texts.items():
        shown = text.replace("|", "\\|")
        who = f" {', '.join(sorted(users[number]))} |" if users[number] else ""
        yield f"| {number} | `{shown}` |{who}"


def page():
    texts = texts_of_table()
    users = uses(texts)
    used = {number: text for number, text in texts.items() if users[number]}
    others = {number: text for number, text in texts.items() if not users[number]}
    return "\n".join(
        [
            HEAD,
            f"## Used by the dialogs and errors ({len(used)})\n",
            "| Id | Text | Used by |",
            "|---|---|---|",
            *rows(used, users),
            f"\n## For the host's own use ({len(others)})\n",
            "| Id | Text |",
            "|---|---|",
            *rows(others, users),
            "",
        ]
    )


if __name__ == "__main__":
    if sys.argv[1:] == ["--check"]:
        if not PAGE.exists() or PAGE.read_text(encoding="utf-8") != page():
            sys.exit("docs/texts.md is not what the sources say: scripts/list-texts.py puts it right")
    elif sys.argv[1:]:
        sys.exit(__doc__)
    else:
        PAGE.write_text(page(), encoding="utf-8")
