"""A model as things of facets, and the few shapes that the samples are made of. Lengths are model units, z is up."""
import math


def circle(radius, count, start=0.0, x=0.0, y=0.0):
    """`count` points of a circle, counter-clockwise from `start` degrees."""
    return [(x + radius * math.cos(math.radians(start + 360 * i / count)),
             y + radius * math.sin(math.radians(start + 360 * i / count))) for i in range(count)]


def arch(x, y, width, height, steps=8):
    """An opening with a round top, its sill from (x, y) to the right."""
    middle, radius = x + width / 2, width / 2
    top = [(middle + radius * math.cos(math.pi * i / steps), y + height - radius + radius * math.sin(math.pi * i / steps))
           for i in range(steps + 1)]
    return [(x, y), (x + width, y)] + top


def rectangle(x, y, width, height):
    return [(x, y), (x + width, y), (x + width, y + height), (x, y + height)]


class Frame:
    """A drawing plane in space: `place((a, b), d)` lies a along `right`, b along `up` and d towards the viewer of the plane."""

    def __init__(self, origin, right=(1, 0, 0), up=(0, 0, 1)):
        self.origin, self.right, self.up = origin, right, up
        self.out = (right[1] * up[2] - right[2] * up[1], right[2] * up[0] - right[0] * up[2], right[0] * up[1] - right[1] * up[0])

    def place(self, point, d=0.0):
        return tuple(self.origin[i] + point[0] * self.right[i] + point[1] * self.up[i] + d * self.out[i] for i in range(3))

    def loop(self, points, d=0.0):
        return [self.place(point, d) for point in points]


FLOOR = Frame((0, 0, 0), (1, 0, 0), (0, 1, 0))


def floor_at(z, x=0.0, y=0.0):
    return Frame((x, y, z), (1, 0, 0), (0, 1, 0))


class Thing:
    def __init__(self):
        self.numbers, self.facets = {}, []

    def facet(self, material, *loops):
        """A facet of an outline and holes; each a list of (x, y, z), the outline counter-clockwise to the one outside."""
        def number(point):
            key = tuple(round(c, 4) + 0.0 for c in point)
            return self.numbers.setdefault(key, len(self.numbers) + 1)
        self.facets.append((material, [[number(point) for point in loop] for loop in loops]))

    def sides(self, material, frame, loop, low, high):
        """The walls over `loop`, drawn in `frame`, from height `low` to `high` above it."""
        for p, q in zip(loop, loop[1:] + loop[:1]):
            self.facet(material, [frame.place(p, low), frame.place(q, low), frame.place(q, high), frame.place(p, high)])

    def slab(self, material, frame, outline, holes, low, high, side=None, bottom=True):
        """A plate with holes through it."""
        for loop in [outline] + holes:
            self.sides(side or material, frame, loop, low, high)
        self.facet(material, frame.loop(outline, high), *[frame.loop(hole, high) for hole in holes])
        if bottom:
            self.facet(side or material, frame.loop(outline, low)[::-1], *[frame.loop(hole, low)[::-1] for hole in holes])

    def box(self, material, x0, y0, z0, x1, y1, z1, bottom=False):
        self.slab(material, FLOOR, [(x0, y0), (x1, y0), (x1, y1), (x0, y1)], [], z0, z1, bottom=bottom)

    def lathe(self, material, x, y, profile, count=12, start=0.0):
        """A turned body: `profile` lists (radius, z) from the bottom up; radius 0 closes it in a point."""
        for (r0, z0), (r1, z1) in zip(profile, profile[1:]):
            low = [(px, py, z0) for px, py in circle(r0, count, start, x, y)]
            high = [(px, py, z1) for px, py in circle(r1, count, start, x, y)]
            for i in range(count):
                j = (i + 1) % count
                if r1 == 0:
                    self.facet(material, [low[i], low[j], (x, y, z1)])
                elif r0 == 0:
                    self.facet(material, [(x, y, z0), high[j], high[i]])
                else:
                    self.facet(material, [low[i], low[j], high[j], high[i]])

    def disc(self, material, x, y, z, radius, count=12, start=0.0):
        self.facet(material, [(px, py, z) for px, py in circle(radius, count, start, x, y)])

    def wall(self, material, frame, outline, openings, depth=0.35, pane=None, cross=None):
        """A wall with `openings` that have reveals, and panes set back in them. `cross`: window bars of that material."""
        self.facet(material, frame.loop(outline), *[frame.loop(opening)[::-1] for opening in openings])
        for opening in openings:
            self.sides(material, frame, opening[::-1], 0.0, -depth)
            if pane:
                self.facet(pane, frame.loop(opening, -depth))
            if cross:
                self.bars(cross, frame, opening, depth)

    def bars(self, material, frame, opening, depth, half=0.06):
        left, right = min(p[0] for p in opening), max(p[0] for p in opening)
        low, high = min(p[1] for p in opening), max(p[1] for p in opening)
        middle, level = (left + right) / 2, low + (high - low) * 0.55
        self.facet(material, frame.loop(rectangle(middle - half, low, 2 * half, high - low), 0.05 - depth))
        self.facet(material, frame.loop(rectangle(left, level - half, right - left, 2 * half), 0.06 - depth))


class Model:
    def __init__(self):
        self.things = []

    def thing(self):
        self.things.append(Thing())
        return self.things[-1]

    def facet_count(self):
        return sum(len(thing.facets) for thing in self.things)

    def materials(self):
        """The names in the order of their first use."""
        return list(dict.fromkeys(material for thing in self.things for material, _ in thing.facets))

    def text(self):
        lines = []
        for thing in self.things:
            lines += ["Y ", str(len(thing.numbers))]
            lines += [" ".join(f"{c:.4f}".rstrip("0").rstrip(".") for c in point) for point in thing.numbers]
            lines += ["0", str(sum(len(loops) for _, loops in thing.facets))]
            for material, loops in thing.facets:
                lines.append(f"{len(loops)} {material}")
                lines += [" ".join(map(str, [len(loop)] + loop)) for loop in loops]
        return "\n".join(lines + ["end", ""])
