"""The picture files for other programs, read by libraries that are not ours: values are equal to those of the Ombr file of the same render."""
import json
import os
import pathlib
import struct
import subprocess
import tempfile
import threading
import unittest

from files import Ombr
from foreign_readers import build_openexr_reader
from program import WINDOWS, Folder, command

HERE = pathlib.Path(__file__).resolve().parent
SYSTEM_PYTHON = "/usr/bin/python3"
FORMATS = ("omb", "png", "exr", "tif", "npy", "pfm")
WIDTH, HEIGHT = 61, 47
VIEW = "Belvor View Parameters 1.0\n-3 -4 5\n2 1.5 0.5\n0.5\n{}\n0.4\n0.1\n-30 60 0.6\n"


def as_half(byte):
    return struct.pack("<e", byte / 255)


class ImageFormats(Folder):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        program = os.path.join(folder.name, "exr_values")
        cls.readers = dict(os.environ, EXR_VALUES=program if build_openexr_reader(program) else "")

    def draw(self, parallel=0, size=(WIDTH, HEIGHT)):
        self.write("v.bvp", VIEW.format(parallel))
        self.write("named.thf", (self.folder / "plates.thf").read_text().replace("Upper", 'Gr\u00fcn"'))
        self.render("--size", "{}x{}".format(*size), "--view", "v.bvp", "named.thf", *(f"p.{name}" for name in FORMATS))
        self.ombr = Ombr(self.read("p.omb"))
        scale = self.ombr.far - self.ombr.near
        self.distances = [1e10 if code == 4294967295 else self.ombr.near + code * scale / 4294967294 for code in self.ombr.pixels(1)]
        count, colours = len(self.distances), b"".join(self.ombr.rows[0])
        self.expected = {
            "colour": colours, "halves": b"".join(map(as_half, colours)), "code": b"".join(self.ombr.rows[1]), "material": b"".join(self.ombr.rows[2]),
            "float": struct.pack(f"<{count}f", *self.distances), "double": struct.pack(f"<{count}d", *self.distances),
            "number": struct.pack(f"<{count}I", *self.ombr.pixels(2)),
        }
        self.assertGreater(len(set(self.ombr.pixels(2))), 2, "both plates and nothing are seen")

    def foreign(self, library, file, part):
        if not os.path.exists(SYSTEM_PYTHON):
            self.skipTest("no system interpreter")
        done = subprocess.run([SYSTEM_PYTHON, str(HERE / "foreign_readers.py"), library, str(self.folder / file), part], stdout=subprocess.PIPE,
                              stderr=subprocess.PIPE, timeout=300, env=self.readers)
        if done.returncode == 77:
            self.skipTest(f"{library} is not installed")
        self.assertEqual(done.returncode, 0, done.stderr.decode(errors="replace"))
        return done.stdout

    def test_values_read_by_other_libraries(self):
        self.draw()
        tiff = {"colour": "colour", "distance": "float", "material": "material"}
        for library, file, parts in (
                ("numpy", "p.npy", tiff | {"code": "code", "distance": "double"}), ("pillow", "p.png", {"colour": "colour"}), ("pillow", "p.tif", tiff), ("libtiff", "p.tif", tiff),
                ("imagemagick", "p.png", {"colour": "colour"}), ("imagemagick", "p.tif", {"colour": "colour", "material": "material"}),
                ("openexr", "p.exr", {"colour": "halves", "distance": "float", "code": "code", "material": "number"})):
            for part, expected in parts.items():
                with self.subTest(library=library, file=file, part=part):
                    self.assertEqual(self.foreign(library, file, part), self.expected[expected])

    def test_pfm_without_a_library(self):
        self.draw(size=(9, 7))
        rows = [self.expected["float"][36 * y:36 * y + 36] for y in range(6, -1, -1)]
        self.assertEqual(self.read("p.pfm"), b"Pf\n9 7\n-1.0\n" + b"".join(rows))

    def test_sizes_at_the_borders_of_blocks(self):
        for size in ((3, 16), (3, 17), (1, 1), (300, 2)):
            self.render("--size", "{}x{}".format(*size), "plates.thf", "p.omb", "p.exr", "p.tif")
            with self.subTest(size=size):
                self.assertEqual(self.foreign("openexr", "p.exr", "code"), b"".join(Ombr(self.read("p.omb")).rows[1]))
                self.assertEqual(self.foreign("libtiff", "p.tif", "material"), b"".join(Ombr(self.read("p.omb")).rows[2]))

    def test_cryptomatte_leads_from_names_to_pixels(self):
        self.draw()
        names = json.loads(self.foreign("openexr", "p.exr", "text cryptomatte/be359d6/manifest"))
        self.assertEqual(set(names), {"Lower", 'Gr\u00fcn"'})
        ids = {number: int(names[name], 16) for number, _, name in self.ombr.materials}
        found = struct.unpack(f"<{WIDTH * HEIGHT}I", self.foreign("openexr", "p.exr", "number"))
        self.assertEqual(list(found), [ids.get(number, 0) for number in self.ombr.pixels(2)])

    def test_points_from_distances_lie_in_their_facets(self):
        for parallel in (0, 1):
            self.draw(parallel)
            about = json.loads(self.foreign("pillow", "p.tif", "text description"))
            self.assertEqual(about, json.loads(self.foreign("openexr", "p.exr", "text belvor")))
            camera = about["camera"]
            self.assertEqual((about["width"], about["height"], about["units"]["scale"]), (WIDTH, HEIGHT, 1))
            self.assertEqual([(m["number"], tuple(m["colour"]), m["name"]) for m in about["materials"]], self.ombr.materials)
            self.assertEqual((camera["near"], camera["far"]), (self.ombr.near, self.ombr.far))
            self.assertEqual(tuple(camera["origin" if parallel else "eye"]), self.ombr.eye)
            matrix = struct.unpack("<16f", self.foreign("openexr", "p.exr", "text worldToNDC"))
            to_camera = struct.unpack("<16f", self.foreign("openexr", "p.exr", "text worldToCamera"))
            step = (self.ombr.far - self.ombr.near) / 4294967294
            heights = {number: float(name != "Lower") for number, _, name in self.ombr.materials}
            for i, (code, number, distance) in enumerate(zip(self.ombr.pixels(1), self.ombr.pixels(2), self.distances)):
                if number == 0:
                    continue
                x, y, z = self.ombr.point(i % WIDTH, i // WIDTH, code)
                deeper = self.ombr.point(i % WIDTH, i // WIDTH, code + 1)
                self.assertLessEqual(abs(z - heights[number]), abs(deeper[2] - z) + 1e-12)
                self.assertLessEqual(abs(z - heights[number]), 3 * step)
                inside = [sum(p * matrix[4 * row + column] for row, p in enumerate((x, y, z, 1))) for column in range(4)]
                self.assertAlmostEqual(inside[0] / inside[3] * WIDTH, i % WIDTH + 0.5, delta=1e-3)
                self.assertAlmostEqual(inside[1] / inside[3] * HEIGHT, i // WIDTH + 0.5, delta=1e-3)
                self.assertAlmostEqual(sum(p * to_camera[4 * row + 2] for row, p in enumerate((x, y, z, 1))), distance, delta=1e-5)

    @unittest.skipIf(WINDOWS, "named pipes of another kind")
    def test_a_pipe_gets_the_bytes_of_the_file(self):
        self.draw()
        for name in FORMATS:
            pipe = f"pipe.{name}"
            os.mkfifo(self.folder / pipe)
            process = subprocess.Popen(command() + ["--quiet", "--size", f"{WIDTH}x{HEIGHT}", "--view", "v.bvp", "named.thf", pipe], cwd=self.folder)
            content = []
            reader = threading.Thread(target=lambda: content.append(self.read(pipe)), daemon=True)
            reader.start()
            reader.join(60)
            self.assertEqual(process.wait(60), 0)
            self.assertEqual(content, [self.read(f"p.{name}")], name)
