#!/usr/bin/env python3
"""Registers and unregisters a library with Wine's own 32-bit regsvr32 and compares what the registry holds.

    registration_test.py ProgID library

It works in a prefix of its own. What is compared are the Software branches of the user and of the machine.
"""
import os
import pathlib
import re
import sys
import tempfile

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "testing"))
from wine import ROOT, Prefix, added, windows_path  # noqa: E402

IDL = ROOT / "src" / "resources" / "CVOutlookAddIn.idl"


def main():
    with tempfile.TemporaryDirectory() as folder:
        return compare(Prefix(folder))


def compare(prefix):
    registry, regsvr32 = prefix.registry, prefix.regsvr32
    prog_id, library = sys.argv[1], pathlib.Path(os.path.abspath(sys.argv[2]))
    failures = []

    def expect(what, as_expected):
        if not as_expected:
            failures.append(what)

    regsvr32(library, "/u")  # of a test that was stopped
    before = registry()
    expect("nothing of the add-in is registered at first", not any(prog_id in key for key in before))

    expect("the library registers itself", regsvr32(library) == 0)
    registered = added(before, registry())
    text = "\n".join(line for lines in registered.values() for line in lines)
    expect("the class is registered with the library's full path",
           windows_path(library).replace("\\", "\\\\").lower() in text.lower())
    described = re.search(r"uuid\(([0-9A-F-]+)\),[^\[]*coclass", IDL.read_text(), re.S).group(1)
    expect("the class has the id by which the type library describes it",
           any(key.upper().endswith(f"\\CLSID\\{{{described}}}") for key in registered))
    expect("the class lives in the host's user-interface thread", '"ThreadingModel"="Apartment"' in text)
    addin = f"HKEY_CURRENT_USER\\Software\\Microsoft\\Office\\Outlook\\Addins\\{prog_id}"
    expect("Outlook loads the add-in at its start", '"LoadBehavior"=dword:00000003' in registered.get(addin, []))
    expect("no type library and no interface is registered",
           not any("TypeLib" in key or "Interface" in key for key in registered))

    expect("a second registration succeeds", regsvr32(library) == 0)
    expect("a second registration changes nothing", added(before, registry()) == registered)

    expect("the library unregisters itself", regsvr32(library, "/u") == 0)
    after = registry()
    expect(f"nothing is left behind: {sorted(added(before, after)) or sorted(added(after, before))}", after == before)
    expect("a second unregistration succeeds", regsvr32(library, "/u") == 0)

    for failure in failures:
        print(f"not so: {failure}")
    print(f"{len(registered)} keys were added and removed")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
