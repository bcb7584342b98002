"""Random models with lines, and views of them: as files for the program, and as its readers should make them."""
import itertools
import math
import random

from line_rule import Chain
from surface_rule import Facet, dot, minus

SQUARE = [(-1, -1), (1, -1), (1, 1), (-1, 1)]
HOLE = [(-0.5, -0.5), (-0.5, 0.5), (0.5, 0.5), (0.5, -0.5)]
OUTLINES = [
    SQUARE, SQUARE,
    [(-1, -1), (1, -1), (1, 0), (0, 0), (0, 1), (-1, 1)],
    [(-1, -1), (0, -0.5), (1, -1), (0.5, 0), (1, 1), (0, 0.5), (-1, 1), (-0.5, 0)],
    [(-1, -1), (1, -1), (1, 1), (0.25, 1), (0.25, -0.5), (-0.25, -0.5), (-0.25, 1), (-1, 1)],
]


def add(a, b, factor=1.0):
    return tuple(p + q * factor for p, q in zip(a, b))


def cross(a, b):
    return (a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0])


class Scene:
    """Facets are (material, loops), curves (material, entity, points). A drawing has both, a Things file has facets."""

    def __init__(self, seed):
        self.random = r = random.Random(seed)
        self.facets, self.walls, self.curves = [], [], []
        self.is_drawing, self.is_exact = r.random() < 0.6, r.random() < 0.3
        self.size = (48, 36) if self.is_exact else r.choice([(48, 36)] * 4 + [(61, 23), (9, 50), (1, 1), (2, 7)])
        self.digits = 0 if self.is_exact else r.choice((0, 1, 2, 17))
        bodies = [self.soup] * 4 + [self.prism] * 3 + [self.terrain, self.tee] * 2 + [self.slit, self.round]
        for _ in range(r.choice((0, 1, 1, 2, 3) if self.is_drawing else (1, 1, 2, 3))):
            r.choice(bodies)()
        if r.random() < 0.4:
            self.facets = [(m, [loop[::-1] for loop in loops] if r.random() < 0.5 else loops) for m, loops in self.facets]
        if r.random() < 0.3:
            r.shuffle(self.facets)
        self.choose_view()
        if self.is_exact:
            self.choose_exact_view()
        self.all_bounds = self.is_drawing and r.random() < 0.1
        curves = [self.line] * 6 + [self.in_facet, self.just_behind, self.past_the_eye, self.polyline]
        curves += [self.dot, self.wall]
        for _ in range(r.choice((1, 3, 6, 12)) if self.is_drawing else 0):
            r.choice(curves)()
        if seed % 5 == 1:
            self.tangle()

    def number(self, size=3.0):
        return round(self.random.uniform(-size, size), self.digits) + 0.0

    def point(self, size=3.0):
        return (self.number(size), self.number(size), self.number(size))

    def material(self):
        return self.random.choice("ABC")

    # Surfaces

    def placed(self):
        """A function that puts the points of a body somewhere, upright or not."""
        axes = [self.point(1.5) for _ in range(3)]
        if self.random.random() < 0.4:
            size = self.random.choice((1.0, 2.0, 3.0))
            axes = [(size, 0.0, 0.0), (0.0, size, 0.0), (0.0, 0.0, size)]
        at = self.point(2)
        return lambda *c: tuple(round(p + c[0] * i + c[1] * j + c[2] * k, self.digits) + 0.0 for p, i, j, k in zip(at, *axes))

    def add_facet(self, *points, material=None):
        self.facets.append((material or self.material(), [list(points)]))

    def add_band(self, below, above, material):
        """Facets between two loops."""
        for i in range(len(below)):
            self.add_facet(below[i - 1], below[i], above[i], above[i - 1], material=material)

    def prism(self):
        place, material, outline = self.placed(), self.material(), self.random.choice(OUTLINES)
        loops = [outline, HOLE] if outline is SQUARE and not self.is_drawing and self.random.random() < 0.3 else [outline]
        low, high = [[[place(x, y, z) for x, y in loop] for loop in loops] for z in (-1, 1)]
        if len(outline) == 4 or not self.is_drawing:        # a drawing's faces have four corners
            self.facets += [(material, [loop[::-1] for loop in low]), (self.material(), high)]
        for below, above in zip(low, high):
            self.add_band(below, above, material)

    def slit(self):
        """A plate with a hole to which a slit leads: the facet has the slit's edge twice."""
        place, outline = self.placed(), SQUARE + SQUARE[:1] + HOLE + HOLE[:1]
        self.add_facet(*(place(x, y, 0) for x, y in (SQUARE if self.is_drawing else outline)))

    def round(self):
        place, material, n = self.placed(), self.material(), self.random.choice((8, 24, 60))
        turns = [2 * math.pi * k / n for k in range(n)]
        rings = [[place(math.cos(turn) * r, math.sin(turn) * r, z) for turn in turns]
                 for z, r in ((-1, 0.5), (-0.4, 1), (0.4, 1), (1, 0.5))]
        for below, above in zip(rings, rings[1:]):
            self.add_band(below, above, material)

    def terrain(self):
        n, steep, material = self.random.randint(2, 6), self.random.choice((0.1, 0.5, 2.0)), self.material()
        triangles = self.random.random() < 0.6
        grid = [[(float(i - n // 2), float(j - n // 2), self.number(steep)) for j in range(n + 1)] for i in range(n + 1)]
        for i, j in itertools.product(range(n), range(n)):
            a, b, c, d = grid[i][j], grid[i + 1][j], grid[i + 1][j + 1], grid[i][j + 1]
            for corners in ((a, b, c), (a, c, d)) if triangles else ((a, b, c, d),):
                self.add_facet(*corners, material=material)

    def soup(self):
        """Facets that have nothing in common, slivers, facets that share an edge, the same one again."""
        r, kind, (a, b, c) = self.random, self.random.randrange(4), (self.point() for _ in range(3))
        for _ in range(r.randint(2, 6)):
            p, q, width = self.point(), self.point(), r.uniform(0.001, 0.2)
            sliver = (p, q, add(q, self.point(1), width), add(p, self.point(1), width))
            self.add_facet(*((p, q, a), sliver, (a, b, p), r.choice(((a, b, c), (c, b, a), (b, c, a))))[kind],
                           material=r.choice("AAB"))

    def tee(self):
        """Facets at one edge, nearly in one plane, that run along it in both directions; some have it twice."""
        place, r = self.placed(), self.random
        a, b = place(0, -1, 0), place(0, 1, 0)
        for _ in range(r.randint(2, 5)):
            end = place(r.choice((-1, 1)), r.choice((0, 0.5)), r.choice((0, 0, 0.1, 0.3, 0.5)))
            loop = [b, a, end] if self.is_drawing or r.random() < 0.7 else [b, a, end, place(0.5, 0.25, 0), end, b, a, end]
            self.add_facet(*r.choice((loop, loop[::-1])), material=r.choice("AAAB"))

    def tangle(self):
        """Facets that are not flat and cross themselves, with a hole anywhere, of one corner and of hundreds."""
        for _ in range(self.random.randint(1, 4)):
            counts = [4] if self.is_drawing else self.random.choice(([5], [7], [8, 3], [1], [2], [1, 6], [260]))
            self.facets.append((self.material(), [[self.point() for _ in range(count)] for count in counts]))

    # Curves

    def any_loop(self):
        return self.random.choice(self.random.choice(self.facets)[1]) if self.facets else [self.point() for _ in range(3)]

    def settled(self, point):
        return tuple(round(2 * c) / 2 for c in point) if self.is_exact and self.random.random() < 0.8 else point

    def any_point(self):
        """Mostly of a surface: in a facet, on an edge, a corner."""
        if self.random.random() < 0.3:
            return self.point(4)
        a, b, c = (self.random.choice(self.any_loop()) for _ in range(3)) if self.random.random() < 0.3 else self.any_loop()[:3]
        s, t = self.random.choice(((0, 0), (0.5, 0), (self.random.random(), 0), (self.random.random() / 2, self.random.random() / 2)))
        return self.settled(add(add(a, minus(b, a), s), minus(c, a), t))

    def add_curve(self, *points, kind="LINE"):
        self.curves.append((self.random.choice("ABCDEF"), kind, list(points)))

    def line(self):
        """Anywhere, along an edge, short, upright, or long."""
        r, a, (p, q, *_), axis = self.random, self.any_point(), self.any_loop(), self.random.randrange(3)
        far = r.choice((1e3, 1e6, 1e9))
        self.add_curve(*r.choice((
            (a, self.any_point()), (p, q), (q, p), (a, add(a, self.point(1), r.choice((0, 1e-9, 0.01, 0.1)))),
            (a, tuple(self.number(5) if k == axis else c for k, c in enumerate(a))),
            (add(a, self.point(1), r.choice((0, far))), add(self.any_point(), self.point(1), far)))))

    def in_facet(self, moved=lambda point: point):
        a, b, c = self.any_loop()[:3]
        self.add_curve(*(moved(add(add(a, minus(b, a), self.random.random()), minus(c, a), self.random.random() / 2)) for _ in range(2)))

    def just_behind(self):
        """About as far behind a facet as lines may be and still show."""
        for part in (0.7, 1.4, 2.8):
            sight, far = minus(self.look_at, self.eye), part * 2.0**-20
            step = far * 2.0 * self.bounds()[1] / math.sqrt(dot(sight, sight))
            self.in_facet(lambda point: add(point, *((sight, step) if self.parallel else (minus(point, self.eye), far))))

    def past_the_eye(self):
        beside = add(self.eye, self.point(1), self.random.choice((0, 1e-6, 0.01, 1)))
        self.add_curve(*[beside, self.any_point()][::self.random.choice((1, -1))])
        self.add_curve(add(beside, minus(beside, self.look_at)), self.any_point())

    def polyline(self):
        a, step = self.any_point(), self.random.choice((0, 0, 0.001, 0.05))
        self.add_curve(*(add(a, self.point(1), step) if step else self.any_point() for _ in range(self.random.randint(2, 7))), kind="POLYLINE")

    def dot(self):
        self.add_curve(self.any_point(), kind="POINT")

    def wall(self):
        """A line of some thickness: a facet, and a curve round it."""
        a, b = self.settled(self.point()), self.settled(self.point())
        if a[:2] != b[:2]:
            high_a, high_b = add(a, (0.0, 0.0, 1.0)), add(b, (0.0, 0.0, 1.0))
            self.add_curve(a, b, high_b, high_a, a, kind="WALL")
            self.walls.append((self.curves[-1][0], [[a, b, high_b, high_a]]))

    # Views

    def choose_view(self):
        r = self.random
        self.look_at = r.choice(self.any_loop()) if r.random() < 0.5 else self.point(1)
        self.eye = add(self.look_at, self.point(1), r.choice((0.2, 1, 3, 8, 30)))
        if r.random() < 0.3 or self.eye == self.look_at:        # along an axis
            self.eye = add(self.look_at, r.choice(((1, 0, 0), (0, 1, 0), (0, 0, 1))), r.choice((-8.0, -2.0, 2.0, 8.0)))
        self.parallel, self.zoom = r.random() < 0.4, r.choice((0.05, 0.2, 0.5, 1.0, 2.5))
        self.lights = [r.choice((0.4, 0.0)), 0.1, (-30.0, 60.0, 0.6), (r.uniform(-180, 180), r.uniform(-90, 90), r.choice((0.0, 0.5)))]

    def choose_exact_view(self):
        """Puts points of whole coordinates on samples, as long as the model is in a sphere of 8 about the origin."""
        r = self.random
        self.add_facet((0.0, 0.0, -8.0), (0.0, -1.0, 0.0), (0.0, 0.0, 8.0))
        self.eye = (float(r.randint(-3, 3)), r.choice((-4.0, 0.0, 2.0, 8.0)), float(r.randint(-3, 3)))
        self.look_at, self.parallel = add(self.eye, (0.0, -1.0, 0.0)), r.random() < 0.7
        scale, seen = (r.choice((0.5, 1.0, 2.0, 4.0)), 4.6 * 8.0) if self.parallel else (r.choice((8.0, 16.0, 64.0)), 1.0)
        guess = 60.0 / (2.0 * seen * scale)
        near_by = (guess, math.nextafter(guess, 0.0), math.nextafter(guess, 9.0))
        self.zoom = next((zoom for zoom in near_by if 48.0 / (2.0 * 48.0 * zoom / 60.0 * seen) == scale), guess)

    def view_text(self):
        lines = [self.eye, self.look_at, [self.zoom], [int(self.parallel)], self.lights[:1], self.lights[1:2], *self.lights[2:]]
        return "\n".join(["Belvor View Parameters 1.0", *(" ".join(map(repr, line)) for line in lines), ""])

    # The model, as a file and as it is read

    def model_text(self):
        return self.drawing_text() if self.is_drawing else self.things_text()

    def drawing_text(self):
        groups = [0, "SECTION", 2, "ENTITIES"]

        def put(kind, layer, points, *rest):
            groups.extend((0, kind, 8, layer))
            for i, point in enumerate(points):
                groups.extend((10 + i, repr(point[0]), 20 + i, repr(point[1]), 30 + i, repr(point[2])))
            groups.extend(rest)

        for layer, loops in self.facets:
            put("3DFACE", layer, loops[0])
        for layer, kind, points in self.curves:
            if kind == "POLYLINE":
                put(kind, layer, [], 66, 1, 70, 8)
                for point in points:
                    put("VERTEX", layer, [point], 70, 32)
                put("SEQEND", layer, [])
            elif kind == "WALL":
                put("LINE", layer, points[:2], 39, 1.0)
            else:
                put(kind, layer, points)
        return "".join(f"{value}\n" for value in groups + [0, "ENDSEC", 0, "EOF"])

    def things_text(self):
        shared = self.random.random() < 0.5
        numbers, facets = {}, ""
        for material, loops in self.facets:
            facets += f"{len(loops)} {material}\n"
            for loop in loops:
                names = [point if shared else (*point, len(facets), i) for i, point in enumerate(loop)]
                facets += " ".join(map(str, [len(loop), *(numbers.setdefault(name, len(numbers) + 1) for name in names)])) + "\n"
        vertices = "".join("%r %r %r\n" % name[:3] for name in numbers)
        return f"Y {len(numbers)}\n{vertices}0\n{sum(len(loops) for _, loops in self.facets)}\n{facets}end\n"

    def read(self, with_curves):
        """The facets and curves, with the materials of a program that has just begun."""
        facets, curves = self.facets + self.walls, self.curves if with_curves else []
        names = list(dict.fromkeys([entry[0] for entry in facets + curves]))
        materials = {name: (i + 1, colour) for i, (name, colour) in enumerate(zip(names, material_colours(len(names))))}
        plane = drawing_plane if self.is_drawing else things_plane
        chains = []
        for name, _, points in curves:
            number, colour = materials[name]
            chains.append(Chain(points, "curve", number, tuple(min(int(256 * c), 255) for c in colour)))
        return [Facet(loops, plane(loops), *materials[name]) for name, loops in facets], chains

    def bounds(self):
        points = [point for _, loops in self.facets + self.walls for loop in loops for point in loop]
        if not points or self.all_bounds:
            points += [point for _, _, curve in self.curves for point in curve] or [(0.0, 0.0, 0.0)]
        low, high = [[pick(axis) for axis in zip(*points)] for pick in (min, max)]
        centre = tuple(a + (b - a) * 0.5 for a, b in zip(low, high))
        return centre, math.sqrt(max(dot(v, v) for v in (minus(p, centre) for p in points))) or 1.0


def material_colours(count):
    step, a, colours = (math.sqrt(5) - 1) * 0.5 * 3, 0.0, []
    for _ in range(count):
        a = a + step - (3 if a + step >= 3 else 0)
        high, low = (1 + a % 1) / 2, (2 - a % 1) / 2
        colours.append([(1.0, high, low), (low, 1.0, high), (high, low, 1.0)][int(a)])
    return colours


def unit(v, least):
    length = math.sqrt(dot(v, v))
    return tuple(c / length for c in v) if length > least else (0.0, 0.0, 1.0)


def things_plane(loops):
    normal = (0.0, 0.0, 0.0)
    for loop in loops:
        for a, b in zip(loop, loop[1:] + loop[:1]):
            normal = add(normal, cross(a, b))
    normal = unit(normal, 0.0)
    return normal, dot(normal, loops[-1][0])


def drawing_plane(loops):
    first, *others = loops[0]
    spokes = [minus(corner, first) for corner in others]
    area = total = (0.0, 0.0, 0.0)
    for a, b in zip(spokes, spokes[1:]):
        area = add(area, cross(a, b))
    for spoke in spokes:
        total = add(total, spoke)
    normal = unit(area, 1e-12 * max(dot(spoke, spoke) for spoke in spokes))
    factor = 1.0 / len(loops[0])
    return normal, dot(normal, tuple(c + s * factor for c, s in zip(first, total)))
