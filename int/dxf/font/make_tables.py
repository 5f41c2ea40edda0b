#!/usr/bin/env python3
"""Makes the character tables that are installed with the program, from free fonts.

  *.chr    character widths of the fonts that drawings name (in this folder)
  std.*    character widths of the host's own fonts (in ../../../cad/glob/font)

A drawing's font is a stroke font that we don't have and needn't have: what counts is how wide its characters
are. Each is described below by a free font of like proportions, the average advance of its letters and digits
and the gap between two characters, both in hundredths of the height of its capital letters.

Run it without arguments after a change here; it needs the Debian packages fonts-routed-gothic, fonts-osifont,
fonts-liberation2 and fonts-dejavu-core. With --check it writes nothing and fails if a table isn't up to date.
"""
import pathlib
import struct
import sys

FONTS = pathlib.Path("/usr/share/fonts/truetype")
ROUTED = FONTS / "routed-gothic/routed-gothic.ttf"
ISO = FONTS / "osifont/osifont.ttf"
SERIF = FONTS / "liberation2/LiberationSerif-Regular.ttf"
SERIF_ITALIC = FONTS / "liberation2/LiberationSerif-Italic.ttf"
SERIF_BOLD = FONTS / "liberation2/LiberationSerif-Bold.ttf"
GREEK = FONTS / "dejavu/DejaVuSans.ttf"
MONO = FONTS / "dejavu/DejaVuSansMono.ttf"

# Greek letters in the places of Latin ones, as the Greek stroke fonts have them.
LATIN = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ"
IN_GREEK = "αβχδεφγηι∂κλμνοπϑρστυ∈ωξψζΑΒΧΔΕΦΓΗΙϑΚΛΜΝΟΠΘΡΣΤΥ∇ΩΞΨΖ"

# Name: number of the host's font, source, average advance, gap, fixed pitch. The host draws font number n with the
# same free font (host/cpp/text/host_fonts.cpp), and the configuration maps names to numbers (int/dxf/dflt/keep.dxd).
CHR = {
    "txt": (1, ROUTED, 98, 33, False),
    "isocp": (2, ISO, 80, 25, False),
    "romans": (3, ROUTED, 90, 30, False),
    "romanc": (4, SERIF, 92, 22, False),
    "italic": (5, SERIF_ITALIC, 92, 22, False),
    "gothic": (6, SERIF_BOLD, 90, 20, False),
    "greekc": (7, GREEK, 92, 22, False),
    "isocpeur": (8, ISO, 80, 25, False),
    "monotxt": (9, MONO, 100, 33, True),
    "simplex": (10, ROUTED, 90, 30, False),
    "romand": (11, ROUTED, 92, 28, False),
    "romant": (12, SERIF_BOLD, 94, 22, False),
    "complex": (13, SERIF, 92, 22, False),
    "italicc": (14, SERIF_ITALIC, 92, 22, False),
    "italict": (15, SERIF_ITALIC, 94, 22, False),
    "scripts": (16, SERIF_ITALIC, 85, 12, False),
    "scriptc": (17, SERIF_ITALIC, 85, 12, False),
    "gothice": (18, SERIF_BOLD, 90, 20, False),
    "gothicg": (19, SERIF_BOLD, 90, 20, False),
    "gothici": (20, SERIF_BOLD, 90, 20, False),
    "greek": (21, GREEK, 92, 25, False),
    "greeks": (22, GREEK, 92, 25, False),
    "isocp2": (23, ISO, 80, 25, False),
    "isocp3": (24, ISO, 80, 25, False),
    "isoct": (25, ISO, 90, 27, True),
    "isoct2": (26, ISO, 90, 27, True),
    "isoct3": (27, ISO, 90, 27, True),
    "isocteur": (28, ISO, 90, 27, True),
    "iso": (29, ISO, 80, 25, False),
    "iso3098b": (30, ISO, 80, 25, False),
    "din": (31, ISO, 80, 25, False),
    "bold": (32, ROUTED, 92, 28, False),
    "standard": (33, ROUTED, 90, 30, False),
}

# Codes of a .chr table beyond 255 and what they stand for: degree, plus-minus, diameter.
SYMBOLS = {256: 0x00B0, 257: 0x00B1, 258: 0x2300}
BLANK = 0.75  # stroke fonts have a wide blank
TAB, TAB_BLANKS = 9, 4  # a tab is as wide as so many blanks, but one in fonts of fixed pitch
SWITCHES = (14, 15, 16)  # underline, overline, strike-through on and off: no width


