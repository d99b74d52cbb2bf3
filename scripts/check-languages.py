#!/usr/bin/env python3
"""Checks the language files in lang/ against each other and against what the sources look up.

    scripts/check-languages.py              check; prints a line for each fault, exits with 1 when there is one
    scripts/check-languages.py --self-test  break each rule once and see that its fault is reported
    scripts/check-languages.py --root DIR   another checkout

The rules
    present       every file of the choice table is there
    line-ends     CR LF at the end of every line, and nowhere a CR or LF alone
    code-page     "CharSet" names a known code page, the first line names the same one, every byte is a
                  character of it
    syntax        the first line is no setting (it would not be found); sections and keys stand there once;
                  no line is neither section, setting nor empty; no blanks around a value
    missing       every key that the code looks up is in every file
    unused        no key is in a file that nothing looks up
    empty         a text is empty only where the English one is
    access-keys   one letter or digit behind one "&", no two alike in a menu or dialog, and one wherever the
                  English text has one
    placeholders  the same "%f" as in English, as often
    tool-tips     "|" as often as in English, and none outside the sections of forms
"""
import argparse
import collections
import pathlib
import re
import shutil
import sys
import tempfile

REFERENCE = "English"
LANGUAGES = ["English", "Deutsch", "Francais", "Espanol", "Portugues-BR", "Cesky", "Nederlands", "Polski"]
CODE_PAGES = {0: 1252, 238: 1250, 204: 1251, 161: 1253, 162: 1254, 186: 1257}

# Keys that the code puts together, keeps in tables or reads by walking a whole section. In the sources each stands as
# a literal, "138Msg" as the number; those of a form stand in a source that speaks of that form.
IN_TABLES = [
    ("OutlookAddIn", "mEditor mSync mSync0 mSync1 mNewSMS mSettings mOptions mLogFile mAbout"),
    ("OutlookAddIn", "Buttonsync ButtonSendToPhone"),
    ("OutlookAddIn", "ButtonUpdate"),
    ("OutlookAddIn", "Msg1"),
    ("Misc", "Ok Cancel Default Infrared"),
    ("Info", "Font CharSet"),
    ("PhoneBooks", "SB"),
    ("Outlook", "no"),
    ("Calendar", "Anniversary Birthday Off"),
    ("Fields", "Birthday"),
    ("FormSMSPortSettings", "auto"),
    ("FormOlAddInOptions",
     "FormOlAddInOptions Frame1 Frame2 Frame3 Label1 Label2 Label3 Label4 Label5 Label6 TextDelay TextRemain"
     " OptionSync OptionDlg ComboProfiles CheckT CheckA CheckC ButtonHelp"),
    ("FormQuestion", "ButtonOKYes ButtonOKYes2 ButtonOKYes3 ButtonNo ButtonNo(2) ButtonNo3 ButtonCancel"),
    ("FormQuestion", "FormQuestion ButtonAll ButtonHelp Check1"),
    ("Messages", "138Msg"),
    ("Messages", "139Msg"),
    ("Messages", "232Msg Debug1 Debug2"),
]
# Keys that exist as values only: the type letters of items.
COMPUTED = [("OutlookAddIn", "A"), ("OutlookAddIn", "C"), ("OutlookAddIn", "T")]

# What is on the screen together, and so needs access keys that differ.
TOGETHER = [
    ("OutlookAddIn", "mEditor mSync mSync0 mSync1 mNewSMS mSettings mOptions mLogFile mAbout"),
    ("FormOlAddInOptions", "*"),
    ("FormQuestion", "ButtonOKYes ButtonCancel ButtonAll ButtonHelp Check1"),
    ("FormQuestion", "ButtonOKYes2 ButtonNo ButtonCancel ButtonAll ButtonHelp Check1"),
    ("FormQuestion", "ButtonOKYes2 ButtonNo(2) ButtonCancel ButtonAll ButtonHelp Check1"),
    ("FormQuestion", "ButtonOKYes3 ButtonNo3 ButtonCancel ButtonAll ButtonHelp Check1"),
]

