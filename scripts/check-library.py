#!/usr/bin/env python3
"""Looks at the built library as the oldest Windows would that it is for: size, kind, flags, exports and imports.

    scripts/check-library.py [--self-test] [library]

              of 32 bits                           of 64 bits
    size      below 430 KB                         below 520 KB
    kind      asks for Windows 2000 at most        asks for Windows 7 at most
    imports   that imports.txt lists as there in   that imports.txt or imports-x64.txt list as there in Windows 7,
              Windows 2000, and no others          and no others (both lists are in tests/data)
    flags     subsystem windows; loaded anywhere; no code in data; of 32 bits no exception handlers; stacks guarded
    exports   the four functions that COM and regsvr32 look for, by plain name, and no others
    threads   none is started: the list of exceptions (src/platform/com/ExceptionList.cpp) is that of one thread

A program (CorvellaCheck.exe) is judged as a 32-bit library, but for its size, below 250 KB, its exports, of which it has
none, and its threads.
"""
import argparse
import dataclasses
import pathlib
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
LIBRARY = ROOT / "build" / "win32-release" / "src" / "addin" / "CVOutlookAddIn.dll"
DATA = ROOT / "tests" / "data"
EXPORTS = {"DllCanUnloadNow", "DllGetClassObject", "DllRegisterServer", "DllUnregisterServer"}
WINDOWS_INTERFACE = 2
THREADS = re.compile(r"Create(Remote)?Thread|_beginthread|QueueUserWorkItem|CreateTimerQueue|RegisterWaitFor|"
                     r"\w*Threadpool|timeSetEvent")
# Loaded anywhere; no code in data; no exception handlers that could be overwritten (32 bits only).
# With which platform/StackGuard.cpp ends a process; it is linked only where some function is guarded.
STACK_OVERRUN = bytes.fromhex("090400c0")
FLAGS = {"dynamic base": 0x40, "no execution": 0x100, "no handlers": 0x400}
VERSIONS = ["NT4", "2000", "XP", "2003", "Vista", "7", "8"]


@dataclasses.dataclass
class Kind:
    """What is asked of the libraries of one size of pointers."""
    bits: int
    limit: int  # bytes
    oldest: str  # Windows, one of VERSIONS
    number: tuple  # the same as Windows counts its versions
    lists: list  # of imports
    program: bool = False  # started by itself: it exports nothing


KINDS = {
    "pei-i386": Kind(32, 430 * 1024, "2000", (5, 0), ["imports.txt"]),
    "pei-x86-64": Kind(64, 520 * 1024, "7", (6, 1), ["imports.txt", "imports-x64.txt"]),
}


PROGRAM = Kind(32, 250 * 1024, "2000", (5, 0), ["imports.txt"], program=True)


def kind_of(facts):
    return KINDS.get(facts["format"], KINDS["pei-i386"]) if facts["library"] else PROGRAM


def known_imports(kind):
    return read_list("\n".join((DATA / name).read_text() for name in kind.lists))


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
    tool = "x86_64-w64-mingw32-objdump"  # it reads both kinds
    text = subprocess.run([tool, "-p", path], check=True, capture_output=True, text=True).stdout
    facts = {"size": path.stat().st_size, "imports": [], "exports": []}
    facts["guarded"] = STACK_OVERRUN in path.read_bytes()
    facts["format"] = re.search(r"file format (\S+)", text).group(1)
    facts["library"] = re.search(r"^\s*DLL$", text, re.M) is not None
    facts["interface"] = int(re.search(r"^Subsystem\s+([0-9a-f]+)", text, re.M).group(1), 16)
    facts["flags"] = int(re.search(r"^DllCharacteristics\s+([0-9a-f]+)", text, re.M).group(1), 16)
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


