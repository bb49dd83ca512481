#!/usr/bin/env python3
"""Checks what every source file of ours must keep to.

    check_files.py [ROOT]

No C++ file is longer than 600 lines, and a TODO says why it stands there: "TODO: reason".
"""

import pathlib
import re
import sys

FOLDERS = ("src", "tests", "fuzz", "bench")
LONGEST = 600
NOTE = re.compile(r"\b(TODO|FIXME)\b(?P<rest>.*)")
REASON = re.compile(r"^: \S+ \S+")


def breaches(root):
    found = []
    for folder in FOLDERS:
        for path in sorted(entry for entry in (root / folder).rglob("*") if entry.suffix in {".h", ".cpp"}):
            name = path.relative_to(root).as_posix()
            lines = path.read_text(encoding="utf-8").splitlines()
            if len(lines) > LONGEST:
                found.append(f"{name}: {len(lines)} lines; split it before {LONGEST}")
            for number, line in enumerate(lines, 1):
                note = NOTE.search(line)
                if note and not (note[1] == "TODO" and REASON.match(note["rest"])):
                    found.append(f'{name}:{number}: write "TODO: reason", or do it')
    return found


def main():
    root = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else pathlib.Path(__file__).resolve().parents[2]
    found = breaches(root)
    print("\n".join(found) if found else "Every file keeps to its size.")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