CALL = re.compile(r'\bGetLanguageString(?:Replaced)?\(\s*([^,()]+?)\s*,\s*([^,()]+?)\s*[,)]')
LITERAL = re.compile(r'^"((?:[^"\\]|\\.)*)"$')


class LanguageFile:
    """One file: its settings in order, and what is wrong with its shape."""

    def __init__(self, name, data):
        self.name = name
        self.faults = []
        self.texts = {}
        if re.search(rb"(?<!\r)\n|\r(?!\n)", data) or not data.endswith(b"\r\n"):
            self.fault("line-ends", "a line does not end in CR LF")
        text = self.decode(data)
        section = None
        for number, line in enumerate(re.split(r"\r\n|\r|\n", text), 1):
            if re.fullmatch(r"\[[^\[\]]+\]", line):
                section = line[1:-1]
                if any(known == section for known, _ in self.texts):
                    self.fault("syntax", f"section [{section}] stands there twice")
            elif "=" in line:
                self.setting(number, section, *line.split("=", 1))
            elif line and number > 1:
                self.fault("syntax", f"line {number} is neither section nor setting: {line}")

    def fault(self, rule, what):
        self.faults.append((rule, f"{self.name}.lng: {what}"))

    def decode(self, data):
        charset = re.search(rb"^CharSet=(\d+)\s*$", data, re.MULTILINE)
        page = CODE_PAGES.get(int(charset.group(1)) if charset else None)
        if page is None:
            self.fault("code-page", "CharSet is missing or names no code page known here")
            return data.decode("latin-1")
        if f"code page {page}".encode() not in data.split(b"\n")[0]:
            self.fault("code-page", f"the first line does not name code page {page}, as CharSet does")
        try:
            return data.decode(f"cp{page}")
        except UnicodeDecodeError as error:
            self.fault("code-page", f"byte {error.start} is no character of code page {page}")
            return data.decode("latin-1")

    def setting(self, number, section, key, value):
        if number == 1:
            self.fault("syntax", "the first line is a setting, which is never found")
        if section is None:
            self.fault("syntax", f"line {number} stands before all sections")
        if (section, key) in self.texts:
            self.fault("syntax", f"[{section}] {key} stands there twice")
        if value != value.strip():
            self.fault("syntax", f"[{section}] {key} begins or ends with a blank")
        self.texts.setdefault((section, key), value)


def sources(root):
    return {path: path.read_text(encoding="utf-8", errors="replace")
            for path in sorted((root / "src").rglob("*")) if path.suffix in (".cpp", ".h")}


def resolved(argument, texts):
    """The text of an argument: a literal, or a constant of one of the sources, its own first; else None."""
    literal = LITERAL.match(argument)
    if literal:
        return literal.group(1)
    if re.fullmatch(r"[\w:]+", argument):
        name = argument.split("::")[-1]
        for text in texts:
            constant = re.search(r"\b" + name + r'(?:\[\])?\s*(?:=|\{|\()\s*"((?:[^"\\]|\\.)*)"', text)
            if constant:
                return constant.group(1)
    return None


def looked_up(files):
    """What the sources look up by name: (section, key) -> a file."""
    found = {}
    for path, text in files.items():
        for section, key in CALL.findall(text):
            headers = [other for where, other in files.items() if where.suffix == ".h"]
            pair = (resolved(section, [text, *headers]), resolved(key, [text]))
            if None not in pair:
                found[pair] = path.name
    return found


def stands_in_sources(section, key, files):
    number = re.fullmatch(r"(\d+)Msg", key)
    pattern = r"\b" + number.group(1) + r"\b" if number else '"' + re.escape(re.sub(r"\(.*", "", key)) + '"'
    return any(re.search(pattern, text) for path, text in files.items()
               if not section.startswith("Form") or path.stem.startswith(section) or f'"{section}"' in text)


