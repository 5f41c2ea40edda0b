#!/usr/bin/env python3
"""Writes the export templates of int/dxf/dflt: header_*, objects_*, vport, vport_15, Dxf.var.

Each is a list of DXF pairs, a code line and a value line. Values between "#" signs are placeholders that the
export fills in. Handles below 200 (hexadecimal) belong to the templates, the export counts from there on. What one template or
the module points at in another is a placeholder "#…_REFERENCE#", which stands for a handle of the export.

    make_templates.py            writes the files
    make_templates.py --check    only says whether the files are as this script would write them
"""
import pathlib
import sys

HERE = pathlib.Path(__file__).resolve().parent
TARGET = HERE.parent / "dflt"

# Format → AC number. ACAD14 and ACAD15 share one template, so do ACAD11 to ACAD13.
HEADERS = {"32": 1032, "27": 1027, "24": 1024, "21": 1021, "18": 1018, "15": 1015, "12": 1009}

HANDLES = {
    "root": "C", "group": "D", "plotstyles": "E", "placeholder": "#PLOTSTYLE_REFERENCE#",
    "mlinestyles": "17", "mline_standard": "18", "plotsettings": "19", "layouts": "1A",
    "layout_paper": "#LAYOUT_PAPER_REFERENCE#", "layout_model": "#LAYOUT_MODEL_REFERENCE#",
    "layout_paper0": "#LAYOUT_PAPER0_REFERENCE#",
    "vport_table": "8", "vport_active": "#VPORT_REFERENCE#",
    "paper_record": "#PAPERSPACE_REFERENCE#", "paper0_record": "#PAPERSPACE0_REFERENCE#",
    "image_dict": "#IMAGEDICT_REFERENCE#",
    "variables": "5F", "colors": "60", "materials": "61", "scales": "62", "visualstyles": "63",
    "mat_byblock": "64", "mat_bylayer": "#MATERIAL_BYLAYER_REFERENCE#", "mat_global": "66", "scale_1": "67",
}

EASY = ["$ACADVER", "$INSBASE", "$EXTMIN", "$EXTMAX", "$LIMMIN", "$LIMMAX", "$ORTHOMODE", "$REGENMODE",
        "$FILLMODE", "$QTEXTMODE", "$MIRRTEXT", "$DRAGMODE", "$LTSCALE", "$OSMODE", "$ATTMODE", "$TEXTSIZE",
        "$TRACEWID", "$TEXTSTYLE", "$CLAYER", "$CELTYPE", "$CECOLOR", "$LUNITS", "$LUPREC", "$AUNITS", "$AUPREC",
        "$ELEVATION", "$THICKNESS", "$LIMCHECK", "$SKPOLY", "$ANGBASE", "$ANGDIR", "$PDMODE", "$PDSIZE",
        "$PLINEWID", "$COORDS", "$SPLFRAME", "$SPLINETYPE", "$SPLINESEGS", "$HANDLING"]

# ---- visual styles: the values that differ, in the order of FIELDS ------------------------------------
FIELDS = (70, 71, 72, 73, 90, 40, 41, 63, 421, 74, 91, 65, 75, 175, 42, 92, 66, 67, 425, 79, 93, 44)
STYLES = {
    "2dWireframe":       (4, 0, 2, 0, 0, .6, -30.0, 7, 16777215, 1, 4, 257, 1, 1, 1.0, 0, 257, 7, None, 5, 1, 0.0),
    "Conceptual":        (9, 3, 2, 0, 0, .6, -30.0, 7, 16777215, 2, 2, 257, 1, 1, 179.0, 8, 7, 7, None, 3, 1, 0.0),
    "Hidden":            (6, 1, 2, 2, 0, .6, -30.0, 7, 16777215, 2, 2, 257, 2, 1, 40.0, 0, 257, 7, None, 3, 1, 0.0),
    "Realistic":         (8, 2, 3, 0, 2, .6, 30.0, 7, 16777215, 0, 0, 257, 1, 1, 1.0, 8, 257, 7, None, 3, 13, 0.0),
    "Shaded":            (27, 2, 2, 1, 2, .6, 30.0, 7, 16777215, 0, 4, 257, 1, 1, 1.0, 8, 257, 8, 7895160, 3, 5, 0.0),
    "Shaded with edges": (26, 2, 2, 1, 2, .6, 30.0, 7, 16777215, 1, 2, 257, 2, 1, 1.0, 8, 257, 7, None, 3, 5, 0.0),
    "Shades of Gray":    (23, 2, 2, 3, 0, .6, -30.0, 7, 16777215, 2, 2, 7, 1, 1, 40.0, 8, 7, 7, None, 3, 1, 0.0),
    "Sketchy":           (24, 1, 2, 2, 0, .6, -30.0, 7, 16777215, 2, 2, 7, 1, 1, 40.0, 11, 7, 7, None, 6, 1, 0.0),
    "Wireframe":         (5, 0, 2, 0, 0, .6, -30.0, 7, 16777215, 1, 4, 257, 1, 1, 1.0, 0, 257, 7, None, 3, 1, 0.0),
    "X-Ray":             (25, 2, 2, 1, 1, -.5, -30.0, 7, 16777215, 1, 0, 257, 1, 1, 1.0, 8, 7, 7, None, 3, 13, 0.0),
}
FIXED = {62: 5, 64: 7, 43: 1.0, 76: 1, 77: 6, 78: 2, 170: 0, 171: 0, 290: 0, 174: 0, 173: 0, 45: 0.0}
STYLE_HANDLES = {name: f"{0x70 + i:X}" for i, name in enumerate(STYLES)} | {
    "Realistic": "#STYLE_REALISTIC_REFERENCE#", "Wireframe": "#STYLE_WIREFRAME_REFERENCE#"}
