"""The examples of docs/scripts.md, run as they stand there."""
import json
import os
import re
import shutil
import subprocess
import unittest

from program import PROGRAM, ROOT, TOOL, WINDOWS, Folder

FACE = "0\nSECTION\n2\nENTITIES\n0\n3DFACE\n8\nWALL\n" + "".join(
    f"{10 + i}\n{x}\n{20 + i}\n{y}\n{30 + i}\n0\n" for i, (x, y) in enumerate(((0, 0), (4, 0), (4, 3), (0, 3)))) + "0\nENDSEC\n0\nEOF\n"
TEXT = (ROOT / "docs/scripts.md").read_text(encoding="utf-8")
FILES = dict(re.findall(r"(?ms)^```\w+ (\S+)\n(.*?)^```", TEXT))


@unittest.skipIf(WINDOWS, "examples for a shell")
class Scripts(Folder):
    def setUp(self):
        super().setUp()
        for name in ("in", "bin"):
            (self.folder / name).mkdir()
        for program in (PROGRAM, TOOL):
            os.symlink(program, self.folder / "bin" / os.path.basename(program))
        for name, text in FILES.items():
            self.write(name, text)
        self.shell = {"cwd": self.folder, "env": {**os.environ, "PATH": f"{self.folder}/bin:{os.environ['PATH']}", "HOME": str(self.folder)}}

    def test_examples_run(self):
        for name in ("a", "b", "c"):
            self.write(f"in/{name}.dxf", FACE)
        examples = [line.strip() for line in re.sub(r"(?ms)^```.*?^```", "", TEXT).splitlines() if line.startswith("    ")]
        self.assertGreaterEqual(len(examples), 14)
        for example in examples:
            needed = next((word for word in ("make ", "ninja", "parallel") if word in example and not shutil.which(word.strip())), None)
            if needed or ("belvor-image" in example and not os.path.exists(TOOL)):
                continue
            done = subprocess.run(["bash", "-c", example], stderr=subprocess.PIPE, stdout=subprocess.DEVNULL, encoding="utf-8", check=False, **self.shell)
            self.assertEqual((done.returncode, done.stderr.startswith("3 models: ")), (0, example.startswith(("belvor-render", "find in -name '*.dxf' -print0"))
                                                                                       and "--each" in example), (example, done.stderr))
        self.assertEqual([path.name for path in sorted((self.folder / "out/plan").iterdir())],
                         ["a.omb", "a.png", "b.omb", "b.png", "c.omb", "c.png"])
        self.assertEqual([json.loads(line)["model"] for line in self.read("report.jsonl").splitlines()], ["in/a.dxf", "in/b.dxf", "in/c.dxf"])
        for folder, tool in (("made", "make"), ("drawn", "ninja"), ("farm", "bash")):
            self.assertEqual(len(self.tree(folder)), 3 if shutil.which(tool) else 0, folder)

    def test_policy_follows_the_statuses(self):
        rows = re.findall(r"(?m)^\| ([\d, ]+) \|.*\| (yes|no) \|$", TEXT)
        final = sorted(int(number) for numbers, retry in rows if retry == "no" for number in numbers.split(","))
        listed = re.search(r"values: \[(.*)\]", FILES["job.yaml"])[1]
        self.assertEqual(sorted(map(int, listed.split(", "))), final)
