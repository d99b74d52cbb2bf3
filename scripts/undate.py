#!/usr/bin/env python3
"""Puts a fixed time where a compiler has put the time of building: scripts/undate.py FILE.tlb|FILE.chm ...

widl and chmcmd cannot be told a time. What they write differs in nothing else (make reproducible).
"""
import calendar
import pathlib
import re
import struct
import sys

TEXT = b"Sat Jan  1 00:00:00 2000"
SECONDS = calendar.timegm((2000, 1, 1, 0, 0, 0))


def undate_type_library(data):
    """The text "Created by WIDL ... at <time>", filled up with "W", and behind it the same as a VT_UI4."""
    data, found = re.subn(rb"(Created by WIDL version [\d.]+ at )[^\n]{24}\n(W*\x13\x00)....(WW)",
                          lambda match: match[1] + TEXT + b"\n" + match[2] + struct.pack("<I", SECONDS) + match[3], data,
                          flags=re.DOTALL)
    return data, found == 1


def encoded_number(data, at):
    """Seven bits a byte, the highest bit where more follow: the number and where the next begins."""
    number = 0
    while True:
        byte = data[at]
        number, at = number << 7 | byte & 0x7F, at + 1
        if not byte & 0x80:
            return number, at


def undate_help(data):
    """The header's time, and entry 10 of the file #SYSTEM, which lies uncompressed."""
    data = bytearray(data)
    if data[:4] != b"ITSF":
        return data, False
    struct.pack_into(">I", data, 16, SECONDS)
    name = data.find(b"/#SYSTEM")
    _, at = encoded_number(data, name + len("/#SYSTEM"))
    offset, at = encoded_number(data, at)
    length, _ = encoded_number(data, at)
    begin = struct.unpack_from("<Q", data, 0x58)[0] + offset
    at = begin + 4
    while at < begin + length:
        kind, size = struct.unpack_from("<HH", data, at)
        if kind == 10:
            struct.pack_into("<I", data, at + 4, SECONDS)
            return data, True
        at += 4 + size
    return data, False


def main():
    for name in sys.argv[1:]:
        path = pathlib.Path(name)
        undate = {".tlb": undate_type_library, ".chm": undate_help}[path.suffix]
        data, done = undate(path.read_bytes())
        if not done:
            sys.exit(f"undate: the time is not where it was in {path}")
        path.write_bytes(data)


if __name__ == "__main__":
    main()
