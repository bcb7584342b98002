"""Random drawings of lines and curves, written by ezdxf: the number of curves and the length of their chords, as --info tells them, and
the ends of each in an SVG file must be what ezdxf works out from the same entities, nested and tilted. Where an entity gives surfaces
its curve is the outline of these.
"""
import json
import math
import pathlib
import re
import subprocess
import tempfile
import unittest

from ezdxf.math import BoundingBox, Vec3, bulge_to_arc, fit_points_to_cad_cv

from test_random_drawings import PROGRAM, VERSIONS, Conventions, Drawing, thickness_of


def turn(start, sweep, point_at):
    """The ends of chords of 2 degrees at most."""
    count = max(1, math.ceil(abs(sweep) / 2 - 1e-6))
    return [point_at(math.radians(start + sweep * k / count)) for k in range(count + 1)]


def raised(points, thickness):
    """A curve, with thickness the outline of what it gives: two when it is closed, else one round its wall."""
    if not thickness:
        return [points]
    above = [point + thickness for point in points]
    return [points, above] if points[0] == points[-1] else [points + above[::-1] + points[:1]]


def line(entity):
    return raised([entity.dxf.start, entity.dxf.end], thickness_of(entity))


def arc(entity):
    start, end = (0, 360) if entity.dxftype() == "CIRCLE" else (entity.dxf.start_angle, entity.dxf.end_angle)
    sweep = (end - start) % 360 or 360
    points = turn(start, sweep, lambda a: entity.ocs().to_wcs(entity.dxf.center + Vec3.from_angle(a, entity.dxf.radius)))
    return raised(points[:-1] + points[:1] if sweep == 360 else points, thickness_of(entity))


def ellipse(entity):
    start, end = math.degrees(entity.dxf.start_param), math.degrees(entity.dxf.end_param)
    return [turn(start, (end - start) % 360 or 360, lambda a: entity.dxf.center + entity.dxf.major_axis * math.cos(a) + entity.minor_axis * math.sin(a))]


def spline(entity):
    if entity.fit_points:
        made = fit_points_to_cad_cv(entity.fit_points, (entity.dxf.start_tangent, entity.dxf.end_tangent))
    else:
        made = entity.construction_tool()
    knots = sorted(set(made.knots()[made.degree:-made.degree]))
    return [[Vec3(p) for p in made.points([a + (b - a) * k / 16 for a, b in zip(knots, knots[1:]) for k in range(16)] + knots[-1:])]]


def polyline(entity):
    if entity.dxftype() == "POLYLINE" and entity.is_3d_polyline:
        return [[v.dxf.location for v in entity.vertices] + [v.dxf.location for v in entity.vertices][:entity.is_closed]]
    if entity.dxftype() == "POLYLINE":
        corners, z = [(v.dxf.location.vec2, v.dxf.get("bulge", 0)) for v in entity.vertices], entity.dxf.elevation.z
    else:
        corners, z = [(Vec3(x, y).vec2, bulge) for x, y, bulge in entity.get_points("xyb")], entity.dxf.elevation
    corners += corners[:entity.is_closed]
    points = [corners[0][0]]
    for (a, bulge), (b, _) in zip(corners, corners[1:]):
        if bulge:
            centre, start, end, radius = bulge_to_arc(a, b, bulge)
            first, sweep = math.degrees(start if bulge > 0 else end), math.degrees(4 * math.atan(bulge))
            points += turn(first, sweep, lambda angle: centre + Vec3.from_angle(angle, radius).vec2)[1:-1]
        points.append(b)
    return raised([entity.ocs().to_wcs(Vec3(p.x, p.y, z)) for p in points], thickness_of(entity))


def within(corners, start, along):
    """The part of a line in a convex outline that runs counter-clockwise, in lengths of `along`."""
    low, high = -math.inf, math.inf
    for a, b in zip(corners, corners[1:] + corners[:1]):
        inward, steep = (b - a).orthogonal().dot(start - a), (b - a).orthogonal().dot(along)
        if steep > 0:
            low = max(low, -inward / steep)
        else:
            high = min(high, -inward / steep)
    return low, high


