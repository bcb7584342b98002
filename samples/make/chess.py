"""A game of chess after a few moves: two materials on one body, and bodies of revolution."""
from kit import FLOOR, rectangle

BASE = [(0.40, 0.0), (0.40, 0.10), (0.33, 0.16), (0.34, 0.24), (0.22, 0.34)]
PIECES = {
    "pawn": BASE + [(0.14, 0.62), (0.24, 0.70), (0.13, 0.76), (0.20, 0.88), (0.21, 0.97), (0.13, 1.08), (0, 1.12)],
    "rook": BASE + [(0.20, 0.95), (0.28, 1.05), (0.28, 1.28), (0.19, 1.28), (0.19, 1.15), (0, 1.15)],
    "bishop": BASE + [(0.13, 1.00), (0.25, 1.08), (0.13, 1.14), (0.21, 1.30), (0.17, 1.48), (0.05, 1.60), (0.07, 1.66), (0, 1.70)],
    "queen": BASE + [(0.14, 1.20), (0.28, 1.30), (0.15, 1.36), (0.28, 1.68), (0.20, 1.66), (0.10, 1.76), (0, 1.80)],
    "king": BASE + [(0.15, 1.30), (0.29, 1.42), (0.16, 1.48), (0.27, 1.80), (0.18, 1.90), (0.06, 1.94), (0, 1.94)],
}
WHITE = {"a1": "rook", "b1": "knight", "c1": "bishop", "d1": "queen", "e1": "king", "h1": "rook", "f3": "knight", "c4": "bishop",
         "a2": "pawn", "b2": "pawn", "c3": "pawn", "d4": "pawn", "e4": "pawn", "f2": "pawn", "g2": "pawn", "h2": "pawn"}
BLACK = {"a8": "rook", "c8": "bishop", "d8": "queen", "e8": "king", "h8": "rook", "c6": "knight", "f6": "knight", "c5": "bishop",
         "a7": "pawn", "b7": "pawn", "d6": "pawn", "e5": "pawn", "f7": "pawn", "g7": "pawn", "h7": "pawn"}


def board(thing):
    frame = [(-0.6, -0.6), (8.6, -0.6), (8.6, 8.6), (-0.6, 8.6)]
    field = rectangle(0, 0, 8, 8)
    for colour in (0, 1):
        for x in range(8):
            for y in range(8):
                if (x + y) % 2 == colour:
                    thing.facet(("Ebony", "Maple")[colour], FLOOR.loop(rectangle(x, y, 1, 1)))
    thing.facet("Frame", FLOOR.loop(frame), FLOOR.loop(field)[::-1])
    thing.sides("Frame", FLOOR, frame, -0.5, 0.0)
    thing.facet("Frame", FLOOR.loop(frame, -0.5)[::-1])


def knight(thing, material, x, y, side):
    thing.lathe(material, x, y, BASE + [(0.22, 0.40), (0, 0.40)], 24)
    head = [(-0.20, 0.38), (0.22, 0.38), (0.20, 0.75), (0.10, 0.95), (0.34, 0.90), (0.38, 1.02), (0.16, 1.32), (0.06, 1.45),
            (0.00, 1.32), (-0.18, 1.15), (-0.26, 0.85)]
    # A flat horse's head, facing the other side's men.
    near = [(x - 0.12, y + side * a, z) for a, z in head]
    far = [(x + 0.12, y + side * a, z) for a, z in head]
    thing.facet(material, near)
    thing.facet(material, far)
    for i in range(len(head)):
        thing.facet(material, [near[i - 1], near[i], far[i], far[i - 1]])


def set_up(model, men, material, side):
    for place, piece in men.items():
        x, y = "abcdefgh".index(place[0]) + 0.5, int(place[1]) - 0.5
        thing = model.thing()
        if piece == "knight":
            knight(thing, material, x, y, side)
            continue
        thing.lathe(material, x, y, PIECES[piece], 24)
        if piece == "king":
            thing.box(material, x - 0.04, y - 0.04, 1.92, x + 0.04, y + 0.04, 2.24)
            thing.box(material, x - 0.13, y - 0.04, 2.04, x + 0.13, y + 0.04, 2.12, bottom=True)


def build(model):
    board(model.thing())
    set_up(model, WHITE, "Ivory", 1)
    set_up(model, BLACK, "Coral", -1)
