#!/usr/bin/env python3
"""The languages of lang/languages.txt, for the other scripts.

    scripts/languages.py             the names of the language files, one a line
    scripts/languages.py NAME        locale and code page of that language, on one line; ends with 1 when it is not listed
"""
import collections
import pathlib
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent

Language = collections.namedtuple("Language", "name page locale codes help number")


def read(root=ROOT):
    """The languages in the order of the list, as tuples; a line of another shape raises ValueError."""
    languages = []
    for line in (root / "lang" / "languages.txt").read_text(encoding="ascii").splitlines():
        if not line or line.startswith("#"):
            continue
        fields = line.split()
        if len(fields) != len(Language._fields):
            raise ValueError(f"languages.txt: {len(fields)} fields instead of {len(Language._fields)}: {line}")
        name, page, locale, codes, help_code, number = fields
        languages.append(Language(name, int(page), locale, codes.split(","), help_code, int(number, 16)))
    return languages


def with_manual(root=ROOT):
    return [language for language in read(root) if (root / "help" / language.name).is_dir()]


def main():
    if len(sys.argv) == 1:
        print("\n".join(language.name for language in read()))
        return 0
    found = [language for language in read() if language.name == sys.argv[1]]
    for language in found:
        print(language.locale, f"CP{language.page}")
    return 0 if found else 1


if __name__ == "__main__":
    sys.exit(main())
