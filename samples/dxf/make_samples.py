#!/usr/bin/env python3
"""Writes the drawings of this folder: python3 make_samples.py"""
import math
import os


class Drawing:
    def __init__(self):
        self.groups = []

    def put(self, *pairs):
        for code, value in pairs:
            self.groups.append((code, value))

    def entity(self, kind, layer, *pairs):
        self.put((0, kind), (8, layer), *pairs)

    def section(self, name):
        self.put((0, "SECTION"), (2, name))

    def end(self, what="ENDSEC"):
        self.put((0, what))

    def layers(self, **colours):
        """A colour below 0 switches the layer off; None freezes it."""
        self.section("TABLES")
        self.put((0, "TABLE"), (2, "LAYER"), (70, len(colours)))
        for name, colour in colours.items():
            self.put((0, "LAYER"), (2, name), (70, 1 if colour is None else 0), (62, 7 if colour is None else colour))
        self.end("ENDTAB")
        self.end()

    def write(self, path):
        self.put((0, "EOF"))
        with open(path, "w", newline="\r\n") as file:
            for code, value in self.groups:
                text = f"{value:.6f}".rstrip("0").rstrip(".") if isinstance(value, float) else str(value)
                file.write(f"{code:3d}\n{text or '0'}\n")


def point(code, x, y, z=0.0):
    return (code, float(x)), (code + 10, float(y)), (code + 20, float(z))


def corners(*points):
    return [pair for i, p in enumerate(points) for pair in point(10 + i, *p)]


def every_entity(path):
    """Each type in a column: without thickness in front, with thickness behind."""
    d = Drawing()
    d.layers(FACES=1, FILLED=2, CURVES=3, STRIPS=4, MESHES=5, BLOCKS=6)
    d.section("BLOCKS")
    d.put((0, "BLOCK"), (2, "STEP"), (70, 0), *point(10, 0, 0))
    d.entity("SOLID", "BLOCKS", *corners((0, 0), (2, 0), (0, 2), (2, 2)), (39, 1.0))
    d.end("ENDBLK")
    d.end()
    d.section("ENTITIES")
    for row, thickness in enumerate((None, 3.0)):
        x, y = 0.0, row * 14.0
        t = [] if thickness is None else [(39, thickness)]
        d.entity("3DFACE", "FACES", *corners((x, y), (x + 6, y), (x + 6, y + 6, 4), (x, y + 6, 4)), *t)
        x += 9
        d.entity("SOLID", "FILLED", *corners((x, y), (x + 6, y), (x, y + 6), (x + 6, y + 6)), *t)
        x += 9
        d.entity("TRACE", "FILLED", *corners((x, y), (x + 6, y), (x + 3, y + 6), (x + 3, y + 6)), *t)
        x += 9
        d.entity("LINE", "CURVES", *point(10, x, y), *point(11, x + 6, y + 6), *t)
        d.entity("3DLINE", "CURVES", *point(10, x, y + 6), *point(11, x + 6, y), *t)
        x += 9
        d.entity("CIRCLE", "FILLED", *point(10, x + 3, y + 3), (40, 3.0), *t)
        x += 9
        d.entity("ARC", "CURVES", *point(10, x + 3, y + 3), (40, 3.0), (50, 30.0), (51, 300.0), *t)
        x += 9
        d.entity("ELLIPSE", "FILLED", *point(10, x + 3, y + 3, row * 3), *point(11, 3, 0), (40, 0.5), (41, 0.0), (42, 2 * math.pi))
        x += 9
        d.entity("LWPOLYLINE", "STRIPS", (90, 4), (70, 1), (43, 1.0), *t, (10, x), (20, y), (10, x + 6), (20, y), (42, 0.5),
                 (10, x + 6), (20, y + 6), (10, x), (20, y + 6))
        x += 9
        d.entity("POLYLINE", "STRIPS", (66, 1), (70, 0), (40, 2.0), (41, 2.0), *t)
        d.entity("VERTEX", "STRIPS", *point(10, x, y), (40, 0.0), (41, 2.0))
        d.entity("VERTEX", "STRIPS", *point(10, x + 4, y), (42, 1.0))
        d.entity("VERTEX", "STRIPS", *point(10, x + 4, y + 5), (40, 2.0), (41, 0.0))
        d.entity("VERTEX", "STRIPS", *point(10, x, y + 5))
        d.entity("SEQEND", "STRIPS")
        x += 9
        d.entity("LWPOLYLINE", "CURVES", (90, 3), (70, 1), *t, (10, x), (20, y), (10, x + 6), (20, y), (10, x + 3), (20, y + 6))
        x += 9
        mesh(d, x, y, closed=row == 1)
        x += 9
        pyramid(d, x, y)
        x += 9
        d.entity("INSERT", "BLOCKS", (2, "STEP"), *point(10, x, y), (70, 2), (71, 2), (44, 3.0), (45, 3.0), (43, 1.0 + 2 * row))
    d.end()
    d.write(path)


