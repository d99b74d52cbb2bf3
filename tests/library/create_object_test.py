#!/usr/bin/env python3
"""Lets Wine's 32-bit script host make an object of a registered class: create_object_test.py ProgID"""
import pathlib
import sys

HERE = pathlib.Path(__file__).resolve().parent
sys.path.insert(0, str(HERE.parent / "support"))
from wine import SYSTEM32, run, windows_path  # noqa: E402


def told_of(prog_id):
    _, told = run(SYSTEM32 + "cscript.exe", "//nologo", windows_path(HERE / "create_object.vbs"), prog_id)
    return told


told = told_of(sys.argv[1])
print("\n".join(told))
made = "IsObject True" in told and "TypeName IDTExtensibility2" in told
refused = "IsObject True" not in told_of("CVNoSuchAddIn.Connect")
sys.exit(0 if made and refused else 1)
