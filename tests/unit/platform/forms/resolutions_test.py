#!/usr/bin/env python3
"""Plays the tests of a form's size and place on screens of several resolutions: resolutions_test.py platform_form_test.exe"""
import pathlib
import sys
import tempfile

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[3] / "testing"))
from wine import Display, Prefix  # noqa: E402

DOTS = (96, 120, 144, 192)  # an inch
CASES = "a form has its size*,a form that comes to*,a form is centred*,a text is measured*"

failed = False
for dots in DOTS:
    with tempfile.TemporaryDirectory() as folder, Display() as display:
        prefix = Prefix(folder, display)
        prefix.run("reg", "add", "HKCU\\Control Panel\\Desktop", "/v", "LogPixels", "/t", "REG_DWORD", "/d", dots, "/f")
        prefix.registry()  # ends every program, for the resolution is read at their start
        code, told = prefix.ask(sys.argv[1], f"--test-case={CASES}")
    print(f"{dots} dots an inch:", *told, sep="\n")
    failed = failed or code != 0 or not any("4 passed" in line for line in told)
sys.exit(1 if failed else 0)
