#!/usr/bin/env python3
"""Counts the tests in the JUnit files that ctest wrote.

    count_tests.py [--none-left-out] FILE...

Prints "N passed, N failed" (and how many did not run, if any). A missing file counts as
0 tests. With --none-left-out the exit status is 1 if a test was skipped or disabled.
"""
import pathlib
import sys
import xml.etree.ElementTree


def main():
    strict = "--none-left-out" in sys.argv
    names = [name for name in sys.argv[1:] if not name.startswith("--")]
    total = failed = left_out = 0
    for name in filter(lambda n: pathlib.Path(n).exists(), names):
        suite = xml.etree.ElementTree.parse(name).getroot()
        total += int(suite.get("tests", 0))
        failed += int(suite.get("failures", 0))
        left_out += int(suite.get("skipped", 0)) + int(suite.get("disabled", 0))
        for case in suite.iter("testcase"):
            if strict and case.get("status") in ("notrun", "disabled"):
                print("did not run:", case.get("name"))
    if left_out:
        print(f"{left_out} did not run")
    print(f"{total - failed - left_out} passed, {failed} failed")
    return 1 if strict and (left_out or not total) else 0


if __name__ == "__main__":
    sys.exit(main())
