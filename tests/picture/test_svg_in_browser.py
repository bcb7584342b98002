"""SVG files as Chromium shows them, against the PNG files of the same calls: the same size, surfaces and lines, in the same colours."""
import os
import shutil
import signal
import subprocess
import unittest

from files import read_png
from program import SAMPLES, WINDOWS, Folder

BROWSER = shutil.which("chromium")
SECONDS = 100       # a busy machine needs ten

# A frame and curves in several colours; the unit is a millimetre.
CURVES = """0 SECTION|2 HEADER|9 $INSUNITS|70 4|0 ENDSEC|0 SECTION|2 ENTITIES|
0 LWPOLYLINE|8 0|62 5|90 4|70 1|10 0|20 0|10 80|20 0|10 80|20 60|10 0|20 60|
0 ARC|8 0|62 1|10 30|20 30|30 0|40 22|50 20|51 340|0 ELLIPSE|8 0|62 3|10 52|20 30|30 0|11 20|21 9|31 0|40 0.5|41 0|42 5.5|
0 LINE|8 0|62 6|10 3|20 4|30 0|11 77|21 50|31 0|0 ENDSEC|0 EOF|"""

# Name, size, width of the lines, the call; how much more ink than in the PNG file lines may be, and which part of the pixels inside lines has the
# same colour at least: where lines lie side by side the browser shows another one on top.
SCENES = [
    ("hidden lines", (300, 220), 1, ["--view", "iso-se", "--edges", "--surfaces", "off", "--background", "#ffffff", "--line-colour", "#000000",
                                     str(SAMPLES / "chess.thf")], 1.25, 0),
    ("thin edges over the picture", (320, 224), 1, ["--view", str(SAMPLES / "square.bvp"), "--edges", "--surfaces", "embed", str(SAMPLES / "square.thf")], 1.25, 0),
    ("wide edges over the picture", (320, 160), 3, ["--view", "iso-se", "--edges", "--surfaces", "embed", str(SAMPLES / "letters.thf")], 1.25, 0.75),
    ("wide curves in colours", (240, 180), 3, ["--reading", "modern", "--view", "plan", "--lines", "--background", "#fff0e0", "curves.dxf"], 1.15, 0.95),
]


def screenshot(folder, body, width, height):
    """The bytes of a PNG file that shows an HTML page in a window of that size; None when the browser makes none in time."""
    (folder / "page.html").write_text(f'<!doctype html><body style="margin: 0">{body}')
    browser = subprocess.Popen(
        [BROWSER, "--headless", "--no-sandbox", "--disable-gpu", "--disable-dev-shm-usage", "--disable-extensions", "--disable-background-networking",
         "--no-first-run", "--hide-scrollbars", "--force-device-scale-factor=1", "--force-color-profile=srgb", f"--user-data-dir={folder / 'browser'}",
         f"--window-size={width},{height}", f"--screenshot={folder / 'seen.png'}", (folder / "page.html").as_uri()],
        cwd=folder, env=os.environ | {"HOME": str(folder)}, start_new_session=True,
        stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    try:
        browser.wait(SECONDS)
    except subprocess.TimeoutExpired:
        pass
    finally:
        try:
            os.killpg(browser.pid, signal.SIGKILL)      # also helpers that outlive it
        except ProcessLookupError:
            pass
        browser.wait()
    seen = folder / "seen.png"
    return seen.read_bytes() if seen.exists() else None


def pixels_of(png, rows=None):
    """{(x, y): (r, g, b)} of all rows or some."""
    width, height, data = read_png(png)
    rows = rows or range(height)
    return {(x, y - rows.start): tuple(data[3 * (y * width + x):][:3]) for y in rows for x in range(width)}


def around(pixel, reach=1):
    steps = range(-reach, reach + 1)
    return [(pixel[0] + dx, pixel[1] + dy) for dy in steps for dx in steps]


def distance(a, b):
    return max(abs(p - q) for p, q in zip(a, b))


@unittest.skipIf(WINDOWS, "the files are those of the native program, byte by byte")
@unittest.skipUnless(BROWSER, "Chromium is not installed")
class SvgInBrowser(Folder):
    def test_looks_as_in_the_png_file(self):
        self.write("curves.dxf", CURVES.replace("\n", "").replace(" ", "\n").replace("|", "\n"))
        for number, (_, size, width, call, *_) in enumerate(SCENES):
            call = call + ["--size", "%dx%d" % size, "--line-width", str(width)]
            self.render(*call, f"{number}.png", f"{number}.svg")
            self.render(*(word for word in call if word not in ("--edges", "--lines")), f"plain{number}.png")
        # One below the other; in an element of that size also what is measured in millimetres.
        images = [f'<img src="{number}.svg" width="{w}" height="{h}" style="display: block">' for number, (_, (w, h), *_) in enumerate(SCENES)]
        width, height = max(size[0] for _, size, *_ in SCENES), sum(size[1] for _, size, *_ in SCENES)
        seen = screenshot(self.folder, "".join(images), width, height) or screenshot(self.folder, "".join(images), width, height)
        if not seen:
            self.skipTest("Chromium does not work here")
        self.assertEqual(read_png(seen)[:2], (width, height))
        top = 0
        for number, (name, size, line_width, _, most_ink, least_same) in enumerate(SCENES):
            with self.subTest(name):
                browser = {pixel: colour for pixel, colour in pixels_of(seen, range(top, top + size[1])).items() if pixel[0] < size[0]}
                top += size[1]
                drawn, plain = pixels_of(self.read(f"{number}.png")), pixels_of(self.read(f"plain{number}.png"))
                self.compare(browser, drawn, plain, line_width, most_ink, least_same)

    def compare(self, browser, drawn, plain, line_width, most_ink, least_same):
        lines = {pixel for pixel in drawn if drawn[pixel] != plain[pixel]}
        self.assertGreater(len(lines), 500)

        # Beside lines all is as without them. The caps of wide lines are round.
        near = {place for pixel in lines for place in around(pixel, line_width // 2 + 1)}
        far = [pixel for pixel in browser if pixel not in near and distance(browser[pixel], plain[pixel]) > 2]
        self.assertLess(len(far), len(lines) / 200, far[:9])

        # Each line is there, but for those that run along the border, outside, and are so wide that they reach into the picture.
        ink = {pixel for pixel in browser if distance(browser[pixel], plain[pixel]) > 40}
        inside = {pixel for pixel in lines if all(place in drawn for place in around(pixel, line_width // 2))}
        bold = {pixel for pixel in inside if distance(drawn[pixel], plain[pixel]) > 80}
        missing = [pixel for pixel in bold if ink.isdisjoint(around(pixel))]
        self.assertLess(len(missing), 3, missing[:9])

        amounts = [sum(distance(picture[pixel], plain[pixel]) for pixel in plain) for picture in (browser, drawn)]
        self.assertTrue(0.95 < amounts[0] / amounts[1] < most_ink, amounts)
        middles = [pixel for pixel in inside if all(drawn.get(place) == drawn[pixel] for place in around(pixel))]
        same = sum(distance(browser[pixel], drawn[pixel]) <= 2 for pixel in middles)
        self.assertGreaterEqual(same, least_same * len(middles))


if __name__ == "__main__":
    unittest.main()
