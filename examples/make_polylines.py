#!/usr/bin/env python3
"""Writes polylines.dxf: wide, tapered and round polylines, a revision cloud and splines.

Tables, blocks and objects are those of bracket.dxf.
"""
import math
import pathlib
import re

QUARTER = math.tan(math.pi / 8)  # bulge of a quarter of a circle


handles = iter(range(0x400, 0x10000))


def groups(*pairs):
    return "".join(f"{code:>3}\n{value}\n" for code, value in pairs)


def head(kind, subclass, color):
    return [(0, kind), (5, f"{next(handles):X}"), (330, "1F"), (100, "AcDbEntity"), (8, "0"), (62, color),
            (100, subclass)]


def polyline(at, vertices, color, width=None, closed=False, extra=()):
    """Vertices are x, y, bulge, start width, end width; the last three may be left out."""
    out = head("LWPOLYLINE", "AcDbPolyline", color) + [(90, len(vertices)), (70, int(closed))]
    if width is not None:
        out.append((43, width))
    for x, y, *more in vertices:
        bulge, start, end = more + [0, None, None][len(more):]
        out += [(10, at[0] + x), (20, at[1] + y)]
        if start is not None:
            out += [(40, start), (41, end)]
        if bulge:
            out.append((42, bulge))
    return groups(*out, *extra)


def spline(at, points, color):
    knots = [0, 0, 0] + list(range(len(points) - 2)) + [len(points) - 3] * 3
    counts = [(70, 8), (71, 3), (72, len(knots)), (73, len(points)), (74, 0)]
    controls = [pair for x, y in points for pair in ((10, at[0] + x), (20, at[1] + y), (30, 0))]
    return groups(*head("SPLINE", "AcDbSpline", color), *counts, *((40, k) for k in knots), *controls)


def caption(at, text):
    x, y = at[0] + 15, at[1] - 9
    return groups(*head("TEXT", "AcDbText", 8), (10, x), (20, y), (30, 0), (40, 2.5), (1, text), (72, 1),
                  (11, x), (21, y), (31, 0), (100, "AcDbText"))


def star(radius):
    angles = [math.pi / 2 + i * 4 * math.pi / 5 for i in range(5)]
    return [(15 + radius * math.cos(a), 11 + radius * math.sin(a)) for a in angles]


def cloud():
    angles = [2 * math.pi * i / 12 for i in range(12)]
    return [(15 + 12 * math.cos(a), 11 + 8 * math.sin(a), 0.7) for a in angles]


FIGURES = [
    ("mitred corners", lambda at: polyline(at, [(0, 2), (16, 2), (16, 20), (30, 20)], 30, 3)),
    ("closed, with arcs", lambda at: polyline(at, [(4, 0), (26, 0, QUARTER), (30, 4), (30, 16, QUARTER), (26, 20),
                                                  (4, 20, QUARTER), (0, 16), (0, 4, QUARTER)], 150, 2.5, True)),
    ("two bulges of 1", lambda at: polyline(at, [(5, 10, 1), (25, 10, 1)], 94, 5, True)),
    ("it crosses itself", lambda at: polyline(at, star(13), 210, 1.6, True)),
    ("a width for each end", lambda at: polyline(at, [(0, 0, 0, 0, 5), (20, 2, 0, 5, 1), (22, 20, 0, 1, 1), (30, 20)],
                                                 170)),
    ("tapered arcs", lambda at: polyline(at, [(3, 12, 1, 0, 5), (19, 12, -QUARTER, 5, 0), (30, 20)], 12)),
    ("arrows", lambda at: polyline(at, [(0, 4, 0, 0, 0), (18, 4, 0, 6, 0), (30, 4)], 52) +
     polyline(at, [(0, 16, QUARTER, 0, 2), (18, 16, 0, 7, 0), (29, 19)], 52)),
    ("ring of petals", lambda at: polyline(at, [(15 + 9 * math.cos(a), 11 + 9 * math.sin(a), 0.6, 0.3, 3) for a in
                                                (2 * math.pi * i / 6 for i in range(6))], 220, closed=True)),
    ("revision cloud", lambda at: polyline(at, cloud(), 10, closed=True, extra=[(1001, "RevcloudProps"), (1070, 0)])),
    ("splines", lambda at: spline(at, [(0, 0), (6, 30), (14, -10), (22, 30), (30, 12)], 190) +
     spline(at, [(0, 20), (10, 20), (20, -8), (30, 0)], 110)),
]


def main():
    folder = pathlib.Path(__file__).parent
    frame = (folder / "bracket.dxf").read_text(encoding="ascii")
    before, _, behind = frame.partition("  2\nENTITIES\n")
    for name, x, y in (("$EXTMIN", -5, -60), ("$EXTMAX", 200, 30)):
        before = re.sub(rf"(\{name}\n 10\n)[^\n]*(\n 20\n)[^\n]*", rf"\g<1>{x}\g<2>{y}", before)
    before = re.sub(r"(  2\nAPPID\n(?:.*\n){6} 70\n)1\n", r"\g<1>2\n", before)
    application = before[before.index("  0\nAPPID\n"):]
    application = application[:application.index("  0\nENDTAB\n")]
    cloud_application = application.replace("\n12\n", "\n3FF\n").replace("\nACAD\n", "\nRevcloudProps\n")
    before = before.replace(application, application + cloud_application)
    figures = ""
    for i, (name, draw) in enumerate(FIGURES):
        at = (i % 5) * 40, -(i // 5) * 42
        figures += draw(at) + caption(at, name)
    text = before + "  2\nENTITIES\n" + figures + behind[behind.index("  0\nENDSEC\n"):]
    (folder / "polylines.dxf").write_text(text, encoding="ascii", newline="\r\n")


if __name__ == "__main__":
    main()
