"""Counts the records of a DXF file by nothing but its groups: a second opinion on what belvor-render's report says it read.

Binary files are read with the value widths of the strict reading, in which codes from 290 on are text.
"""
import collections
import struct

SENTINEL = b"AutoCAD Binary DXF\r\n\x1a\0"
NOT_COUNTED = {"VERTEX", "SEQEND", "ATTRIB", "BLOCK", "ENDBLK"}


def text_groups(data):
    lines = data.decode("latin-1").replace("\r\n", "\n").replace("\r", "\n").split("\n")
    for code, value in zip(lines[0::2], lines[1::2]):
        yield int(code), value


def width_of(code):
    """Bytes of a value; 0 for a text with a zero byte behind it."""
    if 10 <= code <= 59 or 140 <= code <= 147 or 210 <= code <= 239 or 1010 <= code <= 1059:
        return 8
    if 60 <= code <= 79 or 170 <= code <= 179 or 270 <= code <= 289 or 1060 <= code <= 1070:
        return 2
    return 4 if 90 <= code <= 99 or code == 1071 else 0


def binary_groups(data):
    at, wide = len(SENTINEL), data[22:24] == b"\0\0"
    while at < len(data):
        code, at = (struct.unpack_from("<H", data, at)[0], at + 2) if wide else (data[at], at + 1)
        if not wide and code == 255:
            code, at = struct.unpack_from("<H", data, at)[0], at + 2
        width = width_of(code)
        end = at + width if width else data.index(0, at)
        yield code, data[at:end].decode("latin-1")
        at = end + (0 if width else 1)


def records(data):
    """(section, type, {code: first value}) of every record that starts with a group 0."""
    section, type_, groups = "", None, {}
    for code, value in [*(binary_groups(data) if data.startswith(SENTINEL) else text_groups(data)), (0, "")]:
        if code != 0:
            groups.setdefault(code, value)
            continue
        if type_ == "SECTION":
            section = groups.get(2, "")
        elif type_ == "ENDSEC":
            section = ""
        elif type_:
            yield section, type_, groups
        type_, groups = value, {}


def entity_counts(data):
    """How many entities of each type the ENTITIES and BLOCKS sections hold."""
    return collections.Counter(type_ for section, type_, _ in records(data) if section in ("ENTITIES", "BLOCKS") and type_ not in NOT_COUNTED)


def insert_counts(data):
    """How many INSERTs of the whole drawing name each block."""
    return collections.Counter(groups.get(2, "") for section, type_, groups in records(data) if type_ == "INSERT")