OLD_ORDER = (71, 72, 73, 90, 40, 41, 62, 63, 421, 74, 91, 64, 65, 75, 175, 42, 92, 66, 43, 76, 77, 78, 67, 425, 79,
             170, 171, 290, 174, 93, 44, 173)
NEW_ORDER = (71, 72, 73, 90, 40, 41, 63, 74, 91, 64, 65, 75, 175, 42, 92, 66, 43, 76, 77, 78, 67, 79, 170, 171, 290,
             93, 44, 173)


class Pairs:
    """A list of pairs, laid out as the export lays them out."""

    def __init__(self):
        self.lines = []

    def add(self, *pairs):
        for code, value in pairs:
            if isinstance(value, float):
                text = repr(value)
            elif isinstance(value, int):
                text = f"{value:6d}" if not 90 <= code < 100 else f"{value:9d}"
            else:
                text = value
            self.lines += [f"{code:3d}", text]

    def section(self, name):
        self.add((0, "SECTION"), (2, name))

    def end(self):
        self.add((0, "ENDSEC"))

    def text(self):
        return "\n".join(self.lines) + "\n"


def typed(code, text):
    """A value of the variables' table as the type of its group code."""
    if text.startswith(("#", "@")) or code in (1, 2, 3, 5, 6, 7, 8) or 340 <= code < 370:
        return text
    if 10 <= code < 60 or 110 <= code < 150:
        return text
    return int(text)


def header(version, names=None):
    out = Pairs()
    out.section("HEADER")
    fill = {"@VERSION": f"AC{version}", "@MATERIAL_BYLAYER": HANDLES["mat_bylayer"],
            "@VS_REALISTIC": STYLE_HANDLES["Realistic"], "@VS_WIREFRAME": STYLE_HANDLES["Wireframe"]}
    for line in (HERE / "header_variables.tsv").read_text().splitlines():
        if not line.startswith("$"):
            continue
        name, codes, since, until, value = line.split("\t")
        if not int(since) <= version <= int(until) or (names and name not in names):
            continue
        codes = [int(c) for c in codes.split()[:3] if c.isdigit()]
        values = value.split(" ") if len(codes) > 1 else [value]
        out.add((9, name), *((c, typed(c, fill.get(v, v))) for c, v in zip(codes, values)))
    out.end()
    if version >= 1015:
        classes(out, version)
    return out.text()


