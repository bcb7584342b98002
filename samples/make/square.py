"""A town square: a town hall with an arcade and a clock tower, gabled houses, a church, a fountain, trees, stairs and a canal."""
import math

from kit import Frame, arch, circle, floor_at, rectangle

# First use decides the colour, so this order does: aqua, peach, lavender, green, pink, sky blue, yellow, violet, mint.
PALETTE = ("Copper", "Sandstone", "Slate", "Grass", "Brick", "Water", "Gilding", "Glass", "Timber")


def palette_plaque(model):
    """A small sundial of nine stones by the canal, which also names the materials in order."""
    thing = model.thing()
    for i, material in enumerate(PALETTE):
        thing.box(material, -30.0 + 0.9 * i, -33.4, 0.0, -29.3 + 0.9 * i, -32.7, 0.5)


def ring(thing, material, outer, inner, z=0.0, count=48):
    floor = floor_at(z)
    thing.facet(material, floor.loop(circle(outer, count)), floor.loop(circle(inner, count))[::-1])


def paving(thing):
    """Rings of two stones about the fountain; squares and a lawn outside them."""
    floor = floor_at(0.0)
    radii = [18.0, 15.5, 13.0, 10.5, 8.0]
    for i, (outer, inner) in enumerate(zip(radii, radii[1:] + [5.0])):
        ring(thing, ("Timber", "Slate")[i % 2], outer, inner)
    thing.facet("Slate", floor.loop(rectangle(-36, -36, 72, 72)), floor.loop(circle(18.0, 48))[::-1])
    thing.sides("Sandstone", floor, rectangle(-36, -36, 72, 72), -3.0, 0.0)


def fountain(thing):
    floor = floor_at(0.0)
    rim, basin = circle(5.0, 24), circle(4.4, 24)
    thing.slab("Sandstone", floor, rim, [basin[::-1]], 0.0, 1.1, bottom=False)
    thing.facet("Water", floor.loop(basin, 0.8))
    thing.lathe("Sandstone", 0, 0, [(0.9, 0.8), (0.55, 1.4), (0.5, 3.0), (2.2, 3.7), (2.3, 4.0), (2.0, 4.0), (1.9, 3.8)], 16)
    thing.disc("Water", 0, 0, 3.85, 1.95, 16)
    thing.lathe("Copper", 0, 0, [(0.5, 3.8), (0.3, 4.4), (0.3, 5.4), (0.8, 5.8), (0.2, 6.1), (0, 6.3)], 12)
    thing.lathe("Gilding", 0, 0, [(0, 6.1), (0.4, 6.4), (0.5, 6.7), (0.4, 7.0), (0, 7.3)], 10)


def steps(thing, material, x0, x1, y_front, y_back, count, rise):
    """Stairs that climb towards +y."""
    tread = (y_back - y_front) / count
    for i in range(count):
        y, z = y_front + i * tread, i * rise
        thing.facet(material, [(x0, y, z), (x1, y, z), (x1, y, z + rise), (x0, y, z + rise)])
        thing.facet(material, [(x0, y, z + rise), (x1, y, z + rise), (x1, y + tread, z + rise), (x0, y + tread, z + rise)])
    profile = [(y_front, 0.0)] + [p for i in range(count) for p in ((y_front + i * tread, (i + 1) * rise), (y_front + (i + 1) * tread, (i + 1) * rise))]
    profile.append((y_back, 0.0))
    for x in (x0, x1):      # the stepped side: one concave facet
        thing.facet(material, [(x, y, z) for y, z in profile])


def arcade_outline(width, height, arches):
    """A wall standing on piers: the openings reach the ground, so the outline itself is concave."""
    outline = [(0, 0)]
    for x, w, h in arches:
        opening = arch(x, 0, w, h, 10)
        outline += [opening[0]] + opening[2:][::-1] + [opening[1]]
    return outline + [(width, 0), (width, height), (0, height)]


