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
            scoop = json.loads((top / "scoop/belvor.json").read_text())["architecture"]
            winget = (top / "winget/Calderwood.Belvor.installer.yaml").read_text()
            for size, short, bits in (("64bit", "x64", "win64"), ("32bit", "x86", "win32")):
                name = f"belvor-9.8.7-{bits}"
                self.assertEqual(scoop[size], {"url": f"https://here.test/b/v9.8.7/{name}.zip",
                                               "hash": hashes[name + ".zip"], "extract_dir": name})
                self.assertIn(f"- Architecture: {short}\n  InstallerUrl: https://here.test/b/v9.8.7/{name}-setup.exe\n"
                              f"  InstallerSha256: {hashes[name + '-setup.exe'].upper()}\n", winget)
            for path in (top / "winget").iterdir():
                self.assertIn("PackageVersion: 9.8.7\n", path.read_text())


unittest.main()
