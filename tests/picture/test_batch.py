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
from program import BAD, PLATES, SANITIZED, WINDOWS, Folder

MODELS = [f"in/m{i}.thf" for i in range(1, 6)]
WRONG_USE = (
    ("--each p.png in/m1.thf in/bad.thf", "twice"), ("--each {name}.png in/m1.thf ./in/m1.thf", "twice"),
    ("--each a/{n}.png --each a//{n}.png in/m1.thf", "named twice"), ("--each {nme}.png in/m1.thf", "{nme}"),
    ("--each {name}.jpg in/m1.thf", ".png"), ("--each {dir}/{name}.png in/m1.thf in/m2.xyz", "m2.xyz"),
    ("--each {n}.png --info in/m1.thf", "--info"), ("--each {n}.png -o x.png in/m1.thf", "--output"),
    ("--each {n}.png --null in/m1.thf", "--null"), ("--each {n}.png", "no model"),
    ("--each {n}.png -j0 in/m1.thf", "--jobs"), ("-v plan -v left --each {n}.png in/m1.thf", "{view}"),
    ("--type=things --each {n}.png - in/m1.thf", "is for a single"), ("--list - - --each {n}.png", "single"),
    ("--each {n}.png --format png in/m1.thf", "--format is for a single"),
    ("--rows 0:9 --each {n}.png in/m1.thf", "--rows is for"),
)
# Options and whether pictures depend on them.
COUNTS = """--size=41x30 --view=front --eye=9,9,9 --look-at=1,1,1 --zoom=0.3 --scale=0.3 --parallel
    --perspective --light=1=0,0,1 --sky=0.3 --ground=0.3 --type=man --edges --lines --bounds=all
    --line-width=3 --line-colour=#123456 --background=#123456 --surfaces=off --reading=modern
    --colours=drawing"""
COUNTS_NOT = """--save-view --output --each --list --null --jobs --timeout --max-memory --fail-fast --threads
    --skip-existing --info --report --timing --format --rows --fail-empty --fail-repaired --dxf-log --quiet
    --version --help"""


def forest(trees):
    """Many plates: a model that takes its time."""
    plate = "Y 4 {0} 0 0 {1} 0 0 {1} 1 0 {0} 1 1 0 1\n1 S{2}\n4 1 2 3 4\n"
    return "".join(plate.format(i, i + 1, i % 7) for i in range(trees)) + "end\n"


