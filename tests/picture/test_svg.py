"""SVG files: their segments, drawn by the rule for pixels, give the line pixels of the PNG of the same call; and what stands around them."""
import base64
import math
import xml.etree.ElementTree as ElementTree

from files import read_png
from program import SAMPLES, Folder

SVG, LABEL = "{http://www.w3.org/2000/svg}", "{http://www.inkscape.org/namespaces/inkscape}label"
HREF = "{http://www.w3.org/1999/xlink}href"

# 10 units wide, each of 2 cm.
TETRAHEDRON = """KRVT v5.1.0 MAN file
UNITS 3 2
MATERIAL brass 0.9 0.75 0.3
END
CLUMP wedge 4 4
0 0 0
10 0 0
0 10 0
0 0 10
brass
brass
brass
paint
EDGE 6
1 3 1 3
3 2 1 4
2 1 1 2
1 4 3 2
2 4 2 4
3 4 4 3
"""


def pixels_of_path(points):
    """The rule for a chain of straight lines, one pixel wide."""
    pixels = set()
    for a, b in zip(points, points[1:]):
        axis = 0 if abs(b[0] - a[0]) >= abs(b[1] - a[1]) else 1
        other = 1 - axis

        def cross(on, value):
            across = a[1 - on] + (b[1 - on] - a[1 - on]) * ((value - a[on]) / (b[on] - a[on]))
            return (value, math.floor(across + 0.5)) if on == 0 else (math.floor(across + 0.5), value), across

        first, last = math.ceil(min(a[axis], b[axis])), math.floor(max(a[axis], b[axis]))
        if a[axis] != b[axis]:
            pixels.update(cross(axis, value)[0] for value in range(first, last + 1))
        if a[other] != b[other]:
            for value in range(math.ceil(min(a[other], b[other])), math.floor(max(a[other], b[other])) + 1):
                pixel, across = cross(other, value)
                if first > last or across < first or across > last:
                    pixels.add(pixel)
    if not pixels:
        (x0, y0), (x1, y1) = points[0][:2], points[1][:2]
        pixels.add((math.floor((x0 + x1) * 0.5 + 0.5), math.floor((y0 + y1) * 0.5 + 0.5)))
    return pixels


