#!/usr/bin/env python3
"""Writes texts.dxf, a specimen sheet: alignments, codes and fonts of TEXT and MTEXT.

A red cross marks a point that a text is placed by, a blue box the frame of an MTEXT.
"""
import pathlib

from dxf2000 import block, insert, layer, line, mtext, number, rectangle, style, text, write

WIDTH = 128  # of a column
STROKE_FONTS = ("txt", "simplex", "romans", "romand", "romanc", "romant", "complex", "italic", "italicc", "scripts",
                "gothic", "gothice", "greek", "greekc", "monotxt", "isocp", "isocpeur", "isoct", "din")
FACES = (("Arial", "arial.ttf"), ("Arial Narrow", "arialn.ttf"), ("Times New Roman", "times.ttf"),
         ("Courier New", "cour.ttf"), ("Verdana", "verdana.ttf"), ("Georgia", "georgia.ttf"),
         ("ISOCPEUR", "isocpeur.ttf"))
LOOKS = (("Plain", {}), ("Bold", {"is_bold": True}), ("Italic", {"is_italic": True}))


def cross(x, y, size=1.4):
    line("POINTS", x - size, y, x + size, y)
    line("POINTS", x, y - size, x, y + size)


def title(x, y, words):
    text("SHEET", x, y, 3.2, words, style="Arial Bold")
    line("SHEET", x, y - 1.6, x + WIDTH, y - 1.6)


def caption(x, y, words, align=0, vertical=0):
    text("CAPTIONS", x, y, 1.8, words, style="Arial Plain", align=align, vertical=vertical)


def show_code(x, y, code):
    """A code as it is written: percent signs by their own code, a backslash parted from what follows."""
    caption(x, y, code.replace("%%", "%%%%%%").replace("\\", "\\%%o%%o"))


def alignments(x, y):
    title(x, y, "TEXT: groups 72 and 73")
    places = (x + 20, x + 72, x + WIDTH - 2)
    for column, name in enumerate(("0 left", "1 centre", "2 right")):
        caption(places[column], y - 6.5, name, column)
    for row, name in enumerate(("3 top", "2 middle", "1 bottom", "0 base line")):
        at = y - (11, 25, 39, 49)[row]
        caption(x, at, name, 0, 2)
        for column, words in enumerate(("Agl\u00c4y", "Centre", "Right jq")):
            text("TEXTS", places[column], at, 5, words, align=column, vertical=3 - row)
            cross(places[column], at)


def spans(x, y):
    """Texts between two points, and one with its middle on a point."""
    title(x, y, "TEXT: aligned, fit, middle")
    for at, end, align, height, words in (((2, -15), (38, -9), 3, 6.5, "aligned"), ((45, -14), (80, -14), 5, 4, "wide"),
                                          ((86, -15), (100, -9), 5, 4, "narrow")):
        first, second = (x + at[0], y + at[1]), (x + end[0], y + end[1])
        text("TEXTS", *first, height, words, align=align, second=second)
        cross(*first)
        cross(*second)
    text("TEXTS", x + 116, y - 12, 4, "middle", align=4)
    cross(x + 116, y - 12)


