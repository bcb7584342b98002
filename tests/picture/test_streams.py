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
from program import PLATES, SAMPLES, SANITIZED, TOOL, WINDOWS, Folder, command

FORMATS = ("omb", "png", "exr", "tif", "npy", "pfm", "svg")
DRAWN = ("-s61x47", "--edges", "--line-width", "15")


class Streams(Folder):
    def setUp(self):
        super().setUp()
        self.packed = gzip.compress(PLATES.encode(), mtime=0)
        (self.folder / "plates.thf.gz").write_bytes(self.packed)

    def piped(self, status, arguments, data=b"", says=""):
        """What comes out of a call that reads `data`, as bytes."""
        before = self.names()
        done = subprocess.run(command() + list(arguments), cwd=self.folder, input=data, capture_output=True, timeout=300)
        told = done.stderr.decode()
        self.assertEqual((done.returncode, self.names()), (status, before), told)
        self.assertIn(says, told)
        self.assertEqual(told.count("\n"), (1 if status else 0) + (status == 2), told)
        return done.stdout

    def test_standard_input_and_output(self):
        self.render(*DRAWN, "plates.thf", *(f"p.{name}" for name in FORMATS))
        for name in FORMATS:
            for model in (PLATES.encode(), self.packed):
                self.assertEqual(self.piped(0, ["--type", "things", *DRAWN, "--format", name.upper(), "-", "-"], model), self.read(f"p.{name}"), name)
        self.render(*DRAWN, "plates.thf.gz", "z.png")
        self.assertEqual(self.read("z.png"), self.read("p.png"))
        report = json.loads(self.piped(0, ["-q", "--type=things", "--report", "-", "-"], self.packed))
        self.assertEqual((report["file"]["name"], report["file"]["bytes"], report["facets"]), ("-", len(self.packed), 2))
        members = self.packed + gzip.compress(b"end of it\n") + bytes(512)      # as tapes end
        self.assertEqual(self.piped(0, ["--type=things", *DRAWN, "--format=png", "-", "-"], members), self.read("p.png"))

    def test_faults(self):
        bad = bytearray(self.packed)
        bad[20] ^= 16
        for data, says in ((self.packed[:-1], "the gzip data break off"), (self.packed[:9], "the gzip data break off"), (bytes(bad), "the gzip data are damaged"),
                           (self.packed + b"more", "the gzip data are damaged"), (b"Y 3 0 0 0 1 0 0 0 1 0 1 1 2", "material expected in standard input")):
            self.piped(1, ["--type", "things", "-", "p.png"], data, says)
            if data[:2] == self.packed[:2]:
                (self.folder / "bad.thf.gz").write_bytes(data)
                self.piped(1, ["bad.thf.gz", "p.png"], says=says + " in bad.thf.gz")
        self.piped(1, [self.write("plain.thf.gz", PLATES), "p.png"], says="the gzip data are damaged")
        self.piped(3, ["--type", "dxf", "-", "p.png"], says="standard input cannot be read: the file is empty")
        to_dash = ["--format", "png", "plates.thf", "-"]
        for arguments, says in ((["-", "p.png"], "needs --type"), (["plates.thf", "-"], "needs --format"), (["--format", "png", "plates.thf", "p.png"], "--format is for"),
                                (["--format", "jpg", "plates.thf", "-"], "--format takes"), ([*to_dash, "-"], "one picture"), ([*to_dash, "--info"], "one picture"),
                                ([*to_dash, "--report", "-"], "one picture"), (["-vplan", "-vleft", *to_dash], "{view}"), (["--format=svg", "plates.thf", "-"], "--edges"),
                                (["--type", "dxf", "--dxf-log", "-", "p.png"], "--dxf-log"), (["--type=things", "--each", "{n}.png", "-", "plates.thf"], "- is for a single"),
                                (["--each", "{n}.png", *to_dash[:3]], "--format is for a single"), (["--list", "-", "-", "--each", "{n}.png"], "- is for a single"),
                                (["--rows", "0:9", "--each", "{n}.png", "plates.thf"], "--rows is for"), (["--rows", "0:601", "plates.thf", "p.png"], "it has 600"),
                                (["--rows", "3:3", "plates.thf", "p.png"], "--rows takes"), (["--rows", "-1:3", "plates.thf", "p.png"], "--rows takes"),
                                (["--rows", "0:9", "plates.thf", "p.exr"], ".omb and .png"), (["--rows", "0:9", "--format=npy", "plates.thf", "-"], ".omb and .png")):
            with self.subTest(arguments):
                self.piped(2, arguments, says=says)

    @unittest.skipIf(WINDOWS, "pipes and limits of the system the test runs on")
    def test_pipes_that_close_and_bombs(self):
        for name in FORMATS:
            reading, writing = os.pipe()
            os.close(reading)
            done = self.run_program("-s900x700", "--edges", f"--format={name}", "plates.thf", "beside.png", "-", stdout=writing)
            os.close(writing)
            self.assertEqual((done.returncode, done.stderr), (3, "belvor-render: standard output cannot be written: Broken pipe\n"), name)
        closed = subprocess.run(["sh", "-c", '"$0" "$@" <&- >&-', *command(), "--type=things", "-", "p.png"], cwd=self.folder, capture_output=True)
        self.assertEqual((closed.returncode, b"standard input cannot be read" in closed.stderr), (3, True))
        self.assertEqual(self.names(), ["plates.thf", "plates.thf.gz"])
        packer = zlib.compressobj(9, wbits=31)
        member = packer.compress(bytes(1 << 24)) + packer.flush()
        bomb = self.folder / "bomb.thf.gz"
        bomb.write_bytes(member * 257)     # 4 GiB and a little more
        if not SANITIZED:
            used = ["/usr/bin/env", "python3", "-c", "import resource, subprocess, sys; print(subprocess.run(sys.argv[1:]).returncode, "
                    "resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss)", *command(), "bomb.thf.gz", "p.png"]
            done = subprocess.run(used, cwd=self.folder, capture_output=True, encoding="utf-8")
            status, kilobytes = map(int, done.stdout.split())
            self.assertEqual((status, "more than 4294967296 bytes are packed" in done.stderr), (1, True), done.stderr)
            self.assertLess(kilobytes, 100000)


