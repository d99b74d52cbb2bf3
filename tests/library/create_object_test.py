#!/usr/bin/env python3
"""Lets Wine's 32-bit script host make an object of a registered class: create_object_test.py ProgID"""
import pathlib
import subprocess
import sys

HERE = pathlib.Path(__file__).resolve().parent
WINE = HERE.parent.parent / "scripts" / "wine"


def told_of(prog_id):
    script = "Z:" + str(HERE / "create_object.vbs").replace("/", "\\")
    command = [WINE, "C:\\windows\\syswow64\\cscript.exe", "//nologo", script, prog_id]
    return subprocess.run(command, capture_output=True, text=True).stdout.split("\n")


told = told_of(sys.argv[1])
print("\n".join(told))
made = "IsObject True" in told and "TypeName IDTExtensibility2" in told
refused = "IsObject True" not in told_of("CVNoSuchAddIn.Connect")
sys.exit(0 if made and refused else 1)
