"""Standard input and output, gzip models, and bands of pictures that are joined again."""
import gzip
import itertools
import json
import os
import shutil
import struct
import subprocess
import unittest
import zlib

from files import Ombr
from program import BAD, FORMATS, PLATES, SAMPLES, SANITIZED, TOOL, WINDOWS, Folder, command

DRAWN = ("-s61x47", "--edges", "--line-width", "15")
USED = ("import resource, subprocess, sys; print(subprocess.run(sys.argv[1:]).returncode, "
        "resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss)")


class Streams(Folder):
    def setUp(self):
        super().setUp()
        self.packed = gzip.compress(PLATES.encode(), mtime=0)
        (self.folder / "plates.thf.gz").write_bytes(self.packed)

    def piped(self, data, *arguments):
        """What comes out of a call that reads `data`, as bytes; it leaves no file."""
        before = self.names()
        done = self.run_program("--type", "things", *arguments, input=data, encoding=None)
        self.assertEqual((done.returncode, done.stderr, self.names()), (0, b"", before))
        return done.stdout

    def test_standard_input_and_output(self):
        self.render(*DRAWN, "plates.thf", *(f"p.{name}" for name in FORMATS))
        for name, model in itertools.product(FORMATS, (PLATES.encode(), self.packed)):
            drawn = self.piped(model, *DRAWN, "--format", name.upper(), "-", "-")
            self.assertEqual(drawn, self.read(f"p.{name}"), name)
        self.render(*DRAWN, "plates.thf.gz", "z.png")
        self.assertEqual(self.read("z.png"), self.read("p.png"))
        report = json.loads(self.piped(self.packed, "-q", "--report", "-", "-"))
        self.assertEqual((report["file"]["name"], report["file"]["bytes"], report["facets"]), ("-", len(self.packed), 2))
        members = self.packed + gzip.compress(b"end of it\n") + bytes(512)      # as tapes end
        self.assertEqual(self.piped(members, *DRAWN, "--format=png", "-", "-"), self.read("p.png"))

    def test_faults(self):
        bad = bytearray(self.packed)
        bad[20] ^= 16
        for data, says in ((self.packed[:-1], "break off"), (self.packed[:9], "break off"),
                           (bytes(bad), "damaged"), (self.packed + b"more", "damaged"),
                           (PLATES.encode(), "damaged")):
            (self.folder / "bad.thf.gz").write_bytes(data)
            self.refused(1, "bad.thf.gz p.png", says + " in bad.thf.gz")
            if data != PLATES.encode():
                self.refused(1, "--type things - p.png", says, input=data, encoding=None)
        self.refused(1, "--type things - p.png", "material expected in standard input", input=BAD)
        self.refused(3, "--type dxf - p.png", "standard input cannot be read: the file is empty", input="")

    @unittest.skipIf(WINDOWS, "pipes and limits of the system the test runs on")
    def test_pipes_that_close_and_bombs(self):
        for name in FORMATS:
            reading, writing = os.pipe()
            os.close(reading)
            self.refused(3, f"-s900x700 --edges --format={name} plates.thf beside.png -",
                         "standard output cannot be written: Broken pipe", stdout=writing)
            os.close(writing)
        closed = subprocess.run(["sh", "-c", '"$0" "$@" <&- >&-', *command(), "--type=things", "-", "p.png"],
                                cwd=self.folder, capture_output=True)
        self.assertEqual((closed.returncode, b"standard input cannot be read" in closed.stderr), (3, True))
        self.assertEqual(self.names(), ["plates.thf", "plates.thf.gz"])
        packer = zlib.compressobj(9, wbits=31)
        member = packer.compress(bytes(1 << 24)) + packer.flush()
        (self.folder / "bomb.thf.gz").write_bytes(member * 257)     # 4 GiB and a little more
        if not SANITIZED:
            done = subprocess.run(["/usr/bin/env", "python3", "-c", USED, *command(), "bomb.thf.gz", "p.png"],
                                  cwd=self.folder, capture_output=True, encoding="utf-8")
            status, kilobytes = map(int, done.stdout.split())
            self.assertEqual((status, "more than 4294967296 bytes are packed" in done.stderr), (1, True), done.stderr)
            self.assertLess(kilobytes, 100000)


