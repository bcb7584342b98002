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
from program import PLATES, SAMPLES, SANITIZED, WINDOWS, Folder, command


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

    def refused(self, status, arguments, says=(), **options):
        """The command ends with `status`, says each of `says` on standard error, and changes no file."""
        before = self.contents()
        done = self.run_program(*arguments, **options)
        self.assertEqual(done.returncode, status, (arguments, done.stderr))
        for text in says:
            self.assertIn(text, done.stderr)
        self.assertTrue(done.stderr.strip(), "a failure must say why")
        self.assertEqual(self.contents(), before)

    def contents(self):
        return {name: self.read(name) if (self.folder / name).is_file() else "" for name in self.names()}

    def test_usage_errors(self):
        for arguments in ([], ["plates.thf"], ["--size", "8x6", "plates.thf"], ["plates.thf", "p.jpg"], ["plates.thf", "png"],
                          ["--size", "0x6", "plates.thf", "p.png"], ["--size", "16384x1", "plates.thf", "p.omb"],
                          ["--size", "1x65536", "plates.thf", "p.omb"], ["--size", "8", "plates.thf", "p.png"], ["--size", "8x6x4", "plates.thf", "p.png"],
                          ["--size", "-8x6", "plates.thf", "p.png"], ["--size", " 8x6", "plates.thf", "p.png"], ["--size", "8.0x6", "plates.thf", "p.png"],
                          ["--nonsense", "plates.thf", "p.png"], ["plates.unknown", "p.png"], ["--type", "obj", "plates.thf", "p.png"],
                          ["--view"], ["plates.thf", "p.png", "p.png"], ["plates.thf", "p.omb", "./p.omb"], ["--save-view", "plates.thf", "plates.thf"],
                          ["--save-view", "./p.omb", "plates.thf", "p.omb"], ["--type", "things", "p.omb", "p.omb"]):
            with self.subTest(arguments):
                self.refused(2, arguments)
        for arguments, says in ((["--view", "", "plates.thf", "p.png"], "--view needs a value"),        # "$UNSET"
                                (["--save-view=", "plates.thf", "p.png"], "--save-view needs a value"),
                                (["--size", "", "plates.thf", "p.png"], "--size needs a value"), (["plates.thf", ""], "an argument is empty"),
                                (["--view", "--quiet", "plates.thf", "p.png"], "--view needs a value"),
                                (["-s", "8x6", "--size=8x6", "plates.thf", "p.png"], "--size was given twice"),
                                (["--quiet=yes", "plates.thf", "p.png"], '--quiet takes no value; it was given "yes"'),
                                (["-qx", "plates.thf", "p.png"], "there is no option -x"), (["-q"], "no model was named")):
            with self.subTest(arguments):
                self.refused(2, arguments, [says])

    def test_short_forms_and_the_end_of_options(self):
        for option in ("--help", "-h", "--version", "-V"):
            done = self.run_program(option)
            self.assertEqual((done.returncode, done.stderr), (0, ""), option)
        self.assertEqual(done.stdout, "belvor-render 1.2.0\n")
        self.write("-minus.thf", PLATES)
        self.render("-s8x6", "--type=THINGS", "-o", "a.png", "--output=b.png", "--", "-minus.thf", "c.PNG")
        self.assertEqual(read_png(self.read("a.png"))[:2], (8, 6))
        self.assertEqual({self.read(name) for name in ("a.png", "b.png", "c.PNG")}, {self.read("a.png")})

    def test_bad_models_and_views_are_status_1(self):
        self.refused(1, [self.write("bad.thf", "Y 3 0 0 0 1 0 0 0 1 0 1 1 2"), "p.png", "p.omb"], ["material expected", "bad.thf"])
        self.write("tiny.thf", "Y 3 0 0 0 .1 0 0 0 .1 0 0 1 1 S\n3 1 2 3\n")
        for view in ("Belvor View Parameters 1.1\n0 0 0\n",
                     "Belvor View Parameters 1.0\n1e308 2 3 0 0 0 1\n"):      # infinite in radii of the model
            self.refused(1, ["--view", self.write("bad.bvp", view), "tiny.thf", "p.png", "p.omb"], ["bad.bvp"])

    def test_damaged_views_and_huge_models_are_remarked(self):
        self.write("cut.bvp", "Belvor View Parameters 1.0\n9 9 9\n0 0 0\n0.5\n1\n0.4 oops\n")
        self.assertEqual(self.remarks("--view", "cut.bvp", "plates.thf", "a.png"),
                         "belvor-render: cut.bvp, line 6: the ground light is missing or cannot be read; it and all behind it are taken as not given\n")
        for power in (76, 154, 200, 307):
            self.write("huge.thf", f"Y 3 -1e{power} 0 0 1e{power} 0 0 0 1e{power} 0 0 1 1 S\n3 1 2 3\n")
            self.assertEqual(self.remarks("huge.thf", "a.png"), "belvor-render: huge.thf: coordinates beyond 1e+75 are too large to be drawn exactly\n")
            info = json.loads(self.run_program("--info", "huge.thf").stdout, parse_constant=self.fail)
            self.assertAlmostEqual(info["radius"] / float(f"1e{power}"), 1.25 ** 0.5)
            self.render("huge.thf", "--save-view", "v.bvp")
            self.render("huge.thf", "--view", "v.bvp", "--save-view", "w.bvp")
            self.assertEqual(self.read("v.bvp"), self.read("w.bvp"))
        self.refused(1, ["--save-view", "v.bvp", self.write("huge.thf", "Y 2 -1.7e308 0 0 1.7e308 0 0 0 0")], ["the coordinates of the model are too large"])

    @unittest.skipIf(WINDOWS, "pipes with a name")
    def test_pipes(self):
        os.mkfifo(self.folder / "pipe.dxf")
        self.refused(3, ["pipe.dxf", "p.png"], ["pipe.dxf cannot be read: it is not a regular file"])
        process = subprocess.Popen(command() + ["--view", "pipe.dxf", "plates.thf", "p.png"], cwd=self.folder, stderr=subprocess.DEVNULL)
        time.sleep(0.3)
        self.assertIsNone(process.poll(), "it waits for somebody to write")
        started = time.monotonic()
        process.send_signal(signal.SIGINT)
        self.assertEqual(process.wait(60), -signal.SIGINT)
        self.assertLess(time.monotonic() - started, 2, "some ten times what it takes, for a busy machine")
        self.render("--save-view", "v.bvp", "plates.thf")
        process = subprocess.Popen(command() + ["--view", "pipe.dxf", "--save-view", "w.bvp", "plates.thf"], cwd=self.folder)
        (self.folder / "pipe.dxf").write_bytes(self.read("v.bvp"))
        self.assertEqual(process.wait(60), 0)
        self.assertEqual(self.read("v.bvp"), self.read("w.bvp"))

    def test_what_is_wrong_is_said_before_the_model_is_read(self):
        """Each would be refused in any case: the model is bad, so the status tells which fault was seen first."""
        self.write("bad.thf", "Y 3 0 0 0 1 0 0 0 1 0 1 1 2")
        for status, arguments, says in ((3, ["nowhere/p.png"], "nowhere/p.png cannot be written"), (3, ["--save-view", "nowhere/v.bvp"], "nowhere/v.bvp"),
                                        (3, ["--view", "missing.bvp", "p.png"], "missing.bvp cannot be read"),
                                        (1, ["--view", self.write("no.bvp", "P6\n"), "p.png"], "no.bvp is not a view parameters file"),
                                        (3, ["--size", "16000x40000", "new.omb"], "an Ombr file holds at most 4294967295 bytes")):
            self.refused(status, ["bad.thf"] + arguments, [says])
        self.refused(3, [self.write("empty.dxf", ""), "p.png"], ["empty.dxf cannot be read: the file is empty"])
        if not WINDOWS:
            self.refused(1, ["--view", "/dev/zero", "plates.thf", "p.png"], ["not a view parameters file"])
            with open("/dev/full", "w") as full:
                self.refused(3, ["--help"], [os.strerror(errno.ENOSPC)], stdout=full)

    def test_files_that_cannot_be_read_or_written_are_status_3(self):
        os.mkdir(self.folder / "folder.png")
        os.mkdir(self.folder / "folder.thf")
        for arguments in (["missing.thf", "p.png"], ["nowhere/p.thf", "p.png"], ["folder.thf", "p.png"], ["plates.thf", "nowhere/p.png"],
                          ["plates.thf", "p.png", "nowhere/p.omb"], ["plates.thf", "nowhere/p.omb", "p.png"], ["plates.thf", "new.omb", "folder.png"],
                          ["plates.thf", "p.omb", "new.png", "folder.png"],
                          ["--save-view", "nowhere/v.bvp", "plates.thf"], ["--view", "missing.bvp", "plates.thf", "p.png"]):
            with self.subTest(arguments):
                self.refused(3, arguments)
        self.assertEqual(os.listdir(self.folder / "folder.png"), [])

    @unittest.skipIf(WINDOWS, "limits of the system the test runs on")
    def test_a_full_disk_is_status_3(self):
        def few_bytes():
            signal.signal(signal.SIGXFSZ, signal.SIG_IGN)
            resource.setrlimit(resource.RLIMIT_FSIZE, (20000, 20000))
        for output in ("p.omb", "p.png"):
            self.refused(3, ["--size", "900x700", str(SAMPLES / "square.thf"), output], [os.strerror(errno.EFBIG)], preexec_fn=few_bytes)
        self.write("long.thf", "Y 3 0 0 0 1 0 0 0 1 0 0 900\n" + "".join(f"1 Material{i}\n3 1 2 3\n" for i in range(900)))
        for model in ("plates.thf", "long.thf"):     # what stays in the buffer to the end, and what does not
            with open("/dev/full", "w") as full:
                self.refused(3, ["--info", model], ["standard output cannot be written: " + os.strerror(errno.ENOSPC)], stdout=full)
        self.refused(3, ["--save-view", "/dev/full", "plates.thf"], [os.strerror(errno.ENOSPC)])

        def no_bytes():
            few_bytes()
            resource.setrlimit(resource.RLIMIT_FSIZE, (0, 0))
        self.refused(3, ["--save-view", self.write("old.bvp", "Belvor View Parameters 1.0\n"), "plates.thf"], ["old.bvp"], preexec_fn=no_bytes)

    @unittest.skipIf(WINDOWS, "mounts a small disk")
    def test_a_disk_that_fills_up_at_the_end_is_status_3(self):
        """The last bytes stay in a buffer until the file is closed: closing must be looked at as well."""
        small = self.folder / "small"
        small.mkdir()
        if subprocess.run(["mount", "-t", "tmpfs", "-o", "size=8k", "none", str(small)], capture_output=True).returncode:
            self.skipTest("may not mount")
        self.addCleanup(subprocess.run, ["umount", str(small)], check=True)
        for size, output, taken, status in (("20x15", "p.omb", 0, 0), ("40x30", "p.omb", 0, 3), ("20x15", "p.omb", 8192, 3), ("20x15", "p.png", 8192, 3)):
            (small / "filler").write_bytes(b"x" * taken)
            done = self.run_program("--size", size, str(SAMPLES / "teapot.thf"), f"small/{output}")
            self.assertEqual(done.returncode, status, done.stderr)
            self.assertEqual(sorted(path.name for path in small.iterdir()), ["filler"] + [output] * (status == 0))
            if status:
                self.assertIn(os.strerror(errno.ENOSPC), done.stderr)
            else:
                (small / output).unlink()

    @unittest.skipIf(WINDOWS or SANITIZED, "limits the address space")
    def test_memory_exhausted_is_status_4(self):
        def little_memory():
            resource.setrlimit(resource.RLIMIT_AS, (300 << 20, 300 << 20))
        vertices = 9000000
        self.write("many.thf", f"Y {vertices}\n" + "1 2 3\n" * vertices + "0 0\n")
        self.refused(4, ["many.thf", "p.png"], preexec_fn=little_memory)

    @unittest.skipIf(WINDOWS, "a signal does not reach a program under Wine")
    def test_an_interrupted_render_is_status_130(self):
        for output in ("p.omb", "p.png"):
            process = subprocess.Popen(command() + ["--size", "9000x7000", str(SAMPLES / "bunny.thf"), output], cwd=self.folder,
                                       stdout=subprocess.DEVNULL, stderr=subprocess.PIPE,
                                       preexec_fn=lambda: signal.signal(signal.SIGINT, signal.SIG_DFL))   # an ignored one stays ignored
            self.addCleanup(process.stderr.close)
            while len(self.names()) < 3 and process.poll() is None:
                time.sleep(0.01)
            process.send_signal(signal.SIGINT)
            self.assertIn(process.wait(60), (-signal.SIGINT, 128 + signal.SIGINT))     # by the signal, as far as it can
            self.assertEqual(self.names(), ["p.omb", "plates.thf"])

    def test_info(self):
        info = json.loads(self.run_program("--info", "plates.thf").stdout)
        self.assertEqual(list(info), ["file", "type", "vertices", "edges", "facets", "materials", "centre", "radius", "units", "materialList"])
        self.assertEqual([info[key] for key in ("file", "type", "vertices", "edges", "facets", "materials")], ["plates.thf", "things", 16, 12, 2, 2])
        self.assertEqual((info["centre"], info["units"]), ([2.0, 1.5, 0.5], {"code": 0, "scale": 1.0}))
        self.assertAlmostEqual(info["radius"], 6.5 ** 0.5, delta=1e-15)
        self.assertEqual([(m["index"], m["name"]) for m in info["materialList"]], [(1, "Lower"), (2, "Upper")])
        step = (5 ** 0.5 - 1) * 0.5 * 3
        self.assertEqual(info["materialList"][0]["colour"], [(2 - (step - 1)) / 2, 1.0, (1 + (step - 1)) / 2])

    def test_a_model_without_surfaces_is_an_empty_picture(self):
        self.write("wire.thf", "Y 3 0 0 0 1 0 0 0 1 0 1 1 2 Wire\n0")
        done = self.run_program("--size", "7x5", "wire.thf", "w.png")
        self.assertEqual(done.returncode, 0)
        self.assertIn("no surfaces to draw", done.stderr)
        self.assertEqual(read_png(self.read("w.png")), (7, 5, bytes(7 * 5 * 3)))

    def test_type_and_view_options(self):
        self.write("plates.txt", PLATES)
        self.assertEqual(self.run_program("plates.thf", "p.png").stderr, "", "progress is for terminals only")
        self.render("--size", "40x30", "--type", "things", "plates.txt", "a.png", "--save-view", "v.bvp")
        self.render("--size", "40x30", "--view", "v.bvp", "--save-view", "w.bvp", "plates.thf", "b.png")
        self.assertEqual(self.read("v.bvp"), self.read("w.bvp"))
        self.assertEqual(read_png(self.read("a.png")), read_png(self.read("b.png")))
        if not WINDOWS:
            os.symlink("only.bvp", self.folder / "link.bvp")
        self.render("--save-view", "only.bvp" if WINDOWS else "link.bvp", "plates.thf")     # through the link, not in its place
        lines = self.read("only.bvp").decode().split("\r\n" if WINDOWS else "\n")
        self.assertEqual([lines[0], lines[2], *lines[3:]],
                         ["Belvor View Parameters 1.0", "2 1.5 0.5", "0.364", "0", "0.4", "0.1", "-30 60 0.6", "180 30 0", "0 30 0", "90 30 0", "-90 30 0", ""])

    def test_views_with_names_and_changed_numbers(self):
        self.render("-s40x30", "plates.thf", "whole.png")
        self.render("-s40x30", "--view", "WHOLE", "plates.thf", "again.png")
        self.assertEqual(self.read("whole.png"), self.read("again.png"))
        names = ["plan", "below", "front", "back", "left", "right", "iso-ne", "iso-nw", "iso-se", "iso-sw"]
        self.render("-s40x30", *(part for name in names for part in ("-v", name)), "plates.thf", "{view}.png")
        for name in names:
            self.render("-s40x30", "-v", name, "--save-view", "f.bvp", "plates.thf", "a.png", "a.omb")
            self.render("-s40x30", "-v", "./f.bvp", "plates.thf", "b.png", "b.omb")
            self.assertEqual(self.read("a.png"), self.read("b.png"), name)
            self.assertEqual(self.read("a.omb"), self.read("b.omb"), name)
            self.assertEqual(self.read("a.png"), self.read(f"{name}.png"))
        self.render("--eye=-1,2,30", "--look-at", "2,3,0", "--zoom", "0.25", "--parallel", "--sky", "0.5", "--ground=0.25", "--light", "2=10,20,0.5",
                    "--save-view", "c.bvp", "plates.thf")
        self.assertEqual(self.read("c.bvp").decode().split()[4:], "-1 2 30 2 3 0 0.25 1 0.5 0.25 -30 60 0.6 10 20 0.5 0 30 0 90 30 0 -90 30 0".split())
        self.render("-s40x30", "-v", "plan", "--scale", "0.25", "plates.thf", "a.png")     # the lower plate is 4 x 3
        rgb = read_png(self.read("a.png"))[2]
        self.assertEqual(sum(any(rgb[i:i + 3]) for i in range(0, len(rgb), 3)), 16 * 12)
        report = json.loads(self.render("-v", "plan", "-v", "f.bvp", "--report", "-", "plates.thf", "{view}_{name}_{n}_{{}.png"))
        self.assertEqual([camera["view"] for camera in report["cameras"]], ["plan", "f"])
        self.assertEqual([output["name"] for output in report["outputs"]], ["plan_plates_0001_{}.png", "f_plates_0001_{}.png"])
        for arguments, says in ((["-v", "plan", "-v", "left", "plates.thf", "p.png"], "{view}"), (["-v", "plan", "-v", "PLAN", "plates.thf", "{view}.png"], "named twice"),
                                (["-v", "plan", "-v", "left", "--save-view", "x.bvp", "plates.thf"], "--save-view needs a single view"),
                                (["-v", "plan", "-v", "left", "plates.thf", "{view}{x}.png"], "{x}"), (["-v", "plan", "-v", "left", "plates.thf", "{view}{.png"], "brace"),
                                (["--scale", "1", "plates.thf", "p.png"], "parallel"), (["--scale", "1", "--zoom", "1", "-v", "plan", "plates.thf", "p.png"], "--zoom and --scale"),
                                (["--parallel", "--perspective", "plates.thf", "p.png"], "--parallel and --perspective"), (["--zoom", "0", "plates.thf", "p.png"], "--zoom"),
                                (["--light", "6=1,2,3", "plates.thf", "p.png"], "--light"), (["--light", "1=1,2,3", "--light", "1=1,2,3", "plates.thf", "p.png"], "--light 1"),
                                (["--eye", "1,2", "plates.thf", "p.png"], "--eye"), (["--eye", "1,2,3,4", "plates.thf", "p.png"], "--eye")):
            with self.subTest(arguments):
                self.refused(2, arguments, [says])

    def test_edges_over_surfaces_and_alone(self):
        def colours(*options):
            self.render("--size", "60x45", *options, "plates.thf", "p.png")
            width, height, rgb = read_png(self.read("p.png"))
            return [rgb[i:i + 3] for i in range(0, len(rgb), 3)]
        ink, paper, black = b"\x12\xab\xff", b"\xff\xff\xff", bytes(3)
        without = colours()
        inked = colours("--edges", "--line-colour", "#12abFF")
        self.assertGreater(inked.count(ink), 30)
        self.assertTrue(all(a == b for a, b in zip(inked, without) if a != ink), "surfaces stay what they are")
        drawing = colours("--edges=all", "--line-colour", "#000000", "--surfaces", "off", "--background", "#ffffff")
        self.assertEqual(set(drawing), {black, paper})
        self.assertGreater(colours("--edges", "--line-width", "5", "--line-colour", "#12abff").count(ink), 2 * inked.count(ink))
        darker = set(colours("--edges")) - set(without)
        self.assertTrue({bytes(35 * c // 100 for c in colour) for colour in set(without)} >= darker)
        for option in ["--edges=some", "--line-width=2", "--line-width=17", "--line-colour=red", "--background=#12345", "--surfaces=maybe"]:
            self.refused(2, [option, "plates.thf", "p.png"], [option.split("=")[0]])

    def test_names_of_every_script(self):
        folder = "Pläne für Zoë 図面/"
        os.mkdir(self.folder / folder)
        shutil.copy(self.folder / "plates.thf", self.folder / folder / "größe_模型.thf")
        self.render("--size", "9x7", "plates.thf", "plain.png", "plain.omb")
        model, view = folder + "größe_模型.thf", folder + "Ansicht ß.bvp"
        self.render("--size", "9x7", model, folder + "Bild é.png", folder + "Bild é.omb", "--save-view", view)
        self.render("--size", "9x7", "--view", view, model, folder + "again.png")
        self.assertEqual(sorted(os.listdir(self.folder / folder)), ["Ansicht ß.bvp", "Bild é.omb", "Bild é.png", "again.png", "größe_模型.thf"])
        self.assertEqual(self.read("plain.png"), self.read(folder + "Bild é.png"))
        self.assertEqual(self.read("plain.omb"), self.read(folder + "Bild é.omb"))
        self.assertEqual(json.loads(self.run_program("--info", model).stdout)["file"], model)
        self.refused(3, [folder + "fehlt.thf", "p.png"], ["fehlt.thf", "図面"])
