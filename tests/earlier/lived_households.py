#!/usr/bin/env python3
"""Lets households live by chance through the scenario runner, and compares what the sheet of earlier states offers with
what a second hand worked out: the rules of docs/formats.md, applied to all that was ever written.

    lived_households.py kpx_scenario [FIRST [COUNT]]

A life is named by its number. Without one there are a few short lives, with KPX_LONG in the environment many long ones.
"""

import datetime
import json
import os
import pathlib
import random
import shutil
import subprocess
import sys
import tempfile
import zoneinfo

ZONES = ["America/New_York", "Pacific/Apia", "Asia/Kathmandu", "America/Santiago", "Australia/Lord_Howe",
         "Africa/Cairo"]
DAY = 86400


class List:
    """One of the reference lists, as the sheet's columns and the scenario runner call it."""

    def __init__(self, column, one, pop_up, title, sheet, name_field, other_field):
        self.column, self.one, self.pop_up, self.title, self.sheet = column, one, pop_up, title, sheet
        self.name_field, self.other_field = name_field, other_field


LISTS = [
    List("patients", "patient", "patientPopTab1", "Maintain Patients…", "patientSheet",
         "patientNamepatientSheet", "patientAddrpatientSheet"),
    List("drugs", "drug", "drugPopTab1", "Maintain Drugs…", "DrugSheet", "drugNameDrugSheet", "drugDescDrugSheet"),
    List("pharmacies", "pharmacy", "pharmacyPopTab1", "Maintain Pharmacies…", "pharmacySheet",
         "pharmacyNamepharmacySheet", "pharmacyAddrpharmacySheet"),
]


class Content:
    """What a file held from one write to the next: a text for each name."""

    def __init__(self, since, entries):
        self.since, self.entries = since, dict(entries)
        self.until, self.was_deleted_from, self.is_kept = None, False, True


class File:
    """All contents that a file ever had."""

    def __init__(self):
        self.contents = []
        self.beginning_is_known = True

    def entries(self):
        return self.contents[-1].entries if self.contents else {}

    def replace(self, content, by_deletion):
        if self.contents:
            self.contents[-1].until = content.since
            self.contents[-1].was_deleted_from = by_deletion
        self.contents.append(content)

    def at(self, instant):
        """The last content of that second, or none; whether it can be had."""
        before = [content for content in self.contents if content.since <= instant]
        return (before[-1], before[-1].is_kept) if before else (None, self.beginning_is_known)

    def deletions(self, now):
        """Of the last thirty days, the last fifty."""
        return [content for content in self.contents
                if content.was_deleted_from and content.until >= now - 30 * DAY][-50:]