class Font:
    """Advances of a TrueType file, relative to the height of its capital letters."""

    def __init__(self, path):
        self.data = path.read_bytes()
        count = struct.unpack_from(">H", self.data, 4)[0]
        self.tables = {}
        for i in range(count):
            tag, _, offset, length = struct.unpack_from(">4sIII", self.data, 12 + 16 * i)
            self.tables[tag.decode("latin-1")] = (offset, length)
        self.long_metrics = self.u16("hhea", 34)
        self.long_offsets = self.u16("head", 50)
        self.glyphs = self.read_cmap()
        self.cap = self.box(self.glyphs[ord("H")])[3]
        self.descent = -self.box(self.glyphs[ord("g")])[1]

    def u16(self, table, at):
        return struct.unpack_from(">H", self.data, self.tables[table][0] + at)[0]

    def read_cmap(self):
        base = self.tables["cmap"][0]
        for i in range(self.u16("cmap", 2)):
            platform, _, offset = struct.unpack_from(">HHI", self.data, base + 4 + 8 * i)
            at = base + offset
            if platform in (0, 3) and struct.unpack_from(">H", self.data, at)[0] == 4:
                return self.read_format4(at)
        raise ValueError("no usable character map")

    def read_format4(self, at):
        segments = struct.unpack_from(">H", self.data, at + 6)[0] // 2
        words = lambda pos: struct.unpack_from(f">{segments}H", self.data, pos)
        ends, starts = words(at + 14), words(at + 16 + 2 * segments)
        deltas, ranges_at = words(at + 16 + 4 * segments), at + 16 + 6 * segments
        ranges = words(ranges_at)
        glyphs = {}
        for i in range(segments):
            for code in range(starts[i], ends[i] + 1):
                glyph = code
                if ranges[i]:
                    pos = ranges_at + 2 * i + ranges[i] + 2 * (code - starts[i])
                    glyph = struct.unpack_from(">H", self.data, pos)[0]
                    if glyph == 0:
                        continue
                glyph = (glyph + deltas[i]) & 0xFFFF
                if glyph:
                    glyphs[code] = glyph
        return glyphs

    def box(self, glyph):
        form, size = (">II", 4) if self.long_offsets else (">HH", 2)
        start, _ = struct.unpack_from(form, self.data, self.tables["loca"][0] + size * glyph)
        if not self.long_offsets:
            start *= 2
        return struct.unpack_from(">4h", self.data, self.tables["glyf"][0] + start + 2)

    def advance(self, char):
        glyph = self.glyphs.get(char)
        if glyph is None:
            return None
        at = self.tables["hmtx"][0] + 4 * min(glyph, self.long_metrics - 1)
        return struct.unpack_from(">H", self.data, at)[0] / self.cap


def unicode_of(code):
    """The character of a code of Windows 1252; None where it has none."""
    if code < 32:
        return None
    try:
        return ord(bytes([code]).decode("cp1252"))
    except UnicodeDecodeError:
        return None


def advances(font, is_greek):
    """Advance of the tab and of each code from 32 to 258 relative to the average of letters and digits."""
    usual = [font.advance(ord(c)) for c in LATIN + "0123456789"]
    average = sum(usual) / len(usual)
    swap = dict(zip(map(ord, LATIN), map(ord, IN_GREEK))) if is_greek else {}
    result = {}
    for code in range(32, 259):
        char = SYMBOLS.get(code) or (unicode_of(code) if code < 256 else None)
        advance = font.advance(swap.get(char, char)) if char else None
        if advance is None and code == 258:
            advance = font.advance(0xD8)  # a slashed O for the diameter sign
        if advance:
            result[code] = max(advance / average, BLANK) if code in (32, 160) else advance / average
    return {TAB: TAB_BLANKS * result[32], **result}


def chr_table(name):
    _, source, average, gap, fixed = CHR[name]
    font = Font(source)
    lines = [str(round(100 * font.descent / font.cap))]
    for code, advance in advances(font, name.startswith("greek")).items():
        if code in SYMBOLS.values():
            continue  # stands as 256 or 257
        width = average - gap if fixed else max(round(average * advance) - gap, 5)
        lines.append(f"{code},{width},{gap}")
    return "\n".join(lines) + "\n"


def std_table(name):
    _, source, average, gap, fixed = CHR[name]
    font = Font(source)
    lines = [f"; {name}: widths in hundredths of the character width"] + ([] if fixed else ["P"])
    lines += [f"*?;{code}\nW0" for code in SWITCHES]
    for code, advance in advances(font, name.startswith("greek")).items():
        if code > 255:
            continue
        width = 100 if fixed else max(round(100 * (average * advance - gap) / (average - gap)), 5)
        sign = chr(code) if 32 < code < 127 else "?"
        lines.append(f"*{sign};{code}\nW{width}")
    return "\n".join(lines) + "\n"


def main():
    here = pathlib.Path(__file__).resolve().parent
    host = here.parents[2] / "cad/glob/font"
    wanted = {here / f"{name}.chr": chr_table(name) for name in CHR}
    wanted.update({host / f"std.{CHR[name][0]}": std_table(name) for name in CHR})
    stale = [path for path, text in wanted.items() if not path.exists() or path.read_text() != text]
    if "--check" in sys.argv[1:]:
        for path in stale:
            print(f"{path} isn't up to date; run {pathlib.Path(__file__).name}")
        return 1 if stale else 0
    for path in stale:
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(wanted[path])
    return 0


if __name__ == "__main__":
    sys.exit(main())
