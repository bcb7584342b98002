"""Damaged drawings: the modern reading draws what is undamaged, refuses none of them, and its account names the damaged records.

A drawing of faces, solids and circles, each of one facet, is damaged in one record at a time, as text and binary.
"""
import json
import random
import struct
import subprocess
import tempfile
import unittest

import group_counter
from test_random_drawings import PROGRAM

REAL, SMALL, TEXT = "real", "small", "text"


def kind_of(code):
    return REAL if 10 <= code <= 59 or 210 <= code <= 239 else SMALL if 60 <= code <= 79 else TEXT


def text_file(groups):
    """(bytes, the place of each group as the report tells it)."""
    return "".join(f"{code:3}\n{value}\n" for code, value in groups).encode(), [1 + 2 * i for i in range(len(groups))]


def binary_file(groups):
    data, places = bytearray(group_counter.SENTINEL), []
    for code, value in groups:
        places.append(len(data))
        data += struct.pack("<H", code)
        kind = kind_of(code)
        if kind == REAL:
            data += struct.pack("<d", float(value))
        elif kind == SMALL:
            data += struct.pack("<h", int(value))
        else:
            data += str(value).encode() + b"\0"
    return bytes(data), places


def entity(type_, number, *points, more=()):
    groups = [(0, type_), (5, f"{number:X}"), (8, "0")]
    for index, (x, y, z) in enumerate(points):
        groups += [(10 + index, x + 3.0 * number), (20 + index, y), (30 + index, z)]
    return groups + list(more)


ENTITIES = [
    entity("3DFACE", 1, (0.0, 0.0, 0.0), (1.0, 0.0, 0.0), (1.0, 1.0, 0.0), (0.0, 1.0, 0.0)),
    entity("SOLID", 2, (0.0, 0.0, 0.0), (1.0, 0.0, 0.0), (0.0, 1.0, 0.0), (1.0, 1.0, 0.0)),
    entity("CIRCLE", 3, (0.0, 0.0, 0.0), more=[(40, 1.0)]),
    [(0, "INSERT"), (5, "4"), (8, "0"), (2, "B"), (10, 1.0), (20, 2.0), (30, 3.0)],
    entity("3DFACE", 5, (0.0, 0.0, 0.0), (1.0, 0.0, 0.0), (1.0, 1.0, 0.0)),
]
BLOCK = [[(0, "BLOCK"), (2, "B"), (8, "0"), (10, 0.0), (20, 0.0), (30, 0.0)], ENTITIES[0], [(0, "ENDBLK")]]
DRAWING = [[(0, "SECTION"), (2, "BLOCKS")], *BLOCK, [(0, "ENDSEC")], [(0, "SECTION"), (2, "ENTITIES")], *ENTITIES, [(0, "ENDSEC")], [(0, "EOF")]]
FIRST, FACETS = len(BLOCK) + 3, len(ENTITIES)


def damages(record, rng):
    """(what was done, the damaged record, whether it must be told of)."""
    yield "doubled", record * 2, False
    for place in range(1, len(record)):
        code = record[place][0]
        needed = code == 2 or (code >= 10 and code // 10 != 3)
        yield f"without {code}", record[:place] + record[place + 1:], needed
        if kind_of(code) == REAL:
            for value in ("nan", "inf"):
                yield f"{value} for {code}", record[:place] + [(code, value)] + record[place + 1:], True
            yield f"text for {code}", record[:place] + [(code, "x1")] + record[place + 1:], True
    shuffled = record[1:]
    rng.shuffle(shuffled)
    yield "shuffled", record[:1] + shuffled, False


class DamagedDrawings(unittest.TestCase):
    def report(self, data):
        with tempfile.NamedTemporaryFile(suffix=".dxf") as file:
            file.write(data)
            file.flush()
            done = subprocess.run([PROGRAM, "--quiet", "--reading", "modern", "--report", "-", file.name], capture_output=True, encoding="utf-8", timeout=60)
        self.assertEqual(done.returncode, 0, done.stderr)
        report = json.loads(done.stdout)
        for row in report["entities"]:
            self.assertEqual(row["read"], row["drawn"] + sum(skipped["count"] for skipped in row["skipped"]), row)
        return report

    def both(self, records):
        for write in (text_file, binary_file):
            groups = [group for record in records for group in record]
            try:
                data, places = write(groups)
            except ValueError:
                continue                    # binary values are numbers
            starts, at = [], 0
            for record in records:
                starts.append(places[at])
                at += len(record)
            yield write.__name__, self.report(data), starts

    def test_whole(self):
        for _, report, _ in self.both(DRAWING):
            self.assertEqual((report["facets"], report["repairs"]["count"]), (FACETS, 0))

    def test_one_entity_is_damaged(self):
        rng = random.Random(1)
        for index, record in enumerate(ENTITIES):
            for what, damaged, told in damages(record, rng):
                if record[0][1] == "CIRCLE" and what == "without 40":
                    told = True
                records = DRAWING[:FIRST + index] + [damaged] + DRAWING[FIRST + index + 1:]
                for format, report, starts in self.both(records):
                    with self.subTest(f"{record[0][1]} {index} {what} {format}"):
                        self.assertGreaterEqual(report["facets"], FACETS - 1)
                        named = [repair.get("line", repair.get("offset")) for repair in report["repairs"]["list"]]
                        self.assertEqual(named, [starts[FIRST + index]] if report["facets"] < FACETS else [])
                        if told:
                            self.assertEqual(report["facets"], FACETS - 1)

    def test_any_record_is_missing_or_doubled(self):
        """Nothing is refused; what does not depend on the record is drawn."""
        for index, record in enumerate(DRAWING):
            for records in (DRAWING[:index] + DRAWING[index + 1:], DRAWING[:index] + [record] + DRAWING[index:]):
                for format, report, _ in self.both(records):
                    with self.subTest(f"{record[0][1]} {index} {len(records)} {format}"):
                        self.assertGreaterEqual(report["facets"], FACETS - 1 if record[:1] != [(0, "SECTION")] else 0)
                        if record[0][1] in ("ENDBLK", "ENDSEC", "EOF") and len(records) < len(DRAWING):
                            self.assertEqual([repair["record"] for repair in report["repairs"]["list"]], [record[0][1]])


if __name__ == "__main__":
    unittest.main()