def town_hall(thing):
    left, right, front, back, floor = -22.0, 22.0, 24.0, 34.0, 1.5
    width = right - left
    steps(thing, "Timber", left - 1, right + 1, 20.0, front - 1.2, 5, floor / 5)
    thing.box("Timber", left - 1, front - 1.2, 0, right + 1, back + 1, floor)
    # The arcade: ten arches on piers, vaulted through to the wall behind.
    wall = Frame((left, front, floor))
    arches = [(0.7 + 4.36 * i, 3.4, 5.4) for i in range(10)]
    outline = arcade_outline(width, 7.0, arches)
    thing.facet("Sandstone", wall.loop(outline))
    for x, w, h in arches:
        opening = arch(x, 0, w, h, 10)
        for p, q in zip(opening[1:], opening[2:] + opening[:1]):
            thing.facet("Sandstone", [wall.place(p), wall.place(q), wall.place(q, -0.9), wall.place(p, -0.9)])
    inner = Frame((left, front + 4.0, floor))
    doors = [arch(1.2 + 4.36 * i, 0.05, 2.4, 3.9) for i in range(10)]
    thing.wall("Sandstone", inner, rectangle(0, 0, width, 7.0), doors, 0.4, "Timber")
    thing.facet("Slate", [(left, front, floor + 6.9), (right, front, floor + 6.9), (right, front + 4, floor + 6.9), (left, front + 4, floor + 6.9)])
    # A cornice, and the upper floor with its windows.
    cornice(thing, left, right, front, floor + 7.0)
    upper = Frame((left, front, floor + 7.4))
    windows = [arch(1.5 + 4.36 * i, 1.0, 1.8, 3.6) for i in range(10)]
    thing.wall("Sandstone", upper, rectangle(0, 0, width, 6.0), windows, 0.35, "Glass", "Slate")
    for i in range(10):
        x = left + 1.3 + 4.36 * i
        thing.box("Timber", x, front - 0.35, floor + 8.1, x + 2.2, front, floor + 8.4, bottom=True)
    cornice(thing, left, right, front, floor + 13.4)
    low, top = floor, floor + 13.8
    for x, outward in ((left, -1), (right, 1)):
        side = Frame((x, back, low), (0, -1, 0)) if outward < 0 else Frame((x, front, low), (0, 1, 0))
        openings = [arch(1.8 + 3.2 * i, z, 1.5, 3.2) for i in range(3) for z in (2.0, 8.4)] if outward > 0 else \
                   [arch(0.6 + 3.2 * i, z, 1.5, 3.2) for i in range(2) for z in (2.0, 8.4)] + [arch(7.0, 8.4, 1.5, 3.2)]
        thing.wall("Sandstone", side, gable(back - front, top - low, 5.0), openings, 0.35, "Glass", "Slate")
    thing.facet("Sandstone", [(right, back, low), (left, back, low), (left, back, top), (right, back, top)])
    roof(thing, "Slate", left, right, front, back, top, 5.0)
    for i in range(7):
        dormer(thing, left + 3.6 + 6.13 * i, front, top, 5.0, (back - front) / 2)


def cornice(thing, left, right, y, z):
    thing.box("Timber", left - 0.4, y - 0.45, z, right + 0.4, y + 0.1, z + 0.4, bottom=True)


def gable(width, eaves, rise):
    return [(0, 0), (width, 0), (width, eaves), (width / 2, eaves + rise), (0, eaves)]


def roof(thing, material, left, right, front, back, eaves, rise, over=0.6):
    """A saddle roof along x, with some thickness to its edges."""
    ridge, drop = (front + back) / 2, over * rise / ((back - front) / 2)
    for y, sign in ((front - over, 1), (back + over, -1)):
        low, high = (y, eaves - drop), (ridge, eaves + rise)
        for d in (0.0, 0.3):
            thing.facet(material, [(left - over, low[0], low[1] + d), (right + over, low[0], low[1] + d),
                                   (right + over, high[0], high[1] + d), (left - over, high[0], high[1] + d)])
        thing.facet(material, [(left - over, low[0], low[1]), (right + over, low[0], low[1]), (right + over, low[0], low[1] + 0.3), (left - over, low[0], low[1] + 0.3)])
        for x in (left - over, right + over):
            thing.facet(material, [(x, low[0], low[1]), (x, high[0], high[1]), (x, high[0], high[1] + 0.3), (x, low[0], low[1] + 0.3)])


def dormer(thing, x, front, eaves, rise, run):
    y, z, half = front + 1.0, eaves + rise / run + 0.1, 0.9
    back = y + 2.6
    face = Frame((x - half, y, z))
    thing.wall("Sandstone", face, gable(2 * half, 1.7, 0.8), [rectangle(0.5, 0.4, 0.8, 1.1)], 0.2, "Glass")
    for side in (-half, half):
        thing.facet("Sandstone", [(x + side, y, z), (x + side, y, z + 1.7), (x + side, back + 0.9, z + 1.7)])
        thing.facet("Brick", [(x + 1.15 * side, y - 0.2, z + 1.6), (x, y - 0.2, z + 2.55), (x, back + 2.0, z + 2.55), (x + 1.15 * side, back + 1.2, z + 1.6)])


