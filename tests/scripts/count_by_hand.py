#!/usr/bin/env python3
"""Counts what a DXF file's model space comes to when its INSERTs are expanded, from group codes alone.

    count_by_hand.py IN.dxf [--strip OUT.dxf]

Prints a JSON object with the moves, draws, arcs, splines and texts of the kinds of entities that it knows (the
readers below). Of an INSERT with rows and columns it counts one instance, of an external reference nothing.
--strip writes a copy of the file without all other entities, which an import must draw to the same numbers."""
import json
import sys
from collections import Counter


def read_pairs(path):
    lines = open(path, encoding="latin-1", newline="").read().replace("\r", "").split("\n")
    return [(int(code), text) for code, text in zip(lines[0::2], lines[1::2])]


def split_sections(pairs):
    """Name of each section -> its pairs between the name and ENDSEC, and where they stand."""
    sections = {}
    at = 0
    while at < len(pairs):
        if pairs[at] == (0, "SECTION"):
            end = pairs.index((0, "ENDSEC"), at)
            sections[pairs[at + 1][1]] = (at + 2, end)
            at = end
        at += 1
    return sections


def split_entities(pairs):
    """Runs of pairs that each begin with a group 0; what belongs to a polyline or an INSERT is part of it."""
    runs = []
    owner = None
    for pair in pairs:
        if pair[0] == 0:
            if owner and pair[1] in ("VERTEX", "ATTRIB", "SEQEND"):
                if pair[1] == "SEQEND":
                    owner = None
            else:
                runs.append([])
                owner = None
        if not runs:
            continue
        runs[-1].append(pair)
        if pair == (0, "POLYLINE") or pair[0] == 66 and int(pair[1]) == 1:
            owner = runs[-1]
    return runs


class Entity:
    def __init__(self, pairs):
        starts = [i for i, pair in enumerate(pairs) if pair[0] == 0] + [len(pairs)]
        self.pairs = pairs
        self.kind = pairs[0][1]
        self.own = pairs[1 : starts[1]]
        self.parts = [Entity(pairs[a:b]) for a, b in zip(starts[1:], starts[2:])]

    def text(self, code, default=""):
        return next((text for c, text in reversed(self.own) if c == code), default)

    def number(self, code, default=0.0):
        return float(self.text(code, default))

    def all(self, code):
        return [float(text) for c, text in self.own if c == code]


def is_round(entity, scale):
    """Whether a circle stays one: scaled evenly, and flat."""
    return abs(abs(scale[0]) - abs(scale[1])) < 1e-9 and abs(entity.number(210)) < 1e-9 and abs(entity.number(220)) < 1e-9


def is_wide(entity):
    return any(abs(w) > 0 for part in [entity] + entity.parts for code in (40, 41, 43) for w in part.all(code))


def is_plain_polyline(entity):
    return not is_wide(entity) and not int(entity.number(70)) & ~(1 | 8 | 128)


def count_polyline(bulges, closed, round_):
    bends = bulges if closed else bulges[:-1]
    bent = sum(1 for bulge in bends if bulge != 0)
    count = Counter(move=1, draw=len(bends) - bent)
    if round_:
        return count + Counter(arc=bent)
    return count + Counter(spline=bent, move=bent)  # the pen is set anew behind a spline


def lw_bulges(entity):
    bulges = []
    for code, text in entity.own:
        if code == 10:
            bulges.append(0.0)
        elif code == 42 and bulges:
            bulges[-1] = float(text)
    return bulges


def count_lwpolyline(entity, scale):
    bulges = lw_bulges(entity)
    return count_polyline(bulges, int(entity.number(70)) & 1, is_round(entity, scale)) if bulges else Counter()


def count_old_polyline(entity, scale):
    vertices = [v for v in entity.parts if v.kind == "VERTEX" and not int(v.number(70)) & 16]
    bulges = [v.number(42) for v in vertices]
    return count_polyline(bulges, int(entity.number(70)) & 1, is_round(entity, scale)) if bulges else Counter()


def count_arc(entity, scale):
    return Counter(move=1, arc=1) if is_round(entity, scale) else Counter(move=1, spline=1)


def count_text(entity, scale):
    return Counter(texts=1) if entity.text(1).strip() and entity.number(40) > 0 else Counter()


COUNTED = {
    "LINE": lambda e, s: Counter(move=1, draw=1),
    "POINT": lambda e, s: Counter(move=1, draw=1),
    "ARC": count_arc,
    "CIRCLE": count_arc,
    "LWPOLYLINE": count_lwpolyline,
    "POLYLINE": count_old_polyline,
    "TEXT": count_text,
}


