"""Programs in this checkout's private Wine prefix, and what its registry holds: for tests that look from outside."""
import pathlib
import subprocess
import tempfile

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
WINE = ROOT / "scripts" / "wine"
SYSTEM32 = "C:\\windows\\syswow64\\"  # of 32-bit programs

# What other tests and Wine itself may be writing meanwhile.
OF_OTHERS = ("\\Software\\Wine", "\\Software\\Corvella Tests", "\\Software\\Quillmark")


def run(*arguments, timeout=120):
    """Runs a program to its end; the exit code (None: it had to be ended) and the lines that it wrote."""
    command = [str(part) for part in (WINE, *arguments)]
    with tempfile.TemporaryFile() as output:  # no pipe: Wine's own services would keep it open
        try:
            code = subprocess.run(command, stdin=subprocess.DEVNULL, stdout=output, stderr=subprocess.DEVNULL,
                                  timeout=timeout).returncode
        except subprocess.TimeoutExpired:
            code = None
        output.seek(0)
        return code, output.read().decode("cp1252").splitlines()


def windows_path(path):
    return "Z:" + str(path).replace("/", "\\")


def export(key):
    """The text of a registry export file; None where there is no such key."""
    with tempfile.TemporaryDirectory() as folder:
        file = pathlib.Path(folder) / "export.reg"
        code, _ = run("reg", "export", key, windows_path(file), "/y")
        return file.read_text("utf-16") if code == 0 and file.exists() else None


def registry():
    """{key: its lines of values} of the user's software and all classes"""
    keys = {}
    for root in ("HKCU\\Software", "HKLM\\Software\\Classes"):
        text = export(root)
        if text is None:
            raise SystemExit(f"{root} could not be exported")
        lines = []
        for line in text.splitlines():
            if line.startswith("["):
                lines = keys.setdefault(line[1:-1], [])
            elif line:
                lines.append(line)
    return {key: lines for key, lines in keys.items() if not any(other in key for other in OF_OTHERS)}


def added(before, after):
    return {key: lines for key, lines in after.items() if before.get(key) != lines}
