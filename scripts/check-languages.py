#!/usr/bin/env python3
"""Checks the language files in lang/ against each other and against what the sources look up.

    scripts/check-languages.py              check; prints a line for each fault, ends with 1 when there is one
    scripts/check-languages.py --self-test  break each rule once and see that its fault is reported
    scripts/check-languages.py --root DIR   another checkout

What the keys are, and which texts are on the screen together, comes from the tables of the sources (scripts/tables.py);
the languages come from lang/languages.txt.

The rules
    listed        every language of the list has its file, every file is listed, and the list has the codes of Windows
                  and the help codes that the sources give the language; the setup speaks as many, and
                  docs/installing.md names the number of each
    tables        the tables of the sources can be read, and are what the checks take them for
    line-ends     CR LF at the end of every line, and nowhere a CR or LF alone
    code-page     "CharSet" and the first line name the code page of the list, every byte is a character of it
    syntax        the first line is no setting (it would not be found); sections and keys stand there once;
                  no line is neither section, setting nor empty; no blanks around a value
    missing       every key that the code looks up, every entry of the menu and every control with a caption is in every
                  file, and so is every key of the English one
    unused        no key is in a file that nothing looks up
    empty         a text is empty only where the English one is
    access-keys   one letter or digit behind one "&", no two alike in a menu or dialog, and one wherever the
                  English text has one
    placeholders  the same "%f" as in English, as often
    tool-tips     "|" as often as in English, and none outside the sections of forms
    own-texts     the texts that the check program has of its own are those of the English file
    lengths       a text of the options dialog leaves the dialog narrow enough for the smallest screen
    terms         wherever the English text has a term of lang/terms.txt, the other language has its own word for it
"""
import argparse
import pathlib
import re
import shutil
import sys
import tempfile

SCRIPTS = pathlib.Path(__file__).resolve().parent
sys.dont_write_bytecode = True
sys.path.insert(0, str(SCRIPTS))
import languages  # noqa: E402
import tables  # noqa: E402

CHARSETS = {1252: 0, 1250: 238, 1251: 204, 1253: 161, 1254: 162, 1257: 186}  # of Windows, by code page

# Keys that the code reads by names that it puts together or keeps in variables. In the sources each stands as a literal.
IN_VARIABLES = [
    ("OutlookAddIn", "Buttonsync ButtonSendToPhone ButtonUpdate Msg1"),
    ("Misc", "Ok Cancel Default Infrared"),
    ("Info", "Font CharSet"),
    ("PhoneBooks", "SB"),
    ("Outlook", "no"),
    ("Calendar", "Anniversary Birthday Off"),
    ("Fields", "Birthday"),
    ("Messages", "Debug1 Debug2"),
]
# Keys that exist as values only: the type letters of items.
COMPUTED = [("OutlookAddIn", "A"), ("OutlookAddIn", "C"), ("OutlookAddIn", "T")]

FORMS = ["FormOlAddInOptions", "FormQuestion"]
# These take the texts of [Misc].
STANDARD_BUTTONS = {"ButtonOK": "Ok", "ButtonCancel": "Cancel"}
MESSAGE = re.compile(r"\bconstexpr std::int32_t \w+Message = (\d+);")

# The options dialog at 96 dots an inch: a letter of its font, and what the smallest screen leaves a form.
LETTER = 6
WIDEST = 640 - 16

CALL = re.compile(r'\bGetLanguageString(?:Replaced)?\(\s*([^,()]+?)\s*,\s*([^,()]+?)\s*[,)]')
LITERAL = re.compile(r'^"((?:[^"\\]|\\.)*)"$')


class LanguageFile:
    """One file: its settings in order, and what is wrong with its shape."""

    def __init__(self, name, page, data):
        self.name = name
        self.page = page
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
        if (int(charset.group(1)) if charset else None) != CHARSETS[self.page]:
            self.fault("code-page", f"CharSet is not that of code page {self.page}")
        if f"code page {self.page}".encode() not in data.split(b"\n")[0]:
            self.fault("code-page", f"the first line does not name code page {self.page}")
        try:
            return data.decode(f"cp{self.page}")
        except UnicodeDecodeError as error:
            self.fault("code-page", f"byte {error.start} is no character of code page {self.page}")
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


