#!/usr/bin/env python3
"""Checks the manual's sources in help/ against each other and against the texts that the add-in shows.

    scripts/check-help.py                  check; prints a line for each fault, exits with 1 when there is one
    scripts/check-help.py --self-test      break each rule once and see that its fault is reported
    scripts/check-help.py --built DIR      what build-help.py has made in DIR: the compiled help holds every page

The rules
    pages     every language has the same pages, each with one heading
    links     every link leads to a page
    tags      every tag that is opened is closed, in order
    texts     what is bold is a text of the add-in in that language: menus, buttons, fields
    options   AddInOutl.htm names every field and group of the options dialog
"""
import argparse
import html.parser
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

SCRIPTS = pathlib.Path(__file__).resolve().parent
sys.dont_write_bytecode = True
sys.path.insert(0, str(SCRIPTS))
builder = __import__("build-help")

OPTIONS = ["Frame1", "Label1", "Label3", "Frame2", "OptionSync", "OptionDlg", "Frame3", "Label5"]


class Page(html.parser.HTMLParser):
    def __init__(self, source):
        super().__init__(convert_charrefs=True)
        self.open, self.links, self.bold, self.headings, self.faults = [], [], [], 0, []
        self.text = None
        self.feed(source)
        self.faults += [f"<{tag}> is not closed" for tag in self.open]

    def handle_starttag(self, tag, attributes):
        self.open.append(tag)
        if tag == "a":
            self.links += [value for name, value in attributes if name == "href"]
        if tag == "h1":
            self.headings += 1
        if tag == "b":
            self.text = ""

    def handle_endtag(self, tag):
        if not self.open or self.open.pop() != tag:
            self.faults.append(f"</{tag}> closes another tag")
        if tag == "b":
            self.bold.append(" ".join(self.text.split()))
            self.text = None

    def handle_data(self, data):
        if self.text is not None:
            self.text += data


def plain(caption):
    """A caption as one reads it: without access key, tool tip, colon and points."""
    return re.sub(r"&(.)", r"\1", caption.split("|")[0]).strip().rstrip(":.").strip()


def texts_of(root, language):
    """{(section, key): text as one reads it}"""
    texts, section = {}, ""
    for line in (root / "lang" / f"{language}.lng").read_bytes().decode("cp1252").splitlines():
        if line.startswith("["):
            section = line.strip("[]")
        elif "=" in line:
            key, value = line.split("=", 1)
            texts[section, key] = plain(value)
    return texts


def check_language(root, folder):
    texts = texts_of(root, folder)
    known = set(texts.values())
    for page in builder.PAGES:
        name = f"{folder}/{page}.htm"
        path = root / "help" / name
        if not path.exists():
            yield "pages", f"{name} is missing"
            continue
        parsed = Page(path.read_text(encoding="utf-8"))
        if parsed.headings != 1:
            yield "pages", f"{name} has {parsed.headings} headings"
        for fault in parsed.faults:
            yield "tags", f"{name}: {fault}"
        for link in parsed.links:
            if link.removesuffix(".htm") not in builder.PAGES:
                yield "links", f"{name} leads to {link}"
        for bold in parsed.bold:
            if bold not in known:
                yield "texts", f'{name}: the add-in shows no "{bold}"'
        if page == "AddInOutl":
            for key in OPTIONS:
                if texts["FormOlAddInOptions", key] not in parsed.bold:
                    yield "options", f"{name} does not name {key}"


def check(root):
    faults = []
    for folder, *_ in builder.LANGUAGES:
        faults += check_language(root, folder)
        for path in sorted((root / "help" / folder).iterdir()):
            if path.stem not in builder.PAGES:
                faults.append(("pages", f"{folder}/{path.name} is not among the pages"))
    return faults


def check_built(output):
    faults = []
    for folder, name, *_ in builder.LANGUAGES:
        with tempfile.TemporaryDirectory() as extracted:
            subprocess.run(["chmls", "extractall", str(output / f"{name}.chm"), extracted], capture_output=True,
                           check=False)
            for page in sorted((output / "Manual" / folder).iterdir()):
                inside = pathlib.Path(extracted) / page.name
                if not inside.exists() or inside.read_bytes() != page.read_bytes():
                    faults.append(("built", f"{name}.chm holds another {page.name}"))
            if len(list((output / "Manual" / folder).glob("*.htm"))) != len(builder.PAGES):
                faults.append(("built", f"Manual/{folder} lacks pages"))
    return faults


BREAKS = [
    ("pages", "help/English/index.htm", "<h1>Corvella in Outlook</h1>", "<p>Corvella in Outlook</p>"),
    ("links", "help/Deutsch/index.htm", 'href="Menu.htm"', 'href="Menue.htm"'),
    ("tags", "help/English/Menu.htm", "</table>", ""),
    ("texts", "help/English/Menu.htm", "<b>New SMS</b>", "<b>New Message</b>"),
    ("texts", "lang/Deutsch.lng", "ButtonSendToPhone=An Handy senden", "ButtonSendToPhone=Senden"),
    ("options", "help/Deutsch/AddInOutl.htm", "<b>Profil für Outlook</b>", "Profil für Outlook"),
    ("options", "lang/English.lng", "Label3=&Keep Corvella open for:", "Label3=&Wait:"),
]


def self_test(root):
    failures = []
    for rule, name, old, new in BREAKS:
        with tempfile.TemporaryDirectory() as folder:
            copy = pathlib.Path(folder)
            for part in ("help", "lang"):
                shutil.copytree(root / part, copy / part)
            encoding = "cp1252" if name.endswith(".lng") else "utf-8"
            data = (copy / name).read_bytes()
            changed = data.replace(old.encode(encoding), new.encode(encoding))
            if changed == data:
                failures.append(f"{name} no longer holds {old!r}: adapt the self-test")
            (copy / name).write_bytes(changed)
            if not any(found == rule for found, _ in check(copy)):
                failures.append(f"{rule}: not reported for {old!r} -> {new!r} in {name}")
    return failures


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--self-test", action="store_true")
    parser.add_argument("--built", type=pathlib.Path)
    options = parser.parse_args()
    root = SCRIPTS.parent
    if options.self_test:
        failures = self_test(root)
        print("\n".join(failures) or f"check-help: {len(BREAKS)} breaks, all reported")
        return 1 if failures else 0
    faults = check_built(options.built) if options.built else check(root)
    for rule, what in faults:
        print(f"{rule}: {what}")
    if not faults:
        print(f"check-help: {len(builder.LANGUAGES)} languages, {len(builder.PAGES)} pages each, no fault")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
