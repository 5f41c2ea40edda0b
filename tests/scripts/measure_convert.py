#!/usr/bin/env python3
"""Compares drawings before and after `torva-dxf convert`, with a reader of its own.

    measure_convert.py FOLDER [--command PATH] [--table docs/round-trip.md] [--jobs N] [--show FILE] [--causes]

Each DXF file below FOLDER is converted to the format of its own version (AC1009 for older ones, AC1015 where there
is no writer of exactly that). Entities of ENTITIES, and of each block that they insert, are compared as a multiset:
kind by kind, layer, colour, line type, line weight, bounding box. --table replaces the part of a page between its
marks; --show tells the differences of one file; --causes counts what keeps files from being equal."""
import argparse
import math
import struct
import subprocess
import sys
import tempfile
from collections import Counter
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

FORMATS = {"AC1009": "ACAD12", "AC1012": "ACAD13", "AC1014": "ACAD14", "AC1015": "ACAD15", "AC1018": "ACAD18",
           "AC1021": "ACAD21", "AC1024": "ACAD24", "AC1027": "ACAD27", "AC1032": "ACAD32"}
BEGIN, END = "<!-- measured: begin -->", "<!-- measured: end -->"
PARTS = {"VERTEX", "ATTRIB", "SEQEND"}


# ---- reading --------------------------------------------------------------------------------------
def binary_value_size(code):
    if code < 10 or 100 <= code < 106 or 300 <= code < 370 or 390 <= code < 400 or 410 <= code < 420 \
            or 430 <= code < 440 or 470 <= code < 482 or code == 999 or 1000 <= code < 1010 and code != 1004:
        return 0
    if 10 <= code < 60 or 110 <= code < 150 or 210 <= code < 240 or 460 <= code < 470 or 1010 <= code < 1060:
        return 8
    if 160 <= code < 170:
        return -8
    if 90 <= code < 100 or 420 <= code < 430 or 440 <= code < 460 or code == 1071:
        return -4
    if 290 <= code < 300:
        return -1
    if 310 <= code < 320 or code == 1004:
        return None
    return -2


def read_binary(data):
    at, wide = 22, data[23:24] == b"\0"
    pairs = []
    while at < len(data):
        if wide:
            code = struct.unpack_from("<H", data, at)[0]
            at += 2
        else:
            code, at = data[at], at + 1
            if code == 255:
                code = struct.unpack_from("<H", data, at)[0]
                at += 2
        size = binary_value_size(code)
        if size is None:
            count = data[at]
            text, at = data[at + 1 : at + 1 + count].hex().upper(), at + 1 + count
        elif size == 0:
            end = data.index(b"\0", at)
            text, at = data[at:end].decode("latin-1"), end + 1
        elif size == 8:
            text, at = repr(struct.unpack_from("<d", data, at)[0]), at + 8
        else:
            text, at = str(int.from_bytes(data[at : at - size], "little", signed=True)), at - size
        pairs.append((code, text))
        if (code, text) == (0, "EOF"):
            break
    return pairs


def read_pairs(path):
    data = Path(path).read_bytes()
    if data.startswith(b"AutoCAD Binary DXF"):
        return read_binary(data)
    try:
        text = data.decode("utf-8")
    except UnicodeDecodeError:
        text = data.decode("latin-1")
    lines = text.replace("\r\n", "\n").replace("\r", "\n").split("\n")
    pairs = []
    for code, value in zip(lines[0::2], lines[1::2]):
        try:
            pairs.append((int(code), value.strip()))
        except ValueError:
            break
    return pairs


class Entity:
    def __init__(self, pairs):
        self.kind = pairs[0][1]
        self.parts = []
        self.groups = {}
        inApplication = False
        for code, text in pairs[1:]:
            if code == 102:
                inApplication = text.startswith("{")
            elif code >= 1000:
                self.groups.setdefault(code, []).append(text)
            elif not inApplication:
                self.groups.setdefault(code, []).append(text)

    def text(self, code, default=""):
        return self.groups.get(code, [default])[0]

    def number(self, code, default=0.0):
        try:
            value = float(self.text(code, default))
        except ValueError:
            return 0.0
        return value if abs(value) < 1e19 else 0.0

    def all(self, code):
        return [float(text) for text in self.groups.get(code, [])]

    def points(self, code):
        """All points of a code; z is 0 where it isn't given for each."""
        xs, ys, zs = self.all(code), self.all(code + 10), self.all(code + 20)
        if len(zs) != len(xs):
            zs = [0.0] * len(xs)
        return list(zip(xs, ys, zs))


