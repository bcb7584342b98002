"""Counts the records of a DXF text file by nothing but its groups: a second opinion on the report."""
import collections

NOT_COUNTED = {"VERTEX", "SEQEND", "ATTRIB", "BLOCK", "ENDBLK"}


def text_groups(data):
    lines = data.decode("latin-1").replace("\r\n", "\n").replace("\r", "\n").split("\n")
    for code, value in zip(lines[0::2], lines[1::2]):
        yield int(code), value


def records(data):
    """(section, type, {code: first value}) of every record that starts with a group 0."""
    section, type_, groups = "", None, {}
    for code, value in [*text_groups(data), (0, "")]:
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
