"""The report of belvor-render: its fields, that it is always written, and that it agrees with the files it names."""
import hashlib
import json

import jsonschema

from program import ROOT, Folder

SCHEMA = jsonschema.Draft7Validator(json.loads((ROOT / "docs/report.schema.json").read_text(encoding="utf-8")))
FACE = "0 3DFACE 8 W 10 0 20 0 30 0 11 1 21 0 31 0 12 0 22 1 32 0 "
LINE = "0 LINE 8 W 10 0 20 0 11 1 21 0 "
CIRCLE = "0 CIRCLE 8 W 10 1 "       # which lacks its y
FOREIGN = (      # (how a file starts, what it looks like)
    (b"PK\3\4\x14\0", "a zip archive"), (b"AC1032\0\0", "a DWG drawing"), (b"AC2.10\0\0", "a DWG drawing"),
    (b"%PDF-1.7\n", "a PDF document"), (b"<?xml version='1.0'?>", "an XML document"),
    (b"\xff\xfe0\0\n\0", "text in UTF-16"), (b"\xfe\xff\0 ", "text in UTF-16"),
    (b" \0 \x000\0\r\0", "text in UTF-16"), (b"\0 \0 \x000\0\r", "text in UTF-16"), (bytes(64), ""), (b"x", ""),
)


class Reports(Folder):
    def setUp(self):
        super().setUp()
        for name, entities in (("face", FACE + LINE), ("line", LINE), ("bad", FACE + CIRCLE), ("circle", CIRCLE)):
            text = f"0 SECTION 2 ENTITIES {entities}0 ENDSEC 0 EOF "
            self.write(f"{name}.dxf", text.replace(" ", "\n"))

    def report(self, *arguments, status=0):
        """The report, checked against the schema and against itself."""
        done = self.run_program("--quiet", "--report", "report.json", *arguments)
        self.assertEqual(done.returncode, status, done.stderr)
        return self.checked(self.read("report.json"))

    def checked(self, data):
        self.assertTrue(data.endswith(b"\n") and data.count(b"\n") == 1)
        report = json.loads(data)
        SCHEMA.validate(report)
        for row in report["entities"]:
            self.assertEqual(row["read"], row["drawn"] + sum(skipped["count"] for skipped in row["skipped"]), row)
        return report

    def test_tells_what_was_read_and_written(self):
        call = "face.dxf a.png b.omb --save-view v.bvp --eye 1,2,3 --look-at 0,0,0.5 --zoom 0.5 --parallel".split()
        report = self.report(*call)
        self.assertEqual(" ".join(report), "schema program file reading units bounds facets entities repairs "
                         "materials blocks warnings camera outputs")
        self.assertEqual(report["entities"], [
            {"type": "3DFACE", "read": 1, "drawn": 1, "skipped": []},
            {"type": "LINE", "read": 1, "drawn": 0, "skipped": [{"reason": "no surface", "count": 1}]}])
        self.assertEqual((report["reading"], report["facets"]), ("strict", 1))
        self.assertEqual(report["camera"], {"projection": "parallel", "eye": [1, 2, 3], "lookAt": [0, 0, 0.5], "zoom": 0.5})
        self.assertEqual([(material["name"], material["facets"]) for material in report["materials"]], [("W", 1)])
        for file, name in zip([report["file"], *report["outputs"]], ["face.dxf", "a.png", "b.omb", "v.bvp"], strict=True):
            data = self.read(name)
            self.assertEqual(file, {"name": name, "bytes": len(data), "sha256": hashlib.sha256(data).hexdigest()})
        first = self.read("report.json")
        self.report(*call)
        self.assertEqual(self.read("report.json"), first)
        self.assertEqual(list(self.report("--timing", "face.dxf", "a.png")["timing"]), ["read", "render"])

    def test_is_written_after_a_refusal(self):
        report = self.report("bad.dxf", status=1)
        self.assertIn("item <20> needed", report["error"])
        self.assertNotIn("camera", report)
        self.assertEqual(self.report("gone.dxf", status=3)["file"], {"name": "gone.dxf"})

    def test_hashes_of_any_length(self):
        for size in (1, 55, 56, 63, 64, 119, 1000000):
            (self.folder / "blank.thf").write_bytes(b" " * size)
            self.assertEqual(self.report("blank.thf")["file"]["sha256"], hashlib.sha256(b" " * size).hexdigest())

    def test_statuses_tell_of_empty_pictures_and_repairs(self):
        for line, status, facets, repairs in (
                ("face.dxf --fail-empty", 0, 1, 0), ("line.dxf", 0, 0, 0), ("line.dxf --fail-empty", 5, 0, 0),
                ("line.dxf --fail-repaired", 0, 0, 0), ("bad.dxf --reading modern --fail-repaired", 6, 1, 1),
                ("bad.dxf --reading modern", 0, 1, 1), ("face.dxf --reading modern --fail-repaired", 0, 1, 0),
                ("circle.dxf --reading modern --fail-repaired --fail-empty", 5, 0, 1)):
            report = self.report(*line.split(), "a.png", status=status)
            self.assertEqual((report["facets"], report["repairs"]["count"]), (facets, repairs), line)
            self.assertEqual(report["reading"], "modern" if "modern" in line else "strict")
            for repair in report["repairs"]["list"]:
                self.assertEqual((repair["record"], repair["text"]), ("CIRCLE", "left out: Bad DXF group: item <20> needed"))
            (self.folder / "a.png").unlink()
        self.report("bad.dxf", "a.png", "--fail-empty", status=1)
        self.assertFalse((self.folder / "a.png").exists())

    def test_what_is_told_of_a_refused_drawing(self):
        for line, tries in (("bad.dxf", True), ("--quiet bad.dxf", False), ("--reading modern none.dxf", False)):
            self.write("none.dxf", "x")
            told = self.refused(1, "--info " + line).stderr.splitlines()
            self.assertEqual(told[-1] == "belvor-render: try --reading modern", tries, told)
        for start, kind in FOREIGN:
            (self.folder / "foreign.dxf").write_bytes(start)
            told = self.refused(1, "--info foreign.dxf", kind).stderr
            self.assertEqual("looks like" in told, kind != "", told)
            self.assertEqual("try --reading" in told, kind == "" , told)
