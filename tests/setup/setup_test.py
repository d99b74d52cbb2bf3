#!/usr/bin/env python3
"""Installs, upgrades, breaks and uninstalls with the real setup, and looks at every file and registry line around it.

    setup_test.py user|all|faults SETUP.exe OLDER-SETUP.exe [OutlookStandIn.exe Corvella.exe]

The older setup has a lower version and one file more. Each case works in a Wine prefix of its own: a registry that is
a copy, and files that are hard links, so that what a setup makes or replaces stays there.
"""
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import time

HERE = pathlib.Path(__file__).resolve().parent
sys.path[:0] = [str(HERE.parent / "testing"), str(HERE.parent / "outside")]
import drive_test  # noqa: E402
from drive_test import wait_until  # noqa: E402
from wine import Display, Prefix, windows_path  # noqa: E402

LOG = "Corvella-Outlook-setup.log"
OUTLOOK = "HKLM\\Software\\Microsoft\\Office\\11.0\\Outlook\\InstallRoot"
CLASS = "{6B0C1E52-3D8F-4C0A-9A5E-7F21C7B4D913}"
PRODUCT = "HKCU\\Software\\Quillmark"
ENTRY = "Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\CVOutlookAddIn"
DONE, FAILED, WRONG_OUTLOOK = 0, 2, 4
# The arguments of each scope, the part of the registry that is its own, and the usual folder.
SCOPES = {"user": ([], "HKCU", "users/root/AppData/Local/Programs/Corvella for Outlook"),
          "all": (["/AllUsers"], "HKLM", "Program Files/Corvella for Outlook")}
failures = []


def expect(what, as_expected):
    if not as_expected:
        failures.append(what)
        print(f"not so: {what}")


class World:
    """A Windows with an Outlook 2003 in its registry and nothing of ours."""

    def __init__(self, folder, scope, display=None):
        self.prefix = Prefix(folder, display)
        shared = pathlib.Path(os.path.realpath(self.prefix.folder / "drive_c")).parent
        for name, options in (("drive_c", "-al"), ("dosdevices", "-a")):
            (self.prefix.folder / name).unlink()
            subprocess.run(["cp", options, shared / name, self.prefix.folder / name], check=True)
        self.drive = self.prefix.folder / "drive_c"
        self.options, self.root, where = SCOPES[scope]
        self.place = self.drive / where
        self.forget()
        self.reg("add", OUTLOOK, "/v", "Path", "/d", "C:\\Office", "/f")
        self.reg("delete", PRODUCT, "/f")
        # Windows always has the user's classes; Wine makes them with the first one.
        self.reg("add", "HKCU\\Software\\Classes\\.corvella", "/f")
        self.reg("delete", "HKCU\\Software\\Classes\\.corvella", "/f")
        expect("the script host runs", drive_test.warm_script_host_up(self.prefix))

    def forget(self):
        """What other tests have registered, and stored in the folder of settings, in the prefix that this one copies."""
        for root in ("HKLM", "HKCU"):
            for key in ("CVOutlookAddIn.Connect", "CLSID\\" + CLASS, "Wow6432Node\\CLSID\\" + CLASS):
                self.reg("delete", f"{root}\\Software\\Classes\\{key}", "/f")
            self.reg("delete", root + "\\Software\\Microsoft\\Office", "/f")
        for folder in self.drive.glob("users/*/AppData/Roaming/Corvella"):
            shutil.rmtree(folder)

    def reg(self, *arguments):
        return self.prefix.run("reg", *arguments)

    def install(self, setup, *options, timeout=120):
        return self.prefix.ask(setup, "/S", *self.options, *options, timeout=timeout)[0]

    def start(self, setup, *options):
        return self.prefix.start(setup, "/S", *self.options, *options)

    def uninstall(self, *options):
        """The uninstaller goes on as a copy of itself in the folder of temporary files."""
        scope = "/AllUsers" if self.root == "HKLM" else "/CurrentUser"
        code = self.prefix.run(self.place / "Uninstall.exe", "/S", scope, *options)
        return code == 0 and wait_until(lambda: "Uninstalling" in self.log() and "Done." in self.log()) and \
            self.reg("query", f"{self.root}\\{ENTRY}") != 0 and not (self.place / "files.txt").exists()

    def files(self):
        """{path: its bytes' size and time} of everything but what a setup says is its log."""
        found = {}
        for path in sorted(self.drive.rglob("*")):
            name = path.relative_to(self.drive).as_posix()
            if path.is_symlink() or path.name == LOG or "/Temp/" in name:
                continue
            found[name] = path.stat().st_ino if path.is_file() else "folder"
        return found

    def state(self):
        return self.prefix.registry(), self.files()

    def log(self):
        logs = list(self.drive.glob(f"users/*/Temp/{LOG}"))
        return logs[0].read_text("utf-16", "ignore") if logs else ""


