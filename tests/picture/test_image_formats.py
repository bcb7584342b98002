"""The picture files for other programs, read by libraries that are not ours: the values of the Ombr file."""
import json
import os
import pathlib
import struct
import subprocess
import tempfile
import unittest

from files import Ombr
from foreign_readers import build_openexr_reader
from program import PICTURES, PLATES, Folder, view_text

HERE = pathlib.Path(__file__).resolve().parent
SYSTEM_PYTHON = "/usr/bin/python3"
WIDTH, HEIGHT = 61, 47


def times(matrix, axis, point):
    return sum(p * matrix[4 * row + axis] for row, p in enumerate((*point, 1)))


class ImageFormats(Folder):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        program = os.path.join(folder.name, "exr_values")
        cls.readers = dict(os.environ, EXR_VALUES=program if build_openexr_reader(program) else "")

    def draw(self, parallel=0, size=(WIDTH, HEIGHT)):
        self.write("v.bvp", view_text("-3 -4 5", "2 1.5 0.5", 0.5, parallel))
        self.write("named.thf", PLATES.replace("Upper", 'Gr\u00fcn"'))
        self.call = ("--size", "{}x{}".format(*size), "--view", "v.bvp", "named.thf")
        self.render(*self.call, *(f"p.{name}" for name in PICTURES))
        self.ombr = ombr = Ombr(self.read("p.omb"))
        scale = ombr.far - ombr.near
        self.distances = [1e10 if code == 4294967295 else ombr.near + code * scale / 4294967294
                          for code in ombr.pixels(1)]
        count, colours = len(self.distances), b"".join(ombr.rows[0])
        self.expected = {
            "colour": colours, "halves": b"".join(struct.pack("<e", byte / 255) for byte in colours),
            "code": b"".join(ombr.rows[1]), "material": b"".join(ombr.rows[2]),
            "float": struct.pack(f"<{count}f", *self.distances), "double": struct.pack(f"<{count}d", *self.distances),
            "number": struct.pack(f"<{count}I", *ombr.pixels(2)),
        }
        self.assertGreater(len(set(ombr.pixels(2))), 2, "both plates and nothing are seen")

    def foreign(self, library, file, part):
        if not os.path.exists(SYSTEM_PYTHON):
            self.skipTest("no system interpreter")
        words = [SYSTEM_PYTHON, str(HERE / "foreign_readers.py"), library, str(self.folder / file), part]
        done = subprocess.run(words, capture_output=True, timeout=300, env=self.readers)
        if done.returncode == 77:
            self.skipTest(f"{library} is not installed")
        self.assertEqual(done.returncode, 0, done.stderr.decode(errors="replace"))
        return done.stdout

    def test_values_read_by_other_libraries(self):
        self.draw()
        own = {"colour": "colour", "material": "material"}
        for library, file, parts in (
                ("numpy", "p.npy", own | {"code": "code", "distance": "double"}),
                ("pillow", "p.png", {"colour": "colour"}), ("pillow", "p.tif", own),
                ("libtiff", "p.tif", own | {"distance": "float"}),
                ("libtiff", "p.omb", own | {"distance": "code"}),
                ("openexr", "p.exr", {"colour": "halves", "distance": "float", "code": "code", "material": "number"})):
            for part, expected in parts.items():
                with self.subTest(library=library, file=file, part=part):
                    self.assertEqual(self.foreign(library, file, part), self.expected[expected])

    def test_pfm_without_a_library(self):
        self.draw(size=(9, 7))
        rows = [self.expected["float"][36 * y:36 * y + 36] for y in range(6, -1, -1)]
        self.assertEqual(self.read("p.pfm"), b"Pf\n9 7\n-1.0\n" + b"".join(rows))

    def test_sizes_at_the_borders_of_blocks(self):
        for size in ("3x16", "3x17", "1x1", "300x2"):
            self.render("--size", size, "plates.thf", "p.omb", "p.exr", "p.tif")
            rows = Ombr(self.read("p.omb")).rows
            for library, file, part in (("openexr", "p.exr", "code"), ("libtiff", "p.tif", "material"),
                                        ("libtiff", "p.omb", "material")):
                with self.subTest(size=size, file=file):
                    self.assertEqual(self.foreign(library, file, part), b"".join(rows[1 + (part != "code")]))

    def test_cryptomatte_leads_from_names_to_pixels(self):
        self.draw()
        names = json.loads(self.foreign("openexr", "p.exr", "text cryptomatte/be359d6/manifest"))
        self.assertEqual(set(names), {"Lower", 'Gr\u00fcn"'})
        ids = {number: int(names[name], 16) for number, _, name in self.ombr.materials}
        found = struct.unpack(f"<{WIDTH * HEIGHT}I", self.foreign("openexr", "p.exr", "number"))
        self.assertEqual(list(found), [ids.get(number, 0) for number in self.ombr.pixels(2)])

    def test_cameras_lead_from_points_to_their_pixels(self):
        for parallel in (0, 1):
            self.draw(parallel)
            ombr = self.ombr
            about = json.loads(self.foreign("pillow", "p.tif", "text description"))
            self.assertEqual(about, json.loads(self.foreign("openexr", "p.exr", "text belvor")))
            camera = about["camera"]
            self.assertEqual((about["width"], about["height"], about["units"]["scale"]), (WIDTH, HEIGHT, 1))
            materials = [(m["number"], tuple(m["colour"]), m["name"]) for m in about["materials"]]
            self.assertEqual(materials, ombr.materials)
            self.assertEqual((camera["near"], camera["far"], ombr.kind), (ombr.near, ombr.far, parallel))
            self.assertEqual(tuple(camera["origin" if parallel else "eye"]), ombr.eye)
            to_screen = struct.unpack("<16f", self.foreign("openexr", "p.exr", "text worldToNDC"))
            to_camera = struct.unpack("<16f", self.foreign("openexr", "p.exr", "text worldToCamera"))
            for i, (code, number, distance) in enumerate(zip(ombr.pixels(1), ombr.pixels(2), self.distances)):
                self.assertEqual(code == 4294967295, number == 0)
                if number == 0:
                    continue
                column, row = i % WIDTH, i // WIDTH
                point = ombr.point(column, row, code)
                sx, sy, _, w = (times(to_screen, axis, point) for axis in range(4))
                self.assertAlmostEqual(sx / w * WIDTH, column + 0.5, delta=1e-3)
                self.assertAlmostEqual(sy / w * HEIGHT, row + 0.5, delta=1e-3)
                self.assertAlmostEqual(times(to_camera, 2, point), distance, delta=1e-5)
