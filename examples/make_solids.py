#!/usr/bin/env python3
"""Writes solids.dxf: bodies on planes, cylinders, cones, spheres and tori, with holes and round edges."""
import math
import pathlib

from dxf2000 import entity, layer, write

UP, TURN = (0, 0, 1), 2 * math.pi
SPHERE_FIELDS = "1 0 0 0 0 1 forward_v I I I I"


def words(*values):
    return " ".join(f"{v:.17g}" if isinstance(v, (int, float)) else v for v in values)


def cross(a, b):
    return tuple(a[i - 2] * b[i - 1] - a[i - 1] * b[i - 2] for i in range(3))


class Model:
    """A body as text of version 700. Records are added in any order and point to each other by number."""

    def __init__(self):
        self.records = []
        self.faces = []
        self.body, self.lump, self.shell = (self.add("") for _ in range(3))

    def add(self, record):
        self.records.append(record)
        return len(self.records) - 1

    def vertex(self, *place):
        point = self.add(f"point $-1 -1 $-1 {words(*place)}")
        return self.add(""), point, place

    def edge(self, start, end, curve, start_at, end_at):
        return {"ends": (start, end), "curve": self.add(curve), "range": (start_at, end_at), "number": self.add(""),
                "coedges": []}

    def circle(self, centre, radius, normal=UP, axis=(1, 0, 0), start=None, end=None, turn=(0, TURN)):
        """A whole circle of its own, or an arc between two vertices; `axis` is where its angles begin."""
        major = tuple(radius * a for a in axis)
        start = start or self.vertex(*(c + m for c, m in zip(centre, major)))
        return self.ellipse(centre, normal, major, 1, start, end or start, turn)

    def ellipse(self, centre, normal, major, ratio, start, end, turn=(0, TURN)):
        curve = f"ellipse-curve $-1 -1 $-1 {words(*centre, *normal, *major, ratio)} I I"
        return self.edge(start, end, curve, *turn)

    def line(self, start, end):
        way = tuple(b - a for a, b in zip(start[2], end[2]))
        return self.edge(start, end, f"straight-curve $-1 -1 $-1 {words(*start[2], *way)} I I", 0, 1)

    def face(self, surface, sense, *loops):
        """Loops: edges, each with whether it is run through backward; seen from outside, the face is on their left."""
        number = self.add("")
        heads = [self.add("") for _ in loops]
        for i, loop in enumerate(loops):
            coedges = [self.add("") for _ in loop]
            following = f"${heads[i + 1]}" if i + 1 < len(heads) else "$-1"
            self.records[heads[i]] = f"loop $-1 -1 $-1 {following} ${coedges[0]} ${number}"
            for k, (edge, is_back) in enumerate(loop):
                edge["coedges"].append((coedges[k], coedges[(k + 1) % len(loop)], coedges[k - 1], is_back, heads[i],
                                        edge["number"]))
        self.faces.append((number, heads[0] if heads else -1, self.add(surface), sense))
        return loops

    def text(self):
        self.records[self.body] = f"body $-1 -1 $-1 ${self.lump} $-1 $-1"
        self.records[self.lump] = f"lump $-1 -1 $-1 $-1 ${self.shell} ${self.body}"
        self.records[self.shell] = f"shell $-1 -1 $-1 $-1 $-1 ${self.faces[0][0]} $-1 ${self.lump}"
        for i, (number, loop, surface, sense) in enumerate(self.faces):
            following = self.faces[i + 1][0] if i + 1 < len(self.faces) else -1
            self.records[number] = (f"face $-1 -1 $-1 ${following} ${loop} ${self.shell} $-1 ${surface} {sense} single")
        for edge in self.edges:
            self.write_edge(edge)
        lines = ["700 0 1 0", "@8 examples @4 none @24 Thu Jan  1 00:00:00 2026", "1 1e-06 1e-10"]
        return lines + [f"{record} #" for record in self.records]

    def write_edge(self, edge):
        pairs = edge["coedges"]
        for i, (number, after, before, is_back, loop, _) in enumerate(pairs):
            sense = "reversed" if is_back else "forward"
            self.records[number] = (f"coedge $-1 -1 $-1 ${after} ${before} ${pairs[1 - i][0]} ${edge['number']} {sense} "
                                    f"${loop} $-1")
        start, end = edge["ends"]
        self.records[edge["number"]] = (f"edge $-1 -1 $-1 ${start[0]} {words(edge['range'][0])} ${end[0]} "
                                        f"{words(edge['range'][1])} ${pairs[0][0]} ${edge['curve']} forward @7 unknown")
        for vertex, point, _ in (start, end):
            self.records[vertex] = f"vertex $-1 -1 $-1 ${edge['number']} ${point}"


