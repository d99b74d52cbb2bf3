"""Windows programs in a registry of their own, and what they leave there: for tests that look from outside."""
import os
import pathlib
import shutil
import subprocess
import tempfile

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
SYSTEM = {32: "C:\\windows\\syswow64\\", 64: "C:\\windows\\system32\\"}  # Windows' own programs of so many bits
BRANCHES = {"user.reg": "HKEY_CURRENT_USER", "system.reg": "HKEY_LOCAL_MACHINE"}
# What Wine itself keeps, and what other tests may just have had in the registry that is copied.
OF_OTHERS = ("\\Software\\Wine", "\\Software\\Corvella Tests")


def windows_path(path):
    return "Z:" + str(path).replace("/", "\\")


def bits_of(program):
    """32 or 64, as the header of a program or library says."""
    with open(program, "rb") as file:
        file.seek(0x3C)
        file.seek(int.from_bytes(file.read(4), "little") + 4)
        return {b"\x4c\x01": 32, b"\x64\x86": 64}[file.read(2)]


class Display:
    """A screen of its own, with its own focus and clipboard, for as long as it is entered."""

    def __enter__(self):
        told, tell = os.pipe()
        # -displayfd lets the server choose a free number.
        self.server = subprocess.Popen(["Xvfb", "-displayfd", str(tell), "-screen", "0", "1280x1024x24", "-nolisten", "tcp"],
                                       pass_fds=[tell], stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                                       stderr=subprocess.DEVNULL)
        os.close(tell)
        with os.fdopen(told) as number:
            self.name = ":" + number.readline().strip()
        return self

    def __exit__(self, *_):
        self.server.terminate()
        self.server.wait()


class Prefix:
    """A Wine prefix with a registry of its own, a copy of the usual one's, so that no other test writes into it. The
    files are the usual ones. `copy_of` names another prefix to copy instead, whose files are then the copy's own: what
    programs make, replace or delete there stays there."""

    def __init__(self, folder, display=None, copy_of=None):
        # The usual environment, made ready by the script that every program starts with.
        told = subprocess.run(["bash", "-c", f". '{ROOT}/scripts/wine-env.sh' && env -0"], capture_output=True, text=True,
                              check=True).stdout
        self.environment = dict(line.split("=", 1) for line in told.split("\0") if line)
        shared = pathlib.Path(copy_of or self.environment["WINEPREFIX"])
        self.folder = pathlib.Path(folder) / "prefix"
        self.folder.mkdir()
        for name, options in (("drive_c", "-al"), ("dosdevices", "-a")):  # Wine replaces its files
            if copy_of:
                subprocess.run(["cp", options, shared / name, self.folder / name], check=True)
            else:
                (self.folder / name).symlink_to(shared / name)
        for name in ("system.reg", "user.reg", "userdef.reg", ".update-timestamp"):
            shutil.copy(shared / name, self.folder)
        self.environment["WINEPREFIX"] = str(self.folder)
        if display:
            self.environment["DISPLAY"] = display.name

    def start(self, *command, output=subprocess.DEVNULL):
        """Its output goes to a file, never to a pipe: Wine's own services would keep that open."""
        return subprocess.Popen([str(part) for part in ("wine", *command)], env=self.environment,
                                stdin=subprocess.DEVNULL, stdout=output, stderr=subprocess.DEVNULL)

    def ask(self, *command, timeout=120):
        """Runs a program to its end: the exit code (None where it had to be ended) and the lines that it wrote."""
        with tempfile.TemporaryFile() as output:
            program = self.start(*command, output=output)
            try:
                code = program.wait(timeout)
            except subprocess.TimeoutExpired:
                program.kill()
                program.wait()
                code = None
            return code, lines_of(output)

    def run(self, *command):
        return self.ask(*command)[0]

    def regsvr32(self, library, *options):
        return self.run(SYSTEM[bits_of(library)] + "regsvr32.exe", *options, "/s", windows_path(library))

    def registry(self):
        """{key: its lines of values} of the Software branches as Wine stores them, but for what is of others.
        Every program of this prefix is ended for it."""
        for option in ("-k", "-w"):
            subprocess.run(["wineserver", option], env=self.environment, stdout=subprocess.DEVNULL,
                           stderr=subprocess.DEVNULL)
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


def lines_of(output):
    """What a program has written so far into a file that is open here."""
    output.seek(0)
    return output.read().decode("cp1252").splitlines()


def added(before, after):
    return {key: lines for key, lines in after.items() if before.get(key) != lines}