class Household:
    """The rules, at their plainest."""

    def __init__(self, zone):
        self.zone = zone
        self.files = [File() for _ in LISTS]
        self.instants = set()

    def write(self, place, entries, by_deletion, now):
        self.files[place].replace(Content(now, entries), by_deletion)
        self.instants.add(now)
        kept = self.kept_instants(now)
        for file in self.files:
            needed = [file.at(instant)[0] for instant in kept] + file.deletions(now)
            for content in file.contents[:-1]:
                content.is_kept = content.is_kept and any(content is other for other in needed)

    def lose_all_that_is_kept(self):
        for file in self.files:
            for content in file.contents[:-1]:
                content.is_kept = content.was_deleted_from = False
            file.beginning_is_known = not file.contents
        self.instants = {file.contents[-1].since for file in self.files if file.contents}

    def kept_instants(self, now):
        kept = set(sorted(instant for instant in self.instants if instant >= now - DAY)[-50:])
        today = datetime.datetime.fromtimestamp(now, self.zone).date()
        ends = [today - datetime.timedelta(days=days) for days in range(30)]
        ends += [datetime.date(today.year + (today.month - 1 - months) // 12, (today.month - 1 - months) % 12 + 1, 1)
                 for months in range(24)]
        for end in ends:
            kept.update(sorted(instant for instant in self.instants if instant < self.begin_of(end))[-1:])
        return kept

    def begin_of(self, day):
        """The first second whose local date is the day's or a later one."""
        low = int(datetime.datetime(day.year, day.month, day.day, tzinfo=datetime.timezone.utc).timestamp()) - 26 * 3600
        high = low + 52 * 3600
        while low < high:
            middle = (low + high) // 2
            if datetime.datetime.fromtimestamp(middle, self.zone).date() >= day:
                high = middle
            else:
                low = middle + 1
        return low

    def offered(self, now):
        """A row for each state: when, the counts, and the difference."""
        instants = [(instant, None, None) for instant in self.kept_instants(now)]
        instants += [(content.until, file, content) for file in self.files for content in file.deletions(now)]
        states = {}
        for instant, deleted_from, content in instants:
            found = [(content, True) if file is deleted_from else file.at(instant) for file in self.files]
            if all(is_kept for _, is_kept in found):
                state = [content for content, _ in found]
                states[tuple(map(id, state))] = state
        rows = []
        for state in states.values():
            difference = self.difference([content.entries if content else {} for content in state])
            if difference:
                when = max(content.since for content in state if content)
                local = datetime.datetime.fromtimestamp(when, self.zone).strftime("%Y-%m-%dT%H:%M:%S")
                rows.append((local, *(len(content.entries) if content else 0 for content in state), difference))
        return sorted(rows)

    def difference(self, earlier):
        parts, changed = [], 0
        for kind, file, then in zip(LISTS, self.files, earlier):
            now = file.entries()
            for sign, count in (("+", len(then.keys() - now.keys())), ("\u2212", len(now.keys() - then.keys()))):
                if count:
                    parts.append(f"{sign}{count} {kind.one if count == 1 else kind.column}")
            changed += sum(now[name] != then[name] for name in now.keys() & then.keys())
        return ", ".join(parts + [f"{changed} changed"] * (changed > 0))


class Life:
    """A household at the runner and at the rules at the same time."""

    def __init__(self, program, number, folder):
        self.chance = random.Random(number)
        self.zone = ZONES[number % len(ZONES)]
        self.household = Household(zoneinfo.ZoneInfo(self.zone))
        # Samoa left a day out at the end of 2011.
        year, month = (2011, 12) if self.zone == "Pacific/Apia" else (2023, self.chance.randint(1, 12))
        begin = datetime.datetime(year, month, self.chance.randint(1, 28), self.chance.randint(3, 23),
                                  tzinfo=self.household.zone)
        self.now = int(begin.timestamp())
        self.program, self.folder, self.runner = program, pathlib.Path(folder), None
        self.added = 0
        self.start()

    def start(self):
        environment = {"PATH": os.environ["PATH"], "HOME": "/nonexistent", "XDG_DATA_HOME": str(self.folder),
                       "XDG_CONFIG_HOME": str(self.folder / "config"), "TZ": self.zone, "LC_ALL": "en_US.UTF-8"}
        self.runner = subprocess.Popen([self.program], stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True,
                                       env=environment)
        begin = datetime.datetime.fromtimestamp(self.now, self.household.zone)
        self.do(f"clock {begin:%Y-%m-%dT%H:%M:%S}", "start")

    def end(self):
        self.runner.stdin.close()
        assert self.runner.wait() == 0

    def do(self, *commands):
        answer = {}
        for command in commands:
            self.runner.stdin.write(command + "\n")
            self.runner.stdin.flush()
            answer = {}
            while "ok" not in answer:
                answer = json.loads(self.runner.stdout.readline())
            assert answer["ok"], (command, answer)
        return answer

    def pass_time(self, seconds):
        if seconds:
            self.do(f"tick {seconds}")
            self.now += seconds

    def step(self):
        kind_of_gap = self.chance.random()
        self.pass_time(0 if kind_of_gap < 0.25 else
                       self.chance.randint(1, 3) if kind_of_gap < 0.35 else
                       self.chance.randint(60, 3600) if kind_of_gap < 0.65 else
                       self.chance.randint(3600, DAY) if kind_of_gap < 0.93 else
                       self.chance.randint(DAY, 9 * DAY) if kind_of_gap < 0.99 else
                       self.chance.randint(20 * DAY, 80 * DAY))
        place = self.chance.randrange(len(LISTS))
        kind = LISTS[place]
        entries = dict(self.household.files[place].entries())
        self.do(f'choose {kind.pop_up} "{kind.title}"')
        act = self.chance.random()
        if act < 0.55 or not entries:
            self.added += 1
            name = f"Name-{self.added:05d}"
            entries[name] = "first"
            self.do(f"paste {kind.name_field} {name}", f"paste {kind.other_field} first",
                    f"click addBtn{kind.sheet}")
        else:
            # The table's order is the names'.
            row = self.chance.randrange(len(entries))
            name = sorted(entries)[row]
            self.do(f"dblclick tableView{kind.sheet} {row}")
            if act < 0.8:
                del entries[name]
                self.do(f"click deleteBtn{kind.sheet}")
            else:
                self.added += 1
                entries[name] = f"other-{self.added}"
                self.do(f"paste {kind.other_field} {entries[name]}", f"click changeBtn{kind.sheet}")
        self.do(f"click closeBtn{kind.sheet}")
        self.household.write(place, entries, 0.55 <= act < 0.8 and name not in entries, self.now)

    def look(self):
        table = self.do("click earlierStatesMenuItem", "show tableViewEarlierStates")
        self.do("click closeBtnEarlierStatesSheet")
        shown = [(row["when"]["date"], *(row[kind.column] for kind in LISTS), row["difference"])
                 for row in table["rows"]]
        expected = self.household.offered(self.now)
        assert sorted(shown) == expected, {"missing": [row for row in expected if row not in shown],
                                           "too many": [row for row in shown if row not in expected]}
        return len(shown)

    def lose_all_that_is_kept(self):
        self.end()
        shutil.rmtree(self.folder / "Velmora-earlier")
        self.household.lose_all_that_is_kept()
        self.now += self.chance.randint(1, 2 * DAY)
        while datetime.datetime.fromtimestamp(self.now, self.household.zone).fold:
            self.now += 3600  # a clock that is set within an hour that comes twice means the first one
        self.start()


def has_attributes(folder):
    try:
        os.setxattr(folder, "user.velmora.tried", b"")
    except OSError:
        return False
    return True


def main():
    is_long = bool(os.environ.get("KPX_LONG"))
    first = int(sys.argv[2]) if len(sys.argv) > 2 else 0
    count = int(sys.argv[3]) if len(sys.argv) > 3 else 24 if is_long else 6
    steps = 200 if is_long else 60
    seen = 0
    for number in range(first, first + count):
        with tempfile.TemporaryDirectory() as folder:
            life = Life(sys.argv[1], number, folder)
            try:
                for step in range(steps):
                    life.step()
                    if life.chance.random() < 0.2:
                        life.pass_time(life.chance.choice([0, 0, 60, DAY, 31 * DAY]))
                        seen += life.look()
                    if step == steps // 2 and number % 2 == 1 and has_attributes(folder):
                        life.lose_all_that_is_kept()
                        seen += life.look()
                life.end()
            except AssertionError as wrong:
                sys.exit(f"life {number}, {life.zone}, step {step}, {life.now}: {wrong}")
    print(f"{count} lives of {steps} steps, {seen} rows as they should be")
    assert seen > 5 * count, "too few to tell"


if __name__ == "__main__":
    main()