def of_tables(root):
    """What the tables of the sources say: keys that every file must have, keys that one may have, keys that are on the
    screen together."""
    menu = tables.menu_keys(root)
    needed = {("OutlookAddIn", key): "the menu has it" for key in menu}
    allowed, together = {}, [[("OutlookAddIn", key) for key in menu]]
    for form in FORMS:
        controls = tables.form_controls(root, form)
        needed[form, form] = "it is a form's caption"
        allowed.update({(form, name): "the form has it" for name, _ in controls})
        needed.update({(form, name): "the form's table has it" for name, caption in controls
                       if caption and name not in STANDARD_BUTTONS})
    captions = [name for name, caption in tables.form_controls(root, "FormOlAddInOptions") if caption]
    together.append([("Misc", STANDARD_BUTTONS[name]) if name in STANDARD_BUTTONS else ("FormOlAddInOptions", name)
                     for name in captions])
    for keys in tables.question_captions(root):
        needed.update({("FormQuestion", key): "the question box has it" for key in keys})
        together.append([("FormQuestion", key) for key in keys])
    texts = tables.check_texts(root)
    needed.update({("FormCheck", key): "the check program has it" for key, _ in texts})
    together.append([("FormCheck", key) for key, _ in texts if key.startswith(("Button", "Label"))])
    return needed, allowed, together


def used_keys(root, needed, faults):
    """Every key that the code reads -> how."""
    files = sources(root)
    everything = "\n".join(files.values())
    used = dict(needed)
    used.update({pair: f"{where} looks it up" for pair, where in looked_up(files).items()})
    used.update({pair: "it is put together" for pair in COMPUTED})
    used.update({("Messages", number + "Msg"): "a message has this number" for number in MESSAGE.findall(everything)})
    for section, keys in IN_VARIABLES:
        for key in keys.split():
            if (section, key) not in used and f'"{key}"' not in everything:
                faults.append(("unused", f"nothing in src/ looks up [{section}] {key}"))
            used.setdefault((section, key), "the sources have it")
    return used


def check_list(root, listed, faults):
    """The list of languages against the files and the sources."""
    names = [language.name for language in listed]
    for path in sorted((root / "lang").glob("*.lng")):
        if path.stem not in names:
            faults.append(("listed", f"{path.name} is not in languages.txt"))
    for name in names:
        if not (root / "lang" / f"{name}.lng").exists():
            faults.append(("listed", f"{name}.lng is not there"))
    codes = {(code, language.name) for language in listed for code in language.codes if code != "*"}
    for code, name in sorted(codes ^ set(tables.system_languages(root))):
        faults.append(("listed", f"languages.txt and LanguageText.cpp do not both give {name} the code {code}"))
    for language in listed:
        code = {"po": "pt", "ne": "nl"}.get(language.name[:2].lower(), language.name[:2].lower())
        if language.help != code:
            faults.append(("listed", f"languages.txt gives {language.name} the help {language.help}, not {code}"))
        if language.page not in CHARSETS:
            faults.append(("listed", f"languages.txt gives {language.name} an unknown code page"))
    spoken = re.findall(r"MUI_LANGUAGE (\w+)", (root / "setup" / "Setup.nsi").read_text())
    if len(spoken) != len(listed):
        faults.append(("listed", f"setup/Setup.nsi speaks {len(spoken)} languages, languages.txt has {len(listed)}"))
    installing = (root / "docs" / "installing.md").read_text(encoding="utf-8")
    for language in listed:
        if f"{language.number} " not in installing:
            faults.append(("listed", f"docs/installing.md does not name /LANG={language.number}, {language.name}"))


def access_key(caption):
    marks = re.findall(r"&(.?)", caption)
    marks = [mark for mark in marks if mark != "&"]
    return marks


def check_access_keys(language, reference, together, faults):
    def fault(what):
        faults.append(("access-keys", f"{language.name}.lng: {what}"))

    for pair, value in language.texts.items():
        marks = access_key(value.split("|")[0])
        if any(not re.fullmatch("[A-Za-z0-9]", mark) for mark in marks) or len(marks) > 1:
            fault(f"[{pair[0]}] {pair[1]} has no proper access key: {value}")
        if bool(marks) != bool(access_key(reference.texts.get(pair, "").split("|")[0])):
            fault(f"[{pair[0]}] {pair[1]} differs from English in having an access key")
    for pairs in together:
        taken = {}
        for section, name in pairs:
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


