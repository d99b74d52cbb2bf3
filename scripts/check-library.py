#!/usr/bin/env python3
"""Looks at the built library as Windows 2000 would: size, kind, exports and imports.

    scripts/check-library.py [--self-test] [library]

    size      below 400 KB
    kind      a 32-bit library that asks for no newer Windows
    exports   the four functions that COM and regsvr32 look for, by plain name, and no others
    imports   functions that tests/data/imports.txt lists as there in Windows 2000, and no others
"""
import argparse
import pathlib
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
LIBRARY = ROOT / "build" / "win32-release" / "src" / "addin" / "CVOutlookAddIn.dll"
IMPORTS = ROOT / "tests" / "data" / "imports.txt"
LIMIT = 400 * 1024
EXPORTS = {"DllCanUnloadNow", "DllGetClassObject", "DllRegisterServer", "DllUnregisterServer"}
VERSIONS = ["NT4", "2000", "XP", "2003", "Vista", "7"]
OLDEST = "2000"


def read_list(text):
    """{(dll, function): version}; lines are "dll function version", "#" begins a comment."""
    known = {}
    for number, line in enumerate(text.splitlines(), 1):
        words = line.split("#")[0].split()
        if not words:
            continue
        if len(words) != 3 or words[2] not in VERSIONS:
            raise SystemExit(f"check-library: line {number} of the list of imports is not understood: {line}")
        known[words[0], words[1]] = words[2]
    return known


def read_library(path):
    """What objdump tells of the library, as plain values."""
    tool = "i686-w64-mingw32-objdump"
    text = subprocess.run([tool, "-p", path], check=True, capture_output=True, text=True).stdout
    facts = {"size": path.stat().st_size, "imports": [], "exports": []}
    facts["format"] = re.search(r"file format (\S+)", text).group(1)
    facts["library"] = re.search(r"^\s*DLL$", text, re.M) is not None
    for part in ("OSystem", "Subsystem"):
        major, minor = (re.search(rf"^{which}{part}Version\s+(\d+)", text, re.M).group(1) for which in ("Major", "Minor"))
        facts[part] = (int(major), int(minor))
    imports = text.partition("The Import Tables")[2].partition("There is an export table")[0]
    dll = None
    for line in imports.splitlines():
        if named := re.match(r"\s*DLL Name: (\S+)", line):
            dll = named.group(1).lower()
        elif entry := re.match(r"\s+[0-9a-f]+\s+<none>\s+([0-9a-f]+)|\s+[0-9a-f]+\s+\d+\s+(\S+)\s*$", line):
            facts["imports"].append((dll, entry.group(2) or "#" + entry.group(1)))
    names = text.partition("[Ordinal/Name Pointer] Table")[2]
    facts["exports"] = re.findall(r"^\s*\[\s*\d+\]\s+(?:\+base\[\s*\d+\]\s+[0-9a-f]+\s+)?(\S+)$",
                                  names.partition("\n\n")[0], re.M)
    entries = re.search(r"Export Address Table\s+([0-9a-f]+)$", text, re.M)
    facts["export entries"] = int(entries.group(1), 16) if entries else 0
    return facts


def faults(facts, known):
    found = []
    if facts["size"] >= LIMIT:
        found.append(f"size: {facts['size']} bytes, not below {LIMIT}")
    if facts["format"] != "pei-i386" or not facts["library"]:
        found.append(f"kind: {facts['format']}, not a 32-bit library")
    for part in ("OSystem", "Subsystem"):
        if facts[part] > (5, 0):
            found.append(f"kind: asks for Windows {facts[part][0]}.{facts[part][1]}, Windows 2000 is 5.0")
    for name in sorted(EXPORTS - set(facts["exports"])):
        found.append(f"exports: {name} is missing")
    for name in sorted(set(facts["exports"]) - EXPORTS):
        found.append(f"exports: {name} is one too many")
    if facts["export entries"] != len(facts["exports"]):
        found.append(f"exports: {facts['export entries']} entries, {len(facts['exports'])} names")
    if not facts["imports"]:
        found.append("imports: none were read")
    for dll, name in facts["imports"]:
        version = known.get((dll, name))
        if version is None:
            found.append(f"imports: {name} of {dll} is not listed; look up since when Windows has it")
        elif VERSIONS.index(version) > VERSIONS.index(OLDEST):
            found.append(f"imports: {name} of {dll} is there since Windows {version} only")
    return found


def self_test(path):
    """Spoils each thing that is looked at, and expects the one fault."""
    known = read_list(IMPORTS.read_text())
    good = read_library(path)
    failures = [f"the library as it stands: {fault}" for fault in faults(good, known)]
    first = good["imports"][0]
    spoilt = {
        "size: 409600": (good | {"size": 409600}, known),
        "kind: pei-x86-64": (good | {"format": "pei-x86-64"}, known),
        "kind: pei-i386": (good | {"library": False}, known),
        "kind: asks for Windows 5.1": (good | {"Subsystem": (5, 1)}, known),
        "kind: asks for Windows 6.0": (good | {"OSystem": (6, 0)}, known),
        "exports: DllCanUnloadNow is missing": (good | {"exports": good["exports"][1:], "export entries": 3}, known),
        "exports: DllMain@12 is one too many":
            (good | {"exports": good["exports"] + ["DllMain@12"], "export entries": 5}, known),
        "exports: 5 entries": (good | {"export entries": 5}, known),
        "imports: none": (good | {"imports": []}, known),
        f"imports: {first[1]} of {first[0]} is not listed": (good, {k: v for k, v in known.items() if k != first}),
        f"imports: {first[1]} of {first[0]} is there since Windows XP only": (good, known | {first: "XP"}),
        "imports: GetTickCount64 of kernel32.dll is there since Windows Vista only":
            (good | {"imports": good["imports"] + [("kernel32.dll", "GetTickCount64")]}, known),
        "imports: #17 of comctl32.dll is not listed":
            (good | {"imports": good["imports"] + [("comctl32.dll", "#17")]}, known),
    }
    for expected, (facts, listed) in spoilt.items():
        found = faults(facts, listed)
        if len(found) != 1 or not found[0].startswith(expected):
            failures.append(f"expected '{expected}', got {found}")
    return failures


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    parser.add_argument("--self-test", action="store_true")
    parser.add_argument("library", nargs="?", type=pathlib.Path, default=LIBRARY)
    options = parser.parse_args()
    if options.self_test:
        found = self_test(options.library)
    else:
        found = faults(read_library(options.library), read_list(IMPORTS.read_text()))
    for fault in found:
        print(f"check-library: {options.library.name}: {fault}")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
