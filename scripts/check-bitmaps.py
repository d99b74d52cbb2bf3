#!/usr/bin/env python3
"""Tells whether the bitmaps in src/resources are what scripts/draw-bitmaps.py draws, all of them and no others."""
import argparse
import importlib.util
import pathlib
import shutil
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parent.parent


def drawing():
    spec = importlib.util.spec_from_file_location("draw_bitmaps", ROOT / "scripts" / "draw-bitmaps.py")
    module = importlib.util.module_from_spec(spec)
    spec.loader.exec_module(module)
    return module


def check(folder):
    """The faults of the bitmaps in `folder`."""
    draw = drawing()
    faults = []
    if len(set(draw.PALETTE.values())) != len(draw.PALETTE):
        faults.append("two letters of the palette are one colour")
    drawn = {pathlib.PurePath(name).name: data for name, data in draw.bitmaps().items()}
    faults += [f"{path.name} is not drawn" for path in folder.glob("*.bmp") if path.name not in drawn]
    for name, data in drawn.items():
        path = folder / name
        if not path.is_file():
            faults.append(f"{name} is missing")
        elif path.read_bytes() != data:
            faults.append(f"{name} is not as it is drawn")
    return faults


def self_test(folder):
    failures = [f"the files as they stand: {fault}" for fault in check(folder)]
    with tempfile.TemporaryDirectory() as temporary:
        copy = pathlib.Path(temporary) / "copy"
        breaks = {
            "is missing": lambda: (copy / "103.bmp").unlink(),
            "is not drawn": lambda: (copy / "201.bmp").write_bytes(b"BM"),
            "is not as it is drawn": lambda: (copy / "207.bmp").write_bytes(bytes(126)),
        }
        for fault, break_it in breaks.items():
            shutil.rmtree(copy, ignore_errors=True)
            shutil.copytree(folder, copy)
            break_it()
            found = check(copy)
            if len(found) != 1 or fault not in found[0]:
                failures.append(f"expected one fault '{fault}', got {found}")
    return failures


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--self-test", action="store_true")
    options = parser.parse_args()
    folder = ROOT / "src" / "resources"
    faults = self_test(folder) if options.self_test else check(folder)
    for fault in faults:
        print(f"check-bitmaps: {fault}")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