@unittest.skipUnless(os.path.exists(TOOL), "belvor-image is not built")
class Bands(Folder):
    def join(self, status, *words, says=""):
        done = self.run_program("join", *words, program=TOOL)
        self.assertEqual((done.returncode, done.stderr.count("\n")), (status, 1 if status else 0), (words, done.stderr))
        self.assertIn(says, done.stderr)

    def bands(self, model, cuts, *options):
        names = []
        for first, end in zip(cuts, cuts[1:]):
            names.append(f"{first}")
            self.render(*options, f"--rows={first}:{end}", model, f"{first}.omb", f"{first}.png")
        return names

    def test_joined_bands_are_the_picture(self):
        for model, cuts, options in (("plates.thf", (0, 1, 20, 46, 47), DRAWN), (str(SAMPLES / "teapot.thf"), (0, 33, 64, 200, 201), ("-s300x201", "-vfront")),
                                     (str(SAMPLES / "square.thf"), (0, 150, 299), ("-s200x299", "--edges=all", "--threads", "3"))):
            self.render(*options, model, "whole.omb", "whole.png")
            names = self.bands(model, cuts, *options)
            for ending, order in itertools.product(("omb", "png"), (names, names[::-1])):
                self.join(0, *(f"{name}.{ending}" for name in order), f"joined.{ending}")
                self.assertEqual(self.read(f"joined.{ending}"), self.read(f"whole.{ending}"), (model, ending))

    def test_a_band_tells_its_place(self):
        self.render("-s61x47", "plates.thf", "whole.omb")
        self.bands("plates.thf", (11, 30), "-s61x47")
        band, whole = Ombr(self.read("11.omb")), Ombr(self.read("whole.omb"))
        self.assertEqual((band.width, band.height, band.first, band.last), (61, 19, whole.first, whole.last))
        self.assertEqual(band.rows, {channel: rows[11:30] for channel, rows in whole.rows.items()})
        self.assertEqual(band.band, [11, 47])
        tool = [*command(TOOL)]
        answers = [subprocess.run(tool + words, cwd=self.folder, capture_output=True, encoding="utf-8") for words in (
            ["info", "11.omb"], ["verify", "11.omb"], ["at", "11.omb", "30,23"], ["at", "whole.omb", "30,23"], ["at", "11.omb", "30,30"], ["convert", "11.omb", "c.png"])]
        self.assertEqual([answer.returncode for answer in answers], [0, 0, 0, 0, 2, 2])
        about = json.loads(answers[0].stdout)
        self.assertEqual((about["height"], about["rows"]), (47, [11, 30]))
        self.assertEqual(answers[2].stdout, answers[3].stdout)
        data, block = bytearray(self.read("11.omb")), struct.unpack("<I", self.read("11.omb")[band.private[1] + 8:][:4])[0]
        for at, value in ((block, 9), (block + 8, 40), (block + 14, 1), (band.private[1] + 8, 8)):
            changed = data[:at] + bytes([value]) + data[at + 1:]
            (self.folder / "changed.omb").write_bytes(changed)
            self.assertEqual(self.run_program("verify", "changed.omb", program=TOOL).returncode, 1, at)

    def test_what_cannot_be_joined(self):
        self.render("-s61x47", "plates.thf", "whole.omb", "whole.png")
        self.bands("plates.thf", (0, 20, 47), "-s61x47")
        for name, rows, options in (("over", "19:47", ()), ("near", "20:47", ("--zoom=0.3",)), ("other", "20:47", ("-s62x47",)), ("long", "20:48", ("-s61x48",))):
            self.render("-s61x47" if not options or "-s" not in options[0] else options[0], *(option for option in options if "-s" not in option), "--rows", rows,
                        "plates.thf", f"{name}.omb", f"{name}.png")
        shutil.copy(self.folder / "0.omb", self.folder / "name.png")
        before = self.names()
        for ending in ("omb", "png"):
            for words, says in ((["0"], "rows 20 to 46"), (["20"], "rows 0 to 19"), (["0", "0", "20"], "row 0 of"), (["0", "over"], "row 19 of"), (["0", "near"], "another picture"),
                                (["0", "other"], "another picture"), (["0", "long"], "another picture"), (["0", "whole"], "is no band")):
                self.join(2, *(f"{word}.{ending}" for word in words), f"j.{ending}", says=says)
        for words, says in ((["0.omb", "20.png", "j.omb"], "two formats"), (["0.omb", "20.omb", "j.exr"], "ends neither"), (["0.omb"], "other words"), ([], "other words"),
                            (["0.omb", "20.omb", "20.omb"], "would overwrite")):
            self.join(2, *words, says=says)
        self.join(3, "missing.omb", "20.omb", "j.omb", says="missing.omb")
        self.join(3, "0.png", "name.png", "j.png", says="name.png")
        self.assertEqual(self.names(), before)
