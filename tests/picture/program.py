"""Runs belvor-render as a script does. BELVOR_RENDER names the program (a .exe runs under Wine); BELVOR_SANITIZED is set when it
was built with sanitizers, which take too much address space for the test of full memory."""
import hashlib
import os
import pathlib
import shutil
import signal
import subprocess
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
SAMPLES = ROOT / "samples"
PROGRAM = os.environ.get("BELVOR_RENDER", str(ROOT / "build/release/bin/belvor-render"))
TOOL = os.environ.get("BELVOR_IMAGE") or PROGRAM.replace("belvor-render", "belvor-image")
WINDOWS = PROGRAM.endswith(".exe")
SANITIZED = bool(os.environ.get("BELVOR_SANITIZED"))

PICTURES = ("omb", "png", "exr", "tif", "npy", "pfm")
FORMATS = (*PICTURES, "svg")

# A shell that starts the tests in the background has them ignore Ctrl-C, and programs pass that on to those they start.
signal.signal(signal.SIGINT, signal.default_int_handler)

# Two plates, one over the other, the upper with a hole.
PLATES = """Y 8  0 0 0  4 0 0  4 3 0  0 3 0   1 1 1  3 1 1  3 2 1  1 2 1   0 1
1 Lower
4 1 2 3 4
Y 8  1 1 1  3 1 1  3 2 1  1 2 1   1.5 1.25 1  1.5 1.75 1  2.5 1.75 1  2.5 1.25 1   0 2
2 Upper
4 1 2 3 4  4 5 6 7 8
end
"""


# A model that is refused.
BAD = "Y 3 0 0 0 1 0 0 0 1 0 1 1 2"


def view_text(eye, lookat, zoom, parallel=0, light="-30 60 0.6"):
    """The text of a view file."""
    return f"Belvor View Parameters 1.0\n{eye}\n{lookat}\n{zoom}\n{parallel}\n0.4\n0.1\n{light}\n"


def command(program=PROGRAM):
    return (["wine"] if program.endswith(".exe") else []) + [program]


class Folder(unittest.TestCase):
    """A test with a folder of its own, in which the program runs."""

    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp())
        self.addCleanup(shutil.rmtree, self.folder)
        self.write("plates.thf", PLATES)

    def write(self, name, text):
        (self.folder / name).write_text(text, encoding="utf-8", newline="")
        return name

    def read(self, name):
        return (self.folder / name).read_bytes()

    def names(self):
        return sorted(path.name for path in self.folder.iterdir())

    def tree(self, folder="."):
        """The digest of every file below the folder, by its path there."""
        top = self.folder / folder
        files = [path for path in top.rglob("*") if path.is_file()]
        return {str(path.relative_to(top)): hashlib.sha256(path.read_bytes()).hexdigest() for path in files}

    def start(self, *arguments, **options):
        options = {"stdout": subprocess.DEVNULL, "stderr": subprocess.DEVNULL, "encoding": "utf-8"} | options
        options |= {"cwd": self.folder, "stdin": subprocess.DEVNULL}
        return subprocess.Popen(command() + list(arguments), **options)

    def run_program(self, *arguments, program=PROGRAM, **options):
        """The finished process; output as text unless `encoding` is None."""
        if "input" not in options:
            options["stdin"] = subprocess.DEVNULL
        options = {"stdout": subprocess.PIPE, "encoding": "utf-8", "timeout": 300} | options
        return subprocess.run(command(program) + list(arguments), cwd=self.folder, stderr=subprocess.PIPE,
                              errors=options["encoding"] and "replace", **options)

    def render(self, *arguments, program=PROGRAM):
        done = self.run_program("--quiet", *arguments, program=program)
        self.assertEqual((done.returncode, done.stderr), (0, ""), arguments)
        return done.stdout

    def tool(self, status, *arguments):
        done = self.run_program(*arguments, program=TOOL)
        self.assertEqual((done.returncode, done.stderr), (status, ""), arguments)
        return done.stdout

    def refused(self, status, arguments, *says, **options):
        """The call, a list or a line, ends with that status, says each of `says` and changes no file."""
        before = self.tree(), self.names()
        done = self.run_program(*(arguments.split() if isinstance(arguments, str) else arguments), **options)
        self.assertEqual(done.returncode, status, (arguments, done.stderr))
        told = done.stderr if isinstance(done.stderr, str) else done.stderr.decode()
        self.assertTrue(told.strip(), "a failure must say why")
        for text in says:
            self.assertIn(text, told, arguments)
        self.assertEqual((self.tree(), self.names()), before, arguments)
        return done