def layout_lengths(root):
    """The constants of the options dialog's layout: name -> pixels."""
    text = "".join((root / "src" / name).read_text(encoding="utf-8")
                   for name in ("bridge/OptionsLayout.cpp", "platform/forms/Design.h"))
    return {name: int(value) for name, value in re.findall(r"constexpr std::int32_t (\w+) = (\d+);", text)}


def check_lengths(root, language, places, faults):
    """Each line of the options dialog, as wide as the layout makes it."""
    design = layout_lengths(root)
    around = 2 * (design["margin"] + design["inset"])

    def width(key, section="FormOlAddInOptions"):
        caption = language.texts.get((section, key), "").split("|")[0].replace("&", "")
        return LETTER * len(caption)

    def report(what, pixels):
        if pixels > WIDEST:
            faults.append(("lengths", f"{language.name}.lng: {what} makes the options dialog {pixels} pixels wide"))

    labels = max(width(key) for key, place in places if place == "Place::Label") + design["columnGap"]
    report("a label", around + labels + design["fieldWidth"])
    for key, place in places:
        if place == "Place::Unit":
            report(key, around + labels + design["numberWidth"] + design["columnGap"] + width(key))
        if place == "Place::Option":
            report(key, around + design["mark"] + width(key))
        if place == "Place::Group":
            report(key, 2 * design["margin"] + design["captionEnds"] + width(key))
    buttons = [width(STANDARD_BUTTONS[key], "Misc") if key in STANDARD_BUTTONS else width(key)
               for key, place in places if place == "Place::Button"]
    button = max(design["buttonWidthAt96"], max(buttons) + design["buttonPadding"])
    report("a button", 2 * design["margin"] + len(buttons) * (button + design["buttonGap"]))


def check_terms(root, language, reference, faults):
    for word, theirs in terms(root):
        own = theirs.get(language.name)
        if own is None:
            faults.append(("terms", f"terms.txt has no word of {language.name} for {word}"))
            continue
        for pair, english in reference.texts.items():
            if not re.search(word, plain(english), re.IGNORECASE) or pair not in language.texts:
                continue
            if not re.search(own, plain(language.texts[pair]), re.IGNORECASE):
                faults.append(("terms", f"{language.name}.lng: [{pair[0]}] {pair[1]} says {word!r} in English, but not "
                                        f"{own!r} here"))


def plain(text):
    return text.replace("&", "")


def check_own_texts(root, reference, faults):
    """Where no language file is there, the check program speaks by itself, and says the same."""
    for key, english in tables.check_texts(root):
        if reference.texts.get(("FormCheck", key), english) != english:
            faults.append(("own-texts", f"{reference.name}.lng: [FormCheck] {key} is not the text of check/Texts.cpp"))


def terms(root):
    """The blocks of lang/terms.txt: an English word and the words of the languages, as regular expressions."""
    found = []
    for line in (root / "lang" / "terms.txt").read_text(encoding="utf-8").splitlines():
        if line.startswith("[") and line.endswith("]"):
            found.append((line[1:-1], {}))
        elif "=" in line and not line.startswith("#"):
            name, word = line.split("=", 1)
            found[-1][1][name.strip()] = word.strip()
    return found


def check_tables(root, faults):
    """None where a table cannot be read."""
    try:
        layout = tables.rows(root / "src/bridge/OptionsControls.h", "rows")
        return of_tables(root), [(row[0][0], row[1]) for row in layout]
    except (tables.NoSuchTable, OSError, ValueError, IndexError, TypeError) as error:
        faults.append(("tables", str(error)))
        return None


def check(root):
    faults = []
    found = check_tables(root, faults)
    if not found:
        return faults, 0, 0
    (needed, allowed, together), places = found
    listed = languages.read(root)
    check_list(root, listed, faults)
    used = used_keys(root, needed, faults)
    files = {}
    for entry in listed:
        path = root / "lang" / f"{entry.name}.lng"
        if path.exists() and entry.page in CHARSETS:
            files[entry.name] = LanguageFile(entry.name, entry.page, path.read_bytes())
    reference = files[listed[0].name]
    check_own_texts(root, reference, faults)
    for pair in reference.texts:
        used.setdefault(pair, f"{reference.name} has it") if pair in allowed else None
    for language in files.values():
        faults += language.faults
        for pair, why in used.items():
            if pair not in language.texts:
                faults.append(("missing", f"{language.name}.lng: [{pair[0]}] {pair[1]} is missing; {why}"))
        for pair in language.texts:
            if pair not in used:
                faults.append(("unused", f"{language.name}.lng: nothing looks up [{pair[0]}] {pair[1]}"))
        check_access_keys(language, reference, together, faults)
        check_against_reference(language, reference, faults)
        check_lengths(root, language, places, faults)
        if language is not reference:
            check_terms(root, language, reference, faults)
    return faults, len(files), len(used)