@unittest.skipUnless(os.path.exists(TOOL), "belvor-image is not built")
class Bands(Folder):
    def bands(self, model, cuts, *options):
        for first, end in zip(cuts, cuts[1:]):
            self.render(*options, f"--rows={first}:{end}", model, f"{first}.omb", f"{first}.png")

    def test_joined_bands_are_the_picture(self):
        for model, cuts, options in (
                ("plates.thf", (0, 1, 20, 46, 47), DRAWN),
                (str(SAMPLES / "teapot.thf"), (0, 33, 64, 200, 201), ("-s300x201", "-vfront")),
                (str(SAMPLES / "square.thf"), (0, 150, 299), ("-s200x299", "--edges=all", "--threads", "3"))):
            self.render(*options, model, "whole.omb", "whole.png")
            self.bands(model, cuts, *options)
            for ending, order in itertools.product(("omb", "png"), (cuts[:-1], cuts[-2::-1])):
                self.tool(0, "join", *(f"{name}.{ending}" for name in order), f"joined.{ending}")
                self.assertEqual(self.read(f"joined.{ending}"), self.read(f"whole.{ending}"), (model, ending))

    def test_a_band_tells_its_place(self):
        self.render("-s61x47", "plates.thf", "whole.omb")
        self.bands("plates.thf", (11, 30), "-s61x47")
        data = self.read("11.omb")
        band, whole = Ombr(data), Ombr(self.read("whole.omb"))
        self.assertEqual((band.width, band.height, band.first, band.last), (61, 19, whole.first, whole.last))
        self.assertEqual(band.rows, {channel: rows[11:30] for channel, rows in whole.rows.items()})
        self.assertEqual(band.band, [11, 47])
        about = json.loads(self.tool(0, "info", "11.omb"))
        self.assertEqual((about["height"], about["rows"]), (47, [11, 30]))
        self.assertEqual(self.tool(0, "at", "11.omb", "30,23"), self.tool(0, "at", "whole.omb", "30,23"))
        self.tool(0, "verify", "11.omb")
        for line in ("at 11.omb 30,30", "convert 11.omb c.png"):
            self.refused(2, line, program=TOOL)
        block, = struct.unpack_from("<I", data, band.private[1] + 8)
        for at, value in ((block, 9), (block + 8, 40), (block + 14, 1), (band.private[1] + 8, 8)):
            (self.folder / "changed.omb").write_bytes(data[:at] + bytes([value]) + data[at + 1:])
            self.tool(1, "verify", "changed.omb")

    def test_what_cannot_be_joined(self):
        self.render("-s61x47", "plates.thf", "whole.omb", "whole.png")
        self.bands("plates.thf", (0, 20, 47), "-s61x47")
        for name, *options in (("over", "-s61x47", "--rows=19:47"),
                               ("near", "-s61x47", "--rows=20:47", "--zoom=0.3"),
                               ("other", "-s62x47", "--rows=20:47"), ("long", "-s61x48", "--rows=20:48")):
            self.render(*options, "plates.thf", f"{name}.omb", f"{name}.png")
        shutil.copy(self.folder / "0.omb", self.folder / "name.png")
        calls = [(2, "0.omb 20.png j.omb", "two formats"), (2, "0.omb 20.omb j.exr", "ends neither"),
                 (2, "0.omb", "other words"), (2, "", "other words"), (2, "0.omb 20.omb 20.omb", "would"),
                 (3, "missing.omb 20.omb j.omb", "missing.omb"), (3, "0.png name.png j.png", "name.png")]
        for words, says in (("0", "rows 20 to 46"), ("20", "rows 0 to 19"), ("0 0 20", "row 0 of"),
                            ("0 over", "row 19 of"), ("0 near", "another picture"),
                            ("0 other", "another picture"), ("0 long", "another"), ("0 whole", "no band")):
            calls += [(2, " ".join(f"{word}.{ending}" for word in [*words.split(), "j"]), says)
                      for ending in ("omb", "png")]
        for status, words, says in calls:
            done = self.refused(status, "join " + words, says, program=TOOL)
            self.assertEqual(done.stderr.count("\n"), 1, words)
