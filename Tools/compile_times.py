#!/usr/bin/env python3
"""Checks how long each source takes to compile.

    compile_times.py LOG [LIMIT]

Prints the five slowest objects and precompiled headers of a build. The exit status is 1 if one took
more than LIMIT seconds of CPU time (15 by default). LOG is the file that Tools/timed-compile wrote.
Only the last build of an object counts.
"""
import re
import sys


def read_log(path):
    seconds = {}
    with open(path, encoding="utf-8") as log:
        for line in log:
            times, _, made = line.rstrip("\n").partition("\t")
            parts = re.findall(r"(\d+)m([\d.]+)s", times)
            seconds[made] = sum(60 * int(minutes) + float(rest) for minutes, rest in parts)
    return seconds


def main():
    limit = float(sys.argv[2]) if len(sys.argv) > 2 else 15.0
    seconds = read_log(sys.argv[1])
    slowest = sorted(seconds, key=seconds.get, reverse=True)
    for name in slowest[:5]:
        print(f"{seconds[name]:7.1f} s  {name}")
    beyond = [name for name in slowest if seconds[name] > limit]
    print(f"{len(seconds)} sources in {sum(seconds.values()):.0f} s, {len(beyond)} over {limit:g} s")
    return 1 if beyond or not seconds else 0


if __name__ == "__main__":
    sys.exit(main())
