#!/usr/bin/env python3
"""Draws the program's pictures: the toolbars, belvor.ico and about-title.bmp; with a path of
belvor-render also about-scene.bmp, which that program renders. Needs nothing beyond Python.

    make_pictures.py [build/release/bin/belvor-render]
"""
import math
import pathlib
import struct
import subprocess
import sys
import tempfile
import zlib

HERE = pathlib.Path(__file__).resolve().parent
SIZES = (16, 20, 24, 32)   # of what is drawn for monitors of 96, 120, 144 and 192 dots an inch

# Toolbar: 16 colours, so that the toolbar can put the user's colours in place of the greys.
PALETTE = {".": (192, 192, 192), "#": (0, 0, 0), "s": (128, 128, 128), "w": (255, 255, 255),
           "b": (0, 0, 255), "n": (0, 0, 128), "g": (0, 128, 0), "r": (255, 0, 0), "m": (128, 0, 0),
           "y": (255, 255, 0), "c": (0, 128, 128)}

OPEN = """
................
................
................
..#####.........
.#yyyyy#######..
.#yyyyyyyyyyy#..
.#yyyyyyyyyyy#..
.#yy###########.
.#yy#wwwwwwwww#.
.#y#wwwwwwwww#..
.#y#wwwwwwwww#..
.##wwwwwwwww#...
.##wwwwwwwww#...
.############...
................
................"""
SAVE = """
................
.##############.
.#nn#wwwwww#nn#.
.#nn#wwwwww#nn#.
.#nn#wwwwww#nn#.
.#nn#wwwwww#nn#.
.#nn########nn#.
.#nnnnnnnnnnnn#.
.#nnnnnnnnnnnn#.
.#nn########nn#.
.#nn#ss##ss#nn#.
.#nn#ss##ss#nn#.
.#nn#ss##ss#nn#.
.#nn#ss##ss#nn#.
.##############.
................"""
SOLID = """
................
.......##.......
.....##ww##.....
...##wwwwww##...
..#wwwwwwwwww#..
..#s#wwwwww#c#..
..#ss##ww##cc#..
..#ssss##cccc#..
..#ssss#ccccc#..
..#ssss#ccccc#..
..#ssss#ccccc#..
...##ss#ccc##...
.....##c##......
.......#........
................
................"""
# A wider angle: the sight lines open, arrows push them apart.
WIDEN = """
................
..g.........g...
.gg.........gg..
ggggggg.ggggggg.
.gg.........gg..
..g.........g...
................
.mm.........mm..
..mm.......mm...
...mm.....mm....
....mm...mm.....
.....mm.mm......
......mmm.......
.......b........
......bbb.......
................"""
# The look-at cross in the middle of the solid.
CENTRE = """
................
.......s........
.....ss.ss......
...ss..b..ss....
..s....b....s...
..s....b....s...
..s....b....s...
..s.bbbbbbb.s...
..s....b....s...
..s....b....s...
..s....b....s...
...ss..b..ss....
.....ss.ss......
.......s........
................
................"""
# The whole solid inside the frame of the picture.
WHOLE = """
................
.###........###.
.#............#.
.#.....##.....#.
.....##ww##.....
....#wwwwww#....
....##wwww##....
....#s####c#....
....#sss#cc#....
....#sss#cc#....
.....##s##......
.#.....#......#.
.#............#.
.###........###.
................
................"""
# Back to the view before: an arrow that turns round.
PREVIOUS = """
................
................
....n...........
...nn...........
..nnnnnnnnn.....
.nnnnnnnnnnnn...
..nnnnnnnnnnn...
...nn.....nnnn..
....n......nnn..
...........nnn..
...........nnn..
..........nnnn..
....nnnnnnnnn...
....nnnnnnnn....
....nnnnnn......
................"""


