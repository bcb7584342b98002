"""Random drawings written by ezdxf: what belvor-render --info and --report say of each must be what ezdxf works out from the same entities.

The two share no code. Where the program differs from CAD programs on purpose, a comment says so. Each drawing comes from its
own name, which a failure tells, so that it can be made again.
"""
import collections
import functools
import itertools
import json
import math
import os
import pathlib
import random
import subprocess
import tempfile
import unittest

import ezdxf
from ezdxf.colors import aci2rgb
from ezdxf.entities.boundary_paths import PolylinePath
from ezdxf.math import OCS, BoundingBox, Matrix44, Vec2, Vec3, bulge_to_arc
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


def turn(start, sweep):
    """The angles of the ends of chords; for sweeps of 25 degrees and more."""
    chords = int(sweep / 10 + 0.5)
    return [start + sweep * k / chords for k in range(chords + 1)]


def arc(entity):
    sweep = (entity.dxf.end_angle - entity.dxf.start_angle) % 360
    return walls(list(entity.vertices(turn(entity.dxf.start_angle, sweep))), thickness_of(entity))


def ellipse(entity):
    return [list(entity.vertices([math.tau * k / 36 for k in range(36)]))]


def arc_points(edge):
    sweep = (edge.end_angle - edge.start_angle) % 360 or 360
    return [edge.center + Vec2.from_deg_angle(angle, edge.radius) for angle in turn(edge.start_angle, sweep)]


def ellipse_points(edge):
    major, minor = edge.major_axis, edge.major_axis.orthogonal() * edge.ratio
    angles = [math.radians(10 * k) for k in range(37)]
    return [edge.center + major * math.cos(angle) + minor * math.sin(angle) for angle in angles]


def outline(path):
    """The corners of a hatch's path, curves as chords."""
    if isinstance(path, PolylinePath):
        points = []
        for (x, y, bulge), (x2, y2, _) in zip(path.vertices, path.vertices[1:] + path.vertices[:1]):
            start, end = Vec2(x, y), Vec2(x2, y2)
            points.append(start)
            if bulge:
                centre, _, _, radius = bulge_to_arc(start, end, bulge)
                angles = turn(0, math.degrees(4 * math.atan(abs(bulge))))[1:-1]
                first = math.degrees((start - centre).angle)
                turns = [first + math.copysign(angle, bulge) for angle in angles]
                points += [centre + Vec2.from_deg_angle(turn, radius) for turn in turns]
        return points
    parts = {"LineEdge": lambda edge: [edge.start, edge.end], "ArcEdge": arc_points, "EllipseEdge": ellipse_points}
    points = [point for edge in path.edges for point in parts[edge.EDGE_TYPE](edge)]
    return [point for point, before in zip(points, points[-1:] + points) if not point.isclose(before, abs_tol=1e-9 * point.magnitude)]


def hatch(entity):
    """The outlines of a hatch here lie in one another in their order, those around another centre apart."""
    areas, groups = [], {}
    for path in entity.paths:
        corners = outline(path)
        centre = (max(p.x for p in corners) + min(p.x for p in corners)) / 2
        near = next((known for known in groups if abs(known - centre) < Drawing.apart / 2), centre)
        groups.setdefault(near, []).append(corners)
    place = entity.ocs()
    for nest in groups.values():
        nest = [[place.to_wcs(Vec3(p.x, p.y, entity.dxf.elevation.z)) for p in corners] for corners in nest]
        if entity.dxf.hatch_style == 2:
            areas.append(nest[0])
        elif entity.dxf.hatch_style == 1:
            areas.append([corner for corners in nest[:2] for corner in corners])
        else:
            areas += [[corner for corners in nest[i:i + 2] for corner in corners] for i in range(0, len(nest), 2)]
    return areas if entity.dxf.solid_fill else []


def mesh(entity):
    return [[Vec3(entity.vertices[i]) for i in face] for face in entity.faces if len(face) > 2]


