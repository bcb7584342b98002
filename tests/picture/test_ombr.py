"""Every byte of Ombr files, read by a reader of their own and by the system's TIFF library."""
import ctypes
import ctypes.util
import struct

from files import Ombr, read_png
from program import Folder

SHORT, LONG, RATIONAL, TEXT = 3, 4, 5, 2
SOFTWARE = b"Belvor 1.1.7 (Dec 16 1997)"


class OmbrBytes(Folder):
    def check_structure(self, data, width, height):
        ombr = Ombr(data)
        self.assertEqual((ombr.width, ombr.height), (width, height))
        self.assertEqual(ombr.images, [0, 1, 2])
        stride = (9 * width + 3) // 4 * 4
        for channel, offset, size, bits in ((0, 6 * width, 3 * width, [8, 8, 8]), (1, 0, 4 * width, [32]), (2, 4 * width, 2 * width, [16])):
            expected = {
                256: (SHORT, 1, [width]), 257: (SHORT, 1, [height]), 258: (SHORT, len(bits), bits), 259: (SHORT, 1, [1]),
                273: (LONG, height, [8 + y * stride + offset for y in range(height)]), 277: (SHORT, 1, [len(bits)]), 278: (SHORT, 1, [1]),
                279: (SHORT, height, [size] * height), 34953: (LONG, 1, [ombr.private[channel]]),
            }
            if channel == 0:
                expected |= {262: (SHORT, 1, [2]), 282: (RATIONAL, 1, [100, 1]), 283: (RATIONAL, 1, [100, 1]), 296: (SHORT, 1, [2]),
                             305: (TEXT, len(SOFTWARE), [SOFTWARE])}
            self.assertEqual(ombr.entries[channel], expected, f"channel {channel}")
        behind_text = data.index(SOFTWARE) + len(SOFTWARE)
        self.assertEqual(data[behind_text:behind_text + 2], b"\0\0")
        for y in range(height):
            self.assertFalse(any(data[8 + y * stride + 9 * width:8 + (y + 1) * stride]), "padding behind a row")
        return ombr

    def test_structure_by_size(self):
        for width, height in ((24, 18), (5, 3), (1, 4), (7, 2), (4, 1), (1, 1), (33, 5)):
            with self.subTest(size=(width, height)):
                self.render("--size", f"{width}x{height}", "plates.thf", "p.omb", "p.png")
                ombr = self.check_structure(self.read("p.omb"), width, height)
                self.assertEqual(b"".join(ombr.rows[0]), read_png(self.read("p.png"))[2])

    def test_the_box_is_as_worked_out(self):
        """A box of 2 x 4 x 6 with a material for each side; numbers worked out apart from any program."""
        corners = [(x, y, z) for z in (0, 6) for x, y in ((0, 0), (2, 0), (2, 4), (0, 4))]
        sides = {"Base": "1 4 3 2", "Roof": "5 6 7 8", "Front": "1 2 6 5", "Right": "2 3 7 6", "Back": "3 4 8 7", "Left": "4 1 5 8"}
        self.write("box.thf", "Y 8\n" + " ".join(str(x) for corner in corners for x in corner) + " 0 6\n"
                   + "".join(f"1 {name}\n4 {numbers}\n" for name, numbers in sides.items()))
        self.render("--size", "24x18", "box.thf", "b.omb")
        ombr = self.check_structure(self.read("b.omb"), 24, 18)
        self.assertEqual((len(ombr.data), struct.unpack("<I", ombr.data[4:8])), (4996, (4822,)))
        self.assertEqual(ombr.materials, [(5, (255, 162, 221), "Back"), (1, (146, 255, 237), "Base"), (3, (199, 184, 255), "Front"),
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

    def test_depth_gives_the_point_back(self):
        """The point under every pixel lies on the plate that the material names, inside it, and not in its hole."""
        slack = 0.1     # a pixel or two
        for parallel in (0, 1):
            self.write("v.bvp", f"Belvor View Parameters 1.0\n-3 -4 5\n2 1.5 0.5\n0.3\n{parallel}\n0.4\n0.1\n-30 60 0.6\n")
            self.render("--size", "160x120", "--view", "v.bvp", "plates.thf", "p.omb")
            ombr = Ombr(self.read("p.omb"))
            self.assertEqual(ombr.kind, parallel)
            names = {number: name for number, _, name in ombr.materials}
            seen = {"Upper": 0, "Lower": 0}
            for i, (code, number, colour) in enumerate(zip(ombr.pixels(1), ombr.pixels(2), ombr.pixels(0))):
                self.assertEqual(code == 4294967295, number == 0)
                if number == 0:
                    self.assertEqual(colour, (0, 0, 0))
                    continue
                x, y, z = ombr.point(i % 160, i // 160, code)
                upper = names[number] == "Upper"
                seen[names[number]] += 1
                self.assertAlmostEqual(z, float(upper), delta=1e-6)
                from_middle = abs(x - 2), abs(y - 1.5)
                outside = from_middle[0] > 2 - upper + slack or from_middle[1] > 1.5 - upper + slack
                in_the_hole = upper and from_middle[0] < 0.5 - slack and from_middle[1] < 0.25 - slack
                self.assertFalse(outside or in_the_hole, (x, y))
            self.assertGreater(min(seen.values()), 100, seen)

    def test_the_tiff_library_reads_it(self):
        library = ctypes.util.find_library("tiff")
        if not library:
            self.skipTest("no TIFF library")
        tiff = ctypes.CDLL(library)
        tiff.TIFFOpen.restype = ctypes.c_void_p
        tiff.TIFFReadRawStrip.restype = ctypes.c_ssize_t
        tiff.TIFFReadRawStrip.argtypes = [ctypes.c_void_p, ctypes.c_uint32, ctypes.c_void_p, ctypes.c_ssize_t]
        tiff.TIFFSetWarningHandler(None)
        for width, height in ((61, 47), (61, 2), (61, 1)):
            self.render("--size", f"{width}x{height}", "plates.thf", "p.omb")
            handle = ctypes.c_void_p(tiff.TIFFOpen(str(self.folder / "p.omb").encode(), b"r"))
            self.assertTrue(handle)
            self.assertEqual(tiff.TIFFNumberOfDirectories(handle), 3)
            for number, rows in Ombr(self.read("p.omb")).rows.items():
                self.assertEqual(tiff.TIFFSetDirectory(handle, number), 1)
                for y, expected in enumerate(rows):
                    row = ctypes.create_string_buffer(len(expected))
                    self.assertEqual(tiff.TIFFReadRawStrip(handle, y, row, len(expected)), len(expected))
                    self.assertEqual(row.raw, expected)
            tiff.TIFFClose(handle)
