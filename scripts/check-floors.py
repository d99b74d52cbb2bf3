#!/usr/bin/env python3
"""Looks at what the sources under src/ include.

The rules:
    floor     a file includes only what stands on its own floor or below (docs/architecture.md); every file has one
    circle    no two modules (a header with its source) include each other, not over any number of others either
    unknown   an included file of this system exists
    system    outside platform/ only the C++ standard library is included, and nothing that brings Windows' headers in
    size      nowhere the parts of the standard library that make the DLL large or need a newer Windows
"""
import argparse
import collections
import pathlib
import re
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parent.parent

# The folders, bottom floor first. A file belongs to the longest of these that it lies under.
FLOORS = ["platform", "platform/com", "platform/forms", "support", "config", "language", "shell", "question", "bridge", "addin"]
TOO_LARGE = {"iostream", "fstream", "sstream", "iomanip", "regex", "thread", "filesystem", "locale", "codecvt", "mutex",
             "condition_variable", "future", "format"}
INCLUDE = re.compile(r'^[ \t]*#[ \t]*include[ \t]*(?:"([^"]+)"|<([^>]+)>)', re.M)


def module_of(name):
    return name.rsplit(".", 1)[0]


def floor_of(name):
    folder = name.rpartition("/")[0]
    return FLOORS.index(folder) if folder in FLOORS else None


def circles(edges):
    """Modules that can be reached from themselves, as paths, each circle once."""
    found, done = [], set()

    def walk(module, path):
        if module in path:
            circle = path[path.index(module):]
            if not any(set(circle) == set(other) for other in found):
                found.append(circle)
            return
        if module in done:
            return
        for following in sorted(edges[module]):
            walk(following, path + [module])
        done.add(module)

    for module in sorted(edges):
        walk(module, [])
    return found


def check(source):
    """(rule, sentence) for everything that is wrong under the folder `source`."""
    files = {path.relative_to(source).as_posix(): path.read_text(encoding="latin-1")
             for kind in ("*.h", "*.cpp") for path in source.rglob(kind)}
    own = {name: [ours for ours, _ in INCLUDE.findall(text) if ours] for name, text in files.items()}
    system = {name: [theirs for _, theirs in INCLUDE.findall(text) if theirs] for name, text in files.items()}
    faults = []

    def brings_windows(name, seen):
        if name in seen:
            return False
        seen.add(name)
        return any(header.endswith(".h") for header in system.get(name, [])) or \
            any(brings_windows(following, seen) for following in own.get(name, []))

    edges = collections.defaultdict(set)
    for name in sorted(files):
        floor = floor_of(name)
        if floor is None:
            faults.append(("floor", f"{name} stands on no floor; its folder is not among FLOORS in scripts/check-floors.py"))
        for included in own[name]:
            if included not in files:
                faults.append(("unknown", f"{name} includes {included}, which is not there"))
                continue
            above = floor_of(included)
            if floor is not None and above is not None and above > floor:
                faults.append(("floor", f"{name} (floor {floor}) includes {included} (floor {above})"))
            if module_of(included) != module_of(name):
                edges[module_of(name)].add(module_of(included))
            if not name.startswith("platform/") and brings_windows(included, set()):
                faults.append(("system", f"{name} includes {included}, which brings a system header in"))
        for header in system[name]:
            if header.endswith(".h") and not name.startswith("platform/"):
                faults.append(("system", f"{name} includes <{header}>"))
            if header in TOO_LARGE:
                faults.append(("size", f"{name} includes <{header}>"))
    faults += [("circle", " -> ".join(circle + circle[:1])) for circle in circles(edges)]
    return faults, len(files)


def self_test():
    """Each break alone in an otherwise good tree has to be reported under its rule, and only it."""
    good = {
        "platform/Text.h": "#pragma once\n#include <string>\n",
        "platform/Text.cpp": '#include "platform/Text.h"\n#include <windows.h>\n',
        "platform/Com.h": "#include <windows.h>\n",
        "support/Debug.h": '#include "platform/Text.h"\n',
        "support/Debug.cpp": '#include "support/Debug.h"\n#include "support/Prompt.h"\n',
        "support/Prompt.h": "#include <cstdint>\n",
        "bridge/RegEdit.h": '#include "support/Debug.h"\n',
        "bridge/CVOutlAddIn.cpp": '#include "bridge/RegEdit.h"\n',
        "addin/Connect.cpp": '#include "bridge/RegEdit.h"\n#include "support/Debug.h"\n',
    }
    breaks = [
        ("none", {}),
        ("none", {"platform/com/Com.h": '#include "platform/Text.h"\n'}),
        ("floor", {"platform/Text.cpp": '#include "platform/com/Com.h"\n', "platform/com/Com.h": ""}),
        ("floor", {"support/Debug.cpp": '#include "bridge/RegEdit.h"\n', "bridge/RegEdit.h": ""}),
        ("floor", {"bridge/RegEdit.h": '  #  include "addin/Names.h"\n', "addin/Names.h": ""}),
        ("floor", {"support/room/Thing.h": ""}),
        ("floor", {"newroom/Thing.cpp": ""}),
        ("circle", {"support/Prompt.h": '#include "support/Debug.h"\n'}),
        ("circle", {"addin/A.cpp": '#include "addin/B.h"\n', "addin/A.h": "", "addin/B.h": '#include "addin/C.h"\n',
                    "addin/C.h": "", "addin/C.cpp": '#include "addin/A.h"\n'}),
        ("unknown", {"addin/Connect.cpp": '#include "bridge/Gone.h"\n'}),
        ("system", {"addin/Connect.cpp": "#include <windows.h>\n"}),
        ("system", {"bridge/RegEdit.cpp": "#include <oleauto.h>\n"}),
        ("system", {"addin/Connect.cpp": '#include "platform/Com.h"\n'}),
        ("system", {"addin/Connect.cpp": '#include "platform/Middle.h"\n', "platform/Middle.h": '#include "platform/Com.h"\n'}),
        ("size", {"platform/Text.cpp": "#include <iostream>\n"}),
        ("size", {"support/Debug.h": "#include <mutex>\n"}),
    ]
    failures = []
    for rule, changes in breaks:
        with tempfile.TemporaryDirectory() as folder:
            for name, text in (good | changes).items():
                path = pathlib.Path(folder) / name
                path.parent.mkdir(parents=True, exist_ok=True)
                path.write_text(text)
            found, _ = check(pathlib.Path(folder))
            if [which for which, _ in found] != ([] if rule == "none" else [rule]):
                failures.append(f"expected {rule} for {changes}, got {found}")
    return failures, len(breaks)


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    parser.add_argument("--self-test", action="store_true")
    options = parser.parse_args()
    if options.self_test:
        failures, count = self_test()
        print("\n".join(failures) or f"check-floors: {count} trees, all judged as they should be")
        return 1 if failures else 0
    faults, count = check(ROOT / "src")
    for rule, what in faults:
        print(f"check-floors: {rule}: {what}")
    if not faults:
        print(f"check-floors: {count} files, no fault")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
