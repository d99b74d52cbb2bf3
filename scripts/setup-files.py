#!/usr/bin/env python3
"""Makes the lists that the setup works by, from the folder of what is installed: scripts/setup-files.py STAGE

    STAGE/files.txt      every file below the folder of the installation, one path a line, Uninstall.exe among them
    STAGE/../Files.nsh   for Setup.nsi: SIZE in KB, UnpackListedFiles, RemoveListedFolders

What is to be installed is put into the folder by scripts/dist.sh and scripts/setup.sh; nothing else names it.
"""
import pathlib
import sys


def main():
    stage = pathlib.Path(sys.argv[1]).resolve()
    files = sorted({path.relative_to(stage) for path in stage.rglob("*") if path.is_file()} | {pathlib.Path("files.txt")},
                   key=lambda path: path.as_posix())
    folders = sorted({folder for path in files for folder in path.parents}, key=lambda path: path.as_posix())
    listed = sorted([*files, pathlib.Path("Uninstall.exe")], key=lambda path: path.as_posix())
    (stage / "files.txt").write_bytes("".join(windows(path) + "\r\n" for path in listed).encode("ascii"))
    size = sum((stage / path).stat().st_size for path in files) // 1024 + 1

    lines = [f"!define SIZE {size}", "!macro UnpackListedFiles"]
    for folder in folders:
        lines.append(f'    SetOutPath "{below("$INSTDIR/~new", folder)}"')
        lines += [f'    File "${{STAGE}}/{path.as_posix()}"' for path in files if path.parent == folder]
    lines += ["!macroend", "!macro RemoveListedFolders"]
    lines += [f'    RMDir "{below("$INSTDIR", folder)}"' for folder in reversed(folders)]
    lines += ["!macroend", ""]
    (stage.parent / "Files.nsh").write_text("\n".join(lines))


def windows(path):
    return path.as_posix().replace("/", "\\")


def below(base, folder):
    return windows(pathlib.PurePosixPath(base) / folder)


if __name__ == "__main__":
    main()
