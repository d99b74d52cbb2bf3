#!/usr/bin/env python3
"""Builds the manual out of help/: scripts/build-help.py OUTPUT

    OUTPUT/Manual/English/*.htm, Deutsch/...   the HTML manual, a folder for each language that has one in help/
    OUTPUT/cven.chm, cvde.chm                  the same as compiled help, made by Free Pascal's chmcmd

A page's source is what stands inside its body, in UTF-8, with its title as heading. The head, the line of links to
the other pages and the table of contents are made here, so that a page is named in one place only. What comes out is
in the code page of the language (lang/languages.txt), in which the viewers of Windows 2000 read a table of contents.

A page shows a picture as <img src="menu.png" alt="...">: it is docs/pictures/menu-<language>.png, which
scripts/screenshots.sh makes.
"""
import html
import pathlib
import re
import shutil
import subprocess
import sys

SCRIPTS = pathlib.Path(__file__).resolve().parent
sys.dont_write_bytecode = True
sys.path.insert(0, str(SCRIPTS))
import languages  # noqa: E402

ROOT = SCRIPTS.parent
SOURCE = ROOT / "help"
PICTURES = ROOT / "docs" / "pictures"

# In the order of the contents.
PAGES = ["index", "Sending", "Menu", "AddInOutl", "Buttons", "Trouble"]

# The add-in knows an open viewer by this in its title.
TITLE = "Corvella Manual"


def help_name(language):
    """The compiled help's name, without its extension."""
    return f"cv{language.help}"


def window_title(language):
    return TITLE if language.name == "English" else f"{TITLE} ({language.name})"


def title_of(source):
    return re.search(r"<h1>(.*?)</h1>", source, re.S).group(1).strip()


def pictures_in(source):
    """The names of the pictures that a page shows, without their extension."""
    return re.findall(r'<img src="([^"]+)\.png"', source)


def picture_file(pictures, name, language):
    return pictures / f"{name}-{language.name}.png"


def navigation(titles, current):
    links = (title if page == current else f'<a href="{page}.htm">{title}</a>' for page, title in titles.items())
    return '<p class="nav">' + " &nbsp;|&nbsp; ".join(links) + "</p>"


def whole_page(source, titles, page, code_page):
    return f"""<!DOCTYPE HTML PUBLIC "-//W3C//DTD HTML 4.01//EN" "http://www.w3.org/TR/html4/strict.dtd">
<html>
<head>
<meta http-equiv="Content-Type" content="text/html; charset=windows-{code_page}">
<title>{titles[page]}</title>
<link rel="stylesheet" type="text/css" href="style.css">
</head>
<body>
{navigation(titles, page)}
{source.strip()}
</body>
</html>
"""


def contents(titles):
    entries = "".join(
        '<li><object type="text/sitemap"><param name="Name" value="{}"><param name="Local" value="{}.htm"></object>\n'
        .format(html.escape(title, quote=True), page) for page, title in titles.items())
    return ('<!DOCTYPE HTML PUBLIC "-//IETF//DTD HTML//EN">\n<html><head></head><body>\n'
            f"<ul>\n{entries}</ul>\n</body></html>\n")


def project(language, pictures):
    name, title = help_name(language), window_title(language)
    files = "\n".join([f"{page}.htm" for page in PAGES] + [f"{picture}.png" for picture in pictures])
    return f"""[OPTIONS]
Compatibility=1.1 or later
Compiled file={name}.chm
Contents file=contents.hhc
Default Window=main
Default topic=index.htm
Full-text search=Yes
Language=0x{language.number:x}
Title={title}

[WINDOWS]
main="{title}","contents.hhc",,"index.htm","index.htm",,,,,0x63520,220,0x387e,,,,,,,,0

[FILES]
{files}
style.css
"""


def write(path, text, code_page):
    try:
        path.write_bytes(text.replace("\n", "\r\n").encode(f"cp{code_page}"))
    except UnicodeEncodeError as error:
        sys.exit(f"build-help: {path.name} holds {text[error.start]!r}, which code page {code_page} has not")


def build(output, language):
    folder, name, code_page = language.name, help_name(language), language.page
    sources = {page: (SOURCE / folder / f"{page}.htm").read_text(encoding="utf-8") for page in PAGES}
    titles = {page: title_of(source) for page, source in sources.items()}
    manual = output / "Manual" / folder
    manual.mkdir(parents=True)
    for page, source in sources.items():
        write(manual / f"{page}.htm", whole_page(source, titles, page, code_page), code_page)
    shutil.copy(SOURCE / "style.css", manual)
    pictures = sorted({name for source in sources.values() for name in pictures_in(source)})
    for picture in pictures:
        shutil.copy(picture_file(PICTURES, picture, language), manual / f"{picture}.png")

    work = output / "work" / folder
    shutil.copytree(manual, work)
    write(work / "contents.hhc", contents(titles), code_page)
    write(work / f"{name}.hhp", project(language, pictures), code_page)
    done = subprocess.run(["chmcmd", f"{name}.hhp"], cwd=work, capture_output=True, text=True, errors="replace")
    compiled = work / f"{name}.chm"
    if done.returncode != 0 or not compiled.exists():
        sys.exit(f"build-help: chmcmd failed for {folder}\n{done.stdout}{done.stderr}")
    shutil.copy(compiled, output)


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    output = pathlib.Path(sys.argv[1])
    for old in ("Manual", "work"):
        shutil.rmtree(output / old, ignore_errors=True)
    for language in languages.with_manual():
        build(output, language)
    shutil.rmtree(output / "work")


if __name__ == "__main__":
    main()