class Batch(Folder):
    def setUp(self):
        super().setUp()
        (self.folder / "in").mkdir()
        for i, name in enumerate(MODELS):
            self.write(name, PLATES.replace("4 3 0", f"4 {3 + i} 0", 1))
        self.write("in/bad.thf", BAD)

    def run_batch(self, status, drawn, skipped, failed, *arguments, **options):
        """The finished process, which tells these counts last."""
        counts = f"{drawn + skipped + failed} models: {drawn} drawn, {skipped} skipped, {failed} failed"
        done = self.run_program("-s40x30", *arguments, **options)
        self.assertEqual((done.returncode, done.stderr.splitlines()[-1]), (status, counts), done.stderr)
        return done

    def test_names_order_and_counts(self):
        models = ["in/bad.thf"] + MODELS[:3]
        self.write("list", "in/m4.thf\r\n\nin/m5.thf")
        done = self.run_batch(1, 5, 0, 1, "--list", "list", "--each", "{dir}/../out/{view}/{name}-{n}.png",
                              "--each=o{{/{name}{view}.omb", "-vplan", "-vfront", "-j3", "--report=-",
                              *models)
        self.assertEqual(done.stderr.splitlines()[:-1], ["belvor-render: material expected in in/bad.thf"])
        lines = [json.loads(line) for line in done.stdout.splitlines()]
        self.assertEqual([(line["n"], line["model"], line["status"]) for line in lines],
                         [(i + 1, model, 0 if i else 1) for i, model in enumerate(models + MODELS[3:])])
        self.assertEqual(lines[0]["message"], "material expected in in/bad.thf")
        names = "in/../out/plan/m5-0006.png o{/m5plan.omb in/../out/front/m5-0006.png o{/m5front.omb"
        self.assertEqual([output["name"] for output in lines[5]["outputs"]], names.split())
        self.render("-s40x30", "-v", "front", "in/m5.thf", "alone.png", "alone.omb")
        self.assertEqual(self.read("alone.omb"), self.read("o{/m5front.omb"))
        self.assertEqual(read_png(self.read("alone.png")), read_png(self.read("out/front/m5-0006.png")))
        self.assertEqual(len(self.tree()), 8 + 5 * 4 + 2)
        self.run_batch(0, 2, 0, 0, "--null", "--list=-", "--each=z/{n}.png", input="in/m1.thf\0in/m2.thf\0")
        self.run_batch(0, 0, 0, 0, "--list", "-", "--each", "{name}.png", input="")

    def test_wrong_use_is_told_before_anything_is_read(self):
        for line, says in WRONG_USE:
            with self.subTest(line):
                self.refused(2, line, says)
        self.refused(3, "--list missing --each {name}.png")
        self.refused(1, "--view in/bad.thf --each {name}.png in/m1.thf")

    def test_limits_take_no_other_model_along(self):
        self.write("in/m3.thf", forest(60000))
        slow = "-s4000x4000 --timeout 0.01 in/m3.thf "     # less than reading it takes
        done = self.refused(7, slow + "--report - --each {n}.png", "1 models: 0 drawn, 0 skipped, 1 failed")
        self.assertIn("in/m3.thf took longer than", json.loads(done.stdout)["message"])
        self.refused(7, slow + "alone.png", "took longer than")

    @unittest.skipIf(SANITIZED or WINDOWS, "no limit of memory there")
    def test_memory(self):
        self.write("in/m3.thf", forest(60000))
        done = self.run_batch(8, 4, 0, 1, "--max-memory", "16M", "-j1", "--each", "{name}.png", *MODELS)
        self.assertIn("in/m3.thf needs more memory", done.stderr)
        self.refused(8, "--max-memory 16M in/m3.thf alone.png")
        done = self.run_program("--fail-fast", "-j1", "--each", "f{name}.png", "in/bad.thf", *MODELS)
        self.assertIn("\n6 models: 0 drawn, 0 skipped, 1 failed\n", done.stderr)
        self.assertEqual(done.returncode, 1)

    def test_pictures_that_are_there_are_passed_over(self):
        call = ["--skip-existing", "--report=r.jsonl", "--each=o/{name}.png", "--each=o/{name}.omb", *MODELS]
        self.run_batch(0, 5, 0, 0, *call)
        before = self.tree()
        self.run_batch(0, 0, 5, 0, *call)
        self.assertEqual(self.tree(), before)
        self.write("in/m1.thf", PLATES + "\n")
        (self.folder / "o/m2.png").unlink()
        for name in ("o/m3.png", "o/m4.omb"):
            (self.folder / name).write_bytes(self.read(name)[:-1])
        (self.folder / "r.jsonl").write_bytes(self.read("r.jsonl") + b'{"torn')
        self.run_batch(0, 4, 1, 0, *call)
        after = self.tree()
        self.assertEqual([after[name] for name in ("o/m2.png", "o/m3.png", "o/m4.omb")],
                         [before[name] for name in ("o/m2.png", "o/m3.png", "o/m4.omb")])
        self.run_batch(0, 0, 5, 0, *call)

    def test_pictures_with_texts_need_no_report(self):
        endings = ("png", "exr", "tif", "svg")
        each = [f"--each=p/{{name}}.{ending}" for ending in endings]
        call = ["--skip-existing", "--edges", "--report", "-", *MODELS, *each]
        self.run_batch(0, 5, 0, 0, *call)
        lines = [json.loads(line) for line in self.run_batch(0, 0, 5, 0, *call).stdout.splitlines()]
        self.assertEqual([(line["unchanged"], len(line["hash"])) for line in lines], [(True, 64)] * 5)
        before = self.tree("p")
        for i, ending in enumerate(endings):
            data = self.read(f"p/m{i + 1}.{ending}")
            other_hash = data.replace(lines[i]["hash"].encode(), b"0" * 64)
            for changed in (data[:-1], data + b"\0", data[:len(data) // 2], other_hash, b""):
                (self.folder / f"p/m{i + 1}.{ending}").write_bytes(changed)
                self.run_batch(0, 1, 4, 0, *call)
                self.assertEqual(self.tree("p"), before, ending)

    @unittest.skipIf(WINDOWS, "an option counts or does not on any system")
    def test_what_pictures_depend_on_is_in_their_hash(self):
        """A new option that changes pixels and is not in PictureHash.cpp leaves old pictures standing."""
        listed = re.findall(r"^ {2}(?: {4}|-., )(--[a-z-]+)", self.run_program("--help").stdout, re.M)
        counts = {option.partition("=")[0]: option for option in COUNTS.split()}
        self.assertEqual(sorted(listed), sorted([*counts, *COUNTS_NOT.split()]))
        hashes = {}
        for name, option in ({"": "-q"} | counts).items():
            base = [option for option in ("--size=40x30", "--view=plan") if option.partition("=")[0] != name]
            done = self.run_program(*base, option, "-j1", "--report=-", "--each={name}.png", "in/m1.thf")
            hashes[name] = json.loads(done.stdout)["hash"]
        self.assertEqual(len(set(hashes.values())), len(hashes), hashes)

    @unittest.skipIf(WINDOWS, "a signal does not reach a program under Wine")
    def test_killed_and_begun_again(self):
        models = [f"in/k{i}.thf" for i in range(40)]
        for i, name in enumerate(models):
            self.write(name, PLATES.replace("4 3 0", f"4 {2 + i % 9} 0", 1) if i % 9 else BAD)
        call = ["-s600x400", "-q", "--skip-existing", *models]
        self.run_program(*call, "--each", "quiet/{name}.png")
        out = self.folder / "out"
        for number in (signal.SIGKILL, signal.SIGTERM, signal.SIGINT):
            process = self.start(*call, "--each", "out/{name}.png",
                                 preexec_fn=lambda: signal.signal(signal.SIGINT, signal.SIG_DFL))
            while len(list(out.glob("*.png"))) < 5 and process.poll() is None:
                time.sleep(0.002)
            process.send_signal(number)
            self.assertIn(process.wait(60), (-number, 1))       # 1: it was done before
            for _ in range(2000):       # the processes of the one that was killed end when they see it
                if not list(out.glob("*.part")):
                    break
                time.sleep(0.01)
            if number != signal.SIGKILL:
                self.assertEqual(list(out.glob("*.part")), [])
        (out / ("k1.png." + "a2" * 10 + ".part")).write_bytes(b"left")
        foreign = out / ("other.png." + "a2" * 10 + ".part")
        foreign.write_bytes(b"not ours")
        self.run_program(*call, "--each", "out/{name}.png")
        foreign.unlink()     # which fails when it has gone
        self.assertEqual(self.tree("out"), self.tree("quiet"))

    @unittest.skipIf(WINDOWS, "signals")
    def test_a_worker_that_crashes(self):
        self.write("in/m3.thf", forest(60000))
        call = "-s3000x3000 -j1 --each out/{name}.png in/m1.thf in/m3.thf in/m2.thf"
        sanitizer = os.environ | {"ASAN_OPTIONS": "handle_segv=0"}
        process = self.start(*call.split(), stderr=subprocess.PIPE, env=sanitizer)
        while not list(self.folder.glob("out/m3.png.*.part")) and process.poll() is None:
            time.sleep(0.002)
        tasks = pathlib.Path(f"/proc/{process.pid}/task").glob("*/children")
        os.kill(next(int(child) for task in tasks for child in task.read_text().split()), signal.SIGSEGV)
        told = process.communicate(timeout=120)[1]
        self.assertEqual(process.returncode, 70, told)
        self.assertIn("in/m3.thf ended with signal 11", told)
        self.assertEqual(sorted(path.name for path in self.folder.glob("out/*")), ["m1.png", "m2.png"])
