#!/usr/bin/env python3
"""The program's texts in other languages.

    texts.py --rc FILE     a translation as the string table of a resource script, with the product's version
    texts.py --check       every translation against the program's own texts; names each row that is wrong

A translation is a file like app/base/strings.txt, without the rows of KEPT: those are names that the program looks
up, or texts that are the same everywhere. A row that a translation lacks shows in English.
"""
import re
import sys
from pathlib import Path

HERE = Path(__file__).resolve().parent
OWN = HERE.parent / "app" / "base" / "strings.txt"
ROW = re.compile(r'(\d+) "(.*)"')

# Longer ones would be cut: the program reads a library's texts into 512 characters, with the terminator.
LONGEST = 511


def numbers(text):
    """"1-3 7" as {1, 2, 3, 7}."""
    found = set()
    for part in text.split():
        first, _, last = part.partition("-")
        found.update(range(int(first), int(last or first) + 1))
    return found


KEPT = numbers(
    "138 154 180 183 194 224 242 305-306 332-333 520 "  # a separator, rows without use, a full stop
    "110 285-304 307 309-316 326-331 344-345 349-353 "  # names of settings, of folders, of the product
    "360-364 368-370 377-378 380-385 390 404 533 547-548")

# What is seen together: no letter may be underlined twice. The menu bar, its menus, then the dialogs.
TOGETHER = [numbers(group) for group in (
    "101 108 113 121 373 392 127", "102 561 103 133 104", "226 227", "109 354", "109 355", "114-120 610 661", "114-120 610 662", "122-125 325 615",
    "374-376", "379 393 396 394", "128-130", "265 231 442", "265 442 692 696", "470 580 471 454 472 473", "139 489 490 265 442", "498 499",
    "419 420 441 265 231 442", "561 564 499", "393 453-455 442 499", "216 217", "228 231 250 251", "250 251 499 701-704",
    "109 354 705", "109 355 705", "561 102 103 705 355 133",
    "561 102 103 705 354 133")]


def rows(path):
    """Number -> text; raises ValueError for a line that is no row."""
    found = {}
    for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
        if line.startswith("#") or not line:
            continue
        match = ROW.fullmatch(line)
        if not match or int(match[1]) in found:
            raise ValueError(f"{path.name}:{number}: not a row, or a second one of its number: {line}")
        found[int(match[1])] = match[2]
    return found


def resource_script(texts):
    """Backslashes and quotes as the resource compiler reads them, and no L before a text: it would be taken byte by byte."""
    quoted = {key: text.replace("\\", "\\\\").replace('"', '""') for key, text in texts.items()}
    lines = [f'    {key} "{text}"' for key, text in sorted(quoted.items())]
    version = ['#define TS_NAME "TS_RES"', '#define TS_FILE "TS_RES.dll"', "#define TS_TYPE VFT_DLL",
               '#include "automation/Version.rc"']
    return "\n".join(["#pragma code_page(65001)", *version, "LANGUAGE 0, 0", "STRINGTABLE", "BEGIN", *lines, "END", ""])


def mnemonics(text):
    """The letters behind a single "&"."""
    return re.findall(r"&(.)", text.replace("&&", "")) if "&" in text else []


def faults(own, translated):
    """What is wrong with a translation: (number, words)."""
    for key in sorted(own.keys() - KEPT - translated.keys()):
        yield key, f"is missing: {own[key]}"
    for key, text in sorted(translated.items()):
        if key not in own:
            yield key, "is no text of the program"
            continue
        if key in KEPT:
            yield key, "is looked up by the program and must not be translated"
        if len(text.encode("utf-16-le")) // 2 > LONGEST:
            yield key, f"is longer than {LONGEST} characters"
        if len(mnemonics(text)) != len(mnemonics(own[key])):
            yield key, f'has another number of "&" than "{own[key]}"'
        for piece in ("%", "%1", "%2", "%3", "\\r", "\\n", "\\t", "|", "...", 5 * " "):
            if text.count(piece) != own[key].count(piece):
                yield key, f'lost or gained "{piece}": {own[key]}'
        for edge in (0, -1):
            if (text[edge:][:1] == " ") != (own[key][edge:][:1] == " ") and text:
                yield key, "lost or gained the blank at an end, by which it is joined to another"
        for group in TOGETHER:
            twins = [other for other in group & translated.keys() if other < key
                     and set(mnemonics(translated[other].lower())) & set(mnemonics(text.lower()))]
            if key in group and twins:
                yield key, f"underlines a letter that {twins[0]} has, beside which it is shown"
        if not text:
            yield key, "is empty, and would show in English"


def check():
    own = rows(OWN)
    failed = False
    for path in sorted(HERE.glob("??.txt")):
        for key, words in faults(own, rows(path)):
            print(f"{path.name}: {key} {words}")
            failed = True
    return 1 if failed else 0


def main(arguments):
    if arguments[:1] == ["--check"]:
        return check()
    if arguments[:1] == ["--rc"] and len(arguments) == 2:
        sys.stdout.reconfigure(encoding="utf-8")
        print(resource_script(rows(Path(arguments[1]))))
        return 0
    print(__doc__, file=sys.stderr)
    return 2


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