def same(before, after, what):
    for kind, old, new in zip(("registry", "files"), before, after):
        changed = sorted(key for key in {**old, **new} if old.get(key) != new.get(key))
        expect(f"{what}: the {kind} is as before: {changed[:8]}", not changed)


def is_installed(world, what, version):
    expect(f"{what}: Apps and Features has it",
           world.reg("query", f"{world.root}\\{ENTRY}", "/v", "DisplayVersion") == 0)
    listed = (world.place / "files.txt").read_text().splitlines() if (world.place / "files.txt").exists() else []
    expect(f"{what}: every file of its list is there",
           len(listed) > 20 and all((world.place / name.replace("\\", "/")).is_file() for name in listed))
    expect(f"{what}: nothing is left of replacing", not list(world.place.glob("~new*")))
    expect(f"{what}: it is {version}", f'"DisplayVersion"="{version}"' in
           "\n".join(line for key, lines in world.prefix.registry().items() if key.endswith("CVOutlookAddIn") for line in lines))


def registered(world, what):
    """Both views name the DLL of their bitness, Outlook's key stands in this scope, the other scope has nothing."""
    registry = world.prefix.registry()
    of_ours = {key: lines for key, lines in registry.items() if "CVOutlookAddIn" in key or any("CVOutlookAddIn" in line for line in lines)}
    libraries = sorted(line for key, lines in of_ours.items() if key.endswith("InprocServer32") for line in lines if line.startswith("@="))
    # Wine has one CLSID for both views in the user's part, where the 32-bit library is written last.
    if world.root == "HKLM":
        expect(f"{what}: one library a view: {libraries}",
               len(libraries) == 2 and sum("x64" in line for line in libraries) == 1)
    else:
        expect(f"{what}: the 32-bit library: {libraries}", len(libraries) == 1 and "x64" not in libraries[0])
    root = "HKEY_LOCAL_MACHINE" if world.root == "HKLM" else "HKEY_CURRENT_USER"
    expect(f"{what}: only its own scope is written: {sorted(of_ours)}", of_ours and all(key.startswith(root) for key in of_ours))
    addins = [key for key in of_ours if key.endswith("Addins\\CVOutlookAddIn.Connect")]
    expect(f"{what}: Outlook loads it at its start: {addins}",
           addins and all('"LoadBehavior"=dword:00000003' in of_ours[key] for key in addins))


def in_use(world, program, corvella, what):
    """The stand-in finds the add-in by its registration; a script in another process uses it."""
    folder = world.prefix.folder.parent / "corvella"
    folder.mkdir(exist_ok=True)
    shutil.copy(corvella, folder / "Corvella.exe")
    world.prefix.run(program, "/regserver")
    world.reg("add", PRODUCT + "\\Corvella", "/v", "Path", "/d", windows_path(folder), "/f")
    drive_test.drive(world.prefix, "2003", program, folder, lambda line, ok: expect(f"{what}: {line}", ok))
    wait_until(lambda: not drive_test.programs_in(folder))
    world.prefix.run(program, "/unregserver")
    world.reg("delete", PRODUCT + "\\Corvella", "/v", "Path", "/f")
    shutil.rmtree(folder)