FACETS = {"HATCH": hatch, "MESH": mesh, "3DFACE": face, "SOLID": solid, "TRACE": solid, "POLYLINE": polyline,
          "LWPOLYLINE": polyline, "LINE": line, "CIRCLE": circle, "ARC": arc, "ELLIPSE": ellipse}
REASONS = ("paper space", "block never inserted", "layer frozen", "layer off", "no surface", "drawn")      # the first that holds is told


def rgb_of(entity, otherwise):
    """The colour that the entity gives itself, as 0xRRGGBB; 256 and 0 are what `otherwise` says."""
    if entity.dxf.hasattr("true_color"):
        return entity.dxf.true_color
    index = abs(entity.dxf.get("color", 256))
    return otherwise[index] if index in otherwise else int.from_bytes(bytes(aci2rgb(index)), "big")


class Conventions:
    """What is drawn of a drawing by ezdxf's reckoning: of which material and where, and what becomes of each entity."""
    given_by = FACETS

    def __init__(self, doc, modern):
        self.doc, self.modern, self.outcomes, self.facets = doc, modern, {}, []
        for space in [doc.modelspace(), doc.layout(), *(block for block in doc.blocks if not block.is_any_layout)]:
            for entity in space:
                self.outcomes[entity] = "block never inserted" if space.is_block_layout else "paper space"
        self.facets = list(self.visit(doc.modelspace(), None))
        if not self.facets and modern:
            self.facets = list(self.visit(doc.layout(), None))

    def material(self, entity, around):
        """(layer, colour) of an entity; `around` is that of the INSERT around it."""
        layer = entity.dxf.layer
        if around and self.modern and layer == "0":
            layer = around[0]
        entry = self.doc.layers.get(layer)
        of_layer = rgb_of(entry, {0: 0xFFFFFF, 256: 0xFFFFFF})
        return entry.dxf.name, rgb_of(entity, {256: of_layer, 0: around[1] if around else 0xFFFFFF})

    def name(self, layer, colour):
        own = rgb_of(self.doc.layers.get(layer), {0: 0xFFFFFF, 256: 0xFFFFFF})
        return layer if colour == own or not self.modern else f"{layer} #{colour:06x}"

    def cells(self, insert):
        """One transform for each cell of an array. In the strict reading the spacing is scaled with the block: it is stepped off first."""
        placement, given, cells = insert.matrix44(), insert.dxf, []
        for column, row in itertools.product(range(given.column_count), range(given.row_count)):
            step = Vec3(column * given.column_spacing, row * given.row_spacing)
            if self.modern:
                step = insert.ocs().to_wcs(step.rotate_deg(given.rotation))
            move = Matrix44.translate(*step)
            cells.append(placement * move if self.modern else move * placement)
        return cells

    def hidden(self, entity, layer):
        entry = self.doc.layers.get(layer)
        if entry.is_frozen():
            return "layer frozen"
        return "layer off" if entry.is_off() and entity.dxftype() != "INSERT" else None

    def visit(self, space, around):
        """(material, corners) of each facet that is drawn."""
        for entity in space:
            material = self.material(entity, around)
            outcome, given = self.hidden(entity, material[0]), []
            if not outcome and entity.dxftype() == "INSERT":
                block = list(self.visit(entity.block(), material))
                given = [(name, list(cell.transform_vertices(corners))) for cell in self.cells(entity) for name, corners in block]
                if not given and self.modern and self.doc.layers.get(material[0]).is_off():
                    outcome = "layer off"
            elif not outcome:
                given = [(material, corners) for corners in self.given_by[entity.dxftype()](entity)]
            outcome = outcome or ("drawn" if given else "no surface")
            # Of several insertions the one that shows most counts.
            before = self.outcomes[entity]
            fresh = before in ("block never inserted", "paper space")
            self.outcomes[entity] = outcome if fresh else max(before, outcome, key=REASONS.index)
            yield from given

    def counts(self):
        """{(type, why it is not drawn, or "drawn"): count} of every entity of the drawing."""
        return collections.Counter((entity.dxftype(), outcome) for entity, outcome in self.outcomes.items() if entity.dxftype() != "VIEWPORT")


