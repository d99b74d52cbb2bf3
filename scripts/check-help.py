#!/usr/bin/env python3
"""Checks the manual's sources in help/ against each other and against the texts that the add-in shows.

    scripts/check-help.py                  check; prints a line for each fault, exits with 1 when there is one
    scripts/check-help.py --self-test      break each rule once and see that its fault is reported
    scripts/check-help.py --built DIR      what build-help.py has made in DIR: the compiled help holds every page

The menu's entries and the options come from the tables of the sources (scripts/tables.py), the languages from
lang/languages.txt.

The rules
    listed    every folder of the manual belongs to a language of the list, and no two to the same compiled help
    letters   every page can be written in the code page of its language
    pages     every language has the same pages, each with one heading
    links     every link leads to a page
    tags      every tag that is opened is closed, in order
    pictures  every picture has a text for those who cannot see it, and there is one for the language
    texts     what is bold is a text of the add-in in that language: menus, buttons, fields
    menu      Menu.htm names every entry of the menu
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
import languages  # noqa: E402
import tables  # noqa: E402

builder = __import__("build-help")


class Page(html.parser.HTMLParser):
    def __init__(self, source):
        super().__init__(convert_charrefs=True)
        self.open, self.links, self.bold, self.headings, self.faults = [], [], [], 0, []
        self.untold = 0  # pictures without a text
        self.text = None
        self.feed(source)
        self.faults += [f"<{tag}> is not closed" for tag in self.open]

    def handle_starttag(self, tag, attributes):
        if tag == "img":  # has no end
            self.untold += not dict(attributes).get("alt")
            return
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
    for line in (root / "lang" / f"{language.name}.lng").read_bytes().decode(f"cp{language.page}").splitlines():
        if line.startswith("["):
            section = line.strip("[]")
        elif "=" in line:
            key, value = line.split("=", 1)
            texts[section, key] = plain(value)
    return texts


def named_options(root):
    """What the options dialog shows of captions that a reader of the manual looks for."""
    return [row[0][0] for row in tables.rows(root / "src/bridge/OptionsControls.h", "rows")
            if row[1] in ("Place::Group", "Place::Label", "Place::Option")]


def check_language(root, language):
    folder = language.name
    texts = texts_of(root, language)
    demanded = {"Menu": ("menu", [("OutlookAddIn", key) for key in tables.menu_keys(root)]),
                "AddInOutl": ("options", [("FormOlAddInOptions", key) for key in named_options(root)])}
    known = set(texts.values())
    for page in builder.PAGES:
        name = f"{folder}/{page}.htm"
        path = root / "help" / name
        if not path.exists():
            yield "pages", f"{name} is missing"
            continue
        source = path.read_text(encoding="utf-8")
        if source != source.encode(f"cp{language.page}", "ignore").decode(f"cp{language.page}"):
            yield "letters", f"{name} holds letters that code page {language.page} has not"
        parsed = Page(source)
        if parsed.headings != 1:
            yield "pages", f"{name} has {parsed.headings} headings"
        for fault in parsed.faults:
            yield "tags", f"{name}: {fault}"
        if parsed.untold:
            yield "pictures", f"{name} has {parsed.untold} pictures without a text"
        for picture in builder.pictures_in(source):
            if not builder.picture_file(root / "docs" / "pictures", picture, language).exists():
                yield "pictures", f"{name} shows {picture}.png, of which docs/pictures has none for {folder}"
        for link in parsed.links:
            if link.removesuffix(".htm") not in builder.PAGES:
                yield "links", f"{name} leads to {link}"
        for bold in parsed.bold:
            if bold not in known:
                yield "texts", f'{name}: the add-in shows no "{bold}"'
        rule, pairs = demanded.get(page, ("", []))
        for section, key in pairs:
            if texts.get((section, key)) not in parsed.bold:
                yield rule, f"{name} does not name [{section}] {key}"


def check(root):
    faults = []
    manuals = languages.with_manual(root)
    for path in sorted((root / "help").iterdir()):
        if path.is_dir() and path.name not in [language.name for language in manuals]:
            faults.append(("listed", f"help/{path.name} is no language of languages.txt"))
    for name in {builder.help_name(language) for language in manuals}:
        owners = [language.name for language in manuals if builder.help_name(language) == name]
        if len(owners) > 1:
            faults.append(("listed", f"{' and '.join(owners)} would both be compiled to {name}.chm"))
    for language in manuals:
        faults += check_language(root, language)
        for path in sorted((root / "help" / language.name).glob("*.htm")):
            if path.stem not in builder.PAGES:
                faults.append(("pages", f"{language.name}/{path.name} is not among the pages"))
    return faults


def check_built(output):
    faults = []
    for language in languages.with_manual():
        folder, name = language.name, builder.help_name(language)
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
    ("pictures", "help/English/AddInOutl.htm", 'src="options.png"', 'src="option.png"'),
    ("pictures", "help/Deutsch/AddInOutl.htm", ' alt="', ' title="'),
    ("menu", "help/Deutsch/Menu.htm", "<b>Protokolldatei</b>", "Protokolldatei"),
    ("menu", "src/addin/cOlExplorerEntries.cpp", '{"mAbout",', '{"mNew", "New"}, {"mAbout",'),
    ("letters", "help/Deutsch/Menu.htm", "Öffnet Corvella.", "Öffnet Corvella: Ł."),
    ("listed", "lang/languages.txt", "Deutsch       1252", "Svenska       1252"),
    ("listed", "lang/languages.txt", "DEU    de", "DEU    en"),
    ("options", "src/bridge/OptionsControls.h", '{{"ButtonOK"',
     '{{"OptionNew", ControlKind::OptionButton, 0, "New"}, Place::Option}, {{"ButtonOK"'),
    ("options", "help/Deutsch/AddInOutl.htm", "<b>Profil für Outlook</b>", "Profil für Outlook"),
    ("options", "lang/English.lng", "Label3=&Keep Corvella open for:", "Label3=&Wait:"),
]


def self_test(root):
    failures = []
    for rule, name, old, new in BREAKS:
        with tempfile.TemporaryDirectory() as folder:
            copy = pathlib.Path(folder)
            for part in ("help", "lang", "docs/pictures", "src/addin", "src/bridge"):
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
        print(f"check-help: {len(languages.with_manual())} languages, {len(builder.PAGES)} pages each, no fault")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