def clock_tower(thing, x, y, size):
    half = size / 2
    frames = [Frame((x - half, y - half, 0)), Frame((x + half, y - half, 0), (0, 1, 0)),
              Frame((x + half, y + half, 0), (-1, 0, 0)), Frame((x - half, y + half, 0), (0, -1, 0))]
    for i, frame in enumerate(frames):
        openings = [arch(half - 1.1, z, 2.2, 3.4) for z in (9.5, 15.0, 20.5)]
        openings += [arch(half - 2.2 + 2.4 * k, 30.4, 2.0, 4.4) for k in range(2)]
        if i == 0:
            openings.append(arch(half - 1.5, 1.6, 3.0, 5.0))
        thing.wall("Sandstone", frame, rectangle(0, 0, size, 36), openings, 0.5, "Glass", "Slate")
        face = circle(1.9, 24, 0, half, 27.0)
        thing.slab("Timber", frame, circle(2.2, 24, 0, half, 27.0), [], 0.0, 0.2, bottom=False)
        thing.facet("Gilding", frame.loop(circle(1.95, 24, 0, half, 27.0), 0.25), frame.loop(circle(1.6, 24, 0, half, 27.0), 0.25)[::-1])
        for angle, length in ((60, 1.0), (-60, 1.5)):    # ten past ten, or nearly
            a = math.radians(90 + angle)
            tip = (half + length * math.cos(a), 27.0 + length * math.sin(a))
            across = (0.09 * math.sin(a), -0.09 * math.cos(a))
            thing.facet("Slate", frame.loop([(half + across[0], 27 + across[1]), tip, (half - across[0], 27 - across[1])], 0.3))
        for z in (8.6, 23.9, 29.6):
            thing.slab("Timber", frame, rectangle(-0.25, z, size + 0.5, 0.5), [], 0.0, 0.25)
        battlements(thing, frame, size, 36.0)
    thing.box("Slate", x - half, y - half, 35.6, x + half, y + half, 36.0)
    thing.lathe("Copper", x, y, [(4.0, 36.0), (3.7, 38.5), (3.9, 39.0), (3.6, 40.4), (2.8, 41.8), (1.6, 42.9), (1.1, 43.3), (1.1, 45.2), (1.4, 45.4),
                                 (0.9, 46.6), (0.25, 48.0), (0, 50.5)], 16, 11.25)
    thing.lathe("Gilding", x, y, [(0, 50.1), (0.42, 50.5), (0.5, 50.9), (0.42, 51.3), (0, 51.7)], 10)


def battlements(thing, frame, size, z):
    count = 5
    step = size / (2 * count - 1)
    outline = [(0, z)]
    for i in range(count):
        outline += [(2 * i * step, z + 1.3), ((2 * i + 1) * step, z + 1.3)] + ([((2 * i + 1) * step, z + 0.6), ((2 * i + 2) * step, z + 0.6)] if i < count - 1 else [])
    outline.append((size, z))
    outline = outline[::-1]
    thing.facet("Sandstone", frame.loop(outline))
    thing.facet("Sandstone", frame.loop(outline, -0.5))
    thing.sides("Sandstone", frame, outline, 0.0, -0.5)


def stepped_gable(width, eaves, stages, rise):
    """A house front whose gable climbs in steps."""
    step = width / (2 * stages + 1)
    points = [(0, 0), (width, 0)]
    for i in range(stages + 1):
        points += [(width - i * step, eaves + i * rise), (width - i * step, eaves + (i + 1) * rise)]
    for i in range(stages, -1, -1):
        points += [(i * step, eaves + (i + 1) * rise), (i * step, eaves + i * rise)]
    return list(dict.fromkeys(points))


