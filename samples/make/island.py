"""An island in the sea: a mesh of triangles over shared vertices, each coloured by its height and slope."""
import math

SIZE = 64          # fields along each side
STEP = 2.0


def height(x, y):
    """A few hills of the shape e^(-d²) on a shelf, with ridges; 0 is the sea."""
    hills = ((0, 6, 15, 20), (-28, -14, 8, 16), (24, -24, 6, 15), (20, 28, 8, 17), (-20, 34, 5, 13))
    z = sum(h * math.exp(-((x - a) ** 2 + (y - b) ** 2) / (w * w)) for a, b, h, w in hills)
    z += 0.9 * math.sin(x * 0.45 + 0.3 * y) * math.sin(y * 0.38 - 0.2 * x) * min(1.0, z / 3)
    return z - 1.5 - 0.0009 * (x * x + y * y)


def material(corners):
    low, high = min(c[2] for c in corners), max(c[2] for c in corners)
    middle = sum(c[2] for c in corners) / 3
    if middle > 10.5:
        return "Heather"
    if high - low > 2.6 or middle > 8.2:
        return "Rock"
    if middle < 0.9:
        return "Sand"
    return "Meadow"


def build(model):
    land = model.thing()
    half = SIZE * STEP / 2
    points = {}
    for i in range(SIZE + 1):
        for j in range(SIZE + 1):
            x, y = i * STEP - half, j * STEP - half
            points[i, j] = (x, y, max(height(x, y), -0.6))
    triangles = []
    for i in range(SIZE):
        for j in range(SIZE):
            a, b, c, d = points[i, j], points[i + 1, j], points[i + 1, j + 1], points[i, j + 1]
            # The diagonal along the smaller step: ridges stay sharp.
            split = [(a, b, c), (a, c, d)] if abs(a[2] - c[2]) < abs(b[2] - d[2]) else [(a, b, d), (b, c, d)]
            triangles += [t for t in split if max(p[2] for p in t) > -0.3]
    # In the order that gives aqua shallows, sandy beaches, grey rock, green meadows and pink heather.
    shallow = model.thing()
    shallow.facet("Shallows", [(half * 1.05 * math.cos(math.radians(a)), half * 1.05 * math.sin(math.radians(a)), 0.0) for a in range(0, 360, 6)])
    for wanted in ("Sand", "Rock", "Meadow"):
        for triangle in triangles:
            if material(triangle) == wanted:
                land.facet(wanted, list(triangle))
    for triangle in triangles:
        if material(triangle) == "Heather":
            land.facet("Heather", list(triangle))
    model.things.reverse()
