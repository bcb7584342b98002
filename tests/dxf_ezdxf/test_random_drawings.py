"""Random drawings written by ezdxf: what belvor-render --info says of each must be what ezdxf works out from the same entities.

The two share no code. Where the program differs from CAD programs on purpose, a comment says so. Each drawing comes from its
own name, which a failure tells, so that it can be made again.
"""
import json
import math
import os
import pathlib
import random
import subprocess
import tempfile
import unittest

import ezdxf
from ezdxf.math import OCS, BoundingBox, Matrix44, Vec3
from ezdxf.render.forms import extrude
from ezdxf.render.trace import TraceBuilder

PROGRAM = os.environ.get("BELVOR_RENDER", str(pathlib.Path(__file__).resolve().parents[2] / "build/release/bin/belvor-render"))
VERSIONS = ("R12", "R2000", "R2004", "R2007", "R2010", "R2013", "R2018")
LAYERS = {"drawn": (), "also drawn": (), "hidden": ("off",), "cold": ("freeze",), "both": ("off", "freeze")}


# What ezdxf knows of an entity: its facets, each as the corners of one loop, in the coordinates of the space it was added to.

def thickness_of(entity):
    return OCS(entity.dxf.extrusion).to_wcs(Vec3(0, 0, entity.dxf.thickness))


def walls(path, thickness):
    """One quadrilateral for each step of `path`, if it covers any area."""
    return [[a, b, b + thickness, a + thickness] for a, b in zip(path, path[1:]) if (b - a).cross(thickness)]


def prism(base, thickness):
    """The loop `base` alone, or closed by its copy and one wall a side."""
    if not thickness:
        return [base]
    sides = extrude(base, [Vec3(), thickness])
    return [base, [corner + thickness for corner in base], *sides.faces_as_vertices()]


def solid(entity):
    corners = entity.wcs_vertices()
    loop = [corner for before, corner in zip(corners[-1:] + corners, corners) if corner != before]
    return prism(loop, thickness_of(entity)) if len(loop) > 2 else []


def face(entity):
    return [[entity.dxf.get(name) for name in ("vtx0", "vtx1", "vtx2", "vtx3")]]     # also a triangle keeps its fourth corner


def polyline(entity):
    if entity.dxftype() == "POLYLINE" and not entity.is_2d_polyline:
        return [face.wcs_vertices() for face in entity.virtual_entities()]
    elevation = Vec3(0, 0, Vec3(entity.dxf.elevation).z if entity.dxftype() == "POLYLINE" else entity.dxf.elevation)
    outlines = TraceBuilder.from_polyline(entity).faces()
    return [[entity.ocs().to_wcs(Vec3(corner) + elevation) for corner in outline] for outline in outlines]


def line(entity):
    return walls([entity.dxf.start, entity.dxf.end], thickness_of(entity))


def circle(entity):
    return prism(list(entity.vertices(range(0, 360, 10))), thickness_of(entity))


def arc(entity):
    start, sweep = entity.dxf.start_angle, (entity.dxf.end_angle - entity.dxf.start_angle) % 360
    chords = int(sweep / 10 + 0.5)
    return walls(list(entity.vertices([start + sweep * k / chords for k in range(chords + 1)])), thickness_of(entity))


def ellipse(entity):
    return [list(entity.vertices([math.tau * k / 36 for k in range(36)]))]


FACETS = {"3DFACE": face, "SOLID": solid, "TRACE": solid, "POLYLINE": polyline, "LWPOLYLINE": polyline, "LINE": line, "CIRCLE": circle, "ARC": arc, "ELLIPSE": ellipse}


def cells(insert):
    """One transform for each cell of an array. Unlike in CAD programs the spacing is scaled with the block: it is stepped off first."""
    placement, given = insert.matrix44(), insert.dxf
    for column in range(given.column_count):
        for row in range(given.row_count):
            yield Matrix44.translate(column * given.column_spacing, row * given.row_spacing, 0) * placement


def facets(layout):
    """(layer, corners) of each facet that is drawn. An INSERT that is switched off leaves its entities to their own layers."""
    for entity in layout:
        layer = entity.doc.layers.get(entity.dxf.layer)
        if layer.is_frozen() or (layer.is_off() and entity.dxftype() != "INSERT"):
            continue
        if entity.dxftype() == "INSERT":
            block = list(facets(entity.block()))
            for cell in cells(entity):
                for name, corners in block:
                    yield name, list(cell.transform_vertices(corners))
        else:
            for corners in FACETS[entity.dxftype()](entity):
                yield layer.dxf.name, corners


