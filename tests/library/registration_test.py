#!/usr/bin/env python3
"""Registers and unregisters a library with Wine's own 32-bit regsvr32 and compares what the registry holds.

    registration_test.py ProgID library

It works on a copy of the prefix's registry, in a prefix that shares everything else, so that no other test writes
into it. What is compared are the Software branches of the user and of the machine as Wine stores them, but for what
Wine itself keeps there.
"""
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
IDL = ROOT / "src" / "resources" / "CVOutlookAddIn.idl"
BRANCHES = {"user.reg": "HKEY_CURRENT_USER", "system.reg": "HKEY_LOCAL_MACHINE"}
OF_OTHERS = ("\\Software\\Wine",)


def windows_path(path):
    return "Z:" + str(path).replace("/", "\\")


class Prefix:
    """A prefix with a registry of its own."""

    def __init__(self, folder):
        # The usual environment, made ready by the script that every program starts with.
        told = subprocess.run(["bash", "-c", f". '{ROOT}/scripts/wine-env.sh' && env -0"], capture_output=True, text=True,
                              check=True).stdout
        self.environment = dict(line.split("=", 1) for line in told.split("\0") if line)
        shared = pathlib.Path(self.environment["WINEPREFIX"])
        self.folder = pathlib.Path(folder) / "prefix"
        self.folder.mkdir()
        for name in ("drive_c", "dosdevices"):
            (self.folder / name).symlink_to(shared / name)
        for name in ("system.reg", "user.reg", "userdef.reg", ".update-timestamp"):
            shutil.copy(shared / name, self.folder)
        self.environment["WINEPREFIX"] = str(self.folder)

    def run(self, *command):
        return subprocess.run(command, env=self.environment, stdout=subprocess.DEVNULL,
                              stderr=subprocess.DEVNULL).returncode

    def regsvr32(self, library, *options):
        return self.run("wine", "C:\\windows\\syswow64\\regsvr32.exe", *options, "/s", windows_path(library))

    def registry(self):
        """{key: its lines of values}, once everything is written."""
        self.run("wineserver", "-k")
        self.run("wineserver", "-w")
        keys = {}
        for file, branch in BRANCHES.items():
            lines = []
            for line in (self.folder / file).read_text("latin-1").splitlines():
                if line.startswith("["):
                    key = line[1:line.rindex("]")].replace("\\\\", "\\")
                    lines = keys.setdefault(f"{branch}\\{key}", [])
                elif line and not line.startswith("#"):
                    lines.append(line)
        return {key: lines for key, lines in keys.items()
                if "\\Software\\" in key and not any(other in key for other in OF_OTHERS)}


def added(before, after):
    return {key: lines for key, lines in after.items() if before.get(key) != lines}


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
