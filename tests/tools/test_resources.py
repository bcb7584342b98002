#!/usr/bin/env python3
"""resources/belvor.rc: no two items of one menu or one dialog have the same letter, and the keys that a menu shows are
those of the accelerator table."""
import collections
import pathlib
import re
import unittest

TEXT = (pathlib.Path(__file__).resolve().parents[2] / "resources/belvor.rc").read_text(encoding="utf-8")
NAMES = {"VK_RETURN": "Enter"} | {f"VK_F{n}": f"F{n}" for n in range(1, 13)}


def groups():
    """(name, texts) of the menu bar, each pop-up and each dialog."""
    found, stack, name = [], [], ""
    for line in TEXT.splitlines():
        item = re.match(r'\s*(?:POPUP|MENUITEM|[LCR]TEXT|RADIO\w*|(?:DEF)?PUSHBUTTON|GROUPBOX)\W*"([^"]*)"', line)
        if re.match(r"BEGIN$|\s*BEGIN$", line):
            stack.append((name, []))
        elif line.strip() == "END":
            found.append(stack.pop())
        elif item:
            if stack:
                stack[-1][1].append(item[1])
            name = item[1]
        elif re.match(r"\S+ (MENU|DIALOG)\b", line):
            name = line.split()[0]
    return found


class Resources(unittest.TestCase):
    def test_a_letter_belongs_to_one_item(self):
        for name, texts in groups():
            letters = collections.Counter(m[1].lower() for text in texts for m in re.finditer(r"&([^&])", text))
            self.assertEqual([c for c, n in letters.items() if n > 1], [], name)
        self.assertGreater(len(groups()), 9)

    def test_menus_show_the_keys_of_the_accelerators(self):
        shown = {m[2].strip(): m[1] for m in re.finditer(r'MENUITEM "[^"\\]*\\t([^"]*)", ([^,\n]*)', TEXT)}
        keys = {}
        for key, command, rest in re.findall(r'^    "?(\w+)"?, (ID_[\w +]+), VIRTKEY(.*)', TEXT, re.M):
            parts = [word for word in ("CONTROL", "SHIFT", "ALT") if word in rest]
            keys[command.strip()] = "+".join([p.capitalize().replace("Control", "Ctrl") for p in parts] + [NAMES.get(key, key)])
        for command, key in shown.items():
            self.assertEqual(keys.get(command), key, command)
        self.assertGreater(len(shown), 10)
        # Commands that had their captions before they had keys: those stay.
        self.assertEqual(set(keys) - set(shown), {"ID_CONTENTS", "ID_FULLSCREEN", "ID_SAVEPARAMETERS"})


unittest.main()
