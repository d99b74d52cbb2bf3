#!/usr/bin/env python3
"""Draws the pictures of the add-in's buttons: faces 101 to 107, masks 202 to 207, all 16x16.

Writes src/resources/*.bmp, the pictures of the setup, and docs/pictures/buttons.png for people. scripts/check-bitmaps.py tells whether the
bitmaps are still what this script draws.

Faces have 16 colours: the host's menu colour is put in by replacing light grey in the colour table, which works
only for bitmaps that have one. Masks are black where the face shows and white where it does not; 101, of the
versions of Outlook that know no masks, has none. Light falls from the upper left; outlines are dark, so that a
face stands out on a light ground, and the areas inside are light, so that it does on a dark one.
"""
import pathlib
import struct
import zlib

ROOT = pathlib.Path(__file__).resolve().parent.parent
SIZE = 16

TRANSPARENT = (192, 192, 192)
PALETTE = {
    ".": TRANSPARENT,
    "K": (38, 50, 76),     # outline
    "D": (92, 102, 122),   # metal, in the shadow
    "M": (150, 160, 176),
    "L": (214, 222, 234),
    "W": (255, 255, 255),
    "B": (28, 76, 156),    # blue: screens, text
    "b": (66, 128, 220),
    "c": (166, 206, 250),
    "G": (18, 112, 40),    # green: what moves
    "g": (60, 178, 72),
    "h": (176, 232, 160),
    "O": (176, 88, 0),     # yellow: what is new, what writes
    "o": (255, 176, 32),
    "y": (255, 236, 140),
    "R": (214, 72, 60),
}

SAVE_AND_SEND = """
................
KKKKKKKKKKKK....
KWOOWWWWWWKb....
KWyoWbbbbKKKKKK.
KWyoWWWWWKWWWWLK
KbbbbWbbWKWKKKLK
KbbbBWWWWKWccbLK
KKKKKKKKKKWcbbLK
.....G...KWKKKLK
.....GG..KWWWWLK
.GGGGGhG.KLMLMLK
.GhhhhhgGKLLLLMK
.GggggggGKLMLMMK
.GGGGGgG.KMMMMMK
.....GG...KKKKK.
.....G..........
"""

FACES = {
    101: SAVE_AND_SEND,
    102: SAVE_AND_SEND,
    103: """
............G...
.KK.........GG..
.Kb.....GGGGGhG.
KKKKKK..GhhhhhgG
KWWWWLK.GggggggG
KWKKKLK.GGGGGgG.
KWccbLK.....GG..
KWcbbLK.....G...
KWKKKLK....B....
KWWWWLK...BB....
KLMLMLK..BcBBBBB
KLLLLMK.BccccccB
KLMLMMK.BbbbbbbB
KMMMMMK..BbBBBBB
.KKKKK....BB....
...........B....
""",
    104: """
................
.KKKKKKKKKKKKK..
.KcccbbbbbbbBK..
.KbWWWbbbWbRBK..
.KKKKKKKKKKKKKK.
.KcccKWWWWWWKRRK
.KcBcKWMMMWKyoRK
.KcccKWWWWKyoOK.
.KcBcKWMMKyoOK..
.KcccKWWKyoOKK..
.KcBcKWWKWOKLK..
.KcccKWWKKKWLK..
.KLLLKLLLLLLLK..
.KKKKKKKKKKKKK..
................
................
""",
    105: """
............O...
...........OyO..
.KKKKKKKKKOoyoO.
KWWWWWWWWOyyWyyO
KWWWWWWWWWOoyoO.
KWbbbbbbbWWOyO..
KWWWWWWWWWWWOK..
KWbbbbbbbbbWWK..
KWWWWWWWWWWLLK..
KWbbbbbWWWLLLK..
KWWWWWLLLLLLLK..
.KKKKWLKKKKKK...
....KWLK........
....KWK.........
....KK..........
................
""",
    106: """
......KKK.......
..KK..KLK..KK...
.KWWKKKLMKKWMK..
.KWWWLLLLLLLMK..
..KWLLLLLLLMK...
..KLLLBBBLLMK...
KKKLLB...bLMKKK.
KWLLLB...bLMMDK.
KKKLLB...bLMKKK.
..KLLLbbbLMMK...
..KLLLLLLMMMK...
.KWLLLMMMMMMDK..
.KLMKKKMMKKMDK..
..KK..KMK..KK...
......KKK.......
................
""",
    107: """
................
.........KK.....
.........Kb.....
........KKKKKK..
....G...KWWWWLK.
....GG..KWKKKLK.
GGGGGhG.KWccbLK.
GhhhhhgGKWcbbLK.
GhggggggGWKKKLK.
GggggggGKWWWWLK.
GGGGGgG.KLMLMLK.
....GG..KLLLLMK.
....G...KLMLMMK.
........KMMMMMK.
.........KKKKK..
................
""",
}


def rows_of(number):
    rows = FACES[number].split()
    if len(rows) != SIZE or any(len(row) != SIZE or set(row) - set(PALETTE) for row in rows):
        raise SystemExit(f"draw-bitmaps: face {number} is not {SIZE} rows of {SIZE} known letters")
    return rows