def plane(origin, normal, axis=(1, 0, 0)):
    return f"plane-surface $-1 -1 $-1 {words(*origin, *normal, *axis)} forward_v I I I I"


def cone(centre, radius, sine=0.0, cosine=1.0):
    return (f"cone-surface $-1 -1 $-1 {words(*centre, *UP, radius, 0, 0, 1)} I I {words(sine, cosine, radius)} forward "
            "I I I I")


def sphere(centre, radius):
    return f"sphere-surface $-1 -1 $-1 {words(*centre, radius)} {SPHERE_FIELDS}"


def torus(centre, major, minor):
    return f"torus-surface $-1 -1 $-1 {words(*centre, *UP, major, minor)} 1 0 0 forward_v I I I I"


def solid(name, model, *edges):
    model.edges = edges
    pairs = []
    for text in model.text():
        # Each letter is 159 less its number; what a line of a file can't hold of it is told by a blank behind.
        cipher = "".join(c if c == " " else chr(159 - ord(c)) + " " * (c == "A") for c in text)
        pairs.append((1, cipher[:255]))
        pairs += [(3, cipher[at:at + 255]) for at in range(255, len(cipher), 255)]
    entity("3DSOLID", name, "AcDbModelerGeometry", (70, 1), *pairs)


def box_with_hole(name, x, y, size, height, radius):
    m = Model()
    corners = [(x, y), (x + size, y), (x + size, y + size), (x, y + size)]
    low, high = ([m.vertex(*c, z) for c in corners] for z in (0, height))
    floor, roof, posts = [], [], []
    for i in range(4):
        floor.append(m.line(low[i], low[(i + 1) % 4]))
        roof.append(m.line(high[i], high[(i + 1) % 4]))
        posts.append(m.line(low[i], high[i]))
    centre = (x + size / 2, y + size / 2)
    below, above = (m.circle((*centre, z), radius) for z in (0, height))
    m.face(plane((x, y, height), UP), "forward", [(e, False) for e in roof], [(above, True)])
    m.face(plane((x, y, 0), UP), "reversed", [(e, True) for e in reversed(floor)], [(below, False)])
    for i in range(4):
        way = tuple((b - a) / size for a, b in zip(corners[i], corners[(i + 1) % 4])) + (0,)
        m.face(plane((*corners[i], 0), cross(way, UP), way), "forward",
               [(floor[i], False), (posts[(i + 1) % 4], False), (roof[i], True), (posts[i], True)])
    m.face(cone((*centre, 0), radius), "reversed", [(below, True)], [(above, False)])
    solid(name, m, *floor, *roof, *posts, below, above)


def tube(name, x, y, outer, inner, height):
    m = Model()
    rings = {(r, z): m.circle((x, y, z), r) for r in (outer, inner) for z in (0, height)}
    m.face(plane((x, y, height), UP), "forward", [(rings[outer, height], False)], [(rings[inner, height], True)])
    m.face(plane((x, y, 0), UP), "reversed", [(rings[outer, 0], True)], [(rings[inner, 0], False)])
    m.face(cone((x, y, 0), outer), "forward", [(rings[outer, 0], False)], [(rings[outer, height], True)])
    m.face(cone((x, y, 0), inner), "reversed", [(rings[inner, 0], True)], [(rings[inner, height], False)])
    solid(name, m, *rings.values())


