#!/usr/bin/env python3
"""Installs, upgrades, breaks and uninstalls with the real setup, and looks at every file and registry line around it.

    setup_test.py prepare WORLD                     makes the Windows that the cases begin with, from build/wine-fresh
    setup_test.py CASE WORLD SETUP.exe OLDER-SETUP.exe OutlookStandIn.exe Corvella.exe setup_obstacle.exe
                                                    plays the tests of one case (see CASES), each in the world that the
                                                    one before has left

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
BUILD = HERE.parent.parent / "build"
sys.path[:0] = [str(HERE.parent / "testing"), str(HERE.parent / "outside")]
import drive_test  # noqa: E402
from drive_test import wait_until  # noqa: E402
from wine import Display, Prefix, lines_of, windows_path  # noqa: E402

LOG = "Corvella-Outlook-setup.log"
OFFICE = "HKLM\\Software\\Microsoft\\Office"
OUTLOOK = OFFICE + "\\11.0\\Outlook\\InstallRoot"
CLASS = "{6B0C1E52-3D8F-4C0A-9A5E-7F21C7B4D913}"
ADDIN = "Software\\Microsoft\\Office\\Outlook\\Addins\\CVOutlookAddIn.Connect"
PRODUCT = "HKCU\\Software\\Quillmark\\Corvella"
SETTINGS = "users/root/AppData/Roaming/Corvella/corvella.ini"
ENTRY = "Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\CVOutlookAddIn"
FONTS = r"\CurrentVersion\Fonts"
RUN_ONCE = "HKCU\\Software\\Microsoft\\Windows\\CurrentVersion\\RunOnce"
DONE, CANCELLED, FAILED, OUTLOOK_RUNS, WRONG_OUTLOOK = 0, 1, 2, 3, 4
STEPS = ("unpack", "swap", "register", "entry")
# The arguments of each scope, the part of the registry that is its own, and the usual folder.
SCOPES = {"user": ([], "HKCU", "users/root/AppData/Local/Programs/Corvella for Outlook"),
          "all": (["/AllUsers"], "HKLM", "Program Files/Corvella for Outlook")}
failures = []
sentence = ""


def expect(what, as_expected):
    if not as_expected:
        failures.append(what)
        print(f"not so: {sentence}: {what}")


class World:
    """A Windows with an Outlook 2003 in its registry and nothing of ours; and the programs that act in it."""

    def __init__(self, folder, scope, template, programs, display):
        self.setup, self.older, self.host, self.corvella, self.obstacle = programs
        self.version = self.setup.name.split("-")[-2]
        self.folder = pathlib.Path(folder)
        self.display = display
        self.prefix = Prefix(folder, display, copy_of=template)
        self.drive = self.prefix.folder / "drive_c"
        self.choose(scope)
        self.place = self.drive / SCOPES[scope][2]
        self.remembered = None

    def choose(self, scope):
        self.scope = scope
        self.options, self.root, where = SCOPES[scope]
        self.place = self.drive / where

    def reg(self, *arguments):
        return self.prefix.run("reg", *arguments)

    def value(self, key, name, *options):
        """A value's data as text; None where there is none."""
        code, lines = self.prefix.ask("reg", "query", key, "/v", name, *options)
        found = [line.split("    ", 3)[-1] for line in lines if line.startswith("    " + name)]
        return found[0] if code == 0 and found else None

    def install(self, setup=None, *options, timeout=120):
        """The exit code; `said` has the lines that it wrote to its console."""
        code, self.said = self.prefix.ask(setup or self.setup, "/S", *self.options, *options, timeout=timeout)
        return code

    def uninstall(self, *options):
        """The uninstaller goes on as a copy of itself in the folder of temporary files."""
        for log in self.logs():
            log.unlink()
        scope = "/AllUsers" if self.root == "HKLM" else "/CurrentUser"
        code = self.prefix.run(self.place / "Uninstall.exe", "/S", scope, *options)
        return code == 0 and wait_until(lambda: "Uninstalling" in self.log() and "Done." in self.log()) and \
            self.reg("query", f"{self.root}\\{ENTRY}") != 0 and not (self.place / "files.txt").exists()

    def hold(self, *command):
        """A program that stands in the way, once it does; None where it does not come to that."""
        with tempfile.TemporaryFile() as output:
            process = self.prefix.start(self.obstacle, *command, output=output)
            holds = wait_until(lambda: "ready" in lines_of(output) or process.poll() not in (None, 0), 20)
            return process if holds and "ready" in lines_of(output) else None

    def restart(self):
        """Ends every program, and lets Windows do what it keeps for its next start and the user's next logon. Wine runs
        what the machine keeps for that, not what the user does."""
        self.prefix.registry()
        command = self.value(RUN_ONCE, "CVOutlookAddIn")
        if command:
            self.reg("delete", RUN_ONCE, "/v", "CVOutlookAddIn", "/f")
            self.reg("add", RUN_ONCE.replace("HKCU", "HKLM"), "/v", "CVOutlookAddIn", "/d", command, "/f")
        self.prefix.run("wineboot")

    def files(self):
        """{path: its inode} of everything but what a setup says is its log."""
        found = {}
        for path in sorted(self.drive.rglob("*")):
            name = path.relative_to(self.drive).as_posix()
            if path.is_symlink() or path.name == LOG or "/Temp/" in name:
                continue
            found[name] = path.stat().st_ino if path.is_file() else "folder"
        return found

    def registry(self):
        """Without the fonts of the machine, which Wine lists anew in each of its starts."""
        return {key: lines for key, lines in self.prefix.registry().items() if not key.endswith(FONTS)}

    def state(self):
        return self.registry(), self.files()

    def logs(self):
        return list(self.drive.glob(f"users/*/Temp/{LOG}"))

    def log(self):
        return "".join(log.read_text("utf-16", "ignore") for log in self.logs())