def mesh(d, x, y, closed):
    m, n = 9, 7
    d.entity("POLYLINE", "MESHES", (66, 1), (70, 17 if closed else 16), (71, m), (72, n))
    for i in range(m):
        for j in range(n):
            if closed:   # a vase
                turn, radius = 2 * math.pi * i / m, 1.5 + math.sin(j * 0.9)
                at = x + 3 + radius * math.cos(turn), y + 3 + radius * math.sin(turn), float(j)
            else:        # a hill
                at = x + 6 * i / (m - 1), y + 6 * j / (n - 1), 2 * math.sin(math.pi * i / (m - 1)) * math.sin(math.pi * j / (n - 1))
            d.entity("VERTEX", "MESHES", *point(10, *at), (70, 64))
    d.entity("SEQEND", "MESHES")


def pyramid(d, x, y):
    d.entity("POLYLINE", "MESHES", (66, 1), (70, 64), (71, 5), (72, 5))
    for at in ((0, 0, 0), (6, 0, 0), (6, 6, 0), (0, 6, 0), (3, 3, 5)):
        d.entity("VERTEX", "MESHES", *point(10, x + at[0], y + at[1], at[2]), (70, 192))
    for face in ((1, 2, 3, 4), (1, 2, 5), (2, 3, 5), (3, 4, 5), (4, 1, 5)):
        d.entity("VERTEX", "MESHES", (70, 128), *((71 + i, index) for i, index in enumerate(face)))
    d.entity("SEQEND", "MESHES")


def village(path):
    """Houses of blocks within blocks: arrays, turned, mirrored and tilted; one layer frozen, one off."""
    d = Drawing()
    d.layers(WALLS=1, ROOFS=2, GROUND=3, TREES=4, PLANS=-7, OLD=None)
    d.section("BLOCKS")

    def block(name, base=(0, 0)):
        d.put((0, "BLOCK"), (2, name), (70, 0), *point(10, *base))

    block("PICKET")
    d.entity("SOLID", "WALLS", *corners((0, 0), (0.3, 0), (0, 0.1), (0.3, 0.1)), (39, 1.0))
    d.end("ENDBLK")
    block("HOUSE", (4, 3))
    d.entity("LWPOLYLINE", "WALLS", (90, 4), (70, 1), (43, 0.4), (39, 4.0), (10, 0), (20, 0), (10, 8), (20, 0), (10, 8), (20, 6), (10, 0), (20, 6))
    d.entity("3DFACE", "ROOFS", *corners((-1, -1, 3.6), (9, -1, 3.6), (9, 3, 7), (-1, 3, 7)))
    d.entity("3DFACE", "ROOFS", *corners((-1, 7, 3.6), (9, 7, 3.6), (9, 3, 7), (-1, 3, 7)))
    d.entity("3DFACE", "WALLS", *corners((0, 0, 4), (0, 6, 4), (0, 3, 7), (0, 3, 7)))
    d.entity("3DFACE", "WALLS", *corners((8, 0, 4), (8, 6, 4), (8, 3, 7), (8, 3, 7)))
    d.entity("CIRCLE", "PLANS", *point(10, 4, 3, 8), (40, 4.0))   # off: not to be seen
    d.entity("INSERT", "PLANS", (2, "PICKET"), *point(10, 0, -3), (70, 14), (44, 0.6))   # off, but its pickets are on WALLS
    d.end("ENDBLK")
    block("TREE")
    d.entity("CIRCLE", "TREES", *point(10, 0, 0), (40, 0.3), (39, 2.0))
    for turn in range(0, 180, 45):   # discs standing on edge
        x, y = math.cos(math.radians(turn)), math.sin(math.radians(turn))
        d.entity("CIRCLE", "TREES", *point(10, 0, 3.5, 0), (40, 1.8), *point(210, x, y))
    d.end("ENDBLK")
    block("ROW")
    d.entity("INSERT", "0", (2, "HOUSE"), *point(10, 0, 0), (70, 3), (44, 14.0))
    d.entity("INSERT", "0", (2, "TREE"), *point(10, -7, 0), (70, 4), (44, 14.0))
    d.end("ENDBLK")
    d.end()
    d.section("ENTITIES")
    d.entity("3DFACE", "GROUND", *corners((-15, -15, -0.05), (45, -15, -0.05), (45, 45, -0.05), (-15, 45, -0.05)))
    d.entity("INSERT", "0", (2, "ROW"), *point(10, 0, 0))
    d.entity("INSERT", "0", (2, "ROW"), *point(10, 0, 30), (42, -1.0))                 # mirrored: faces the other row
    d.entity("INSERT", "0", (2, "ROW"), *point(10, 40, 2), (50, 90.0), (41, 0.8), (42, 0.8), (43, 1.2))
    d.entity("INSERT", "0", (2, "HOUSE"), *point(10, -15, -13.5, 7.2), (210, 0.0), (220, 0.3), (230, 1.0), (41, 0.4), (42, 0.4), (43, 0.4))
    d.entity("INSERT", "OLD", (2, "ROW"), *point(10, 0, 15))                           # frozen: not to be seen
    d.end()
    d.write(path)


if __name__ == "__main__":
    here = os.path.dirname(os.path.abspath(__file__))
    every_entity(os.path.join(here, "every-entity.dxf"))
    village(os.path.join(here, "village.dxf"))