def bitmap(colours, bits, lines):
    """A bottom-up bitmap file with a whole colour table; `lines` are indices, top line first."""
    table = list(colours) + [(0, 0, 0)] * (2**bits - len(colours))
    palette = b"".join(struct.pack("<BBBB", blue, green, red, 0) for red, green, blue in table)
    data = b""
    for line in reversed(lines):
        number = 0
        for index in line:
            number = number << bits | index
        packed = number.to_bytes(len(line) * bits // 8, "big")
        data += packed + bytes(-len(packed) % 4)
    offset = 14 + 40 + len(palette)
    header = struct.pack("<2sIHHI", b"BM", offset + len(data), 0, 0, offset)
    info = struct.pack("<IiiHHIIiiII", 40, SIZE, SIZE, 1, bits, 0, len(data), 2835, 2835, 0, 0)
    return header + info + palette + data


def face(number):
    letters = list(PALETTE)
    return bitmap(list(PALETTE.values()), 4, [[letters.index(c) for c in row] for row in rows_of(number)])


def mask(number):
    return bitmap([(0, 0, 0), (255, 255, 255)], 1, [[int(c == ".") for c in row] for row in rows_of(number)])


def icon():
    """The first face as an icon file: 16, 32 and 48 pixels wide, 32 bits a pixel, transparent where the face is."""
    images, entries = [], []
    for scale in (1, 2, 3):
        size = SIZE * scale
        pixels, transparent = b"", b""
        for y in reversed(range(size)):
            line = [rows_of(101)[y // scale][x // scale] for x in range(size)]
            for letter in line:
                red, green, blue = PALETTE[letter]
                pixels += bytes((0, 0, 0, 0) if letter == "." else (blue, green, red, 255))
            bits = int("".join("1" if letter == "." else "0" for letter in line), 2).to_bytes(size // 8, "big")
            transparent += bits + bytes(-len(bits) % 4)
        images.append(struct.pack("<IiiHHIIiiII", 40, size, size * 2, 1, 32, 0, len(pixels), 0, 0, 0, 0) + pixels + transparent)
        entries.append(size)
    offset = 6 + 16 * len(images)
    header = struct.pack("<HHH", 0, 1, len(images))
    for size, image in zip(entries, images):
        header += struct.pack("<BBBBHHII", size, size, 0, 0, 1, 32, len(image), offset)
        offset += len(image)
    return header + b"".join(images)


def wizard():
    """The picture beside the setup's last page: the first face, six times as large, on blue. 24 bits a pixel."""
    width, height, scale = 164, 314, 6
    left, top = (width - SIZE * scale) // 2, 48
    rows, lines = rows_of(101), b""
    for y in reversed(range(height)):
        shade = y / height
        ground = bytes(int(value * (1 - shade / 2)) for value in reversed(PALETTE["b"]))
        line = b""
        for x in range(width):
            column, row = (x - left) // scale, (y - top) // scale
            letter = rows[row][column] if 0 <= column < SIZE and 0 <= row < SIZE else "."
            line += ground if letter == "." else bytes(reversed(PALETTE[letter]))
        lines += line + bytes(-len(line) % 4)
    return (struct.pack("<2sIHHI", b"BM", 54 + len(lines), 0, 0, 54) +
            struct.pack("<IiiHHIIiiII", 40, width, height, 1, 24, 0, len(lines), 2835, 2835, 0, 0) + lines)


def png(width, height, pixels):
    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))

    lines = b"".join(b"\0" + bytes(v for pixel in line for v in pixel) for line in pixels)
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0)) +
            chunk(b"IDAT", zlib.compress(lines, 9)) + chunk(b"IEND", b""))


def contact_sheet():
    """Every face on white, light grey, the menu greys of Windows 2000 and XP, and dark: as it is and eight times."""
    grounds = [(255, 255, 255), TRANSPARENT, (212, 208, 200), (236, 233, 216), (64, 64, 64)]
    enlarged, gap = 8, 8
    cell = SIZE * enlarged + gap
    width, height = len(FACES) * cell + gap, len(grounds) * (cell + SIZE + gap) + gap
    pixels = []
    for ground in grounds:
        band = [[ground] * width for _ in range(cell + SIZE + gap)]
        for column, number in enumerate(FACES):
            left = gap + column * cell
            for y, row in enumerate(rows_of(number)):
                for x, letter in enumerate(row):
                    if letter == ".":
                        continue
                    band[gap + y][left + x] = PALETTE[letter]
                    for dy in range(enlarged):
                        for dx in range(enlarged):
                            band[2 * gap + SIZE + y * enlarged + dy][left + x * enlarged + dx] = PALETTE[letter]
        pixels += band
    pixels += [[grounds[-1]] * width for _ in range(gap)]
    return png(width, height, pixels)


def bitmaps():
    drawn = {f"src/resources/{number}.bmp": face(number) for number in FACES}
    drawn |= {f"src/resources/{number + 100}.bmp": mask(number) for number in FACES if number != 101}
    return drawn


def main():
    others = {"docs/pictures/buttons.png": contact_sheet(), "setup/Corvella.ico": icon(),
              "setup/Wizard.bmp": wizard()}
    for name, data in (bitmaps() | others).items():
        path = ROOT / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(data)


if __name__ == "__main__":
    main()
