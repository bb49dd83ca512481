#!/usr/bin/env python3
"""Plants small faults in the logic, one at a time, and reports those that no test sees.

    mutants.py [--count N] [--folder NAME ...] [--jobs N] [--list] [SCRATCH]

The sources are copied to SCRATCH, by default build/mutants, and built there once; each fault then costs one file's
compiling, the linking of the programs that test it, and their running until one of them fails. The draw is the same
for the same sources. A fault that does not compile is no fault; the next one of its folder takes its place.

Ends with 1 when faults survived. Those that no test can see are named in CONTRIBUTING.md.
"""

import argparse
import concurrent.futures
import os
import pathlib
import re
import resource
import shutil
import subprocess
import sys
import tempfile
import time

from faults import drawn, faults_in

ROOT = pathlib.Path(__file__).resolve().parents[2]
COPIED = ["CMakeLists.txt", "cmake", "src", "tests", "packaging", "fuzz"]
LEAST_TIME_LIMIT = 20
MEMORY_LIMIT = 4 << 30


def mirror(source, target):
    """Makes the target the same; leaves alone what is the same already, so that it is not built anew."""
    if source.is_dir():
        target.mkdir(exist_ok=True)
        kept = {path.name for path in source.iterdir()}
        for path in target.iterdir():
            if path.name not in kept:
                shutil.rmtree(path) if path.is_dir() and not path.is_symlink() else path.unlink()
        for path in source.iterdir():
            mirror(path, target / path.name)
    elif source.is_symlink() or not target.exists() or target.read_bytes() != source.read_bytes():
        target.unlink(missing_ok=True)
        shutil.copy(source, target, follow_symlinks=False)  # new to the build, whatever its time


class Tree:
    """A copy of the sources with a build beside it."""

    def __init__(self, scratch, jobs):
        self.root = scratch / "tree"
        self.build = self.root / "build" / "quick"
        self.jobs = jobs
        self.seconds = {}  # that each program takes without a fault
        # The faulty objects are nobody's business; what is sound comes from the cache where there is one.
        self.environment = dict(os.environ, CCACHE_BASEDIR=str(self.root), CCACHE_NOHASHDIR="1",
                                LC_ALL="C.UTF-8", TZ="UTC")

    def prepare(self):
        for name in COPIED:
            mirror(ROOT / name, self.root / name)
        if not (self.build / "build.ninja").exists():
            subprocess.run(["cmake", "-G", "Ninja", "-B", self.build, "-S", self.root, "-DCMAKE_BUILD_TYPE=Debug",
                            "-DCMAKE_CXX_FLAGS_DEBUG=-O0", "-DKPX_WITH_QT=OFF", "-DKPX_BENCH=OFF"],
                           check=True, env=self.environment, stdout=subprocess.DEVNULL)
        if not self.make("all"):
            sys.exit("the sources do not build without a fault")
        self.environment["CCACHE_READONLY"] = "1"

    def make(self, target):
        done = subprocess.run(["cmake", "--build", self.build, "-j", str(self.jobs), "--target", target],
                              env=self.environment, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        return done.returncode == 0

    def folders(self):
        """The folders of the logic, in the order in which they are built."""
        listed = (self.root / "src" / "CMakeLists.txt").read_text()
        return re.findall(r"^add_subdirectory\((\w+)\)", listed, re.MULTILINE)

    def faults(self, folder):
        found = []
        for path in sorted((self.root / "src" / folder).glob("*.cpp")):
            found += faults_in(str(path.relative_to(self.root)), path.read_text())
        return found

    def programs(self, folder):
        """What tests the folder: its own program, the scenarios, then the programs of all others."""
        others = [name for name in self.folders() if name != folder]
        return [f"test_{folder}", "kpx_scenario"] + [f"test_{name}" for name in others]

    def exists(self, program):
        return re.search(rf"^build bin/{program}[: ]", (self.build / "build.ninja").read_text(), re.MULTILINE) is not None


def limited(command, environment, folder, seconds):
    """Whether the command ends well within its limits. A fault may loop, or eat all the memory there is."""
    try:
        done = subprocess.run(command, cwd=folder, env=environment, timeout=seconds, stdout=subprocess.DEVNULL,
                              stderr=subprocess.DEVNULL, stdin=subprocess.DEVNULL,
                              preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_AS, (MEMORY_LIMIT, MEMORY_LIMIT)))
        return done.returncode == 0
    except subprocess.TimeoutExpired:
        return False


