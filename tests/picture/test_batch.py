"""Many models a call: names, order, statuses, limits, what is passed over, and that a killed run can be begun again."""
import json
import os
import pathlib
import re
import signal
import subprocess
import time
import unittest

from files import read_png
from program import PLATES, SANITIZED, WINDOWS, Folder, command

BAD = "Y 3 0 0 0 1 0 0 0 1 0 1 1 2"


def forest(trees):
    """Many plates: a model that takes its time."""
    return "".join(f"Y 4 {i} 0 0 {i + 1} 0 0 {i + 1} 1 0 {i} 1 1 0 1\n1 S{i % 7}\n4 1 2 3 4\n" for i in range(trees)) + "end\n"


class Batch(Folder):
    def setUp(self):
        super().setUp()
        (self.folder / "in").mkdir()
        for i in range(1, 6):
            self.write(f"in/m{i}.thf", PLATES.replace("4 3 0", f"4 {2 + i} 0", 1))
        self.write("in/bad.thf", BAD)

    def run_batch(self, status, *arguments, **options):
        done = self.run_program("-s40x30", *arguments, **options)
        self.assertEqual(done.returncode, status, (arguments, done.stderr))
        return done

    def counts(self, done):
        return done.stderr.splitlines()[-1]

    def test_names_order_and_counts(self):
        models = ["in/bad.thf"] + [f"in/m{i}.thf" for i in range(1, 4)]
        self.write("list", "in/m4.thf\r\n\nin/m5.thf")
        done = self.run_batch(1, "--list", "list", "--each", "{dir}/../out/{view}/{name}-{n}.png", "--each", "o{{/{name}{view}.omb", "-v", "plan",
                              "-v", "front", "-j3", "--report", "-", *models)
        self.assertEqual(done.stderr, "belvor-render: material expected in in/bad.thf\n6 models: 5 drawn, 0 skipped, 1 failed\n")
        lines = [json.loads(line) for line in done.stdout.splitlines()]
        self.assertEqual([(line["n"], line["model"], line["status"]) for line in lines],
                         [(i + 1, model, 0 if i else 1) for i, model in enumerate(models + ["in/m4.thf", "in/m5.thf"])])
        self.assertEqual(lines[0]["message"], "material expected in in/bad.thf")
        self.assertEqual([output["name"] for output in lines[5]["outputs"]],
                         [name for view in ("plan", "front") for name in (f"in/../out/{view}/m5-0006.png", f"o{{/m5{view}.omb")])
        self.render("-s40x30", "-v", "front", "in/m5.thf", "alone.png", "alone.omb")
        self.assertEqual(self.read("alone.omb"), self.read("o{/m5front.omb"))
        self.assertEqual(read_png(self.read("alone.png")), read_png(self.read("out/front/m5-0006.png")))
        self.assertEqual(len(self.tree()), 8 + 5 * 4 + 2)
        null = self.run_batch(0, "--null", "--list", "-", "--each", "z/{name}.png", input="in/m1.thf\0in/m2.thf\0")
        self.assertEqual(self.counts(null), "2 models: 2 drawn, 0 skipped, 0 failed")
        self.assertEqual(self.run_batch(0, "--list", os.devnull, "--each", "{name}.png").stderr, "0 models: 0 drawn, 0 skipped, 0 failed\n") if not WINDOWS else None

    def test_wrong_use_is_told_before_anything_is_read(self):
        before = self.tree()
        for arguments, says in ((["--each", "p.png", "in/m1.thf", "in/bad.thf"], "named twice"), (["--each", "{name}.png", "in/m1.thf", "./in/../in/m1.thf"], "named twice"),
                                (["--each", "new/{name}.png", "--each", "new//{name}.png", "in/m1.thf"], "named twice"), (["--each", "{nme}.png", "in/m1.thf"], "{nme}"),
                                (["--each", "{name}.jpg", "in/m1.thf"], ".png"), (["--each", "{dir}/{name}.png", "in/m1.thf", "in/m2.xyz"], "m2.xyz"),
                                (["--each", "{name}.png", "--info", "in/m1.thf"], "--info"), (["--each", "{name}.png", "-o", "x.png", "in/m1.thf"], "--output"),
                                (["--jobs", "2", "in/m1.thf", "p.png"], "--jobs"), (["--skip-existing", "in/m1.thf", "p.png"], "--skip-existing"),
                                (["--list", "x", "in/m1.thf"], "nothing to do"), (["--each", "{name}.png", "--null", "in/m1.thf"], "--null"),
                                (["--max-memory", "12", "in/m1.thf", "p.png"], "--max-memory"), (["--timeout", "0", "in/m1.thf", "p.png"], "--timeout"),
                                (["--each", "{name}.png"], "no model"), (["--each", "{name}.png", "-j0", "in/m1.thf"], "--jobs"),
                                (["-v", "plan", "-v", "left", "--each", "{name}.png", "in/m1.thf"], "{view}")):
            with self.subTest(arguments):
                self.assertIn(says, self.run_batch(2, *arguments).stderr)
        self.assertEqual(self.tree(), before)
        self.run_batch(3, "--list", "missing", "--each", "{name}.png")
        self.run_batch(1, "--view", "in/bad.thf", "--each", "{name}.png", "in/m1.thf")

    def test_limits_take_no_other_model_along(self):
        self.write("in/m3.thf", forest(60000))
        slow = ["--timeout", "0.01"]     # less than reading it takes
        done = self.run_program("-s4000x4000", *slow, "--report", "-", "-j2", "--each", "{name}.png", "in/m3.thf")
        self.assertEqual((done.returncode, self.counts(done)), (7, "1 models: 0 drawn, 0 skipped, 1 failed"))
        self.assertIn("in/m3.thf took longer than", json.loads(done.stdout)["message"])
        alone = self.run_program("-s4000x4000", *slow, "in/m3.thf", "alone.png")
        self.assertEqual((alone.returncode, "took longer than" in alone.stderr), (7, True))
        self.assertEqual([name for name in self.tree() if "png" in name], [])

    @unittest.skipIf(SANITIZED or WINDOWS, "no limit of memory there")
    def test_memory(self):
        self.write("in/m3.thf", forest(60000))
        models = [f"in/m{i}.thf" for i in range(1, 6)]
        done = self.run_batch(8, "--max-memory", "16M", "-j1", "--each", "{name}.png", *models)
        self.assertIn("in/m3.thf needs more memory", done.stderr)
        self.assertEqual(self.counts(done), "5 models: 4 drawn, 0 skipped, 1 failed")
        self.run_batch(8, "--max-memory", "16M", "in/m3.thf", "alone.png")
        self.assertEqual(self.counts(self.run_batch(1, "--fail-fast", "-j1", "--each", "f{name}.png", "in/bad.thf", *models)),
                         "6 models: 0 drawn, 0 skipped, 1 failed")

    def test_pictures_that_are_there_are_passed_over(self):
        models = [f"in/m{i}.thf" for i in range(1, 6)]
        call = ["--skip-existing", "--report", "r.jsonl", "--each", "o/{name}.png", "--each", "o/{name}.omb", *models]
        self.assertEqual(self.counts(self.run_batch(0, *call)), "5 models: 5 drawn, 0 skipped, 0 failed")
        before = self.tree()
        self.assertEqual(self.counts(self.run_batch(0, *call)), "5 models: 0 drawn, 5 skipped, 0 failed")
        self.assertEqual(self.tree(), before)
        self.write("in/m1.thf", PLATES + "\n")
        (self.folder / "o/m2.png").unlink()
        for name in ("o/m3.png", "o/m4.omb"):
            (self.folder / name).write_bytes(self.read(name)[:-1])
        (self.folder / "r.jsonl").write_bytes(self.read("r.jsonl") + b'{"torn')
        self.assertEqual(self.counts(self.run_batch(0, *call)), "5 models: 4 drawn, 1 skipped, 0 failed")
        self.assertEqual({name: data for name, data in self.tree().items() if name[2:] in ("m2.png", "m3.png", "m4.omb")},
                         {name: data for name, data in before.items() if name[2:] in ("m2.png", "m3.png", "m4.omb")})
        self.assertEqual(self.counts(self.run_batch(0, *call)), "5 models: 0 drawn, 5 skipped, 0 failed")
        for changed in (["--sky", "0.5"], ["-s41x30"], ["-v", "plan"], ["--edges"], ["--background", "#000001"]):
            call[:0] = changed
            arguments = call if "-s41x30" in call else ["-s40x30"] + call
            self.assertIn("5 drawn", self.counts(self.run_program(*arguments)))

    def test_pictures_with_texts_need_no_report(self):
        models, endings = [f"in/m{i}.thf" for i in range(1, 6)], ("png", "exr", "tif", "svg")
        call = ["--skip-existing", "--edges", "--report", "-", *(word for ending in endings for word in ("--each", f"p/{{name}}.{ending}")), *models]
        self.run_batch(0, *call)
        lines = [json.loads(line) for line in self.run_batch(0, *call).stdout.splitlines()]
        self.assertEqual([(line["unchanged"], len(line["hash"])) for line in lines], [(True, 64)] * 5)
        before = self.tree("p")
        for i, ending in enumerate(endings):
            data = self.read(f"p/m{i + 1}.{ending}")
            for changed in (data[:-1], data + b"\0", data[:len(data) // 2], data.replace(lines[i]["hash"].encode(), b"0" * 64), b""):
                (self.folder / f"p/m{i + 1}.{ending}").write_bytes(changed)
                self.assertEqual((self.counts(self.run_batch(0, *call)), self.tree("p")), ("5 models: 1 drawn, 4 skipped, 0 failed", before), ending)

    @unittest.skipIf(WINDOWS, "an option counts or does not on any system")
    def test_what_pictures_depend_on_is_in_their_hash(self):
        """Every option is in one of the lists: a new one that changes pixels and is not in PictureHash.cpp leaves old pictures standing."""
        counts = {"--size": "41x30", "--view": "front", "--eye": "9,9,9", "--look-at": "1,1,1", "--zoom": "0.3", "--scale": "0.3", "--parallel": None,
                  "--perspective": None, "--light": "1=0,0,1", "--sky": "0.3", "--ground": "0.3", "--type": "man", "--edges": None, "--lines": None,
                  "--bounds": "all", "--line-width": "3", "--line-colour": "#123456", "--background": "#123456", "--surfaces": "off",
                  "--reading": "modern", "--colours": "drawing"}
        others = {"--save-view", "--output", "--each", "--list", "--null", "--jobs", "--timeout", "--max-memory", "--fail-fast", "--skip-existing", "--threads",
                  "--info", "--report", "--timing", "--format", "--rows", "--fail-empty", "--fail-repaired", "--dxf-log", "--quiet", "--version", "--help"}
        listed = re.findall(r"^ {2}(?: {4}|-., )(--[a-z-]+)", self.run_program("--help").stdout, re.M)
        self.assertEqual(sorted(listed), sorted(counts.keys() | others))
        options = {"": []} | {name: [name] if value is None else [f"{name}={value}"] for name, value in counts.items()}
        base = {"--size": "-s40x30", "--view": "-vplan"}
        hashes = {}
        for name, option in options.items():
            call = [*option, *(value for key, value in base.items() if key != name), "-j1", "--report", "-", "--each", "{name}.png", "in/m1.thf"]
            hashes[name] = json.loads(self.run_program(*call).stdout)["hash"]
        self.assertEqual(len(set(hashes.values())), len(options), hashes)

    @unittest.skipIf(WINDOWS, "a signal does not reach a program under Wine")
    def test_killed_and_begun_again(self):
        for i in range(40):
            self.write(f"in/k{i}.thf", PLATES.replace("4 3 0", f"4 {2 + i % 9} 0", 1) if i % 9 else BAD)
        models = [f"in/k{i}.thf" for i in range(40)]
        size = "-s600x400"
        self.run_program(size, "-q", "--each", "quiet/{name}.png", *models)
        quiet = {name[6:]: data for name, data in self.tree().items() if name.startswith("quiet/")}
        for number in (signal.SIGKILL, signal.SIGTERM, signal.SIGINT):
            process = subprocess.Popen(command() + [size, "-q", "--skip-existing", "--each", "out/{name}.png", *models], cwd=self.folder,
                                       stderr=subprocess.DEVNULL, preexec_fn=lambda: signal.signal(signal.SIGINT, signal.SIG_DFL))
            while len(list(self.folder.glob("out/*.png"))) < 5 and process.poll() is None:
                time.sleep(0.002)
            process.send_signal(number)
            self.assertIn(process.wait(60), (-number, 1))       # 1: it was done before
            for _ in range(2000):       # the processes of the one that was killed end when they see it
                if not list(self.folder.glob("out/*.part")):
                    break
                time.sleep(0.01)
            if number != signal.SIGKILL:
                self.assertEqual(list(self.folder.glob("out/*.part")), [])
        (self.folder / "out" / ("k1.png." + "a2" * 10 + ".part")).write_bytes(b"left")
        (self.folder / "out" / ("other.png." + "a2" * 10 + ".part")).write_bytes(b"not ours")
        self.run_program(size, "-q", "--skip-existing", "--each", "out/{name}.png", *models)
        self.assertEqual({name[4:]: data for name, data in self.tree().items() if name.startswith("out/") and "other" not in name}, quiet)
        self.assertTrue((self.folder / "out" / ("other.png." + "a2" * 10 + ".part")).exists())

    @unittest.skipIf(WINDOWS, "signals")
    def test_a_worker_that_crashes(self):
        self.write("in/m3.thf", forest(60000))
        process = subprocess.Popen(command() + ["-s3000x3000", "-j1", "--each", "out/{name}.png", "in/m1.thf", "in/m3.thf", "in/m2.thf"], cwd=self.folder,
                                   stderr=subprocess.PIPE, encoding="utf-8", env=os.environ | {"ASAN_OPTIONS": "handle_segv=0"})
        while not list(self.folder.glob("out/m3.png.*.part")) and process.poll() is None:
            time.sleep(0.002)
        workers = [int(child) for child in pathlib.Path(f"/proc/{process.pid}/task").glob("*/children") for child in child.read_text().split()]
        os.kill(workers[0], signal.SIGSEGV)
        told = process.communicate(timeout=120)[1]
        self.assertEqual(process.returncode, 70, told)
        self.assertIn("in/m3.thf ended with signal 11", told)
        self.assertEqual(sorted(path.name for path in self.folder.glob("out/*")), ["m1.png", "m2.png"])
