#!/usr/bin/env python3
"""Looks at what the sources under src/ and standins/ include.

The rules:
    floor     a file includes only what stands on its own floor or below (docs/architecture.md); every file has one
    room      two folders on one floor know nothing of each other
    circle    no two modules (a header with its source) include each other, not over any number of others either
    unknown   an included file of this system exists
    stranger  the stand-in for Outlook does not name the product: an add-in is to it any add-in
And under src/ alone:
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

# Of each tree the floors, bottom first, with the folders that stand there. A folder is one floor.
TREES = {
    "src": [["platform"], ["platform/com"], ["platform/forms"], ["support"], ["config"], ["language"], ["shell"], ["question"],
            ["bridge"], ["addin", "check"]],
    "standins": [["outlook/ribbon"], ["outlook", "corvella"], ["outlook/program"]],
}
STRANGERS = {"standins": ("outlook/", re.compile("corvella|quillmark", re.I))}
TOO_LARGE = {"iostream", "fstream", "sstream", "iomanip", "regex", "thread", "filesystem", "locale", "codecvt", "mutex",
             "condition_variable", "future", "format"}
INCLUDE = re.compile(r'^[ \t]*#[ \t]*include[ \t]*(?:"([^"]+)"|<([^>]+)>)', re.M)


def module_of(name):
    return name.rsplit(".", 1)[0]


def folder_of(name):
    return name.rpartition("/")[0]


def floor_of(tree, name):
    for floor, folders in enumerate(TREES[tree]):
        if folder_of(name) in folders:
            return floor
    return None


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


def floor_faults(tree, name, included):
    """Of one include between files that are there."""
    floor, other = floor_of(tree, name), floor_of(tree, included)
    if floor is None or other is None:
        return
    if other > floor:
        yield "floor", f"{name} (floor {floor}) includes {included} (floor {other})"
    if other == floor and folder_of(name) != folder_of(included):
        yield "room", f"{name} includes {included}, which stands in another room of the same floor"


def system_faults(name, own, system):
    """Windows' headers outside platform/, directly or through a file of ours; what makes the DLL large."""
    def brings_windows(header, seen):
        if header in seen:
            return False
        seen.add(header)
        return any(theirs.endswith(".h") for theirs in system.get(header, [])) or \
            any(brings_windows(following, seen) for following in own.get(header, []))

    for included in own[name]:
        if not name.startswith("platform/") and brings_windows(included, set()):
            yield "system", f"{name} includes {included}, which brings a system header in"
    for header in system[name]:
        if header.endswith(".h") and not name.startswith("platform/"):
            yield "system", f"{name} includes <{header}>"
        if header in TOO_LARGE:
            yield "size", f"{name} includes <{header}>"


def check(source, tree):
    """(rule, sentence) for everything that is wrong under the folder `source`, and how many files were looked at."""
    files = {path.relative_to(source).as_posix(): path.read_text(encoding="latin-1")
             for kind in ("*.h", "*.cpp", "CMakeLists.txt") for path in source.rglob(kind)}
    faults = []
    if tree in STRANGERS:
        folder, word = STRANGERS[tree]
        faults += [("stranger", f"{name} names {word.search(text)[0]}") for name, text in sorted(files.items())
                   if name.startswith(folder) and word.search(text)]
    files = {name: text for name, text in files.items() if not name.endswith(".txt")}
    own = {name: [ours for ours, _ in INCLUDE.findall(text) if ours] for name, text in files.items()}
    system = {name: [theirs for _, theirs in INCLUDE.findall(text) if theirs] for name, text in files.items()}

    edges = collections.defaultdict(set)
    for name in sorted(files):
        if floor_of(tree, name) is None:
            faults.append(("floor", f"{name} stands on no floor; its folder is not among TREES in scripts/check-floors.py"))
        for included in own[name]:
            if included not in files:
                faults.append(("unknown", f"{name} includes {included}, which is not there"))
                continue
            faults += floor_faults(tree, name, included)
            if module_of(included) != module_of(name):
                edges[module_of(name)].add(module_of(included))
        if tree == "src":
            faults += system_faults(name, own, system)
    faults += [("circle", " -> ".join(circle + circle[:1])) for circle in circles(edges)]
    return faults, len(files)


