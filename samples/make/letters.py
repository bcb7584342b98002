"""The program's name in standing letters: concave outlines, with holes in the round ones."""
import math

from kit import Frame


def bow(x, y, rx, ry, first, last, steps=12):
    """Points of an ellipse from `first` to `last` degrees."""
    angles = [first + (last - first) * i / steps for i in range(steps + 1)]
    return [(x + rx * math.cos(math.radians(a)), y + ry * math.sin(math.radians(a))) for a in angles]


LETTERS = {     # (width, outline counter-clockwise, holes); 10 high, strokes 2 wide
    "B": (6.6, [(0, 0), (3.6, 0)] + bow(3.6, 2.85, 3, 2.85, -90, 60) + bow(3.4, 7.5, 2.7, 2.5, -50, 90) + [(0, 10)],
          [[(2, 2), (2, 4.3)] + bow(3.6, 3.15, 1.2, 1.15, 90, -90), [(2, 6.1), (2, 8.2)] + bow(3.4, 7.15, 1.0, 1.05, 90, -90)]),
    "E": (5.6, [(0, 0), (5.6, 0), (5.6, 2), (2, 2), (2, 4.1), (4.8, 4.1), (4.8, 6.1), (2, 6.1), (2, 8), (5.6, 8), (5.6, 10), (0, 10)], []),
    "L": (5.2, [(0, 0), (5.2, 0), (5.2, 2), (2, 2), (2, 10), (0, 10)], []),
    "V": (7.6, [(2.8, 0), (4.8, 0), (7.6, 10), (5.5, 10), (3.8, 3.2), (2.1, 10), (0, 10)], []),
    "O": (8.0, bow(4, 5, 4, 5, 0, 345, 23), [bow(4, 5, 2, 3, 345, 0, 23)]),
    "R": (6.8, [(0, 0), (2, 0), (2, 3.9), (2.7, 3.9), (4.5, 0), (6.8, 0), (4.7, 4.2)] + bow(3.4, 7.0, 3, 3.0, -55, 90) + [(0, 10)],
          [[(2, 5.8), (2, 8.1)] + bow(3.4, 6.95, 1.1, 1.15, 90, -90)]),
}


def build(model):
    x, names = 0.0, ("Jade", "Apricot", "Lilac", "Mint", "Rose", "Sky")
    for letter, name in zip("BELVOR", names):
        width, outline, holes = LETTERS[letter]
        model.thing().slab(name, Frame((x, 0, 0)), outline, holes, -2.5, 0.0)
        x += width + 1.5
    plinth = model.thing()
    plinth.box("Plinth", -2.5, -2.5, -1.6, x + 1.3, 5.0, 0.0, bottom=True)
    plinth.box("Plinth", -4.0, -4.0, -3.0, x + 2.8, 6.5, -1.6, bottom=True)
