"""belvor-render as a script meets it: exit status, what it says, and that a failure leaves no picture behind."""
import errno
import json
import os
import resource
import shutil
import signal
import subprocess
import time
import unittest

from files import read_png
from program import BAD, PLATES, SAMPLES, SANITIZED, WINDOWS, Folder, view_text

BAD_VALUES = """--size= --size=8 --size=0x6 --size=8x6x4 --size=-8x6 --size=8.0x6 --type=obj --view=
    --save-view= --zoom=0 --light=6=1,2,3 --eye=1,2 --eye=1,2,3,4 --quiet=yes --edges=some --line-width=2
    --line-width=17 --line-colour=red --background=#12345 --surfaces=maybe --rows=3:3 --rows=-1:3
    --max-memory=12 --timeout=0 --reading=lax --format=jpg --format=png --scale=1 --jobs=2
    --threads=0 --threads=257 --threads=two"""
WRONG_USE = (       # with the model after it, and what is told
    ("", ""), ("--size 8x6", ""), ("p.jpg", ".png"), ("p.pngx", ".png"), ("a.png/b", ".png"), ("png", ""), ("--size 16384x1 p.omb", "--size"),
    ("--size 1x65536 p.omb", "--size"), ("--nonsense p.png", "--nonsense"), ("-qx p.png", "no option -x"),
    ("p.png p.png", "twice"), ("p.omb ./p.omb", "twice"), ("--save-view plates.thf", "plates.thf"),
    ("--save-view ./p.omb p.omb", "p.omb"), ("plates.unknown p.png", ""), ("--type things p.omb p.omb", ""),
    ("--view --quiet p.png", "--view needs a value"), ("-s 8x6 --size=8x6 p.png", "--size was given twice"),
    ("p.svg", "--edges"), ("--edges= p.png", "--edges= needs a value"), ("--report plates.thf", ""), ("p.png --report p.png", ""),
    ("--save-view v.bvp --report v.bvp", ""), ("--skip-existing p.png", "--skip-existing"),
    ("-v plan -v left p.png", "{view}"), ("-v plan -v PLAN {view}.png", "named twice"),
    ("-v plan -v left --save-view x.bvp", "--save-view needs a single view"),
    ("-v plan -v left {view}{x}.png", "{x}"), ("-v plan -v left {view}{.png", "brace"),
    ("--scale 1 --zoom 1 -v plan p.png", "--zoom and"), ("--light 1=1,2,3 --light 1=1,2,3 p.png", "1"),
    ("--parallel --perspective p.png", "--parallel and --perspective"), ("--rows 0:601 p.png", "it has 600"),
    ("--rows 0:9 p.exr", ".omb and .png"), ("--rows 0:9 --format=npy -", ".omb and .png"),
    ("-", "needs --format"), ("--format=svg -", "--edges"), ("-vplan -vleft --format png -", "{view}"),
    ("--format png - -", "one picture"), ("--format png - --info", "one picture"),
    ("--format png - --report -", "one picture"), ("--list x", "nothing to do"),
)