# --- the test of the check itself

# (rule, file, what stands there, what is put in its place); .lng files in their own code page.
BREAKS = [
    ("line-ends", "lang/Deutsch.lng", "\r\n[Misc]", "\n[Misc]"),
    ("line-ends", "lang/Polski.lng", "\r\nOk=", "\rOk="),
    ("code-page", "lang/Cesky.lng", "CharSet=238", "CharSet=77"),
    ("code-page", "lang/Cesky.lng", "CharSet=238", "CharSet=0"),
    ("code-page", "lang/languages.txt", "Cesky         1250", "Cesky         1252"),
    ("syntax", "lang/English.lng", "Corvella language file:", "Title="),
    ("syntax", "lang/English.lng", "[Outlook]", "[Misc]"),
    ("syntax", "lang/English.lng", "mEditor=", "mAbout="),
    ("syntax", "lang/English.lng", "mEditor=", "mEditor "),
    ("syntax", "lang/English.lng", "=Infrared", "= Infrared"),
    ("missing", "lang/Nederlands.lng", "mLogFile=", "mLogFiles="),
    ("unused", "lang/English.lng", "TextRemain=", "CheckX="),
    ("missing", "lang/Cesky.lng", "TextRemain=", "CheckT="),
    ("missing", "src/addin/cOlExplorerEntries.cpp", '{"mAbout", "&Info"', '{"mNew", "Ne&w", "New", 0, -1, false, 0}, {"mAbout", "&Info"'),
    ("missing", "src/bridge/OptionsControls.h", '{{"ButtonOK"', '{{"CheckNew", ControlKind::CheckBox, 0, "&New"}, Place::Option}, {{"ButtonOK"'),
    ("missing", "src/question/QuestionRules.cpp", '"ButtonNo3", {}, "ButtonCancel"', '"ButtonNo4", {}, "ButtonCancel"'),
    ("missing", "src/config/InifileCV.h", "missingProfileMessage = 139", "missingProfileMessage = 140"),
    ("unused", "lang/Nederlands.lng", "[Misc]\r\n", "[Misc]\r\nSpare=x\r\n"),
    ("unused", "src/addin/cOlExplorerEntries.cpp", '"mLogFile"', '"mAbout"'),
    ("empty", "lang/Espanol.lng", "Birthday=Cumpleaños", "Birthday="),
    ("access-keys", "lang/Deutsch.lng", "&Neue SMS", "N&eue SMS"),
    ("access-keys", "lang/Deutsch.lng", "&Neue SMS", "Neue SMS"),
    ("access-keys", "lang/Francais.lng", "É&diteur", "&Éditeur"),
    ("access-keys", "lang/English.lng", "&New SMS", "&New &SMS"),
    ("access-keys", "lang/English.lng", "&Yes", "&No"),
    ("access-keys", "lang/English.lng", "Show the synchronization &dialog", "Show the &synchronization dialog"),
    ("placeholders", "lang/Cesky.lng", "%f%e", "%f"),
    ("placeholders", "lang/Polski.lng", "%i", "%m"),
    ("tool-tips", "lang/Polski.lng", "&od razu|", "&od razu: "),
    ("tool-tips", "lang/Polski.lng", "&Nowy SMS", "&Nowy SMS|Nowy"),
    ("lengths", "lang/Polski.lng", "Label1=&Uruchom", "Label1=&Uruchom" + " bardzo" * 6),
    ("lengths", "lang/Deutsch.lng", "OptionSync=S&ofort", "OptionSync=S&ofort" + " oder gleich" * 7),
    ("lengths", "lang/Francais.lng", "Frame3=Profil", "Frame3=Profil" + " de Corvella" * 9),
    ("lengths", "lang/Espanol.lng", "Cancel=Cancelar", "Cancel=Cancelar sin guardar los cambios"),
    ("lengths", "src/bridge/OptionsLayout.cpp", "fieldWidth = 160", "fieldWidth = 460"),
    ("terms", "lang/Deutsch.lng", "An Handy senden", "An Telefon senden"),
    ("terms", "lang/terms.txt", "Polski = \\btelefon\\b\n", ""),
    ("own-texts", "lang/English.lng", "SignHint=Hint", "SignHint=Advice"),
    ("missing", "src/check/Texts.cpp", '{"SignHint"', '{"SignAdvice", "Advice"}, {"SignHint"'),
    ("access-keys", "lang/Deutsch.lng", "ButtonClose=&Schli", "ButtonClose=Sc&hli"),
    ("placeholders", "lang/Cesky.lng", "LoadOther=LoadBehavior je %a", "LoadOther=LoadBehavior je"),
    ("listed", "lang/languages.txt", "Nederlands    1252", "Hollands      1252"),
    ("listed", "lang/languages.txt", "  NL  ", "  XX  "),
    ("listed", "lang/languages.txt", " nl ", " ne "),
    ("listed", "setup/Setup.nsi", "!insertmacro MUI_LANGUAGE Polish\n", ""),
    ("listed", "docs/installing.md", "1045 Polish", "Polish"),
    ("tables", "src/addin/cOlExplorerEntries.cpp", "MenuEntry entries[]", "MenuEntry rows[]"),
    ("tables", "src/bridge/OptionsControls.h", "inline constexpr Row rows[] = {", "inline constexpr Row rows[] = Made({"),
]


