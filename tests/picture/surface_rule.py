"""What surfaces a picture shows, worked out slowly, facet by facet and row by row: what line_rule.py needs to know of them.

Numbers are IEEE doubles and sums have the order that the program's have: results are compared bit for bit. Points in space and
normals are tuples of three, projected points (x, y, depth); a sample or pixel is (column, row).
"""
import math
from dataclasses import dataclass


def dot(a, b):
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]


def minus(a, b):
    return (a[0] - b[0], a[1] - b[1], a[2] - b[2])


def turned(plane):
    return tuple(-c for c in plane[0]), -plane[1]


@dataclass
class Facet:
    """Loops of points, and the plane (normal, offset) as the reader makes it."""
    loops: list
    plane: tuple
    material: int             # its number, from 1
    reflectance: tuple        # 1.0 is full
    colour: tuple = None      # bytes, once shaded

    def sides(self):
        for loop in self.loops:
            yield from zip(loop, loop[1:] + loop[:1])


class Eye:
    """The program's camera, from an Ombr file's record of it, the numbers of the view file, and the model's bounds."""

    def __init__(self, record, eye, zoom, centre, radius):
        self.width, self.height, self.radius, self.parallel = record.width, record.height, radius, record.kind == 1
        self.right, self.up, self.forward, self.near, self.far = record.right, record.up, record.forward, record.near, record.far
        self.eye = tuple((e - c) / radius * radius + c for e, c in zip(eye, centre))
        diagonal = math.sqrt(float(self.width * self.width + self.height * self.height))
        seen = [2.0 * size * zoom / diagonal for size in (self.width, self.height)]
        if self.parallel:
            seen = [size * 4.6 * radius for size in seen]
        self.scale = min(self.width / seen[0], self.height / seen[1])
        self.middle = (self.width * 0.5, self.height * 0.5)
        self.on_far_plane = tuple(e + f * self.far for e, f in zip(self.eye, self.forward))

    def project(self, point):
        if self.parallel:
            w = tuple(self.scale * c for c in minus(point, self.on_far_plane))
            return self.middle[0] + dot(self.right, w), self.middle[1] - dot(self.up, w), dot(self.forward, w)
        v = minus(point, self.eye)
        d = dot(self.forward, v) or -(self.far - self.near) * 5e-13
        return self.middle[0] + self.scale * dot(self.right, v) / d, self.middle[1] - self.scale * dot(self.up, v) / d, 0.0 - self.scale / d

    def faces(self, plane):
        return dot(self.forward, plane[0]) <= 0.0 if self.parallel else dot(plane[0], self.eye) - plane[1] >= 0.0

    def slopes(self, facet):
        """What the depth of a facet's plane gains in a pixel to the right, and down."""
        n, offset = facet.plane
        c = dot(self.forward, n) if self.parallel else offset - dot(n, self.eye)
        slopes = [-k / c if c else math.inf for k in (dot(self.right, n), -dot(self.up, n))]
        return [slope if math.isfinite(slope) else 0.0 for slope in slopes]

    def code(self, depth):
        """A depth as in Ombr files, not yet truncated."""
        if not self.parallel and depth == 0:
            return 0
        d = depth / self.scale + self.far if self.parallel else -(self.scale / depth)
        return (d - self.near) * (4294967294.0 / (self.far - self.near))


def shade(eye, facets, lights):
    """`lights`: sky, ground, and (bearing, elevation, intensity) of the others."""
    sky, ground, *beams = lights
    levels = []
    for facet in facets:
        normal = facet.plane[0] if eye.faces(facet.plane) else turned(facet.plane)[0]
        light = ground + (1.0 + normal[2]) * ((sky - ground) * 0.5)
        for bearing, elevation, intensity in beams:
            a, e = math.radians(bearing + 180.0), math.radians(-elevation)
            along = (math.sin(a) * math.cos(e), -math.cos(a) * math.cos(e), math.sin(e))
            light += intensity * max(0.0, -dot(along, normal))
        levels.append([light * c for c in facet.reflectance])
    most = max((value for level in levels for value in level), default=0.0) or 1.0
    for facet, level in zip(facets, levels):
        facet.colour = tuple(max(0, min(255, int(value / most * 256))) for value in level)


def crossings(eye, sides):
    """For each row the (x, depth) where projected sides cross it, from the left. Equal x keep the order of the list of active sides:
    it is turned round from row to row, and new sides stand before it."""
    last, entering, active = eye.height - 1, {}, []
    for side in sides:
        (_, y0, z0), (_, y1, z1) = top, bottom = side if side[0][1] <= side[1][1] else side[::-1]
        if z0 >= 0:             # the upper end is behind the eye
            crosses, start, end = z1 < 0 and y1 < last, y1, math.inf
        elif z1 >= 0:           # the lower one
            crosses, start, end = y0 >= 0, -1.0, y0
        else:
            crosses, start, end = y1 >= 0 and y0 < last, y0, y1
        if crosses and y0 != y1:
            entering.setdefault(0 if start < 0 else int(start) + 1, []).append((top, bottom, end))
    for y in range(eye.height):
        active = [side for side in entering.get(y, []) + active[::-1] if side[2] >= y]
        found = []
        for (x0, y0, z0), (x1, y1, z1), _ in active:
            t = (y - y0) / (y1 - y0)
            found.append((x0 + (x1 - x0) * t, z0 + (z1 - z0) * t))
        yield y, sorted(found, key=lambda crossing: crossing[0])


def spans(found, slope, width):
    """(first column, end column, first depth, step) between the crossings of a row."""
    if len(found) % 2 and slope > 0:
        (x, depth), *found = found
        yield 0, min(int(x) + 1, width), depth - slope * x, slope
    while len(found) > 1:
        (x, depth), (right, right_depth), *found = found
        if right > 0 and x < width - 1:
            start, step = max(int(x) + 1, 0), (right_depth - depth) / ((right - x) or 1.0)
            yield start, min(int(right) + 1, width), depth + (start - x) * step, step
    if found and slope < 0:
        (x, depth), = found
        start = max(int(x) + 1, 0)
        yield start, width, depth - (x - start) * slope, slope


def surfaces(eye, facets):
    """{sample: (depth, facet)} of all samples that a facet owns."""
    owners = {}
    for facet in facets:
        sides, slope = [(eye.project(a), eye.project(b)) for a, b in facet.sides()], eye.slopes(facet)[0]
        for y, found in crossings(eye, sides):
            for start, end, depth, step in spans(found, slope, eye.width):
                for x in range(start, end):
                    if (x, y) not in owners or depth <= owners[x, y][0]:
                        owners[x, y] = depth, facet
                    depth += step
    return owners
