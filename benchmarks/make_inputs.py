#!/usr/bin/env python3
"""Writes the drawings that docs/performance.md measures: make_inputs.py FOLDER [MEGABYTES].

linework.dxf   LINE, ARC and CIRCLE in turn
outlines.dxf   LWPOLYLINE with bulges and TEXT in turn
inserts.dxf    100,000 INSERTs, each with scales of its own, of a block of 50 lines, arcs and circles
The same files come out each time.
"""
import pathlib
import random
import sys

LAYERS = 50


def pairs(*groups):
    return "".join(f"{code:3d}\n{value}\n" for code, value in groups)


def section(name, body):
    return pairs((0, "SECTION"), (2, name)) + body + pairs((0, "ENDSEC"))


def head():
    rows = "".join(pairs((0, "LAYER"), (2, f"LAYER-{i}"), (70, 0), (62, 1 + i % 7), (6, "CONTINUOUS"))
                   for i in range(LAYERS))
    table = pairs((0, "TABLE"), (2, "LAYER"), (70, LAYERS)) + rows + pairs((0, "ENDTAB"))
    return section("HEADER", pairs((9, "$ACADVER"), (1, "AC1015"))) + section("TABLES", table)


def number(chance, most=10000.0):
    return f"{chance.random() * most:.6f}"


def curve(chance, kind, most, reach):
    """A LINE, an ARC or a CIRCLE, by kind % 3."""
    name = ("LINE", "ARC", "CIRCLE")[kind % 3]
    groups = [(0, name), (100, "AcDbEntity"), (8, f"LAYER-{chance.randrange(LAYERS)}"),
              (10, number(chance, most)), (20, number(chance, most)), (30, "0.0")]
    if name == "LINE":
        groups += [(11, number(chance, most)), (21, number(chance, most)), (31, "0.0")]
    else:
        groups += [(40, number(chance, reach))]
    if name == "ARC":
        groups += [(50, number(chance, 360)), (51, number(chance, 360))]
    return pairs(*groups)


def outline(chance, kind):
    layer = (8, f"LAYER-{chance.randrange(LAYERS)}")
    if kind % 2:
        return pairs((0, "TEXT"), layer, (10, number(chance)), (20, number(chance)), (30, "0.0"),
                     (40, "2.5"), (1, f"Room {kind}, 3rd floor"), (50, number(chance, 360)))
    corners = []
    for _ in range(8):
        corners += [(10, number(chance)), (20, number(chance)), (42, f"{chance.uniform(-1, 1):.6f}")]
    return pairs((0, "LWPOLYLINE"), layer, (90, 8), (70, 1), *corners)


def entities(make, size):
    chance, parts, written, kind = random.Random(1), [], 0, 0
    while written < size:
        parts.append(make(chance, kind))
        written += len(parts[-1])
        kind += 1
    return head() + section("ENTITIES", "".join(parts)) + pairs((0, "EOF"))


def inserts(count=100_000):
    chance = random.Random(1)
    block = pairs((0, "BLOCK"), (8, "0"), (2, "PART"), (70, 0), (10, "0.0"), (20, "0.0"), (30, "0.0"))
    block += "".join(curve(chance, kind, 100, 10) for kind in range(50))
    block += pairs((0, "ENDBLK"), (8, "0"))
    parts = [pairs((0, "INSERT"), (8, f"LAYER-{chance.randrange(LAYERS)}"), (2, "PART"), (10, number(chance)),
                   (20, number(chance)), (30, "0.0"), (41, f"{chance.uniform(0.5, 2):.4f}"),
                   (42, f"{chance.uniform(0.5, 2):.4f}"), (43, "1.0"), (50, number(chance, 360)))
             for _ in range(count)]
    return head() + section("BLOCKS", block) + section("ENTITIES", "".join(parts)) + pairs((0, "EOF"))


def main():
    folder = pathlib.Path(sys.argv[1])
    size = int(sys.argv[2] if len(sys.argv) > 2 else 100) * 1_000_000
    folder.mkdir(parents=True, exist_ok=True)
    (folder / "linework.dxf").write_text(entities(lambda c, k: curve(c, k, 10000, 100), size))
    (folder / "outlines.dxf").write_text(entities(outline, size))
    (folder / "inserts.dxf").write_text(inserts(100_000 * size // 100_000_000))


if __name__ == "__main__":
    main()
