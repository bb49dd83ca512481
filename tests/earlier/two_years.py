#!/usr/bin/env python3
"""Two simulated years of adding through the scenario runner: what is kept of each file stays within bounds.

    two_years.py kpx_scenario [ADDS]

Without a number it adds 400 times, with KPX_LONG in the environment 10,000 times. Half of all is crowded into the last
two days, so that the contents of a day and those that a deletion replaced reach their most.
"""

import collections
import os
import pathlib
import random
import subprocess
import sys
import tempfile

MOST = 160  # contents of each file
FORM = ["choose patientPopTab1 @0", "choose pharmacyPopTab1 @0", "choose drugPopTab1 @0",
        "choose prescriberPopTab1 @0", "choose fillTypeTab1 Initial", "paste daysSupply 30",
        "paste initialRefillsTab1 5", "paste totalCostTab1 12.50"]
LISTS = [("patientPopTab1", "Maintain Patients…", ["patientNamepatientSheet"], "patientSheet"),
         ("pharmacyPopTab1", "Maintain Pharmacies…", ["pharmacyNamepharmacySheet"], "pharmacySheet"),
         ("drugPopTab1", "Maintain Drugs…", ["drugNameDrugSheet", "drugDescDrugSheet"], "DrugSheet"),
         ("prescriberPopTab1", "Maintain Prescribers…", ["prescriberNamePrescriberSheet"], "PrescriberSheet")]


def list_add(kind, name):
    pop_up, title, fields, sheet = LISTS[kind]
    return ([f'choose {pop_up} "{title}"'] + [f"paste {field} {name}" for field in fields]
            + [f"click addBtn{sheet}", f"click closeBtn{sheet}"])


def list_delete(kind):
    pop_up, title, _, sheet = LISTS[kind]
    return [f'choose {pop_up} "{title}"', f"dblclick tableView{sheet} 1", f"click deleteBtn{sheet}",
            f"click closeBtn{sheet}"]


def script(adds):
    """The commands, and how many fills there are in the end."""
    random.seed(2024)
    two_years = 2 * 365 * 86400
    early = sorted(random.randrange(two_years - 2 * 86400) for _ in range(adds // 2))
    late = sorted(two_years - 2 * 86400 + random.randrange(2 * 86400) for _ in range(adds - adds // 2))
    lines = ["clock 2022-03-01T12:00:00", "start"]
    for kind in range(len(LISTS)):
        lines += list_add(kind, "First") + list_add(kind, "Second")
    now = 0
    for number, moment in enumerate(early + late):
        lines.append(f"tick {moment - now}")
        now = moment
        lines += FORM[:4] + [f"paste rxNumberTab1 {number + 1000}"] + FORM[4:] + ["click addBtnTab1"]
        if number % 4 == 0:
            lines += list_add(number // 4 % len(LISTS), f"Name-{number}")
        if moment in late and number % 3 == 0:
            lines += list_delete(number // 3 % len(LISTS))
    return lines + ["click earlierStatesMenuItem", "show tableViewEarlierStates"]


def main():
    adds = int(sys.argv[2]) if len(sys.argv) > 2 else 10000 if os.environ.get("KPX_LONG") else 400
    with tempfile.TemporaryDirectory() as folder:
        environment = {"PATH": os.environ["PATH"], "HOME": folder, "XDG_DATA_HOME": f"{folder}/data",
                       "XDG_CONFIG_HOME": f"{folder}/config", "TZ": "America/New_York", "LC_ALL": "en_US.UTF-8"}
        for name in ("data", "config"):
            os.mkdir(f"{folder}/{name}")
        ended = subprocess.run([sys.argv[1]], input="\n".join(script(adds)) + "\n", text=True, env=environment,
                               capture_output=True, check=False)
        told = ended.stdout.splitlines()
        first = next((number for number, line in enumerate(told) if '"ok":false' in line), len(told))
        refused = told[max(0, first - 9):first + 1] if first < len(told) else []
        assert ended.returncode == 0 and not refused, (ended.returncode, ended.stderr[-500:], refused)
        states = told[-1].count('"difference"')
        files = list((pathlib.Path(folder) / "data/Velmora").iterdir())
        assert len(files) == 5, files
        kept = collections.Counter(path.name.split(".")[0]
                                   for path in (pathlib.Path(folder) / "data/Velmora-earlier").iterdir())
        print(f"{adds} adds: {dict(kept)}, {states} states offered")
        assert set(kept) == {path.name for path in files}, kept
        assert max(kept.values()) <= MOST, kept
        assert max(kept.values()) > MOST // 3, "too few to tell"
        assert states > 50, states


if __name__ == "__main__":
    main()
