#!/usr/bin/env python3
"""Installs the build tree into throw-away folders, looks at what a desktop and a shell would find there, and starts it.

    test_install.py CMAKE BUILD_FOLDER
"""

import configparser
import os
import pathlib
import re
import shlex
import struct
import subprocess
import sys
import tempfile
import time
import unittest

CMAKE, BUILD = sys.argv[1:3]
ROOT = pathlib.Path(__file__).parents[2]
NAME = "example.velmora.Velmora"
PROGRAMS = ["velmora", "velmora-decoder", "velmora-reminders"]
SIZES = [16, 22, 24, 32, 48, 64, 128, 256, 512]


STAND_IN = """#!/bin/sh
cd "${0%/*}/.." && printf '%s\\n' "$0" "$@" >telling && mv telling told
exit 1
"""
LOGIN = f"etc/xdg/autostart/{NAME}.Reminders.desktop"


def checked(*command, **environment):
    ended = subprocess.run(command, capture_output=True, text=True, check=False, env=os.environ | environment)
    return ended.returncode, ended.stdout + ended.stderr


def verified(units):
    """What a user's own manager would complain of in these units; nothing of the machine's own is looked at."""
    with tempfile.TemporaryDirectory() as home:
        return subprocess.run(
            ["systemd-analyze", "--user", "--man=no", "--generators=no", "verify"] + sorted(map(str, units)),
            capture_output=True, text=True, check=False,
            env={"PATH": os.environ["PATH"], "HOME": home, "XDG_RUNTIME_DIR": home}).stderr


def service_command(unit):
    """The words that the manager makes of a service's command; a sign that is not doubled would stand for something."""
    command = re.search("^ExecStart=(.*)$", unit.read_text(encoding="utf-8"), flags=re.MULTILINE)[1]
    return [re.sub(r"%%?|\$\$?", lambda sign: sign[0][1:], word) for word in shlex.split(command)]


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
                     f"share/dbus-1/services/{NAME}.Reminders.service", LOGIN):
            with self.subTest(name):
                programs = re.findall(r"""^Exec=(["'])(.*?)\1""", self.read(name), flags=re.MULTILINE)
                self.assertTrue(programs)
                for _, program in programs:
                    self.assertEqual(os.path.dirname(program), f"{self.prefix}/bin")
                    self.assertTrue((self.root / program[1:]).is_file())

    def test_desktop_files_are_valid(self):
        for name in (f"share/applications/{NAME}.desktop", LOGIN):
            with self.subTest(name):
                self.assertEqual(checked("desktop-file-validate", self.place / name), (0, ""))
        self.assertIn("\nActions=schedule;\n", self.read(f"share/applications/{NAME}.desktop"))

    def test_units_start_the_agent_as_the_login_entry_does(self):
        self.assertEqual(verified(self.units.glob("velmora-*")), "")
        service = self.unit("velmora-reminders.service")
        login = re.search("^Exec=(.*)$", self.read(LOGIN), flags=re.MULTILINE)[1]
        self.assertEqual(service_command(self.units / "velmora-reminders.service"),
                         ["/usr/bin/env", *shlex.split(login)])
        self.assertEqual(service["Service"]["Restart"], "on-failure")
        self.assertEqual(service["Service"]["KillMode"], "process", "a click's window program lives on")
        self.assertNotIn("Type", service["Service"], "the agent stays, and tells nobody that it is ready")

    def test_the_timer_comes_with_the_reminders_and_is_wanted(self):
        timer = self.unit("velmora-reminders.timer")["Timer"]
        schedule = ROOT.joinpath("src/reminders/Schedule.h").read_text(encoding="utf-8")
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
                            ROOT.joinpath("CMakeLists.txt").read_text(encoding="utf-8"), flags=re.MULTILINE)[1]
        self.assertIn(f'<release version="{version}"', page.read_text(encoding="utf-8"))

    def test_icons_have_the_size_of_their_folder(self):
        icons = self.place / "share/icons/hicolor"
        for size in SIZES:
            with self.subTest(size):
                head = (icons / f"{size}x{size}/apps/{NAME}.png").read_bytes()[:24]
                self.assertEqual(struct.unpack(">8s4x4s2I", head), (b"\x89PNG\r\n\x1a\n", b"IHDR", size, size))
        for folder, name in (("scalable", f"{NAME}.svg"), ("symbolic", f"{NAME}-symbolic.svg")):
            self.assertIn("<svg", (icons / folder / "apps" / name).read_text(encoding="utf-8"))