def prepare(folder):
    shutil.rmtree(folder, ignore_errors=True)
    folder.mkdir(parents=True)
    prefix = Prefix(folder, copy_of=BUILD / "wine-fresh")
    prefix.run("reg", "add", OUTLOOK, "/v", "Path", "/d", "C:\\Office", "/f")
    # Windows always has these; Wine makes each with the first key in it.
    for key in ("HKCU\\Software\\Classes", "HKCU\\Software\\Microsoft\\Windows\\CurrentVersion\\RunOnce", "HKCU\\" + ADDIN):
        prefix.run("reg", "add", key + "\\Corvella", "/f")
        prefix.run("reg", "delete", key + "\\Corvella", "/f")
    prefix.run("reg", "delete", "HKCU\\Software\\Microsoft\\Office", "/f")
    warm = drive_test.warm_script_host_up(prefix)
    prefix.run("wineboot")
    prefix.registry()
    return 0 if warm else 1


def differences(old, new):
    return sorted(key for key in {**old, **new} if old.get(key) != new.get(key))


def same(before, after, what):
    for kind, old, new in zip(("registry", "files"), before, after):
        changed = differences(old, new)
        expect(f"{what}: the {kind} is as before: {changed[:8]}", not changed)


def is_installed(world, what, version):
    entry = next((lines for key, lines in world.registry().items()
                  if key.endswith("CVOutlookAddIn") and "\\Uninstall\\" in key
                  and key.startswith({"HKCU": "HKEY_CURRENT_USER", "HKLM": "HKEY_LOCAL_MACHINE"}[world.root])), [])
    for name in ("DisplayName", "Publisher", "DisplayIcon", "EstimatedSize", "UninstallString", "InstallLocation"):
        expect(f"{what}: the entry has {name}", any(line.startswith(f'"{name}"=') for line in entry))
    expect(f"{what}: it is {version}", f'"DisplayVersion"="{version}"' in entry)
    listed = (world.place / "files.txt").read_text().splitlines() if (world.place / "files.txt").exists() else []
    expect(f"{what}: every file of its list is there",
           len(listed) > 20 and all((world.place / name.replace("\\", "/")).is_file() for name in listed))
    expect(f"{what}: nothing is left of replacing", not list(world.place.glob("~new*")))
    expect(f"{what}: nothing is left of remembering",
           world.reg("query", f"{world.root}\\Software\\CVOutlookAddIn Setup", "/reg:32") != 0)


