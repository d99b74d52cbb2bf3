#!/usr/bin/env python3
"""Lets clang-tidy look at sources that have changed since it last found nothing in them.

    scripts/tidy.py folder...        looks at the .cpp files below; prints what it finds, exits with 1 when there is something

What a source is made of - itself, the headers of this repository that it includes, the settings of clang-tidy and its
version - is remembered in build/tidy once nothing was found. It needs the build win32-release, whose commands it reads.
"""
import concurrent.futures
import hashlib
import os
import pathlib
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
BUILD = ROOT / "build" / "win32-release"
CLEAN = ROOT / "build" / "tidy"


def output_of(*command):
    return subprocess.run(command, cwd=BUILD, capture_output=True, text=True, check=True).stdout


def options():
    """clang-tidy has to be told where the cross compiler keeps its headers."""
    library = pathlib.Path(output_of("i686-w64-mingw32-g++-win32", "-print-libgcc-file-name").strip())
    headers = library.parent / "include" / "c++"
    return ["--quiet", "-p", str(BUILD), "--extra-arg=--target=i686-w64-mingw32", f"--extra-arg=-isystem{headers}",
            f"--extra-arg=-isystem{headers}/i686-w64-mingw32", "--extra-arg=-Wno-unknown-warning-option",
            "--extra-arg=-Wno-unused-command-line-argument"]


def headers_of_sources():
    """{source: what it includes}, as the compiler noted it at the last build."""
    found, files = {}, []
    for line in [*output_of("ninja", "-t", "deps").splitlines(), ""]:
        if line.startswith("    "):
            files.append(os.path.normpath(BUILD / line.strip()))
        elif not line.strip() and files:
            found[files[0]] = [file for file in files if file.startswith(str(ROOT))]
            files = []
    return found


def sources(folders):
    listed = subprocess.run(["git", "ls-files", *(f"{folder}/*.cpp" for folder in folders)], cwd=ROOT, text=True,
                            capture_output=True, check=True).stdout
    return [str(ROOT / name) for name in listed.splitlines()]


def mark_of(source, headers, settings):
    """The file that tells that nothing was found in this very source; none where its headers are not known."""
    if not headers:
        return None
    content = hashlib.sha256(settings.encode())
    for name in sorted({source, *headers}):
        content.update(name.encode() + b"\0" + pathlib.Path(name).read_bytes())
    return CLEAN / content.hexdigest()


def look_at(source, mark, tidy):
    done = subprocess.run(["clang-tidy", *tidy, source], capture_output=True, text=True)
    if done.returncode == 0 and mark:
        mark.touch()
    return done.returncode, done.stdout


def main(folders):
    CLEAN.mkdir(parents=True, exist_ok=True)
    tidy = options()
    settings = (ROOT / ".clang-tidy").read_text() + output_of("clang-tidy", "--version") + " ".join(tidy)
    headers = headers_of_sources()
    marks = {source: mark_of(source, headers.get(source), settings) for source in sources(folders)}
    changed = {source: mark for source, mark in marks.items() if not mark or not mark.exists()}
    print(f"tidy: {len(changed)} of {len(marks)} sources are new to clang-tidy", flush=True)
    failed = False
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        for code, told in pool.map(lambda item: look_at(*item, tidy), changed.items()):
            failed = failed or code != 0
            print(told, end="", flush=True)
    return 1 if failed or not marks else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
