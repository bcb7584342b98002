"""Random drawings of lines and curves, written by ezdxf: the number of curves and the length of their chords, as --info tells them, and
the ends of each in an SVG file must be what ezdxf works out from the same entities, nested and tilted. Where an entity gives surfaces
its curve is the outline of these. Lines without end are cut where ezdxf's bounds of the rest say.
"""
import math
import re

from ezdxf.math import BoundingBox, Matrix44, Vec3, bulge_to_arc, fit_points_to_cad_cv
from ezdxf.render import hatching

from test_random_drawings import VERSIONS, Answers, Conventions, Drawing, face, thickness_of


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


def hatch(entity):
    """The dashes."""
    paths = hatching.hatch_boundary_paths(entity)
    dashes = [dash for baseline in hatching.pattern_baselines(entity)
              for line in hatching.hatch_paths(baseline, paths)
              for dash in baseline.pattern_renderer(line.distance).render(line.start, line.end)]
    return [[entity.ocs().to_wcs(Vec3(p.x, p.y, entity.dxf.elevation.z)) for p in dash] for dash in dashes]


def endless(entity):
    """Two of its points, again and again: four times for a RAY, else five."""
    start, second = entity.dxf.start, entity.dxf.start + entity.dxf.unit_vector
    return [[start, second, start, second] + [start] * (entity.dxftype() == "XLINE")]


def is_endless(curve):
    return len(curve) in (4, 5) and curve[:2] == curve[2:4]


def cut(curve, centre, radius):
    """The part of a line without end that is in the sphere, from end to end; none, or one."""
    along = (curve[1] - curve[0]).normalize()
    middle = (centre - curve[0]).dot(along)
    square = radius ** 2 - (curve[0] + along * middle - centre).magnitude ** 2
    if square <= 0:
        return []
    start, end = middle - math.sqrt(square), middle + math.sqrt(square)
    if len(curve) == 4:
        start = max(start, 0)
    return [[curve[0] + along * start, curve[0] + along * end]] * (start < end)


CURVES = {"3DFACE": lambda entity: [], "HELIX": spline, "RAY": endless, "XLINE": endless, "LINE": line, "ARC": arc, "CIRCLE": arc, "ELLIPSE": ellipse, "SPLINE": spline, "LWPOLYLINE": polyline, "POLYLINE": polyline, "HATCH": hatch,
          "POINT": lambda entity: [[entity.dxf.location] + [entity.dxf.location + thickness_of(entity)] * bool(entity.dxf.thickness)]}


class CurveConventions(Conventions):
    """What is drawn, as for facets."""
    given_by = CURVES


class FaceConventions(Conventions):
    given_by = dict.fromkeys(CURVES, lambda entity: []) | {"3DFACE": face}


class CurveDrawing(Drawing):
    def add_open(self, space):
        kinds = ("line", "arc", "point", "polyline2d", "polyline3d", "ellipse", "spline", "fit", "lwpolyline")
        self.add_curve(space, kinds, least=1)

    def ellipse_ends(self):
        start = self.random.uniform(0, 6)
        return start, start + self.random.uniform(0.1, 6)

    def add_round(self, space):
        self.add_curve(space, ["circle"])

    def add_helix(self, space):
        r = self.random
        made = space.add_helix(abs(self.length()), self.length(), r.uniform(0.3, 4), r.choice((True, False)), self.attributes())
        made.transform(Matrix44.axis_rotate(self.point(), r.uniform(0, 6)) @ Matrix44.translate(*self.point()))

    def add_endless(self, space):
        self.random.choice((space.add_ray, space.add_xline))(self.point(), self.point().normalize(), self.attributes())

    def add_pattern(self, space):
        made = space.add_hatch(dxfattribs=self.attributes("extrusion"))
        made.set_pattern_fill(self.random.choice(("ANSI31", "ANSI37", "DASH")), scale=self.random.uniform(0.5, 2), angle=self.random.uniform(0, 90))
        made.dxf.elevation, made.dxf.hatch_style = (0, 0, self.length()), 0
        made.paths.add_polyline_path([(0, 0), (self.random.uniform(20, 40), 3), (33, 41), (5, 27)])


