#!/usr/bin/env python3
"""Writes bracket.dxf: three views of a bearing bracket, made of lines, arcs, circles, ellipses, solids and points."""
import math
import pathlib

groups = []
handles = iter(range(0x40, 0x10000))
MODEL, PAPER = "1F", "1B"  # block records


def put(*pairs):
    for code, value in pairs:
        groups.append(f"{code:3d}\n{value}\n")


def number(value):
    return f"{value:.10g}" if "." in f"{value:.10g}" else f"{value:.10g}.0"


def head(kind, owner, *subclasses):
    put((0, kind), (5, f"{next(handles):X}"), (330, owner))
    for subclass in subclasses:
        put((100, subclass))


def table(name, handle, records):
    put((0, "TABLE"), (2, name), (5, handle), (330, 0), (100, "AcDbSymbolTable"), (70, len(records)))
    if name == "DIMSTYLE":
        put((100, "AcDbDimStyleTable"), (71, 1), (340, records[0][0]))
    for record in records:
        put((0, name), (105 if name == "DIMSTYLE" else 5, record[0]), (330, handle),
            (100, "AcDbSymbolTableRecord"), *record[1])
    put((0, "ENDTAB"))


def entity(kind, layer, subclass, *pairs, color=None, linetype=None):
    put((0, kind), (5, f"{next(handles):X}"), (330, MODEL), (100, "AcDbEntity"), (8, layer))
    if linetype:
        put((6, linetype))
    if color:
        put((62, color))
    put((100, subclass), *pairs)


def point_groups(index, x, y):
    return (10 + index, number(x)), (20 + index, number(y)), (30 + index, "0.0")


def line(layer, x1, y1, x2, y2, **look):
    entity("LINE", layer, "AcDbLine", *point_groups(0, x1, y1), *point_groups(1, x2, y2), **look)


def circle(layer, x, y, r, **look):
    entity("CIRCLE", layer, "AcDbCircle", *point_groups(0, x, y), (40, number(r)), **look)


def arc(layer, x, y, r, start, end, **look):
    entity("ARC", layer, "AcDbCircle", *point_groups(0, x, y), (40, number(r)), (100, "AcDbArc"),
           (50, number(start)), (51, number(end)), **look)


def ellipse(layer, x, y, major_x, major_y, ratio, start=0.0, end=2 * math.pi, **look):
    entity("ELLIPSE", layer, "AcDbEllipse", *point_groups(0, x, y), *point_groups(1, major_x, major_y),
           (210, "0.0"), (220, "0.0"), (230, "1.0"), (40, number(ratio)), (41, number(start)), (42, number(end)),
           **look)


def solid(layer, *corners, **look):
    corners = list(corners) + [corners[-1]] * (4 - len(corners))
    pairs = [pair for i, (x, y) in enumerate(corners) for pair in point_groups(i, x, y)]
    entity("SOLID", layer, "AcDbTrace", *pairs, **look)


def point(layer, x, y, **look):
    entity("POINT", layer, "AcDbPoint", *point_groups(0, x, y), **look)


def rectangle(layer, x1, y1, x2, y2, **look):
    corners = [(x1, y1), (x2, y1), (x2, y2), (x1, y2), (x1, y1)]
    for (ax, ay), (bx, by) in zip(corners, corners[1:]):
        line(layer, ax, ay, bx, by, **look)


def arrow(x, y, angle, size=3.5):
    """A filled arrow head at (x, y) that points towards `angle` degrees."""
    a = math.radians(angle)
    back = (x - size * math.cos(a), y - size * math.sin(a))
    side = (-math.sin(a) * size / 6, math.cos(a) * size / 6)
    solid("DIMENSIONS", (x, y), (back[0] + side[0], back[1] + side[1]), (back[0] - side[0], back[1] - side[1]))


def horizontal_dimension(x1, x2, y, foot):
    for x in (x1, x2):
        line("DIMENSIONS", x, foot, x, y + math.copysign(2, y - foot))
    line("DIMENSIONS", x1, y, x2, y)
    arrow(x1, y, 180)
    arrow(x2, y, 0)


def vertical_dimension(x, y1, y2, foot):
    for y in (y1, y2):
        line("DIMENSIONS", foot, y, x + math.copysign(2, x - foot), y)
    line("DIMENSIONS", x, y1, x, y2)
    arrow(x, y1, 270)
    arrow(x, y2, 90)


