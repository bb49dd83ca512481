#!/usr/bin/env python3
"""What Python's zoneinfo says of every zone of the system's database, and of some zones by rule.

Prints one line for each set of names with the same rules: the names, a tab, and for the first and the fifteenth
of each month from 1990 to 2040 the instant of midnight and the days reached 1, 30 and 90 times 86400 seconds later.
Days count from 1970-01-01.
"""

import datetime
import io
import pathlib
import zoneinfo

FOLDER = pathlib.Path("/usr/share/zoneinfo")
# Days counted with 29 February are left out: this oracle begins to count them a day early.
RULES = [
    "JST-9", "<-0330>3:30", "XXX23:59:59", "CET-1CEST,M3.5.0,M10.5.0/3", "EST5EDT,M3.2.0,M11.1.0",
    "NZST-12NZDT,M9.5.0,M4.1.0/3", "<-02>2<-01>,M3.5.0/-1,M10.5.0/0", "IST-2IDT,M3.4.4/26,M10.5.0",
    "IST-1GMT0,M10.5.0,M3.5.0/1", "<+1030>-10:30<+11>-11,M10.1.0,M4.1.0", "AAA3BBB,J60,J300",
    "AAA3BBB,J60/12,J300/-24", "EST5EDT,0/0,J365/25", "<+05>-5<+06>,M3.1.1/-167,M10.5.6/167",
]
DAYS = [datetime.date(year, month, day) for year in range(1990, 2041) for month in range(1, 13) for day in (1, 15)]
EPOCH = datetime.date(1970, 1, 1).toordinal()


def zone_of_rule(rule):
    """A database file that has nothing but the rule."""
    header = b"TZif2" + bytes(15) + b"".join(count.to_bytes(4, "big") for count in (0, 0, 0, 0, 1, 4))
    block = bytes(4) + b"\0\0" + b"LMT\0"
    return zoneinfo.ZoneInfo.from_file(io.BytesIO((header + block) * 2 + b"\n" + rule.encode() + b"\n"))


def expectations(zone):
    for day in DAYS:
        midnight = int(datetime.datetime(day.year, day.month, day.day, tzinfo=zone).timestamp())
        yield str(midnight)
        for later in (1, 30, 90):
            shown = datetime.datetime.fromtimestamp(midnight + later * 86400, zone)
            yield str(shown.toordinal() - EPOCH)


def main():
    same = {}
    for path in sorted(FOLDER.rglob("*")):
        name = str(path.relative_to(FOLDER))
        if not path.is_file() or name.startswith(("posix/", "right/")):
            continue
        content = path.read_bytes()
        if content.startswith(b"TZif"):
            same.setdefault(content, []).append(name)
    for content, names in same.items():
        print(" ".join(names), " ".join(expectations(zoneinfo.ZoneInfo.from_file(io.BytesIO(content)))), sep="\t")
    for rule in RULES:
        print(rule, " ".join(expectations(zone_of_rule(rule))), sep="\t")


if __name__ == "__main__":
    main()