def bmp24(path, rows):
    """Rows of (r, g, b), the top row first."""
    height, width = len(rows), len(rows[0])
    pad = b"\0" * (-width * 3 % 4)
    data = b"".join(b"".join(bytes((b, g, r)) for r, g, b in row) + pad for row in reversed(rows))
    header = struct.pack("<IiiHHIIiiII", 40, width, height, 1, 24, 0, len(data), 3780, 3780, 0, 0)
    path.write_bytes(b"BM" + struct.pack("<IHHI", 54 + len(data), 0, 0, 54) + header + data)


def bmp4(path, rows, palette):
    """Rows of palette places, the top row first."""
    height, width = len(rows), len(rows[0])
    data = b""
    for row in reversed(rows):
        line = bytes(row[x] << 4 | (row[x + 1] if x + 1 < width else 0) for x in range(0, width, 2))
        data += line + b"\0" * (-len(line) % 4)
    colours = b"".join(bytes((b, g, r, 0)) for r, g, b in palette) + b"\0" * 4 * (16 - len(palette))
    header = struct.pack("<IiiHHIIiiII", 40, width, height, 1, 4, 0, len(data), 3780, 3780, 16, 16)
    path.write_bytes(b"BM" + struct.pack("<IHHI", 54 + 64 + len(data), 0, 0, 54 + 64) + header + colours + data)


def toolbar():
    keys = list(PALETTE)
    images = [image.strip().split("\n") for image in (OPEN, SAVE, SOLID, WIDEN, CENTRE, WHOLE, PREVIOUS)]
    assert all(len(image) == 16 and all(len(line) == 16 for line in image) for image in images)
    rows = [[keys.index(c) for image in images for c in image[y]] for y in range(16)]
    bmp4(HERE / "toolbar.bmp", rows, list(PALETTE.values()))
    for size in SIZES[1:]:
        scaled = [resized(image, size) for image in images]
        bmp4(HERE / ("toolbar%d.bmp" % size), [[keys.index(c) for image in scaled for c in image[y]] for y in range(size)],
             list(PALETTE.values()))


def doubled(rows):
    """Twice the size, with corners rounded where two equal neighbours meet in them."""
    height, width = len(rows), len(rows[0])
    result = []
    for y in range(height):
        upper, lower = [], []
        for x in range(width):
            pixel = rows[y][x]
            up, down = rows[max(y - 1, 0)][x], rows[min(y + 1, height - 1)][x]
            left, right = rows[y][max(x - 1, 0)], rows[y][min(x + 1, width - 1)]
            smooth = up != down and left != right
            upper += [left if smooth and left == up else pixel, right if smooth and up == right else pixel]
            lower += [left if smooth and left == down else pixel, right if smooth and down == right else pixel]
        result += [upper, lower]
    return result


