#!/usr/bin/env python3
"""run_tests.py FOLDER REPORT.xml: runs every test_*.py of the folder and leaves a report as JUnit's, which tools/tally.py counts."""
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


def main():
    suite = unittest.defaultTestLoader.discover(sys.argv[1])
    result = unittest.TextTestRunner(resultclass=Recorder, verbosity=2).run(suite)
    report = tree.Element("testsuite")
    for name, outcome in result.outcomes.items():
        case = tree.SubElement(report, "testcase", classname=name.rpartition(".")[0], name=name.rpartition(".")[2])
        if outcome:
            tree.SubElement(case, outcome)
    for fault, _ in result.errors:      # a module that could not be loaded never started a test
        if fault.id() not in result.outcomes and not hasattr(fault, "test_case"):
            tree.SubElement(tree.SubElement(report, "testcase", name=fault.id()), "failure")
    tree.ElementTree(report).write(sys.argv[2])
    return 0 if result.wasSuccessful() else 1


sys.exit(main())
