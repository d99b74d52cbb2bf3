#!/usr/bin/env python3
"""Prints, for the setup, the names under which the add-in registers itself: scripts/setup-product.py > Product.nsh

They are read where the add-in has them (support/AddInNames.h), so that they stand once.
"""
import pathlib
import re
import sys

NAMES = pathlib.Path(__file__).resolve().parent.parent / "src" / "support" / "AddInNames.h"
FIELDS = {"CLSID": "ClassId", "FRIENDLY_NAME": "FriendlyName", "DESCRIPTION": "Description", "LOAD_BEHAVIOR": "LoadBehavior",
          "PROGID": "ProgId"}


def found(pattern, text, what):
    match = re.search(pattern, text)
    if not match:
        sys.exit(f"setup-product: {what} is not where it was")
    return match.group(1)


def main():
    names = NAMES.read_text()
    product = {name: found(rf' {field} = "?([^"\n]*?)"?;', names, field) for name, field in FIELDS.items()}
    for name, value in product.items():
        print(f'!define {name} "{value}"')


if __name__ == "__main__":
    main()
