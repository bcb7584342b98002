#!/usr/bin/env python3
"""make_zip.py FOLDER OUT.zip DATE: packs the folder, sorted by name, all files dated DATE (seconds since 1970)."""
import pathlib
import sys
import time
import zipfile

folder, out, date = pathlib.Path(sys.argv[1]), sys.argv[2], time.gmtime(int(sys.argv[3]))[:6]
with zipfile.ZipFile(out, "w") as package:
    for path in sorted(path for path in folder.rglob("*") if path.is_file()):
        entry = zipfile.ZipInfo(str(path.relative_to(folder.parent)), date)
        entry.external_attr = 0o100755 << 16
        package.writestr(entry, path.read_bytes(), zipfile.ZIP_DEFLATED)
