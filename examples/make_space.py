#!/usr/bin/env python3
"""Writes space.dxf: a cube with a hole, two crossing plates, a ball, a pavilion with a subdivision roof."""
import math
import pathlib

from dxf2000 import MODEL, entity, entity_class, head, layer, number, put, write


def xyz(index, x, y, z):
    return (10 + index, number(x)), (20 + index, number(y)), (30 + index, number(z))


def face(name, *corners, hidden=0):
    corners = list(corners) + [corners[-1]] * (4 - len(corners))
    pairs = [pair for i, corner in enumerate(corners) for pair in xyz(i, *corner)]
    entity("3DFACE", name, "AcDbFace", *pairs, (70, hidden))


def vertex(name, kind, *pairs):
    entity("VERTEX", name, "AcDbVertex", (100, kind), *pairs)


def polyface(name, vertices, faces):
    """Faces name vertices from 1 on; a negative number hides the edge that leaves it."""
    entity("POLYLINE", name, "AcDbPolyFaceMesh", (66, 1), *xyz(0, 0, 0, 0), (70, 64), (71, len(vertices)),
           (72, len(faces)))
    for v in vertices:
        vertex(name, "AcDbPolyFaceMeshVertex", *xyz(0, *v), (70, 192))
    for f in faces:
        entity("VERTEX", name, "AcDbFaceRecord", *xyz(0, 0, 0, 0), (70, 128),
               *((71 + i, number_of) for i, number_of in enumerate(f)))
    entity_end(name)


def polygon_mesh(name, rows, closed):
    """Rows of points; `closed`: 1 over the rows, 32 within them."""
    entity("POLYLINE", name, "AcDbPolygonMesh", (66, 1), *xyz(0, 0, 0, 0), (70, 16 + closed), (71, len(rows)),
           (72, len(rows[0])))
    for row in rows:
        for v in row:
            vertex(name, "AcDbPolygonMeshVertex", *xyz(0, *v), (70, 64))
    entity_end(name)


def entity_end(name):
    head("SEQEND", MODEL, "AcDbEntity")
    put((8, name))


def box_with_hole(name, at, size, hole):
    """A cube with a square hole from top to bottom."""
    x, y, z = at
    vertices = []
    for height in (0, size):
        for inset in (0, (size - hole) / 2):
            low, high = inset, size - inset
            vertices += [(x + a, y + b, z + height) for a, b in ((low, low), (high, low), (high, high), (low, high))]
    faces = []
    for i in range(4):
        j = (i + 1) % 4
        faces.append((1 + i, 1 + j, 9 + j, 9 + i))  # outside
        faces.append((5 + i, 5 + j, 13 + j, 13 + i))  # the hole
        for level in (0, 8):  # bottom and lid: the edges between their quarters are hidden
            faces.append((level + 1 + i, -(level + 1 + j), level + 5 + j, -(level + 5 + i)))
    polyface(name, vertices, faces)


def ball(name, at, radius, rings=16, points=24):
    x, y, z = at
    rows = []
    for i in range(rings + 1):
        up = math.pi * i / rings
        rows.append([(x + radius * math.sin(up) * math.cos(2 * math.pi * j / points),
                      y + radius * math.sin(up) * math.sin(2 * math.pi * j / points), z - radius * math.cos(up))
                     for j in range(points)])
    polygon_mesh(name, rows, 32)


def crossing_plates(name, at, size):
    x, y, z = at
    half = size / 2
    face(name, (x - half, y - half, z), (x + half, y - half, z), (x + half, y + half, z + size), (x - half, y + half, z + size))
    face(name, (x - half, y - half, z + size), (x + half, y - half, z + size), (x + half, y + half, z), (x - half, y + half, z))


def pavilion(name, roof, at, size, height):
    """Round columns of circles with a thickness, walls of thick lines, a roof of one MESH."""
    x, y, z = at
    for a in (0, size):
        for b in (0, size):
            entity("CIRCLE", name, "AcDbCircle", (39, number(height)), *xyz(0, x + a, y + b, z), (40, number(size / 16)))
    entity("LINE", name, "AcDbLine", (39, number(height)), *xyz(0, x, y + size, z), *xyz(1, x + size, y + size, z))
    over = size / 8
    low, high, top = -over, size + over, height + size / 2
    corners = [(x + low, y + low, z + height), (x + high, y + low, z + height), (x + high, y + high, z + height),
               (x + low, y + high, z + height), (x + size / 2, y + size / 2, z + top)]
    faces = [(0, 1, 4), (1, 2, 4), (2, 3, 4), (3, 0, 4), (3, 2, 1, 0)]
    entity("MESH", roof, "AcDbSubDMesh", (71, 2), (72, 0), (91, 0), (92, len(corners)),
           *(pair for corner in corners for pair in xyz(0, *corner)), (93, sum(len(f) + 1 for f in faces)),
           *((90, value) for f in faces for value in (len(f), *f)), (94, 0), (95, 0), (90, 0))


def drop(name, at, radius, count):
    """Points on a turning line."""
    x, y, z = at
    for i in range(count):
        turn = i * 0.35
        entity("POINT", name, "AcDbPoint", *xyz(0, x + radius * math.cos(turn), y + radius * math.sin(turn), z + i * 0.4))


def scene():
    box_with_hole("CUBE", (0, 0, 0), 20, 10)
    crossing_plates("PLATES", (45, 10, 0), 20)
    ball("BALL", (10, 45, 10), 10)
    pavilion("COLUMNS", "ROOF", (36, 36, 0), 18, 12)
    drop("POINTS", (10, 45, 24), 4, 60)


for record in (("CUBE", 5), ("PLATES", 1), ("BALL", 3), ("COLUMNS", 8), ("ROOF", 30), ("POINTS", 6)):
    layer(*record)
entity_class("MESH", "AcDbSubDMesh")
write(pathlib.Path(__file__).with_name("space.dxf"), (0, 0), (57, 57), scene, version="AC1024")