class Drawing:
    """Draws its own random entities into `space`, a model space or a block."""

    apart = 100
    flat = ("thickness", "extrusion")

    def __init__(self, name, version, modern):
        self.random, self.modern = random.Random(name), modern
        self.doc = ezdxf.new(version)
        self.size = 10 ** self.random.uniform(-3, 6)
        self.layers = LAYERS | ({"W\u00e4nde": (), "\u0441\u0442\u0435\u043d\u0430": ()} if modern else {})
        for layer, changes in self.layers.items():
            entry = self.doc.layers.add(layer, color=self.random.randint(1, 255))
            if self.has_true_colours() and self.often(0.3):
                entry.dxf.true_color = self.random.getrandbits(24)
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
        given["layer"] = r.choice(("0", *self.layers)) if self.often(0.5) else "drawn"
        if self.modern:
            given["layer"] = r.choice((given["layer"], given["layer"].upper() if given["layer"].isascii() else "0", "0"))
            given["color"] = r.choice((0, 256, r.randint(1, 255)))
            if self.has_true_colours() and self.often(0.2):
                given["true_color"] = r.getrandbits(24)
        return given

    def has_true_colours(self):
        return self.doc.dxfversion >= "AC1018"

    def add_face(self, space):
        corners = [self.point() for _ in range(self.random.choice((3, 4)))]
        space.add_3dface(corners, self.attributes())

    def add_solid(self, space):
        corners = [self.point() for _ in range(4)]
        if self.often(0.4):
            same, other = self.random.choice(((3, 2), (3, 2), (1, 0), (2, 0), (3, 1)))
            corners[same] = corners[other]
        if self.often(0.1):
            corners = corners[:1] * 4
        self.random.choice((space.add_solid, space.add_trace))(corners, self.attributes(*self.flat))

    def add_polygon_mesh(self, space):
        m, n = self.random.randint(2, 5), self.random.randint(2, 5)
        polymesh = space.add_polymesh((m, n), self.attributes())
        for place in itertools.product(range(m), range(n)):
            polymesh.set_mesh_vertex(place, self.point())
        polymesh.close(m_close=self.often(0.5), n_close=self.often(0.5))

    def add_polyface(self, space):
        polyface = space.add_polyface(self.attributes())
        points = [self.point() for _ in range(7)]
        polyface.append_faces([self.random.sample(points, self.random.choice((3, 4))) for _ in range(self.random.randint(1, 6))])
        for *_, record in polyface.faces():
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

    def add_curve(self, space, kinds=("line", "circle", "arc", "ellipse"), least=26):
        """An arc has `least` degrees or more."""
        r, flat = self.random, self.attributes(*self.flat)
        a, b, c, *_ = points = [self.point() for _ in range(r.randint(4, 7))]
        start, sweep, z, plain = r.uniform(-360, 360), r.uniform(least, 359), self.length(), self.attributes()
        closed, radius = self.often(0.3), abs(z)
        bulged = [(p.x, p.y, r.choice((0, 0, r.uniform(-2, 2)))) for p in points], "xyb"
        at = lambda elevation: flat | {"elevation": elevation}
        rational = functools.partial(space.add_rational_spline, weights=[r.uniform(0.5, 3) for _ in points])
        tangents = {"start_tangent": b, "end_tangent": c}
        old = {
            "line": lambda: space.add_line(a, b, flat),
            "circle": lambda: space.add_circle(a, radius, flat),
            "arc": lambda: space.add_arc(a, radius, start, start + sweep, dxfattribs=flat),
            "point": lambda: space.add_point(a, flat),
            "polyline3d": lambda: space.add_polyline3d(points, close=closed, dxfattribs=plain),
            "polyline2d": lambda: space.add_polyline2d(*bulged, close=closed, dxfattribs=at((0, 0, z))),
        }
        new = {
            "ellipse": lambda: space.add_ellipse(a, b.cross(c) / self.size, r.uniform(0.1, 1),
                                                 *self.ellipse_ends(), plain | {"extrusion": b}),
            "spline": lambda: r.choice((space.add_open_spline, rational))(points, dxfattribs=plain),
            "fit": lambda: space.add_spline(points, dxfattribs=plain | tangents),
            "lwpolyline": lambda: space.add_lwpolyline(*bulged, close=closed, dxfattribs=at(z)),
        }
        makers = old | (new if self.doc.dxfversion > "AC1009" else {})
        makers[r.choice([kind for kind in kinds if kind in makers])]()

    def ellipse_ends(self):
        return 0, math.tau

    def add_mesh(self, space):
        mesh = space.add_mesh(self.attributes())
        with mesh.edit_data() as data:
            data.vertices = [self.point() for _ in range(8)]
            data.faces = [self.random.sample(range(8), self.random.randint(2, 6)) for _ in range(self.random.randint(1, 5))]
        mesh.dxf.subdivision_levels = self.random.randint(0, 3)       # the cage is what is drawn

    def add_outline(self, paths, centre, size):
        """One that holds the circle of 0.5 size around its centre, and lies in that of 1.5 size."""
        kind = self.random.choice(("polyline", "round", "lines", "arcs", "ellipse", "circle"))
        square = [centre + Vec2(x, y) * size for x, y in ((-1, -1), (1, -1), (1, 1), (-1, 1))]
        if kind == "polyline":
            paths.add_polyline_path(square)
        elif kind == "round":
            turn = self.random.choice((-1, 1))
            paths.add_polyline_path([(p.x, p.y, turn * 0.3) for p in square[::turn]])
        elif kind == "ellipse":
            paths.add_edge_path().add_ellipse(centre, Vec2.from_deg_angle(self.random.uniform(0, 360), 1.4 * size), 0.7, 0, 360, ccw=self.often(0.5))
        elif kind == "circle":
            paths.add_edge_path().add_arc(centre, size, 0, 360, ccw=self.often(0.5))
        else:
            edges = paths.add_edge_path()
            for start, end in zip(square[:3], square[1:]):
                edges.add_line(start, end)
            if kind == "lines":
                edges.add_line(square[3], square[0])
            else:
                edges.add_arc(centre - Vec2(0.5 * size, 0), size * math.sqrt(1.25), math.degrees(math.atan2(1, -0.5)), math.degrees(math.atan2(-1, -0.5)))

    def add_hatch(self, space):
        hatch = space.add_hatch(dxfattribs=self.attributes("extrusion"))
        hatch.dxf.hatch_style = self.random.randint(0, 2)
        hatch.dxf.elevation = (0, 0, self.length())
        if self.often(0.2):
            hatch.set_pattern_fill("ANSI31")
            hatch.dxf.hatch_style = 0
        for nest in range(self.random.randint(1, 2)):
            centre, size = Vec2(self.apart * nest, self.random.uniform(-1, 1)), self.random.uniform(10, 20)
            for _ in range(self.random.randint(1, 4)):
                self.add_outline(hatch.paths, centre, size)
                size *= 0.3

    def add_insert(self, space, blocks):
        space.add_blockref(self.random.choice(blocks), self.point(), self.attributes(
            "rotation", "xscale", "yscale", "zscale", "extrusion", "column_count", "row_count", "column_spacing", "row_spacing"))

    def fill(self, space, kinds, count):
        for _ in range(count):
            getattr(self, "add_" + self.random.choice(kinds))(space)