GOOD = {
    "src": {
        "platform/Text.h": "#pragma once\n#include <string>\n",
        "platform/Text.cpp": '#include "platform/Text.h"\n#include <windows.h>\n',
        "platform/Com.h": "#include <windows.h>\n",
        "support/Debug.h": '#include "platform/Text.h"\n',
        "support/Debug.cpp": '#include "support/Debug.h"\n#include "support/Prompt.h"\n',
        "support/Prompt.h": "#include <cstdint>\n",
        "bridge/RegEdit.h": '#include "support/Debug.h"\n',
        "bridge/CVOutlAddIn.cpp": '#include "bridge/RegEdit.h"\n',
        "addin/Connect.cpp": '#include "bridge/RegEdit.h"\n#include "support/Debug.h"\n',
    },
    "standins": {
        "outlook/Host.h": "#include <windows.h>\n",
        "outlook/Items.h": "#include <thread>\n",
        "outlook/Items.cpp": '#include "outlook/Items.h"\n#include "outlook/Host.h"\n',
        "outlook/Session.h": '#include "outlook/Host.h"\n#include "outlook/Items.h"\n',
        "outlook/program/Frame.cpp": '#include "outlook/Session.h"\n',
        "outlook/program/CMakeLists.txt": "add_executable(OutlookStandIn Frame.cpp)\n",
        "corvella/Start.h": "// of Corvella\n",
    },
}


def self_test():
    """Each break alone in an otherwise good tree has to be reported under its rule, and only it."""
    breaks = [
        ("src", "none", {}),
        ("src", "none", {"platform/com/Com.h": '#include "platform/Text.h"\n'}),
        ("src", "floor", {"platform/Text.cpp": '#include "platform/com/Com.h"\n', "platform/com/Com.h": ""}),
        ("src", "floor", {"support/Debug.cpp": '#include "bridge/RegEdit.h"\n', "bridge/RegEdit.h": ""}),
        ("src", "floor", {"bridge/RegEdit.h": '  #  include "addin/Names.h"\n', "addin/Names.h": ""}),
        ("src", "floor", {"support/room/Thing.h": ""}),
        ("src", "floor", {"newroom/Thing.cpp": ""}),
        ("src", "circle", {"support/Prompt.h": '#include "support/Debug.h"\n'}),
        ("src", "circle", {"addin/A.cpp": '#include "addin/B.h"\n', "addin/A.h": "", "addin/B.h": '#include "addin/C.h"\n',
                           "addin/C.h": "", "addin/C.cpp": '#include "addin/A.h"\n'}),
        ("src", "unknown", {"addin/Connect.cpp": '#include "bridge/Gone.h"\n'}),
        ("src", "system", {"addin/Connect.cpp": "#include <windows.h>\n"}),
        ("src", "system", {"bridge/RegEdit.cpp": "#include <oleauto.h>\n"}),
        ("src", "system", {"addin/Connect.cpp": '#include "platform/Com.h"\n'}),
        ("src", "system", {"addin/Connect.cpp": '#include "platform/Middle.h"\n', "platform/Middle.h": '#include "platform/Com.h"\n'}),
        ("src", "size", {"platform/Text.cpp": "#include <iostream>\n"}),
        ("src", "size", {"support/Debug.h": "#include <mutex>\n"}),
        ("standins", "none", {}),
        ("standins", "floor", {"outlook/Items.cpp": '#include "outlook/program/Pen.h"\n', "outlook/program/Pen.h": ""}),
        ("standins", "floor", {"outlook/day/Day.cpp": ""}),
        ("standins", "room", {"corvella/main.cpp": '#include "outlook/Host.h"\n'}),
        ("standins", "circle", {"outlook/Items.cpp": '#include "outlook/Session.h"\n'}),
        ("standins", "unknown", {"outlook/program/Frame.cpp": '#include "outlook/program/Gone.h"\n'}),
        ("standins", "stranger", {"outlook/Items.cpp": "// Software\\Quillmark\n"}),
        ("standins", "stranger", {"outlook/program/CMakeLists.txt": "add_executable(CorvellaDay)\n"}),
    ]
    failures = []
    for tree, rule, changes in breaks:
        with tempfile.TemporaryDirectory() as folder:
            for name, text in (GOOD[tree] | changes).items():
                path = pathlib.Path(folder) / name
                path.parent.mkdir(parents=True, exist_ok=True)
                path.write_text(text)
            found, _ = check(pathlib.Path(folder), tree)
            if [which for which, _ in found] != ([] if rule == "none" else [rule]):
                failures.append(f"{tree}: expected {rule} for {changes}, got {found}")
    return failures, len(breaks)


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    parser.add_argument("--self-test", action="store_true")
    options = parser.parse_args()
    if options.self_test:
        failures, count = self_test()
        print("\n".join(failures) or f"check-floors: {count} trees, all judged as they should be")
        return 1 if failures else 0
    results = [check(ROOT / tree, tree) for tree in TREES]
    faults = [fault for found, _ in results for fault in found]
    count = sum(number for _, number in results)
    for rule, what in faults:
        print(f"check-floors: {rule}: {what}")
    if not faults:
        print(f"check-floors: {count} files, no fault")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
