"""Reading a table of translations: `"key" = "value";` with comments. What the program would not read, or not alike, is
told: it takes a damaged table for none."""

import re

ESCAPES = {"n": "\n", "r": "\r", "t": "\t", '"': '"', "\\": "\\", "'": "'"}
ESCAPE = re.compile(r"\\(U[0-9a-fA-F]{4}|.)", re.DOTALL)
# A blank of another kind, such as the wide one of Japanese, is none between entries.
BLANKS = " \t\n\v\f\r"

ENTRY = re.compile(r"""\s*(?:
    (?P<comment>/\*.*?\*/|//[^\r\n]*) |
    "(?P<key>(?:[^"\\]|\\.)*)"\s*=\s*"(?P<value>(?:[^"\\]|\\.)*)"\s*; )""", re.DOTALL | re.VERBOSE | re.ASCII)


def unescaped(text):
    """Null where an escape is not one of those that a table needs."""
    codes = ESCAPE.findall(text)
    if not all(code in ESCAPES or re.fullmatch("U(?![dD][89a-fA-F])....", code) for code in codes):
        return None
    return ESCAPE.sub(lambda match: ESCAPES.get(match[1]) or chr(int(match[1][1:], 16)), text)


def escaped(text):
    for plain, code in (("\\", "\\\\"), ('"', '\\"'), ("\n", "\\n"), ("\r", "\\r"), ("\t", "\\t")):
        text = text.replace(plain, code)
    return text


def decoded(data):
    """The text of the file; null where the bytes are none."""
    try:
        return data.decode("utf-16" if data[:2] in (b"\xff\xfe", b"\xfe\xff") else "utf-8-sig")
    except UnicodeDecodeError:
        return None


def read_table(path):
    """The entries, and what is wrong with the table as such. An empty translation is none."""
    text = decoded(path.read_bytes())
    if text is None:
        return {}, ["no text in UTF-8"]
    entries, problems, position = {}, [], 0

    def line():
        return text.count("\n", 0, len(text) - len(text[position:].lstrip(BLANKS))) + 1

    while text[position:].strip(BLANKS):
        match = ENTRY.match(text, position)
        if not match:
            return entries, [*problems, f"line {line()} is no entry"]
        if match["key"] is not None:
            key, value = unescaped(match["key"]), unescaped(match["value"])
            if key is None or value is None:
                problems.append(f"line {line()} has a wrong escape")
            elif key in entries:
                problems.append(f"twice: {key!r}")
            if key is not None and value is not None:
                entries[key] = value
        position = match.end()
    return entries, problems
