#!/usr/bin/env python3
"""Packs a folder into a zip whose bytes depend on its files alone: scripts/pack-zip.py FOLDER FILE.zip

The list of files that the setup keeps (files.txt) stays out: nothing reads it in a zip.
"""
import pathlib
import sys
import zipfile

FIXED_DATE = (2000, 1, 1, 0, 0, 0)


def main():
    folder, target = pathlib.Path(sys.argv[1]), sys.argv[2]
    with zipfile.ZipFile(target, "w", zipfile.ZIP_DEFLATED, compresslevel=9) as packed:
        for path in sorted(folder.rglob("*"), key=lambda path: path.relative_to(folder).as_posix()):
            if path.is_file() and path.name != "files.txt":
                entry = zipfile.ZipInfo(path.relative_to(folder).as_posix(), FIXED_DATE)
                entry.compress_type, entry.external_attr = zipfile.ZIP_DEFLATED, 0o644 << 16
                packed.writestr(entry, path.read_bytes())


if __name__ == "__main__":
    main()