def used_keys(root, faults):
    files = sources(root)
    used = {pair: f"{where} looks it up" for pair, where in looked_up(files).items()}
    used.update({pair: "it is put together" for pair in COMPUTED})
    for section, keys in IN_TABLES:
        for key in keys.split():
            if (section, key) not in used and not stands_in_sources(section, key, files):
                faults.append(("unused", f"nothing in src/ looks up [{section}] {key}"))
            used.setdefault((section, key), "a table of the sources has it")
    return used


def access_key(caption):
    marks = re.findall(r"&(.?)", caption)
    marks = [mark for mark in marks if mark != "&"]
    return marks


def check_access_keys(language, reference, faults):
    def fault(what):
        faults.append(("access-keys", f"{language.name}.lng: {what}"))

    for pair, value in language.texts.items():
        marks = access_key(value.split("|")[0])
        if any(not re.fullmatch("[A-Za-z0-9]", mark) for mark in marks) or len(marks) > 1:
            fault(f"[{pair[0]}] {pair[1]} has no proper access key: {value}")
        if bool(marks) != bool(access_key(reference.texts.get(pair, "").split("|")[0])):
            fault(f"[{pair[0]}] {pair[1]} differs from English in having an access key")
    for section, keys in TOGETHER:
        names = [key for known, key in language.texts if known == section] if keys == "*" else keys.split()
        taken = {}
        for name in names:
            for mark in access_key(language.texts.get((section, name), "").split("|")[0]):
                if mark.upper() in taken:
                    fault(f"[{section}] {taken[mark.upper()]} and {name} both have the access key {mark.upper()}")
                taken[mark.upper()] = name


def check_against_reference(language, reference, faults):
    for pair, value in language.texts.items():
        english = reference.texts.get(pair)
        name = f"{language.name}.lng: [{pair[0]}] {pair[1]}"
        if "|" in value and not pair[0].startswith("Form"):
            faults.append(("tool-tips", f"{name} is no form's text, but holds a bar"))
        if english is None:
            continue
        if bool(value) != bool(english):
            faults.append(("empty", f"{name} is empty in one of the files"))
        if sorted(re.findall("%[a-z]", value)) != sorted(re.findall("%[a-z]", english)):
            faults.append(("placeholders", f"{name} has other placeholders than in English"))
        if value.count("|") != english.count("|"):
            faults.append(("tool-tips", f"{name} has not as many bars as in English"))


def check(root):
    faults = []
    used = used_keys(root, faults)
    files = {}
    for name in sorted(set(LANGUAGES) | {path.stem for path in (root / "lang").glob("*.lng")}):
        path = root / "lang" / f"{name}.lng"
        if path.exists():
            files[name] = LanguageFile(name, path.read_bytes())
        else:
            faults.append(("present", f"{name}.lng is not there"))
    for language in files.values():
        faults += language.faults
        for pair, why in used.items():
            if pair not in language.texts:
                faults.append(("missing", f"{language.name}.lng: [{pair[0]}] {pair[1]} is missing; {why}"))
        for pair in language.texts:
            if pair not in used:
                faults.append(("unused", f"{language.name}.lng: nothing looks up [{pair[0]}] {pair[1]}"))
        if REFERENCE in files:
            check_access_keys(language, files[REFERENCE], faults)
            check_against_reference(language, files[REFERENCE], faults)
    return faults, len(files), len(used)


# --- the test of the check itself

