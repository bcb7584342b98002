"""The report of belvor-render: its fields, that it is always written, and that it agrees with the files it names."""
import hashlib
import json

import jsonschema

from program import ROOT, Folder

SCHEMA = jsonschema.Draft7Validator(json.loads((ROOT / "docs/report.schema.json").read_text(encoding="utf-8")))
HEAD = "0\nSECTION\n2\nENTITIES\n"
FACE = "0\n3DFACE\n8\nW\n10\n0\n20\n0\n30\n0\n11\n1\n21\n0\n31\n0\n12\n0\n22\n1\n32\n0\n"
LINE = "0\nLINE\n8\nW\n10\n0\n20\n0\n11\n1\n21\n0\n"
END = "0\nENDSEC\n0\nEOF\n"
MESH = ("0\nMESH\n8\nW\n91\n0\n92\n3\n10\n0\n20\n0\n30\n0\n10\n1\n20\n0\n30\n0\n10\n0\n20\n1\n30\n0\n"
        "93\n4\n90\n3\n90\n0\n90\n1\n90\n2\n94\n0\n95\n0\n")


class Reports(Folder):
    def setUp(self):
        super().setUp()
        self.write("face.dxf", HEAD + FACE + LINE + END)
        self.write("line.dxf", HEAD + LINE + END)
        self.write("bad.dxf", HEAD + FACE + "0\nCIRCLE\n8\nW\n10\n1\n" + END)

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
        self.assertEqual(list(report), ["schema", "program", "file", "reading", "units", "bounds", "facets", "entities", "repairs",
                                        "materials", "blocks", "warnings", "camera", "outputs"])
        self.assertEqual(report["entities"], [
            {"type": "3DFACE", "read": 1, "drawn": 1, "skipped": []},
            {"type": "LINE", "read": 1, "drawn": 0, "skipped": [{"reason": "no surface", "count": 1}]}])
        self.assertEqual((report["reading"], report["facets"]), ("strict", 1))
        self.assertEqual([(material["name"], material["facets"]) for material in report["materials"]], [("W", 1)])
        for file, name in zip([report["file"], *report["outputs"]], ["face.dxf", "a.png", "b.omb", "v.bvp"], strict=True):
            data = self.read(name)
            self.assertEqual(file, {"name": name, "bytes": len(data), "sha256": hashlib.sha256(data).hexdigest()})

    def test_the_same_run_gives_the_same_bytes(self):
        for model in ("face.dxf", "plates.thf"):
            reports = []
            for _ in range(2):
                self.report(model, "a.png")
                reports.append(self.read("report.json"))
            self.assertEqual(*reports)
        timed = self.report("--timing", "face.dxf", "a.png")
        self.assertEqual(list(timed["timing"]), ["read", "render"])

    def test_is_written_after_a_refusal(self):
        report = self.report("bad.dxf", status=1)
        self.assertIn("item <20> needed", report["error"])
        self.assertNotIn("camera", report)
        report = self.report("gone.dxf", status=3)
        self.assertEqual(report["file"], {"name": "gone.dxf"})

    def test_goes_to_standard_output_after_the_info(self):
        done = self.run_program("--quiet", "--info", "--report", "-", "face.dxf")
        info, report = done.stdout.splitlines()
        self.assertEqual(json.loads(info)["facets"], 1)
        self.checked((report + "\n").encode())
        self.assertFalse((self.folder / "-").exists())

    def test_never_takes_the_place_of_another_file(self):
        for arguments in (["face.dxf", "--report", "face.dxf"], ["face.dxf", "a.png", "--report", "a.png"],
                          ["face.dxf", "--save-view", "v.bvp", "--report", "v.bvp"]):
            before = self.read("face.dxf")
            self.assertEqual(self.run_program(*arguments).returncode, 2, arguments)
            self.assertEqual(self.read("face.dxf"), before)

    def test_status_tells_scripts_of_empty_pictures(self):
        for model, options, status in (("face.dxf", ["--fail-empty"], 0), ("line.dxf", [], 0), ("line.dxf", ["--fail-empty"], 5),
                                       ("line.dxf", ["--fail-repaired"], 0), ("bad.dxf", ["--fail-empty"], 1)):
            self.report(model, "a.png", *options, status=status)
            self.assertEqual((self.folder / "a.png").exists(), status != 1, model)
            (self.folder / "a.png").unlink(missing_ok=True)

    def test_modern_reading_leaves_out_what_is_damaged(self):
        self.write("all.dxf", HEAD + "0\nCIRCLE\n8\nW\n10\n1\n" + END)
        for model, options, status, facets, repairs in (
                ("bad.dxf", ["--fail-repaired"], 6, 1, 1), ("bad.dxf", [], 0, 1, 1), ("face.dxf", ["--fail-repaired"], 0, 1, 0),
                ("all.dxf", ["--fail-repaired", "--fail-empty"], 5, 0, 1)):
            report = self.report("--reading", "modern", model, "a.png", *options, status=status)
            self.assertEqual((report["facets"], report["repairs"]["count"]), (facets, repairs))
            for repair in report["repairs"]["list"]:
                self.assertEqual((repair["record"], repair["text"]), ("CIRCLE", "left out: Bad DXF group: item <20> needed"))
            self.assertTrue((self.folder / "a.png").exists())

    def test_a_refused_drawing_may_be_read_by_the_modern_rules(self):
        (self.folder / "zip.dxf").write_bytes(b"PK\3\4")
        for arguments, told in ((["bad.dxf"], True), (["--quiet", "bad.dxf"], False), (["zip.dxf"], False),
                                (["--reading", "modern", "zip.dxf"], False)):
            done = self.run_program("--info", *arguments)
            self.assertEqual(done.returncode, 1)
            self.assertEqual(done.stderr.splitlines()[-1] == "belvor-render: try --reading modern", told, done.stderr)

    def test_modern_reading_draws_more(self):
        self.write("mesh.dxf", HEAD + MESH + END)
        for options, drawn, reasons in ((["--reading", "strict"], 0, [{"reason": "type not drawn", "count": 1}]),
                                        (["--reading", "modern"], 1, [])):
            report = self.report("mesh.dxf", *options)
            self.assertEqual(report["entities"], [{"type": "MESH", "read": 1, "drawn": drawn, "skipped": reasons}])
            self.assertEqual(report["reading"], options[1])
        self.assertEqual(self.run_program("--reading", "lax", "mesh.dxf", "--info").returncode, 2)

    def test_a_refusal_names_files_of_another_kind(self):
        for data, kind in ((b"AC1032\0\0\0\0", "a DWG drawing"), (b"PK\3\4\0\0", "a zip archive"), (b"x", None)):
            (self.folder / "other.dxf").write_bytes(data)
            done = self.run_program("--info", "other.dxf")
            self.assertEqual(done.returncode, 1)
            self.assertEqual("looks like" in done.stderr, kind is not None)
            self.assertIn(kind or "", done.stderr)