def classes(out, version):
    """The classes of the objects that the template of this version holds, and of images."""
    rows = [("ACDBDICTIONARYWDFLT", "AcDbDictionaryWithDefault", "ObjectDBX Classes", 0, 1, 0)]
    if version == 1015:
        rows += [("ACDBPLACEHOLDER", "AcDbPlaceHolder", "ObjectDBX Classes", 0, 1, 0),
                 ("LAYOUT", "AcDbLayout", "ObjectDBX Classes", 0, 2, 0)]
    rows += [("DICTIONARYVAR", "AcDbDictionaryVar", "ObjectDBX Classes", 0, 1, 0)]
    if version >= 1021:
        rows += [("MATERIAL", "AcDbMaterial", "ObjectDBX Classes", 1153, 3, 0),
                 ("VISUALSTYLE", "AcDbVisualStyle", "ObjectDBX Classes", 4095, len(STYLES), 0),
                 ("SCALE", "AcDbScale", "ObjectDBX Classes", 1153, 1, 0)]
    rows += [("IMAGEDEF", "AcDbRasterImageDef", "ISM", 0, 0, 0),
             ("IMAGEDEF_REACTOR", "AcDbRasterImageDefReactor", "ISM", 1, 0, 0),
             ("IMAGE", "AcDbRasterImage", "ISM", 2175, 0, 1)]
    out.section("CLASSES")
    for name, cpp, application, flags, count, entity in rows:
        out.add((0, "CLASS"), (1, name), (2, cpp), (3, application), (90, flags))
        if version >= 1018:
            out.add((91, count))
        out.add((280, 0), (281, entity))
    out.end()


def head(out, kind, handle, owner, reactor=True):
    out.add((0, kind), (5, handle))
    if reactor:
        out.add((102, "{ACAD_REACTORS"), (330, owner), (102, "}"))
    out.add((330, owner))


def dictionary(out, handle, owner, entries, reactor=True):
    head(out, "DICTIONARY", handle, owner, reactor)
    out.add((100, "AcDbDictionary"), (281, 1))
    for key, value in entries:
        out.add((3, key), (350, value))


def layout(out, version, handle, name, tab, record):
    model = name == "Model"
    head(out, "LAYOUT", handle, HANDLES["layouts"])
    out.add((100, "AcDbPlotSettings"), (1, ""), (2, "none_device"), (4, "ISO_A4_(210.00_x_297.00_MM)"), (6, ""),
            (40, 7.5), (41, 20.0), (42, 7.5), (43, 20.0), (44, 210.0), (45, 297.0))
    out.add(*((c, 0.0) for c in (46, 47, 48, 49, 140, 141)), (142, 1.0), (143, 1.0), (70, 1712 if model else 688),
            (72, 1), (73, 0 if model else 1), (74, 0 if model else 5), (7, ""), (75, 0 if model else 16), (147, 1.0))
    if version >= 1018:
        out.add((76, 0), (77, 2), (78, 300))
    out.add((148, 0.0), (149, 0.0), (100, "AcDbLayout"), (1, name), (70, 1), (71, tab))
    out.add((10, 0.0), (20, 0.0), (11, 420.0), (21, 297.0), (12, 0.0), (22, 0.0), (32, 0.0))
    out.add(*((c, "1.000000000000000E+20") for c in (14, 24, 34)), *((c, "-1.000000000000000E+20") for c in (15, 25, 35)))
    out.add((146, 0.0), (13, 0.0), (23, 0.0), (33, 0.0), (16, 1.0), (26, 0.0), (36, 0.0), (17, 0.0), (27, 1.0),
            (37, 0.0), (76, 0), (330, record))
    if model:
        out.add((331, HANDLES["vport_active"]))


def visual_style(out, version, name):
    values = dict(zip(FIELDS, STYLES[name])) | FIXED
    head(out, "VISUALSTYLE", STYLE_HANDLES[name], HANDLES["visualstyles"])
    out.add((100, "AcDbVisualStyle"), (2, name), (70, values[70]))
    if version <= 1021:
        for code in OLD_ORDER:
            value = values.get(code)
            if value is None or code in (421, 425) and version < 1018:
                continue
            if code == 40:
                value = -value  # the sign says that the modifier is off
            out.add((code, value))
        out.add((291, 0), (45, 0.0), (1001, "ACAD"), (1000, "AcDbSavedByObjectVersion"), (1070, 0))
        return
    out.add((177, 2 if version < 1027 else 3), (291, 0))
    if version >= 1027:
        out.add((70, 58))
    for code in NEW_ORDER:
        value = abs(values[code]) if code in (40, 41) else values[code]
        neutral = code
        if version >= 1027:
            neutral = (290 if code == 290 else 62 if code in (63, 64, 65, 66, 67) else
                       40 if isinstance(value, float) else 90)
        out.add((neutral, value))
        true_colour = {63: 421, 67: 425}.get(code)
        if true_colour and values.get(true_colour) is not None:
            out.add((true_colour if version < 1027 else 420, values[true_colour]))
        out.add((176, 1))
    if version >= 1027:
        flat = name == "2dWireframe"
        extras = [(290, 1), (290, 1)] + [(290, 0)] * 7 if flat else [(290, 0), (290, 1), (290, 1)] + [(290, 0)] * 6
        extras += [(90, 50), (40, 0.0), (40, 1.0), (90, 0), (62, 18, 0), (90, 50), (90, 3), (62, 5, 255), (290, 0),
                   (90, 50), (90, 50), (90, 50), (290, 0), (90, 50), (62, 256), (40, 1.0), (90, 2),
                   (1, "strokes_ogs.tif"), (290, 0), (40, 1.0), (40, 1.0)]
        for i, (code, value, *true_colour) in enumerate(extras):
            out.add((code, value))
            if true_colour:
                out.add((420, true_colour[0]))
            out.add((176, 0 if i in (22, 23) else 1))
    else:
        out.add((1001, "ACAD"), (1000, "AcDbSavedByObjectVersion"), (1070, 0))


