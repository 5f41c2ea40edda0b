#!/usr/bin/env python3
"""Writes the sample of the classification's rules, int/dxf/dflt/layerconv.xls: a spreadsheet file of one sheet, a
compound document with the one stream "Workbook".

Columns: A key, B "layer" attribute of the pattern (empty: any, for the first seven keys), C pen and line type of the
element (empty: any), D the layer that the content goes to; "<>" stands for the pattern's "layer". Row 1 is a heading.
The first rule that fits wins.
"""
import pathlib
import struct

ROWS = [
    ("Key", "Layer attribute", "Pen, line type", "Layer in the DXF file"),
    ("windowaxis", "", "", "<>-AXIS"),
    ("dooraxis", "", "", "<>-AXIS"),
    ("walluncut", "", "", "<>-BEYOND"),
    ("wallhatch", "", "", "<>-FILL"),
    ("columnhatch", "", "", "<>-FILL"),
    ("windowtext", "", "", "<>-TEXT"),
    ("doortext", "", "", "<>-TEXT"),
    ("element", "WALL", "1,2", "<>-HIDDEN"),
    ("element", "WALL", "2", "<>-CUT"),
    ("element", "WALL", "", "<>-LINES"),
    ("text", "WALL", "", "<>-TEXT"),
    ("hatch", "WALL", "", "<>-FILL"),
    ("arrow", "WALL", "", "<>-ARROWS"),
]
SECTOR = 512
FREE, END, FAT = 0xFFFFFFFF, 0xFFFFFFFE, 0xFFFFFFFD


def record(kind, body):
    return struct.pack("<HH", kind, len(body)) + body


def begin(kind):
    return record(0x0809, struct.pack("<HHHHII", 0x0600, kind, 0x0DBB, 0x07CC, 0x41, 0x06))


def workbook():
    sheet = begin(0x0010) + record(0x0200, struct.pack("<IIHHH", 0, len(ROWS), 0, 4, 0))
    for r, row in enumerate(ROWS):
        for c, text in enumerate(row):
            if text:
                sheet += record(0x0204, struct.pack("<HHHHB", r, c, 0, len(text), 0) + text.encode("latin-1"))
    sheet += record(0x000A, b"")
    name = b"Rules"
    bound = struct.pack("<BB", len(name), 0) + name
    ahead = begin(0x0005) + record(0x0042, struct.pack("<H", 1200))
    start = len(ahead) + 4 + 6 + len(bound) + 4
    return ahead + record(0x0085, struct.pack("<IBB", start, 0, 0) + bound) + record(0x000A, b"") + sheet


def entry(name, kind, child, start, size):
    text = (name + "\0").encode("utf-16-le") if name else b""
    return (text.ljust(64, b"\0") + struct.pack("<HBBIII", len(text), kind, 1, FREE, FREE, child) + bytes(16) +
            struct.pack("<IQQIII", 0, 0, 0, start, size, 0))


def compound(stream):
    stream = stream.ljust(max(4096, -(-len(stream) // SECTOR) * SECTOR), b"\0")  # no short streams
    count = len(stream) // SECTOR
    fat = [FAT, END] + [i + 3 for i in range(count - 1)] + [END]
    fat += [FREE] * (SECTOR // 4 - len(fat))
    header = bytes.fromhex("D0CF11E0A1B11AE1") + bytes(16) + struct.pack("<HHHHH", 0x3E, 3, 0xFFFE, 9, 6) + bytes(6)
    header += struct.pack("<IIIIIIIII", 0, 1, 1, 0, 4096, END, 0, END, 0)
    header += struct.pack("<109I", 0, *([FREE] * 108))
    directory = entry("Root Entry", 5, 1, END, 0) + entry("Workbook", 2, FREE, 2, len(stream)) + 2 * entry("", 0, FREE, 0, 0)
    return header + struct.pack(f"<{SECTOR // 4}I", *fat) + directory + stream


target = pathlib.Path(__file__).resolve().parent.parent / "dflt" / "layerconv.xls"
target.write_bytes(compound(workbook()))
