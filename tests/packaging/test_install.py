#!/usr/bin/env python3
"""Installs the build tree into a throw-away folder and looks at what a desktop and a shell would find there.

    test_install.py CMAKE BUILD_FOLDER
"""

import configparser
import os
import pathlib
import re
import struct
import subprocess
import sys
import tempfile
import unittest

CMAKE, BUILD = sys.argv[1:3]
NAME = "example.velmora.Velmora"
PROGRAMS = ["velmora", "velmora-decoder", "velmora-reminders"]
SIZES = [16, 22, 24, 32, 48, 64, 128, 256, 512]


def checked(*command):
    ended = subprocess.run(command, capture_output=True, text=True, check=False)
    return ended.returncode, ended.stdout + ended.stderr


class Installed(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        cls.prefix = "/opt/velmora of mine"
        cls.root = pathlib.Path(cls.folder.name)
        cls.place = cls.root / cls.prefix[1:]
        subprocess.run([CMAKE, "--install", BUILD, "--prefix", cls.prefix], check=True, capture_output=True,
                       env=os.environ | {"DESTDIR": str(cls.root)})

    @classmethod
    def tearDownClass(cls):
        cls.folder.cleanup()

    def read(self, name):
        return (self.place / name).read_text(encoding="utf-8")

    def test_nothing_lies_outside_the_prefix(self):
        outside = [path for path in self.root.rglob("*") if path.is_file() and self.place not in path.parents]
        self.assertEqual(outside, [])

    def test_nothing_unforeseen_is_installed(self):
        foreseen = re.compile(
            rf"bin/({'|'.join(PROGRAMS)})|share/(applications|dbus-1/services)/{NAME}[\w.]*|etc/xdg/autostart/{NAME}[\w.]*"
            rf"|share/icons/hicolor/(\d+x\d+|scalable|symbolic)/apps/{NAME}[-\w.]*|share/metainfo/{NAME}.metainfo.xml"
            r"|share/man/man1/velmora[-\w]*\.1|share/velmora/\w+\.lproj/.*|(share|lib)/systemd/user/(\w+\.target\.wants/)?velmora[-\w.]*")
        odd = [name for path in self.place.rglob("*") if path.is_file()
               for name in [path.relative_to(self.place).as_posix()] if not foreseen.fullmatch(name)]
        self.assertEqual(odd, [])

    def test_the_program_is_built_with_those_that_it_starts(self):
        status, told = checked("ninja", "-C", BUILD, "-t", "inputs", "bin/velmora")
        self.assertEqual(status, 0, told)
        self.assertLessEqual({"bin/velmora-decoder", "bin/velmora-reminders"}, set(told.splitlines()))

    def test_every_program_and_its_page(self):
        for program in PROGRAMS:
            with self.subTest(program):
                self.assertTrue(os.access(self.place / "bin" / program, os.X_OK))
                page = self.place / "share/man/man1" / f"{program}.1"
                self.assertEqual(checked("man", "--warnings", "-E", "UTF-8", "-l", "-Tutf8", "-Z", page)[0], 0)
                self.assertIn(program.replace("-", "\\-"), page.read_text(encoding="utf-8"))

    def test_files_name_the_programs_where_they_lie(self):
        for name in (f"share/applications/{NAME}.desktop", f"share/dbus-1/services/{NAME}.service",
                     f"share/dbus-1/services/{NAME}.Reminders.service", f"etc/xdg/autostart/{NAME}.Reminders.desktop"):
            with self.subTest(name):
                programs = re.findall(r'^Exec="([^"]*)"', self.read(name), flags=re.MULTILINE)
                self.assertTrue(programs)
                for program in programs:
                    self.assertEqual(os.path.dirname(program), f"{self.prefix}/bin")
                    self.assertTrue((self.root / program[1:]).is_file())

    def test_desktop_files_are_valid(self):
        for name in (f"share/applications/{NAME}.desktop", f"etc/xdg/autostart/{NAME}.Reminders.desktop"):
            with self.subTest(name):
                self.assertEqual(checked("desktop-file-validate", self.place / name), (0, ""))
        self.assertIn("\nActions=schedule;\n", self.read(f"share/applications/{NAME}.desktop"))

    def test_units_start_the_agent_as_the_login_entry_does(self):
        with tempfile.TemporaryDirectory() as home:
            # Read by a user's own manager as it would be, but nothing of the user's or the machine's is looked at.
            ended = subprocess.run(
                ["systemd-analyze", "--user", "--man=no", "--generators=no", "verify"]
                + sorted(str(unit) for unit in self.units.glob("velmora-*")),
                capture_output=True, text=True, check=False,
                env={"PATH": os.environ["PATH"], "HOME": home, "XDG_RUNTIME_DIR": home})
        # What it says of a program that does not lie there yet is no fault of the unit's.
        faults = [line for line in ended.stderr.splitlines() if "is not executable" not in line]
        self.assertEqual(faults, [])
        service = self.unit("velmora-reminders.service")
        login = re.search(r"^Exec=(.*)$", self.read(f"etc/xdg/autostart/{NAME}.Reminders.desktop"), flags=re.MULTILINE)
        self.assertEqual(service["Service"]["ExecStart"], login[1])
        self.assertEqual(service["Service"]["Restart"], "on-failure")
        self.assertEqual(service["Service"]["KillMode"], "process", "a click's window program lives on")
        self.assertNotIn("Type", service["Service"], "the agent stays, and tells nobody that it is ready")

    def test_the_timer_comes_with_the_reminders_and_is_wanted(self):
        timer = self.unit("velmora-reminders.timer")["Timer"]
        schedule = pathlib.Path(__file__).parents[2].joinpath("src/reminders/Schedule.h").read_text(encoding="utf-8")
        hour = int(re.search(r"deliveryTime\{(\d+)\}", schedule)[1])
        self.assertEqual(timer["OnCalendar"], f"*-*-* {hour:02}:00:00")
        self.assertEqual(timer["Persistent"], "true", "a day that was slept through is made up for")
        self.assertIn("OnStartupSec", timer, "and a login after that hour")
        self.assertNotIn("Unit", timer, "it starts the service of its own name")
        wanted = self.units / "timers.target.wants" / "velmora-reminders.timer"
        self.assertEqual(wanted.resolve(), (self.units / "velmora-reminders.timer").resolve())

    @property
    def units(self):
        return self.place / "lib/systemd/user"

    def unit(self, name):
        unit = configparser.ConfigParser(strict=True, interpolation=None)
        unit.optionxform = str
        unit.read_string((self.units / name).read_text(encoding="utf-8"))
        return unit

    def test_the_page_of_the_program_is_valid(self):
        page = self.place / f"share/metainfo/{NAME}.metainfo.xml"
        status, told = checked("appstreamcli", "validate", "--pedantic", "--no-net", page)
        self.assertEqual(status, 0, told)
        self.assertNotRegex(told, r"(?m)^[EW]:")
        version = re.search(r"^project\(Velmora VERSION ([\d.]+)",
                            pathlib.Path(__file__).parents[2].joinpath("CMakeLists.txt").read_text(encoding="utf-8"),
                            flags=re.MULTILINE)[1]
        self.assertIn(f'<release version="{version}"', page.read_text(encoding="utf-8"))

    def test_icons_have_the_size_of_their_folder(self):
        icons = self.place / "share/icons/hicolor"
        for size in SIZES:
            with self.subTest(size):
                head = (icons / f"{size}x{size}/apps/{NAME}.png").read_bytes()[:24]
                self.assertEqual(struct.unpack(">8s4x4s2I", head), (b"\x89PNG\r\n\x1a\n", b"IHDR", size, size))
        for folder, name in (("scalable", f"{NAME}.svg"), ("symbolic", f"{NAME}-symbolic.svg")):
            self.assertIn("<svg", (icons / folder / "apps" / name).read_text(encoding="utf-8"))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
