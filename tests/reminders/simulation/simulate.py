#!/usr/bin/env python3
"""Lives a made year of reminders and counts what became of them.

    simulate.py PROGRAM [--year] [--days N] [--reminders N] [--seed N]

PROGRAM is build/.../bin/reminder_simulation. Without --year (or KPX_LONG=1) 19 days are lived, with 50 reminders and
every kind of trouble among them; a year has 1,000. A made history of 40 prescriptions grows beside them, and every
prescription that the standing reminder names is held against a count made here, from the same files and without any
of the program's code.

Ends with 0 when every reminder that was promised came on its day, none came twice on a day, every click opened the
program, and the standing reminder named what was due, once.
"""

import argparse
import datetime
import os
import pathlib
import plistlib
import random
import re
import subprocess
import sys
import tempfile

FIRST = datetime.date(2026, 1, 1)
LEAD = 3
DAY = datetime.timedelta(days=1)


def stored(day):
    return day.strftime("%Y%m%d")


def record(number, fill):
    return {
        "MHPatientKey": f"Patient {number % 7}",
        "MHDrugKey": f"Tablet {number}",
        "MHPharmacyKey": "Pharmacy",
        "MHPrescriberKey": "Prescriber",
        "MHRxNumberKey": f"{1000 + number}",
        "MHFillTypeKey": "Initial" if fill["first"] else "Refill",
        "MHDispenseDateKey": stored(fill["day"]),
        "MHExpireDateKey": stored(fill["expires"]),
        "MHDaysSupplyKey": fill["supply"],
        "MHRefillsKey": 9,
        "MHRefillsRemainKey": fill["remaining"],
    }


def make_fills(chance, days):
    """The fills of 40 prescriptions, each with the day on which it is entered."""
    fills = []
    for number in range(40):
        supply = chance.choice([14, 28, 30, 60, 90])
        day = FIRST - chance.randrange(supply) * DAY
        remaining = chance.randrange(12)
        expires = day + chance.randrange(100, 500) * DAY
        first = True
        while day <= FIRST + days * DAY:
            fills.append((number, {"day": day, "supply": supply, "remaining": remaining, "expires": expires,
                                   "first": first}))
            if remaining == 0:
                break
            first = False
            remaining -= 1
            day += (supply + chance.choice([-2, 0, 0, 1, 3, 9, 20])) * DAY
    return fills


def write_histories(folder, fills, days):
    for number in range(days + 2):
        day = FIRST + number * DAY
        records = [record(prescription, fill) for prescription, fill in fills if fill["day"] <= day]
        with open(folder / f"{day}.plist", "wb") as file:
            plistlib.dump(records, file, fmt=plistlib.FMT_BINARY)


def due(records, missed_from, day):
    """The names that the standing reminder owes on a day, for all days since the last that it spoke for."""
    latest = {}
    for entry in records:
        key = (entry["MHPatientKey"], entry["MHDrugKey"])
        if key not in latest or latest[key]["MHDispenseDateKey"] < entry["MHDispenseDateKey"]:
            latest[key] = entry
    names = set()
    for (patient, drug), entry in latest.items():
        dispensed = datetime.datetime.strptime(entry["MHDispenseDateKey"], "%Y%m%d").date()
        following = dispensed + entry["MHDaysSupplyKey"] * DAY
        if entry["MHRefillsRemainKey"] <= 0 or entry["MHExpireDateKey"] <= stored(day):
            continue
        each = missed_from
        while each <= day:
            ahead = (following - each).days
            if ahead in (LEAD, 0) or (ahead < 0 and ahead % 7 == 0):
                names.add(f"{drug} for {patient}")
            each += DAY
    return names


def check_standing(folder, days, off, said):
    """Counts days on which the standing reminder said something else than what was due."""
    wrong = 0
    owed = 0
    spoken_for = FIRST
    seen_history = FIRST
    for number in range(1, days + 1):
        day = FIRST + number * DAY
        if day in off:
            continue
        with open(folder / f"{seen_history}.plist", "rb") as file:
            expected = due(plistlib.load(file), spoken_for + DAY, day)
        named = []
        more = 0
        for text in said.get(day, []):
            for line in text.split("|"):
                match = re.fullmatch(r"and (\d+) more", line)
                if match:
                    more += int(match[1])
                else:
                    named.append(line.partition(":")[0])
        if len(named) != len(set(named)) or not set(named) <= expected or len(named) + more != len(expected):
            print(f"standing on {day}: {sorted(named)} and {more}, due: {sorted(expected)}")
            wrong += 1
        owed += len(expected)
        spoken_for = day
        seen_history = day
    return owed, wrong


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("program")
    parser.add_argument("--year", action="store_true", default=os.environ.get("KPX_LONG") == "1")
    parser.add_argument("--days", type=int)
    parser.add_argument("--reminders", type=int)
    parser.add_argument("--seed", type=int, default=20260101)
    options = parser.parse_args()
    days = options.days or (365 if options.year else 19)
    reminders = options.reminders or (1000 if options.year else 50)
    with tempfile.TemporaryDirectory(prefix="kpx-year-") as name:
        folder = pathlib.Path(name)
        write_histories(folder, make_fills(random.Random(options.seed), days), days + 1)
        environment = {**os.environ, "XDG_RUNTIME_DIR": name}
        result = subprocess.run([options.program, name, str(days), str(reminders), str(options.seed)],
                                env=environment, stdout=subprocess.PIPE, text=True, errors="replace", check=False)
        off = set()
        said = {}
        for line in result.stdout.splitlines():
            words = line.split("\t")
            if words[0] == "off":
                off.add(datetime.date.fromisoformat(words[1]))
            elif words[0] == "standing":
                said.setdefault(datetime.date.fromisoformat(words[1]), []).append(words[2])
            else:
                print(line)
        owed, wrong = check_standing(folder, days, off, said)
    print(f"standing: {owed} names were due on {days - len(off)} days, wrong on {wrong}")
    return 1 if result.returncode != 0 or wrong or not owed else 0


if __name__ == "__main__":
    sys.exit(main())
