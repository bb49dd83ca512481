#!/usr/bin/env python3
"""Reads and writes property lists with Python's own library, for tests of ours.

    plistlib_oracle.py write LITERALS FOLDER    from the Nth line, an expression, N.binary and N.xml
    plistlib_oracle.py compare LITERALS FOLDER  each N.ours in the folder holds what the Nth line says
    plistlib_oracle.py rewrite FILE BINARY XML  the same content written anew in both formats
"""

import datetime
import pathlib
import plistlib
import sys


def literals(path):
    names = {"datetime": datetime.datetime, "UID": plistlib.UID}
    lines = pathlib.Path(path).read_text(encoding="utf-8").splitlines()
    return [eval(line, {}, names) for line in lines]  # the test's own text


def described(value):
    """A text that tells 1 from 1.0 and from True, but not one order of keys from another."""
    if isinstance(value, dict):
        return "{" + ", ".join(f"{key!r}: {described(value[key])}" for key in sorted(value)) + "}"
    if isinstance(value, list):
        return "[" + ", ".join(map(described, value)) + "]"
    return repr(value)


def write(path, folder):
    for number, value in enumerate(literals(path)):
        (folder / f"{number}.binary").write_bytes(plistlib.dumps(value, fmt=plistlib.FMT_BINARY, sort_keys=False))
        if not isinstance(value, plistlib.UID):  # for which XML has no form
            (folder / f"{number}.xml").write_bytes(plistlib.dumps(value, fmt=plistlib.FMT_XML, sort_keys=False))
    return 0


def compare(path, folder):
    differences = 0
    for number, expected in enumerate(literals(path)):
        found = plistlib.loads((folder / f"{number}.ours").read_bytes(), fmt=plistlib.FMT_BINARY)
        if described(found) != described(expected):
            print(f"{number}: {described(found)} instead of {described(expected)}")
            differences += 1
    return min(differences, 1)


def rewrite(source, binary, xml):
    value = plistlib.loads(pathlib.Path(source).read_bytes())
    pathlib.Path(binary).write_bytes(plistlib.dumps(value, fmt=plistlib.FMT_BINARY, sort_keys=False))
    pathlib.Path(xml).write_bytes(plistlib.dumps(value, fmt=plistlib.FMT_XML, sort_keys=False))
    return 0


def main():
    command, *arguments = sys.argv[1:]
    if command == "rewrite":
        return rewrite(*arguments)
    literal_file, folder = arguments
    return {"write": write, "compare": compare}[command](literal_file, pathlib.Path(folder))


if __name__ == "__main__":
    sys.exit(main())
