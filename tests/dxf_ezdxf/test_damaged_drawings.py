"""Damaged drawings: the modern reading draws what is undamaged, refuses none of them, and its account names the damaged records.

A drawing of faces, solids and circles, each of one facet, is damaged in one record at a time, as text and binary.
"""
import io
import pathlib
import random

from ezdxf.lldxf.tagwriter import BinaryTagWriter

from test_random_drawings import Answers


def text_file(groups):
    """(bytes, the place of each group as the report tells it)."""
    return "".join(f"{code:3}\n{value}\n" for code, value in groups).encode(), [1 + 2 * i for i in range(len(groups))]


def binary_file(groups):
    stream, places = io.BytesIO(), []
    writer = BinaryTagWriter(stream, dxfversion="AC1015")
    writer.write_signature()
    for code, value in groups:
        places.append(stream.tell())
        writer.write_tag2(code, float(value) if is_real(code) else int(value) if 60 <= code <= 79 else value)
    return stream.getvalue(), places


def is_real(code):
    return 10 <= code <= 59


def entity(type_, number, *points, more=()):
    groups = [(0, type_), (5, f"{number:X}"), (8, "0")]
    for index, (x, y) in enumerate(points):
        groups += [(10 + index, x + 3.0 * number), (20 + index, float(y)), (30 + index, 0.0)]
    return groups + list(more)


ENTITIES = [
    entity("3DFACE", 1, (0, 0), (1, 0), (1, 1), (0, 1)),
    entity("SOLID", 2, (0, 0), (1, 0), (0, 1), (1, 1)),
    entity("CIRCLE", 3, (0, 0), more=[(40, 1.0)]),
    entity("INSERT", 4, (0, 0), more=[(2, "B")]),
    entity("3DFACE", 5, (0, 0), (1, 0), (1, 1)),
]
BLOCK = [[(0, "BLOCK"), (2, "B"), (8, "0"), (10, 0.0), (20, 0.0), (30, 0.0)], ENTITIES[0], [(0, "ENDBLK")]]
DRAWING = [[(0, "SECTION"), (2, "BLOCKS")], *BLOCK, [(0, "ENDSEC")],
           [(0, "SECTION"), (2, "ENTITIES")], *ENTITIES, [(0, "ENDSEC")], [(0, "EOF")]]
FIRST, FACETS = len(BLOCK) + 3, len(ENTITIES)


def damages(record, rng):
    """(what was done, the damaged record, whether it must be told of)."""
    yield "doubled", record * 2, False
    for place in range(1, len(record)):
        code, before, after = record[place][0], record[:place], record[place + 1:]
        yield f"without {code}", before + after, code == 2 or (code >= 10 and code // 10 != 3)
        for value in ("nan", "inf", "x1") if is_real(code) else ():
            yield f"{value} for {code}", before + [(code, value)] + after, True
    yield "shuffled", record[:1] + rng.sample(record[1:], len(record) - 1), False


class DamagedDrawings(Answers):
    def both(self, records):
        for write in (text_file, binary_file):
            groups = [group for record in records for group in record]
            try:
                data, places = write(groups)
            except ValueError:
                continue                    # binary values are numbers
            starts = [places[sum(map(len, records[:i]))] for i in range(len(records))]
            with self.subTest(write.__name__):
                save = lambda path: pathlib.Path(path).write_bytes(data)
                yield self.ask(save, "--reading", "modern", "--report", "-")[0], starts

    def test_one_entity_is_damaged(self):
        rng = random.Random(1)
        for index, record in enumerate(ENTITIES):
            for what, damaged, told in [("whole", record, False), *damages(record, rng)]:
                records = DRAWING[:FIRST + index] + [damaged] + DRAWING[FIRST + index + 1:]
                for report, starts in self.both(records):
                    with self.subTest(f"{record[0][1]} {index} {what}"):
                        self.assertGreaterEqual(report["facets"], FACETS - (what != "whole"))
                        if told:
                            self.assertEqual(report["facets"], FACETS - 1)
                        repairs = report["repairs"]["list"]
                        named = [repair.get("line", repair.get("offset")) for repair in repairs]
                        self.assertEqual(named, [starts[FIRST + index]] if report["facets"] < FACETS else [])

    def test_any_record_is_missing_or_doubled(self):
        """Nothing is refused; what does not depend on the record is drawn."""
        for index, record in enumerate(DRAWING):
            for records in (DRAWING[:index] + DRAWING[index + 1:], DRAWING[:index] + [record] + DRAWING[index:]):
                for report, _ in self.both(records):
                    with self.subTest(f"{record[0][1]} {index} {len(records)}"):
                        self.assertGreaterEqual(report["facets"], FACETS - 1 if record[:1] != [(0, "SECTION")] else 0)
                        if record[0][1] in ("ENDBLK", "ENDSEC", "EOF") and len(records) < len(DRAWING):
                            self.assertEqual([repair["record"] for repair in report["repairs"]["list"]], [record[0][1]])