class AnyPrefix(unittest.TestCase):
    """Below a prefix with all that a format treats in its own way. Programs that tell how they were started stand in for
    ours, and are started by the desktop's own means."""

    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        cls.place = pathlib.Path(cls.folder.name) / """50%f of 'mine' "too";$HOME ${HOME} `id` @programs@ #Ü"""
        subprocess.run([CMAKE, "--install", BUILD, "--prefix", cls.place], check=True, capture_output=True)
        cls.told = cls.place / "told"
        for program in PROGRAMS:
            (cls.place / "bin" / program).write_text(STAND_IN, encoding="utf-8")

    @classmethod
    def tearDownClass(cls):
        cls.folder.cleanup()

    def started(self):
        """The program and its arguments, once it has told them."""
        latest = time.monotonic() + 20
        while not self.told.exists() and time.monotonic() < latest:
            time.sleep(0.02)
        words = self.told.read_text(encoding="utf-8").splitlines()
        self.told.unlink()
        self.assertEqual(os.path.dirname(words[0]), str(self.place / "bin"))
        return [os.path.basename(words[0]), *words[1:]]

    def entries(self, name):
        """An entry of its own for each command of a desktop file, an action's too."""
        text = (self.place / name).read_text(encoding="utf-8")
        tried = re.search("^TryExec=.*$", text, flags=re.MULTILINE)[0]
        for number, command in enumerate(re.findall("^Exec=.*$", text, flags=re.MULTILINE)):
            entry = self.place / f"{number}.desktop"
            entry.write_text(f"[Desktop Entry]\nType=Application\nName=One\n{tried}\n{command}\n", encoding="utf-8")
            yield entry

    def test_desktop_files_start_the_programs(self):
        started = []
        for name in (f"share/applications/{NAME}.desktop", LOGIN):
            self.assertEqual(checked("desktop-file-validate", self.place / name), (0, ""))
            for entry in self.entries(name):
                self.assertEqual(checked("gio", "launch", entry), (0, ""))
                started.append(self.started())
        self.assertEqual(started, [["velmora"], ["velmora", "--schedule"], ["velmora-reminders", "--if-any"]])

    def test_the_bus_starts_the_programs(self):
        for name, program in ((NAME, "velmora"), (f"{NAME}.Reminders", "velmora-reminders")):
            with self.subTest(name):
                # A stand-in takes no name on the bus, which complains of it.
                checked("dbus-run-session", "--", "gdbus", "call", "--session", "--dest", "org.freedesktop.DBus",
                        "--object-path", "/", "--method", "org.freedesktop.DBus.StartServiceByName", name, "0",
                        XDG_DATA_DIRS=f"{self.place}/share", XDG_DATA_HOME=self.folder.name)
                self.assertEqual(self.started(), [program])

    def test_the_service_starts_the_agent(self):
        units = self.place / "lib/systemd/user"
        self.assertEqual(verified(units.glob("velmora-*")), "")
        checked(*service_command(units / "velmora-reminders.service"))
        self.assertEqual(self.started(), ["velmora-reminders", "--if-any"])

    def test_a_prefix_that_no_file_can_name_is_refused(self):
        for prefix in ("/opt/a=b", "/opt/a\nb"):
            with self.subTest(prefix):
                self.refused(prefix, "--install", BUILD, "--prefix", prefix)

    def test_a_prefix_that_would_not_be_kept_is_refused_when_configured(self):
        for prefix in ("/opt/a=b", '/opt/a"b', "/opt/a\\b", "/opt/a${HOME}b", "/opt/a;b"):
            with self.subTest(prefix), tempfile.TemporaryDirectory() as build:
                self.refused(prefix, "-S", ROOT, "-B", build, f"-DCMAKE_INSTALL_PREFIX={prefix}")

    def refused(self, prefix, *arguments):
        status, told = checked(CMAKE, *arguments, DESTDIR=self.folder.name)
        self.assertNotEqual(status, 0)
        self.assertIn(" ".join(f"Nothing could start Velmora from the prefix {prefix},".split()), " ".join(told.split()))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
