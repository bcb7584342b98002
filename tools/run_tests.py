#!/usr/bin/env python3
"""run_tests.py FOLDER REPORT.xml: runs every test_*.py of the folder, each in a process of its own and as many at once as there are
processors, and leaves a report as JUnit's, which tools/tally.py counts."""
import concurrent.futures
import io
import os
import pathlib
import sys
import unittest
import xml.etree.ElementTree as tree


class Recorder(unittest.TextTestResult):
    """Remembers the outcome of each test; one with several failed sub-tests failed once."""

    def __init__(self, *arguments):
        super().__init__(*arguments)
        self.outcomes = {}

    def stopTest(self, test):
        super().stopTest(test)
        faulty = {getattr(case, "test_case", case).id() for case, _ in self.failures + self.errors}
        skipped = {case.id() for case, _ in self.skipped}
        name = test.id()
        self.outcomes[name] = "failure" if name in faulty else "skipped" if name in skipped else None


def run_module(name):
    """The outcome of each test by its name, and what the tests tell."""
    stream = io.StringIO()
    suite = unittest.defaultTestLoader.loadTestsFromName(name)
    result = unittest.TextTestRunner(stream=stream, resultclass=Recorder, verbosity=2).run(suite)
    for fault, _ in result.errors:      # what fails before any test of its class has begun
        if fault.id() not in result.outcomes and not hasattr(fault, "test_case"):
            result.outcomes[fault.id()] = "failure"
    return result.outcomes, stream.getvalue()


def main():
    folder = pathlib.Path(sys.argv[1])
    sys.path.insert(0, str(folder))
    names = sorted(path.stem for path in folder.glob("test_*.py"))
    report, passed = tree.Element("testsuite"), bool(names)
    with concurrent.futures.ProcessPoolExecutor(os.cpu_count()) as pool:
        for outcomes, told in pool.map(run_module, names):
            print(told, end="", file=sys.stderr, flush=True)
            for name, outcome in outcomes.items():
                case = tree.SubElement(report, "testcase", classname=name.rpartition(".")[0], name=name.rpartition(".")[2])
                if outcome:
                    tree.SubElement(case, outcome)
                passed = passed and outcome != "failure"
    tree.ElementTree(report).write(sys.argv[2])
    return 0 if passed else 1


sys.exit(main())
