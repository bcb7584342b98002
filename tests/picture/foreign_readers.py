"""Reads a part of a picture file with a library that is not ours: foreign_readers.py LIBRARY FILE PART > bytes.

PART is "colour", "distance", "code", "material", "number" (of a Cryptomatte), "text NAME"; bytes are as they lie in little-endian memory, top row first.
Exit status 77: there is no such library here. Runs under the system's interpreter, whose packages Debian's libraries are."""
import ctypes
import ctypes.util
import os
import pathlib
import shutil
import subprocess
import sys

PAGES = {"colour": 0, "distance": 1, "material": 2}
CHANNELS = {"colour": ["R", "G", "B"], "distance": ["Z"], "code": ["depth.code"], "material": ["ID"], "number": ["CryptoMaterial00.R"]}


def numpy(path, part):
    import numpy
    return numpy.load(path, allow_pickle=False)[part].tobytes()


def pillow(path, part):
    import PIL.Image
    image = PIL.Image.open(path)
    if part.startswith("text "):
        image.load()
        return (image.tag_v2[270] if path.endswith(".tif") else image.text[part[5:]]).encode()
    image.seek(PAGES[part])
    return image.tobytes()


def libtiff(path, part):
    library = ctypes.util.find_library("tiff")
    if not library:
        raise ImportError
    tiff = ctypes.CDLL(library)
    tiff.TIFFOpen.restype = ctypes.c_void_p
    tiff.TIFFScanlineSize64.restype = ctypes.c_uint64
    handle = ctypes.c_void_p(tiff.TIFFOpen(path.encode(), b"r"))
    assert tiff.TIFFNumberOfDirectories(handle) == 3 and tiff.TIFFSetDirectory(handle, PAGES[part]) == 1
    height, rows = ctypes.c_uint32(), []
    assert tiff.TIFFGetField(handle, 257, ctypes.byref(height)) == 1
    for y in range(height.value):
        row = ctypes.create_string_buffer(tiff.TIFFScanlineSize64(handle))
        assert tiff.TIFFReadScanline(handle, row, y, 0) == 1
        rows.append(row.raw)
    return b"".join(rows)


def build_openexr_reader(program):
    """Whether there is the library, and with it now the program that openexr() runs."""
    compiler, source = shutil.which("g++"), pathlib.Path(__file__).resolve().parent / "exr_values.cpp"
    if not compiler or not os.path.exists("/usr/include/OpenEXR/ImfInputFile.h"):
        return False
    words = "-std=c++17 -w -I/usr/include/OpenEXR -I/usr/include/Imath -lOpenEXR-3_1 -lImath-3_1 -o"
    return subprocess.run([compiler, source, *words.split(), program]).returncode == 0


def openexr(path, part):
    program = os.environ.get("EXR_VALUES")
    if not program:
        raise ImportError
    names = CHANNELS[part] if part in CHANNELS else [part[5:]]
    return subprocess.run([program, path] + part.split(" ", 1)[:1] + names, check=True, stdout=subprocess.PIPE).stdout


if __name__ == "__main__":
    try:
        sys.stdout.buffer.write(globals()[sys.argv[1]](sys.argv[2], sys.argv[3]))
    except ImportError:
        sys.exit(77)
