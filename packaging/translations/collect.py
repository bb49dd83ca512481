"""Collecting the texts that the program looks up: of its sources and of its forms."""

import dataclasses
import pathlib
import re
import xml.etree.ElementTree

LITERAL = r'"(?:[^"\\\n]|\\.)*"'
# What looks its first argument up; translate() its second one.
LOOKUP = re.compile(r"\b(?:(?P<sentence>sentence)|(?P<translate>translate)|\w*[lL]ocalized\w*|localizable|translated|tr|"
                    r"reportInternalErrorAndTerminate)\(")
CONSTANT = re.compile(rf"\bconstexpr (?:char (\w+)\[\]|const char\* (\w+)) = ((?:\s*{LITERAL})+);")
# A column of a table: its identifier and its title.
COLUMN = re.compile(rf"\{{\s*{LITERAL}\s*,\s*({LITERAL})")
WORD_LIST = re.compile(r"words = \{(.*?)\};", re.DOTALL)
TAB = "Tab.ui"
MAIN_WINDOW = "MainWindow.ui"


@dataclasses.dataclass
class Text:
    """A text, and where it stands. A piece is asked for only where its whole sentence has no translation."""
    places: list = dataclasses.field(default_factory=list)
    whole: set = dataclasses.field(default_factory=set)
    required: bool = False


@dataclasses.dataclass
class Texts:
    found: dict = dataclasses.field(default_factory=dict)
    windows: dict = dataclasses.field(default_factory=dict)  # window: its texts with a mnemonic
    word_lists: list = dataclasses.field(default_factory=list)  # words that are offered side by side

    def add(self, key, place, whole=None):
        # What joins two has no word of its own, and its comma is another one elsewhere.
        if "%2$" not in key and not re.search(r"[^\W\d_]", re.sub(r"%(\d+\$)?(@|ld|d|\d+|n)", "", key)):
            return
        text = self.found.setdefault(key, Text())
        if place not in text.places:
            text.places.append(place)
        if whole is None:
            text.required = True
        else:
            text.whole.add(whole)

    def add_to_window(self, window, key):
        if mnemonic(key):
            self.windows.setdefault(window, []).append(key)


def mnemonic(text):
    match = re.search(r"&(\w)", text.replace("&&", ""))
    return match[1].upper() if match else None


def without_comments(source):
    """Comments blanked out, so that places stay what they are."""
    token = re.compile(rf"{LITERAL}|'(?:[^'\\]|\\.)'|//[^\n]*|/\*.*?\*/", re.DOTALL)
    return token.sub(lambda match: match[0] if match[0][0] in "\"'" else re.sub(r"[^\n]", " ", match[0]), source)


def joined(literals):
    """What adjacent literals say together."""
    escapes = {"n": "\n", "r": "\r", "t": "\t"}
    inner = "".join(literal[1:-1] for literal in re.findall(LITERAL, literals))
    return re.sub(r"\\(.)", lambda match: escapes.get(match[1], match[1]), inner)


def arguments(source, start):
    """The arguments of a call as they are written, and where it ends; `start` is behind its parenthesis."""
    depth, parts, position = 0, [""], start
    token = re.compile(rf"{LITERAL}|'(?:[^'\\]|\\.)'|.", re.DOTALL)
    while position < len(source):
        piece = token.match(source, position)[0]
        position += len(piece)
        if piece in ("(", "[", "{"):
            depth += 1
        elif piece in (")", "]", "}"):
            if depth == 0:
                break
            depth -= 1
        if piece == "," and depth == 0:
            parts.append("")
        else:
            parts[-1] += piece
    return [part.strip() for part in parts], position


def keys_of(argument, constants):
    """The texts that an argument can be: literals, a named one, either side of a choice."""
    keys = []
    for side in re.split(r"[?:](?=(?:[^\"\\]|\\.|\"(?:[^\"\\]|\\.)*\")*$)", argument) if "?" in argument else [argument]:
        side = side.strip()
        if re.fullmatch(rf"(?:{LITERAL}\s*)+", side):
            keys.append(joined(side))
        elif side in constants:
            keys.append(constants[side])
    return keys


def collect_source(texts, source, place, constants):
    source = without_comments(source)
    sentences = []
    for call in LOOKUP.finditer(source):
        parts, end = arguments(source, call.end())
        index = 1 if call["translate"] else 0
        if len(parts) <= index:
            continue
        wholes = next((keys for start, stop, keys in sentences if start < call.start() < stop), [])
        where = f"{place}:{source.count(chr(10), 0, call.start()) + 1}"
        keys = keys_of(parts[index], constants)
        for key in keys:
            for whole in wholes or [None]:
                texts.add(key, where, whole)
            texts.add_to_window(place, key)
        if call["sentence"] and keys:
            sentences.append((call.start(), end, keys))
    for words in WORD_LIST.finditer(source):
        listed = [arguments(source, words.start(1) + call.end())[0][0] for call in LOOKUP.finditer(words[1])]
        texts.word_lists.append([key for argument in listed for key in keys_of(argument, constants)])
    if place.endswith("Outlets.h"):
        for column in COLUMN.finditer(source):
            texts.add(joined(column[1]), f"{place}:{source.count(chr(10), 0, column.start()) + 1}")


def collect_form(texts, root, place):
    """A tab shares its window with the menu bar; each menu is a window of its own."""
    window = MAIN_WINDOW if place.endswith(MAIN_WINDOW) else place
    titles = {}  # of actions and menus
    parents = {child: parent for parent in root.iter() for child in parent}
    for element in root.iter("string"):
        if element.get("notr") == "true" or not element.text:
            continue
        holder = parents[element]
        while holder.tag not in ("property", "attribute"):
            holder = parents[holder]
        owner = parents[holder]
        texts.add(element.text, f"{place}: {owner.get('name') or owner.tag}, {holder.get('name')}")
        if holder.get("name") not in ("text", "title"):
            continue
        if owner.tag == "action" or owner.get("class") == "QMenu":
            titles[owner.get("name")] = element.text
        else:
            texts.add_to_window(window, element.text)
    menus = {menu.get("name"): [item.get("name") for item in menu.findall("addaction")]
             for menu in root.iter("widget") if menu.get("class") == "QMenu"}
    for menu, items in menus.items():
        if not any(menu in others for others in menus.values()):
            texts.add_to_window(window, titles.get(menu) or "")
        for item in items:
            texts.add_to_window(f"{place}: {menu}", titles.get(item) or "")


def collect(root):
    """All texts below the folder's src/."""
    root = pathlib.Path(root)
    texts, constants, sources = Texts(), {}, {}
    for path in sorted((root / "src").rglob("*")):
        if path.suffix in (".h", ".cpp"):
            sources[path.relative_to(root).as_posix()] = path.read_text(encoding="utf-8")
    for source in sources.values():
        for constant in CONSTANT.finditer(without_comments(source)):
            constants[constant[1] or constant[2]] = joined(constant[3])
    for place, source in sources.items():
        collect_source(texts, source, place, constants)
    for path in sorted((root / "src").rglob("*.ui")):
        collect_form(texts, xml.etree.ElementTree.parse(path).getroot(), path.relative_to(root).as_posix())
    menu_bar = texts.windows.get(MAIN_WINDOW, [])
    for window, keys in texts.windows.items():
        if window.endswith(TAB):
            keys.extend(menu_bar)
    return texts