class Drawing:
    """Draws its own random entities into `space`, a model space or a block."""

    def __init__(self, name, version):
        self.random = random.Random(name)
        self.doc = ezdxf.new(version)
        self.size = 10 ** self.random.uniform(-3, 6)
        for layer, changes in LAYERS.items():
            entry = self.doc.layers.add(layer, color=self.random.randint(1, 255))
            for change in changes:
                getattr(entry, change)()

    def often(self, chance):
        return self.random.random() < chance

    def length(self):
        return self.random.uniform(-self.size, self.size)

    def point(self):
        return Vec3(self.length(), self.length(), self.length())

    def attributes(self, *names):
        """Group values of these names, most of them given and some left to their defaults."""
        r = self.random
        direction = Vec3(r.gauss(0, 1), r.gauss(0, 1), r.gauss(0, 1))
        near_z = Vec3(r.uniform(-0.03, 0.03), r.uniform(-0.03, 0.03), r.choice((-1, 1)))       # about where the rule for x changes
        values = {
            "thickness": self.length,
            "extrusion": lambda: r.choice((direction, near_z, Vec3(0, 0, -1), Vec3(0, 1, 0), Vec3(-1, 0, 0), Vec3(0, 0, 3))),
            "rotation": lambda: r.choice((r.uniform(-400, 400), 90, -180)),
            "xscale": lambda: r.uniform(0.2, 3) * r.choice((-1, 1)), "yscale": lambda: r.uniform(0.2, 3) * r.choice((-1, 1)),
            "zscale": lambda: r.uniform(0.2, 3) * r.choice((-1, 1)),
            "column_count": lambda: r.randint(1, 3), "row_count": lambda: r.randint(1, 3),
            "column_spacing": self.length, "row_spacing": self.length,
        }
        given = {name: values[name]() for name in names if self.often(0.7)}
        return given | {"layer": r.choice(("0", *LAYERS)) if self.often(0.5) else "drawn"}

    def add_face(self, space):
        corners = [self.point() for _ in range(self.random.choice((3, 4)))]
        space.add_3dface(corners, self.attributes())

    def add_solid(self, space):
        add = self.random.choice((space.add_solid, space.add_trace))
        corners = [self.point() for _ in range(4)]
        if self.often(0.4):
            same, other = self.random.choice(((3, 2), (3, 2), (1, 0), (2, 0), (3, 1)))
            corners[same] = corners[other]
        if self.often(0.1):
            corners = corners[:1] * 4
        add(corners, self.attributes("thickness", "extrusion"))

    def add_polygon_mesh(self, space):
        m, n = self.random.randint(2, 5), self.random.randint(2, 5)
        polymesh = space.add_polymesh((m, n), self.attributes())
        for i in range(m):
            for j in range(n):
                polymesh.set_mesh_vertex((i, j), self.point())
        polymesh.close(m_close=self.often(0.5), n_close=self.often(0.5))

    def add_polyface(self, space):
        polyface = space.add_polyface(self.attributes())
        points = [self.point() for _ in range(7)]
        polyface.append_faces([self.random.sample(points, self.random.choice((3, 4))) for _ in range(self.random.randint(1, 6))])
        for record in polyface.faces():
            record = record[-1]
            if self.often(0.3):
                record.dxf.vtx1 = -abs(record.dxf.vtx1)       # an edge that is not shown

    def add_strip(self, space):
        """A polyline of one width, without thickness: straight segments, long enough for mitres, that turn by up to 110 degrees."""
        r, closed, sides = self.random, self.often(0.3), self.random.randint(5, 9)
        width = self.size / r.uniform(20, 40)
        turns = [360 / sides] * sides if closed else [r.uniform(-110, 110) for _ in range(r.randint(2, 6))]
        corner, heading, points = self.point(), r.uniform(0, 360), []
        for turn in turns:
            points.append((corner.x, corner.y, width, width))
            corner += Vec3.from_deg_angle(heading, self.size / 3 if closed else r.uniform(0.2, 1) * self.size)
            heading += turn
        flat = self.attributes("extrusion")
        if self.doc.dxfversion > "AC1009" and self.often(0.5):
            space.add_lwpolyline(points, "xyse", close=closed, dxfattribs={**flat, "elevation": self.length()})
        else:
            space.add_polyline2d(points, "xyse", close=closed, dxfattribs={**flat, "elevation": (0, 0, self.length())})

    def add_curve(self, space):
        kind = self.random.choice(("line", "circle", "arc", "ellipse"))
        flat = self.attributes("thickness", "extrusion")
        if kind == "line":
            space.add_line(self.point(), self.point(), flat)
        elif kind == "circle":
            space.add_circle(self.point(), abs(self.length()), flat)
        elif kind == "arc":
            start = self.random.uniform(-360, 360)
            space.add_arc(self.point(), abs(self.length()), start, start + self.random.uniform(26, 359), dxfattribs=flat)
        elif self.doc.dxfversion > "AC1009":
            direction = self.point()
            space.add_ellipse(self.point(), direction.cross(self.point()) / self.size, self.random.uniform(0.1, 1),
                              dxfattribs={**self.attributes(), "extrusion": direction})

    def add_insert(self, space, blocks):
        space.add_blockref(self.random.choice(blocks), self.point(), self.attributes(
            "rotation", "xscale", "yscale", "zscale", "extrusion", "column_count", "row_count", "column_spacing", "row_spacing"))

    def fill(self, space, kinds, count):
        for _ in range(count):
            getattr(self, "add_" + self.random.choice(kinds))(space)