def objects(version):
    h = HANDLES
    out = Pairs()
    out.section("OBJECTS")
    papers = [("Layout1", h["layout_paper"], h["paper_record"])]
    if version >= 1018:
        papers.append(("Layout2", h["layout_paper0"], h["paper0_record"]))
    entries = [("ACAD_GROUP", h["group"]), ("ACAD_IMAGE_DICT", h["image_dict"]), ("ACAD_LAYOUT", h["layouts"]),
               ("ACAD_MLINESTYLE", h["mlinestyles"]), ("ACAD_PLOTSETTINGS", h["plotsettings"]),
               ("ACAD_PLOTSTYLENAME", h["plotstyles"]), ("AcDbVariableDictionary", h["variables"])]
    if version >= 1021:
        entries += [("ACAD_COLOR", h["colors"]), ("ACAD_MATERIAL", h["materials"]), ("ACAD_SCALELIST", h["scales"]),
                    ("ACAD_VISUALSTYLE", h["visualstyles"])]
    dictionary(out, h["root"], "0", sorted(entries), reactor=False)
    dictionary(out, h["group"], h["root"], [])
    dictionary(out, h["image_dict"], h["root"], [])
    out.lines += ["  3", "#IMAGEDICT#"]
    dictionary(out, h["layouts"], h["root"],
               [(name, handle) for name, handle, _ in papers] + [("Model", h["layout_model"])])
    dictionary(out, h["mlinestyles"], h["root"], [("Standard", h["mline_standard"])])
    dictionary(out, h["plotsettings"], h["root"], [])
    head(out, "ACDBDICTIONARYWDFLT", h["plotstyles"], h["root"])
    out.add((100, "AcDbDictionary"), (281, 1), (3, "Normal"), (350, h["placeholder"]),
            (100, "AcDbDictionaryWithDefault"), (340, h["placeholder"]))
    head(out, "ACDBPLACEHOLDER", h["placeholder"], h["plotstyles"])
    dictionary(out, h["variables"], h["root"], [("DIMASSOC", "68")])
    head(out, "DICTIONARYVAR", "68", h["variables"])
    out.add((100, "DictionaryVariables"), (280, 0), (1, "2"))
    for tab, (name, handle, record) in enumerate(papers, 1):
        layout(out, version, handle, name, tab, record)
    layout(out, version, h["layout_model"], "Model", 0, "#MODELSPACE_REFERENCE#")
    head(out, "MLINESTYLE", h["mline_standard"], h["mlinestyles"])
    out.add((100, "AcDbMlineStyle"), (2, "Standard"), (70, 0), (3, ""), (62, 256), (51, 90.0), (52, 90.0), (71, 2),
            (49, 0.5), (62, 256), (6, "BYLAYER"), (49, -0.5), (62, 256), (6, "BYLAYER"))
    # The extension dictionary of the model space.
    out.add((0, "DICTIONARY"), (5, "#MODELSPACE_OBJECTREFERENCE#"), (330, "#MODELSPACE_REFERENCE#"),
            (100, "AcDbDictionary"), (280, 1), (281, 1))
    if version >= 1021:
        later_objects(out, version)
    out.lines += ["  0", "#IMAGEOBJECTS#"]
    out.end()
    return out.text()


