#!/usr/bin/env python3
"""Prints, for the setup, the names under which the add-in registers itself: scripts/setup-product.py > Product.nsh

They are read where the add-in has them (addin/Dll.cpp, addin/Names.h), so that they stand once.
"""
import pathlib
import re
import sys

ADDIN = pathlib.Path(__file__).resolve().parent.parent / "src" / "addin"
FIELDS = {"CLSID": "clsid", "FRIENDLY_NAME": "friendlyName", "DESCRIPTION": "description", "LOAD_BEHAVIOR": "loadBehavior"}


def found(pattern, text, what):
    match = re.search(pattern, text)
    if not match:
        sys.exit(f"setup-product: {what} is not where it was")
    return match.group(1)


def main():
    server = (ADDIN / "Dll.cpp").read_text()
    names = (ADDIN / "Names.h").read_text()
    product = {name: found(rf'\.{field} = "?([^"\n]*?)"?,\n', server, field) for name, field in FIELDS.items()}
    product["PROGID"] = found(r'ProgId = "([^"]+)"', names, "ProgId")
    for name, value in product.items():
        print(f'!define {name} "{value}"')


if __name__ == "__main__":
    main()
