#!/usr/bin/env python3
"""Lets clang-tidy look at the sources that it has not yet found clean.

    scripts/tidy.py folder...            looks at the .cpp files below; prints what it finds, exits with 1 if there is any
    scripts/tidy.py --record folder...   also writes scripts/tidy-clean.txt, with those that are clean

What a source is made of - itself, the headers of this repository that it includes, the settings of clang-tidy and its
version - has a hash. scripts/tidy-clean.txt holds the hashes that were seen clean and is part of the repository, so that
a fresh clone looks only at what has changed since; build/tidy remembers those of this clone. Only this script writes
them. It needs the build win32-release, whose commands it reads.
"""
import concurrent.futures
import functools
import hashlib
import os
import pathlib
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
BUILD = ROOT / "build" / "win32-release"
CLEAN = ROOT / "build" / "tidy"
RECORD = ROOT / "scripts" / "tidy-clean.txt"

# Why clang-tidy cannot read a source: its command is not in the build, or has what clang does not know.
LEFT_OUT = {
    "tests/bench/NativePlatform.cpp": "built natively alone",
    "tests/fuzz/ribbonxml_fuzz.cpp": "built natively alone",
    "tests/unit/platform/stack_guard_test.cpp": "asks for a stack guard in a way that GCC alone knows",
}


def output_of(*command):
    return subprocess.run(command, cwd=BUILD, capture_output=True, text=True, check=True).stdout


def options():
    """clang-tidy has to be told where the cross compiler keeps its headers."""
    library = pathlib.Path(output_of("i686-w64-mingw32-g++-win32", "-print-libgcc-file-name").strip())
    headers = library.parent / "include" / "c++"
    return ["--quiet", "-p", str(BUILD), "--extra-arg=--target=i686-w64-mingw32", f"--extra-arg=-isystem{headers}",
            f"--extra-arg=-isystem{headers}/i686-w64-mingw32", "--extra-arg=-Wno-unknown-warning-option",
            "--extra-arg=-Wno-unused-command-line-argument"]


def version_and_options(tidy):
    version = re.search(r"version [\d.]+", output_of("clang-tidy", "--version")).group()
    return version + " ".join(tidy).replace(str(ROOT), "")


@functools.cache
def checks_for(folder):
    """The files .clang-tidy that hold for a folder, the outermost first."""
    own = folder / ".clang-tidy"
    outer = checks_for(folder.parent) if folder != ROOT else ""
    return outer + (own.read_text() if own.exists() else "")


def headers_of_sources():
    """{source: what it includes}, as the compiler noted it at the last build."""
    found, files = {}, []
    for line in [*output_of("ninja", "-t", "deps").splitlines(), ""]:
        if line.startswith("    "):
            files.append(os.path.normpath(BUILD / line.strip()))
        elif not line.strip() and files:
            found[files[0]] = [file for file in files if file.startswith(str(ROOT)) and not file.startswith(str(BUILD))]
            files = []
    return found


def sources(folders):
    listed = subprocess.run(["git", "ls-files", *(f"{folder}/*.cpp" for folder in folders)], cwd=ROOT, text=True,
                            capture_output=True, check=True).stdout
    return [str(ROOT / name) for name in listed.splitlines() if name not in LEFT_OUT]


def mark_of(source, headers, settings):
    """The hash of what was looked at; none where the headers are not known."""
    if not headers:
        return None
    content = hashlib.sha256((checks_for(pathlib.Path(source).parent) + settings).encode())
    for name in sorted({source, *headers}):
        content.update(os.path.relpath(name, ROOT).encode() + b"\0" + pathlib.Path(name).read_bytes())
    return content.hexdigest()


def recorded():
    return {line.split()[0] for line in RECORD.read_text().splitlines()} if RECORD.exists() else set()


def look_at(source, mark, tidy):
    done = subprocess.run(["clang-tidy", *tidy, source], capture_output=True, text=True)
    if done.returncode == 0 and mark:
        (CLEAN / mark).touch()
    return done.returncode, done.stdout


def look_at_all(changed, tidy):
    failed = False
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        for code, told in pool.map(lambda item: look_at(*item, tidy), changed.items()):
            failed = failed or code != 0
            print(told, end="", flush=True)
    return failed


def main(arguments):
    record = "--record" in arguments
    folders = [argument for argument in arguments if argument != "--record"]
    CLEAN.mkdir(parents=True, exist_ok=True)
    tidy = options()
    settings, headers, known = version_and_options(tidy), headers_of_sources(), recorded()
    marks = {source: mark_of(source, headers.get(source), settings) for source in sources(folders)}
    changed = {source: mark for source, mark in marks.items()
               if not mark or (mark not in known and not (CLEAN / mark).exists())}
    print(f"tidy: {len(changed)} of {len(marks)} sources are new to clang-tidy", flush=True)
    failed = look_at_all(changed, tidy)
    if record:
        RECORD.write_text("".join(f"{mark} {os.path.relpath(source, ROOT)}\n" for source, mark in sorted(marks.items())
                                  if mark and (mark in known or (CLEAN / mark).exists())))
    return 1 if failed or not marks else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
