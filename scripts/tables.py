"""Reads the tables of the sources, so that the checks look at what the product has and keep no list of their own.

A table is an array whose rows stand in braces and hold nothing but literals and names:

    constexpr Row rows[] = {
        {"Label1", ControlKind::Label, 0, "&Start"},
        ...
    };

A row comes back as a list: texts as str, everything else as Name (its source text), inner braces as a list.
"""
import re

TOKEN = re.compile(r'\s+|//[^\n]*|"((?:[^"\\]|\\.)*)"|([{},])|([^\s{},"]+)')


class Name(str):
    """A token that is no text: a number, a name, an expression."""


class NoSuchTable(Exception):
    pass


def parse(text, start):
    """The list whose opening brace stands at `start`."""
    stack, position, values = [], start, None
    while True:
        token = TOKEN.match(text, position)
        if not token:
            raise NoSuchTable(f"no table can be read from {text[position:position + 40]!r}")
        position = token.end()
        literal, sign, word = token.groups()
        if sign == "{":
            stack.append(values)
            values = []
        elif sign == "}":
            done, values = values, stack.pop()
            if values is None:
                return done
            values.append(done)
        elif literal is not None:
            if values and type(values[-1]) is str and not separated:
                values[-1] += literal  # two literals beside each other are one
            else:
                values.append(literal)
        elif word:
            if values and isinstance(values[-1], Name) and not separated:
                values[-1] = Name(f"{values[-1]} {word}")
            else:
                values.append(Name(word))
        if sign or literal is not None or word:
            separated = sign == ","


def rows(path, array):
    """The rows of the array of that name in a source file."""
    text = path.read_text(encoding="utf-8")
    found = re.search(r"\b" + array + r"(?:\[[^\]]*\]|)\s*(?:=\s*)?(?=\{)", text)
    if not found:
        raise NoSuchTable(f"{path.name} has no table {array}")
    return parse(text, found.end())


def constant(path, name):
    """The text of a constant."""
    found = re.search(r"\b" + name + r'(?:\[\])?\s*=\s*"((?:[^"\\]|\\.)*)"', path.read_text(encoding="utf-8"))
    if not found:
        raise NoSuchTable(f"{path.name} has no text {name}")
    return found.group(1)


# --- the tables that the checks ask for


def menu_keys(root):
    """The language keys of the menu's entries, top to bottom."""
    return [row[0] for row in rows(root / "src/addin/cOlExplorerEntries.cpp", "entries")]


def form_controls(root, form):
    """The controls of a form, in the order of its table: (name, its own caption)."""
    path, array = {
        "FormOlAddInOptions": ("src/bridge/OptionsControls.h", "rows"),
        "FormQuestion": ("src/question/FormQuestion.cpp", "controls"),
    }[form]
    specs = [row[0] if isinstance(row[0], list) else row for row in rows(root / path, array)]
    return [(spec[0], spec[3] if len(spec) > 3 else "") for spec in specs]


def question_captions(root):
    """For each set of buttons of the question box, the keys of the captions that stand there together."""
    suffix = constant(root / "src/question/QuestionBox.cpp", "noCaptionSuffix")
    groups = []
    for shows_no, shows_cancel, first, second, third, _ in rows(root / "src/question/QuestionRules.cpp", "plans"):
        keys = [first]
        if shows_no == "true":
            keys.append(second or f"ButtonNo({suffix})")
        if shows_cancel == "true":
            keys.append(third or "ButtonCancel")
        groups.append(keys + ["ButtonAll", "ButtonHelp", "Check1"])
    return groups


def check_texts(root):
    """The texts of the check program: (key, English text)."""
    return [(key, english) for key, english in rows(root / "src/check/Texts.cpp", "texts")]


def system_languages(root):
    """Windows' codes and the language files that they stand for."""
    return [(code, name.removesuffix(".lng")) for code, name in
            rows(root / "src/language/LanguageText.cpp", "systemLanguages")]