def split_entities(pairs):
    entities, run = [], []

    def close():
        if not run:
            return
        entity = Entity(run)
        if entity.kind in PARTS and entities and entity.kind != "SEQEND":
            entities[-1].parts.append(entity)
        elif entity.kind != "SEQEND":
            entities.append(entity)

    for pair in pairs:
        if pair[0] == 0:
            close()
            run = []
        run.append(pair)
    close()
    return entities


class Drawing:
    def __init__(self, path):
        pairs = read_pairs(path)
        self.version, self.entities, self.blocks, self.order = "AC1009", [], {}, []
        section, start = None, 0
        for i, (code, text) in enumerate(pairs):
            if (code, text) == (9, "$ACADVER"):
                self.version = pairs[i + 1][1]
            elif (code, text) == (0, "SECTION"):
                section, start = pairs[i + 1][1], i + 2
            elif (code, text) in ((0, "ENDSEC"), (0, "EOF")) and section:
                if section == "ENTITIES":
                    self.entities += split_entities(pairs[start:i])
                elif section == "BLOCKS":
                    self.read_blocks(pairs[start:i])
                section = None

    def read_blocks(self, pairs):
        block = None
        for entity in split_entities(pairs):
            if entity.kind == "BLOCK":
                block = self.blocks.setdefault(entity.text(2).upper(), [])
                self.order.append((entity, block))
            elif entity.kind == "ENDBLK":
                block = None
            elif block is not None:
                block.append(entity)


# ---- what is compared -----------------------------------------------------------------------------
def axes(entity):
    n = (entity.number(210), entity.number(220), entity.number(230, 1.0))
    size = math.sqrt(sum(v * v for v in n))
    if size == 0 or 210 not in entity.groups and 230 not in entity.groups:
        return None
    n = tuple(v / size for v in n)
    if n == (0, 0, 1):
        return None
    a = (-n[1], n[0], 0) if abs(n[0]) < 1 / 64 and abs(n[1]) < 1 / 64 and False else None
    if abs(n[0]) < 1 / 64 and abs(n[1]) < 1 / 64:
        a = (n[2], 0, -n[0])
    else:
        a = (-n[1], n[0], 0)
    length = math.sqrt(sum(v * v for v in a))
    a = tuple(v / length for v in a)
    b = (n[1] * a[2] - n[2] * a[1], n[2] * a[0] - n[0] * a[2], n[0] * a[1] - n[1] * a[0])
    return a, b, n


def to_world(entity, points):
    frame = axes(entity)
    if not frame:
        return points
    a, b, n = frame
    return [tuple(p[0] * a[i] + p[1] * b[i] + p[2] * n[i] for i in range(3)) for p in points]


def arc_points(centre, radius, start, end):
    """Points along an arc in degrees, counter-clockwise, whose box is that of the arc."""
    if end <= start:
        end += 360
    angles = [start, end] + [90 * k for k in range(-8, 17) if start < 90 * k < end]
    return [(centre[0] + radius * math.cos(math.radians(a)), centre[1] + radius * math.sin(math.radians(a)), centre[2])
            for a in angles]


def bulge_points(p, q, bulge):
    if not bulge or p[:2] == q[:2]:
        return [p]
    angle = 4 * math.atan(bulge)
    dx, dy = q[0] - p[0], q[1] - p[1]
    k = (1 - bulge * bulge) / (4 * bulge)
    centre = ((p[0] + q[0]) / 2 - k * dy, (p[1] + q[1]) / 2 + k * dx, p[2])
    radius = math.hypot(p[0] - centre[0], p[1] - centre[1])
    a = math.degrees(math.atan2(p[1] - centre[1], p[0] - centre[0]))
    b = math.degrees(math.atan2(q[1] - centre[1], q[0] - centre[0]))
    return arc_points(centre, radius, *((a, b) if angle > 0 else (b, a)))


def polyline_points(vertices, closed):
    points = []
    for i, (point, bulge) in enumerate(vertices):
        following = vertices[(i + 1) % len(vertices)][0]
        points += bulge_points(point, following, bulge if closed or i + 1 < len(vertices) else 0)
    return points