def faults(facts, kind, known):
    found = []
    if facts["size"] >= kind.limit:
        found.append(f"size: {facts['size']} bytes, not below {kind.limit}")
    if KINDS.get(facts["format"]) is not KINDS["pei-i386" if kind.bits == 32 else "pei-x86-64"] or \
            facts["library"] == kind.program:
        found.append(f"kind: {facts['format']}, not a {kind.bits}-bit {'program' if kind.program else 'library'}")
    for part in ("OSystem", "Subsystem"):
        if facts[part] > kind.number:
            found.append("kind: asks for Windows {}.{}, Windows {} is {}.{}".format(*facts[part], kind.oldest, *kind.number))
    if facts["interface"] != WINDOWS_INTERFACE:
        found.append(f"flags: subsystem {facts['interface']}, not {WINDOWS_INTERFACE} (windows)")
    for name, flag in FLAGS.items():
        if not facts["flags"] & flag and (name != "no handlers" or kind.bits == 32):
            found.append(f"flags: {name} is not set")
    if not facts["guarded"]:
        found.append("flags: no function has a guarded stack")
    exports = set() if kind.program else EXPORTS
    for name in sorted(exports - set(facts["exports"])):
        found.append(f"exports: {name} is missing")
    for name in sorted(set(facts["exports"]) - exports):
        found.append(f"exports: {name} is one too many")
    if facts["export entries"] != len(facts["exports"]):
        found.append(f"exports: {facts['export entries']} entries, {len(facts['exports'])} names")
    if not facts["imports"]:
        found.append("imports: none were read")
    for dll, name in facts["imports"]:
        version = known.get((dll, name))
        if THREADS.match(name) and not kind.program:
            found.append(f"threads: {name} of {dll} starts another one")
        if version is None:
            found.append(f"imports: {name} of {dll} is not listed; look up since when Windows has it")
        elif VERSIONS.index(version) > VERSIONS.index(kind.oldest):
            found.append(f"imports: {name} of {dll} is there since Windows {version} only")
    return found


def self_test(path):
    """Spoils each thing that is looked at, and expects the one fault."""
    good = read_library(path)
    kind = kind_of(good)
    known = known_imports(kind)
    other = next(name for name in KINDS if KINDS[name].bits != kind.bits)
    newer = VERSIONS[VERSIONS.index(kind.oldest) + 1]
    newer_number = (kind.number[0], kind.number[1] + 1)
    failures = [f"the library as it stands: {fault}" for fault in faults(good, kind, known)]
    first = good["imports"][0]
    spoilt = {
        f"size: {kind.limit}": (good | {"size": kind.limit}, known),
        f"kind: {other}": (good | {"format": other}, known),
        f"kind: {good['format']}": (good | {"library": not good["library"]}, known),
        "kind: asks for Windows {}.{}".format(*newer_number): (good | {"Subsystem": newer_number}, known),
        "kind: asks for Windows 10.0": (good | {"OSystem": (10, 0)}, known),
        "flags: subsystem 3": (good | {"interface": 3}, known),
        "flags: dynamic base": (good | {"flags": good["flags"] & ~0x40}, known),
        "flags: no execution": (good | {"flags": good["flags"] & ~0x100}, known),
        "flags: no function has a guarded stack": (good | {"guarded": False}, known),
        "exports: DllMain@12 is one too many":
            (good | {"exports": good["exports"] + ["DllMain@12"], "export entries": len(good["exports"]) + 1}, known),
        "exports: 5 entries": (good | {"export entries": 5}, known),
        "imports: none": (good | {"imports": []}, known),
        f"imports: {first[1]} of {first[0]} is not listed": (good, {k: v for k, v in known.items() if k != first}),
        f"imports: {first[1]} of {first[0]} is there since Windows {newer} only": (good, known | {first: newer}),
        "imports: #17 of comctl32.dll is not listed":
            (good | {"imports": good["imports"] + [("comctl32.dll", "#17")]}, known),
    }
    if not kind.program:
        spoilt["exports: DllCanUnloadNow is missing"] = \
            (good | {"exports": good["exports"][1:], "export entries": 3}, known)
        thread = ("kernel32.dll", "CreateThread")
        spoilt["threads: CreateThread"] = (good | {"imports": good["imports"] + [thread]}, known | {thread: "NT4"})
    if kind.bits == 32:
        spoilt["flags: no handlers"] = (good | {"flags": good["flags"] & ~0x400}, known)
    for expected, (facts, listed) in spoilt.items():
        found = faults(facts, kind, listed)
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
        facts = read_library(options.library)
        kind = kind_of(facts)
        found = faults(facts, kind, known_imports(kind))
    for fault in found:
        print(f"check-library: {options.library.name}: {fault}")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
