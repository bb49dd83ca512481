#!/usr/bin/env python3
"""The check of the translations, shown small made-up sources and tables with one thing wrong in each."""

import pathlib
import subprocess
import sys
import tempfile
import unittest

TOOL = pathlib.Path(__file__).resolve().parents[2] / "packaging/translations"
sys.path.insert(0, str(TOOL))

import check  # noqa: E402
from collect import collect  # noqa: E402
from table import read_table  # noqa: E402

SOURCE = r'''
constexpr char named[] = "by a name " "in two";
// localized("in a comment")
show(localized("All"), m_localized("two " /* with a comment */ "parts\r"), localized(named), tr("Zoom &In"), tr("&Save…"));
show(other("not looked up"), localized(variable), localized("Error in " + operation), QObject::tr(one ? "yes" : "no: ?"));
show(m_strings.sentence("Page: %d", {number}, localized("Page: ") + number), translate("Table", "Due"), '"', localized("%@"));
show(localized("%@ of %ld"), localized("a \"quoted\", bracketed (text"));
std::vector<std::string> words = {localizable("day"), localizable("days")};
'''
OUTLETS = 'TableView table{*this, "table", Place::Tab1, {{"column", "Title"}, {"other", "Other", false}}};'
FORM = '''<ui><widget class="QWidget" name="Sheet">
 <property name="windowTitle"><string>Sheet</string></property>
 <widget class="QPushButton" name="addBtn"><property name="text"><string>&amp;Add</string></property>
  <property name="toolTip"><string>Adds it</string></property></widget>
 <widget class="QLabel" name="label"><property name="text"><string notr="true">raw</string></property></widget>
 <widget class="QPushButton" name="allBtn"><property name="text"><string>A&amp;ll</string></property></widget>
</widget></ui>'''
MENUS = '''<ui><widget class="QMainWindow" name="MainWindow"><widget class="QMenuBar" name="bar">
 <widget class="QMenu" name="menuFile"><property name="title"><string>&amp;File</string></property>
  <widget class="QMenu" name="menuMore"><property name="title"><string>&amp;More</string></property></widget>
  <addaction name="one"/><addaction name="two"/><addaction name="menuMore"/></widget></widget>
 <action name="one"><property name="text"><string>&amp;One</string></property></action>
 <action name="two"><property name="text"><string>T&amp;wo</string></property></action></widget></ui>'''
PAGE = '''<ui><widget class="QWidget" name="PageTab"><widget class="QPushButton" name="button">
 <property name="text"><string>&amp;Go</string></property></widget></widget></ui>'''

GOOD = {
    "All": "Alle", "two parts\r": "zwei Teile\r", "by a name in two": "mit Namen", "Zoom &In": "&Größer",
    "&Save…": "&Sichern…", "yes": "ja", "no: ?": "nein: ?", "Page: %d": "%d. Seite:", "Due": "Fällig",
    "%@ of %ld": "%2$ld mal %1$@", 'a "quoted", bracketed (text': "eine \"Klammer (", "day": "Tag", "days": "Tage",
    "Title": "Titel", "Other": "Weitere", "Sheet": "Blatt", "&Add": "&Dazu", "Adds it": "Nimmt es auf",
    "A&ll": "&Alle", "&File": "&Datei", "&One": "&Eins", "T&wo": "&Zwei", "&More": "&Mehr", "&Go": "&Los",
} | {"Page: %d": "%d. Seite"}


def write(root, name, text):
    path = root / name
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_text(text, encoding="utf-8")


def table_of(entries):
    return "/* A comment; with \"marks\" */\n" + "".join(
        f'"{check.escaped(key)}" = "{check.escaped(value)}";\n' for key, value in entries.items())