def front_view():
    # The eye: two tangents from the foot to a circle of 28 about (60, 75).
    cx, cy, r, foot = 60.0, 75.0, 28.0, 38.0
    reach = math.hypot(foot, cy - 24)
    tangent = math.degrees(math.atan2(24 - cy, foot) + math.acos(r / reach))
    tx, ty = r * math.cos(math.radians(tangent)), r * math.sin(math.radians(tangent))
    arc("OUTLINE", cx, cy, r, tangent, 180 - tangent)
    line("OUTLINE", cx + tx, cy + ty, cx + foot, 24)
    line("OUTLINE", cx - tx, cy + ty, cx - foot, 24)
    arc("OUTLINE", cx + foot + 4, 24, 4, 180, 270)
    arc("OUTLINE", cx - foot - 4, 24, 4, 270, 0)
    for side in (1, -1):
        line("OUTLINE", cx + side * (foot + 4), 20, cx + side * 57, 20)
        line("OUTLINE", cx + side * 60, 17, cx + side * 60, 0)
    arc("OUTLINE", 117, 17, 3, 0, 90)
    arc("OUTLINE", 3, 17, 3, 90, 180)
    line("OUTLINE", 0, 0, 120, 0)
    circle("OUTLINE", cx, cy, 15)
    circle("OUTLINE", cx, cy, 17)
    for i in range(6):
        a = math.radians(60 * i + 30)
        circle("OUTLINE", cx + 22.5 * math.cos(a), cy + 22.5 * math.sin(a), 1.75)
    circle("CENTRES", cx, cy, 22.5)
    line("CENTRES", cx - 33, cy, cx + 33, cy)
    line("CENTRES", cx, -6, cx, cy + 33)
    for x in (10, 110):
        line("HIDDEN", x - 4.5, 0, x - 4.5, 20)
        line("HIDDEN", x + 4.5, 0, x + 4.5, 20)
        line("CENTRES", x, -4, x, 25)
    horizontal_dimension(0, 120, -16, -2)
    vertical_dimension(-14, 0, cy, -2)


def side_view(x):
    rectangle("OUTLINE", x, 0, x + 60, 20)
    line("OUTLINE", x + 15, 20, x + 15, 103)
    line("OUTLINE", x + 45, 20, x + 45, 103)
    line("OUTLINE", x + 15, 103, x + 45, 103)
    for y in (60, 90):
        line("HIDDEN", x + 15, y, x + 45, y)
    line("CENTRES", x + 9, 75, x + 51, 75)
    line("CENTRES", x + 30, -5, x + 30, 108)
    # The cut through the bearing's bush, filled.
    for y1, y2 in ((57, 60), (90, 93)):
        solid("SECTION", (x + 15, y1), (x + 45, y1), (x + 15, y2), (x + 45, y2))
    horizontal_dimension(x, x + 60, -16, -2)


def top_view(y):
    rectangle("OUTLINE", 0, y, 120, y + 60)
    rectangle("OUTLINE", 32, y + 15, 88, y + 45)
    for cx in (10, 110):
        for cy in (y + 12, y + 48):
            circle("OUTLINE", cx, cy, 4.5)
            line("CENTRES", cx - 7, cy, cx + 7, cy)
            line("CENTRES", cx, cy - 7, cx, cy + 7)
            point("CENTRES", cx, cy)
    line("HIDDEN", 45, y + 15, 45, y + 45)
    line("HIDDEN", 75, y + 15, 75, y + 45)
    line("CENTRES", -6, y + 30, 126, y + 30)
    # Oil pockets: an ellipse, a half one and its chord.
    ellipse("OUTLINE", 22, y + 30, 0, 9, 0.5)
    ellipse("OUTLINE", 98, y + 30, 0, 9, 0.5, math.pi, 2 * math.pi)
    line("OUTLINE", 98, y + 21, 98, y + 39)
    vertical_dimension(-14, y, y + 60, -2)


def frame():
    rectangle("FRAME", -40, -130, 260, 125)
    rectangle("FRAME", 160, -130, 260, -95, color=8)
    line("FRAME", 160, -112, 260, -112, color=8)
    for i, color in enumerate((1, 30, 2, 3, 4, 5, 6)):
        solid("FRAME", (165 + 13 * i, -108), (175 + 13 * i, -108), (165 + 13 * i, -99), (175 + 13 * i, -99),
              color=color)
    # The sign of the first-angle projection.
    circle("FRAME", 180, -121, 3.5)
    circle("FRAME", 180, -121, 6)
    for x, half in ((200, 3.5), (214, 6)):
        line("FRAME", x, -121 - half, x, -121 + half)
    line("FRAME", 200, -117.5, 214, -115)
    line("FRAME", 200, -124.5, 214, -127)
    line("FRAME", 170, -121, 190, -121, linetype="CENTER", color=1)
    line("FRAME", 196, -121, 218, -121, linetype="CENTER", color=1)