def of_ours(registry):
    return {key: lines for key, lines in registry.items()
            if "CVOutlookAddIn" in key or any("CVOutlookAddIn" in line for line in lines)}


def registered(world, what):
    """Both views name the DLL of their bitness, Outlook's key stands in this scope, the other scope has nothing."""
    ours = of_ours(world.registry())
    libraries = sorted(line for key, lines in ours.items() if key.endswith("InprocServer32") for line in lines
                       if line.startswith("@="))
    # Wine has one CLSID for both views in the user's part, where the 32-bit library is written last.
    if world.root == "HKLM":
        expect(f"{what}: one library a view: {libraries}",
               len(libraries) == 2 and sum("x64" in line for line in libraries) == 1)
    else:
        expect(f"{what}: the 32-bit library: {libraries}", len(libraries) == 1 and "x64" not in libraries[0])
    root = "HKEY_LOCAL_MACHINE" if world.root == "HKLM" else "HKEY_CURRENT_USER"
    ours = {key: lines for key, lines in ours.items() if not key.endswith("RunOnce")}
    expect(f"{what}: only its own scope is written: {sorted(ours)}", ours and all(key.startswith(root) for key in ours))
    addins = [key for key in ours if key.endswith("Addins\\CVOutlookAddIn.Connect")]
    expect(f"{what}: Outlook loads it at its start: {addins}",
           addins and all('"LoadBehavior"=dword:00000003' in ours[key] for key in addins))


def settings(world):
    """What the user has set: lines of the registry and the file's bytes."""
    registry = {key: lines for key, lines in world.registry().items() if "\\Quillmark" in key}
    file = world.drive / SETTINGS
    return registry, file.read_bytes() if file.exists() else None


def make_settings(world):
    world.reg("add", PRODUCT + "\\OlAddIn", "/v", "TextDelay", "/d", "7", "/f")
    world.reg("add", PRODUCT + "\\Outlook", "/v", "ChangedC", "/d", ";0001", "/f")
    (world.drive / SETTINGS).parent.mkdir(parents=True, exist_ok=True)
    (world.drive / SETTINGS).write_text("[OlAddIn]\nAnswer=1\n")


def run_as_outlook(world):
    """The stand-in under Outlook's file name, with the installed add-in loaded."""
    folder = world.folder / "office"
    folder.mkdir(exist_ok=True)
    outlook = folder / "OUTLOOK.EXE"
    if not outlook.exists():
        shutil.copy(world.host, outlook)
    host = drive_test.StandIn(world.prefix, outlook, "2003", ribbon=False)
    expect("the host runs", host.ready())
    return host


def forget_run(world):
    world.reg("delete", PRODUCT + "\\OlAddIn", "/v", "Active", "/f")  # else the next start asks about it


# --- One scope, from the first installation to the last line in the registry ---

def begins(world):
    """nothing of the add-in is there before the first installation"""
    world.remembered = world.state()
    expect("no key of ours", not of_ours(world.remembered[0]))
    expect("no setting of ours", not any("Quillmark" in key for key in world.remembered[0]))


def takes_over_from_regsvr32(world):
    """a silent setup installs over what regsvr32 has registered, in its own scope alone"""
    library = windows_path(world.folder / "CVOutlookAddIn.dll")
    if world.scope == "all":  # Wine's user is an administrator
        world.reg("add", f"HKLM\\Software\\Classes\\CLSID\\{CLASS}\\InprocServer32", "/ve", "/d", library, "/f", "/reg:32")
    else:
        world.reg("add", f"HKCU\\Software\\Classes\\CLSID\\{CLASS}\\InprocServer32", "/ve", "/d", library, "/f", "/reg:32")
    world.reg("add", "HKCU\\" + ADDIN, "/v", "LoadBehavior", "/t", "REG_DWORD", "/d", "2", "/f")
    expect("it installs", world.install(world.older) == DONE)
    expect(f"it prints where its log is: {world.said}", any(line.strip().endswith(LOG) for line in world.said))
    is_installed(world, "the older version", "1.9.0")
    registered(world, "the older version")


