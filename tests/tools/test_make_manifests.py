#!/usr/bin/env python3
"""tools/make_manifests.py: each published file stands in the manifest that installs it, with its address and its hash."""
import hashlib
import json
import pathlib
import subprocess
import sys
import tempfile
import unittest

TOOL = pathlib.Path(__file__).resolve().parents[2] / "tools/make_manifests.py"
NAMES = [f"belvor-9.8.7-{bits}{end}" for bits in ("win64", "win32") for end in (".zip", "-setup.exe")]


class Manifests(unittest.TestCase):
    def test_files_have_their_hashes(self):
        with tempfile.TemporaryDirectory() as folder:
            top = pathlib.Path(folder)
            for name in NAMES:
                (top / name).write_bytes(name.encode())
            subprocess.run([sys.executable, TOOL, "9.8.7", "https://here.test/b/", top, *(top / name for name in NAMES)], check=True)
            hashes = {name: hashlib.sha256(name.encode()).hexdigest() for name in NAMES}
            scoop = json.loads((top / "scoop/belvor.json").read_text())
            for size, bits in ("64bit", "win64"), ("32bit", "win32"):
                name = f"belvor-9.8.7-{bits}.zip"
                self.assertEqual(scoop["architecture"][size], {"url": f"https://here.test/b/v9.8.7/{name}", "hash": hashes[name],
                                                               "extract_dir": f"belvor-9.8.7-{bits}"})
            installers = (top / "winget/Calderwood.Belvor.installer.yaml").read_text().split("- Architecture: ")[1:]
            for text, size, bits in zip(installers, ("x64", "x86"), ("win64", "win32"), strict=True):
                name = f"belvor-9.8.7-{bits}-setup.exe"
                self.assertTrue(text.startswith(f"{size}\n  InstallerUrl: https://here.test/b/v9.8.7/{name}\n"
                                                f"  InstallerSha256: {hashes[name].upper()}\n"), text)
            for path in (top / "winget").iterdir():
                self.assertIn("PackageVersion: 9.8.7\n", path.read_text())


unittest.main()
