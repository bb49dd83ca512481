#!/usr/bin/env python3
"""Checks the includes below src/ against the arrow table of ARCHITECTURE.md.

    check_arrows.py [ROOT]

Prints each breach, a line each, and ends with 1 if there is one. Breaches: an include of ours that the
table does not allow, a circle in the table or among the files, a folder missing on either side, a Qt
header outside the folders that the table marks with (Qt).
"""

import pathlib
import re
import sys

INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]')
ROW = re.compile(r"^(?P<folder>[\w.]+)\s*(?P<qt>\(Qt\))?\s*→\s*(?P<targets>.*)$")
QT_HEADER = re.compile(r"^(Q[A-Z]\w*|Qt\w+/\S+|q[a-z]+\.h)$")
GENERATED = re.compile(r"^ui_\w+\.h$|^\w+\.moc$|^moc_\w+\.cpp$")
SUFFIXES = {".h", ".cpp"}


def read_table(text):
    """The rows of the first fenced block that holds arrows: {folder: allowed folders}, {folders with Qt}."""
    for block in re.findall(r"^```\w*\n(.*?)^```", text, re.M | re.S):
        rows = [ROW.match(line) for line in block.splitlines() if "→" in line]
        if not rows:
            continue
        if None in rows:
            raise ValueError("the arrow table of ARCHITECTURE.md has a row that cannot be read")
        allowed = {}
        for row in rows:
            targets = row["targets"].split()
            allowed[row["folder"]] = set() if targets == ["nothing"] else set(targets)
        return allowed, {row["folder"] for row in rows if row["qt"]}
    raise ValueError("ARCHITECTURE.md has no arrow table")


def circle(graph):
    """One circle of the graph as a list that starts and ends with the same node; None without one."""
    done = set()
    for start in sorted(graph):
        path, stack = [], [(start, iter(sorted(graph.get(start, ()))))]
        while stack:
            node, rest = stack[-1]
            if len(path) < len(stack):
                path.append(node)
            for successor in rest:
                if successor in path:
                    return path[path.index(successor):] + [successor]
                if successor not in done:
                    stack.append((successor, iter(sorted(graph.get(successor, ())))))
                    break
            else:
                done.add(path.pop())
                stack.pop()
    return None


def includes_of(path):
    for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
        match = INCLUDE.match(line)
        if match:
            yield number, match[1], match[2]


def breaches(root):
    source = root / "src"
    try:
        allowed, with_qt = read_table((root / "ARCHITECTURE.md").read_text(encoding="utf-8"))
    except (OSError, ValueError) as error:
        return [str(error)]

    found = []
    parts = {entry.name for entry in source.iterdir() if entry.is_dir() or entry.suffix in SUFFIXES}
    found += [f"src/{name} is not in the arrow table" for name in sorted(parts - allowed.keys())]
    found += [f"the arrow table names {name}, which src/ has not" for name in sorted(allowed.keys() - parts)]
    for name, targets in sorted(allowed.items()):
        found += [f"the arrow of {name} points at {target}, which has no row" for target in sorted(targets - allowed.keys())]
    around = circle(allowed)
    if around:
        found.append("the arrow table goes round in a circle: " + " → ".join(around))

    files = {}
    for path in sorted(entry for entry in source.rglob("*") if entry.suffix in SUFFIXES):
        name = path.relative_to(source).as_posix()
        folder = name.split("/")[0]
        files[name] = set()
        for number, kind, header in includes_of(path):
            where = f"src/{name}:{number}: "
            target = header.split("/")[0]
            if QT_HEADER.match(header):
                if folder not in with_qt:
                    found.append(where + f"<{header}> is Qt's, which stays out of {folder}")
            elif kind == '"' and (source / header).is_file() and ".." not in header:
                files[name].add(header)
                if target != folder and target not in allowed.get(folder, set()):
                    found.append(where + f"{folder} may not include {header}")
            elif kind == '"' and not GENERATED.match(header):
                found.append(where + f'"{header}" is no file below src/; includes of ours start there')
            elif kind == "<" and target in parts:
                found.append(where + f"<{header}> is ours: write it in quotes")
    around = circle(files)
    if around:
        found.append("includes go round in a circle: " + " → ".join(around))
    return found


def main():
    root = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else pathlib.Path(__file__).resolve().parents[2]
    found = breaches(root)
    print("\n".join(found) if found else "Every include follows its arrow.")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