def is_counted(entity):
    if entity.kind in ("LWPOLYLINE", "POLYLINE"):
        return is_plain_polyline(entity)
    return entity.kind in COUNTED or entity.kind == "INSERT"


class Drawing:
    def __init__(self, path):
        self.pairs = read_pairs(path)
        self.sections = split_sections(self.pairs)
        self.layers = self.read_layers()
        self.att_mode = self.read_att_mode()
        self.blocks = self.read_blocks()
        self.entities = [Entity(run) for run in split_entities(self.section("ENTITIES"))]

    def section(self, name):
        a, b = self.sections.get(name, (0, 0))
        return self.pairs[a:b]

    def read_att_mode(self):
        header = self.section("HEADER")
        at = header.index((9, "$ATTMODE")) if (9, "$ATTMODE") in header else None
        return 1 if at is None else int(header[at + 1][1])

    def read_layers(self):
        """Name -> whether it is shown; the last of a name counts."""
        layers = {}
        for run in split_entities(self.section("TABLES")):
            entity = Entity(run)
            if entity.kind == "LAYER":
                layers[entity.text(2)] = entity.number(62, 7) >= 0 and not int(entity.number(70)) & 1
        return layers

    def read_blocks(self):
        blocks = {}
        current = None
        for run in split_entities(self.section("BLOCKS")):
            entity = Entity(run)
            if entity.kind == "BLOCK":
                current = []
                if not int(entity.number(70)) & 4:
                    blocks.setdefault(entity.text(2), current)
            elif current is not None:
                current.append(entity)
        return blocks

    def is_shown(self, entity, layer):
        return self.layers.get(layer, True) and not int(entity.number(60))

    def count(self):
        total = Counter()
        for entity in self.entities:
            if not int(entity.number(67)):
                total += self.count_entity(entity, "0", (1.0, 1.0), ())
        return total

    def count_entity(self, entity, insert_layer, scale, around):
        layer = entity.text(8, "0") or "0"
        effective = insert_layer if around and layer == "0" else layer
        if not is_counted(entity) or not self.is_shown(entity, effective):
            return Counter()
        if entity.kind != "INSERT":
            return COUNTED[entity.kind](entity, scale)
        return self.count_insert(entity, effective, scale, around)

    def count_insert(self, insert, layer, scale, around):
        name = insert.text(2)
        if name not in self.blocks or name in around:
            return Counter()
        inner = tuple(s * (insert.number(code, 1) or 1) for s, code in zip(scale, (41, 42)))
        total = Counter()
        inherited = layer
        for entity in self.blocks[name]:
            total += self.count_entity(entity, inherited, inner, around + (name,))
            if entity.kind == "INSERT" and self.is_inserted(entity, inherited, around + (name,)):
                own = entity.text(8, "0") or "0"
                inherited = own if own != "0" else inherited  # goes on to what stands behind it
        for attrib in insert.parts:
            if attrib.kind == "ATTRIB":
                total += self.count_attribute(attrib, layer, inner)
        return total

    def is_inserted(self, insert, insert_layer, around):
        layer = insert.text(8, "0") or "0"
        shown = self.is_shown(insert, insert_layer if layer == "0" else layer)
        return shown and insert.text(2) in self.blocks and insert.text(2) not in around

    def count_attribute(self, attrib, insert_layer, scale):
        layer = attrib.text(8, "0") or "0"
        if not self.is_shown(attrib, insert_layer if layer == "0" else layer):
            return Counter()
        hidden = int(attrib.number(70)) & 1
        return count_text(attrib, scale) if self.att_mode == 2 or self.att_mode == 1 and not hidden else Counter()

    def strip(self, path):
        keep = []
        for name, (a, b) in self.sections.items():
            keep += [(0, "SECTION"), (2, name)]
            if name not in ("BLOCKS", "ENTITIES"):
                keep += self.pairs[a:b]
            else:
                for run in split_entities(self.pairs[a:b]):
                    entity = Entity(run)
                    if entity.kind in ("BLOCK", "ENDBLK") or is_counted(entity):
                        keep += run
            keep.append((0, "ENDSEC"))
        with open(path, "w", encoding="latin-1", newline="\n") as out:
            out.writelines(f"{code:3}\n{text}\n" for code, text in keep + [(0, "EOF")])


def main(arguments):
    drawing = Drawing(arguments[1])
    if "--strip" in arguments:
        drawing.strip(arguments[arguments.index("--strip") + 1])
    count = drawing.count()
    print(json.dumps({key: count[key] for key in ("move", "draw", "arc", "spline", "texts")}))


if __name__ == "__main__":
    main(sys.argv)
