"""The examples of docs/scripts.md, run as they stand there."""
import json
import os
import subprocess
import unittest

from program import PROGRAM, ROOT, WINDOWS, Folder

FACE = "0\nSECTION\n2\nENTITIES\n0\n3DFACE\n8\nWALL\n" + "".join(
    f"{10 + i}\n{x}\n{20 + i}\n{y}\n{30 + i}\n0\n" for i, (x, y) in enumerate(((0, 0), (4, 0), (4, 3), (0, 3)))) + "0\nENDSEC\n0\nEOF\n"


@unittest.skipIf(WINDOWS, "examples for a shell")
class Scripts(Folder):
    def test_examples_run(self):
        (self.folder / "in").mkdir()
        (self.folder / "bin").mkdir()
        for name in ("a", "b", "c"):
            self.write(f"in/{name}.dxf", FACE)
        os.symlink(PROGRAM, self.folder / "bin/belvor-render")
        lines = (ROOT / "docs/scripts.md").read_text(encoding="utf-8").splitlines()
        examples = [line.strip() for line in lines if line.startswith("    ")]
        self.assertGreaterEqual(len(examples), 6)
        for example in examples:
            done = subprocess.run(["bash", "-c", example], cwd=self.folder, stderr=subprocess.PIPE, encoding="utf-8",
                                  env={**os.environ, "PATH": f"{self.folder}/bin:{os.environ['PATH']}"}, check=False)
            self.assertEqual((done.returncode, done.stderr.startswith("3 models: ")), (0, True), (example, done.stderr))
        self.assertEqual([path.name for path in sorted((self.folder / "out/plan").iterdir())],
                         ["a.omb", "a.png", "b.omb", "b.png", "c.omb", "c.png"])
        self.assertEqual([json.loads(line)["model"] for line in self.read("report.jsonl").splitlines()], ["in/a.dxf", "in/b.dxf", "in/c.dxf"])


if __name__ == "__main__":
    unittest.main()
