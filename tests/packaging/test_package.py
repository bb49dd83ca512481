#!/usr/bin/env python3
"""What goes into the Debian package and its source archive, as far as it can be told without building them."""

import os
import pathlib
import re
import shutil
import subprocess
import tarfile
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
PACKAGING = ROOT / "packaging"
# What the build machine of Debian has anyway, and what only makes a developer's day shorter.
ESSENTIAL = {"g++", "python3", "ccache"}
TESTING = {"libgtest-dev", "libgmock-dev", "nlohmann-json3-dev"}


def text(name):
    return (ROOT / name).read_text(encoding="utf-8")


def version():
    return re.search(r"^project\(Velmora VERSION ([\d.]+)", text("CMakeLists.txt"), flags=re.MULTILINE)[1]


def purpose(name):
    rows = [line.split() for line in text("packaging/dependencies.txt").splitlines()]
    return {package for row in rows if row and row[0] == name for package in row[1:]}


def field(name):
    """The packages that a field of debian/control asks for, written as dependencies.txt writes them."""
    value = re.search(rf"^{name}: *((?:.*\n)(?:[ \t].*\n)*)", text("packaging/debian/control"), flags=re.MULTILINE)[1]
    return {"".join(package.split()) for package in value.split(",")}


class Package(unittest.TestCase):
    def test_built_with_what_the_scripts_install(self):
        needed = purpose("build") | {package for package in purpose("window") if package.endswith("-dev")}
        needed |= {"pkg-config"}
        asked = field("Build-Depends")
        self.assertEqual(asked - {"debhelper-compat(=13)"}, needed - ESSENTIAL - TESTING)
        self.assertIn("debhelper", purpose("package"))

    def test_runs_with_what_the_scripts_install(self):
        read_at_run_time = {package for package in purpose("window") if not package.endswith("-dev")} - {"pkg-config"}
        self.assertEqual(field("Depends"), read_at_run_time | {"${misc:Depends}", "${shlibs:Depends}"})
        self.assertLessEqual(purpose("wayland"), field("Recommends"))

    def test_one_version_and_one_day(self):
        newest = subprocess.run(["dpkg-parsechangelog", "-l", PACKAGING / "debian/changelog", "--show-field", "Version"],
                                check=True, capture_output=True, text=True).stdout.strip()
        self.assertEqual(newest, version())
        day = subprocess.run(["date", "--utc", "+%F", "--date", re.search(r"^ -- .*>  (.*)$", text(
            "packaging/debian/changelog"), flags=re.MULTILINE)[1]], check=True, capture_output=True, text=True).stdout
        page = text("packaging/desktop/example.velmora.Velmora.metainfo.xml")
        self.assertIn(f'<release version="{version()}" date="{day.strip()}"', page)

    def test_the_missing_licence_is_told_once_in_each_place(self):
        self.assertEqual(text("packaging/debian/copyright").count("No licence has been given yet"), 1)
        page = text("packaging/desktop/example.velmora.Velmora.metainfo.xml")
        self.assertEqual(re.findall("<project_license>(.*)</project_license>", page), ["LicenseRef-none-has-been-given-yet"])
        self.assertEqual(re.findall("<metadata_license>(.*)</metadata_license>", page), ["FSFAP"])

    def test_a_source_archive_makes_itself_again(self):
        """Of a checkout and of what was unpacked from it, in another folder, by another umask: the same bytes."""
        with tempfile.TemporaryDirectory() as folder:
            first = self.archive(ROOT, folder, "first", 0o022)
            with tarfile.open(first) as archive:
                names = archive.getnames()
                archive.extractall(folder)
            unpacked = pathlib.Path(folder) / f"velmora-{version()}"
            shutil.copytree(unpacked / "packaging/man", unpacked / "build/of-no-interest")
            second = self.archive(unpacked, folder, "second", 0o077)
            self.assertEqual(first.read_bytes(), second.read_bytes())
        self.assertIn(f"velmora-{version()}/packaging/debian/rules", names)
        self.assertEqual([name for name in names if re.search(r"/(build|\.git)(/|$)|__pycache__", name)], [])

    def archive(self, sources, folder, name, umask):
        place = pathlib.Path(folder) / name
        ended = subprocess.run([sources / "packaging/make-source.sh", place], check=True, capture_output=True, text=True,
                               umask=umask, env={"PATH": os.environ["PATH"], "TZ": "Asia/Tokyo"})
        archive = pathlib.Path(ended.stdout.strip())
        self.assertEqual(archive, place / f"velmora-{version()}.tar.gz")
        return archive


if __name__ == "__main__":
    unittest.main()
