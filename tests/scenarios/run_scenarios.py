#!/usr/bin/env python3
"""Runs scenario scripts and compares each transcript with the expected one.

    run_scenarios.py PROGRAM [--update] [NAME ...]

Every NAME.txt beside this file (or only those named) is run by PROGRAM, the scenario runner, in a
throw-away folder of its own and must print exactly NAME.expected. --update writes NAME.expected from
what was printed; read the difference before committing it.

Lines at the head of a script say where it runs:

    # TZ=America/Santiago      the time zone, else America/New_York
    # LC_ALL=de_DE.UTF-8       the locale, else en_US.UTF-8
    # LC_TIME=sv_SE.UTF-8      likewise any variable LC_..., LANG or LANGUAGE; then LC_ALL is not set by itself
    # data: fixtures/house     a folder (relative to this one) copied into the household's data folder
    # files: fixtures/receipts a folder copied into $FILES
    # unchanged: NAME NAME     files of the data folder that must hold the same bytes at the end
    # status: 2                the exit status of the last run, else 0

Two places are written as placeholders, in scripts and in transcripts, as the real ones differ from run
to run: $DATA, the folder that holds the household's "Velmora" folder, and $FILES, a folder outside it.

A line "# run again" ends the program and starts it again on the same folders, with what follows;
"# run again LC_ALL=fr_FR.UTF-8" does so in another language.
"""

import argparse
import difflib
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

HERE = pathlib.Path(__file__).resolve().parent
TIME_LIMIT = 60


class Header:
    """What the comment lines at the head of a script say."""

    def __init__(self, script):
        self.environment = {"TZ": "America/New_York", "LC_ALL": "en_US.UTF-8"}
        self.folders = []
        self.unchanged = []
        self.status = 0
        own_locale = False
        for line in script.splitlines():
            if not line.startswith("#"):
                break
            if match := re.fullmatch(r"# (TZ|LC_[A-Z]+|LANG|LANGUAGE)=(.*)", line):
                if match[1] != "TZ" and not own_locale:
                    del self.environment["LC_ALL"]
                    own_locale = True
                self.environment[match[1]] = match[2]
            elif match := re.fullmatch(r"# (data|files): (\S+)", line):
                self.folders.append((match[1], match[2]))
            elif match := re.fullmatch(r"# unchanged: (.+)", line):
                self.unchanged.extend(match[1].split())
            elif match := re.fullmatch(r"# status: (\d+)", line):
                self.status = int(match[1])


def run(program, path):
    """The transcript of a script, and what went wrong with the program itself."""
    script = path.read_text(encoding="utf-8")
    header = Header(script)
    with tempfile.TemporaryDirectory(prefix="kpx-scenario-") as folder:
        root = pathlib.Path(folder).resolve()
        places = {"data": root / "data" / "Velmora", "files": root / "files"}
        (root / "data").mkdir()
        places["files"].mkdir()
        for place, source in header.folders:
            shutil.copytree(path.parent / source, places[place], dirs_exist_ok=True)
        before = {name: (places["data"] / name).read_bytes() for name in header.unchanged}
        environment = {
            "XDG_DATA_HOME": str(root / "data"),
            "XDG_CONFIG_HOME": str(root / "config"),
            "HOME": "/nonexistent",
            "PATH": os.environ.get("PATH", ""),
            **{name: value for name, value in os.environ.items() if name.endswith("SAN_OPTIONS")},
            **header.environment,
        }
        placeholders = [("$DATA", str(root / "data")), ("$FILES", str(places["files"]))]
        transcript, problems = "", []
        first, *others = re.split(r"^# run again(?: LC_ALL=(\S+))?$\n?", script, flags=re.MULTILINE)
        parts = [(None, first), *zip(others[::2], others[1::2])]
        for number, (language, part) in enumerate(parts):
            if language:
                environment["LC_ALL"] = language
            for placeholder, real in placeholders:
                part = part.replace(placeholder, real)
            part_file = root / f"part{number}.txt"
            part_file.write_text(part, encoding="utf-8")
            ended = subprocess.run([program, part_file], env=environment, cwd=root, capture_output=True,
                                   timeout=TIME_LIMIT, check=False)
            output = ended.stdout.decode("utf-8", "surrogateescape")
            for placeholder, real in placeholders:
                output = output.replace(real, placeholder)
            transcript += ("# run again\n" if number else "") + output
            wanted = header.status if number == len(parts) - 1 else 0
            if ended.returncode != wanted:
                errors = ended.stderr.decode("utf-8", "replace").strip()
                problems.append(f"ended with {ended.returncode} instead of {wanted}: {errors}")
        problems.extend(f"{name} has changed" for name, content in before.items()
                        if (places["data"] / name).read_bytes() != content)
    return transcript, problems


def check(program, path, update):
    transcript, problems = run(program, path)
    expected_path = path.with_suffix(".expected")
    encoded = transcript.encode("utf-8", "surrogateescape")
    if update and not problems:
        expected_path.write_bytes(encoded)
        return []
    expected = expected_path.read_bytes() if expected_path.exists() else None
    if expected is None:
        problems.append("has no expected transcript")
    elif expected != encoded:
        problems.extend(difflib.unified_diff(expected.decode("utf-8", "surrogateescape").splitlines(),
                                             transcript.splitlines(), "expected", "printed", lineterm="", n=1))
    return problems


def main():
    parser = argparse.ArgumentParser(description="Runs scenario scripts and compares their transcripts.")
    parser.add_argument("program")
    parser.add_argument("names", nargs="*", metavar="NAME")
    parser.add_argument("--update", action="store_true")
    arguments = parser.parse_intermixed_args()
    paths = [HERE / f"{name.removesuffix('.txt')}.txt" for name in arguments.names] or sorted(HERE.glob("*.txt"))
    failed = 0
    for path in paths:
        problems = check(pathlib.Path(arguments.program).resolve(), path, arguments.update)
        if problems:
            failed += 1
            print(f"{path.stem}:", *problems, sep="\n    ")
    for orphan in sorted(HERE.glob("*.expected")):
        if not orphan.with_suffix(".txt").exists():
            failed += 1
            print(f"{orphan.name} has no script")
    print(f"{len(paths) - min(failed, len(paths))} of {len(paths)} scenarios passed")
    return 1 if failed or not paths else 0


if __name__ == "__main__":
    sys.exit(main())
