"""What every pixel of a picture with lines must be, worked out slowly from the rule alone. Shares no code with the program.

Numbers are as in surface_rule.py. The point of a line that gives a pixel lies on a grid line: a column or a row of samples. Samples
outside the picture do not exist: they neither hide a line nor show it. What the rule leaves to arithmetic is as in the program:
segments are cut counted from the end that stays, and the middle of a segment is half the sum of its ends.
"""
import itertools
import math
from dataclasses import dataclass, field

from surface_rule import dot, minus, turned

NOTHING = 4294967295                    # the depth code of a pixel without a surface
FOLD = math.cos(math.radians(20))       # of normals: what differs more is a crease
FRACTION = 2.0**-20


@dataclass
class Chain:
    """Segments through `points`, or one point. `rule`: "curve", "outline" (a border or a contour) or "inner" (other edges)."""
    points: list
    rule: str
    material: int
    colour: tuple
    facets: list = field(default_factory=list)      # those that an edge belongs to


def edge_chains(eye, facets, every):
    """The edges that are drawn, in the order in which their first facets have them, and as those have them."""
    uses = {}
    for facet in facets:
        for ends in facet.sides():
            if ends[0] != ends[1]:
                uses.setdefault(frozenset(ends), []).append((facet, ends))
    for edge in uses.values():
        own = []        # each facet once, and whether it runs as the first one does
        for facet, ends in edge:
            if not any(facet is other for other, _ in own):
                own.append((facet, ends == edge[0][1]))
        faced = {eye.faces(turned(facet.plane) if along and i else facet.plane) for i, (facet, along) in enumerate(own)}
        outline = len(edge) == 1 or len(faced) == 2
        # The normals of two facets that run along the edge in the same direction are of different sides: one is negated.
        crease = any(dot(one.plane[0], other.plane[0]) * (-1 if along == too else 1) < FOLD
                     for (one, along), (other, too) in itertools.combinations(own, 2))
        facets_of_edge = [facet for facet, _ in own]
        if every or outline or crease or len({facet.material for facet in facets_of_edge}) > 1:
            first = next((facet for facet in facets_of_edge if eye.faces(facet.plane)), facets_of_edge[0])
            colour = tuple(35 * byte // 100 for byte in first.colour)
            yield Chain(list(edge[0][1]), "outline" if outline else "inner", first.material, colour, facets_of_edge)


def in_front(eye, point):
    """How far a point lies before the plane at which lines are cut."""
    return dot(eye.forward, minus(point, eye.eye)) - FRACTION * eye.radius


def cut(eye, a, b):
    """The projected ends of what is far enough in front of the eye, or None."""
    if not eye.parallel:
        da, db = in_front(eye, a), in_front(eye, b)
        if da < 0 and db < 0:
            return None
        if da < 0:
            a = tuple(q + (p - q) * (db / (db - da)) for p, q in zip(a, b))
        elif db < 0:
            b = tuple(p + (q - p) * (da / (da - db)) for p, q in zip(a, b))
    return eye.project(a), eye.project(b)


def whole_numbers(a, b, size):
    """Those between a and b that are in a picture of that size or not far outside."""
    return range(max(math.ceil(min(a, b)), -20), min(math.floor(max(a, b)), size + 20) + 1)


class Lines:
    """Lines over surfaces. `nearest`: {pixel: (depth, chain)} of the visible ones."""

    def __init__(self, eye, owners, line_width):
        self.eye, self.owners, self.reach, self.nearest = eye, owners, line_width // 2, {}
        self.size = eye.width, eye.height

    def draw(self, chain):
        if len(chain.points) == 1:
            if self.eye.parallel or in_front(self.eye, chain.points[0]) >= 0:
                for aside in range(-self.reach, self.reach + 1):
                    self.draw_alone(chain, self.eye.project(chain.points[0]), 1, aside)
            return
        cuts = [cut(self.eye, a, b) for a, b in zip(chain.points, chain.points[1:])]
        self.draw_segments(chain, [ends for ends in cuts if ends])

    def draw_segments(self, chain, segments):
        minors = [int(abs(b[0] - a[0]) >= abs(b[1] - a[1])) for a, b in segments]
        for (a, b), minor in zip(segments, minors):
            self.draw_segment(chain, a, b, minor)
        if segments and not any(a[k] != b[k] and math.ceil(min(a[k], b[k])) <= max(a[k], b[k]) for a, b in segments for k in (0, 1)):
            self.draw_alone(chain, [(p + q) * 0.5 for p, q in zip(*segments[0])], minors[0])

    def draw_alone(self, chain, point, minor, aside=0):
        self.put(chain, (math.floor(point[0] + 0.5) + aside, math.floor(point[1] + 0.5)), None, point, minor)

    def draw_segment(self, chain, a, b, minor):
        major = 1 - minor
        first, last = math.ceil(min(a[major], b[major])), math.floor(max(a[major], b[major]))
        for axis in (major, minor):
            for line in whole_numbers(a[axis], b[axis], self.size[axis]) if a[axis] != b[axis] else ():
                t = (line - a[axis]) / (b[axis] - a[axis])
                point = [p + (q - p) * t for p, q in zip(a, b)]
                point[axis] = line
                if axis == major or first > last or not first <= point[major] <= last:
                    across = point[1 - axis]
                    pixel, below = math.floor(across + 0.5), math.floor(across)
                    beside = None if chain.rule == "curve" or across == below else 2 * below + 1 - pixel
                    self.put(chain, *(None if k is None else (k, line) if axis else (line, k) for k in (pixel, beside)), point, minor)

    def put(self, chain, pixel, beside, point, minor):
        """Draws a pixel, as wide as lines are. `beside`: the other sample at its point, if that may count."""
        for k in range(-self.reach, self.reach + 1):
            here, other = [place and (place[0] + k * (1 - minor), place[1] + k * minor) for place in (pixel, beside)]
            if self.exists(here) and not self.is_hidden(chain, here, other, point):
                if here not in self.nearest or point[2] <= self.nearest[here][0]:
                    self.nearest[here] = point[2], chain

    def exists(self, sample):
        return 0 <= sample[0] < self.size[0] and 0 <= sample[1] < self.size[1]

    def is_hidden(self, chain, here, other, point):
        if not self.is_behind(chain, here, point):
            return False
        if other is None or not self.exists(other):
            return True
        return self.is_behind(chain, other, point) if chain.rule == "outline" else not self.is_of(chain, other)

    def is_of(self, chain, sample):
        """Whether a facet of an edge owns the sample."""
        return sample in self.owners and any(self.owners[sample][1] is facet for facet in chain.facets)

    def is_behind(self, chain, sample, point):
        if sample not in self.owners or self.is_of(chain, sample):
            return False
        eye, (depth, facet) = self.eye, self.owners[sample]
        right, down = eye.slopes(facet)
        surface = depth + right * (point[0] - sample[0]) + down * (point[1] - sample[1])
        return point[2] > surface + FRACTION * (eye.scale * (eye.far - eye.near) if eye.parallel else abs(point[2]))


def picture(eye, owners, chains, line_width=1, line_colour=None, background=(0, 0, 0), shown=True):
    """(colours, depth codes, material numbers), row by row; the chains in their order."""
    lines = Lines(eye, owners, line_width)
    for chain in chains:
        lines.draw(chain)
    pixels = []
    for sample in ((x, y) for y in range(eye.height) for x in range(eye.width)):
        pixel = background, NOTHING, 0
        if sample in lines.nearest:
            depth, chain = lines.nearest[sample]
            pixel = line_colour or chain.colour, int(min(max(eye.code(depth), 0), NOTHING - 1)), chain.material
        elif sample in owners and shown:
            depth, facet = owners[sample]
            pixel = facet.colour, int(eye.code(depth)) & NOTHING, facet.material
        pixels.append(pixel)
    return list(zip(*pixels))
