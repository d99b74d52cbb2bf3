#!/usr/bin/env python3
"""Compares what two builds have made.

    scripts/compare-builds.py ONE OTHER              folders or files, byte by byte
    scripts/compare-builds.py --self-test
    scripts/compare-builds.py --sections ONE OTHER   two libraries by what is loaded of them, whatever their headers say

Ends with 1 where a file is missing or has other bytes, and names the first that differs, and where: for a library or
program the section too.
"""
import pathlib
import struct
import sys


def sections(data):
    """(name, address, begin in the file, size in the file) of each section of a Windows program."""
    header = struct.unpack_from("<I", data, 0x3C)[0]
    count, optional = struct.unpack_from("<H12xH", data, header + 6)
    table = header + 24 + optional
    found = []
    for at in range(table, table + 40 * count, 40):
        address, size, begin = struct.unpack_from("<III", data, at + 12)
        found.append((data[at:at + 8].rstrip(b"\0").decode("ascii"), address, begin, size))
    return found


def section_at(data, offset):
    """The name of the part of a Windows program that holds this byte of its file."""
    if data[:2] != b"MZ":
        return ""
    for name, _, begin, size in sections(data):
        if begin <= offset < begin + size:
            return f", in {name}"
    return ", outside its sections"


def loaded(path):
    data = path.read_bytes()
    return [(address, data[begin:begin + size]) for _, address, begin, size in sections(data)]


def difference(one, other):
    """What differs first between two files' bytes; empty where nothing does."""
    if one == other:
        return ""
    shorter = min(len(one), len(other))
    at = next((i for i in range(shorter) if one[i] != other[i]), shorter)
    return f"differs at {at:#x}{section_at(one, at)} ({len(one)} and {len(other)} bytes)"


def files(root):
    return {path.relative_to(root).as_posix(): path for path in root.rglob("*") if path.is_file()} if root.is_dir() else {"": root}


def self_test():
    """A changed byte, a longer file and one of another section are found, and named by their place."""
    header = b"MZ".ljust(0x3C, b"\0") + struct.pack("<I", 0x40) + b"PE\0\0" + struct.pack("<HH12xHH", 0x14C, 1, 0, 0)
    program = (header + b".text\0\0\0" + struct.pack("<IIII16x", 4, 0x1000, 4, 0x100)).ljust(0x100, b"\0") + b"code"
    as_expected = [
        difference(program, program) == "",
        difference(b"ab", b"ac").startswith("differs at 0x1 "),
        difference(b"ab", b"abc").startswith("differs at 0x2 "),
        difference(program, program[:-1] + b"X").startswith("differs at 0x103, in .text "),
        difference(program, program[:8] + b"X" + program[9:]).startswith("differs at 0x8, outside its sections "),
        sections(program) == [(".text", 0x1000, 0x100, 4)],
    ]
    print("compare-builds: it finds what differs" if all(as_expected) else f"compare-builds: {as_expected}")
    return 0 if all(as_expected) else 1


def main():
    if sys.argv[1] == "--self-test":
        return self_test()
    if sys.argv[1] == "--sections":
        return 0 if loaded(pathlib.Path(sys.argv[2])) == loaded(pathlib.Path(sys.argv[3])) else 1
    one, other = files(pathlib.Path(sys.argv[1])), files(pathlib.Path(sys.argv[2]))
    found = [f"{name} was made once only" for name in sorted(set(one) ^ set(other))]
    for name in sorted(set(one) & set(other)):
        what = difference(one[name].read_bytes(), other[name].read_bytes())
        if what:
            found.append(f"{name or one[name].name} {what}")
    for name in sorted(set(one) & set(other)) if not found else []:
        print(f"same: {name}")
    print("\n".join(found))
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
