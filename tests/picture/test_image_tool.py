"""belvor-image: what it answers about Ombr files, its exit statuses, and what it leaves behind."""
import json
import os
import struct
import unittest

from files import Ombr, read_png
from program import PICTURES, PLATES, SAMPLES, TOOL, Folder, view_text

STRIDE = 552        # of a row of 61 pixels
WRONG_USE = (
    "", "inf", "info", "info p.omb p.omb", "at p.omb", "at p.omb 61,0", "at p.omb 1,-1", "at p.omb 1",
    "at p.omb 1,x", "convert p.omb q.omb", "convert p.omb q", "compare p.omb", "compare p.omb plates.thf",
    "compare p.omb small.omb", "compare p.omb other.omb", "compare p.omb p.omb --out p.omb",
    "compare p.omb p.omb --out d.tif", "compare p.omb p.omb --size 3x3",
    "compare plates.thf plates.thf --siz 3")


@unittest.skipUnless(os.path.exists(TOOL), "belvor-image is not built")
class ImageTool(Folder):
    def setUp(self):
        super().setUp()
        self.write("v.bvp", view_text("-3 -4 5", "2 1.5 0.5", "0.5"))
        self.render("--size", "61x47", "--view", "v.bvp", "plates.thf", *(f"p.{name}" for name in PICTURES))
        self.ombr = Ombr(self.read("p.omb"))

    def test_info_and_verify(self):
        about = json.loads(self.tool(0, "info", "p.omb"))
        self.assertEqual((about["width"], about["height"], about["rows"], about["units"]["code"]), (61, 47, [0, 47], 0))
        camera, ombr, numbers = about["camera"], self.ombr, self.ombr.pixels(2)
        self.assertEqual((*camera["eye"], camera["near"], camera["far"]), (*ombr.eye, ombr.near, ombr.far))
        self.assertEqual([(m["number"], m["name"], m["pixels"]) for m in about["materials"]],
                         [(number, name, numbers.count(number)) for number, _, name in ombr.materials])
        self.assertEqual(about["empty"], numbers.count(0))
        self.assertEqual(self.tool(0, "verify", "p.omb"), "")
        behind_row, data = 8 + 9 * 61, self.read("p.omb")
        (self.folder / "changed.omb").write_bytes(data[:behind_row] + b"x" + data[behind_row + 1:])
        self.assertEqual(json.loads(self.tool(1, "verify", "changed.omb"))["offset"], behind_row)
        (self.folder / "cut.omb").write_bytes(data[:-1])
        for broken in ("cut.omb", "plates.thf"):
            self.assertIn("fault", json.loads(self.tool(1, "verify", broken)))
            for command in ("info {}", "convert {} new.png"):
                self.refused(3, command.format(broken), broken, program=TOOL)

    def test_converted_files_are_those_of_the_render(self):
        before = self.names()
        for name in PICTURES[1:]:
            self.tool(0, "convert", "p.omb", f"c.{name}")
            made, drawn, pixels = self.read(f"c.{name}"), self.read(f"p.{name}"), 0
            if name in ("exr", "tif"):     # all but the bounds, which an Ombr file does not know
                self.assertEqual((b'"bounds"' in drawn, b'"bounds"' in made), (True, False))
                pixels = -2000 if name == "exr" else -47 * STRIDE
            self.assertEqual(made[pixels:], drawn[pixels:], name)
        self.assertEqual(set(self.names()) - set(before), {f"c.{name}" for name in PICTURES[1:]})

    def test_points(self):
        self.tool(0, "convert", "p.omb", "c.ply")
        head, points = self.read("c.ply").split(b"end_header\n", 1)
        self.assertIn(b"\ncomment material 1 Lower\n", head)
        codes, numbers, colours = (self.ombr.pixels(channel) for channel in (1, 2, 0))
        seen = [i for i, number in enumerate(numbers) if number]
        self.assertIn(b"element vertex %d\n" % len(seen), head)
        for i, (*point, r, g, b, number) in zip(seen, struct.iter_unpack("<3d3BH", points), strict=True):
            self.assertEqual(((r, g, b), number), (colours[i], numbers[i]))
            self.check_point(point, i)
        shown, nothing = map(json.loads, self.tool(0, "at", "p.omb", "30,23", "0,0").splitlines())
        self.assertEqual((nothing, shown["pixel"], shown["material"]), (None, [30, 23], "Lower"))
        self.check_point(shown["point"], 23 * 61 + 30)

    def check_point(self, point, i):
        for a, b in zip(point, self.ombr.point(i % 61, i // 61, self.ombr.pixels(1)[i])):
            self.assertAlmostEqual(a, b, delta=1e-12)

    def test_compare(self):
        same = json.loads(self.tool(0, "compare", "p.omb", "p.omb"))
        self.assertEqual((same["differ"]["any"], same["box"]), (0, None))
        places = ((20, 4 * 30), (21, 4 * 61 + 2 * 31), (22, 6 * 61 + 3 * 33))
        code, number, colour = (8 + STRIDE * row + at for row, at in places)
        data = bytearray(self.read("p.omb"))
        data[code], data[number], data[colour] = data[code] ^ 1, 3 - data[number], data[colour] ^ 255
        (self.folder / "changed.omb").write_bytes(data)
        found = json.loads(self.tool(1, "compare", "p.omb", "changed.omb", "--out", "d.png"))
        self.assertEqual((found["differ"], found["box"]), ({"colour": 1, "distance": 1, "material": 1, "any": 3}, [30, 20, 33, 22]))
        counts = {m["name"]: m for m in found["materials"]}
        self.assertEqual(abs(counts["Lower"]["a"] - counts["Lower"]["b"]), 1)
        reds = read_png(self.read("d.png"))[2][::3]
        dark = {i: red for i, red in enumerate(reds) if red < 191}
        self.assertEqual(dark, {20 * 61 + 30: 0, 21 * 61 + 31: 0, 22 * 61 + 33: 96})

    def test_compare_models(self):
        self.write("moved.thf", PLATES.replace("1.5 1.25 1", "1.1 1.25 1"))
        models = ("compare", "plates.thf")
        same = json.loads(self.tool(0, *models, "plates.thf", "--size", "80x60"))
        self.assertEqual((same["width"], same["differ"]["any"]), (80, 0))
        found = json.loads(self.tool(1, *models, "moved.thf", "--size", "80x60", "--out=d.png"))
        self.assertGreater(found["differ"]["material"], 2)
        self.assertEqual({m["name"] for m in found["materials"] if m["differ"]}, {"Upper", "Lower"})
        self.assertEqual(read_png(self.read("d.png"))[:2], (80, 60))
        larger = str(SAMPLES / "square.thf")      # another model, another depth range, the first one's view
        self.assertGreater(json.loads(self.tool(1, *models, larger, "--size", "80x60"))["differ"]["any"], 10)

    def test_wrong_use(self):
        self.render("--size", "60x47", "--view", "v.bvp", "plates.thf", "small.omb")
        self.render("--size", "61x47", "plates.thf", "other.omb")
        for line in WRONG_USE:
            self.refused(2, line, "belvor-", program=TOOL)
        for line in ("info missing.omb", "convert p.omb nowhere/q.png", "compare x.omb p.omb", "info ."):
            self.refused(3, line, "belvor-", program=TOOL)
        for option in ("--help", "--version"):
            self.assertIn("belvor-image", self.tool(0, option))
