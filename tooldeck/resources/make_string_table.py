"""Turns strings.txt ("id<TAB>text" lines, C escapes) and the dialog templates (dialogs/*.dlg, in the
host's dialog template form, each starting with its DIALOG statement) into the resource library's C++ tables."""

import re
import sys

ESCAPE = re.compile(r'\\(?:[ntr"\\]|x[0-9A-Fa-f]{2})')


def check_escapes(text, where):
    rest = ESCAPE.sub("", text)
    if "\\" in rest:
        sys.exit(f"{where}: unknown escape in text")
    if '"' in rest:
        sys.exit(f'{where}: write " as \\"')


def read_table(path):
    rows = {}
    with open(path, encoding="utf-8") as source:
        for number, line in enumerate(source, 1):
            line = line.rstrip("\n")
            if not line.strip() or line.startswith("#"):
                continue
            where = f"{path}:{number}"
            key, tab, text = line.partition("\t")
            if not tab or not key.isdigit():
                sys.exit(f"{where}: expected id<TAB>text")
            if int(key) in rows:
                sys.exit(f"{where}: id {key} given twice")
            check_escapes(text, where)
            rows[int(key)] = text
    return rows


def read_dialogs(paths):
    dialogs = {}
    for path in paths:
        with open(path, encoding="utf-8") as source:
            text = source.read()
        first = next((line.split() for line in text.splitlines() if line.strip() and not line.lstrip().startswith("#")), [])
        if len(first) < 2 or first[0] != "DIALOG" or not first[1].isdigit():
            sys.exit(f"{path}: a template starts with DIALOG <id> \"<caption>\"")
        if int(first[1]) in dialogs:
            sys.exit(f"{path}: dialog {first[1]} given twice")
        if ")qvtd\"" in text:
            sys.exit(f"{path}: holds the text's own end marker")
        dialogs[int(first[1])] = text
    return dialogs


def main():
    if len(sys.argv) < 3:
        sys.exit("usage: make_string_table.py strings.txt output.cpp [dialog.dlg ...]")
    rows = read_table(sys.argv[1])
    dialogs = read_dialogs(sys.argv[3:])
    lines = [
        "// Made from strings.txt by make_string_table.py; edit that file instead.",
        '#include "qvad/win32/resource_library.h"',
        "",
        "namespace {",
        "const QvResourceString kStrings[] = {",
    ]
    lines += [f'    {{{key}u, "{text}"}},' for key, text in sorted(rows.items())]
    lines += [
        "};",
        "} // namespace",
        "",
        'extern "C" __attribute__((visibility("default"))) const QvResourceString* qvResourceStrings(unsigned* count) {',
        "    if (count) *count = sizeof kStrings / sizeof kStrings[0];",
        "    return kStrings;",
        "}",
        "",
    ]
    if dialogs:
        lines += ["namespace {", "const QvResourceDialog kDialogs[] = {"]
        lines += [f'    {{{key}u, R"qvtd({text})qvtd"}},' for key, text in sorted(dialogs.items())]
        lines += [
            "};",
            "} // namespace",
            "",
            'extern "C" __attribute__((visibility("default"))) const QvResourceDialog* qvResourceDialogs(unsigned* count) {',
            "    if (count) *count = sizeof kDialogs / sizeof kDialogs[0];",
            "    return kDialogs;",
            "}",
            "",
        ]
    with open(sys.argv[2], "w", encoding="utf-8") as output:
        output.write("\n".join(lines))


main()
