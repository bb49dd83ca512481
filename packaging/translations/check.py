#!/usr/bin/env python3
"""Lists what is missing, unused and doubtful in the tables of translations.

    check.py [--root FOLDER] [LANGUAGE ...]     those languages, or all that have a table
    check.py [--root FOLDER] --template         an empty table: every text, and where it stands

A table is packaging/resources/<language>.lproj/Localizable.strings; its keys are the English texts of src/. A text is
doubtful when its translation is the English sentence itself, has other placeholders, another beginning or end, a
mnemonic less or more, one that another text of the same window has too, or when words that are offered side by side are
the same.
The exit status is 1 when something was listed. A language without a table has nothing to list.
"""

import argparse
import pathlib
import re
import sys

from collect import collect, mnemonic
from table import escaped, read_table

ROOT = pathlib.Path(__file__).resolve().parents[2]
PLACEHOLDER = re.compile(r"%%(?!\d(?!\$))|%(?:(\d+)\$)?(@|ld|d)|%(L?\d{1,2}|n)")
COLONS = (":", "：")
# By its form alone a clicked reminder is found again: the first ": " of each line stands before the name.
REMINDER = "Prescription: %@\r for patient: %@\r is due"
REMINDER_FORM = re.compile(r"(?:(?!: )[^\r])*: %(?:1\$)?@(?:(?!: )[^\r])*\r(?:(?!: )[^\r])*: %(?:2\$)?@[^\r]*(?:\r[^\r]*)*")


def placeholders(text):
    """Which arguments a text shows, however often."""
    shown, following = set(), 0
    for number, kind, other in PLACEHOLDER.findall(text):
        if other:
            shown.add(other)
        elif kind:
            following += not number
            shown.add(f"{number or following}{'@' if kind == '@' else 'd'}")
    return shown


def edges(text):
    """The blanks around a text; a colon or ellipsis at its end."""
    return (re.match(r"\s*", text)[0], re.search(r"\s*$", text)[0], ":" if text.rstrip().endswith(COLONS) else "",
            "…" if text.rstrip().endswith("…") else "")


def doubts_about(key, value):
    # A word may be the same in both languages, and a name in the code is.
    if key == value and len(re.findall(r"(?<!\S)\W*[^\W\d_]{2,}\W*(?!\S)", key)) > 1:
        yield "still in English"
    if placeholders(key) != placeholders(value):
        yield "other placeholders"
    before, after = edges(key), edges(value)
    if before[:2] != after[:2]:
        yield "other blanks around it"
    if before[2] != after[2]:
        yield "a colon less or more"
    if before[3] != after[3]:
        yield "an ellipsis less or more"
    if re.findall(r"[\r\t]", key) != re.findall(r"[\r\t]", value):
        yield "other line ends or tabs"
    if bool(mnemonic(key)) != bool(mnemonic(value)):
        yield "a mnemonic less or more"
    if key == REMINDER and not REMINDER_FORM.fullmatch(value):
        yield "a reminder in this form would not be found again"


def clashes(texts, entries):
    for window, keys in sorted(texts.windows.items()):
        seen = {}
        for key in keys:
            value = entries.get(key) or key
            letter = mnemonic(value)
            if letter and seen.setdefault(letter, value) != value:
                yield f"{window}: the mnemonic {letter} twice: {seen[letter]!r} and {value!r}"
    for words in texts.word_lists:
        seen = {}
        for word in words:
            shown = entries.get(word) or word
            if seen.setdefault(shown, word) != word:
                yield f"shown alike: {seen[shown]!r} and {word!r}"


def findings(texts, entries):
    """Three lists of lines."""
    def is_missing(key, text):
        return not entries.get(key) and (text.required or not all(entries.get(whole) for whole in text.whole))

    missing = [f"{key!r} ({text.places[0]})" for key, text in texts.found.items() if is_missing(key, text)]
    unused = [repr(key) for key in entries if key not in texts.found]
    doubtful = [f"{key!r} = {value!r}: {doubt}" for key, value in entries.items() if value
                for doubt in doubts_about(key, value)]
    return {"missing": missing, "unused": unused, "doubtful": doubtful + list(clashes(texts, entries))}


def template(texts):
    lines = []
    for key, text in sorted(texts.found.items(), key=lambda item: (item[1].places[0], item[0])):
        places = dict.fromkeys(re.sub(r":\d+$", "", place) for place in text.places)
        lines.append(f"/* {', '.join(places)}{'' if text.required else '; a piece of a sentence'} */")
        lines.append(f'"{escaped(key)}" = "";\n')
    return "\n".join(lines)


def main():
    parser = argparse.ArgumentParser(description="Checks the tables of translations.")
    parser.add_argument("--root", type=pathlib.Path, default=ROOT)
    parser.add_argument("--template", action="store_true")
    parser.add_argument("languages", nargs="*", metavar="LANGUAGE")
    options = parser.parse_args()
    texts = collect(options.root)
    if options.template:
        print(template(texts))
        return 0
    tables = {path.parent.stem: path
              for path in sorted(options.root.glob("packaging/resources/*.lproj/Localizable.strings"))}
    listed = 0
    for language in options.languages or tables:
        if language not in tables:
            print(f"{language}: no table")
            listed += 1
            continue
        entries, problems = read_table(tables[language])
        for kind, lines in ({"damaged": problems} | findings(texts, entries)).items():
            listed += len(lines)
            for line in lines:
                print(f"{language}: {kind}: {line}")
    print(f"{len(texts.found)} texts, {len(tables)} tables, {listed} findings")
    return 1 if listed else 0


if __name__ == "__main__":
    sys.exit(main())
