#!/usr/bin/env python3
"""Runs a command and watches what it and all that it starts ask the kernel for: whoever touches the network is named.

    watch_network.py COMMAND [ARGUMENT…]
    watch_network.py --self-test

Ends with the command's status, or with 1 where the network was touched. The print server of the machine itself, asked
for its printers, is no network; everything else that is no socket of the machine's own file system is.
"""

import re
import subprocess
import sys
import tempfile

CALLS = "socket,connect,bind,sendto,sendmsg,sendmmsg"
PRINTING = 631
LOOPBACK = re.compile(r'inet_addr\("127\.|inet_pton\(AF_INET6, "::1"')
PORT = re.compile(r"sin6?_port=htons\((\d+)\)")


def touches(line):
    """Whether a call as strace writes it goes beyond the machine."""
    call = re.match(r"\d+ +(\w+)\(", line)  # the second half of a call that was interrupted says nothing more
    if not call or re.search(r"AF_(UNIX|LOCAL)|sa_family=AF_UNSPEC", line):
        return False
    if call[1] == "socket":
        # A stream that was never connected has told nobody anything.
        return not re.search(r"AF_INET6?, SOCK_(STREAM|DGRAM)|AF_NETLINK", line)
    if "sa_family=" not in line:
        return False  # on a socket whose connecting has been seen
    if "AF_NETLINK" in line:
        return False  # the kernel's own list of interfaces
    port = PORT.search(line)
    return not (LOOPBACK.search(line) and port and int(port[1]) == PRINTING)


def watched(command):
    """The command's status, the calls that touched the network, and how many were seen at all."""
    with tempfile.NamedTemporaryFile("r", suffix=".strace", encoding="utf-8", errors="replace") as log:
        status = subprocess.run(["strace", "-f", "--seccomp-bpf", "-qq", "-e", f"trace={CALLS}", "-e", "signal=none",
                                 "-o", log.name] + command, check=False).returncode
        lines = log.read().splitlines()
    return status, [line for line in lines if touches(line)], len(lines)


def self_test():
    """A watch that sees nothing would be no watch."""
    connect = "import socket; s = socket.socket(socket.{}, socket.{}); s.settimeout(1); s.connect_ex(({!r}, {}))"
    rows = [("AF_INET", "SOCK_STREAM", "127.0.0.1", 9, True), ("AF_INET6", "SOCK_STREAM", "::1", 9, True),
            ("AF_INET", "SOCK_DGRAM", "127.0.0.1", 53, True), ("AF_INET", "SOCK_STREAM", "127.0.0.1", 631, False),
            ("AF_INET6", "SOCK_STREAM", "::1", 631, False)]
    wrong = []
    for family, kind, address, port, is_network in rows:
        code = connect.format(family, kind, address, port)
        _, seen, _ = watched([sys.executable, "-c", f"import subprocess, sys\n"
                              f"subprocess.run([sys.executable, '-c', {code!r}])"])
        if bool(seen) != is_network:
            wrong.append((family, kind, address, port, seen))
    for row in wrong:
        print("wrongly judged:", *row)
    return 1 if wrong else 0


def main():
    if sys.argv[1:] == ["--self-test"]:
        return self_test()
    status, seen, count = watched(sys.argv[1:])
    for line in seen:
        print("the network was touched:", line)
    if count == 0:
        print("nothing was seen: not even the display was asked for")
    return status or (1 if seen or count == 0 else 0)


if __name__ == "__main__":
    sys.exit(main())
