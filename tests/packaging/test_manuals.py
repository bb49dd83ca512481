#!/usr/bin/env python3
"""What is translated beside the tables: the manuals, their pictures, and the desktop's files."""

import html.parser
import pathlib
import re
import sys
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "packaging/translations"))
from table import read_table  # noqa: E402

RESOURCES = ROOT / "packaging/resources"
DESKTOP = ROOT / "packaging/desktop"
LANGUAGES = sorted(path.parent.stem for path in RESOURCES.glob("*.lproj/Localizable.strings"))
PAGES = ("KPXHelp.htm", "Keyboard.htm")


class Page(html.parser.HTMLParser):
    """Its tags, as far as they are the same in each language, and its bold words, which name controls."""

    def __init__(self, path):
        super().__init__()
        self.path, self.tags, self.pictures, self.links, self.words, self.language = path, [], [], [], [], None
        self.bold = False
        self.feed(path.read_text(encoding="utf-8"))

    def handle_starttag(self, tag, attributes):
        attributes = dict(attributes)
        self.tags.append((tag, attributes.get("id")))
        self.bold = tag == "b"
        if tag == "html":
            self.language = attributes.get("lang")
        if "src" in attributes:
            self.pictures.append(attributes["src"])
        if "href" in attributes:
            self.links.append(attributes["href"].split("#")[0])

    def handle_endtag(self, tag):
        self.tags.append(("/" + tag, None))
        self.bold = False

    def handle_data(self, data):
        if self.bold:
            self.words.append(" ".join(data.split()))


def plain(text):
    """A control's text as it is seen."""
    return re.sub(r"&(?=\w)", "", re.sub(r"\(&\w\)", "", text)).strip()


def strange_words(language, name, texts):
    """The bold words, and those on a way through menus, that no control has."""
    shown = {plain(text) for text in texts}
    words = Page(RESOURCES / f"{language}.lproj/KPXHelp" / name).words
    return [word for words in words for word in re.split(" [▸◂] ", words) if word not in shown]


class Manuals(unittest.TestCase):
    def test_each_language_has_the_whole_manual(self):
        self.assertGreaterEqual(len(LANGUAGES), 12)
        for name in PAGES:
            english = Page(RESOURCES / "en.lproj/KPXHelp" / name)
            for language in LANGUAGES:
                with self.subTest(language=language, page=name):
                    page = Page(RESOURCES / f"{language}.lproj/KPXHelp" / name)
                    self.assertEqual(page.tags, english.tags)
                    self.assertEqual(page.language.split("-")[0], language)
                    self.assertEqual(page.pictures, english.pictures)
                    for file in page.pictures + [link for link in page.links if link and ":" not in link]:
                        self.assertTrue((page.path.parent / file).is_file(), file)

    def test_the_manual_calls_controls_what_the_windows_call_them(self):
        english, _ = read_table(RESOURCES / "de.lproj/Localizable.strings")
        for name in PAGES:
            # Keys to press, and what is only stressed.
            others = strange_words("en", name, english.keys())
            for language in LANGUAGES:
                with self.subTest(language=language, page=name):
                    entries, _ = read_table(RESOURCES / f"{language}.lproj/Localizable.strings")
                    found = strange_words(language, name, entries.values())
                    self.assertLessEqual(len(found), len(others), found)

    def test_pictures_stay_small(self):
        self.assertLess(sum(path.stat().st_size for path in RESOURCES.rglob("*.png")), 5_000_000)


class DesktopFiles(unittest.TestCase):
    def test_each_translatable_entry_has_every_language(self):
        for path in DESKTOP.glob("*.desktop.in"):
            entries = re.findall(r"^(\w+)\[(\w+)\]=.+$", path.read_text(encoding="utf-8"), re.MULTILINE)
            keys = dict.fromkeys(key for key, _ in entries)
            self.assertIn("Name", keys)
            for key in keys:
                with self.subTest(file=path.name, key=key):
                    self.assertEqual([language for found, language in entries if found == key], LANGUAGES)

    def test_the_agent_is_called_what_the_entry_that_it_writes_itself_calls_it(self):
        entry = (DESKTOP / "example.velmora.Velmora.Reminders.desktop.in").read_text(encoding="utf-8")
        for language, name in re.findall(r"^Name\[(\w+)\]=(.+)$", entry, re.MULTILINE):
            with self.subTest(language=language):
                entries, _ = read_table(RESOURCES / f"{language}.lproj/Localizable.strings")
                self.assertEqual(entries["Velmora Reminders"], name)

    def test_each_text_of_the_page_has_every_language(self):
        page = (DESKTOP / "example.velmora.Velmora.metainfo.xml").read_text(encoding="utf-8")
        for tag, texts in (("summary", 1), ("p", 2), ("li", 4), ("caption", 4)):
            with self.subTest(tag):
                self.assertEqual(re.findall(rf'<{tag} xml:lang="(\w+)">', page), LANGUAGES * texts)

    def test_the_page_is_found_by_the_words_that_the_menu_is_searched_by(self):
        page = (DESKTOP / "example.velmora.Velmora.metainfo.xml").read_text(encoding="utf-8")
        entry = (DESKTOP / "example.velmora.Velmora.desktop.in").read_text(encoding="utf-8")
        for language in ["", *LANGUAGES]:
            with self.subTest(language=language):
                key, attribute = (f"Keywords[{language}]", f' xml:lang="{language}"') if language else ("Keywords", "")
                words = re.search(rf"^{re.escape(key)}=(.+);$", entry, re.MULTILINE)[1].split(";")
                self.assertEqual(re.findall(rf"<keyword{attribute}>(.*)</keyword>", page), words)


if __name__ == "__main__":
    unittest.main()
