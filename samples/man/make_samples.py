#!/usr/bin/env python3
"""Writes the MAN samples of this folder. Run it again after a change: the files are the same."""

import math
import os

HERE = os.path.dirname(os.path.abspath(__file__))


class Body:
    """A solid given by facets of vertex loops; outlines run counter-clockwise seen from outside."""

    def __init__(self, name):
        self.name = name
        self.vertices = []
        self.facets = []   # (material, loops)

    def vertex(self, *position):
        self.vertices.append(position)
        return len(self.vertices)

    def facet(self, material, *loops):
        self.facets.append((material, loops))

    def edges(self):
        """Each edge once, [from, to, left facet, right facet]."""
        found = {}
        for number, (_, loops) in enumerate(self.facets, 1):
            for loop in loops:
                for a, b in zip(loop, loop[1:] + loop[:1]):
                    if (b, a) in found:
                        found[b, a][3] = number
                    else:
                        found[a, b] = [a, b, number, 0]
        assert all(edge[3] for edge in found.values()), "the body is not closed"
        return list(found.values())

    def lines(self):
        edges = self.edges()
        yield f"CLUMP {self.name} {len(self.vertices)} {len(self.facets)}"
        for position in self.vertices:
            yield " ".join(f"{round(value, 9) + 0.0:.10g}" for value in position)
        for material, _ in self.facets:
            yield material
        yield f"EDGE {len(edges)}"
        for edge in edges:
            yield " ".join(map(str, edge))


def prism(name, outlines, bottom, top, side_material, end_material):
    """Outlines in the plane, the first counter-clockwise, holes clockwise, from `bottom` to `top`."""
    body = Body(name)
    rings = [([body.vertex(x, y, bottom) for x, y in outline], [body.vertex(x, y, top) for x, y in outline])
             for outline in outlines]
    body.facet(end_material, *[upper for _, upper in rings])
    body.facet(end_material, *[lower[::-1] for lower, _ in rings])
    for lower, upper in rings:
        for i in range(len(lower)):
            j = (i + 1) % len(lower)
            body.facet(side_material, [lower[i], lower[j], upper[j], upper[i]])
    return body


def circle(radius, count, x=0.0, y=0.0):
    angles = [2 * math.pi * i / count for i in range(count)]
    return [(x + radius * math.cos(a), y + radius * math.sin(a)) for a in angles]


def write(file, header, bodies, line_end="\n"):
    lines = ["KRVT v5.1.0 MAN file", *header, "END"]
    for body in bodies:
        lines += ["", *body.lines()]
    with open(os.path.join(HERE, file), "w", newline="") as out:
        out.write(line_end.join(lines) + line_end)


def flange():
    """A plate with a bore and four bolt holes: facets of several loops."""
    square = [(-60, -60), (60, -60), (60, 60), (-60, 60)]
    bolts = [circle(8, 12, x, y)[::-1] for x in (-42, 42) for y in (-42, 42)]
    plate = prism("flange", [square, circle(25, 24)[::-1], *bolts], 0, 30, "machined", "cast")
    write("flange.man", ["# A plate with five holes through it.", "UNITS 2 1",
                         "MATERIAL cast 0.55 0.6 0.65", "MATERIAL machined 0.85 0.8 0.7"], [plate])


def star():
    """A body that is not convex, with materials that the header does not name."""
    outline = [(r * math.cos(a), r * math.sin(a))
               for i in range(12) for r, a in [((1.0, 0.45)[i % 2], math.pi * i / 6)]]
    body = prism("star", [outline], -0.2, 0.2, "rim", "face")
    write("star.man", ["# A six-pointed star; its colours are the reader's choice."], [body], "\r\n")


def lighthouse():
    """Two clumps that share the header's materials."""
    rock = prism("rock", [[(-4, -3), (3, -4), (5, 1), (2, 4), (-3, 3)]], -1, 0, "stone", "grass")
    tower = Body("tower")
    levels = [(1.6, 0.0, "white"), (1.35, 3.0, "red"), (1.15, 6.0, "white"), (1.0, 9.0, "glass"), (1.0, 10.0, "")]
    rings = [[tower.vertex(x, y, z) for x, y in circle(radius, 16)] for radius, z, _ in levels]
    top = tower.vertex(0, 0, 11.5)
    tower.facet("stone", rings[0][::-1])
    for (_, _, material), lower, upper in zip(levels, rings, rings[1:]):
        for i in range(16):
            j = (i + 1) % 16
            tower.facet(material, [lower[i], lower[j], upper[j], upper[i]])
    for i in range(16):
        tower.facet("red", [rings[-1][i], rings[-1][(i + 1) % 16], top])
    write("lighthouse.man", ["UNITS 4 1", "MATERIAL stone 0.5 0.48 0.45", "MATERIAL grass 0.35 0.6 0.25",
                             "MATERIAL white 0.95 0.95 0.9", "MATERIAL red 0.8 0.15 0.1",
                             "MATERIAL glass 0.6 0.8 0.95"], [rock, tower])


if __name__ == "__main__":
    flange()
    star()
    lighthouse()