class SvgFiles(Folder):
    def draw(self, *arguments):
        self.render(*arguments, "--line-colour", "#ffffff", "--surfaces", "off", "p.png", "p.svg")
        self.root = ElementTree.fromstring(self.read("p.svg"))
        self.paths = []
        for path in self.root.iter(SVG + "path"):
            self.assertRegex(path.get("d"), r"^(M[-\d.e+]+ [-\d.e+]+(L[-\d.e+]+ [-\d.e+]+)+)+$")
            for part in path.get("d").split("M")[1:]:
                self.paths.append([tuple(map(float, point.split(" "))) for point in part.split("L")])

    def check_pixels(self, *arguments):
        self.draw(*arguments)
        width, height, colours = read_png(self.read("p.png"))
        expected = {(i % width, i // width) for i in range(width * height) if colours[3 * i]}
        found = {(x, y) for path in self.paths for x, y in pixels_of_path(path) if 0 <= x < width and 0 <= y < height}
        self.assertGreater(len(expected), 50)
        self.assertEqual((sorted(expected - found)[:9], sorted(found - expected)[:9]), ([], []))

    def test_segments_give_the_pixels_of_the_picture(self):
        def view(eye, lookat, zoom, parallel=0):
            return f"Belvor View Parameters 1.0\n{eye}\n{lookat}\n{zoom}\n{parallel}\n0.4\n0.1\n-30 60 0.6\n"

        for model, size, edges, parameters in (
                ("plates.thf", "160x120", "--edges", None), ("square.thf", "400x300", "--edges", None), ("square.thf", "97x61", "--edges=all", None),
                ("square.thf", "300x200", "--edges", view("3 -12 1.7", "0 20 9", "0.9")), ("gears.thf", "321x123", "--edges=all", view("5 -40 0.5", "5 0 0.5", "0.45", 1)),
                ("letters.thf", "500x60", "--edges=all", None), ("teapot.thf", "222x222", "--edges", view("0 0 5", "1 1 5", "2.5")),
                ("bunny.thf", "200x200", "--edges", None)):
            with self.subTest(model=model, size=size, edges=edges):
                path = model if model == "plates.thf" else str(SAMPLES / model)
                more = ["--view", self.write("v.bvp", parameters)] if parameters else []
                self.check_pixels("--size", size, edges, *more, path)

    def test_ends_are_the_lines_own(self):
        """The plate's corners, projected exactly, stand in the file."""
        self.write("v.bvp", "Belvor View Parameters 1.0\n2 1.5 9\n2 1.5 0\n0.5\n1\n0.4\n0.1\n-30 60 0.6\n")
        self.draw("--size", "90x70", "--edges", "--view", "v.bvp", "plates.thf")
        ends = {(round(x - 45, 3), round(y - 35, 3)) for path in self.paths for x, y in (path[0], path[-1])}
        wide = max(x for path in self.paths for x, y in path) - 45
        corners = {(x * wide, y * wide) for a, b in ((1, 0.75), (0.5, 0.25), (0.25, 0.125)) for x in (a, -a) for y in (b, -b)}
        self.assertEqual(sorted(ends), sorted((round(x, 3), round(y, 3)) for x, y in corners))
        self.assertEqual(len(self.paths), 12, "all edges of both plates and the hole, none is hidden")

    def test_what_stands_around_the_paths(self):
        self.write("named.thf", (self.folder / "plates.thf").read_text().replace("Upper", "<a>&\u00fc\ufffe\"\x01"))
        self.draw("--size", "80x60", "--edges", "--line-width", "3", "named.thf")
        self.assertEqual([self.root.get(name) for name in ("viewBox", "width", "height")], ["-0.5 -0.5 80 60", "80px", "60px"])
        groups = {group.get("id"): group for group in self.root.findall(SVG + "g")}
        self.assertEqual({name: group.get(LABEL) for name, group in groups.items()}, {"m1": "Lower", "m2": '<a>&\u00fc\ufffd"\ufffd'})
        self.assertEqual(groups["m2"].find(SVG + "title").text, '<a>&\u00fc\ufffd"\ufffd')
        self.assertEqual([groups["m1"].get(name) for name in ("fill", "stroke-width", "stroke-linecap", "stroke-linejoin")], ["none", "3", "round", "round"])
        self.assertIsNone(self.root.find(SVG + "rect"))
        self.assertIsNone(self.root.find(SVG + "image"))
        self.render("--size", "80x60", "--edges", "--background", "#ffeedd", "plates.thf", "w.svg")
        self.assertEqual(ElementTree.fromstring(self.read("w.svg")).find(SVG + "rect").get("fill"), "#ffeedd")

    def test_a_parallel_view_of_a_model_with_units_has_a_size(self):
        self.write("v.bvp", "Belvor View Parameters 1.0\n3 3 40\n3 3 0\n0.5\n1\n0.4\n0.1\n-30 60 0.6\n")
        self.write("solid.man", TETRAHEDRON)
        self.draw("--size", "90x70", "--edges", "--view", "v.bvp", "solid.man")
        across = [x for path in self.paths for x, y in path]
        pixel = 10 / (max(across) - min(across))
        width, height = (float(self.root.get(name).removesuffix("mm")) for name in ("width", "height"))
        self.assertAlmostEqual(width, 90 * pixel * 20, delta=1e-6)      # a unit is 2 cm
        self.assertAlmostEqual(height, 70 * pixel * 20, delta=1e-6)

    def test_the_picture_beneath_has_no_lines(self):
        self.render("--size", "80x60", "plates.thf", "plain.png")
        self.render("--size", "80x60", "--edges", "plates.thf", "lines.png")
        self.render("--size", "80x60", "--edges", "--surfaces", "embed", "plates.thf", "p.svg", "p.png")
        image = ElementTree.fromstring(self.read("p.svg")).find(SVG + "image")
        kind, data = image.get(HREF).split(",")
        self.assertEqual((kind, [image.get(name) for name in ("x", "y", "width", "height")]), ("data:image/png;base64", ["-0.5", "-0.5", "80", "60"]))
        self.assertEqual(base64.b64decode(data, validate=True), self.read("plain.png"))
        self.assertEqual(self.read("p.png"), self.read("lines.png"))

    def test_only_with_lines(self):
        done = self.run_program("plates.thf", "p.svg")
        self.assertEqual((done.returncode, "p.svg" in self.names()), (2, False))
        self.assertIn("--edges", done.stderr)
