"""Three gears that mesh, on a base plate with their axles: concave facets, holes, several things and materials."""
import math

from kit import FLOOR, circle, floor_at


def gear_outline(teeth, module, turn, x, y):
    radius = teeth * module / 2
    inner, outer = radius - 1.2 * module, radius + 0.95 * module
    points = []
    for tooth in range(teeth):
        for share, r in ((-0.29, inner), (-0.12, outer), (0.12, outer), (0.29, inner)):
            angle = math.radians(turn) + 2 * math.pi * (tooth + share) / teeth
            points.append((x + r * math.cos(angle), y + r * math.sin(angle)))
    return points


def gear(thing, material, teeth, turn, x, y, low, high, module=1.0):
    radius = teeth * module / 2
    holes = [circle(1.2, 20, 0, x, y)[::-1]]
    if teeth > 12:
        ring = 0.55 * radius
        size = 0.23 * radius
        holes += [circle(size, 20, 0, x + ring * math.cos(math.pi * i / 2.5), y + ring * math.sin(math.pi * i / 2.5))[::-1] for i in range(5)]
    thing.slab(material, FLOOR, gear_outline(teeth, module, turn, x, y), holes, low, high)


def axle(thing, material, x, y, top):
    thing.lathe(material, x, y, [(1.15, 0.0), (1.15, top - 0.3), (0.85, top), (0, top)], 20)
    thing.lathe(material, x, y, [(1.9, 0.0), (1.9, 1.0)], 20)
    thing.facet(material, floor_at(1.0, x, y).loop(circle(1.9, 20)), floor_at(1.0, x, y).loop(circle(1.15, 20))[::-1])


def build(model):
    places = [(24, 0.0, 0.0), (14, 19.0, 0.0), (9, 19.0, 11.5)]
    base = model.thing()
    outline = [(-15, -15), (28, -15), (31, -12), (31, 16), (28, 19), (10, 19), (3, 15), (-15, 15)]
    screws = [circle(0.8, 16, 0, x, y)[::-1] for x, y in ((-12.5, -12.5), (28, -12), (28, 16), (-12.5, 12.5), (9, -12.5))]
    base.slab("Base", FLOOR, outline, screws, -1.5, 0.0)
    for teeth, x, y in places:
        axle(model.thing(), "Axle", x, y, 5.5)
    gear(model.thing(), "Wheel", 24, 0.0, 0.0, 0.0, 1.2, 4.4)
    gear(model.thing(), "Pinion", 14, 180.0 + 180.0 / 14, 19.0, 0.0, 1.2, 4.4)
    gear(model.thing(), "Idler", 9, -90.0, 19.0, 11.5, 1.2, 4.4)