BREAKS = [
    ("line-ends", "Deutsch", b"\r\n[Misc]", b"\n[Misc]"),
    ("line-ends", "Polski", b"\r\nOk=", b"\rOk="),
    ("code-page", "Deutsch", b"ber Corvella", b"b\x81r Corvella"),
    ("code-page", "Cesky", b"CharSet=238", b"CharSet=77"),
    ("code-page", "Cesky", b"CharSet=238", b"CharSet=0"),
    ("syntax", "English", b"Corvella language file:", b"Title="),
    ("syntax", "English", b"[Outlook]", b"[Misc]"),
    ("syntax", "English", b"mEditor=", b"mAbout="),
    ("syntax", "English", b"mEditor=", b"mEditor "),
    ("syntax", "English", b"=Infrared", b"= Infrared"),
    ("missing", "Nederlands", b"mLogFile=", b"mLogFiles="),
    ("unused", "Nederlands", b"[Misc]\r\n", b"[Misc]\r\nSpare=x\r\n"),
    ("empty", "Espanol", b"Birthday=Cumplea\xf1os", b"Birthday="),
    ("access-keys", "Deutsch", b"&Neue SMS", b"N&eue SMS"),
    ("access-keys", "Deutsch", b"&Neue SMS", b"Neue SMS"),
    ("access-keys", "Francais", b"\xc9&diteur", b"&\xc9diteur"),
    ("access-keys", "English", b"&New SMS", b"&New &SMS"),
    ("access-keys", "English", b"&Yes", b"&No"),
    ("placeholders", "Cesky", b"%f%e", b"%f"),
    ("placeholders", "Polski", b"%i", b"%m"),
    ("tool-tips", "Polski", b"&od razu|", b"&od razu: "),
    ("tool-tips", "Polski", b"&Nowy SMS", b"&Nowy SMS|Nowy"),
]


def self_test(root):
    """Each break must be reported under its rule, and the files as they stand must be clean."""
    failures = [f"the files as they stand: {what}" for _, what in check(root)[0]]
    with tempfile.TemporaryDirectory() as folder:
        copy = pathlib.Path(folder)
        shutil.copytree(root / "src", copy / "src")

        def fresh():
            shutil.rmtree(copy / "lang", ignore_errors=True)
            shutil.copytree(root / "lang", copy / "lang")

        def expect(rule, what):
            if rule not in {found for found, _ in check(copy)[0]}:
                failures.append(f"not reported as {rule}: {what}")

        for rule, name, old, new in BREAKS:
            fresh()
            path = copy / "lang" / f"{name}.lng"
            data = path.read_bytes()
            if old not in data:
                failures.append(f"{name}.lng no longer holds {old!r}: adapt the self-test")
            path.write_bytes(data.replace(old, new))
            expect(rule, f"{old!r} -> {new!r} in {name}.lng")
        fresh()
        (copy / "lang" / "Cesky.lng").unlink()
        expect("present", "a file that is gone")
        fresh()
        probe = copy / "src" / "probe.cpp"
        probe.write_text('constexpr char section[] = "Probe";\nauto text = GetLanguageString(section, "NotThere");\n')
        expect("missing", "a key that the sources look up and no file has")
        probe.unlink()
        for path in (*copy.glob("src/**/*.cpp"), *copy.glob("src/**/*.h")):
            path.unlink()
        expect("unused", "sources that look up nothing at all")
    untested = set(re.findall(r"^    (\w[\w-]+)  ", __doc__.split("The rules")[1], re.MULTILINE)) \
        - {rule for rule, *_ in BREAKS} - {"present"}
    failures += [f"no break tests the rule {rule}" for rule in sorted(untested)]
    return failures


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    parser.add_argument("--self-test", action="store_true")
    parser.add_argument("--root", type=pathlib.Path, default=pathlib.Path(__file__).resolve().parent.parent)
    options = parser.parse_args()
    if options.self_test:
        failures = self_test(options.root)
        print("\n".join(failures) or f"check-languages: {len(BREAKS) + 3} breaks, all reported")
        return 1 if failures else 0
    faults, files, keys = check(options.root)
    for rule, what in faults:
        print(f"{rule}: {what}")
    if not faults:
        print(f"check-languages: {files} languages, {keys} keys each, no fault")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
