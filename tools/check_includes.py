#!/usr/bin/env python3
"""check_includes.py ROOT [--compile CXX] [--compile-windows CXX]

Reads every #include of the tree and the module table of docs/design.md, and reports each include that the table
does not allow, a name that is not a path from the root, <windows.h> and `#ifdef _WIN32` outside their places, a .cpp
that does not include its own header first, an include that goes round in a circle, and the library's sines and logarithms
where a picture depends on them. With a compiler, each header
must also compile alone: those that reach platform/win32/ with the Windows one, the others with the native one.
Exit status 1 when anything was reported.
"""
import argparse
import concurrent.futures
import pathlib
import re
import subprocess
import sys

FREE = ("tests", "bench", "fuzz")        # may include every module
WINDOWS_HEADERS = re.compile(r"(windows|windowsx|commctrl|commdlg|shellapi|shlobj|winuser|wingdi|winbase|winnt)\.h", re.I)
GOOGLETEST = "/usr/src/googletest/googletest/include"
INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]', re.M)
# Their last digits differ between systems, and a picture must not: calcore/Trigonometry.h has some that do not.
LIBRARY_FUNCTIONS = re.compile(r"\bstd::(sin|cos|tan|asin|acos|atan2?|exp2?|log(?:10|2|1p)?|pow|hypot|cbrt|fma)\s*\(")
PICTURE_FOLDERS = ("calcore/", "scene/", "render/", "readers/", "imagefile/", "cli/")
SYSTEM_TEST = re.compile(r"^\s*#\s*(?:el)?if.*\b(_WIN32|_WIN64|WIN32|__MINGW32__|__linux__|__unix__|_MSC_VER)\b", re.M)


def without_comments(text):
    return re.sub(r"/\*.*?\*/", "", re.sub(r"//[^\n]*", "", text), flags=re.S)


def read_table(design):
    """{module: set of the modules it may include}, closed over what those may include."""
    direct, everything = {}, []
    for row in re.findall(r"^\| \d+ \|(.*)\|(.*)\|(.*)\|$", design, re.M):
        modules = [name.rstrip("/") for name in re.findall(r"`([^`]+)`", row[0])]
        allowed = row[2].strip()
        if allowed == "nothing of ours":
            names = []
        elif allowed == "all of the above":
            names = list(everything)
        else:
            names = [name.strip() for name in allowed.split(",")]
        for module in modules:
            direct[module] = set(names)
        everything += modules
    unknown = {name for names in direct.values() for name in names} - set(direct)
    if not direct or unknown:
        raise SystemExit(f"module table not understood: {sorted(unknown) or 'no rows'}")

    def closure(module, seen):
        for name in direct[module] - seen:
            seen.add(name)
            closure(name, seen)
        return seen
    return {module: closure(module, set()) for module in direct}


def module_of(path, modules):
    """The longest module that is a folder above `path`."""
    parts = path.split("/")[:-1]
    while parts and "/".join(parts) not in modules:
        parts.pop()
    return "/".join(parts)


def windows_allowed(path):
    """May this file include <windows.h> (through platform/win32/Windows.h) and the headers that need it?"""
    return (path.startswith(("platform/win32/", "ui/", "app/", "tests/")) or path == "errors/Report.cpp"
            or (path.startswith("platform/") and path.endswith(".cpp")))


