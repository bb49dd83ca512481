#!/usr/bin/env python3
"""What install-missing.sh asks the package manager for, on made-up machines."""

import os
import pathlib
import shutil
import subprocess
import tempfile
import unittest

SCRIPT = pathlib.Path(__file__).resolve().parents[2] / "packaging/install-missing.sh"
LIST = """# purpose packages
build   compiler  maker
window  plugins|library(<<6.7.2-5~)
other   unwanted
"""
COMMANDS = {
    "dpkg-query": 'cat "$MACHINE/installed"; exit 1',
    "apt-get": 'printf "%s\\n" "$*" >>"$MACHINE/asked"',
    "sudo": '"$@"',
}


class InstallMissing(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.machine = pathlib.Path(folder.name)
        shutil.copy(SCRIPT, self.machine)
        (self.machine / "dependencies.txt").write_text(LIST, encoding="utf-8")
        for name, command in COMMANDS.items():
            path = self.machine / "bin" / name
            path.parent.mkdir(exist_ok=True)
            path.write_text(f"#!/bin/sh\n{command}\n", encoding="utf-8")
            path.chmod(0o755)

    def run_script(self, installed, *purposes):
        """How it ended, and what the package manager was asked to install, or nothing."""
        rows = "".join(f"{row}\n" for row in installed)
        (self.machine / "installed").write_text(rows, encoding="utf-8")
        asked = self.machine / "asked"
        asked.unlink(missing_ok=True)
        ended = subprocess.run([self.machine / SCRIPT.name, *purposes], capture_output=True, text=True, check=False, env={
            "PATH": f"{self.machine}/bin:{os.environ['PATH']}", "MACHINE": str(self.machine)})
        words = asked.read_text(encoding="utf-8").splitlines() if asked.exists() else ["", ""]
        self.assertEqual(len(words), 2, "the lists of packages are read anew, then one question")
        return ended.returncode, words[1].partition("--no-install-recommends ")[2]

    def test_only_what_is_missing_is_asked_for(self):
        compiler, maker = "installed compiler 4:12.2.0", "installed maker 3.25.1-1"
        library = "plugins|library(<<6.7.2-5~)"
        rows = [
            ("all is there", [compiler, maker, "installed library 6.4.2-2"], ""),
            ("in a package of its own", [compiler, maker, "installed library 6.8.2-3", "installed plugins 6.8.2-3"], ""),
            ("the library alone no longer has it", [compiler, maker, "installed library 6.8.2-3"], library),
            ("nor since the very version", [compiler, maker, "installed library 6.7.2-5"], library),
            ("removed, but for its settings", ["config-files compiler 1", maker, "installed library 6.4.2-2"], "compiler"),
            ("nothing", [], f"compiler, maker, {library}"),
        ]
        for about, installed, wanted in rows:
            with self.subTest(about):
                self.assertEqual(self.run_script(installed, "build", "window"), (0, wanted))

    def test_a_purpose_that_is_not_listed_is_told(self):
        self.assertEqual(self.run_script([], "build", "buidl"), (2, ""))


if __name__ == "__main__":
    unittest.main()
