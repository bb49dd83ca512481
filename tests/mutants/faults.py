"""Small faults that could be planted in a C++ source, found by looking at its text."""

import dataclasses
import hashlib
import re

# What stands between these marks in a line, and what takes its place.
EXCHANGES = [
    (r" == ", [" != "]),
    (r" != ", [" == "]),
    (r" < ", [" <= ", " >= "]),
    (r" > ", [" >= ", " <= "]),
    (r" <= ", [" < "]),
    (r" >= ", [" > "]),
    (r" && ", [" || "]),
    (r" \|\| ", [" && "]),
    (r" \+ 1\b", [""]),
    (r" - 1\b", [""]),
    (r" \+ (?=[a-z])", [" - "]),
    (r" \+= ", [" = "]),
    (r"\+\+(?=\w)", ["--"]),
    (r"\breturn true;", ["return false;"]),
    (r"\breturn false;", ["return true;"]),
    (r"\btrue\b", ["false"]),
    (r"\bfalse\b", ["true"]),
    (r"(?<=\()!(?=[a-z])", [""]),
    (r"(?<=if \()(?=[a-z][\w.()>-]*\) \{)", ["!"]),
    (r"\b0\b(?![.x])", ["1"]),
    (r"\b1\b(?![.x])", ["2"]),
    (r"\bbreak;", [";"]),
    (r"\bcontinue;", [";"]),
]

# A statement on a line of its own that acts: a call or an assignment, no declaration.
STATEMENT = re.compile(r"^\s+(?!return|const|auto|static|using|case|default|else|delete|throw|goto|constexpr)"
                       r"[\w.:>\[\]*()-]+(\(.*\)| [-+|]?= [^=].*);$")
# Making room beforehand changes nothing that a test could see.
PASSED_OVER = re.compile(r"^\s*(//|#|\*|[\w.]+\.reserve\(|static_assert|template|using |enum |namespace|inline constexpr|constexpr char)")


@dataclasses.dataclass(frozen=True)
class Fault:
    file: str  # below the root
    line: int  # from 0
    before: str
    after: str

    def __str__(self):
        after = self.after.strip() or "(taken out)"
        return f"{self.file}:{self.line + 1}\n    - {self.before.strip()}\n    + {after}"

    def lot(self):
        """A number that is the same wherever the line has moved to; the draw goes by it."""
        return hashlib.sha256(f"{self.file}|{self.before.strip()}|{self.after.strip()}".encode()).hexdigest()


def without_texts(line):
    """The line with its literals and its comment blanked, as long as it was."""
    def blank(found):
        return " " if len(found[0]) < 2 else found[0][0] + "_" * (len(found[0]) - 2) + found[0][-1]
    line = re.sub(r'"(?:\\.|[^"\\])*"|\'(?:\\.|[^\'\\])*\'', blank, line)
    comment = line.find("//")
    return line if comment < 0 else line[:comment] + "_" * (len(line) - comment)


def faults_in(file, text):
    """Every fault there is for the file, in the order of its lines."""
    found = []
    for number, line in enumerate(text.split("\n")):
        if PASSED_OVER.match(line):
            continue
        code = without_texts(line)
        for pattern, replacements in EXCHANGES:
            for place in re.finditer(pattern, code):
                for replacement in replacements:
                    found.append(Fault(file, number, line, line[:place.start()] + replacement + line[place.end():]))
        if STATEMENT.match(code):
            found.append(Fault(file, number, line, ""))
    return found


def drawn(faults, count):
    """So many of them, spread over the files, the same for the same sources; then the others, to take the place of
    those that do not compile."""
    by_file = {}
    for fault in sorted(faults, key=Fault.lot):
        by_file.setdefault(fault.file, []).append(fault)
    in_turns = []
    while by_file:
        for file in sorted(by_file):
            in_turns.append(by_file[file].pop(0))
            if not by_file[file]:
                del by_file[file]
    return in_turns[:count], in_turns[count:]