def upgrades_over_a_running_outlook(world):
    """an upgrade while Outlook runs keeps settings and lists, and is whole at Outlook's next start"""
    make_settings(world)
    kept = settings(world)
    host = run_as_outlook(world)
    expect("it installs", world.install() == DONE)
    expect("its log says that Outlook runs", "Outlook runs" in world.log())
    expect("what Outlook uses lies aside", list(world.place.glob("~old/*.dll")))
    host.end(0)
    world.prefix.registry()  # ends every program of the prefix
    forget_run(world)
    is_installed(world, "the upgrade", world.version)
    registered(world, "the upgrade")
    expect("a file that only the older version had is gone", not (world.place / "Obsolete.txt").exists())
    now = settings(world)
    expect("the settings file is as it was", now[1] == kept[1])
    lost = [line for key, lines in kept[0].items() for line in lines if line not in now[0].get(key, [])]
    expect(f"no value in the registry is lost: {lost}", not lost)


def cleans_up_at_the_restart(world):
    """what Outlook still used after an upgrade is gone at the next start of Windows or the next logon"""
    world.restart()
    expect("the old files are gone", wait_until(lambda: not list(world.place.glob("~*")), 20))
    is_installed(world, "the upgrade", world.version)


def is_used(world):
    """the stand-in finds the installed add-in by its registration, and a script plays the day's main stations with it"""
    folder = world.folder / "corvella"
    folder.mkdir(exist_ok=True)
    shutil.copy(world.corvella, folder / "Corvella.exe")
    world.prefix.run(world.host, "/regserver")
    world.reg("add", PRODUCT, "/v", "Path", "/d", windows_path(folder), "/f")
    world.reg("delete", PRODUCT + "\\Outlook", "/v", "ChangedC", "/f")
    drive_test.drive(world.prefix, "2003", world.host, folder, False, expect)
    wait_until(lambda: not drive_test.programs_in(folder))
    world.prefix.run(world.host, "/unregserver")
    world.reg("delete", PRODUCT, "/v", "Path", "/f")
    shutil.rmtree(folder)
    make_settings(world)


def installs_again(world):
    """a second setup of the same version changes no registration"""
    used = world.registry()
    expect("it installs", world.install() == DONE)
    changed = differences(used, world.registry())
    expect(f"nothing is changed: {changed}", not changed)


def uninstalls_under_a_running_outlook(world):
    """uninstalling while Outlook runs takes the registration away at once, and the files at the next start"""
    host = run_as_outlook(world)
    expect("it uninstalls", world.uninstall())
    expect("what Outlook uses lies aside", list(world.place.glob("~gone/*")))
    host.end(0)
    forget_run(world)
    world.restart()
    expect("its folder is gone", wait_until(lambda: not world.place.exists(), 20))
    same((world.remembered[0],), ({key: lines for key, lines in world.registry().items() if "Quillmark" not in key},),
         "but for the settings")
    left = settings(world)
    expect("options, lists and the settings file stay",
           any('"TextDelay"="7"' in lines for lines in left[0].values()) and
           any(line.startswith('"ChangedC"') for lines in left[0].values() for line in lines) and left[1] is not None)


def takes_folder_and_language(world):
    """/D= names the folder, also one with blanks, /LANG= the language, and uninstalling keeps to both"""
    usual, world.place = world.place, world.drive / "Own programs" / "Corvella for me"
    folder = "/D=C:\\Own programs\\Corvella for me".split()  # Windows knows no quotes here
    expect("it installs", world.install(None, "/LANG=1031", *folder) == DONE)
    is_installed(world, "in a folder of one's own", world.version)
    expect("the language is remembered", world.value(f"{world.root}\\{ENTRY}", "Language", "/reg:32") == "1031")
    (world.place / "of the user.txt").write_text("kept")
    expect("it uninstalls", world.uninstall())
    expect("a file of the user stays, alone", [path.name for path in world.place.iterdir()] == ["of the user.txt"])
    shutil.rmtree(world.place.parent)
    world.place = usual