def check(files, table):
    """Faults of `files`, {path from the root: text}, as a list of lines."""
    faults, graph = [], {}
    for path, text in sorted(files.items()):
        code = without_comments(text)
        own = module_of(path, table)
        free = path.startswith(FREE)
        includes = [(kind, name) for kind, name in INCLUDE.findall(code)]
        ours = [name for kind, name in includes if kind == '"']
        graph[path] = [name for name in ours if name in files]
        if not own and not free:
            faults.append(f"{path}: its folder is not in the module table")
        if SYSTEM_TEST.search(code) and not path.startswith(("platform/", "resources/")):
            faults.append(f"{path}: a preprocessor test for the system outside platform/ and resources/")
        for name in LIBRARY_FUNCTIONS.findall(code) if path.startswith(PICTURE_FOLDERS) else ():
            faults.append(f"{path}: std::{name} gives other last digits on other systems")
        for kind, name in includes:
            if kind == "<":
                if name in files:
                    faults.append(f"{path}: <{name}> is ours and wants quotes")
                if WINDOWS_HEADERS.fullmatch(name):
                    if name.lower() == "windows.h" and path != "platform/win32/Windows.h":
                        faults.append(f"{path}: <{name}> instead of platform/win32/Windows.h")
                    elif not windows_allowed(path):
                        faults.append(f"{path}: <{name}> in a portable place")
                continue
            if name not in files:
                faults.append(f'{path}: "{name}" is no path from the root')
                continue
            target = module_of(name, table)
            if target == "platform/win32" and own != target:
                if not windows_allowed(path):
                    faults.append(f'{path}: "{name}" in a portable place')
            elif not free and target != own and target not in table.get(own, ()):
                faults.append(f'{path}: {own} may not include {target or name} ("{name}")')
        header = re.sub(r"\.cpp$", ".h", path)
        if path.endswith(".cpp") and header in files and (not ours or includes[0][1] != header):
            faults.append(f"{path}: its own header is not its first include")
    return faults + circles(graph)


def circles(graph):
    faults, done, trail = [], set(), []

    def visit(path):
        if path in trail:
            faults.append("circle: " + " -> ".join(trail[trail.index(path):] + [path]))
        elif path not in done:
            trail.append(path)
            for name in graph.get(path, ()):
                visit(name)
            trail.pop()
            done.add(path)
    for path in sorted(graph):
        visit(path)
    return faults


def reaches_windows(path, files, seen):
    if path.startswith("platform/win32/"):
        return True
    seen.add(path)
    return any(reaches_windows(name, files, seen)
               for kind, name in INCLUDE.findall(without_comments(files[path]))
               if kind == '"' and name in files and name not in seen)


def compile_alone(root, headers, compiler):
    def one(header):
        # Twice, so that a header without a guard is found as well.
        source = f'#include "{header}"\n#include "{header}"\n'
        result = subprocess.run([compiler, "-std=c++20", "-DUNICODE", "-D_UNICODE", "-I.", "-isystem", GOOGLETEST, "-fsyntax-only", "-x", "c++", "-"],
                                input=source, capture_output=True, text=True, cwd=root)
        return [] if result.returncode == 0 else [f"{header} does not compile alone:\n{result.stderr[:2000]}"]
    with concurrent.futures.ThreadPoolExecutor(2) as pool:
        return [fault for faults in pool.map(one, headers) for fault in faults]


def read_tree(root):
    return {path.relative_to(root).as_posix(): path.read_text(encoding="utf-8")
            for built in sorted(root.glob("*/CMakeLists.txt")) for path in sorted(built.parent.rglob("*"))
            if path.suffix in (".h", ".cpp", ".def", ".rc", ".hpp", ".cc")}


def main():
    arguments = argparse.ArgumentParser()
    arguments.add_argument("root", type=pathlib.Path)
    arguments.add_argument("--compile")
    arguments.add_argument("--compile-windows")
    options = arguments.parse_args()
    files = read_tree(options.root)
    table = read_table((options.root / "docs/design.md").read_text(encoding="utf-8"))
    faults = check({path: text for path, text in files.items() if not path.endswith(".rc")}, table)
    headers = [path for path in files if path.endswith(".h")]
    windows = {path for path in headers if reaches_windows(path, files, set())}
    if options.compile:
        faults += compile_alone(options.root, [path for path in headers if path not in windows], options.compile)
    if options.compile_windows:
        faults += compile_alone(options.root, sorted(windows), options.compile_windows)
    for fault in faults:
        print(fault)
    print(f"{len(files)} files, {len(headers)} headers, {len(faults)} faults")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