class RandomCurves(Answers):
    def of_curves(self, drawing, modern, *more):
        reading = ("--reading", "modern" if modern else "strict")
        info, files = self.ask(drawing.doc.saveas, "--lines", "--info", *reading, *more)
        return info, files.get("d.svg", b"").decode()

    def each_drawing(self, kinds, versions, nested):
        for version in versions:
            for number in range(6):
                name = f"{' '.join(kinds)}, {version}, {number}, {nested}"
                modern = number % 2 == 1
                drawing = CurveDrawing(name, version, modern)
                if "endless" in kinds:
                    drawing.flat = ("extrusion",)       # no surfaces but faces
                space = drawing.doc.modelspace()
                if nested:
                    inner, outer = drawing.doc.blocks.new("INNER", base_point=drawing.point()), drawing.doc.blocks.new("OUTER")
                    drawing.fill(inner, kinds, 2)
                    drawing.add_insert(outer, ["INNER"])
                    space, _ = outer, drawing.add_insert(space, ["OUTER"])
                drawing.fill(space, kinds, 5)
                curves = [curve for _, curve in CurveConventions(drawing.doc, modern).facets]
                bounds = [point for curve in curves if not is_endless(curve) for point in curve]
                if "face" in kinds:
                    bounds = [corner for _, loop in FaceConventions(drawing.doc, modern).facets for corner in loop] or bounds
                centre = BoundingBox(bounds).center if bounds else Vec3()
                radius = max((centre.distance(point) for point in bounds), default=0)
                curves = [part for curve in curves for part in (cut(curve, centre, radius) if is_endless(curve) else [curve])]
                yield name, drawing, modern, curves, (centre, radius)

    def check(self, kinds, versions, nested=False, slack=1e-9):
        met = 0
        for name, drawing, modern, expected, _ in self.each_drawing(kinds, versions, nested):
            info, _ = self.of_curves(drawing, modern)
            length = sum(a.distance(b) for curve in expected for a, b in zip(curve, curve[1:]))
            self.assertEqual(info["lines"], len(expected), name)
            self.assertAlmostEqual(info["lineLength"], length, None, name, slack * (length + drawing.size))
            met += len(expected)
        self.assertGreater(met, 50)

    def test_number_and_length(self):
        self.check(["open", "open", "round"], VERSIONS)
        self.check(["open", "open", "round"], VERSIONS, nested=True)
        self.check(["open", "helix", "helix", "endless"], VERSIONS[1:])
        self.check(["open", "helix", "endless", "face"], VERSIONS[1:], nested=True)
        self.check(["pattern"], VERSIONS[1:], slack=1e-6)     # the library rounds

    def test_ends_in_an_svg_file(self):
        """Without surfaces every curve is one path from its first point to its last."""
        CurveDrawing.flat = ("extrusion",)
        self.addCleanup(setattr, CurveDrawing, "flat", ("thickness", "extrusion"))
        drawings = [*self.each_drawing(["open"], VERSIONS, nested=True), *self.each_drawing(["open", "helix", "endless"], VERSIONS[1:], nested=True)]
        for name, drawing, modern, expected, (centre, radius) in drawings:
            if not expected:
                continue
            scale = radius / 280 or 1.0
            slack = 1e-3 + 2e-5 * centre.magnitude / scale      # a view's coordinates have six digits
            _, svg = self.of_curves(drawing, modern, "-vplan", "--scale", repr(scale), "-s600x600", "d.svg")
            found = [[tuple(map(float, point.split())) for point in part.split("L")] for text in re.findall(r' d="([^"]*)"', svg) for part in text.split("M")[1:]]
            on_screen = [[(300 + (p.x - centre.x) / scale, 300 - (p.y - centre.y) / scale) for p in (curve[0], curve[-1])] for curve in expected]
            self.assertEqual(len(found), len(expected), name)
            for path in found:
                near = [ends for ends in on_screen if math.dist(path[0], ends[0]) + math.dist(path[-1], ends[1]) < slack]
                self.assertTrue(near, (name, path[0], path[-1]))
                on_screen.remove(near[0])