def keeps_what_corvella_needs(world):
    """/Settings removes the add-in's own settings, and what Corvella reads only where no Corvella is installed"""
    expect("it installs", world.install() == DONE)
    folder = world.folder / "corvella"
    folder.mkdir()
    shutil.copy(world.corvella, folder / "Corvella.exe")
    world.reg("add", PRODUCT, "/v", "Path", "/d", windows_path(folder), "/f")
    expect("it uninstalls", world.uninstall("/Settings"))
    registry, file = settings(world)
    expect(f"the add-in's own are gone: {sorted(registry)}", not any(key.endswith("OlAddIn") for key in registry))
    expect("the lists stay", any(line.startswith('"ChangedC"') for lines in registry.values() for line in lines))
    expect("the settings file stays", file is not None)
    world.reg("delete", PRODUCT, "/v", "Path", "/f")
    shutil.rmtree(folder)


def leaves_no_trace(world):
    """after uninstalling with /Settings the registry and the files are as before the first installation, line by line"""
    expect("it installs", world.install() == DONE)
    for key, name in (("16.0\\Outlook\\AddInLoadTimes", "CVOutlookAddIn.Connect"),
                      ("15.0\\Outlook\\Resiliency\\CrashingAddinList", "CVOutlookAddIn.Connect"),
                      ("16.0\\Common\\CustomUIValidationCache", "CVOutlookAddIn.Connect.Microsoft.Outlook.Explorer")):
        world.reg("add", f"HKCU\\Software\\Microsoft\\Office\\{key}", "/v", name, "/d", "1", "/f")
        world.reg("add", f"HKCU\\Software\\Microsoft\\Office\\{key}", "/v", "Other.Connect", "/d", "1", "/f")
    expect("it uninstalls", world.uninstall("/Settings"))
    notes = [line for key, lines in world.registry().items() if "\\Office\\1" in key for line in lines]
    expect(f"Outlook's notes about other add-ins alone stay: {notes}",
           sum("Other.Connect" in line for line in notes) == 3 and not any("CVOutlookAddIn" in line for line in notes))
    world.reg("delete", "HKCU\\Software\\Microsoft\\Office", "/f")
    wait_until(lambda: not world.place.exists(), 10)
    same(world.remembered, world.state(), "afterwards")


# --- What the setup finds ---

def found_outlook(world):
    """What the setup's log says of Outlook; it stops before it has changed anything."""
    code = world.install(None, "/FailAt=start")
    line = next((line for line in world.log().splitlines() if ", Outlook " in line), "")
    return code, line.partition(", Outlook ")[2].partition(",")[0]


def finds_every_outlook(world):
    """the setup finds every Outlook from 9 to 16, of 32 and 64 bits, and those of Click-to-Run"""
    places = [(f"{OFFICE}\\{version}.0\\Outlook\\InstallRoot", "Path", bits, version)
              for version in (9, 10, 11, 12, 14, 15, 16) for bits in (32, 64) if bits == 32 or version >= 14]
    virtual = "REGISTRY\\MACHINE\\Software"
    places += [(f"{OFFICE}\\ClickToRun\\{virtual}\\Microsoft\\Office\\16.0\\Outlook\\InstallRoot", "Path", 64, 16),
               (f"{OFFICE}\\ClickToRun\\{virtual}\\Wow6432Node\\Microsoft\\Office\\16.0\\Outlook\\InstallRoot", "Path", 64, 16),
               (f"{OFFICE}\\15.0\\ClickToRun\\{virtual}\\Microsoft\\Office\\15.0\\Outlook\\InstallRoot", "Path", 32, 15),
               ("HKLM\\Software\\Classes\\Outlook.Application\\CurVer", None, 32, 16)]
    world.reg("delete", OFFICE, "/f", "/reg:32")
    for key, name, bits, version in places:
        data = "C:\\Office" if name else f"Outlook.Application.{version}"
        world.reg("add", key, *(["/v", name] if name else ["/ve"]), "/d", data, "/f", f"/reg:{bits}")
        expect(f"{key} of {bits} bits", found_outlook(world) == (FAILED, str(version)))
        world.reg("delete", key if name else key.rpartition("\\")[0], "/f", f"/reg:{bits}")