class CommandLine(Folder):
    def setUp(self):
        super().setUp()
        self.write("p.omb", "what was there before")

    def remarks(self, *arguments):
        """What a command that succeeds says."""
        done = self.run_program(*arguments)
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertEqual(self.run_program("--quiet", *arguments).stderr, "")
        return done.stderr

    def test_wrong_use(self):
        for option in [*BAD_VALUES.split(), "--size= 8x6"]:
            with self.subTest(option):
                self.refused(2, [option, "plates.thf", "p.png"], option.partition("=")[0])
        for line, says in WRONG_USE:
            with self.subTest(line):
                model = [] if "plates.unknown" in line or "p.omb p.omb" in line else ["plates.thf"]
                self.refused(2, model + line.split(), says)
        for words, says in (([], ""), (["-q"], "no model was named"), (["plates.thf", ""], "is empty"),
                            (["-", "p.png"], "needs --type"), (["--view"], "--view needs a value"),
                            (["--type", "dxf", "--dxf-log", "-", "p.png"], "--dxf-log")):
            self.refused(2, words, says)

    def test_short_forms_and_the_end_of_options(self):
        for option in ("--help", "-h", "--version", "-V"):
            done = self.run_program(option)
            self.assertEqual((done.returncode, done.stderr), (0, ""), option)
        self.assertEqual(done.stdout, "belvor-render 1.2.0\n")
        self.write("-minus.thf", PLATES)
        self.render("-s8x6", "--type=THINGS", "-o", "a.png", "--output=b.png", "--", "-minus.thf", "c.PNG", "d.Tiff")
        self.assertEqual(read_png(self.read("a.png"))[:2], (8, 6))
        self.assertEqual({self.read(name) for name in ("a.png", "b.png", "c.PNG")}, {self.read("a.png")})

    def test_what_is_remarked(self):
        self.assertEqual(self.run_program("plates.thf", "a.png").stderr, "", "progress is for terminals only")
        self.write("cut.bvp", "Belvor View Parameters 1.0\n9 9 9\n0 0 0\n0.5\n1\n0.4 oops\n")
        self.assertEqual(self.remarks("--view", "cut.bvp", "plates.thf", "a.png"),
                         "belvor-render: cut.bvp, line 6: the ground light is missing or cannot be read; "
                         "it and all behind it are taken as not given\n")
        self.write("wire.thf", "Y 3 0 0 0 1 0 0 0 1 0 1 1 2 Wire\n0")
        call = ("-s40x2000", "--background=#ffeedd", "wire.thf", "w.png")
        self.assertIn("no surfaces to draw", self.remarks(*call))
        self.assertTrue(read_png(self.read("w.png")) == (40, 2000, b"\xff\xee\xdd" * 40 * 2000), "not of one colour")
        self.assertLess(len(self.read("w.png")), 3000, "flat rows cost nearly nothing")
        for power in (76, 307):
            self.write("huge.thf", f"Y 3 -1e{power} 0 0 1e{power} 0 0 0 1e{power} 0 0 1 1 S\n3 1 2 3\n")
            self.assertEqual(self.remarks("huge.thf", "a.png"), "belvor-render: huge.thf: "
                             "coordinates beyond 1e+75 are too large to be drawn exactly\n")
            info = json.loads(self.run_program("--info", "huge.thf").stdout, parse_constant=self.fail)
            self.assertAlmostEqual(info["radius"] / float(f"1e{power}"), 1.25 ** 0.5)
            self.render("huge.thf", "--save-view", "v.bvp")
            self.render("huge.thf", "--view", "v.bvp", "--save-view", "w.bvp")
            self.assertEqual(self.read("v.bvp"), self.read("w.bvp"))

    def test_lines_that_cannot_be_seen_are_told(self):
        entities = [f"0 LINE 8 0 420 {colour} 10 0 20 0 11 {x} 21 0" for colour, x in ((0xffffff, 1), (0xff0000, 1), (0xffffff, 9))] + ["0 CIRCLE 8 0 420 0 10 0 20 0 30 0 40 1"]
        self.write("d.dxf", "\n".join(" ".join(["0 SECTION 2 ENTITIES", *entities, "0 ENDSEC 0 EOF"]).split()))
        unseen, beyond = "2 of 4 lines have the colour of the background", "lines reach far beyond the surfaces"
        for options, told in (("--background #ffffff", [unseen, beyond]), ("--background #ffffff --line-colour #000000", [beyond]), ("--bounds all --background #000001", []),
                              ("--eye 1,1,1 --background #fffffe", []), ("--view plan --view front --background #ff0000", ["1 of 4 lines", beyond])):
            said = self.remarks("--reading", "modern", "--lines", *options.split(), "d.dxf", "{view}.png")
            self.assertEqual([text in said for text in told], [True] * len(told), (options, said))
            self.assertEqual(said.count("\n"), len(told), (options, said))
        black, white = "1 of 4 lines have the colour of the background", "2 of 4 lines are white"
        for call, told in (("d.svg", [white]), ("d.png", [black]), ("d.svg d.png", [black, white]), ("--background=#000001 d.svg", []), ("--surfaces=embed d.svg", [black])):
            said = self.remarks("--reading=modern", "--lines", "--bounds=all", "d.dxf", *call.split())
            self.assertEqual([text for text in (black, white) if text in said], told, (call, said))

    @unittest.skipIf(WINDOWS, "pipes with a name")
    def test_pipes(self):
        os.mkfifo(self.folder / "pipe.dxf")
        self.refused(3, "pipe.dxf p.png", "pipe.dxf cannot be read: it is not a regular file")
        process = self.start("--view", "pipe.dxf", "plates.thf", "p.png")
        time.sleep(0.3)
        self.assertIsNone(process.poll(), "it waits for somebody to write")
        started = time.monotonic()
        process.send_signal(signal.SIGINT)
        self.assertEqual(process.wait(60), -signal.SIGINT)
        self.assertLess(time.monotonic() - started, 2, "some ten times what it takes, for a busy machine")
        self.render("--save-view", "v.bvp", "plates.thf")
        process = self.start("--view", "pipe.dxf", "--save-view", "w.bvp", "plates.thf")
        (self.folder / "pipe.dxf").write_bytes(self.read("v.bvp"))
        self.assertEqual(process.wait(60), 0)
        self.assertEqual(self.read("v.bvp"), self.read("w.bvp"))

    def test_files_that_cannot_be_read_or_written(self):
        """Where the model is bad, the status tells that the other fault was seen first."""
        for name in ("folder.png", "folder.thf"):
            os.mkdir(self.folder / name)
        for name, text in (("bad.thf", BAD), ("no.bvp", "P6\n"), ("empty.dxf", ""),
                           ("v1.bvp", "Belvor View Parameters 1.1\n"),
                           ("far.bvp", "Belvor View Parameters 1.0\n1e308 2 3 0 0 0 1\n"),
                           ("tiny.thf", "Y 3 0 0 0 .1 0 0 0 .1 0 0 1 1 S\n3 1 2 3\n"),
                           ("wide.thf", "Y 2 -1.7e308 0 0 1.7e308 0 0 0 0")):
            self.write(name, text)
        for status, line, *says in (
                (1, "bad.thf p.png p.omb", "material expected", "bad.thf"), (3, "empty.dxf p.png", "empty"),
                (1, "--view v1.bvp tiny.thf p.png", "v1.bvp"), (1, "--view far.bvp tiny.thf p.png", "far."),
                (1, "--save-view v.bvp wide.thf", "the coordinates of the model are too large"),
                (1, "bad.thf --view no.bvp p.png", "no.bvp is not a view parameters file"),
                (3, "bad.thf nowhere/p.png", "nowhere/p.png cannot be written"),
                (3, "bad.thf --save-view nowhere/v.bvp", "nowhere/v.bvp"),
                (3, "bad.thf --view missing.bvp p.png", "missing.bvp cannot be read"),
                (3, "bad.thf --size 16000x40000 new.omb", "an Ombr file holds at most 4294967295 bytes"),
                (3, "missing.thf p.png", "missing.thf"), (3, "nowhere/p.thf p.png", "nowhere/p.thf"),
                (3, "folder.thf p.png", "folder.thf"), (3, "plates.thf p.png nowhere/p.omb", "nowhere/p.omb"),
                (3, "plates.thf nowhere/p.omb p.png", "nowhere"),
                (3, "plates.thf new.omb folder.png", "folder.png"),
                (3, "plates.thf p.omb new.png folder.png", "folder.png")):
            with self.subTest(line):
                self.refused(status, line, *says)
        self.assertEqual(os.listdir(self.folder / "folder.png"), [])

    @unittest.skipIf(WINDOWS, "limits of the system the test runs on")
    def test_a_full_disk_is_status_3(self):
        def limit(size):
            signal.signal(signal.SIGXFSZ, signal.SIG_IGN)
            resource.setrlimit(resource.RLIMIT_FSIZE, (size, size))
        for output in ("p.omb", "p.png"):
            self.refused(3, ["-s900x700", str(SAMPLES / "square.thf"), output], os.strerror(errno.EFBIG),
                         preexec_fn=lambda: limit(20000))
        self.write("old.bvp", view_text("0", "0", "0"))
        self.refused(3, "--save-view old.bvp plates.thf", "old.bvp", preexec_fn=lambda: limit(0))
        full = os.strerror(errno.ENOSPC)
        facets = "".join(f"1 Material{i}\n3 1 2 3\n" for i in range(900))
        self.write("long.thf", "Y 3 0 0 0 1 0 0 0 1 0 0 900\n" + facets)
        for line in ("--help", "--info plates.thf", "--info long.thf"):     # the last one fills the buffer
            with open("/dev/full", "w") as device:
                self.refused(3, line, "standard output cannot be written: " + full, stdout=device)
        self.refused(3, "--save-view /dev/full plates.thf", full)
        self.refused(1, "--view /dev/zero plates.thf p.png", "not a view parameters file")

    @unittest.skipIf(WINDOWS, "mounts a small disk")
    def test_a_disk_that_fills_up_at_the_end_is_status_3(self):
        """The last bytes stay in a buffer until the file is closed: closing must be looked at as well."""
        small = self.folder / "small"
        small.mkdir()
        mount = ["mount", "-t", "tmpfs", "-o", "size=8k", "none", str(small)]
        if subprocess.run(mount, capture_output=True).returncode:
            self.skipTest("may not mount")
        self.addCleanup(subprocess.run, ["umount", str(small)], check=True)
        model = str(SAMPLES / "teapot.thf")
        self.render("--size", "20x15", model, "small/p.omb")
        (small / "p.omb").unlink()
        for size, output, taken in ("40x30", "p.omb", 0), ("20x15", "p.omb", 8192), ("20x15", "p.png", 8192):
            (small / "filler").write_bytes(b"x" * taken)
            self.refused(3, ["--size", size, model, f"small/{output}"], os.strerror(errno.ENOSPC))

    @unittest.skipIf(WINDOWS or SANITIZED, "limits the address space")
    def test_memory_exhausted_is_status_4(self):
        vertices, limit = 9000000, (300 << 20, 300 << 20)
        self.write("many.thf", f"Y {vertices}\n" + "1 2 3\n" * vertices + "0 0\n")
        self.refused(4, "many.thf p.png", preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_AS, limit))

    def test_info(self):
        info = json.loads(self.run_program("--info", "plates.thf").stdout)
        self.assertAlmostEqual(info.pop("radius"), 6.5 ** 0.5, delta=1e-15)
        materials = info.pop("materialList")
        self.assertEqual([(m["index"], m["name"]) for m in materials], [(1, "Lower"), (2, "Upper")])
        self.assertEqual(info, {
            "file": "plates.thf", "type": "things", "vertices": 16, "edges": 12, "facets": 2, "materials": 2,
            "centre": [2.0, 1.5, 0.5], "units": {"code": 0, "scale": 1.0}})

    def test_view_files(self):
        self.write("plates.txt", PLATES)
        self.render("--size", "40x30", "--type", "things", "plates.txt", "a.png", "--save-view", "v.bvp")
        self.render("--size", "40x30", "--view", "v.bvp", "--save-view", "w.bvp", "plates.thf", "b.png")
        self.assertEqual(self.read("v.bvp"), self.read("w.bvp"))
        self.assertEqual(read_png(self.read("a.png")), read_png(self.read("b.png")))
        if not WINDOWS:
            os.symlink("only.bvp", self.folder / "link.bvp")
        self.render("--save-view", "only.bvp" if WINDOWS else "link.bvp", "plates.thf")     # through the link
        head, eye, *lines = self.read("only.bvp").decode().split("\r\n" if WINDOWS else "\n")
        self.assertEqual("/".join([head, *lines]), "Belvor View Parameters 1.0/2 1.5 0.5/0.364/0/0.4/0.1/"
                         "-30 60 0.6/180 30 0/0 30 0/90 30 0/-90 30 0/")

    def test_views_with_names_and_changed_numbers(self):
        self.render("-s40x30", "plates.thf", "whole.png")
        self.render("-s40x30", "--view", "WHOLE", "plates.thf", "again.png")
        self.assertEqual(self.read("whole.png"), self.read("again.png"))
        names = "plan below front back left right iso-ne iso-nw iso-se iso-sw".split()
        self.render("-s40x30", *(f"-v{name}" for name in names), "plates.thf", "{view}.png")
        for name in names:
            self.render("-s40x30", "-v", name, "--save-view", "f.bvp", "plates.thf", "a.png", "a.omb")
            self.render("-s40x30", "-v", "./f.bvp", "plates.thf", "b.png", "b.omb")
            self.assertEqual(self.read("a.omb"), self.read("b.omb"), name)
            self.assertEqual({self.read("a.png"), self.read("b.png")}, {self.read(f"{name}.png")})
        self.render("--eye=-1,2,30", "--look-at", "2,3,0", "--zoom", "0.25", "--parallel", "--sky", "0.5",
                    "--ground=0.25", "--light", "2=10,20,0.5", "--save-view", "c.bvp", "plates.thf")
        wanted = "-1 2 30 2 3 0 0.25 1 0.5 0.25 -30 60 0.6 10 20 0.5 0 30 0 90 30 0 -90 30 0"
        self.assertEqual(self.read("c.bvp").decode().split()[4:], wanted.split())
        self.render("-s40x30", "-v", "plan", "--scale", "0.25", "plates.thf", "a.png")     # the lower plate is 4 x 3
        rgb = read_png(self.read("a.png"))[2]
        self.assertEqual(sum(any(rgb[i:i + 3]) for i in range(0, len(rgb), 3)), 16 * 12)
        for scale in ("1e-18", "1e-320", "1e+308"):      # the camera would hold it at a limit
            self.refused(1, ["-vplan", "--scale", scale, "plates.thf", "p.png"], f"--scale {scale} is out of range")
        output = "{view}_{name}_{n}_{{}.png"
        report = json.loads(self.render("-vplan", "-vf.bvp", "--report", "-", "plates.thf", output))
        self.assertEqual([camera["view"] for camera in report["cameras"]], ["plan", "f"])
        self.assertEqual([output["name"] for output in report["outputs"]],
                         ["plan_plates_0001_{}.png", "f_plates_0001_{}.png"])

    def test_names_of_every_script(self):
        folder = "Pläne für Zoë 図面/"
        os.mkdir(self.folder / folder)
        names = ["Ansicht ß.bvp", "Bild é.omb", "again.png", "größe_模型.thf"]
        view, picture, again, model = (folder + name for name in names)
        shutil.copy(self.folder / "plates.thf", self.folder / model)
        self.render("--size", "9x7", "plates.thf", "plain.omb")
        self.render("--size", "9x7", model, picture, "--save-view", view)
        self.render("--size", "9x7", "--view", view, model, again)
        self.assertEqual(sorted(os.listdir(self.folder / folder)), names)
        self.assertEqual(self.read("plain.omb"), self.read(picture))
        self.assertEqual(json.loads(self.run_program("--info", model).stdout)["file"], model)
        self.refused(3, [folder + "fehlt.thf", "p.png"], "fehlt.thf", "図面")