def pointed(name, x, y, radius, height):
    m = Model()
    ring, side = m.circle((x, y, 0), radius), math.hypot(radius, height)
    m.face(plane((x, y, 0), UP), "reversed", [(ring, True)])
    m.face(cone((x, y, 0), radius, -radius / side, height / side), "forward", [(ring, False)])
    solid(name, m, ring)


def rounded(name, x, y, radius, height, rounding):
    """A roller whose upper edge is round."""
    m = Model()
    rings = [m.circle((x, y, z), r)
             for r, z in ((radius, 0), (radius, height - rounding), (radius - rounding, height))]
    m.face(plane((x, y, 0), UP), "reversed", [(rings[0], True)])
    m.face(cone((x, y, 0), radius), "forward", [(rings[0], False)], [(rings[1], True)])
    m.face(torus((x, y, height - rounding), radius - rounding, rounding), "forward", [(rings[1], False)],
           [(rings[2], True)])
    m.face(plane((x, y, height), UP), "forward", [(rings[2], False)])
    solid(name, m, *rings)


def slanted(name, x, y, radius, height, slope):
    m = Model()
    length = math.hypot(1, slope)
    normal, axis = (-slope / length, 0, 1 / length), (1 / length, 0, slope / length)
    below, start = m.circle((x, y, 0), radius), m.vertex(x + radius, y, height + slope * radius)
    above = m.ellipse((x, y, height), normal, (radius, 0, slope * radius), 1 / length, start, start)
    m.face(plane((x, y, height), normal, axis), "forward", [(above, False)])
    m.face(plane((x, y, 0), UP), "reversed", [(below, True)])
    m.face(cone((x, y, 0), radius), "forward", [(below, False)], [(above, True)])
    solid(name, m, below, above)


def eighth(name, x, y, radius):
    """An eighth of a ball."""
    m = Model()
    centre, axes = (x, y, 0), ((1, 0, 0), (0, 1, 0), UP)
    middle = m.vertex(*centre)
    tips = [m.vertex(*(c + radius * a for c, a in zip(centre, axis))) for axis in axes]
    spokes = [m.line(middle, tip) for tip in tips]
    arcs = [m.circle(centre, radius, axes[i - 1], axes[i], tips[i], tips[(i + 1) % 3], (0, TURN / 4)) for i in range(3)]
    m.face(sphere(centre, radius), "forward", [(arc, False) for arc in arcs])
    for i in range(3):
        m.face(plane(centre, axes[i - 1], axes[i]), "reversed",
               [(spokes[(i + 1) % 3], False), (arcs[i], True), (spokes[i], True)])
    solid(name, m, *spokes, *arcs)


def closed(name, surface):
    m = Model()
    m.face(surface, "forward")
    solid(name, m)


def scene():
    box_with_hole("BOX", 0, 0, 24, 16, 7)
    tube("TUBE", 45, 12, 10, 6, 28)
    pointed("CONE", 75, 12, 11, 24)
    rounded("ROLLER", 12, 50, 11, 18, 5)
    slanted("SLANTED", 45, 50, 10, 16, 0.7)
    eighth("EIGHTH", 66, 44, 16)
    closed("BALL", sphere((105, 12, 10), 10))
    closed("RING", torus((105, 50, 4), 11, 4))


for record in (("BOX", 5), ("TUBE", 4), ("CONE", 2), ("ROLLER", 30), ("SLANTED", 1), ("EIGHTH", 6), ("BALL", 3),
               ("RING", 150)):
    layer(*record)
write(pathlib.Path(__file__).with_name("solids.dxf"), (0, 0), (120, 65), scene, version="AC1018")