def resized(rows, size):
    """16 rows in another size: drawn eight times as large, then the most frequent colour of each cell."""
    large = doubled(doubled(doubled(rows)))
    of = len(large)
    result = []
    for y in range(size):
        line = []
        for x in range(size):
            cell = [large[v][u] for v in range(y * of // size, (y + 1) * of // size) for u in range(x * of // size, (x + 1) * of // size)]
            line.append(max(sorted(set(cell)), key=cell.count))
        result.append(line)
    return result


def inside(polygon, x, y):
    odd = False
    for (ax, ay), (bx, by) in zip(polygon, polygon[1:] + polygon[:1]):
        if (ay > y) != (by > y) and x < ax + (y - ay) * (bx - ax) / (by - ay):
            odd = not odd
    return odd


def sampled(width, height, colour_at, samples=4):
    """Rows of (r, g, b, alpha) from a function of a point, averaged over a grid in each pixel."""
    rows = []
    for py in range(height):
        row = []
        for px in range(width):
            total = [0.0, 0.0, 0.0, 0.0]
            for k in range(samples * samples):
                colour = colour_at(px + (k % samples + 0.5) / samples, py + (k // samples + 0.5) / samples)
                if colour:
                    for i in range(3):
                        total[i] += colour[i]
                    total[3] += 1
            hits = total[3] or 1
            row.append(tuple(int(total[i] / hits + 0.5) for i in range(3)) + (int(total[3] * 255 / samples ** 2 + 0.5),))
        rows.append(row)
    return rows


def gem(centre_x, centre_y, size):
    """The facets of a cut stone seen from above the horizon, each with its flat colour."""
    def ring(radius, height, count, turn):
        return [(radius * math.cos(2 * math.pi * (k + turn) / count), radius * math.sin(2 * math.pi * (k + turn) / count), height)
                for k in range(count)]
    upper, lower = ring(0.62, 0.62, 6, 0.5), ring(1.0, 0.05, 6, 0.0)
    faces = [upper] + [[upper[k - 1], lower[k], upper[k]] for k in range(6)]
    faces += [[lower[k], lower[(k + 1) % 6], upper[k]] for k in range(6)]
    faces += [[lower[(k + 1) % 6], lower[k], (0, 0, -1.05)] for k in range(6)]
    tilt, turn = math.radians(28), math.radians(17)
    light = (-0.45, -0.55, 0.70)
    shown = []
    for face in faces:
        points = []
        for x, y, z in face:
            x, y = x * math.cos(turn) - y * math.sin(turn), x * math.sin(turn) + y * math.cos(turn)
            points.append((x, y * math.cos(tilt) - z * math.sin(tilt), y * math.sin(tilt) + z * math.cos(tilt)))
        (ax, ay, az), (bx, by, bz), (cx, cy, cz) = points[:3]
        ux, uy, uz, vx, vy, vz = bx - ax, by - ay, bz - az, cx - ax, cy - ay, cz - az
        nx, ny, nz = uy * vz - uz * vy, uz * vx - ux * vz, ux * vy - uy * vx
        length = math.sqrt(nx * nx + ny * ny + nz * nz)
        nx, ny, nz = nx / length, ny / length, nz / length
        if nz < 0:
            nx, ny, nz = -nx, -ny, -nz
        depth = sum(p[2] for p in points) / len(points)
        shade = 0.30 + 0.75 * max(0.0, nx * light[0] + ny * light[1] + nz * light[2])
        shown.append((depth, [(centre_x + size * x, centre_y + size * y) for x, y, z in points], shade))
    shown.sort(key=lambda face: face[0])
    return [(polygon, tuple(min(255, int(c * shade)) for c in (40, 190, 205))) for _, polygon, shade in shown]


def gem_colour(faces):
    def at(x, y):
        colour = None
        for polygon, flat in faces:
            if inside(polygon, x, y):
                colour = flat
        return colour
    return at


def icon_bitmap(rows):
    """The rows as an icon holds them: colours from the bottom up, then a mask of one bit a pixel."""
    size = len(rows)
    pixels = b"".join(b"".join(bytes((b, g, r, a)) for r, g, b, a in row) for row in reversed(rows))
    mask = b""
    for row in reversed(rows):
        bits = 0
        for r, g, b, a in row:
            bits = bits << 1 | (a < 128)
        line = (bits << -size % 8).to_bytes((size + 7) // 8, "big")
        mask += line + b"\0" * (-len(line) % 4)
    return struct.pack("<IiiHHIIiiII", 40, size, size * 2, 1, 32, 0, len(pixels) + len(mask), 0, 0, 0, 0) + pixels + mask


def png(rows):
    """The rows as a PNG file: of an icon's largest size everyone takes that."""
    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))
    lines = b"".join(b"\0" + b"".join(bytes(pixel) for pixel in row) for row in rows)
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", len(rows[0]), len(rows), 8, 6, 0, 0, 0))
            + chunk(b"IDAT", zlib.compress(lines, 9)) + chunk(b"IEND", b""))


def icon():
    """In the sizes that windows, lists, the taskbar and large symbols have from 96 to 192 dots an inch."""
    sizes, images = (16, 20, 24, 32, 40, 48, 64, 256), []
    for size in sizes:
        rows = sampled(size, size, gem_colour(gem(size * 0.5, size * 0.5, size * 0.47)), 5)
        images.append(png(rows) if size == 256 else icon_bitmap(rows))
    offset, directory = 6 + 16 * len(sizes), b""
    for size, image in zip(sizes, images):
        directory += struct.pack("<BBBBHHII", size % 256, size % 256, 0, 0, 1, 32, len(image), offset)
        offset += len(image)
    (HERE / "belvor.ico").write_bytes(struct.pack("<HHH", 0, 1, len(sizes)) + directory + b"".join(images))


def distance(x, y, ax, ay, bx, by):
    dx, dy = bx - ax, by - ay
    t = max(0.0, min(1.0, ((x - ax) * dx + (y - ay) * dy) / (dx * dx + dy * dy)))
    return math.hypot(x - ax - t * dx, y - ay - t * dy)


def bow(cx, cy, rx, ry, first, last):
    """A piece of an ellipse as short strokes; angles in degrees, 0 to the right, 90 down."""
    points = [(cx + rx * math.cos(math.radians(a)), cy + ry * math.sin(math.radians(a)))
              for a in range(first, last + 1, 10)]
    return [p + q for p, q in zip(points, points[1:])]


# Letters in a box one unit high; each with its width.
LETTERS = {
    "B": (0.62, [(0, 0, 0, 1), (0, 0, .34, 0), (0, .47, .36, .47), (0, 1, .36, 1)] + bow(.34, .235, .24, .235, -90, 90)
          + bow(.36, .735, .26, .265, -90, 90)),
    "E": (0.54, [(0, 0, 0, 1), (0, 0, .54, 0), (0, .49, .46, .49), (0, 1, .54, 1)]),
    "L": (0.52, [(0, 0, 0, 1), (0, 1, .52, 1)]),
    "V": (0.74, [(0, 0, .37, 1), (.37, 1, .74, 0)]),
    "O": (0.86, bow(.43, .5, .43, .5, 0, 360)),
    "R": (0.62, [(0, 0, 0, 1), (0, 0, .34, 0), (0, .52, .34, .52), (.3, .52, .62, 1)] + bow(.34, .26, .26, .26, -90, 90)),
}


def title():
    width, height = 440, 84
    high, thick, gap = 44.0, 4.2, 22.0
    total = sum(LETTERS[c][0] * high + gap for c in "BELVOR") - gap + 92
    left, top = (width - total) / 2 + 92, 20.0
    strokes = []
    for letter in "BELVOR":
        letter_width, pieces = LETTERS[letter]
        strokes += [(left + ax * high, top + ay * high, left + bx * high, top + by * high) for ax, ay, bx, by in pieces]
        left += letter_width * high + gap
    stone = gem_colour(gem((width - total) / 2 + 34, 42, 36))

    def at(x, y):
        colour = stone(x, y)
        if colour:
            return colour
        for ax, ay, bx, by in strokes:
            if min(ax, bx) - thick <= x <= max(ax, bx) + thick and distance(x, y, ax, ay, bx, by) <= thick:
                fade = (y - top) / high
                return (20 + 10 * fade, 60 + 80 * fade, 90 + 80 * fade)
        return (255, 255, 255)

    bmp24(HERE / "about-title.bmp", [[pixel[:3] for pixel in row] for row in sampled(width, height, at, 3)])


def thing(vertices, facets):
    """One thing of a Things file; facets are (material, corners counted from 0)."""
    lines = ["Y ", str(len(vertices))] + ["%.6f %.6f %.6f" % v for v in vertices] + ["0", str(len(facets))]
    lines += ["1 %s\n%d %s" % (material, len(corners), " ".join(str(c + 1) for c in corners)) for material, corners in facets]
    return "\n".join(lines) + "\n"


def grid(columns, rows, at, material):
    """A closed surface over two angles, in quadrilaterals."""
    vertices = [at(2 * math.pi * i / columns, 2 * math.pi * j / rows) for j in range(rows) for i in range(columns)]
    return thing(vertices, [(material, [j * columns + i, j * columns + (i + 1) % columns,
                                        (j + 1) % rows * columns + (i + 1) % columns, (j + 1) % rows * columns + i])
                            for j in range(rows) for i in range(columns)])


def box(x0, y0, z0, x1, y1, z1, material):
    corners = [(x, y, z) for z in (z0, z1) for y in (y0, y1) for x in (x0, x1)]
    return thing(corners, [(material, c) for c in ([0, 2, 3, 1], [4, 5, 7, 6], [0, 1, 5, 4], [2, 6, 7, 3], [0, 4, 6, 2], [1, 3, 7, 5])])


def model():
    def torus(u, v):
        radius = 1.0 + 0.34 * math.cos(v)
        return radius * math.cos(u), radius * math.sin(u), 0.36 + 0.34 * math.sin(v)

    def knob(u, v):
        radius, height = 0.40 * abs(math.sin(v / 2)) + 0.001, 0.98 - 0.46 * math.cos(v / 2)
        return 0.05 + radius * math.cos(u), 0.05 + radius * math.sin(u), height

    steps = "".join(box(1.55 - 0.02 * k, -0.9 + 0.45 * k, 0, 2.35, -0.45 + 0.45 * k, 0.3 + 0.3 * k, "step") for k in range(4))
    columns = "".join(box(x - 0.16, -1.75, 0, x + 0.16, -1.43, 1.5, "column") for x in (-1.9, -1.3))
    return (box(-2.4, -2.0, -0.16, 2.6, 1.6, 0, "plate") + grid(48, 20, torus, "ring") + grid(20, 16, knob, "knob") + steps
            + columns + box(-2.2, -1.85, 1.5, -1.0, -1.33, 1.68, "beam"))


def scene(renderer):
    """The model above as belvor-render draws it; pixels without a surface become white."""
    width, height = 640, 440   # drawn large, cut to what is covered, then halved
    with tempfile.TemporaryDirectory() as folder:
        thf, omb = folder + "/scene.thf", folder + "/scene.omb"
        pathlib.Path(thf).write_text(model())
        subprocess.run([renderer, "--size", "%dx%d" % (width, height), thf, omb], check=True)
        data = pathlib.Path(omb).read_bytes()

    def directory(offset):
        count, = struct.unpack_from("<H", data, offset)
        entries = {}
        for k in range(count):
            tag, kind, number, value = struct.unpack_from("<HHII", data, offset + 2 + 12 * k)
            letter = {3: "H", 4: "I"}.get(kind)
            if letter:
                place = value if number * struct.calcsize(letter) > 4 else offset + 2 + 12 * k + 8
                entries[tag] = struct.unpack_from("<%d%s" % (number, letter), data, place)
        return entries, struct.unpack_from("<I", data, offset + 2 + 12 * count)[0]

    images, offset = [], struct.unpack_from("<I", data, 4)[0]
    while offset:
        entries, offset = directory(offset)
        images.append(entries)

    def rows(image, pixel):
        per = image.get(278, (1,))[0]
        for y in range(height):
            start = image[273][y // per] + y % per * width * pixel
            yield [data[start + x * pixel:start + (x + 1) * pixel] for x in range(width)]

    colour = next(image for image in images if image[262][0] == 2)
    fine = [[tuple(p) if any(m) else (255, 255, 255) for p, m in zip(line, owners)]
            for line, owners in zip(rows(colour, 3), rows(images[2], 2))]
    covered = [(x, y) for y, line in enumerate(fine) for x, pixel in enumerate(line) if pixel != (255, 255, 255)]
    (left, right), (top, bottom) = [(min(c), max(c)) for c in zip(*covered)]
    bmp24(HERE / "about-scene.bmp", [[tuple(sum(fine[y + j][x + i][c] for i in (0, 1) for j in (0, 1)) // 4 for c in range(3))
                                      for x in range(left - 2, right + 2, 2)] for y in range(top - 2, bottom + 2, 2)])


if __name__ == "__main__":
    toolbar()
    icon()
    title()
    if len(sys.argv) > 1:
        scene(sys.argv[1])
