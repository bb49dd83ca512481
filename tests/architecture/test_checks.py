#!/usr/bin/env python3
"""The checks of this folder must be able to fail: each is shown a made-up tree with one thing wrong."""

import pathlib
import tempfile
import unittest

import check_arrows
import check_files

TABLE = """Some words.

```
core → nothing
costs → core
ui (Qt) → core costs
```
"""

GOOD = {
    "ARCHITECTURE.md": TABLE,
    "src/core/Record.h": "#pragma once\n#include <string>\n",
    "src/core/Record.cpp": '#include "core/Record.h"\n\n#include <expat.h>\n#include <unicode/unistr.h>\n',
    "src/costs/Costs.cpp": '#include "core/Record.h"\n#include <queue>\n',
    "src/ui/Window.cpp": '#include "costs/Costs.h"\n#include <QWidget>\n#include "ui_Window.h"\n',
    "src/costs/Costs.h": "#pragma once\n",
}


class Tree(unittest.TestCase):
    def breaches(self, check, changes):
        with tempfile.TemporaryDirectory() as folder:
            root = pathlib.Path(folder)
            for name, text in (GOOD | changes).items():
                if text is not None:
                    (root / name).parent.mkdir(parents=True, exist_ok=True)
                    (root / name).write_text(text, encoding="utf-8")
            return check.breaches(root)

    def assert_one(self, check, changes, words):
        found = self.breaches(check, changes)
        self.assertEqual(len(found), 1, found)
        self.assertIn(words, found[0])


class Arrows(Tree):
    def test_a_good_tree_passes(self):
        self.assertEqual(self.breaches(check_arrows, {}), [])

    def test_each_wrong_is_found(self):
        rows = [
            ("an arrow that is not there", {"src/core/Record.h": '#include "costs/Costs.h"\n'}, "core may not include"),
            ("an odd spacing", {"src/core/Record.h": '  #  include "costs/Costs.h"\n'}, "core may not include"),
            ("angle brackets", {"src/core/Record.h": "#include <costs/Costs.h>\n"}, "is ours"),
            ("a way around", {"src/core/Record.h": '#include "../costs/Costs.h"\n'}, "no file below src/"),
            ("a file that is not there", {"src/core/Record.h": '#include "Record.h"\n'}, "no file below src/"),
            ("Qt's class header", {"src/costs/Costs.h": "#include <QString>\n"}, "stays out of costs"),
            ("Qt's header by module", {"src/costs/Costs.h": "#include <QtCore/QString>\n"}, "stays out of costs"),
            ("Qt's old header", {"src/costs/Costs.h": "#include <qstring.h>\n"}, "stays out of costs"),
            ("a folder without a row", {"src/extra/Extra.h": "\n"}, "not in the arrow table"),
            ("a file without a row", {"src/main.cpp": "\n"}, "not in the arrow table"),
            ("a row without a folder", {"ARCHITECTURE.md": TABLE.replace("costs →", "gone → core\ncosts →")}, "names gone"),
            (
                "a circle in the table",
                {"ARCHITECTURE.md": TABLE.replace("nothing", "costs")},
                "circle: core → costs → core",
            ),
            (
                "a circle of files",
                {"src/core/A.h": '#include "core/B.h"\n', "src/core/B.h": '#include "core/A.h"\n'},
                "circle: core/A.h → core/B.h → core/A.h",
            ),
            ("no table", {"ARCHITECTURE.md": "Some words.\n"}, "no arrow table"),
            ("no page", {"ARCHITECTURE.md": None}, "ARCHITECTURE.md"),
        ]
        for name, changes, words in rows:
            with self.subTest(name):
                self.assert_one(check_arrows, changes, words)


class Files(Tree):
    def test_a_good_tree_passes(self):
        changes = {"src/core/Long.h": "\n" * 600, "bench/A.cpp": "// TODO: waits for the compiler\n"}
        self.assertEqual(self.breaches(check_files, changes), [])

    def test_each_wrong_is_found(self):
        rows = [
            ("too long", {"src/core/Long.h": "\n" * 601}, "601 lines"),
            ("a bare note", {"tests/core/A.cpp": "// TODO\n"}, "A.cpp:1"),
            ("a note without a reason", {"fuzz/A.cpp": "\n// TODO: later\n"}, "A.cpp:2"),
            ("another word for it", {"bench/A.cpp": "// FIXME: it is wrong here\n"}, "A.cpp:1"),
        ]
        for name, changes, words in rows:
            with self.subTest(name):
                self.assert_one(check_files, changes, words)


if __name__ == "__main__":
    unittest.main()