class RandomDrawings(unittest.TestCase):
    def info(self, path):
        done = subprocess.run([PROGRAM, "--quiet", "--info", path], capture_output=True, encoding="utf-8", timeout=60)
        self.assertEqual(done.returncode, 0, done.stderr)
        return json.loads(done.stdout)

    def check(self, drawing, format):
        with tempfile.NamedTemporaryFile(suffix=".dxf") as file:
            drawing.doc.saveas(file.name, fmt=format)
            info = self.info(file.name)
        expected = list(facets(drawing.doc.modelspace()))
        corners = [corner for _, loop in expected for corner in loop]
        self.assertEqual([info[count] for count in ("facets", "vertices", "edges")], [len(expected), len(corners), len(corners)])
        self.assertEqual({material["name"] for material in info["materialList"]}, {layer for layer, _ in expected})
        centre = BoundingBox(corners).center if corners else Vec3()
        radius = max((corner.distance(centre) for corner in corners), default=0.0)
        slack = 1e-9 * (radius + centre.magnitude)
        self.assertLessEqual(Vec3(info["centre"]).distance(centre), slack)
        self.assertAlmostEqual(info["radius"], radius, delta=slack)
        return len(expected)

    def check_all(self, kinds, draw):
        """Several drawings of these kinds in each version of the format, as text and binary."""
        drawn = 0
        for version in VERSIONS:
            for number in range(4):
                name = f"{' '.join(kinds)}, {version}, {number}"
                drawing = Drawing(name, version)
                draw(drawing, kinds)
                for format in ("asc", "bin"):
                    with self.subTest(name, format=format):
                        drawn += self.check(drawing, format)
        self.assertGreater(drawn, 100)

    def flat(self, drawing, kinds):
        drawing.fill(drawing.doc.modelspace(), kinds, drawing.random.randint(1, 6))

    def nested(self, drawing, kinds):
        """Blocks that insert those before them, up to four deep."""
        blocks = []
        for level in range(drawing.random.randint(1, 4)):
            block = drawing.doc.blocks.new(f"BLOCK{level}", base_point=drawing.point())
            drawing.fill(block, kinds, drawing.random.randint(1, 2))
            if blocks:
                drawing.add_insert(block, blocks)
            blocks.append(block.name)
        for _ in range(drawing.random.randint(1, 3)):
            drawing.add_insert(drawing.doc.modelspace(), blocks[-2:])

    def test_faces(self):
        self.check_all(["face"], self.flat)

    def test_solids(self):
        self.check_all(["solid"], self.flat)

    def test_meshes(self):
        self.check_all(["polygon_mesh", "polyface"], self.flat)

    def test_strips(self):
        self.check_all(["strip"], self.flat)

    def test_curves(self):
        self.check_all(["curve"], self.flat)

    def test_inserted_faces(self):
        self.check_all(["face"], self.nested)

    def test_inserted_anything(self):
        self.check_all(["face", "solid", "polygon_mesh", "polyface", "strip", "curve"], self.nested)


if __name__ == "__main__":
    unittest.main()
