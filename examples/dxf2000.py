"""A small writer of DXF files for the examples: what a careful program wants of such a file, and no more.

The files are of DXF 2000 unless told otherwise; from 2007 on their strings are UTF-8.
"""
import math
import pathlib

MODEL, PAPER = "1F", "1B"  # block records

_groups = []
_FIXED = {0x17A, 0x22A, 0x22B, *range(0x200, 0x220), *range(0x300, 0x340), *range(0x400, 0x480),
          *range(0x1000, 0x1040)}  # line types, layers, styles, blocks
_handles = (handle for handle in range(0x40, 0x10000) if handle not in _FIXED)
_layers = [("0", 7, "Continuous")]
_linetypes = []
_styles = [("Standard", "txt", 1.0, 0.0, None)]
_entity_classes = []  # (name, C++ name) of kinds that need one
_blocks = []  # (name, record handle, base, function that draws it)
_owner = [MODEL]


def put(*pairs):
    for code, value in pairs:
        _groups.append(f"{code:3d}\n{value}\n")


def number(value):
    return f"{value:.10g}" if "." in f"{value:.10g}" else f"{value:.10g}.0"


def head(kind, owner, *subclasses):
    put((0, kind), (5, f"{next(_handles):X}"), (330, owner))
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
    put((0, kind), (5, f"{next(_handles):X}"), (330, _owner[-1]), (100, "AcDbEntity"), (8, layer))
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


def polyline(layer, vertices, closed=False, width=0.0, **look):
    """`vertices`: (x, y) or (x, y, bulge) or (x, y, bulge, start width, end width)."""
    pairs = [(90, len(vertices)), (70, int(closed)), (43, number(width))]
    if any(len(vertex) > 3 for vertex in vertices):
        pairs.pop()
    for vertex in vertices:
        pairs += [(10, number(vertex[0])), (20, number(vertex[1]))]
        if len(vertex) > 3:
            pairs += [(40, number(vertex[3])), (41, number(vertex[4]))]
        if len(vertex) > 2 and vertex[2]:
            pairs.append((42, number(vertex[2])))
    entity("LWPOLYLINE", layer, "AcDbPolyline", *pairs, **look)


def spline(layer, points, closed=False, **look):
    """A cubic B-spline by its control points, clamped, or closed and periodic."""
    points = list(points)
    if closed:
        points += points[:3]
        knots = list(range(len(points) + 4))
    else:
        knots = [0] * 4 + list(range(1, len(points) - 3)) + [len(points) - 3] * 4
    pairs = [(210, "0.0"), (220, "0.0"), (230, "1.0"), (70, 8), (71, 3), (72, len(knots)), (73, len(points)), (74, 0)]
    pairs += [(40, number(knot)) for knot in knots]
    for x, y in points:
        pairs += point_groups(0, x, y)
    entity("SPLINE", layer, "AcDbSpline", *pairs, **look)


def text(layer, x, y, height, value, rotation=0.0, style="Standard", align=0, vertical=0, second=None, width=1.0,
         oblique=0.0, generation=0, **look):
    """`align`: 0 left, 1 centred, 2 right, 3 aligned, 4 middle, 5 fit; `vertical`: 0 base line, 1 bottom, 2 middle,
    3 top. `second` is the other end of a text that is aligned or fit."""
    pairs = [*point_groups(0, x, y), (40, number(height)), (1, value), (50, number(rotation)), (7, style)]
    if width != 1.0:
        pairs.append((41, number(width)))
    if oblique:
        pairs.append((51, number(oblique)))
    if generation:
        pairs.append((71, generation))
    if align or vertical:
        pairs += [(72, align), *point_groups(1, *(second or (x, y)))]
    pairs.append((100, "AcDbText"))
    if vertical:
        pairs.append((73, vertical))
    entity("TEXT", layer, "AcDbText", *pairs, **look)


def mtext(layer, x, y, height, value, attachment=5, width=0.0, style="Standard", rotation=0.0, spacing=1.0,
          is_exact=False, background=(), **look):
    """`background`: groups of the ground behind the text."""
    parts = [value[i:i + 250] for i in range(0, len(value), 250)] or [""]
    pairs = [*point_groups(0, x, y), (40, number(height)), (41, number(width)), (71, attachment), (72, 1),
             *((3, part) for part in parts[:-1]), (1, parts[-1]), (7, style)]
    if rotation:
        pairs.append((50, number(rotation)))
    if spacing != 1.0 or is_exact:
        pairs += [(73, 2 if is_exact else 1), (44, number(spacing))]
    entity("MTEXT", layer, "AcDbMText", *pairs, *background, **look)


