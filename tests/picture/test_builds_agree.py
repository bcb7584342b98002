"""The same command gives the same bytes from two builds: BELVOR_RENDER, and BELVOR_RENDER_OTHER beside it."""
import os
import unittest

from program import FORMATS, PROGRAM, SAMPLES, Folder, view_text

OTHER = os.environ.get("BELVOR_RENDER_OTHER", "")

# (model, size, view): the views are hard on the arithmetic, each in its own way.
SCENES = [
    ("square.thf", "800x600", None),
    ("square.thf", "500x400", view_text("3 -12 1.7", "0 20 9", "0.9")),    # most of it behind the eye
    ("square.thf", "400x300", view_text("-10 -20 4", "-10 20 4", "0.7")),    # edges in the eye's height
    ("gears.thf", "321x123", view_text("5 -40 0.5", "5 0 0.5", "0.45", 1)),    # edge on
    ("island.thf", "640x400", view_text("-20 -20 2", "30 30 3", "1.5", light="120 5 2")),
    ("letters.thf", "1x1", None),
    ("letters.thf", "1000x2", None),
    ("teapot.thf", "555x444", view_text("0 0 5", "1 1 5", "2.5")),    # inside the pot
    ("bunny.thf", "700x700", view_text("0 -9 5", "0 0 5", "0.05")),    # long focus
    ("plates.thf", "97x61", view_text("2 1 -4", "2 1.5 0", "0.8")),
]


class BuildsAgree(Folder):
    def made(self, program, arguments):
        """Every byte, by the name of the file."""
        outputs = [*(f"p.{name}" for name in FORMATS), "--edges", "--surfaces=embed", "--save-view=v.bvp"]
        info = self.render("--info", *arguments, *outputs, program=program)
        view_lines = self.read("v.bvp").replace(b"\r\n", b"\n")     # each system's own line ends
        return {"info": info, "view": view_lines} | {name: self.read(f"p.{name}") for name in FORMATS}

    def check(self, model, size, parameters):
        more = ["--view", self.write("in.bvp", parameters)] if parameters else []
        arguments = ["--size", size, *more, model if model == "plates.thf" else str(SAMPLES / model)]
        ours, theirs = self.made(PROGRAM, arguments), self.made(OTHER, arguments)
        self.assertEqual([name for name in ours if ours[name] != theirs[name]], [])
        return ours["png"]

    def test_scenes_and_samples(self):
        endings = (".thf", ".dxf", ".man")
        samples = sorted(str(path.relative_to(SAMPLES)) for path in SAMPLES.rglob("*") if path.suffix in endings)
        pictures = set()
        for scene in SCENES + [(sample, "320x240", None) for sample in samples]:
            with self.subTest(scene):
                pictures.add(self.check(*scene))
        self.assertGreater(len(pictures), len(SCENES) + 7)


def load_tests(loader, tests, pattern):
    return tests if OTHER else unittest.TestSuite()