def linetype_record(handle, name, text, *dashes):
    return handle, [(100, "AcDbLinetypeTableRecord"), (2, name), (70, 0), (3, text), (72, 65), (73, len(dashes)),
                    (40, number(sum(abs(d) for d in dashes))),
                    *[pair for d in dashes for pair in ((49, number(d)), (74, 0))]]


def layer_record(handle, name, color, linetype):
    return handle, [(100, "AcDbLayerTableRecord"), (2, name), (70, 0), (62, color), (6, linetype), (390, "0F")]


def header():
    put((0, "SECTION"), (2, "HEADER"), (9, "$ACADVER"), (1, "AC1015"), (9, "$DWGCODEPAGE"), (3, "ANSI_1252"),
        (9, "$INSBASE"), (10, "0.0"), (20, "0.0"), (30, "0.0"), (9, "$EXTMIN"), (10, "-40.0"), (20, "-130.0"),
        (30, "0.0"), (9, "$EXTMAX"), (10, "260.0"), (20, "125.0"), (30, "0.0"), (9, "$LTSCALE"), (40, "1.0"),
        (9, "$FILLMODE"), (70, 1), (9, "$PDMODE"), (70, 0), (9, "$INSUNITS"), (70, 4), (9, "$MEASUREMENT"), (70, 1),
        (9, "$HANDSEED"), (5, "FFFF"), (0, "ENDSEC"), (0, "SECTION"), (2, "CLASSES"))
    for name, cpp in (("ACDBDICTIONARYWDFLT", "AcDbDictionaryWithDefault"), ("ACDBPLACEHOLDER", "AcDbPlaceHolder"),
                      ("LAYOUT", "AcDbLayout")):
        put((0, "CLASS"), (1, name), (2, cpp), (3, "ObjectDBX Classes"), (90, 0), (280, 0), (281, 0))
    put((0, "ENDSEC"))


def tables():
    put((0, "SECTION"), (2, "TABLES"))
    table("VPORT", "8", [("29", [(100, "AcDbViewportTableRecord"), (2, "*Active"), (70, 0), (10, "0.0"), (20, "0.0"),
                                 (11, "1.0"), (21, "1.0"), (12, "110.0"), (22, "-2.5"), (13, "0.0"), (23, "0.0"),
                                 (14, "10.0"), (24, "10.0"), (15, "10.0"), (25, "10.0"), (16, "0.0"), (26, "0.0"),
                                 (36, "1.0"), (17, "0.0"), (27, "0.0"), (37, "0.0"), (40, "270.0"), (41, "1.2"),
                                 (42, "50.0"), (43, "0.0"), (44, "0.0"), (50, "0.0"), (51, "0.0"), (71, 0), (72, 1000),
                                 (73, 1), (74, 3), (75, 0), (76, 0), (77, 0), (78, 0)])])
    table("LTYPE", "5", [linetype_record("14", "ByBlock", ""), linetype_record("15", "ByLayer", ""),
                         linetype_record("16", "Continuous", "Solid line"),
                         linetype_record("17", "CENTER", "____ _ ____ _ ____ ", 9.0, -1.5, 1.5, -1.5),
                         linetype_record("18", "HIDDEN", "__ __ __ __ __ ", 3.0, -1.5)])
    table("LAYER", "2", [layer_record("10", "0", 7, "Continuous"), layer_record("21", "OUTLINE", 7, "Continuous"),
                         layer_record("22", "CENTRES", 1, "CENTER"), layer_record("23", "HIDDEN", 4, "HIDDEN"),
                         layer_record("24", "DIMENSIONS", 3, "Continuous"),
                         layer_record("25", "SECTION", 40, "Continuous"), layer_record("26", "FRAME", 5, "Continuous")])
    table("STYLE", "3", [("11", [(100, "AcDbTextStyleTableRecord"), (2, "Standard"), (70, 0), (40, "0.0"), (41, "1.0"),
                                 (50, "0.0"), (71, 0), (42, "2.5"), (3, "txt"), (4, "")])])
    table("VIEW", "6", [])
    table("UCS", "7", [])
    table("APPID", "9", [("12", [(100, "AcDbRegAppTableRecord"), (2, "ACAD"), (70, 0)])])
    table("DIMSTYLE", "A", [("27", [(100, "AcDbDimStyleTableRecord"), (2, "Standard"), (70, 0), (340, "11")])])
    table("BLOCK_RECORD", "1", [(handle, [(100, "AcDbBlockTableRecord"), (2, name), (340, layout)])
                                for handle, name, layout in ((MODEL, "*Model_Space", "22A"), (PAPER, "*Paper_Space", "22B"))])
    put((0, "ENDSEC"))