def turned(x, y):
    title(x, y, "TEXT: rotation, slant, width, generation")
    for i in range(6):
        text("TEXTS", x + 17, y - 19, 2.5, f"  {60 * i}%%d", rotation=60 * i)
    cross(x + 17, y - 19)
    looks = (("slant 20", {"oblique": 20.0}), ("slant -15", {"oblique": -15.0}), ("narrow", {"width": 0.6}),
             ("wide", {"width": 1.5}))
    for i, (words, look) in enumerate(looks):
        at = x + 42 + 30 * (i % 2), y - 11 - 12 * (i // 2)
        text("TEXTS", *at, 3.5, words, **look)
        cross(*at)
    for at_x, at_y, words, generation in ((x + 126, y - 11, "backward", 2), (x + 102, y - 21, "on its head", 4)):
        text("TEXTS", at_x, at_y, 3, words, generation=generation, style="isocp")
        cross(at_x, at_y)


PERCENT_CODES = ("%%c25 H7", "90%%d", "%%p0.05", "100%%%", "%%uline%%u below", "%%oline%%o above", "%%kline%%k through",
                 "%%u%%otwo%%o%%u", "%%065%%066%%176", "\\U+03A9 \\U+2264", "\\M+1835C \\M+18EDA", "80%%")


def percent_codes(x, y):
    title(x, y, "TEXT: codes")
    for i, code in enumerate(PERCENT_CODES):
        at_x, at_y = x + 65 * (i % 2), y - 7 - 6 * (i // 2)
        show_code(at_x, at_y, code)
        text("TEXTS", at_x + 31, at_y, 3, code, style="romans")


def label():
    """A block with a text that its INSERTs turn, stretch and mirror."""
    rectangle("FRAMES", 0, 0, 19, 7)
    text("TEXTS", 2, 2, 3, "block", style="isocp")


def blocks(x, y):
    title(x, y, "TEXT in blocks: turned, stretched, mirrored; attributes")
    for at_x, at_y, look in ((0, -15, {}), (33, -18, {"rotation": 30.0}), (58, -15, {"scale": 1.4, "scale_y": 0.8}),
                             (109, -15, {"scale": -1.0, "scale_y": 1.0}), (2, -21, {"scale_y": -1.0})):
        insert("SHEET", "LABEL", x + at_x, y + at_y, **look)
        cross(x + at_x, y + at_y)
    insert("SHEET", "LABEL", x + 58, y - 28, values=(("NUMBER", "attribute", x + 80, y - 26, 3),))
    cross(x + 58, y - 28)


def stroke_fonts(x, y):
    title(x, y, "Stroke fonts")
    for i, font in enumerate(STROKE_FONTS):
        at_y = y - 7 - 5.4 * i
        caption(x, at_y, font)
        text("TEXTS", x + 18, at_y, 3, "AaBbGgQq 0123456789 \u00c4\u00f6\u00df\u00e9 %%c%%d%%p&@#", style=font)


def faces(x, y):
    title(x, y, "TrueType faces")
    for i, (face, _) in enumerate(FACES):
        at_y = y - 7 - 5.4 * i
        caption(x, at_y, face)
        for column, (look, _) in enumerate(LOOKS):
            text("TEXTS", x + 27 + 36 * column, at_y, 3, f"{look} 012", style=f"{face} {look}")


SCRIPTS = (("Latin", "\u00c5ngstr\u00f6m \u0141\u00f3d\u017a \u010cesk\u00fd"),
           ("Greek", "\u039a\u03b1\u03bb\u03b7\u03bc\u03ad\u03c1\u03b1 \u03b1\u03b2\u03b3 \u03a9"),
           ("Cyrillic", "\u0427\u0435\u0440\u0442\u0451\u0436 \u0416\u0449\u042f"),
           ("Japanese", "\u56f3\u9762 \u8868\u793a \u30bd\u30d5\u30c8"), ("Chinese", "\u56fe\u7eb8 \u8bf4\u660e"),
           ("Signs", "\u2300 \u2264 \u2265 \u2260 \u2248 \u00b2 \u00bd \u221e \u2192 \u25a1 \u20ac"))


def scripts(x, y):
    title(x, y, "Scripts and signs, isocp and Arial")
    for i, (name, sample) in enumerate(SCRIPTS):
        at_y = y - 7 - 5.6 * i
        caption(x, at_y, name)
        text("TEXTS", x + 18, at_y, 3, sample, style="isocp")
        text("TEXTS", x + 78, at_y, 3, sample, style="Arial Plain")


def attachments(x, y):
    title(x, y, "MTEXT: group 71 in a box of group 41")
    width, height = 37, 16
    for attachment in range(1, 10):
        column, row = (attachment - 1) % 3, (attachment - 1) // 3
        left, top = x + 45 * column, y - 6 - 20 * row
        rectangle("FRAMES", left, top - height, left + width, top)
        at = left + width / 2 * column, top - height / 2 * row
        mtext("TEXTS", *at, 3, f"{attachment} in a box\\Pthat breaks a long line", attachment, width=width,
              style="isocp")
        cross(*at)


MTEXT_CODES = ("one {\\C1;red} word", "{\\c16711680;blue} word", "{\\fTimes|b0|i1;face}", "{\\fArial|b1|i0;bold} word",
               "{\\Fromanc.shx;romanc} font", "{\\H1.6x;big} {\\H2;small}", "\\Lunder\\l \\Oover\\o", "\\Kthrough\\k none",
               "{\\T2;wide} {\\T0.75;tight}", "{\\Q25;slant} {\\Q-15;slant}", "{\\W0.6;narrow} {\\W1.5;wide}",
               "no\\~break^Itab", "5\\S1/2; 7\\S10/3;", "25\\S+0.2^-0.1;", "3\\S1#4; x\\S2^; y\\S^2;",
               "\\U+2205 \\M+18EDA", "\\{\\} \\\\ ^  %%d%%p", "{a {\\C3;\\H1.4x;b} a} {\\LC}")


def mtext_codes(x, y):
    title(x, y, "MTEXT: codes")
    rows = (8, 14.5, 21, 27.5, 34, 40.5, 52, 62, 69)
    for i, code in enumerate(MTEXT_CODES):
        at_x, at_y = x + 65 * (i % 2), y - rows[i // 2]
        show_code(at_x, at_y, code)
        mtext("TEXTS", at_x + 36, at_y, 3, code, 7, style="isocp")


def paragraphs(x, y):
    title(x, y, "MTEXT: paragraphs and line spacing")
    rectangle("FRAMES", x, y - 6, x + 40, y - 32)
    mtext("TEXTS", x, y - 6, 2.5, "\\pql;left\\P\\pqc;in the middle\\P\\pqr;to the right\\P\\pql;"
          "and a^Itab in lines that break where words end", 1, width=40, style="isocp")
    for i, (spacing, is_exact) in enumerate(((1.0, False), (0.8, False), (1.4, False), (1.0, True))):
        at = x + 50 + 21 * i, y - 7
        mtext("TEXTS", *at, 2.5, f"{number(spacing)}\\P{'exact' if is_exact else 'least'}\\Pline", 1, spacing=spacing,
              is_exact=is_exact, style="isocp")
        cross(*at)


def grounds(x, y):
    title(x, y, "MTEXT: ground, group 90")
    fill = (90, 1), (63, 51), (45, "1.5")
    sheet_colour = (90, 3), (63, 7), (45, "1.5")
    for i, (words, ground) in enumerate((("colour", fill), ("sheet", sheet_colour), ("frame", ((90, 16),)))):
        left = x + 45 * i
        for stripe in range(4):
            line("CAPTIONS", left, y - 6 - 3 * stripe, left + 38, y - 6 - 3 * stripe)
        mtext("TEXTS", left + 19, y - 10.5, 4, words, 5, style="isocp", background=ground)


TURN_WORDS = "turned\\Pabout\\Pits point"


def turns(x, y):
    title(x, y, "MTEXT: turned")
    for i, (rotation, attachment) in enumerate(((20, 1), (-20, 5), (90, 7), (180, 9))):
        at = (x + 4, x + 52, x + 82, x + 106)[i], y - (10, 14, 22, 9)[i]
        mtext("TEXTS", *at, 2.5, TURN_WORDS, attachment, rotation=rotation, style="isocp")
        cross(*at)


ESSAY = ("{\\H1.4x;\\fTimes New Roman|b1|i0;M}any {\\C1;colours}, {\\fArial|b1|i0;faces}, {\\H1.3x;heights} and "
         "{\\Q20;slants} in {\\Lone paragraph\\l} that is broken where the words of its box end. {\\C5;A fraction "
         "\\S7#8; doesn't part from its line}, nor does an {\\W1.5;expanded} or a {\\W0.7;condensed} word.\\P"
         "\\pqc;{\\C8;The next one is centred, and so are its lines when they are {\\Obroken\\o} in two.}")


def essay(x, y):
    title(x, y, "MTEXT: formats in a box")
    rectangle("FRAMES", x, y - 6, x + WIDTH, y - 37)
    mtext("TEXTS", x, y - 6, 3, ESSAY, 1, width=WIDTH, style="isocp")
    cross(x, y - 6)


def sheet():
    rectangle("SHEET", 0, 0, 420, 297)
    for column, sections in enumerate((((alignments, 282), (spans, 219), (turned, 189), (percent_codes, 148),
                                        (blocks, 99), (scripts, 57)),
                                       ((stroke_fonts, 282), (faces, 162), (essay, 106), (turns, 53)),
                                       ((attachments, 282), (mtext_codes, 201), (paragraphs, 110), (grounds, 56)))):
        for draw, y in sections:
            draw(9 + 137 * column, y)


block("LABEL", label)
for record in (("SHEET", 7), ("CAPTIONS", 8), ("TEXTS", 7), ("POINTS", 1), ("FRAMES", 5)):
    layer(*record)
for name in STROKE_FONTS:
    style(name, name + ".shx")
for name, file in FACES:
    for suffix, marks in LOOKS:
        style(f"{name} {suffix}", file, face=name, **marks)
write(pathlib.Path(__file__).with_name("texts.dxf"), (0, 0), (420, 297), sheet, version="AC1021")