def box_points(e):
    z = e.number(38)
    if e.kind in ("CIRCLE", "ARC"):
        centre = e.points(10)[:1] or [(0, 0, 0)]
        return to_world(e, arc_points(centre[0], e.number(40), *((e.number(50), e.number(51)) if e.kind == "ARC"
                                                                  else (0, 360))))
    if e.kind == "ELLIPSE":
        c, m, ratio = e.points(10)[0], e.points(11)[0], e.number(40, 1)
        a, b = e.number(41), e.number(42, 2 * math.pi)
        if b <= a:
            b += 2 * math.pi
        sign = -1 if e.number(230, 1) < 0 else 1
        n = [(m[0], m[1]), (-m[1] * ratio * sign, m[0] * ratio * sign)]
        steps = [a + (b - a) * i / 720 for i in range(721)]
        return [tuple(c[i] + math.cos(t) * n[0][i] + math.sin(t) * n[1][i] for i in range(2)) + (c[2],) for t in steps]
    if e.kind == "LWPOLYLINE":
        xs, ys, bulges, last = [], [], [], e.groups
        ordered = e.points(10)
        bulges = e.all(42) if len(e.all(42)) == len(ordered) else [0] * len(ordered)
        vertices = [((x, y, z), bulge) for (x, y, _), bulge in zip(ordered, bulges)]
        return to_world(e, polyline_points(vertices, int(e.number(70)) & 1))
    if e.kind == "POLYLINE":
        flags = int(e.number(70))
        vertices = [(part.points(10)[0], part.number(42)) for part in e.parts
                    if part.points(10) and not int(part.number(70)) & 16]
        if flags & (8 | 16 | 64):
            return [p for p, _ in vertices]
        return to_world(e, polyline_points(vertices, flags & 1))
    if e.kind == "SPLINE":
        return e.points(10) or e.points(11)
    if e.kind in ("SOLID", "TRACE", "TEXT", "ATTDEF", "INSERT", "HATCH"):
        codes = range(10, 14) if e.kind in ("SOLID", "TRACE") else [10]
        points = [p for code in codes for p in e.points(code)]
        if e.kind == "HATCH":
            points = points[1:] + e.points(11)
        elif e.kind in ("TEXT", "ATTDEF") and (e.number(72) or e.number(73) or e.number(74)) and e.points(11):
            points = e.points(11)
        return to_world(e, points)
    return [p for code in range(10, 15) for p in e.points(code)]


def box(e, planar=True):
    points = box_points(e)
    if not points:
        return ()
    kept = range(2 if planar else 3)
    size = max(max(abs(p[i]) for p in points for i in kept), 1)
    grid = size * 1e-5
    corners = [min(p[i] for p in points) for i in kept] + [max(p[i] for p in points) for i in kept]
    return tuple(round(v / (10 ** math.floor(math.log10(grid))), 0) * 10 ** math.floor(math.log10(grid)) + 0.0
                 for v in corners)


def colour(e):
    if 420 in e.groups:
        return "#%06X" % (int(e.number(420)) & 0xFFFFFF)
    return e.text(62, "256")


def line_type(e):
    name = e.text(6, "BYLAYER").upper()
    return name or "BYLAYER"


def insert_details(e):
    def scale(code):
        return round(e.number(code, 1.0) or 1.0, 6)

    return (e.text(2).upper() if not e.text(2).startswith("*") else "*", scale(41), scale(42), scale(43),
            round(e.number(50) % 360, 4) % 360, int(e.number(70, 1)) or 1, int(e.number(71, 1)) or 1,
            tuple(sorted((part.text(2), part.text(1)) for part in e.parts)))


ASPECTS = {
    "kinds": lambda e: e.kind,
    "layers": lambda e: (e.kind, e.text(8, "0").upper() or "0"),
    "colours": lambda e: (e.kind, colour(e)),
    "line types": lambda e: (e.kind, line_type(e), round(e.number(48, 1.0), 6)),
    "weights": lambda e: (e.kind, int(e.number(370, -1))),
    "transparency": lambda e: (e.kind, e.text(440, "0")),
    "boxes": lambda e: (e.kind, box(e)),
    "inserts": lambda e: insert_details(e) if e.kind == "INSERT" else None,
}
FURTHER = {
    "heights": lambda e: (e.kind, box(e, planar=False)),
    "handles": lambda e: (e.kind, e.text(5).lstrip("0").upper()),
    "extended data": lambda e: (e.kind, tuple((c, tuple(v)) for c, v in sorted(e.groups.items()) if c >= 1000)),
}


def is_compared(e):
    """Not what frames a sheet: the viewport that stands for the sheet itself."""
    return not (e.kind == "VIEWPORT" and int(e.number(69)) == 1)


def scopes(drawing):
    """Lists of entities by where they stand: what is drawn directly, and each block that is inserted from there."""
    found = {"": [e for e in drawing.entities if is_compared(e)]}
    waiting = list(found[""])
    while waiting:
        e = waiting.pop()
        name = e.text(2).upper()
        if e.kind == "INSERT" and not name.startswith("*") and name not in found and name in drawing.blocks:
            found[name] = [e for e in drawing.blocks[name] if e.kind != "VIEWPORT"]
            waiting += found[name]
    return found


