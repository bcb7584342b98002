#!/usr/bin/env python3
"""tools/check_includes.py itself: each fault that it looks for is found in a small made-up tree, and nothing else is."""
import pathlib
import sys
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "tools"))
from check_includes import check, read_table

DESIGN = """
| 1 | `low/` | `A` | nothing of ours |
| 1 | `platform/`, `platform/win32/` | | nothing of ours |
| 2 | `middle/`, `middle/deep/` | `B` | low |
| 3 | `errors/` | | platform |
| 4 | `scene/` | | middle |
| 9 | `ui/` | | all of the above |
"""
WINDOWS = '#include "platform/win32/Windows.h"\n'
TREE = {
    "low/A.h": "#include <string>\n",
    "low/A.cpp": '#include "low/A.h"\n',
    "middle/B.h": '#include "low/A.h"\n// #include "scene/C.h" is only spoken of here\n',
    "middle/deep/D.h": '#include "low/A.h"\n',
    "scene/C.h": '#include "middle/B.h"\n#include "low/A.h"\n',      # low by way of middle
    "platform/win32/Windows.h": "#ifdef _WIN32\n#include <windows.h>\n#endif\n",
    "platform/P.cpp": WINDOWS,
    "errors/Report.cpp": WINDOWS,
    "ui/Window.h": WINDOWS + "#include <commctrl.h>\ndouble a = std::sin(1.0);\n",
    "tests/ATest.cpp": '#include "scene/C.h"\n',
}
FAULTS = [      # (why, the file that is changed, its text, the fault)
    ("arrow upwards", "low/A.h", '#include "middle/deep/D.h"\n', "low may not include middle"),
    ("arrow sideways", "middle/B.h", '#include "platform/P.cpp"\n', "middle may not include platform"),
    ("folder not in the table", "attic/E.h", "", "not in the module table"),
    ("path from beside", "middle/B.h", '#include "A.h"\n', "no path from the root"),
    ("ours in angle brackets", "middle/B.h", "#include <low/A.h>\n", "wants quotes"),
    ("windows.h in person", "ui/Window.h", "#include <Windows.h>\n", "instead of platform/win32/Windows.h"),
    ("windows.h in a header of platform", "platform/P.h", WINDOWS, "in a portable place"),
    ("windows.h elsewhere in errors", "errors/Other.cpp", WINDOWS, "in a portable place"),
    ("common controls low down", "middle/B.h", "#include <commctrl.h>\n", "in a portable place"),
    ("test for the system", "middle/B.h", "#if defined(_WIN32)\n#endif\n", "preprocessor test for the system"),
    ("own header not first", "low/A.cpp", '#include <string>\n#include "low/A.h"\n', "own header"),
    ("a sine that a picture depends on", "scene/C.h", "double a = std::sin(1.0);\n", "std::sin gives other last digits"),
    ("a circle", "middle/B.h", '#include "middle/B.h"\n', "circle: middle/B.h -> middle/B.h"),
]


class CheckIncludes(unittest.TestCase):
    def test_a_good_tree_has_no_fault(self):
        self.assertEqual(check(TREE, read_table(DESIGN)), [])

    def test_each_fault_is_found(self):
        for why, path, text, fault in FAULTS:
            with self.subTest(why):
                self.assertIn(fault, "\n".join(check({**TREE, path: text}, read_table(DESIGN))))

    def test_a_table_that_names_an_unknown_module_is_refused(self):
        with self.assertRaises(SystemExit):
            read_table("| 1 | `low/` | | high |\n")


unittest.main()
