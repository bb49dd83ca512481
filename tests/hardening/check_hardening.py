#!/usr/bin/env python3
"""Checks that programs are built the way they are to be shipped.

    check_hardening.py PROGRAM...

Reads each with readelf and prints each breach, a line each; ends with 1 if there is one. A program is one that moves
in memory as a whole (PIE), whose table of foreign functions is resolved at the start and read-only from then on (full
RELRO), whose stack is no program (GNU_STACK without E), and which calls the stack protector. Among them, which are
all built with the same options, there is a call of a C library's function that knows how large its target is
(_FORTIFY_SOURCE): a small program may need none, where the compiler has seen that everything fits.
"""

import re
import subprocess
import sys


def readelf(option, program):
    return subprocess.run(["readelf", "--wide", option, program], check=True, capture_output=True, text=True).stdout


def breaches(program):
    header = readelf("--file-header", program)
    segments = readelf("--program-headers", program)
    dynamic = readelf("--dynamic", program)
    symbols = readelf("--dyn-syms", program)
    stack = re.search(r"GNU_STACK\s+(?:0x\w+\s+){5}(?P<flags>[RWE ]+)", segments)
    found = []
    if not re.search(r"Type:\s+DYN", header):
        found.append("does not move in memory")
    if "GNU_RELRO" not in segments:
        found.append("has no part that becomes read-only")
    if not re.search(r"\(FLAGS(_1)?\).*\bNOW\b", dynamic) and "BIND_NOW" not in dynamic:
        found.append("resolves functions while it runs")
    if not stack or "E" in stack["flags"]:
        found.append("has an executable stack")
    if "__stack_chk_fail" not in symbols:
        found.append("has no stack protector")
    return [f"{program}: {what}" for what in found]


def is_fortified(program):
    return re.search(r"\b__\w+_chk\b", readelf("--dyn-syms", program)) is not None


def main():
    found = [breach for program in sys.argv[1:] for breach in breaches(program)]
    if not any(is_fortified(program) for program in sys.argv[1:]):
        found.append("no program calls a fortified function")
    print("\n".join(found) if found else "Every program is hardened.")
    return 1 if found or len(sys.argv) < 2 else 0


if __name__ == "__main__":
    sys.exit(main())