class Answers(unittest.TestCase):
    def ask(self, save, *options):
        """What the program says of the drawing that `save` writes, each line of JSON; and the files there."""
        with tempfile.TemporaryDirectory() as folder:
            save(folder + "/d.dxf")
            done = subprocess.run([PROGRAM, "--quiet", "d.dxf", *options], cwd=folder, capture_output=True,
                                  encoding="utf-8", timeout=60)
            self.assertEqual(done.returncode, 0, done.stderr)
            files = {path.name: path.read_bytes() for path in pathlib.Path(folder).iterdir()}
        answers = [json.loads(line) for line in done.stdout.splitlines()]
        for row in answers[-1].get("entities", ()):
            self.assertEqual(row["read"], row["drawn"] + sum(each["count"] for each in row["skipped"]), row)
        return *answers, files


class RandomDrawings(Answers):
    reading = "strict"
    flat_kinds = ("face", "solid", "polygon_mesh polyface", "strip", "curve")
    nested_kinds = ("face", "face solid polygon_mesh polyface strip curve")

    def check_account(self, expected, report):
        """Every entity has the outcome that ezdxf finds, and every block its insertions."""
        counts = collections.Counter({(row["type"], "drawn"): row["drawn"] for row in report["entities"] if row["drawn"]})
        counts.update({(row["type"], skipped["reason"]): skipped["count"] for row in report["entities"] for skipped in row["skipped"]})
        self.assertEqual({key: count for key, count in counts.items() if key[0] != "VIEWPORT"}, expected.counts())
        inserts = collections.Counter(entity.dxf.name for entity in expected.outcomes if entity.dxftype() == "INSERT")
        for block in report["blocks"]:
            self.assertEqual(block["inserts"], inserts[block["name"]], block)

    def check(self, drawing, format, pictures):
        picture = ("--size", "160x120", "--view", "iso-ne", "p.omb")     # of the facets, from the side
        save = functools.partial(drawing.doc.saveas, fmt=format)
        info, report, files = self.ask(save, "--reading", self.reading, "--info", "--report", "-", *picture)
        pictures.add(files["p.omb"])
        conventions = Conventions(drawing.doc, self.reading == "modern")
        self.check_account(conventions, report)
        expected = conventions.facets
        corners = [corner for _, loop in expected for corner in loop]
        self.assertEqual([info[count] for count in ("facets", "vertices", "edges")], [len(expected), len(corners), len(corners)])
        colours = {material["name"]: material["colour"] for material in report["materials"]}
        self.assertEqual({material["name"]: material["facets"] for material in report["materials"]},
                         collections.Counter(conventions.name(*material) for material, _ in expected))
        if self.reading == "modern":
            self.assertEqual(colours, {conventions.name(*material): f"#{material[1]:06x}" for material, _ in expected})
        centre = BoundingBox(corners).center if corners else Vec3()
        radius = max((corner.distance(centre) for corner in corners), default=0.0)
        slack = 1e-9 * (radius + centre.magnitude)
        self.assertLessEqual(Vec3(info["centre"]).distance(centre), slack)
        self.assertAlmostEqual(info["radius"], radius, delta=slack)
        return len(expected)

    def check_all(self, kinds, draw):
        """Several drawings of these kinds in each version of the format, as text and binary."""
        drawn = 0
        versions = VERSIONS[1:] if {"mesh", "hatch"} & {*kinds} else VERSIONS
        for version, number in itertools.product(versions, range(4)):
            name, pictures = f"{' '.join(kinds)}, {version}, {number}", set()
            drawing = Drawing(name, version, self.reading == "modern")
            draw(drawing, kinds)
            for format in ("asc", "bin"):
                with self.subTest(name, format=format):
                    drawn += self.check(drawing, format, pictures)
            with self.subTest(name, format="both"):
                self.assertEqual(len(pictures), 1, "text and binary give the same facets")
        self.assertGreater(drawn, 100)

    def flat(self, drawing, kinds):
        if self.reading == "modern" and drawing.often(0.4):
            drawing.fill(drawing.doc.layout(), kinds, 2)
        if self.reading == "strict" or drawing.often(0.9):
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

    def test_flat(self):
        for kinds in self.flat_kinds:
            self.check_all(kinds.split(), self.flat)

    def test_nested(self):
        for kinds in self.nested_kinds:
            self.check_all(kinds.split(), self.nested)


class ModernDrawings(RandomDrawings):
    """The same in the modern reading, and what only that draws."""
    reading = "modern"
    flat_kinds = (*RandomDrawings.flat_kinds, "mesh", "hatch")
    nested_kinds = (*RandomDrawings.nested_kinds, "hatch mesh face")
