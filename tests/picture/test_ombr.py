"""Every byte of Ombr files, read by a reader of their own."""
import struct

from files import Ombr, read_png
from program import Folder

SHORT, LONG, RATIONAL, TEXT = 3, 4, 5, 2
SOFTWARE = b"Belvor 1.1.7 (Dec 16 1997)"


class OmbrBytes(Folder):
    def check_structure(self, data, width, height):
        ombr = Ombr(data)
        self.assertEqual((ombr.width, ombr.height, ombr.images), (width, height, [0, 1, 2]))
        stride = (9 * width + 3) // 4 * 4
        for channel, offset, size, bits in ((0, 6 * width, 3 * width, [8, 8, 8]), (1, 0, 4 * width, [32]),
                                            (2, 4 * width, 2 * width, [16])):
            expected = {
                256: (SHORT, 1, [width]), 257: (SHORT, 1, [height]), 258: (SHORT, len(bits), bits), 259: (SHORT, 1, [1]),
                273: (LONG, height, [8 + y * stride + offset for y in range(height)]),
                277: (SHORT, 1, [len(bits)]), 278: (SHORT, 1, [1]), 279: (SHORT, height, [size] * height),
                34953: (LONG, 1, [ombr.private[channel]]),
            }
            if channel == 0:
                expected |= {262: (SHORT, 1, [2]), 282: (RATIONAL, 1, [100, 1]), 283: (RATIONAL, 1, [100, 1]),
                             296: (SHORT, 1, [2]), 305: (TEXT, len(SOFTWARE), [SOFTWARE])}
            self.assertEqual(ombr.entries[channel], expected, f"channel {channel}")
        self.assertIn(SOFTWARE + b"\0\0", data)
        for y in range(height):
            self.assertFalse(any(data[8 + y * stride + 9 * width:8 + (y + 1) * stride]), "padding behind a row")
        return ombr

    def test_structure_by_size(self):
        for width, height in ((24, 18), (5, 3), (1, 4), (7, 2), (1, 1)):
            with self.subTest(size=(width, height)):
                self.render("--size", f"{width}x{height}", "plates.thf", "p.omb", "p.png")
                ombr = self.check_structure(self.read("p.omb"), width, height)
                self.assertEqual(b"".join(ombr.rows[0]), read_png(self.read("p.png"))[2])

    def test_the_box_is_as_worked_out(self):
        """A box of 2 x 4 x 6 with a material for each side; numbers worked out apart from any program."""
        corners = [(x, y, z) for z in (0, 6) for x, y in ((0, 0), (2, 0), (2, 4), (0, 4))]
        sides = {"Base": "1 4 3 2", "Roof": "5 6 7 8", "Front": "1 2 6 5", "Right": "2 3 7 6",
                 "Back": "3 4 8 7", "Left": "4 1 5 8"}
        self.write("box.thf", "Y 8\n" + " ".join(str(x) for corner in corners for x in corner) + " 0 6\n"
                   + "".join(f"1 {name}\n4 {numbers}\n" for name, numbers in sides.items()))
        self.render("--size", "24x18", "box.thf", "b.omb")
        ombr = self.check_structure(self.read("b.omb"), 24, 18)
        self.assertEqual((len(ombr.data), struct.unpack("<I", ombr.data[4:8])), (4996, (4822,)))
        self.assertEqual(ombr.materials, [
            (5, (255, 162, 221), "Back"), (1, (146, 255, 237), "Base"), (3, (199, 184, 255), "Front"),
            (6, (143, 240, 255), "Left"), (4, (202, 255, 181), "Right"), (2, (255, 218, 165), "Roof")])
        self.assertAlmostEqual(ombr.pixels(1)[9 * 24 + 12], 1210995916, delta=2)
        self.assertEqual((ombr.pixels(2)[9 * 24 + 12], ombr.pixels(0)[9 * 24 + 12]), (6, (62, 104, 111)))

    def test_nothing_is_background_everywhere(self):
        self.write("nothing.thf", "")
        self.write("nothing.man", "KRVT v5.1.0 MAN file\nUNITS 7 25.4\nEND\n")
        for model, width, height, size, units in (("nothing.thf", 24, 18, 4908, (1.0, 0)), ("nothing.man", 1, 4, 816, (25.4, 7))):
            self.render("--size", f"{width}x{height}", model, "n.omb")
            ombr = self.check_structure(self.read("n.omb"), width, height)
            self.assertEqual((len(ombr.data), ombr.materials, (ombr.units_scale, ombr.units_code)), (size, [], units))
            self.assertEqual([set(ombr.pixels(channel)) for channel in range(3)], [{(0, 0, 0)}, {4294967295}, {0}])
