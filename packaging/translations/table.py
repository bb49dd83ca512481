"""Reading a table of translations: `"key" = "value";` with comments, as the program reads it."""

import re

ESCAPES = {"n": "\n", "r": "\r", "t": "\t", '"': '"', "\\": "\\", "'": "'", "a": "\a", "b": "\b", "f": "\f", "v": "\v"}

ENTRY = re.compile(r"""\s*(?:
    (?P<comment>/\*.*?\*/|//[^\n]*) |
    "(?P<key>(?:[^"\\]|\\.)*)"\s*=\s*"(?P<value>(?:[^"\\]|\\.)*)"\s*; )""", re.DOTALL | re.VERBOSE)


def unescaped(text):
    def plain(match):
        code = match[1]
        if code[0] in "Uu":
            return chr(int(code[1:], 16))
        return chr(int(code, 8)) if code[0].isdigit() else ESCAPES.get(code, code)
    return re.sub(r"\\([Uu][0-9a-fA-F]{4}|[0-7]{3}|.)", plain, text, flags=re.DOTALL)


def escaped(text):
    for plain, code in (("\\", "\\\\"), ('"', '\\"'), ("\n", "\\n"), ("\r", "\\r"), ("\t", "\\t")):
        text = text.replace(plain, code)
    return text


def read_table(path):
    """The entries, and what is wrong with the table as such. An empty translation is none."""
    data = path.read_bytes()
    text = data.decode("utf-16" if data[:2] in (b"\xff\xfe", b"\xfe\xff") else "utf-8-sig")
    entries, problems, position = {}, [], 0
    while text[position:].strip():
        match = ENTRY.match(text, position)
        if not match:
            line = text.count("\n", 0, position + len(text[position:]) - len(text[position:].lstrip())) + 1
            return entries, [*problems, f"line {line} is no entry"]
        position = match.end()
        if match["key"] is not None:
            key = unescaped(match["key"])
            if key in entries:
                problems.append(f"twice: {key!r}")
            entries[key] = unescaped(match["value"])
    return entries, problems
