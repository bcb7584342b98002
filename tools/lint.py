#!/usr/bin/env python3
"""lint.py REPORT.xml [--build FOLDER]: source files out of format, and what clang-tidy reports.

Every .h and .cpp that git knows must be as clang-format leaves it. With --build, a folder with compile_commands.json,
each .cpp named there but the tests, benchmarks and fuzzers goes through clang-tidy with the checks of .clang-tidy;
a unity build takes a third of the time, since it reads the library's headers once for several files.
Leaves a JUnit-style report of two cases, and prints what was found. Exit status 1 when anything was.
"""
import argparse
import concurrent.futures
import json
import os
import pathlib
import subprocess
import sys
import xml.etree.ElementTree as tree

ROOT = pathlib.Path(__file__).resolve().parent.parent
# GCC decides about these: clang counts the members of an enclosing class as shadowed.
NO_WARNINGS = ("--extra-arg=-Wno-shadow", "--extra-arg=-Wno-sign-conversion", "--extra-arg=-Wno-unknown-warning-option")
NOT_TIDIED = ("tests/", "bench/", "fuzz/", "build/")


def output_of(*command):
    return subprocess.run(command, cwd=ROOT, capture_output=True, text=True)


def out_of_format():
    listed = output_of("git", "ls-files", "-z", "*.cpp", "*.h")
    files = [name for name in listed.stdout.split("\0") if name and (ROOT / name).exists()]
    if listed.returncode != 0 or not files:
        return "git lists no source files: " + listed.stderr
    result = output_of("clang-format", "--dry-run", "-Werror", *files)
    return result.stderr if result.returncode != 0 else ""


def tidied(build):
    commands = json.loads((build / "compile_commands.json").read_text())
    names = (pathlib.Path(entry["file"]) for entry in commands)
    inside = (path.relative_to(ROOT).as_posix() for path in names if path.is_relative_to(ROOT))
    return sorted(name for name in set(inside) if "/Unity/" in name or not name.startswith(NOT_TIDIED))


def tidy(build):
    files = tidied(build)
    if not files:
        return "no file to check in " + str(build)

    def one(name):
        result = output_of("clang-tidy", "-p", str(build), "--quiet", *NO_WARNINGS, name)
        return result.stdout + result.stderr if result.returncode != 0 else ""
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        return "".join(pool.map(one, files))


def main():
    arguments = argparse.ArgumentParser()
    arguments.add_argument("report")
    arguments.add_argument("--build", type=pathlib.Path)
    options = arguments.parse_args()
    report, clean = tree.Element("testsuite"), True
    checks = {"format": out_of_format}
    if options.build:
        checks["tidy"] = lambda: tidy(options.build.resolve())
    for name, check in checks.items():
        found = check()
        case = tree.SubElement(report, "testcase", classname="lint", name=name)
        if found:
            print(found)
            tree.SubElement(case, "failure")
            clean = False
    tree.ElementTree(report).write(options.report)
    return 0 if clean else 1


sys.exit(main())