def encoding_of(root, name):
    pages = {f"lang/{language.name}.lng": f"cp{language.page}" for language in languages.read(root)}
    return pages.get(name, "utf-8")


def self_test(root):
    """Each break must be reported under its rule, and the files as they stand must be clean."""
    failures = [f"the files as they stand: {what}" for _, what in check(root)[0]]
    with tempfile.TemporaryDirectory() as folder:
        copy = pathlib.Path(folder)
        for part in ("src", "lang", "setup"):
            shutil.copytree(root / part, copy / part)
        (copy / "docs").mkdir()
        shutil.copy(root / "docs" / "installing.md", copy / "docs")

        def expect(rule, what):
            if rule not in {found for found, _ in check(copy)[0]}:
                failures.append(f"not reported as {rule}: {what}")

        for rule, name, old, new in BREAKS:
            encoding = encoding_of(root, name)
            data = (root / name).read_bytes()
            if old.encode(encoding) not in data:
                failures.append(f"{name} no longer holds {old!r}: adapt the self-test")
            (copy / name).write_bytes(data.replace(old.encode(encoding), new.encode(encoding)))
            expect(rule, f"{old!r} -> {new!r} in {name}")
            (copy / name).write_bytes(data)
        german = copy / "lang" / "Deutsch.lng"
        german.write_bytes(german.read_bytes().replace("über Corvella".encode("cp1252"), b"\x81ber Corvella"))
        expect("code-page", "a byte that is no letter in German")
        shutil.copy(root / "lang" / "Deutsch.lng", german)
        czech = copy / "lang" / "Cesky.lng"
        czech.unlink()
        expect("listed", "a file that is gone")
        shutil.copy(root / "lang" / "Cesky.lng", czech)
        shutil.copy(czech, copy / "lang" / "Slovensky.lng")
        expect("listed", "a file that is not in the list")
        (copy / "lang" / "Slovensky.lng").unlink()
        probe = copy / "src" / "probe.cpp"
        probe.write_text('constexpr char section[] = "Probe";\nauto text = GetLanguageString(section, "NotThere");\n')
        expect("missing", "a key that the sources look up and no file has")
    untested = set(re.findall(r"^    (\w[\w-]+)  ", __doc__.split("The rules")[1], re.MULTILINE)) \
        - {rule for rule, *_ in BREAKS}
    failures += [f"no break tests the rule {rule}" for rule in sorted(untested)]
    return failures


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    parser.add_argument("--self-test", action="store_true")
    parser.add_argument("--root", type=pathlib.Path, default=pathlib.Path(__file__).resolve().parent.parent)
    options = parser.parse_args()
    if options.self_test:
        failures = self_test(options.root)
        print("\n".join(failures) or f"check-languages: {len(BREAKS) + 4} breaks, all reported")
        return 1 if failures else 0
    faults, files, keys = check(options.root)
    for rule, what in faults:
        print(f"{rule}: {what}")
    if not faults:
        print(f"check-languages: {files} languages, {keys} keys each, no fault")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