class Translations(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = pathlib.Path(folder.name)
        for name, text in (("app/Source.cpp", SOURCE), ("app/Outlets.h", OUTLETS), ("ui/forms/Sheet.ui", FORM),
                           ("ui/forms/MainWindow.ui", MENUS), ("ui/forms/PageTab.ui", PAGE)):
            write(self.root, f"src/{name}", text)

    def run_tool(self, *arguments):
        return subprocess.run([sys.executable, "-B", TOOL / "check.py", "--root", self.root, *arguments],
                              capture_output=True, text=True, check=False)

    def findings(self, changes):
        entries = {key: value for key, value in (GOOD | changes).items() if value is not None}
        return [f"{kind}: {line}" for kind, lines in check.findings(collect(self.root), entries).items()
                for line in lines]

    def test_texts_are_collected(self):
        pieces = {"Page: "}
        self.assertEqual(set(collect(self.root).found) - pieces, set(GOOD))

    def test_a_good_table_has_no_findings(self):
        self.assertEqual(self.findings({}), [])

    def test_each_wrong_is_found(self):
        rows = [
            ("missing", {"All": None}, "missing: 'All' (src/app/Source.cpp:4)"),
            ("empty", {"Adds it": ""}, "missing: 'Adds it' (src/ui/forms/Sheet.ui: addBtn, toolTip)"),
            ("unused", {"Former": "Früher"}, "unused: 'Former'"),
            ("an argument less", {"%@ of %ld": "%@ mal"}, "other placeholders"),
            ("the same argument twice", {"%@ of %ld": "%1$@ mal %1$@"}, "other placeholders"),
            ("a foreign argument", {"%@ of %ld": "%2$@ mal %1$ld"}, "other placeholders"),
            ("a blank at the end", {"All": "Alle "}, "other blanks around it"),
            ("a lost line end", {"two parts\r": "zwei Teile"}, "other blanks around it"),
            ("a tab too much", {"by a name in two": "mit\tNamen"}, "other line ends or tabs"),
            ("a lost ellipsis", {"&Save…": "&Sichern"}, "an ellipsis less or more"),
            ("dots for an ellipsis", {"&Save…": "&Sichern..."}, "an ellipsis less or more"),
            ("a lost mnemonic", {"&Go": "Los"}, "a mnemonic less or more"),
            ("a doubled sign is none", {"&Go": "Los && fort"}, "a mnemonic less or more"),
            ("a mnemonic too much", {"All": "&Alle"}, "a mnemonic less or more"),
            ("a clash on a sheet", {"&Add": "&Auf"}, "src/ui/forms/Sheet.ui: the mnemonic A twice"),
            ("a clash in a menu", {"T&wo": "Zw&ei"}, "MainWindow.ui: menuFile: the mnemonic E twice"),
            ("a clash with a submenu", {"&More": "M&ehr"}, "MainWindow.ui: menuFile: the mnemonic E twice"),
            ("a clash with the menu bar", {"&Go": "&Dorthin"}, "src/ui/forms/PageTab.ui: the mnemonic D twice"),
            ("words alike", {"days": "Tag"}, "shown alike: 'day' and 'days'"),
            ("English words", {"by a name in two": "by a name in two"}, "still in English"),
            ("two of them", {"Adds it": "Adds it"}, "still in English"),
        ]
        for about, changes, words in rows:
            with self.subTest(about):
                found = self.findings(changes)
                self.assertTrue(any(words in line for line in found), found)
                self.assertTrue(all(words in line or "other line ends" in line for line in found), found)

    def test_pieces_are_asked_for_without_their_sentence_only(self):
        self.assertEqual(self.findings({"Page: ": "Seite "})[0].split(":")[0], "doubtful")
        self.assertEqual(self.findings({"Page: %d": None, "Page: ": "Seite: "}),
                         ["missing: 'Page: %d' (src/app/Source.cpp:6)"])
        self.assertEqual(len(self.findings({"Page: %d": None})), 2)

    def test_reminders_must_be_found_again(self):
        for form, good in (("Rezept: %@\r für: %@\r ist da", True), ("Rezept: %1$@\r für: %2$@\r ist da", True),
                           ("Rezept: %2$@\r für: %1$@\r ist da", False), ("Rezept %@\r für: %@\r ist da", False),
                           ("Rezept: für %@\r das: %@\r ist da", False), ("Da: Rezept: %@\r für: %@\r da", False)):
            with self.subTest(form):
                doubts = list(check.doubts_about(check.REMINDER, form))
                self.assertEqual(not any("found again" in doubt for doubt in doubts), good)

    def test_damaged_tables_are_told(self):
        write(self.root, "table", '"a" = "b";\n"a" = "c";\n"d" = "\\U00e9\\n";\nrubbish\n')
        entries, problems = read_table(self.root / "table")
        self.assertEqual((entries, problems), ({"a": "c", "d": "é\n"}, ["twice: 'a'", "line 4 is no entry"]))

    def test_what_the_program_would_read_otherwise_is_told(self):
        good = {"a": "é", "b": "c"}
        rows = [
            ("with a mark in front", '\ufeff"a" = "é"; // f\r\n"b" = "c";', "utf-8", good, []),
            ("in UTF-16", '"a" = "é"; /* f */ "b" = "c";', "utf-16", good, []),
            ("in an older code", '"a" = "é";', "latin-1", {}, ["no text in UTF-8"]),
            ("a wide blank before an entry", '"a" = "é";\n\u3000"b" = "c";', "utf-8", {"a": "é"},
             ["line 2 is no entry"]),
            ("a wide blank at the end", '"a" = "é";\n\u3000', "utf-8", {"a": "é"}, ["line 2 is no entry"]),
            ("a small escape", '"a" = "\\u00e9";\n"b" = "c";', "utf-8", {"b": "c"}, ["line 1 has a wrong escape"]),
            ("a short escape", '"b" = "c";\n"a" = "\\U00e";', "utf-8", {"b": "c"}, ["line 2 has a wrong escape"]),
            ("half a character", '"a" = "\\Ud83d";', "utf-8", {}, ["line 1 has a wrong escape"]),
            ("an octal escape", '"a" = "\\351";', "utf-8", {}, ["line 1 has a wrong escape"]),
            ("a wrong key", '"\\q" = "a";', "utf-8", {}, ["line 1 has a wrong escape"]),
            ("no end", '"a" = "é";\n/* "b" = "c";', "utf-8", {"a": "é"}, ["line 2 is no entry"]),
        ]
        for about, text, code, entries, problems in rows:
            with self.subTest(about):
                (self.root / "table").write_bytes(text.encode(code))
                self.assertEqual(read_table(self.root / "table"), (entries, problems))

    def test_the_tool_tells_by_its_status(self):
        self.assertEqual(self.run_tool().returncode, 0)
        self.assertEqual(self.run_tool("de").returncode, 1)
        write(self.root, "packaging/resources/de.lproj/Localizable.strings", table_of(GOOD))
        self.assertEqual(self.run_tool().stdout, f"{len(GOOD) + 1} texts, 1 tables, 0 findings\n")
        write(self.root, "packaging/resources/de.lproj/Localizable.strings", table_of(GOOD | {"All": ""}))
        ended = self.run_tool("de")
        self.assertEqual(ended.returncode, 1)
        self.assertIn("de: missing: 'All'", ended.stdout)

    def test_the_template_holds_every_text(self):
        write(self.root, "template", self.run_tool("--template").stdout)
        entries, problems = read_table(self.root / "template")
        self.assertEqual((set(entries), problems), (set(collect(self.root).found), []))


if __name__ == "__main__":
    unittest.main()