def house(thing, frame, width, depth, storeys, walls, tiles, stepped):
    """A house whose front stands in `frame`, with its ridge running to the back."""
    eaves, rise = 3.6 + 3.2 * (storeys - 1) + 0.6, width * 0.55
    openings = [arch(width / 2 - 0.8, 0.0, 1.6, 2.8, 6), rectangle(0.7, 0.7, width / 2 - 2.1, 1.9), rectangle(width / 2 + 1.4, 0.7, width / 2 - 2.1, 1.9)]
    columns = 3 if width > 7 else 2
    for storey in range(1, storeys):
        for column in range(columns):
            x = width * (column + 0.5) / columns - 0.6
            openings.append(rectangle(x, 3.6 + 3.2 * (storey - 1) + 0.7, 1.2, 1.8))
    openings.append(circle(0.55, 12, 0, width / 2, eaves + rise * 0.38))
    outline = stepped_gable(width, eaves, 4, rise / 4.6) if stepped else gable(width, eaves, rise)
    openings[0] = [(x, y + 0.02) for x, y in openings[0]]
    thing.wall(walls, frame, outline, openings[1:], 0.25, "Glass", "Slate")
    thing.facet("Timber", frame.loop(openings[0], 0.04))
    for opening in openings[3:-1]:
        x, y = opening[0]
        thing.slab("Timber", frame, rectangle(x - 0.15, y - 0.2, 1.5, 0.2), [], 0.0, 0.2)
    for a in (0.0, width):
        side = Frame(frame.place((a, 0.0)), tuple(-c for c in frame.out), frame.up)
        thing.facet(walls, side.loop(rectangle(0, 0, depth, eaves)))
    thing.facet(walls, frame.loop(gable(width, eaves, rise), -depth))
    front = -0.3 if stepped else 0.5
    for a, over in ((0.0, -0.4), (width, 0.4)):
        drop = 0.4 * rise / (width / 2)
        low, high = (a + over, eaves - drop + 0.1), (width / 2, eaves + rise + 0.1)
        for d in (0.0, 0.25):
            points = [(low[0], low[1] + d), (high[0], high[1] + d)]
            thing.facet(tiles, [frame.place(points[0], front), frame.place(points[1], front), frame.place(points[1], -depth - 0.4), frame.place(points[0], -depth - 0.4)])
        thing.facet(tiles, [frame.place(p, front) for p in (low, high, (high[0], high[1] + 0.25), (low[0], low[1] + 0.25))])
    chimney = frame.place((width * 0.72, 0.0), -depth * 0.6)
    thing.box("Brick", chimney[0] - 0.5, chimney[1] - 0.5, eaves + rise * 0.3, chimney[0] + 0.5, chimney[1] + 0.5, eaves + rise + 1.4)


def house_rows(model):
    """The houses on the right, facing -x, and one group behind on the left, facing -y."""
    y, right = -30.0, 25.0
    for width, storeys, walls, tiles, stepped in ((8.0, 3, "Sandstone", "Brick", True), (7.0, 4, "Brick", "Slate", False), (9.0, 3, "Timber", "Brick", False),
                                                  (7.5, 4, "Sandstone", "Copper", True), (8.0, 3, "Brick", "Slate", True), (7.0, 4, "Timber", "Brick", False)):
        # Seen from the square the row's +a direction runs towards -y.
        house(model.thing(), Frame((right, y + width, 0), (0, -1, 0)), width, 10.0, storeys, walls, tiles, stepped)
        y += width + 0.2


