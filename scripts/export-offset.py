#!/usr/bin/env python3
"""Prints where an exported function begins, counted from the library's own begin: objdump -p LIBRARY | export-offset.py NAME"""
import re
import sys

text = sys.stdin.read()
ordinal = re.search(rf"\[\s*(\d+)\][^\n]*\b{re.escape(sys.argv[1])}$", text[text.index("[Ordinal/Name Pointer] Table"):], re.MULTILINE)
table = text[text.index("Export Address Table -- Ordinal Base"):]
offset = re.search(rf"\[\s*{ordinal[1]}\] \+base\[\s*\d+\] ([0-9a-f]+)", table) if ordinal else None
print(f"0x{offset[1]}" if offset else sys.exit(f"export-offset: there is no {sys.argv[1]}"))