def attributes(layer, owner, values):
    """ATTRIBs of the INSERT `owner`: (tag, value, x, y, height)."""
    for tag, value, x, y, height in values:
        put((0, "ATTRIB"), (5, f"{next(_handles):X}"), (330, owner), (100, "AcDbEntity"), (8, layer), (100, "AcDbText"),
            *point_groups(0, x, y), (40, number(height)), (1, value), (7, "Standard"), (100, "AcDbAttribute"),
            (2, tag), (70, 0))
    put((0, "SEQEND"), (5, f"{next(_handles):X}"), (330, owner), (100, "AcDbEntity"), (8, layer))


def insert(layer, name, x, y, scale=1.0, rotation=0.0, scale_y=None, values=()):
    handle = f"{next(_handles):X}"
    put((0, "INSERT"), (5, handle), (330, _owner[-1]), (100, "AcDbEntity"), (8, layer), (100, "AcDbBlockReference"))
    if values:
        put((66, 1))
    put((2, name), *point_groups(0, x, y), (41, number(scale)), (42, number(scale if scale_y is None else scale_y)),
        (43, number(abs(scale))), (50, number(rotation)))
    if values:
        attributes(layer, handle, values)


def block(name, draw, base=(0.0, 0.0)):
    """A block whose entities the function `draw` puts."""
    _blocks.append((name, f"{0x1000 + len(_blocks):X}", base, draw))


def entity_class(name, cpp):
    _entity_classes.append((name, cpp))


def layer(name, color, linetype="Continuous"):
    _layers.append((name, color, linetype))


def linetype(name, description, *dashes):
    _linetypes.append((name, description, dashes))


def style(name, font, width=1.0, oblique=0.0, face=None, is_bold=False, is_italic=False):
    """`face` names a TrueType family, whose file is `font`."""
    _styles.append((name, font, width, oblique, face and (face, is_italic << 24 | is_bold << 25 | 34)))


def style_record(handle, name, font, width, oblique, face):
    pairs = [(100, "AcDbTextStyleTableRecord"), (2, name), (70, 0), (40, "0.0"), (41, number(width)),
             (50, number(oblique)), (71, 0), (42, "2.5"), (3, font), (4, "")]
    if face:
        pairs += [(1001, "ACAD"), (1000, face[0]), (1071, face[1])]
    return handle, pairs


def linetype_record(handle, name, text, *dashes):
    return handle, [(100, "AcDbLinetypeTableRecord"), (2, name), (70, 0), (3, text), (72, 65), (73, len(dashes)),
                    (40, number(sum(abs(d) for d in dashes))),
                    *[pair for d in dashes for pair in ((49, number(d)), (74, 0))]]


def layer_record(handle, name, color, linetype):
    return handle, [(100, "AcDbLayerTableRecord"), (2, name), (70, 0), (62, color), (6, linetype), (390, "0F")]


def _header(version, low, high):
    put((0, "SECTION"), (2, "HEADER"), (9, "$ACADVER"), (1, version), (9, "$DWGCODEPAGE"), (3, "ANSI_1252"),
        (9, "$INSBASE"), (10, "0.0"), (20, "0.0"), (30, "0.0"), (9, "$EXTMIN"), (10, number(low[0])), (20, number(low[1])),
        (30, "0.0"), (9, "$EXTMAX"), (10, number(high[0])), (20, number(high[1])), (30, "0.0"), (9, "$LTSCALE"), (40, "1.0"),
        (9, "$FILLMODE"), (70, 1), (9, "$PDMODE"), (70, 0), (9, "$INSUNITS"), (70, 4), (9, "$MEASUREMENT"), (70, 1),
        (9, "$HANDSEED"), (5, "FFFF"), (0, "ENDSEC"), (0, "SECTION"), (2, "CLASSES"))
    for name, cpp in (("ACDBDICTIONARYWDFLT", "AcDbDictionaryWithDefault"), ("ACDBPLACEHOLDER", "AcDbPlaceHolder"),
                      ("LAYOUT", "AcDbLayout")):
        put((0, "CLASS"), (1, name), (2, cpp), (3, "ObjectDBX Classes"), (90, 0))
        if version >= "AC1018":
            put((91, 2 if name == "LAYOUT" else 1))  # how many objects are of the class
        put((280, 0), (281, 0))
    for name, cpp in _entity_classes:
        put((0, "CLASS"), (1, name), (2, cpp), (3, "ObjectDBX Classes"), (90, 0))
        if version >= "AC1018":
            put((91, 1))
        put((280, 0), (281, 1))
    put((0, "ENDSEC"))