def says_what_is_missing(world):
    """without an Outlook, or with the new one alone, a silent setup ends with 4 and says so, and /Force goes on"""
    expect("no Outlook", found_outlook(world) == (WRONG_OUTLOOK, "") and "There is no Outlook." in world.log())
    new = world.drive / "users/root/AppData/Local/Microsoft/WindowsApps/olk.exe"
    new.parent.mkdir(parents=True, exist_ok=True)
    new.write_bytes(b"")
    expect("the new Outlook", found_outlook(world) == (WRONG_OUTLOOK, "new") and "only the new Outlook" in world.log())
    expect("/Force goes on", world.install(None, "/Force", "/FailAt=start") == FAILED)
    shutil.rmtree(new.parent)
    world.reg("add", OUTLOOK, "/v", "Path", "/d", "C:\\Office", "/f")


def takes_corvellas_folder(world):
    """Corvella's folder is taken from either root or from /Corvella=, may be left out, and goes with the uninstallation"""
    before = world.registry()
    folder = world.folder / "corvella"
    folder.mkdir()
    shutil.copy(world.corvella, folder / "Corvella.exe")
    there = windows_path(folder)
    expect("without one", world.install() == DONE and world.value(PRODUCT, "Path") is None)
    expect("from the command line", world.install(None, f"/Corvella={there}") == DONE and world.value(PRODUCT, "Path") == there)
    expect("it uninstalls", world.uninstall())
    changed = differences(before, world.registry())
    expect(f"the folder goes with it: {changed}", not changed)
    machine = PRODUCT.replace("HKCU", "HKLM")
    for bits in (32, 64):
        world.reg("add", machine, "/v", "Path", "/d", there, "/f", f"/reg:{bits}")
        expect(f"from the machine's part, {bits} bits", world.install() == DONE and world.value(PRODUCT, "Path") == there)
        expect("it uninstalls", world.uninstall() and world.value(machine, "Path", f"/reg:{bits}") == there)
        world.reg("delete", "HKLM\\Software\\Quillmark", "/f", f"/reg:{bits}")
    world.reg("add", PRODUCT, "/v", "Path", "/d", "C:\\Elsewhere", "/f")
    expect("what is registered stays", world.install(None, f"/Corvella={there}") == DONE)
    expect("it uninstalls", world.uninstall() and world.value(PRODUCT, "Path") == "C:\\Elsewhere")
    world.reg("delete", "HKCU\\Software\\Quillmark", "/f")
    world.choose("all")
    expect("for all users", world.install(None, f"/Corvella={there}") == DONE)
    expect("of both bitnesses", all(world.value(machine, "Path", f"/reg:{bits}") == there for bits in (32, 64)))
    expect("it uninstalls", world.uninstall())
    world.choose("user")
    changed = differences(before, world.registry())
    expect(f"nothing is left: {changed}", not changed)


def names_the_other_scope(world):
    """an installation of the other scope is named in the log, and each is whole without the other"""
    before = world.state()
    expect("for this user", world.install(world.older) == DONE)
    world.choose("all")
    expect("for all users", world.install() == DONE)
    expect("the other one is named", "1.9.0 is installed in C:\\users\\root" in world.log())
    is_installed(world, "for all users", world.version)
    world.choose("user")
    is_installed(world, "for this user", "1.9.0")
    expect("this user's is uninstalled", world.uninstall())
    world.choose("all")
    is_installed(world, "for all users alone", world.version)
    registered(world, "for all users alone")
    expect("the other one is uninstalled", world.uninstall())
    wait_until(lambda: not world.place.exists(), 10)
    world.choose("user")
    same(before, world.state(), "without both")


# --- Faults ---