def scenarios_pass(tree, environment, home, seconds):
    runner = tree.root / "tests" / "scenarios" / "run_scenarios.py"
    names = sorted(path.stem for path in runner.parent.glob("*.txt"))
    pieces = [names[start:start + 15] for start in range(0, len(names), 15)]
    failed = []

    def run(piece):
        command = [sys.executable, runner, tree.build / "bin" / "kpx_scenario", *piece]
        if not failed and not limited(command, environment, home, seconds):
            failed.append(piece)

    with concurrent.futures.ThreadPoolExecutor(tree.jobs) as pool:
        list(pool.map(run, pieces))
    return not failed


def passes(tree, program):
    with tempfile.TemporaryDirectory() as home:
        os.chmod(home, 0o755)  # tests of the superuser's go on as somebody else
        environment = dict(tree.environment, HOME=home, XDG_RUNTIME_DIR=home, TMPDIR=home)
        # A machine may be ten times as busy as it was.
        seconds = max(LEAST_TIME_LIMIT, 10 * tree.seconds.get(program, 60))
        if program == "kpx_scenario":
            return scenarios_pass(tree, environment, home, seconds)
        # What is tried on a hundred thousand records is tried on a few by another test.
        command = [tree.build / "bin" / program, "--gtest_fail_fast", "--gtest_brief=1", "--gtest_filter=-*HundredThousand*"]
        return limited(command, environment, home, seconds)


def check_soundness(tree):
    """Each program passes without a fault, or it would see any."""
    for program in filter(tree.exists, ["kpx_scenario"] + [f"test_{name}" for name in tree.folders()]):
        start = time.monotonic()
        if not passes(tree, program):
            sys.exit(f"{program} fails without a fault")
        tree.seconds[program] = time.monotonic() - start


def sees(tree, program):
    """What fails once and then passes has failed by chance."""
    return all(not (tree.make(program) and passes(tree, program)) for _ in range(2))


def seen_by(tree, fault, folder):
    """The program that sees the fault, "" when none does, None when it does not compile."""
    path = tree.root / fault.file
    sound = path.read_text()
    lines = sound.split("\n")
    lines[fault.line] = fault.after
    path.write_text("\n".join(lines))
    try:
        if not tree.make(f"kpx_{folder}"):
            return None
        for program in tree.programs(folder):
            if tree.exists(program) and sees(tree, program):
                return program
        return ""
    finally:
        path.write_text(sound)


def shares(numbers, count):
    """How many faults each folder gets: at least a few, else in proportion to what there is."""
    least = max(1, min(5, count // (2 * len(numbers))))
    total = sum(numbers.values())
    return {name: min(number, max(least, round(count * number / total))) for name, number in numbers.items()}


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    parser.add_argument("--count", type=int, default=120)
    parser.add_argument("--folder", action="append", help="only this one; may be given again")
    parser.add_argument("--jobs", type=int, default=os.cpu_count())
    parser.add_argument("--list", action="store_true", help="only tell which faults there are")
    parser.add_argument("scratch", nargs="?", type=pathlib.Path, default=ROOT / "build" / "mutants")
    options = parser.parse_args()

    tree = Tree(options.scratch.resolve(), options.jobs)
    tree.root.mkdir(parents=True, exist_ok=True)
    tree.prepare()
    faults = {name: tree.faults(name) for name in tree.folders() if not options.folder or name in options.folder}
    untested = [name for name, found in faults.items() if found and not tree.exists(f"test_{name}")]
    if untested:
        sys.exit(f"no program tests {', '.join(untested)}")
    if not options.list:
        check_soundness(tree)
    share = shares({name: len(found) for name, found in faults.items() if found}, options.count)
    planted, survivors = 0, []
    for folder, number in share.items():
        chosen, others = drawn(faults[folder], number)
        if options.list:
            print("\n".join(map(str, chosen)))
            continue
        while chosen:
            fault = chosen.pop(0)
            program = seen_by(tree, fault, folder)
            if program is None:
                chosen += others[:1]
                del others[:1]
                continue
            planted += 1
            print(f"{planted}. {fault}\n    {'seen by ' + program if program else 'SURVIVED'}", flush=True)
            if not program:
                survivors.append(fault)
    if options.list:
        return 0
    tree.make("all")
    print(f"\n{planted} faults planted, {len(survivors)} survived" + "".join(f"\n{fault}" for fault in survivors))
    return 1 if survivors else 0


if __name__ == "__main__":
    sys.exit(main())
