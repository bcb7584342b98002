"""--threads: any number gives the same bytes."""
import hashlib
import unittest

from program import SAMPLES, Folder


class Threads(Folder):
    def digests(self, model, *arguments):
        self.render("--size", "1200x900", *arguments, str(SAMPLES / model), "p.omb", "p.png")
        return [hashlib.sha256(self.read(name)).hexdigest() for name in ("p.omb", "p.png")]

    def test_any_number_gives_the_same_pictures(self):
        for model in ("bunny.thf", "letters.thf"):          # small facets; some of many corners
            for lines in ([], ["--edges", "--line-width", "3"]):
                wanted = self.digests(model, "--threads", "1", *lines)
                for threads in ("2", "3", "8", "256"):
                    with self.subTest((model, lines, threads)):
                        self.assertEqual(self.digests(model, "--threads", threads, *lines), wanted)
                with self.subTest((model, lines, "as many as there are")):
                    self.assertEqual(self.digests(model, *lines), wanted)

    def test_other_numbers_are_refused(self):
        for number in ("0", "-1", "257", "two", "1.5", ""):
            with self.subTest(number):
                done = self.run_program("--threads", number, "plates.thf", "p.omb")
                self.assertEqual(done.returncode, 2, done.stderr)
                self.assertEqual(self.names(), ["plates.thf"])


if __name__ == "__main__":
    unittest.main()