def fails(world, what, setup, *options, code=FAILED, hold=None):
    before = world.state()
    held = world.hold(*hold) if hold else None
    expect(f"{what}: something stands in the way", held or not hold)
    found = world.install(setup, *options)
    expect(f"{what}: ends with {code}: {found}", found == code)
    said = world.log()
    same(before, world.state(), what)
    told = ("Failed: ", "What was there is back.") if code == FAILED and setup == world.setup else ("/Force",)
    expect(f"{what}: the log tells it: {said}", all(line in said for line in told))
    expect(f"{what}: its path is printed", any(line.strip().endswith(LOG) for line in world.said))
    if held:
        held.wait()


def fails_at_first(world):
    """a first installation that fails after any step leaves nothing"""
    for step in STEPS:
        fails(world, f"after {step}", world.setup, f"/FailAt={step}")


def cannot_write(world):
    """a folder that cannot be written ends the setup with 2"""
    fails(world, "a folder that cannot be made", world.setup, "/D=Z:\\proc\\none")


def fails_as_upgrade(world):
    """an upgrade that fails after any step puts back files and registration as they were"""
    expect("the older version", world.install(world.older) == DONE)
    world.reg("add", "HKCU\\" + ADDIN, "/v", "Description", "/d", "an older text", "/f")
    world.reg("add", "HKCU\\" + ADDIN, "/v", "LoadBehavior", "/t", "REG_DWORD", "/d", "2", "/f")
    world.reg("add", "HKCU\\" + ADDIN, "/v", "Of the user", "/d", "kept", "/f")
    for step in STEPS:
        fails(world, f"after {step}", world.setup, f"/FailAt={step}")
    is_installed(world, "afterwards", "1.9.0")


def finds_a_locked_file(world):
    """a file that nobody may rename ends an upgrade with 2, and the older version is whole again"""
    fails(world, "a locked library", world.setup, hold=("lock", windows_path(world.place / "CVOutlookAddIn.dll")))
    fails(world, "a locked text", world.setup, hold=("lock", windows_path(world.place / "English.lng")))
    is_installed(world, "afterwards", "1.9.0")


def finds_a_closed_registry(world):
    """a registry that refuses a key ends an upgrade with 2, and the older version is whole again"""
    for key in (f"Software\\Classes\\CLSID\\{CLASS}\\InprocServer32", ADDIN, ENTRY):
        fails(world, key, world.setup, hold=("deny", key))
    is_installed(world, "afterwards", "1.9.0")


def asks_before_a_downgrade(world):
    """an older version over a newer one ends with 2 when silent, and /Force puts it there"""
    expect("the upgrade", world.install() == DONE)
    fails(world, "without /Force", world.older)
    expect("with /Force", world.install(world.older, "/Force") == DONE)
    is_installed(world, "the older one", "1.9.0")


def finds_a_full_disk(world):
    """a full disk ends the setup with 2, and nothing of it stays there"""
    disk = world.folder / "disk"
    disk.mkdir()
    if subprocess.run(["mount", "-t", "tmpfs", "-o", "size=300k", "tmpfs", disk], capture_output=True).returncode != 0:
        print("no small disk can be made here: the case is left out")
        return
    try:
        (disk / "of the user.txt").write_text("kept")
        found = world.install(None, f"/D={windows_path(disk)}")
        expect(f"it ends with {FAILED}: {found}", found == FAILED)
        expect("nothing of ours stays there", [path.name for path in disk.iterdir()] == ["of the user.txt"])
    finally:
        subprocess.run(["umount", disk])


def kill_after(world, step):
    process = world.prefix.start(world.setup, "/S", *world.options, f"/FailAt={step}:wait")
    expect(f"it waits after {step}", wait_until(lambda: f"waiting after {step}" in world.log()))
    subprocess.run(["wineserver", "-k"], env=world.prefix.environment)
    process.wait()


def is_killed_at_first(world):
    """a first installation that is killed in the middle is mended by a second run"""
    kill_after(world, "register")
    expect("it installs", world.install(world.older, "/Force") == DONE)
    is_installed(world, "the second run", "1.9.0")
    registered(world, "the second run")


def is_killed_as_upgrade(world):
    """an upgrade that is killed after any step is mended by a second run"""
    for step in STEPS:
        kill_after(world, step)
        expect(f"after {step}", world.install(world.older, "/Force") == DONE)
        is_installed(world, f"after a kill at {step}", "1.9.0")
        registered(world, f"after a kill at {step}")