def later_objects(out, version):
    h = HANDLES
    dictionary(out, h["colors"], h["root"], [])
    materials = [("ByBlock", h["mat_byblock"]), ("ByLayer", h["mat_bylayer"]), ("Global", h["mat_global"])]
    dictionary(out, h["materials"], h["root"], materials)
    for name, handle in materials:
        head(out, "MATERIAL", handle, h["materials"])
        out.add((100, "AcDbMaterial"), (1, name))
    dictionary(out, h["scales"], h["root"], [("A0", h["scale_1"])])
    head(out, "SCALE", h["scale_1"], h["scales"])
    out.add((100, "AcDbScale"), (70, 0), (300, "1:1"), (140, 1.0), (141, 1.0), (290, 1))
    dictionary(out, h["visualstyles"], h["root"], list(STYLE_HANDLES.items()))
    for name in STYLES:
        visual_style(out, version, name)


def vport(version):
    out = Pairs()
    out.add((0, "TABLE"), (2, "VPORT"))
    if version >= 1015:
        out.add((5, HANDLES["vport_table"]), (330, "0"), (100, "AcDbSymbolTable"))
    out.add((70, 1), (0, "VPORT"))
    if version >= 1015:
        out.add((5, HANDLES["vport_active"]), (330, HANDLES["vport_table"]), (100, "AcDbSymbolTableRecord"),
                (100, "AcDbViewportTableRecord"), (2, "*Active"))
    else:
        out.add((2, "*ACTIVE"))
    out.add((70, 0), (10, 0.0), (20, 0.0), (11, 1.0), (21, 1.0), (12, 210.0), (22, 148.5), (13, 0.0), (23, 0.0),
            (14, 10.0), (24, 10.0), (15, 10.0), (25, 10.0), (16, 0.0), (26, 0.0), (36, 1.0), (17, 0.0), (27, 0.0),
            (37, 0.0), (40, 297.0), (41, 1.414141), (42, 50.0), (43, 0.0), (44, 0.0), (50, 0.0), (51, 0.0), (71, 0),
            (72, 1000), (73, 1), (74, 3), (75, 0), (76, 0), (77, 0), (78, 0))
    if version >= 1015:
        out.add((281, 0), (65, 1), (110, 0.0), (120, 0.0), (130, 0.0), (111, 1.0), (121, 0.0), (131, 0.0), (112, 0.0),
                (122, 1.0), (132, 0.0), (79, 0), (146, 0.0))
    out.add((0, "ENDTAB"))
    return out.text()


KEPT = """$ANGBASE $ANGDIR $ATTMODE $AUNITS $AUPREC $CELTSCALE $DIMADEC $DIMALTD $DIMALTF $DIMASZ $DIMAUNIT $DIMCEN
$DIMDEC $DIMDLE $DIMDLI $DIMEXE $DIMEXO $DIMGAP $DIMLFAC $DIMRND $DIMSCALE $DIMTAD $DIMTDEC $DIMTFAC $DIMTIH $DIMTM
$DIMTOH $DIMTP $DIMTSZ $DIMTVP $DIMTXT $DIMZIN $FILLETRAD $LIMMAX $LIMMIN $LUNITS $LUPREC $MEASUREMENT $MIRRTEXT
$PDMODE $PDSIZE $PLIMMAX $PLIMMIN $PSLTSCALE $SPLINESEGS $SPLINETYPE $TEXTSIZE $TRACEWID $USERI1 $USERI2 $USERI3
$USERI4 $USERI5 $USERR1 $USERR2 $USERR3 $USERR4 $USERR5"""


def templates():
    files = {f"header_{name}": header(version) for name, version in HEADERS.items()}
    files["header_easy"] = header(1009, EASY)
    files |= {f"objects_{name}": objects(version) for name, version in HEADERS.items() if version >= 1015}
    files["vport"] = vport(1009)
    files["vport_15"] = vport(1015)
    files["Dxf.var"] = "\n".join(KEPT.split()) + "\n"
    return files


def main():
    if "--check" in sys.argv[1:]:
        stale = [name for name, text in templates().items()
                 if not (TARGET / name).exists() or (TARGET / name).read_text() != text]
        if stale:
            print("Templates differ from int/dxf/templates/make_templates.py, run it:", ", ".join(stale))
        sys.exit(bool(stale))
    for name, text in templates().items():
        (TARGET / name).write_text(text)


main()