def church(thing):
    """A nave with buttresses, a rose window and a slender spire, on the left behind the trees."""
    left, right, front, back, eaves = -35.0, -26.0, 8.0, 34.0, 10.0
    rise = 7.0
    nave = Frame((left, front, 0))
    rose = circle(1.6, 20, 0, 4.5, 11.2)
    thing.wall("Sandstone", nave, gable(right - left, eaves, rise), [arch(3.0, 0.02, 3.0, 5.0), rose, arch(0.9, 2.0, 1.2, 5.0), arch(6.9, 2.0, 1.2, 5.0)], 0.5, "Glass", "Slate")
    for i in range(6):
        a = math.radians(30 * i)
        across = (0.08 * math.sin(a), -0.08 * math.cos(a))
        points = [(4.5 + s * 1.6 * math.cos(a) + t * across[0], 11.2 + s * 1.6 * math.sin(a) + t * across[1]) for s, t in ((-1, -1), (-1, 1), (1, 1), (1, -1))]
        thing.facet("Timber", nave.loop(points, -0.3))
    for x, direction, start in ((right, (0, 1, 0), front), (left, (0, -1, 0), back)):
        side = Frame((x, start, 0), direction)
        thing.wall("Sandstone", side, rectangle(0, 0, back - front, eaves), [arch(1.6 + 4.2 * i, 2.5, 1.8, 5.8) for i in range(6)], 0.5, "Glass", "Slate")
        for i in range(7):
            a = 0.2 + 4.2 * i
            for d in (a, a + 0.8):
                thing.facet("Sandstone", [side.place((d, 0), 0), side.place((d, 0), 1.5), side.place((d, 6.5), 1.2), side.place((d, 8.6), 0)])
            thing.facet("Sandstone", [side.place((a, 0), 1.5), side.place((a + 0.8, 0), 1.5), side.place((a + 0.8, 6.5), 1.2), side.place((a, 6.5), 1.2)])
            thing.facet("Slate", [side.place((a, 6.5), 1.2), side.place((a + 0.8, 6.5), 1.2), side.place((a + 0.8, 8.6), 0), side.place((a, 8.6), 0)])
    middle = (left + right) / 2
    for x in (left - 0.5, right + 0.5):
        low = eaves - 0.5 * rise / 4.5
        thing.facet("Copper", [(x, front - 0.4, low + 0.2), (x, back + 0.4, low + 0.2), (middle, back + 0.4, eaves + rise + 0.2), (middle, front - 0.4, eaves + rise + 0.2)])
    thing.facet("Sandstone", nave.loop(gable(right - left, eaves, rise), front - back))
    thing.lathe("Copper", middle, front + 9.0, [(1.6, 15.0), (1.5, 19.0), (1.9, 19.3), (0.9, 22.0), (0.35, 27.0), (0, 31.0)], 8, 22.5)
    thing.lathe("Gilding", middle, front + 9.0, [(0, 30.6), (0.3, 31.0), (0, 31.4)], 8)


def tree(thing, x, y, height):
    thing.lathe("Timber", x, y, [(0.3, 0.0), (0.22, height * 0.4)], 7)
    r = height * 0.3
    middle = height * 0.62
    crown = [(0, middle - r)] + [(r * math.cos(math.radians(a)) * (1.0 if a < 20 else 0.95), middle + r * 1.2 * math.sin(math.radians(a))) for a in (-50, -15, 20, 55)] + [(0, middle + r * 1.25)]
    thing.lathe("Grass", x, y, crown, 9, 7 * x + 3 * y)


def lawns(model):
    for x0, y0, x1, y1 in ((-24, -30, -8, -22), (-24, 4, -20, 17), (-24, -18, -20, 0)):
        bed = model.thing()
        floor = floor_at(0.0)
        outline, inner = rectangle(x0, y0, x1 - x0, y1 - y0), rectangle(x0 + 0.4, y0 + 0.4, x1 - x0 - 0.8, y1 - y0 - 0.8)
        bed.slab("Timber", floor, outline, [inner[::-1]], 0.0, 0.5, bottom=False)
        bed.facet("Grass", floor.loop(inner, 0.35))
    places = [(-21, -26, 6.5), (-16, -26, 7.2), (-11, -26, 6.2), (-22, -14, 6.8), (-22, -8, 7.4), (-22, -2.5, 6.4), (-22, 7, 7.6), (-22, 13, 6.6)]
    for x, y, height in places:
        tree(model.thing(), x, y, height)


def market(model):
    """Stalls with striped awnings, and benches."""
    for x, y in ((12, -24), (5, -27), (-2, -24.5)):
        thing = model.thing()
        for px in (x - 1.8, x + 1.7):
            for py in (y - 1.2, y + 1.1):
                thing.box("Timber", px, py, 0, px + 0.12, py + 0.12, 2.4)
        thing.box("Timber", x - 1.6, y - 1.0, 0.85, x + 1.6, y + 1.0, 1.0, bottom=True)
        for i in range(8):
            x0, x1 = x - 2.0 + 0.5 * i, x - 1.5 + 0.5 * i
            cloth = ("Gilding", "Brick")[i % 2]
            thing.facet(cloth, [(x0, y - 1.6, 2.3), (x1, y - 1.6, 2.3), (x1, y, 3.1), (x0, y, 3.1)])
            thing.facet(cloth, [(x0, y, 3.1), (x1, y, 3.1), (x1, y + 1.6, 2.3), (x0, y + 1.6, 2.3)])
            thing.facet(cloth, [(x0, y - 1.6, 2.3), ((x0 + x1) / 2, y - 1.6, 1.95), (x1, y - 1.6, 2.3)])
        for i in range(5):
            thing.lathe(("Brick", "Gilding", "Grass", "Copper", "Brick")[i], x - 1.2 + 0.6 * i, y - 0.4, [(0, 1.0), (0.22, 1.1), (0.25, 1.25), (0, 1.45)], 8)
    for angle in range(0, 360, 45):
        a = math.radians(angle + 22.5)
        frame = Frame((9.2 * math.cos(a), 9.2 * math.sin(a), 0), (-math.sin(a), math.cos(a), 0), (-math.cos(a), -math.sin(a), 0))
        bench = model.thing()
        bench.slab("Timber", frame, rectangle(-1.1, -0.3, 2.2, 0.6), [], 0.45, 0.55)
        for side in (-0.9, 0.75):
            bench.slab("Sandstone", frame, rectangle(side, -0.25, 0.15, 0.5), [], 0.0, 0.45, bottom=False)


