#!/usr/bin/env python3
"""Registers and unregisters a library with Wine's own regsvr32 and compares what the registry holds.

    registration_test.py ProgID library [library of the other size of pointers]

With a second library: each of the two is registered and unregistered beside the other. It works in a prefix of its own. What is compared are the Software branches of the user and of the machine.
"""
import os
import pathlib
import re
import sys
import tempfile

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "testing"))
from wine import BRANCHES, ROOT, Prefix, added, bits_of, windows_path  # noqa: E402

IDL = ROOT / "src" / "resources" / "CVOutlookAddIn.idl"


def main():
    with tempfile.TemporaryDirectory() as folder:
        prefix, failures = Prefix(folder), []

        def expect(what, as_expected):
            if not as_expected:
                failures.append(what)

        prog_id, *libraries = sys.argv[1:]
        libraries = [pathlib.Path(os.path.abspath(library)) for library in libraries]
        forget_both(prefix, prog_id)
        if len(libraries) == 1:
            one(prefix, prog_id, libraries[0], expect)
        else:
            beside(prefix, prog_id, libraries, expect)
            beside(prefix, prog_id, libraries[::-1], expect)
        for failure in failures:
            print(f"not so: {failure}")
        return 1 if failures else 0


def stored(library):
    return windows_path(library).replace("\\", "\\\\").lower()


def class_of(keys, library):
    """The key of the class that has the library's path."""
    return [key.rpartition("\\")[0] for key, lines in keys.items()
            if key.endswith("\\InprocServer32") and any(stored(library) in line.lower() for line in lines)]


def class_id():
    return "{" + re.search(r"uuid\(([0-9A-F-]+)\),[^\[]*coclass", IDL.read_text(), re.S).group(1) + "}"


def forget_both(prefix, prog_id):
    """What other tests registered, with either size of pointers, in the registry that was copied. No program has run in
    it yet, so its files can be changed."""
    own = (class_id(), prog_id, "Microsoft\\\\Office")
    for name in BRANCHES:
        file = prefix.folder / name
        head, *keys = re.split(r"(?m)^(?=\[)", file.read_text("latin-1"))
        kept = [key for key in keys if not any(word.lower() in key.partition("]")[0].lower() for word in own)]
        file.write_text(head + "".join(kept), "latin-1")


def addin_key(prog_id):
    return f"HKEY_CURRENT_USER\\Software\\Microsoft\\Office\\Outlook\\Addins\\{prog_id}"


def beside(prefix, prog_id, libraries, expect):
    """The first of the two goes while the second stays."""
    first, second = libraries
    bits = f"({bits_of(first)} bits first)"
    before = prefix.registry()
    expect("nothing of the add-in is registered at first", not any(prog_id in key for key in before))
    expect("both libraries register themselves", [prefix.regsvr32(library) for library in libraries] == [0, 0])
    both = added(before, prefix.registry())
    classes = {bits_of(library): class_of(both, library) for library in libraries}
    expect(f"each has the class in its own view {bits}: {classes}",
           all(len(found) == 1 for found in classes.values()) and
           "\\Wow6432Node\\" in classes[32][0] and "\\Wow6432Node\\" not in classes[64][0])
    expect(f"one add-in and one name for both {bits}",
           sum(key.endswith("\\" + prog_id) for key in both) == 2 and addin_key(prog_id) in both)

    expect(f"the first unregisters itself {bits}", prefix.regsvr32(first, "/u") == 0)
    left = added(before, prefix.registry())
    shared = {key: lines for key, lines in both.items() if not any(key.startswith(own) for own in class_of(both, first))}
    expect(f"all that is the second's stays {bits}", left == shared)
    expect(f"the second unregisters itself {bits}", prefix.regsvr32(second, "/u") == 0)
    after = prefix.registry()
    expect(f"nothing is left behind {bits}: {sorted(added(before, after)) or sorted(added(after, before))}",
           after == before)
    print(f"{len(both)} keys for both, {len(left)} for the second {bits}")


def one(prefix, prog_id, library, expect):
    registry, regsvr32 = prefix.registry, prefix.regsvr32

    before = registry()
    expect("nothing of the add-in is registered at first", not any(prog_id in key for key in before))

    expect("the library registers itself", regsvr32(library) == 0)
    registered = added(before, registry())
    text = "\n".join(line for lines in registered.values() for line in lines)
    expect("the class is registered with the library's full path", stored(library) in text.lower())
    expect("the class has the id by which the type library describes it",
           any(key.upper().endswith("\\CLSID\\" + class_id()) for key in registered))
    expect("the class lives in the host's user-interface thread", '"ThreadingModel"="Apartment"' in text)
    expect("Outlook loads the add-in at its start",
           '"LoadBehavior"=dword:00000003' in registered.get(addin_key(prog_id), []))
    expect("no type library and no interface is registered",
           not any("TypeLib" in key or "Interface" in key for key in registered))

    expect("a second registration succeeds", regsvr32(library) == 0)
    expect("a second registration changes nothing", added(before, registry()) == registered)

    expect("the library unregisters itself", regsvr32(library, "/u") == 0)
    after = registry()
    expect(f"nothing is left behind: {sorted(added(before, after)) or sorted(added(after, before))}", after == before)
    expect("a second unregistration succeeds", regsvr32(library, "/u") == 0)

    print(f"{len(registered)} keys were added and removed")


if __name__ == "__main__":
    sys.exit(main())