def compare(before, after):
    """Differences by aspect: {aspect: {where: (missing, added)}}."""
    one, two = scopes(before), scopes(after)
    differences = {}
    for aspect, key in {**ASPECTS, **FURTHER}.items():
        for where in one.keys() | two.keys():
            a = Counter(map(key, one.get(where, [])))
            b = Counter(map(key, two.get(where, [])))
            if a != b:
                differences.setdefault(aspect, {})[where] = (a - b, b - a)
    return differences


# ---- the run --------------------------------------------------------------------------------------
def convert(command, path, folder, options):
    version = Drawing(path).version
    name = FORMATS.get(version, "ACAD12" if version < "AC1009" else "ACAD15")
    target = Path(folder) / (path.parent.name + "_" + path.name)
    result = subprocess.run([command, "convert", str(path), str(target), "--format", name, "-q", *options],
                            capture_output=True, text=True, timeout=300)
    return target if result.returncode == 0 and target.exists() else None


def measure(command, path, folder, options):
    try:
        before = Drawing(path)
        target = convert(command, path, folder, options)
        if not target:
            return path, None
        return path, compare(before, Drawing(target))
    except Exception as error:  # a file that this reader can't read isn't compared
        print(f"{path}: {error!r}", file=sys.stderr)
        return path, None


def is_equal(differences):
    return differences is not None and not any(aspect in differences for aspect in ASPECTS)


def table(results):
    compared = [d for _, d in results if d is not None]
    rows = ["| What is compared | Files that come back equal |", "|---|---|"]
    for aspect in ASPECTS:
        rows.append(f"| {aspect} | {sum(aspect not in d for d in compared)} of {len(compared)} |")
    rows.append(f"| all of these at once | {sum(map(is_equal, compared))} of {len(compared)} |")
    for aspect in FURTHER:
        rows.append(f"| beside them: {aspect} | {sum(aspect not in d for d in compared)} of {len(compared)} |")
    return "\n".join(rows)


def tell(differences):
    for aspect, places in (differences or {}).items():
        for where, (missing, added) in places.items():
            print(f"{aspect} {where}: -{sum(missing.values())} +{sum(added.values())}")
            for sign, items in (("-", missing), ("+", added)):
                for item, count in items.most_common(8):
                    print(f"    {sign}{count} {item}")


def causes(results):
    """Of each kind and aspect: in how many files it differs, and in how many it is all that differs."""
    files, alone, entities = Counter(), Counter(), Counter()
    for _, differences in results:
        if not differences:
            continue
        found = set()
        for aspect in ASPECTS.keys() & differences.keys():
            for missing, added in differences[aspect].values():
                for item, count in (missing + added).items():
                    if item is None:
                        continue
                    kind = "INSERT" if aspect == "inserts" else item if isinstance(item, str) else item[0]
                    found.add((aspect, kind))
                    entities[aspect, kind] += count
        files.update(found)
        if len({kind for _, kind in found}) == 1:
            alone.update(found)
    for cause, count in files.most_common(40):
        print(f"{count:4} files ({alone[cause]:3} by this kind alone, {entities[cause]:7} entities)  {cause[0]} of {cause[1]}")


def write_table(page, text):
    content = Path(page).read_text()
    head, rest = content.split(BEGIN, 1)
    Path(page).write_text(head + BEGIN + "\n" + text + "\n" + END + rest.split(END, 1)[1])


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("folder", type=Path)
    parser.add_argument("--command", default="build/dev/tool/torva-dxf")
    parser.add_argument("--table")
    parser.add_argument("--jobs", type=int, default=2)
    parser.add_argument("--show")
    parser.add_argument("--causes", action="store_true")
    parser.add_argument("--list", action="store_true")
    parser.add_argument("--keep", help="folder for the converted files")
    parser.add_argument("--option", action="append", default=[])
    options = parser.parse_args()
    paths = sorted(p for p in options.folder.rglob("*.dxf") if not options.show or options.show in str(p))
    with tempfile.TemporaryDirectory() as temporary, ThreadPoolExecutor(options.jobs) as pool:
        folder = options.keep or temporary
        Path(folder).mkdir(exist_ok=True)
        results = list(pool.map(lambda p: measure(options.command, p, folder, options.option), paths))
    for path, differences in results:
        if options.show:
            print(path)
            tell(differences)
        elif options.list:
            found = "not compared" if differences is None else \
                ", ".join(a for a in ASPECTS if a in differences) or "equal"
            print(f"{path.relative_to(options.folder)}: {found}")
    if options.causes:
        causes(results)
    print(table(results))
    if options.table:
        write_table(options.table, table(results))


if __name__ == "__main__":
    main()