def _tables():
    put((0, "SECTION"), (2, "TABLES"))
    table("VPORT", "8", [("29", [(100, "AcDbViewportTableRecord"), (2, "*Active"), (70, 0), (10, "0.0"), (20, "0.0"),
                                 (11, "1.0"), (21, "1.0"), (12, "110.0"), (22, "-2.5"), (13, "0.0"), (23, "0.0"),
                                 (14, "10.0"), (24, "10.0"), (15, "10.0"), (25, "10.0"), (16, "0.0"), (26, "0.0"),
                                 (36, "1.0"), (17, "0.0"), (27, "0.0"), (37, "0.0"), (40, "270.0"), (41, "1.2"),
                                 (42, "50.0"), (43, "0.0"), (44, "0.0"), (50, "0.0"), (51, "0.0"), (71, 0), (72, 1000),
                                 (73, 1), (74, 3), (75, 0), (76, 0), (77, 0), (78, 0)])])
    table("LTYPE", "5", [linetype_record("14", "ByBlock", ""), linetype_record("15", "ByLayer", ""),
                         linetype_record("16", "Continuous", "Solid line"),
                         *[linetype_record(f"{0x200 + i:X}", name, description, *dashes)
                           for i, (name, description, dashes) in enumerate(_linetypes)]])
    table("LAYER", "2", [layer_record("10" if i == 0 else f"{0x300 + i:X}", *record)
                         for i, record in enumerate(_layers)])
    table("STYLE", "3", [style_record("11" if i == 0 else f"{0x400 + i:X}", *record)
                         for i, record in enumerate(_styles)])
    table("VIEW", "6", [])
    table("UCS", "7", [])
    table("APPID", "9", [("12", [(100, "AcDbRegAppTableRecord"), (2, "ACAD"), (70, 0)])])
    table("DIMSTYLE", "A", [("27", [(100, "AcDbDimStyleTableRecord"), (2, "Standard"), (70, 0), (340, "11")])])
    table("BLOCK_RECORD", "1", [(handle, [(100, "AcDbBlockTableRecord"), (2, name), (340, layout)])
                                for handle, name, layout in ((MODEL, "*Model_Space", "22A"),
                                                             (PAPER, "*Paper_Space", "22B"),
                                                             *[(record, name, "0") for name, record, *_ in _blocks])])
    put((0, "ENDSEC"))


def _block(record, name, base, space, draw):
    head("BLOCK", record, "AcDbEntity")
    if space:
        put((67, 1))
    put((8, "0"), (100, "AcDbBlockBegin"), (2, name), (70, 0), *point_groups(0, *base), (3, name), (1, ""))
    _owner.append(record)
    draw()
    _owner.pop()
    head("ENDBLK", record, "AcDbEntity")
    if space:
        put((67, 1))
    put((8, "0"), (100, "AcDbBlockEnd"))


def _all_blocks():
    put((0, "SECTION"), (2, "BLOCKS"))
    for record, name, space in ((MODEL, "*Model_Space", 0), (PAPER, "*Paper_Space", 1)):
        _block(record, name, (0.0, 0.0), space, lambda: None)
    for name, record, base, draw in _blocks:
        _block(record, name, base, 0, draw)
    put((0, "ENDSEC"))


def _layout(handle, name, order, record, low, high):
    return [(0, "LAYOUT"), (5, handle), (330, "1A"), (100, "AcDbPlotSettings"), (1, ""), (2, "none_device"), (4, ""),
            (6, ""), (40, "0.0"), (41, "0.0"), (42, "0.0"), (43, "0.0"), (44, "0.0"), (45, "0.0"), (46, "0.0"),
            (47, "0.0"), (48, "0.0"), (49, "0.0"), (140, "0.0"), (141, "0.0"), (142, "1.0"), (143, "1.0"),
            (70, 1712 if order == 0 else 688), (72, 0), (73, 0), (74, 5), (7, ""), (75, 16), (147, "1.0"),
            (148, "0.0"), (149, "0.0"), (100, "AcDbLayout"), (1, name), (70, 1), (71, order), (10, "0.0"), (20, "0.0"),
            (11, "12.0"), (21, "9.0"), *point_groups(2, 0, 0), *point_groups(4, *low),
            *point_groups(5, *high), (146, "0.0"), *point_groups(3, 0, 0),
            (16, "1.0"), (26, "0.0"), (36, "0.0"), (17, "0.0"), (27, "1.0"), (37, "0.0"), (76, 0), (330, record)]


def _objects(low, high):
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
    put(*_layout("22A", "Model", 0, MODEL, low, high), *_layout("22B", "Layout1", 1, PAPER, low, high))
    put((0, "ENDSEC"), (0, "EOF"))


def write(path, low, high, draw, version="AC1015"):
    """Writes the file: `draw` puts the entities of model space, whose extents run from `low` to `high`."""
    _header(version, low, high)
    _tables()
    _all_blocks()
    put((0, "SECTION"), (2, "ENTITIES"))
    draw()
    put((0, "ENDSEC"))
    _objects(low, high)
    content = "".join(_groups).replace("\n390\n0F\n", "\n390\nF\n")
    encoding = "utf-8" if version >= "AC1021" else "cp1252"
    pathlib.Path(path).write_text(content, encoding=encoding, newline="\r\n")