def hatch(entity):
    """The dashes in one convex outline."""
    dashes, corners = [], [Vec3(x, y).vec2 for x, y, _ in entity.paths.paths[0].vertices]
    for family in entity.pattern.lines:
        along, lengths = Vec3.from_deg_angle(family.angle).vec2, family.dash_length_items
        for number in range(-200, 201):
            start = family.base_point + family.offset * number
            low, high = within(corners, start, along)
            period = sum(map(abs, lengths))
            pieces = [(low, high)] if low < high and not lengths else []
            for turn_of_pattern in range(math.floor(low / period), math.ceil(high / period)) if lengths and low < high else ():
                at = turn_of_pattern * period
                for length in lengths:
                    if length > 0 and max(at, low) < min(at + length, high):
                        pieces.append((max(at, low), min(at + length, high)))
                    at += abs(length)
            dashes += [[start + along * a, start + along * b] for a, b in pieces]
    return [[entity.ocs().to_wcs(Vec3(p.x, p.y, entity.dxf.elevation.z)) for p in dash] for dash in dashes]


CURVES = {"LINE": line, "ARC": arc, "CIRCLE": arc, "ELLIPSE": ellipse, "SPLINE": spline, "LWPOLYLINE": polyline, "POLYLINE": polyline, "HATCH": hatch,
          "POINT": lambda entity: [[entity.dxf.location] + [entity.dxf.location + thickness_of(entity)] * bool(entity.dxf.thickness)]}


class CurveConventions(Conventions):
    """What is drawn, as for facets."""
    given_by = CURVES


class CurveDrawing(Drawing):
    flat = ("thickness", "extrusion")

    def add_open(self, space):
        r, flat = self.random, self.attributes(*self.flat)
        kinds = ["line", "arc", "point", "polyline2d", "polyline3d"] + ["ellipse", "spline", "fit", "lwpolyline"] * (self.doc.dxfversion > "AC1009")
        kind, points = r.choice(kinds), [self.point() for _ in range(r.randint(4, 7))]
        bulged = [(p.x, p.y, r.choice((0, 0, r.uniform(-2, 2)))) for p in points]
        if kind == "line":
            space.add_line(*points[:2], flat)
        elif kind == "arc":
            start = r.uniform(-360, 360)
            space.add_arc(points[0], abs(self.length()), start, start + r.uniform(1, 359), dxfattribs=flat)
        elif kind == "point":
            space.add_point(points[0], flat)
        elif kind == "polyline3d":
            space.add_polyline3d(points, close=self.often(0.3), dxfattribs=self.attributes())
        elif kind == "polyline2d":
            space.add_polyline2d(bulged, "xyb", close=self.often(0.3), dxfattribs={**flat, "elevation": (0, 0, self.length())})
        elif kind == "lwpolyline":
            space.add_lwpolyline(bulged, "xyb", close=self.often(0.3), dxfattribs={**flat, "elevation": self.length()})
        elif kind == "ellipse":
            start = r.uniform(0, 6)
            space.add_ellipse(points[0], points[1].cross(points[2]) / self.size, r.uniform(0.1, 1), start, start + r.uniform(0.1, 6),
                              dxfattribs={**self.attributes(), "extrusion": points[1]})
        elif kind == "fit":
            space.add_spline(points, dxfattribs={**self.attributes(), "start_tangent": self.point(), "end_tangent": self.point()})
        else:
            add = r.choice((space.add_open_spline, lambda p, dxfattribs: space.add_rational_spline(p, [r.uniform(0.5, 3) for _ in p], dxfattribs=dxfattribs)))
            add(points, dxfattribs=self.attributes())

    def add_round(self, space):
        space.add_circle(self.point(), abs(self.length()), self.attributes(*self.flat))

    def add_pattern(self, space):
        made = space.add_hatch(dxfattribs=self.attributes("extrusion"))
        made.set_pattern_fill(self.random.choice(("ANSI31", "ANSI37", "DASH")), scale=self.random.uniform(0.5, 2), angle=self.random.uniform(0, 90))
        made.dxf.elevation, made.dxf.hatch_style = (0, 0, self.length()), 0
        made.paths.add_polyline_path([(0, 0), (self.random.uniform(20, 40), 3), (33, 41), (5, 27)])


