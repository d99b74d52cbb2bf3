#!/usr/bin/env python3
"""The version, which stands in CMakeLists.txt alone: scripts/version.py prints it.

    scripts/version.py --built FILE...   the version records of built libraries and programs have the same
    scripts/version.py --check   everything that repeats it has the same: the changelog's newest release, the pages that
                                 name the setup's file
"""
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent


def version():
    found = re.search(r"^project\(CVOutlookAddIn VERSION (\d+\.\d+\.\d+) ", (ROOT / "CMakeLists.txt").read_text(), re.MULTILINE)
    return found[1] if found else sys.exit("version: CMakeLists.txt names none")


def record(data):
    """FileVersion and ProductVersion of a Windows program."""
    texts = {}
    for name in ("FileVersion", "ProductVersion"):
        at = data.find((name + "\0").encode("utf-16-le"))
        text = data[at + 2 * len(name):at + 2 * len(name) + 64].decode("utf-16-le", "replace") if at >= 0 else ""
        texts[name] = text.lstrip("\0").partition("\0")[0]
    return texts


def faults(number, changelog, pages):
    """`pages` maps names to texts."""
    released = re.findall(r"^## (\d+\.\d+\.\d+)", changelog, re.MULTILINE)
    found = []
    if released[:1] != [number]:
        found.append(f"CHANGELOG.md: the first release is {released[:1]}, not {number}")
    for name, text in pages.items():
        found += [f"{name}: names a setup of {other}" for other in re.findall(r"AddIn-(\d+\.\d+\.\d+)", text) if other != number]
    return found


def self_test():
    """Every kind of disagreement is found, and agreement is not."""
    pages = {"page": "Corvella-Outlook-AddIn-1.2.3-setup.exe"}
    changelog = "# Changelog\n\n## 1.2.3 (unreleased)\n\n## 1.2.2\n"
    built = b"MZ" + "FileVersion\0\0001.2.3\0ProductVersion\0\0001.2.3\0".encode("utf-16-le")
    as_expected = [
        faults("1.2.3", changelog, pages) == [],
        len(faults("1.2.4", changelog, pages)) == 2,
        len(faults("1.2.3", "# Changelog\n", pages)) == 1,
        record(built) == {"FileVersion": "1.2.3", "ProductVersion": "1.2.3"},
        record(b"MZ") == {"FileVersion": "", "ProductVersion": ""},
    ]
    print("version: the check finds what it is for" if all(as_expected) else f"version: {as_expected}")
    return 0 if all(as_expected) else 1


def main():
    if sys.argv[1:2] == ["--self-test"]:
        return self_test()
    if sys.argv[1:2] == ["--built"]:
        wrong = [f"version: {name} says {record(pathlib.Path(name).read_bytes())}" for name in sys.argv[2:]
                 if set(record(pathlib.Path(name).read_bytes()).values()) != {version()}]
        print("\n".join(wrong) or f"version: {version()} in {len(sys.argv) - 2} files")
        return 1 if wrong else 0
    if sys.argv[1:] != ["--check"]:
        print(version())
        return 0
    pages = {path.relative_to(ROOT).as_posix(): path.read_text() for path in [ROOT / "README.md", *(ROOT / "docs").glob("*.md")]}
    found = faults(version(), (ROOT / "CHANGELOG.md").read_text(), pages)
    print("\n".join(found) or f"version: {version()} everywhere")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
