"""Files that must not be lost: what is at a name is always whole, the old file or the new one, whatever stops belvor-render."""
import os
import random
import resource
import shutil
import signal
import subprocess
import time
import unittest

from files import Ombr, read_png
from program import PROGRAM, SAMPLES, SANITIZED, WINDOWS, Folder

OLD = b"what was there before"


def stopped_by(number):
    return -number, 128 + number


def maps_of(process):
    try:
        with open(f"/proc/{process}/maps", encoding="utf-8") as maps:
            return maps.read()
    except OSError:
        return ""


@unittest.skipIf(WINDOWS, "links, modes and signals of the system the test runs on")
class OutputFiles(Folder):
    def test_no_link_leads_an_output_to_the_model(self):
        self.write("drawing.dxf", "0\nSECTION\n2\nENTITIES\n0\nENDSEC\n0\nEOF\n")
        self.write("view.bvp", "Belvor View Parameters 1.0\n")
        for pair in """v.bvp>plates.thf p.png>plates.thf p.omb>v.bvp drawing.dxf.log>drawing.dxf
                view.png>view.bvp one.png>not_yet.png two.png>./not_yet.png""".split():
            name, target = pair.split(">")
            os.symlink(target, self.folder / name)
        os.link(self.folder / "plates.thf", self.folder / "second.omb")
        for line in ("--save-view v.bvp plates.thf", "plates.thf p.png", "plates.thf p.omb",
                     "plates.thf second.omb", "--dxf-log drawing.dxf d.png",
                     "--view view.bvp plates.thf view.png", "plates.thf one.png two.png"):
            with self.subTest(line):
                self.refused(2, line)

    def test_what_an_output_replaces(self):
        """Its mode stays, a link is followed, a write-protected file is refused, a device is written into."""
        for name in ("p.png", "p.omb", "target.png", "guarded.png"):
            (self.folder / name).write_bytes(OLD)
            os.chmod(self.folder / name, 0o600)
        os.chmod(self.folder / "guarded.png", 0o400)
        os.symlink("target.png", self.folder / "link.png")
        os.symlink("/dev/null", self.folder / "null.omb")
        self.render("plates.thf", "p.png", "p.omb", "link.png", "null.omb", "new.png")
        for name in ("p.png", "p.omb", "target.png"):
            self.assertEqual(os.stat(self.folder / name).st_mode & 0o777, 0o600)
        self.assertTrue(os.path.islink(self.folder / "link.png") and os.path.islink(self.folder / "null.omb"))
        self.assertEqual(self.read("target.png"), self.read("new.png"))
        self.refused(3, "plates.thf guarded.png")

    def check_whole(self, *names):
        for name in names:
            data = self.read(name)
            if data != OLD:
                read_png(data) if name.endswith(".png") else Ombr(data)

    def test_signals_at_any_moment(self):
        arguments = ["--size", "700x500", str(SAMPLES / "teapot.thf"), "p.png", "p.omb"]
        began = time.monotonic()
        self.render(*arguments)
        whole = time.monotonic() - began
        moments, stopped = random.Random(12), 0
        for _ in range(20 if SANITIZED else 100):
            for name in ("p.png", "p.omb"):
                (self.folder / name).write_bytes(OLD)
            number = moments.choice([signal.SIGTERM, signal.SIGHUP, signal.SIGINT])
            process = self.start("--quiet", *arguments)
            time.sleep(moments.uniform(0.2, 1.1) * whole)
            process.send_signal(number)
            status = process.wait(60)
            self.assertIn(status, (0, *stopped_by(number)))
            stopped += status != 0
            self.assertEqual(self.names(), ["p.omb", "p.png", "plates.thf"])
            self.check_whole("p.omb", "p.png")
            if status == 0:
                self.assertNotIn(OLD, (self.read("p.omb"), self.read("p.png")))
        self.assertGreater(stopped, 0)

    def test_ignored_signals_and_limits(self):
        process = self.start("--quiet", "--size", "700x500", str(SAMPLES / "teapot.thf"), "p.png",
                             preexec_fn=lambda: signal.signal(signal.SIGHUP, signal.SIG_IGN))
        time.sleep(0.02)
        process.send_signal(signal.SIGHUP)
        self.assertEqual(process.wait(60), 0, "an ignored signal stays ignored")

        def few_bytes():
            signal.signal(signal.SIGXFSZ, signal.SIG_DFL)
            resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
            resource.setrlimit(resource.RLIMIT_FSIZE, (20000, 20000))
        done = self.run_program("--size", "900x700", str(SAMPLES / "square.thf"), "p.omb", preexec_fn=few_bytes)
        self.assertIn(done.returncode, stopped_by(signal.SIGXFSZ))
        self.assertIn("p.omb", done.stderr)
        self.assertEqual(self.names(), ["p.png", "plates.thf"])

    def test_a_second_signal_ends_at_once(self):
        """The pipe has a reader that takes nothing, so that the program waits in a write; both signals come while it does."""
        os.mkfifo(self.folder / "pipe.omb")
        process = self.start("--quiet", "-s1500x1000", str(SAMPLES / "teapot.thf"), "p.png", "pipe.omb")
        reader = os.open(self.folder / "pipe.omb", os.O_RDONLY)
        self.addCleanup(os.close, reader)
        os.read(reader, 1)
        time.sleep(0.3)
        process.send_signal(signal.SIGTERM)
        process.send_signal(signal.SIGTERM)
        self.assertIn(process.wait(10), stopped_by(signal.SIGTERM))
        self.assertEqual(self.names(), ["pipe.omb", "plates.thf"])

    def test_a_model_that_shrinks_while_it_is_read(self):
        """A message instead of a fault of the bus, and no picture; whether the end of the file or a part of its last page is lost."""
        for name, text in (("big.thf", "Y 300000\n" + "0.125 2.5 3.25\n" * 300000 + "0 0\n"),
                           ("big.dxf", "0\nSECTION\n2\nENTITIES\n" + "0\n3DFACE\n8\n0\n10\n0\n20\n0\n30\n0\n11\n1\n21\n0\n31\n0\n12\n1\n22\n1\n32\n0\n" * 90000)):
            for left in (100, len(text) // 2, len(text) - 20):
                for _ in range(9):      # one that was done before its file was cut proves nothing
                    (self.folder / "p.png").unlink(missing_ok=True)
                    self.write(name, text)
                    process = self.start(name, "p.png", stderr=subprocess.PIPE)
                    while process.poll() is None and name not in maps_of(process.pid):
                        pass
                    os.truncate(self.folder / name, left)
                    told = process.communicate(timeout=60)[1]
                    if process.returncode:
                        break
                self.assertEqual((process.returncode, "p.png" in self.names()), (3, False), (name, left))
                self.assertIn(f"{name}: the file was changed or became unreadable while it was read", told)

    def test_two_containers_write_one_name(self):
        """Two programs with the same process number."""
        alone = ["unshare", "--pid", "--fork"]
        if not shutil.which("unshare") or subprocess.run([*alone, "true"], capture_output=True).returncode:
            self.skipTest("may not make namespaces of process numbers")
        self.render("--size", "300x200", str(SAMPLES / "teapot.thf"), "wanted.png", "wanted.omb")
        for _ in range(5):
            both = [subprocess.Popen([*alone, PROGRAM, "--quiet", "--size", "300x200", str(SAMPLES / "teapot.thf"), "p.png", "p.omb"],
                                     cwd=self.folder) for _ in range(2)]
            self.assertEqual([each.wait(60) for each in both], [0, 0])
            self.assertEqual(self.names(), ["p.omb", "p.png", "plates.thf", "wanted.omb", "wanted.png"])
            self.assertEqual((self.read("p.png"), self.read("p.omb")), (self.read("wanted.png"), self.read("wanted.omb")))