def blocks():
    put((0, "SECTION"), (2, "BLOCKS"))
    for record, name, space in ((MODEL, "*Model_Space", 0), (PAPER, "*Paper_Space", 1)):
        head("BLOCK", record, "AcDbEntity")
        if space:
            put((67, 1))
        put((8, "0"), (100, "AcDbBlockBegin"), (2, name), (70, 0), *point_groups(0, 0, 0), (3, name), (1, ""))
        head("ENDBLK", record, "AcDbEntity")
        if space:
            put((67, 1))
        put((8, "0"), (100, "AcDbBlockEnd"))
    put((0, "ENDSEC"))


def entities():
    put((0, "SECTION"), (2, "ENTITIES"))
    frame()
    front_view()
    side_view(160)
    top_view(-105)
    put((0, "ENDSEC"))


def layout(handle, name, order, record):
    return [(0, "LAYOUT"), (5, handle), (330, "1A"), (100, "AcDbPlotSettings"), (1, ""), (2, "none_device"), (4, ""),
            (6, ""), (40, "0.0"), (41, "0.0"), (42, "0.0"), (43, "0.0"), (44, "0.0"), (45, "0.0"), (46, "0.0"),
            (47, "0.0"), (48, "0.0"), (49, "0.0"), (140, "0.0"), (141, "0.0"), (142, "1.0"), (143, "1.0"),
            (70, 1712 if order == 0 else 688), (72, 0), (73, 0), (74, 5), (7, ""), (75, 16), (147, "1.0"),
            (148, "0.0"), (149, "0.0"), (100, "AcDbLayout"), (1, name), (70, 1), (71, order), (10, "0.0"), (20, "0.0"),
            (11, "12.0"), (21, "9.0"), *point_groups(2, 0, 0), (14, "-40.0"), (24, "-130.0"), (34, "0.0"),
            (15, "260.0"), (25, "125.0"), (35, "0.0"), (146, "0.0"), *point_groups(3, 0, 0),
            (16, "1.0"), (26, "0.0"), (36, "0.0"), (17, "0.0"), (27, "1.0"), (37, "0.0"), (76, 0), (330, record)]


def objects():
    put((0, "SECTION"), (2, "OBJECTS"), (0, "DICTIONARY"), (5, "C"), (330, 0), (100, "AcDbDictionary"), (281, 1),
        (3, "ACAD_GROUP"), (350, "D"), (3, "ACAD_LAYOUT"), (350, "1A"), (3, "ACAD_MLINESTYLE"), (350, "17A"),
        (3, "ACAD_PLOTSTYLENAME"), (350, "E"))
    put((0, "DICTIONARY"), (5, "17A"), (330, "C"), (100, "AcDbDictionary"), (281, 1))
    put((0, "DICTIONARY"), (5, "D"), (330, "C"), (100, "AcDbDictionary"), (281, 1))
    put((0, "ACDBDICTIONARYWDFLT"), (5, "E"), (330, "C"), (100, "AcDbDictionary"), (281, 1), (3, "Normal"), (350, "F"),
        (100, "AcDbDictionaryWithDefault"), (340, "F"))
    put((0, "ACDBPLACEHOLDER"), (5, "F"), (330, "E"))
    put((0, "DICTIONARY"), (5, "1A"), (330, "C"), (100, "AcDbDictionary"), (281, 1), (3, "Layout1"), (350, "22B"),
        (3, "Model"), (350, "22A"))
    put(*layout("22A", "Model", 0, MODEL), *layout("22B", "Layout1", 1, PAPER))
    put((0, "ENDSEC"), (0, "EOF"))


for write in (header, tables, blocks, entities, objects):
    write()
text = "".join(groups).replace("\n390\n0F\n", "\n390\nF\n")
pathlib.Path(__file__).with_name("bracket.dxf").write_text(text, newline="\r\n")
