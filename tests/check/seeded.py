#!/usr/bin/env python3
"""Runs a test program in a Wine prefix with a registry of its own, on a screen of its own.

    seeded.py PROGRAM.exe [doctest option...]
"""
import pathlib
import sys
import tempfile

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "testing"))
from wine import Display, Prefix  # noqa: E402


def main():
    with tempfile.TemporaryDirectory() as folder, Display() as display:
        code, lines = Prefix(folder, display).ask(sys.argv[1], *sys.argv[2:], timeout=840)
    print("\n".join(lines))
    return 1 if code is None else code


if __name__ == "__main__":
    sys.exit(main())