def is_killed_and_fails(world):
    """an upgrade that fails after one was killed puts back what was there before both"""
    before = world.state()
    kill_after(world, "entry")
    expect("it fails", world.install(None, "/FailAt=unpack") == FAILED)
    same(before, world.state(), "before both")


# --- The pages' own exit codes, by keyboard ---

def windows_shown(world):
    environment = {**os.environ, "DISPLAY": world.display.name}
    found = subprocess.run(["xdotool", "search", "--onlyvisible", "--name", "Corvella for Outlook"], env=environment,
                           capture_output=True, text=True)
    return len(found.stdout.split())


def press(world, key):
    subprocess.run(["xdotool", "key", key], env={**os.environ, "DISPLAY": world.display.name})


def press_until_asked(world, key):
    """Presses a key on page after page, until a box stands over them."""
    def asked():
        if windows_shown(world) < 2:
            press(world, key)
            time.sleep(1)
        return windows_shown(world) > 1
    expect("the pages are shown", wait_until(lambda: windows_shown(world) > 0))
    expect("the setup asks", wait_until(asked))


def is_cancelled(world):
    """a setup that a person cancels ends with 1 and has changed nothing"""
    before = world.state()
    process = world.prefix.start(world.setup)
    press_until_asked(world, "Escape")
    press(world, "Return")
    expect("it ends", wait_until(lambda: process.poll() is not None))
    expect(f"with {CANCELLED}: {process.returncode}", process.returncode == CANCELLED)
    same(before, world.state(), "afterwards")


def is_ended_because_outlook_runs(world):
    """a setup that a person ends because Outlook runs ends with 3 and has changed nothing"""
    before = world.state()
    host = run_as_outlook(world)
    shown = windows_shown(world)
    expect("no page is shown yet", shown == 0)
    process = world.prefix.start(world.setup)
    press_until_asked(world, "Return")
    press(world, "Escape")
    expect("it ends", wait_until(lambda: process.poll() is not None))
    expect(f"with {OUTLOOK_RUNS}: {process.returncode}", process.returncode == OUTLOOK_RUNS)
    host.end(0)
    after = world.state()
    same((before[1],), (after[1],), "afterwards")
    expect("nothing is registered", not of_ours(after[0]))


SCOPE = (begins, takes_over_from_regsvr32, upgrades_over_a_running_outlook, cleans_up_at_the_restart, is_used, installs_again,
         uninstalls_under_a_running_outlook, takes_folder_and_language, keeps_what_corvella_needs, leaves_no_trace)
CASES = {
    "user": ("user", SCOPE),
    "all": ("all", SCOPE),
    "finding": ("user", (finds_every_outlook, says_what_is_missing, takes_corvellas_folder, names_the_other_scope)),
    "faults": ("user", (fails_at_first, cannot_write, fails_as_upgrade, finds_a_locked_file, finds_a_closed_registry,
                        asks_before_a_downgrade, finds_a_full_disk)),
    "kills": ("user", (is_killed_at_first, is_killed_as_upgrade, is_killed_and_fails)),
    "pages": ("user", (is_cancelled, is_ended_because_outlook_runs)),
}


def main():
    global sentence
    case, template = sys.argv[1], pathlib.Path(os.path.abspath(sys.argv[2]))
    if case == "prepare":
        return prepare(template)
    programs = [pathlib.Path(os.path.abspath(argument)) for argument in sys.argv[3:8]]
    scope, tests = CASES[case]
    begun = time.monotonic()
    with tempfile.TemporaryDirectory(dir=BUILD) as folder, Display() as display:
        world = World(folder, scope, template / "prefix", programs, display)
        for test in tests:
            sentence, before = test.__doc__, len(failures)
            test(world)
            print(f"{'ok    ' if len(failures) == before else 'failed'} {sentence}", flush=True)
        world.prefix.registry()  # ends every program of the prefix
    print(f"{len(failures)} not so, {time.monotonic() - begun:.0f} s")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
