#!/usr/bin/env python3
"""The checker itself: each fault that it looks for is found in a small made-up tree, and nothing else is."""
import unittest

from check_includes import check, read_table

DESIGN = """
| floor | module | holds | may include |
|---|---|---|---|
| 1 | `low/` | `A` | nothing of ours |
| 1 | `platform/` | | nothing of ours |
| 1 | `platform/win32/` | | nothing of ours |
| 2 | `middle/`, `middle/deep/` | `B` | low |
| 3 | `app/errors/` | | platform |
| 4 | `roof/` | | middle |
| 8 | `ui/` | | all of the above |
| 9 | `app/shell/` | | all of the above |
"""
WINDOWS = '#include "platform/win32/Windows.h"\n'
TREE = {
    "low/A.h": "#include <string>\n",
    "low/A.cpp": '#include "low/A.h"\n',
    "middle/B.h": '#include "low/A.h"\n// #include "roof/C.h" is only spoken of here\n',
    "middle/deep/D.h": '#include "low/A.h"\n',
    "roof/C.h": '#include "middle/B.h"\n#include "low/A.h"\n',      # low by way of middle
    "platform/win32/Windows.h": "#ifdef _WIN32\n#include <windows.h>\n#endif\n",
    "platform/P.cpp": WINDOWS,
    "app/errors/Report.cpp": WINDOWS,
    "ui/Window.h": WINDOWS + "#include <commctrl.h>\n",
    "app/shell/Main.cpp": '#include "ui/Window.h"\n#include "roof/C.h"\n',
    "tests/ATest.cpp": '#include "roof/C.h"\n',
}


class CheckIncludes(unittest.TestCase):
    def faults(self, **changes):
        return check({**TREE, **{path.replace("__", "/").replace("_DOT_", "."): text for path, text in changes.items()}},
                     read_table(DESIGN))

    def test_a_good_tree_has_no_fault(self):
        self.assertEqual(self.faults(), [])

    def test_each_fault_is_found(self):
        cases = [
            ("arrow upwards", "low__A_DOT_h", '#include "middle/B.h"\n', "low may not include middle"),
            ("arrow sideways", "middle__B_DOT_h", '#include "platform/P.cpp"\n', "middle may not include platform"),
            ("module not named", "roof__C_DOT_h", '#include "app/errors/Report.cpp"\n', "roof may not include app/errors"),
            ("folder not in the table", "attic__E_DOT_h", "", "not in the module table"),
            ("path from beside", "middle__B_DOT_h", '#include "A.h"\n', "no path from the root"),
            ("ours in angle brackets", "middle__B_DOT_h", "#include <low/A.h>\n", "wants quotes"),
            ("windows.h in person", "ui__Window_DOT_h", "#include <Windows.h>\n", "instead of platform/win32/Windows.h"),
            ("windows.h low down", "low__A_DOT_h", WINDOWS, "in a portable place"),
            ("windows.h in a header of platform", "platform__P_DOT_h", WINDOWS, "in a portable place"),
            ("windows.h elsewhere in errors", "app__errors__Other_DOT_cpp", WINDOWS, "in a portable place"),
            ("common controls low down", "middle__B_DOT_h", "#include <commctrl.h>\n", "in a portable place"),
            ("test for the system", "middle__B_DOT_h", "#if defined(_WIN32)\n#endif\n", "preprocessor test for the system"),
            ("own header not first", "low__A_DOT_cpp", '#include <string>\n#include "low/A.h"\n', "own header"),
        ]
        for why, path, text, fault in cases:
            with self.subTest(why):
                self.assertTrue(any(fault in found for found in self.faults(**{path: text})), self.faults(**{path: text}))

    def test_library_functions_are_found_where_pictures_depend_on_them(self):
        text = "double a = std::sqrt(2.0) + std::atan2(1.0, 2.0);\n"
        found = check({"scene/A.cpp": text, "ui/A.cpp": text}, {"scene": set(), "ui": set()})
        self.assertEqual(found, ["scene/A.cpp: std::atan2 gives other last digits on other systems"])

    def test_a_circle_is_found(self):
        found = self.faults(low__A_DOT_h='#include "low/Z.h"\n', low__Z_DOT_h='#include "low/A.h"\n')
        self.assertEqual(found, ["circle: low/A.h -> low/Z.h -> low/A.h"])

    def test_a_table_that_names_an_unknown_module_is_refused(self):
        with self.assertRaises(SystemExit):
            read_table("| 1 | `low/` | | high |\n")


unittest.main()
