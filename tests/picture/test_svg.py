"""SVG files: their segments, drawn by the rule for pixels, give the line pixels of the PNG of the same call; and what stands around them."""
import base64
import xml.etree.ElementTree as ElementTree
from types import SimpleNamespace

from files import read_png
from line_rule import Chain, Lines
from line_scenes import Scene
from program import PLATES, SAMPLES, Folder
from test_builds_agree import SCENES

SVG, LABEL = "{http://www.w3.org/2000/svg}", "{http://www.inkscape.org/namespaces/inkscape}label"
HREF = "{http://www.w3.org/1999/xlink}href"

class SvgFiles(Folder):
    def draw(self, *arguments):
        self.render(*arguments, "--line-colour", "#ffffff", "--surfaces", "off", "p.png", "p.svg")
        self.root = ElementTree.fromstring(self.read("p.svg"))
        self.paths = []
        for path in self.root.iter(SVG + "path"):
            self.assertRegex(path.get("d"), r"^(M[-\d.e+]+ [-\d.e+]+(L[-\d.e+]+ [-\d.e+]+)+)+$")
            for part in path.get("d").split("M")[1:]:
                self.paths.append([tuple(map(float, point.split(" "))) for point in part.split("L")])

    def test_segments_give_the_pixels_of_the_picture(self):
        scenes = [*SCENES[:5], SCENES[7], *((name, size, None) for name, size in (
            ("letters.thf", "500x60"), ("bunny.thf", "200x200"), ("plates.thf", "160x120"),
            ("square.thf", "97x61")))]
        for i, (model, size, parameters) in enumerate(scenes):
            with self.subTest(model=model, size=size):
                path = model if model == "plates.thf" else str(SAMPLES / model)
                more = ["--view", self.write("v.bvp", parameters)] if parameters else []
                self.draw("--size", size, ("--edges", "--edges=all")[i % 2], *more, path)
                self.assertGreater(self.pixels_that_agree(), 50)

    def pixels_that_agree(self):
        width, height, colours = read_png(self.read("p.png"))
        expected = {(k % width, k // width) for k in range(width * height) if colours[3 * k]}
        lines = Lines(SimpleNamespace(width=width, height=height), {}, 1)
        for path in self.paths:
            ends = [(x, y, 0) for x, y in path]
            lines.draw_segments(Chain([], "curve", 0, ()), list(zip(ends, ends[1:])))
        self.assertEqual(sorted(expected ^ lines.nearest.keys())[:9], [])
        return len(expected)

    def test_segments_of_random_scenes_give_the_pixels_of_the_picture(self):
        """In the last ones a line ends far outside, and just between two samples inside: counted from other ends it is rounded in another way."""
        for seed in (*range(20), 1093, 1149, 1280, 1590, 5022):
            with self.subTest(seed=seed):
                scene = Scene(seed)
                model = self.write("m.dxf" if scene.is_drawing else "m.thf", scene.model_text())
                self.draw("--size", "%dx%d" % scene.size, "--view", self.write("v.bvp", scene.view_text()),
                          "--edges=all", *["--lines"] * scene.is_drawing, model)
                self.pixels_that_agree()

    def test_what_stands_around_the_paths(self):
        self.write("named.thf", PLATES.replace("Upper", "<a>&\u00fc\ufffe\"\x01"))
        self.draw("--size", "80x60", "--edges", "--line-width", "3", "named.thf")
        self.assertEqual([self.root.get(name) for name in ("viewBox", "width", "height")], ["-0.5 -0.5 80 60", "80px", "60px"])
        upper, lower = self.root.findall(SVG + "g")
        names = ("id", LABEL, "fill", "stroke-width", "stroke-linecap", "stroke-linejoin")
        self.assertEqual([lower.get(name) for name in names], ["m1", "Lower", "none", "3", "round", "round"])
        self.assertEqual((upper.get(LABEL), upper.find(SVG + "title").text), ('<a>&\u00fc\ufffd"\ufffd',) * 2)
        self.assertEqual([self.root.find(SVG + name) for name in ("rect", "image")], [None, None])

    def test_a_parallel_view_of_a_model_with_units_has_a_size(self):
        parallel = ["--parallel", "--scale", "0.25"]
        for units, more, size in (("3 2", parallel, (450, 350, "mm")),    # a unit is 2 cm
                                  ("3 2", parallel, (5, 5, "mm")), ("3 2", parallel, (450, 5, "mm")), ("3 2", parallel, (5, 350, "mm")),
                                  ("3 2", [], (1, 1, "px")), ("3 1e308", parallel, (1, 1, "px")),
                                  ("3 2", [], (90, 70, "px")), ("0 2", parallel, (90, 70, "px")), ("3 1e308", parallel, (90, 70, "px"))):
            self.write("units.man", f"KRVT v5.1.0 MAN file\nUNITS {units}\nEND\n")
            pixels = [side // 5 if size[2] == "mm" else side for side in size[:2]]
            self.draw("--size", "%dx%d" % tuple(pixels), "--edges", *more, "units.man")
            width, height = self.root.get("width"), self.root.get("height")
            self.assertEqual((round(float(width[:-2]), 9), round(float(height[:-2]), 9), width[-2:]), size)

    def test_the_picture_beneath_has_no_lines(self):
        call = ("--size", "80x60", "--edges", "--background", "#ffeedd", "plates.thf")
        self.render(*call[:2], *call[3:], "plain.png")
        self.render(*call, "lines.png")
        self.render(*call, "--surfaces", "embed", "p.svg", "p.png")
        root = ElementTree.fromstring(self.read("p.svg"))
        self.assertEqual(root.find(SVG + "rect").get("fill"), "#ffeedd")
        image = root.find(SVG + "image")
        kind, data = image.get(HREF).split(",")
        self.assertEqual((kind, [image.get(name) for name in ("x", "y", "width", "height")]),
                         ("data:image/png;base64", ["-0.5", "-0.5", "80", "60"]))
        self.assertEqual(base64.b64decode(data, validate=True), self.read("plain.png"))
        self.assertEqual(self.read("p.png"), self.read("lines.png"))
