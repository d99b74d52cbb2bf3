#!/usr/bin/env python3
"""Lets Wine's script host of 32 or 64 bits make an object of a registered class: create_object_test.py ProgID 32|64"""
import pathlib
import subprocess
import sys

HERE = pathlib.Path(__file__).resolve().parent
sys.path.insert(0, str(HERE.parent / "testing"))
from wine import SYSTEM  # noqa: E402

WINE = HERE.parent.parent / "scripts" / "wine"


def told_of(prog_id):
    script = "Z:" + str(HERE / "create_object.vbs").replace("/", "\\")
    command = [WINE, SYSTEM[int(sys.argv[2])] + "cscript.exe", "//nologo", script, prog_id]
    return subprocess.run(command, capture_output=True, text=True).stdout.split("\n")


told = told_of(sys.argv[1])
print("\n".join(told))
made = "IsObject True" in told and "TypeName IDTExtensibility2" in told
refused = "IsObject True" not in told_of("CVNoSuchAddIn.Connect")
sys.exit(0 if made and refused else 1)
