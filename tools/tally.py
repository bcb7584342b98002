#!/usr/bin/env python3
"""tally.py RESULTS.xml...: counts the test cases of JUnit-style reports (GoogleTest's and ctest's).

Prints "PASSED FAILED SKIPPED" on one line. A file that is missing or cut off counts as one failed case,
since its program died before it could say what it ran. RESULTS may be patterns. The names of failed cases go to
standard error.
"""
import glob
import sys
import xml.etree.ElementTree as tree


def outcome(case):
    if case.find("failure") is not None or case.find("error") is not None or case.get("status") == "fail":
        return "failed"
    if case.find("skipped") is not None or case.get("status") in ("notrun", "disabled"):
        return "skipped"
    return "passed"


def main():
    count = {"passed": 0, "failed": 0, "skipped": 0}
    for path in (path for pattern in sys.argv[1:] for path in sorted(glob.glob(pattern)) or [pattern]):
        try:
            cases = list(tree.parse(path).iter("testcase"))
        except (OSError, tree.ParseError) as fault:
            print(f"no test report: {fault}", file=sys.stderr)
            count["failed"] += 1
            continue
        for case in cases:
            result = outcome(case)
            count[result] += 1
            if result == "failed":
                print(f"failed: {case.get('classname', '')}.{case.get('name')}", file=sys.stderr)
    print(count["passed"], count["failed"], count["skipped"])


main()