def lamps(model):
    for angle in range(0, 360, 60):
        a = math.radians(angle)
        x, y = 16.8 * math.cos(a), 16.8 * math.sin(a)
        thing = model.thing()
        thing.lathe("Slate", x, y, [(0.3, 0.0), (0.25, 0.4), (0.09, 0.7), (0.08, 4.0), (0.2, 4.2)], 8)
        thing.lathe("Gilding", x, y, [(0.2, 4.2), (0.38, 4.9)], 6)
        thing.lathe("Copper", x, y, [(0.38, 4.9), (0.45, 4.95), (0.1, 5.3), (0, 5.6)], 6)


def canal(model):
    """Water along the front, stairs down to it, a parapet with balusters and a bridge."""
    thing = model.thing()
    thing.facet("Water", [(-36, -48, -2.2), (36, -48, -2.2), (36, -36, -2.2), (-36, -36, -2.2)])
    thing.box("Grass", -36, -54, -3.0, 36, -48, -0.6)
    for x0, x1 in ((-36, -18), (-12, 14), (22, 36)):
        thing.box("Timber", x0, -36, 0.9, x1, -35.5, 1.15, bottom=True)
        count = int((x1 - x0) / 0.9)
        for i in range(count + 1):
            x = x0 + 0.2 + (x1 - x0 - 0.4) * i / count
            thing.lathe("Sandstone", x, -35.75, [(0.16, 0.0), (0.1, 0.15), (0.17, 0.45), (0.09, 0.75), (0.15, 0.9)], 6)
    stair = model.thing()
    for i in range(7):
        z = -0.3 * (i + 1)
        stair.box("Timber", -18, -36.5 - 0.5 * i, -3.0, -12, -36 - 0.5 * i, z + 0.001 * 0)
    bridge = model.thing()
    steps_ = 14
    path = [(-36 - 12 * i / steps_, 1.9 * math.sin(math.pi * i / steps_) - 0.6 * i / steps_) for i in range(steps_ + 1)]
    vault = [(-42 + 4.8 * math.cos(math.pi * i / 12), -2.2 + 3.1 * math.sin(math.pi * i / 12)) for i in range(13)]
    side = path + [(-48, -3.0), (-46.8, -3.0)] + vault[::-1] + [(-37.2, -3.0), (-36, -3.0)]
    for x in (14.0, 22.0):
        bridge.facet("Sandstone", [(x, y, z) for y, z in side])
    for (y0, z0), (y1, z1) in zip(path, path[1:]):
        bridge.facet("Slate", [(14, y0, z0), (22, y0, z0), (22, y1, z1), (14, y1, z1)])
        for x in (14.0, 21.6):
            for d in (0.0, 0.4):
                bridge.facet("Sandstone", [(x + d, y0, z0), (x + d, y1, z1), (x + d, y1, z1 + 0.9), (x + d, y0, z0 + 0.9)])
            bridge.facet("Timber", [(x, y0, z0 + 0.9), (x + 0.4, y0, z0 + 0.9), (x + 0.4, y1, z1 + 0.9), (x, y1, z1 + 0.9)])
    for (y0, z0), (y1, z1) in zip(vault, vault[1:]):
        bridge.facet("Sandstone", [(14, y0, z0), (22, y0, z0), (22, y1, z1), (14, y1, z1)])


def build(model):
    palette_plaque(model)
    paving(model.thing())
    fountain(model.thing())
    town_hall(model.thing())
    clock_tower(model.thing(), 0.0, 23.0, 7.5)
    house_rows(model)
    church(model.thing())
    lawns(model)
    market(model)
    lamps(model)
    canal(model)
    assert tuple(model.materials()) == PALETTE, model.materials()
