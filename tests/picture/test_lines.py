"""Pictures with lines of random scenes, compared bit for bit with what line_rule.py works out."""
import pathlib
import random
import shutil
import tempfile
import unittest

from files import Ombr
from line_rule import edge_chains, picture
from line_scenes import Scene
from program import WINDOWS, Folder
from surface_rule import Eye, shade, surfaces

SCENES = 10 if WINDOWS else 800      # Wine takes its time to start a program
MEMORY = pathlib.Path("/dev/shm")    # a disk takes its time to keep a picture


def some_options(r):
    """Options of the program, and what they are for picture()."""
    choices = [(0.4, ["--line-width", "3"], {"line_width": 3}), (0.2, ["--line-width", "5"], {"line_width": 5}),
               (0.1, ["--line-width", "15"], {"line_width": 15}), (0.2, ["--line-colour", "#0a14ff"], {"line_colour": (10, 20, 255)}),
               (0.3, ["--background", "#fe8001"], {"background": (254, 128, 1)}), (0.2, ["--surfaces", "off"], {"shown": False})]
    words, settings = [], {}
    for chance, option, setting in choices:
        if r.random() < chance and option[0] not in words:
            words += option
            settings |= setting
    return words, settings


class RandomScenes(Folder):
    def setUp(self):
        super().setUp()
        if MEMORY.is_dir() and not WINDOWS:
            self.folder = pathlib.Path(tempfile.mkdtemp(dir=MEMORY))
            self.addCleanup(shutil.rmtree, self.folder)

    def shot(self, scene, *options):
        self.render("--view", "v.bvp", "--size", "%dx%d" % scene.size, *options, self.name, "p.omb")
        return Ombr(self.read("p.omb"))

    def check(self, seed):
        scene, r = Scene(seed), random.Random(seed)
        self.name = self.write("m.dxf" if scene.is_drawing else "m.thf", scene.model_text())
        self.write("v.bvp", scene.view_text())
        edges = r.choice(([], ["--edges"], ["--edges=all"]))
        with_curves = scene.is_drawing and (scene.all_bounds or not scene.facets or not edges or r.random() < 0.7)
        options, settings = some_options(r)
        options += edges + ["--lines"] * with_curves + ["--bounds", "all"] * scene.all_bounds + ["--threads", str(r.randint(1, 3))]

        drawn = self.shot(scene, *options)
        facets, chains = scene.read(with_curves)
        eye = Eye(drawn, scene.eye, scene.zoom, *scene.bounds())
        shade(eye, facets, scene.lights)
        owners = surfaces(eye, facets)
        if facets and not scene.all_bounds:
            self.compare("without lines", self.shot(scene), picture(eye, owners, []))
        if edges:
            chains += edge_chains(eye, facets, "=" in edges[0])
        self.compare(options, drawn, picture(eye, owners, chains, **settings))

    def compare(self, what, ombr, expected):
        for channel, name in enumerate(("colours", "depths", "materials")):
            pairs = list(zip(ombr.pixels(channel), expected[channel]))
            wrong = [(i % ombr.width, i // ombr.width, *pair) for i, pair in enumerate(pairs) if pair[0] != pair[1]]
            self.assertFalse(wrong, f"{name}, {what}: {len(wrong)} pixels: (column, row, is, should be)")

    def test_random_scenes(self):
        for seed in range(SCENES):
            with self.subTest(seed=seed):
                self.check(seed)


if __name__ == "__main__":
    unittest.main()
