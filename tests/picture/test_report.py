"""The report of belvor-render: its fields, that it is always written, and that it agrees with the files it names."""
import hashlib
import json

import jsonschema

from program import ROOT, Folder

SCHEMA = jsonschema.Draft7Validator(json.loads((ROOT / "docs/report.schema.json").read_text(encoding="utf-8")))
FACE = "0 3DFACE 8 W 10 0 20 0 30 0 11 1 21 0 31 0 12 0 22 1 32 0 "
LINE = "0 LINE 8 W 10 0 20 0 11 1 21 0 "
CIRCLE = "0 CIRCLE 8 W 10 1 "       # which lacks its y
MESH = "0 MESH 8 W 91 0 92 3 10 0 20 0 30 0 10 1 20 0 30 0 10 0 20 1 30 0 93 4 90 3 90 0 90 1 90 2 94 0 95 0 "


class Reports(Folder):
    def setUp(self):
        super().setUp()
        for name, entities in (("face", FACE + LINE), ("line", LINE), ("bad", FACE + CIRCLE),
                               ("circle", CIRCLE), ("mesh", MESH)):
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
        report = self.report("face.dxf", "a.png", "b.omb", "--save-view", "v.bvp")
        self.assertEqual(" ".join(report), "schema program file reading units bounds facets entities repairs "
                         "materials blocks warnings camera outputs")
        self.assertEqual(report["entities"], [
            {"type": "3DFACE", "read": 1, "drawn": 1, "skipped": []},
            {"type": "LINE", "read": 1, "drawn": 0, "skipped": [{"reason": "no surface", "count": 1}]}])
        self.assertEqual((report["reading"], report["facets"]), ("strict", 1))
        self.assertEqual([(material["name"], material["facets"]) for material in report["materials"]], [("W", 1)])
        for file, name in zip([report["file"], *report["outputs"]], ["face.dxf", "a.png", "b.omb", "v.bvp"], strict=True):
            data = self.read(name)
            self.assertEqual(file, {"name": name, "bytes": len(data), "sha256": hashlib.sha256(data).hexdigest()})
        first = self.read("report.json")
        self.report("face.dxf", "a.png", "b.omb", "--save-view", "v.bvp")
        self.assertEqual(self.read("report.json"), first)
        self.assertEqual(list(self.report("--timing", "face.dxf", "a.png")["timing"]), ["read", "render"])

    def test_is_written_after_a_refusal(self):
        report = self.report("bad.dxf", status=1)
        self.assertIn("item <20> needed", report["error"])
        self.assertNotIn("camera", report)
        self.assertEqual(self.report("gone.dxf", status=3)["file"], {"name": "gone.dxf"})

    def test_goes_to_standard_output_after_the_info(self):
        info, report = self.run_program("--quiet", "--info", "--report", "-", "face.dxf").stdout.splitlines()
        self.assertEqual(json.loads(info)["facets"], 1)
        self.checked((report + "\n").encode())
        self.assertFalse((self.folder / "-").exists())

    def test_statuses_tell_of_empty_pictures_and_repairs(self):
        for line, status, facets, repairs in (
                ("face.dxf --fail-empty", 0, 1, 0), ("line.dxf", 0, 0, 0), ("line.dxf --fail-empty", 5, 0, 0),
                ("line.dxf --fail-repaired", 0, 0, 0), ("bad.dxf --reading modern --fail-repaired", 6, 1, 1),
                ("bad.dxf --reading modern", 0, 1, 1), ("face.dxf --reading modern --fail-repaired", 0, 1, 0),
                ("circle.dxf --reading modern --fail-repaired --fail-empty", 5, 0, 1)):
            report = self.report(*line.split(), "a.png", status=status)
            self.assertEqual((report["facets"], report["repairs"]["count"]), (facets, repairs), line)
            for repair in report["repairs"]["list"]:
                self.assertEqual((repair["record"], repair["text"]), ("CIRCLE", "left out: Bad DXF group: item <20> needed"))
            (self.folder / "a.png").unlink()
        self.report("bad.dxf", "a.png", "--fail-empty", status=1)
        self.assertFalse((self.folder / "a.png").exists())

    def test_the_readings(self):
        for options, drawn, reasons in ((["--reading", "strict"], 0, [{"reason": "type not drawn", "count": 1}]),
                                        (["--reading", "modern"], 1, [])):
            report = self.report("mesh.dxf", *options)
            self.assertEqual(report["entities"], [{"type": "MESH", "read": 1, "drawn": drawn, "skipped": reasons}])
            self.assertEqual(report["reading"], options[1])

    def test_what_is_told_of_a_refused_drawing(self):
        try_modern = "belvor-render: try --reading modern"
        for name, data in (("zip", b"PK\3\4"), ("dwg", b"AC1032\0\0\0\0"), ("other", b"x")):
            (self.folder / f"{name}.dxf").write_bytes(data)
        for line, kind in (("bad.dxf", ""), ("--quiet bad.dxf", ""), ("other.dxf", ""),
                           ("zip.dxf", "a zip archive"), ("zip.dxf --reading modern", "a zip archive"),
                           ("dwg.dxf", "a DWG drawing")):
            told = self.refused(1, "--info " + line, kind).stderr
            self.assertEqual("looks like" in told, kind != "", told)
            if line != "other.dxf":
                self.assertEqual(told.splitlines()[-1] == try_modern, line == "bad.dxf", told)