class RandomCurves(unittest.TestCase):
    def run_program(self, drawing, modern, *more):
        with tempfile.TemporaryDirectory() as folder:
            drawing.doc.saveas(folder + "/d.dxf")
            done = subprocess.run([PROGRAM, "--quiet", "--lines", "--info", "--reading", "modern" if modern else "strict", "d.dxf", *more],
                                  cwd=folder, capture_output=True, encoding="utf-8", timeout=60)
            self.assertEqual(done.returncode, 0, done.stderr)
            svg = pathlib.Path(folder, "d.svg")
            return json.loads(done.stdout), svg.read_text() if svg.exists() else ""

    def each_drawing(self, kinds, versions, nested):
        for version in versions:
            for number in range(6):
                name = f"{' '.join(kinds)}, {version}, {number}, {nested}"
                modern = number % 2 == 1
                drawing = CurveDrawing(name, version, modern)
                space = drawing.doc.modelspace()
                if nested:
                    inner, outer = drawing.doc.blocks.new("INNER", base_point=drawing.point()), drawing.doc.blocks.new("OUTER")
                    drawing.fill(inner, kinds, 2)
                    drawing.add_insert(outer, ["INNER"])
                    space, _ = outer, drawing.add_insert(space, ["OUTER"])
                drawing.fill(space, kinds, 5)
                yield name, drawing, modern, [curve for _, curve in CurveConventions(drawing.doc, modern).facets]

    def check(self, kinds, versions, nested=False):
        met = 0
        for name, drawing, modern, expected in self.each_drawing(kinds, versions, nested):
            info, _ = self.run_program(drawing, modern)
            length = sum(a.distance(b) for curve in expected for a, b in zip(curve, curve[1:]))
            self.assertEqual(info["lines"], len(expected), name)
            self.assertAlmostEqual(info["lineLength"], length, delta=1e-9 * (length + drawing.size), msg=name)
            met += len(expected)
        self.assertGreater(met, 50)

    def test_number_and_length(self):
        self.check(["open", "open", "round"], VERSIONS)

    def test_number_and_length_in_blocks(self):
        self.check(["open", "open", "round"], VERSIONS, nested=True)

    def test_patterns(self):
        self.check(["pattern"], VERSIONS[1:])

    def test_ends_in_an_svg_file(self):
        """Without surfaces every curve is one path from its first point to its last."""
        CurveDrawing.flat = ("extrusion",)
        self.addCleanup(setattr, CurveDrawing, "flat", ("thickness", "extrusion"))
        for name, drawing, modern, expected in self.each_drawing(["open"], VERSIONS, nested=True):
            if not expected:
                continue
            box = BoundingBox(point for curve in expected for point in curve)
            scale = (box.size.x + box.size.y) / 500 or 1.0
            _, svg = self.run_program(drawing, modern, "--view", "plan", "--scale", repr(scale), "--size", "600x600", "d.svg")
            found = [[tuple(map(float, point.split())) for point in part.split("L")] for text in re.findall(r' d="([^"]*)"', svg) for part in text.split("M")[1:]]
            on_screen = [[(300 + (p.x - box.center.x) / scale, 300 - (p.y - box.center.y) / scale) for p in (curve[0], curve[-1])] for curve in expected]
            self.assertEqual(len(found), len(expected), name)
            for path in found:
                near = [ends for ends in on_screen if math.dist(path[0], ends[0]) + math.dist(path[-1], ends[1]) < 1e-3]
                self.assertTrue(near, (name, path[0], path[-1]))
                on_screen.remove(near[0])


if __name__ == "__main__":
    unittest.main()
