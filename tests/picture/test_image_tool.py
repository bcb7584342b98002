"""belvor-image: what it answers about Ombr files, its exit statuses, and what it leaves behind."""
import json
import os
import struct
import unittest

from files import Ombr, read_png
from program import SAMPLES, TOOL, Folder

STRIDE = 552        # of a row of 61 pixels


@unittest.skipUnless(os.path.exists(TOOL), "belvor-image is not built")
class ImageTool(Folder):
    def setUp(self):
        super().setUp()
        self.write("v.bvp", "Belvor View Parameters 1.0\n-3 -4 5\n2 1.5 0.5\n0.5\n0\n0.4\n0.1\n-30 60 0.6\n")
        self.outputs = [f"p.{name}" for name in ("omb", "png", "exr", "tif", "npy", "pfm")]
        self.render("--size", "61x47", "--view", "v.bvp", "plates.thf", *self.outputs)
        self.ombr = Ombr(self.read("p.omb"))

    def tool(self, status, *arguments):
        done = self.run_program(*arguments, program=TOOL)
        self.assertEqual(done.returncode, status, (arguments, done.stderr))
        self.assertEqual(bool(done.stderr), status > 1, done.stderr)
        return done.stdout if status < 2 else done.stderr

    def changed(self, at, *new):
        data = bytearray(self.read("p.omb"))
        data[at:at + len(new)] = bytes(new)
        (self.folder / "changed.omb").write_bytes(data)
        return "changed.omb"

    def test_info_and_verify(self):
        about = json.loads(self.tool(0, "info", "p.omb"))
        self.assertEqual((about["width"], about["height"], about["rows"], about["units"]["code"]), (61, 47, [0, 47], 0))
        self.assertEqual((tuple(about["camera"]["eye"]), about["camera"]["near"], about["camera"]["far"]), (self.ombr.eye, self.ombr.near, self.ombr.far))
        numbers = self.ombr.pixels(2)
        self.assertEqual([(m["number"], m["name"], m["pixels"]) for m in about["materials"]],
                         [(number, name, numbers.count(number)) for number, _, name in self.ombr.materials])
        self.assertEqual(about["empty"], numbers.count(0))
        self.assertEqual(self.tool(0, "verify", "p.omb"), "")
        behind_row = 8 + 9 * 61
        self.assertEqual(json.loads(self.tool(1, "verify", self.changed(behind_row, 1)))["offset"], behind_row)
        (self.folder / "cut.omb").write_bytes(self.read("p.omb")[:-1])
        for broken in ("cut.omb", "plates.thf"):
            self.assertIn("fault", json.loads(self.tool(1, "verify", broken)))
            self.assertIn(broken, self.tool(3, "info", broken))
            self.assertIn(broken, self.tool(3, "convert", broken, "new.png"))
        self.assertFalse((self.folder / "new.png").exists())

    def test_converted_files_are_those_of_the_render(self):
        before = self.names()
        for name in ("png", "npy", "pfm"):
            self.tool(0, "convert", "p.omb", f"c.{name}")
            self.assertEqual(self.read(f"c.{name}"), self.read(f"p.{name}"), name)
        for name in ("exr", "tif"):     # all but the bounds, which an Ombr file does not know
            self.tool(0, "convert", "p.omb", f"c.{name}")
            self.assertEqual((b'"bounds"' in self.read(f"p.{name}"), b'"bounds"' in self.read(f"c.{name}")), (True, False))
            pixels = {"exr": 2000, "tif": 47 * STRIDE}[name]
            self.assertEqual(self.read(f"c.{name}")[-pixels:], self.read(f"p.{name}")[-pixels:])
        self.assertEqual(set(self.names()) - set(before), {"c.png", "c.npy", "c.pfm", "c.exr", "c.tif"}, "nothing is left beside")

    def test_points(self):
        self.tool(0, "convert", "p.omb", "c.ply")
        head, points = self.read("c.ply").split(b"end_header\n", 1)
        self.assertIn(b"\ncomment material 1 Lower\n", head)
        expected = []
        for i, (code, number, colour) in enumerate(zip(self.ombr.pixels(1), self.ombr.pixels(2), self.ombr.pixels(0))):
            if number:
                expected.append((self.ombr.point(i % 61, i // 61, code), colour, number))
        found = list(struct.iter_unpack("<3d3BH", points))
        self.assertEqual(len(found), len(expected))
        self.assertIn(b"element vertex %d\n" % len(found), head)
        for numbers, (point, colour, material) in zip(found, expected):
            self.assertEqual((numbers[3:6], numbers[6]), (colour, material))
            for a, b in zip(numbers, point):
                self.assertAlmostEqual(a, b, delta=1e-12)
        middle = self.ombr.pixels(1)[23 * 61 + 30]
        shown, nothing = self.tool(0, "at", "p.omb", "30,23", "0,0").splitlines()
        self.assertEqual((json.loads(nothing), json.loads(shown)["pixel"], json.loads(shown)["material"]), (None, [30, 23], "Lower"))
        for a, b in zip(json.loads(shown)["point"], self.ombr.point(30, 23, middle)):
            self.assertAlmostEqual(a, b, delta=1e-12)

    def test_compare(self):
        same = json.loads(self.tool(0, "compare", "p.omb", "p.omb"))
        self.assertEqual((same["differ"]["any"], same["box"]), (0, None))
        code, number, colour = 8 + STRIDE * 20 + 4 * 30, 8 + STRIDE * 21 + 4 * 61 + 2 * 31, 8 + STRIDE * 22 + 6 * 61 + 3 * 33
        self.changed(code, self.read("p.omb")[code] ^ 1)
        data = bytearray(self.read("changed.omb"))
        data[number] = 3 - data[number]
        data[colour] ^= 255
        (self.folder / "changed.omb").write_bytes(data)
        found = json.loads(self.tool(1, "compare", "p.omb", "changed.omb", "--out", "d.png"))
        self.assertEqual((found["differ"], found["box"]), ({"colour": 1, "distance": 1, "material": 1, "any": 3}, [30, 20, 33, 22]))
        counts = {m["name"]: m for m in found["materials"]}
        self.assertEqual(abs(counts["Lower"]["a"] - counts["Lower"]["b"]), 1)
        width, height, pixels = read_png(self.read("d.png"))
        dark = {i: pixels[3 * i] for i in range(width * height) if pixels[3 * i] < 128}
        self.assertEqual(dark, {20 * 61 + 30: 0, 21 * 61 + 31: 0, 22 * 61 + 33: 96})
        self.assertEqual(min(pixels[3 * i] for i in range(width * height) if i not in dark), 191)

    def test_compare_models(self):
        self.write("moved.thf", (self.folder / "plates.thf").read_text().replace("1.5 1.25 1", "1.1 1.25 1"))
        same = json.loads(self.tool(0, "compare", "plates.thf", "plates.thf", "--size", "80x60"))
        self.assertEqual((same["width"], same["differ"]["any"]), (80, 0))
        found = json.loads(self.tool(1, "compare", "plates.thf", "moved.thf", "--size", "80x60", "--out=d.png"))
        self.assertGreater(found["differ"]["material"], 2)
        self.assertEqual({m["name"] for m in found["materials"] if m["differ"]}, {"Upper", "Lower"})
        self.assertEqual(read_png(self.read("d.png"))[:2], (80, 60))
        larger = str(SAMPLES / "square.thf")      # another model, another depth range, the first one's view
        self.assertGreater(json.loads(self.tool(1, "compare", "plates.thf", larger, "--size", "80x60"))["differ"]["any"], 10)

    def test_wrong_use(self):
        self.render("--size", "60x47", "--view", "v.bvp", "plates.thf", "small.omb")
        self.render("--size", "61x47", "plates.thf", "other.omb")
        before = self.names()
        for status, arguments in (
                (2, []), (2, ["inf"]), (2, ["info"]), (2, ["info", "p.omb", "p.omb"]), (2, ["at", "p.omb"]), (2, ["at", "p.omb", "61,0"]),
                (2, ["at", "p.omb", "1,-1"]), (2, ["at", "p.omb", "1"]), (2, ["at", "p.omb", "1,x"]), (2, ["convert", "p.omb", "q.omb"]),
                (2, ["convert", "p.omb", "q"]), (2, ["compare", "p.omb"]), (2, ["compare", "p.omb", "plates.thf"]), (2, ["compare", "p.omb", "small.omb"]),
                (2, ["compare", "p.omb", "other.omb"]), (2, ["compare", "p.omb", "p.omb", "--out", "p.omb"]), (2, ["compare", "p.omb", "p.omb", "--out", "d.tif"]),
                (2, ["compare", "p.omb", "p.omb", "--size", "3x3"]), (2, ["compare", "plates.thf", "plates.thf", "--siz", "3x3"]),
                (3, ["info", "missing.omb"]), (3, ["convert", "p.omb", "nowhere/q.png"]), (3, ["compare", "missing.omb", "p.omb"]), (3, ["info", "."])):
            self.assertIn("belvor-", self.tool(status, *arguments))
        self.assertEqual(self.names(), before)
        for option in ("--help", "--version"):
            self.assertIn("belvor-image", self.tool(0, option))