def play_scope(scope, setup, older, program, corvella):
    with tempfile.TemporaryDirectory(dir=HERE.parent.parent / "build") as folder, Display() as display:
        world = World(folder, scope, display)
        before = world.state()
        expect("a silent setup installs", world.install(older) == DONE)
        is_installed(world, "the older version", "1.9.0")
        registered(world, "the older version")

        # Upgraded while a host has the DLL loaded.
        host = drive_test.StandIn(world.prefix, program, "2003")
        expect("the host runs", host.ready())
        expect("an upgrade over a running host", world.install(setup) == DONE)
        host.end(0)
        world.prefix.registry()  # ends every program of the prefix
        world.reg("delete", PRODUCT + "\\Corvella\\OlAddIn", "/v", "Active", "/f")  # else the next start asks about it
        is_installed(world, "the upgrade", VERSION)
        registered(world, "the upgrade")
        expect("a file that only the older version had is gone", not (world.place / "Obsolete.txt").exists())
        in_use(world, program, corvella, "the upgrade")

        used = world.state()
        expect("a second setup of the same version", world.install(setup) == DONE)
        now = world.prefix.registry()
        changed = sorted(key for key in {**used[0], **now} if used[0].get(key) != now.get(key))
        expect(f"it changes no registration: {changed}", not changed)

        expect("it uninstalls", world.uninstall())
        expect("its folder is gone", wait_until(lambda: not world.place.exists(), 10))
        left = world.prefix.registry()
        kept = sorted(key for key in left if before[0].get(key) != left[key])
        expect(f"the settings alone are left: {kept}", kept and all("Quillmark" in key for key in kept))

        expect("it installs again", world.install(setup) == DONE)
        expect("it uninstalls with the settings", world.uninstall("/Settings"))
        wait_until(lambda: not world.place.exists(), 10)
        same(before, world.state(), "after uninstalling with the settings")


def fails(world, what, setup, *options, code=FAILED):
    before = world.state()
    found = world.install(setup, *options)
    expect(f"{what}: ends with {code}: {found}", found == code)
    same(before, world.state(), what)
    expect(f"{what}: the log tells it", len(world.log()) > 40)


def killed(world, what, setup, step):
    process = world.start(setup, f"/FailAt={step}:wait")
    expect(f"{what}: it waits there", wait_until(lambda: f"waiting after {step}" in world.log()))
    subprocess.run(["wineserver", "-k"], env=world.prefix.environment)
    process.wait()


def play_faults(setup, older):
    with tempfile.TemporaryDirectory(dir=HERE.parent.parent / "build") as folder:
        world = World(folder, "user")
        for step in ("unpack", "swap", "register"):
            fails(world, f"a first installation that fails after {step}", setup, f"/FailAt={step}")
        fails(world, "a folder that cannot be made", setup, "/D=Z:\\proc\\none")
        world.reg("delete", OUTLOOK, "/f")
        fails(world, "a machine without Outlook", setup, code=WRONG_OUTLOOK)
        expect("/Force installs there all the same", world.install(older, "/Force") == DONE)
        world.reg("add", OUTLOOK, "/v", "Path", "/d", "C:\\Office", "/f")
        for step in ("unpack", "swap", "register"):
            fails(world, f"an upgrade that fails after {step}", setup, f"/FailAt={step}")
        is_installed(world, "after failed upgrades", "1.9.0")

        for step in ("unpack", "swap", "register"):
            killed(world, f"an upgrade that is killed after {step}", setup, step)
            expect(f"a second run mends what was killed after {step}", world.install(older, "/Force") == DONE)
            is_installed(world, f"after a kill at {step}", "1.9.0")
            registered(world, f"after a kill at {step}")

        expect("the upgrade", world.install(setup) == DONE)
        fails(world, "an older version over a newer one", older)
        expect("/Force puts the older one there", world.install(older, "/Force") == DONE)
        is_installed(world, "the older one", "1.9.0")
        full_disk(folder, world, setup)


def full_disk(folder, world, setup):
    """A disk of 300 KB, where the machine lets us make one."""
    disk = pathlib.Path(folder) / "disk"
    disk.mkdir()
    if subprocess.run(["mount", "-t", "tmpfs", "-o", "size=300k", "tmpfs", disk], capture_output=True).returncode != 0:
        print("no small disk can be made here: the case is left out")
        return
    try:
        (disk / "of the user.txt").write_text("kept")
        found = world.install(setup, f"/D={windows_path(disk)}")
        expect(f"a full disk: ends with {FAILED}: {found}", found == FAILED)
        expect("a full disk: nothing of ours stays there", [path.name for path in disk.iterdir()] == ["of the user.txt"])
    finally:
        subprocess.run(["umount", disk])


def main():
    global VERSION
    case, setup, older = sys.argv[1], pathlib.Path(sys.argv[2]), pathlib.Path(sys.argv[3])
    VERSION = setup.name.split("-")[-2]
    begun = time.monotonic()
    if case == "faults":
        play_faults(setup, older)
    else:
        play_scope(case, setup, older, *(pathlib.Path(os.path.abspath(argument)) for argument in sys.argv[4:6]))
    print(f"{len(failures)} not so, {time.monotonic() - begun:.0f} s")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
