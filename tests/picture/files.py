"""Readers of PNG and Ombr files written from docs/ombr-format.md alone: they share no code with the program under test.

Both raise Malformed for anything that the formats do not allow.
"""
import struct
import zlib


class Malformed(Exception):
    pass


def need(condition, what):
    if not condition:
        raise Malformed(what)


def read_png(data):
    """(width, height, bytes of red, green, blue from the top left)."""
    need(data[:8] == b"\x89PNG\r\n\x1a\n", "no PNG signature")
    at, packed, width, height, kind = 8, b"", 0, 0, b""
    while at < len(data):
        need(kind != b"IEND", "data after IEND")
        size, kind = struct.unpack(">I4s", data[at:at + 8])
        body = data[at + 8:at + 8 + size]
        need(zlib.crc32(kind + body) == struct.unpack(">I", data[at + 8 + size:at + 12 + size])[0], f"checksum of {kind}")
        if kind == b"IHDR":
            width, height, *rest = struct.unpack(">IIBBBBB", body)
            need(rest == [8, 2, 0, 0, 0], "not 8-bit RGB")
        elif kind == b"IDAT":
            packed += body
        at += 12 + size
    need(kind == b"IEND", "no IEND")
    raw, stride = zlib.decompress(packed), 3 * width
    need(len(raw) == height * (stride + 1), "amount of pixel data")
    above, rows = bytearray(stride), []
    for y in range(height):
        kind, line = raw[y * (stride + 1)], bytearray(raw[y * (stride + 1) + 1:(y + 1) * (stride + 1)])
        unfilter(kind, line, above)
        rows.append(bytes(line))
        above = line
    return width, height, b"".join(rows)


def unfilter(kind, line, above):
    need(kind <= 4, "PNG row filter")
    for i, up in enumerate(above):
        left, corner = (line[i - 3], above[i - 3]) if i >= 3 else (0, 0)
        guess = left + up - corner
        nearest = min((left, up, corner), key=lambda value: abs(guess - value))      # the first of equals
        line[i] = line[i] + (0, left, up, (left + up) // 2, nearest)[kind] & 255


class Ombr:
    """One Ombr file. `images` lists the channels (0 colour, 1 depth, 2 material) in directory order; `rows[channel]` the strips."""

    SIZES = {2: 1, 3: 2, 4: 4, 5: 8}

    def __init__(self, data):
        self.data = data
        need(self.take(0, 4, "header") == b"II*\0", "header")
        self.images, self.entries, self.rows, self.private = [], {}, {}, {}
        at, = struct.unpack("<I", self.take(4, 4, "header"))
        while at:
            at = self.read_directory(at)
            need(len(self.images) <= 3, "more than three images")
        self.width, self.height = self.single(0, 256), self.single(0, 257)
        self.read_materials()
        self.read_camera()

    def take(self, at, size, what):
        need(0 <= at and at + size <= len(self.data), f"{what} at {at} lies outside the file")
        return self.data[at:at + size]

    def single(self, channel, tag):
        kind, count, values = self.entries[channel][tag]
        need(count == 1, f"count of tag {tag}")
        return values[0]

    def read_directory(self, at):
        count, = struct.unpack("<H", self.take(at, 2, "directory"))
        entries, last = {}, 0
        for i in range(count):
            tag, kind, number, value = struct.unpack("<HHI4s", self.take(at + 2 + 12 * i, 12, "directory entry"))
            need(tag > last, "directory entries out of order")
            need(kind in self.SIZES, f"type of tag {tag}")
            size, last = self.SIZES[kind] * number, tag
            inside = value[:size] if size <= 4 else self.take(struct.unpack("<I", value)[0], size, f"values of tag {tag}")
            if size <= 4:
                need(not any(value[size:]), f"bytes behind the value of tag {tag}")
            code = {2: "s", 3: "H", 4: "I", 5: "II"}[kind]
            values = [inside] if kind == 2 else list(struct.unpack("<" + code * number, inside))
            entries[tag] = (kind, number, values)
        need(34953 in entries, "no private block")
        place = entries[34953][2][0]
        channel, one, zero = struct.unpack("<IHH", self.take(place, 8, "private block"))
        need((one, zero) == (1, 0) and channel in (0, 1, 2) and channel not in self.images, "private block")
        self.private[channel] = place
        self.images.append(channel)
        self.entries[channel] = entries
        self.rows[channel] = [self.take(start, size, "strip") for start, size in zip(entries[273][2], entries[279][2])]
        return struct.unpack("<I", self.take(at + 2 + 12 * count, 4, "next directory"))[0]

    def read_materials(self):
        """[(number, (r, g, b), name)] in the order in which they were written."""
        count, at = struct.unpack("<II", self.take(self.private[2] + 8, 8, "material block"))
        self.materials = []
        for _ in range(count):
            need(at, "material chain too short")
            previous, number, *colour = struct.unpack("<IHBBB", self.take(at, 9, "material record"))
            end = self.data.index(b"\0", at + 9)
            self.materials.insert(0, (number, tuple(colour), self.take(at + 9, end - at - 9, "name").decode()))
            self.take(end, 1 + (end + 1) % 2, "end of name")
            at = previous
        need(at == 0, "material chain too long")

    def read_camera(self):
        place = self.private[1]
        band, = struct.unpack("<I", self.take(place + 8, 4, "depth block"))
        need(band in (0, place - 16), "place of the band's block")
        kind, one, zero, *self.band = struct.unpack("<IHHII", self.take(band, 16, "band's block")) if band else (3, 1, 0, 0, self.height)
        need((kind, one, zero) == (3, 1, 0), "band's block")
        self.kind, *numbers = struct.unpack("<I24dI", self.take(place + 12, 200, "camera"))
        vectors = [tuple(numbers[3 * i:3 * i + 3]) for i in range(7)]
        self.eye, self.right, self.up, self.forward, self.vertical, self.first, self.last = vectors
        self.near, self.far, self.units_scale, self.units_code = numbers[21:]

    def pixels(self, channel):
        code, group = {0: ("B", 3), 1: ("I", 1), 2: ("H", 1)}[channel]
        values = [v for row in self.rows[channel] for v in struct.unpack(f"<{group * self.width}{code}", row)]
        return [tuple(values[i:i + 3]) for i in range(0, len(values), 3)] if group == 3 else values

    def point(self, column, row, code):
        """The model point that the depth code of a pixel stands for, by the formulas of docs/ombr-format.md."""
        d = self.near + code * (self.far - self.near) / 4294967294
        if self.kind == 0:
            across = sum(r * (b - a) for r, a, b in zip(self.right, self.first, self.last)) / (self.width - 1)
            return tuple(e + d * ((f - e) + column * across * r - row * across * u)
                         for e, f, r, u in zip(self.eye, self.first, self.right, self.up))
        scale = (self.width - 1) / self.last[0]
        return tuple(e + column / scale * r - row / scale * u + (d - self.far) * f
                     for e, r, u, f in zip(self.eye, self.right, self.up, self.forward))
