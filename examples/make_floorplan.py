#!/usr/bin/env python3
"""Writes floorplan.dxf: a small house with wide and tapered polylines, splines, nested,
mirrored and unevenly scaled
blocks, attributes, TEXT and MTEXT. Unit: millimetres."""
import math
import pathlib

from dxf2000 import (arc, block, circle, ellipse, insert, layer, line, linetype, mtext, polyline, rectangle, solid,
                     spline, style, text, write)

WIDTH, DEPTH = 11500.0, 8500.0  # of the house, between the middles of the outer walls

# Centre lines of the walls, parted at doors and windows.
OUTER_WALLS = (
    [(900, 0), (0, 0), (0, 1500)],
    [(0, 3300), (0, 5400)],
    [(0, 7000), (0, DEPTH), (1400, DEPTH)],
    [(3200, DEPTH), (5200, DEPTH)],
    [(6200, DEPTH), (8200, DEPTH)],
    [(10000, DEPTH), (WIDTH, DEPTH), (WIDTH, 6800)],
    [(WIDTH, 5000), (WIDTH, 3400)],
    [(WIDTH, 1600), (WIDTH, 0), (9800, 0)],
    [(7000, 0), (4900, 0)],
    [(3900, 0), (2700, 0)],
)
INNER_WALLS = (
    [(0, 4600), (3000, 4600)],
    [(3900, 4600), (4600, 4600), (4600, 5200)],
    [(4600, 6100), (4600, DEPTH)],
    [(4600, 4600), (5600, 4600)],
    [(6500, 4600), (6900, 4600), (6900, 5200)],
    [(6900, 6100), (6900, DEPTH)],
    [(6900, 4600), (8600, 4600)],
    [(9500, 4600), (WIDTH, 4600)],
    [(5800, 0), (5800, 700)],
    [(5800, 1600), (5800, 3000), (4700, 3000)],
    [(3800, 3000), (3300, 3000), (3300, 0)],
)
# Hinge, direction in degrees, and the side to which they open.
DOORS = (
    (3000, 4600, 0, 1.0),
    (4600, 5200, 90, 1.0),
    (5600, 4600, 0, 1.0),
    (6900, 5200, 90, -1.0),
    (8600, 4600, 0, 1.0),
    (5800, 700, 90, -1.0),
    (3800, 3000, 0, -1.0),
)
# Start, length, direction.
WINDOWS = (
    (900, 0, 1800, 0),
    (7000, 0, 2800, 0),
    (1400, DEPTH, 1800, 0),
    (5200, DEPTH, 1000, 0),
    (8200, DEPTH, 1800, 0),
    (0, 1500, 1800, 90),
    (0, 5400, 1600, 90),
    (WIDTH, 1600, 1800, 90),
    (WIDTH, 5000, 1800, 90),
)
ROOMS = (
    (1650, 3550, "Kitchen", "14.9"),
    (7500, 3000, "Living room", "30.4"),
    (4550, 1700, "Hall", "6.9"),
    (1500, 5500, "Bedroom", "17.2"),
    (5750, 6000, "Bath", "8.3"),
    (8200, 6000, "Studio", "17.3"),
)


def door():
    polyline("0", [(0, 0), (0, 900)], width=50)
    arc("0", 0, 0, 900, 0, 90)
    line("0", 900, -60, 900, 60)


def window():
    """One unit long; stretched to its place."""
    rectangle("0", 0, -150, 1, 150)
    line("0", 0, -30, 1, -30)
    line("0", 0, 30, 1, 30)


def chair():
    polyline("0", [(-200, -200), (200, -200), (200, 150, 0.35), (-200, 150)], closed=True)
    polyline("0", [(-190, 225, -0.3), (190, 225)], width=60)


def dining_group():
    polyline("0", [(-750, -400, 0.2), (750, -400, 0.5), (750, 400, 0.2), (-750, 400, 0.5)], closed=True, width=30)
    for x in (-450, 450):
        insert("FURNITURE", "CHAIR", x, 700)
        insert("FURNITURE", "CHAIR", x, -700, rotation=180)


def bed():
    rectangle("0", 0, 0, 1800, 2000)
    for x in (100, 950):
        polyline("0", [(x, 1550), (x + 750, 1550), (x + 750, 1900, 0.15), (x, 1900)], closed=True)
    spline("0", [(0, 1400), (400, 1250), (900, 1500), (1300, 1300), (1800, 1400)])


def sofa():
    polyline("0", [(0, 0), (2200, 0), (2200, 750, 0.4), (2000, 750), (2000, 250), (200, 250), (200, 750, 0.4),
                   (0, 750)], closed=True)
    for x in (200, 800, 1400):
        rectangle("0", x, 250, x + 600, 850)


def bath():
    rectangle("0", 0, 0, 1700, 750)
    ellipse("0", 850, 375, 760, 0, 0.42)
    circle("0", 250, 375, 40)


def basin():
    rectangle("0", -300, 0, 300, 450)
    ellipse("0", 0, 250, 220, 0, 0.65)


def stove():
    rectangle("0", 0, 0, 600, 600)
    for x, y, r in ((170, 170, 90), (430, 170, 110), (170, 430, 110), (430, 430, 90)):
        circle("0", x, y, r)


def tree():
    ring = [(r * math.cos(a), r * math.sin(a))
            for i in range(14) for r, a in [(900 if i % 2 else 650, 2 * math.pi * i / 14)]]
    spline("0", ring, closed=True)
    for i in range(7):
        a = 2 * math.pi * i / 7 + 0.3
        polyline("0", [(0, 0, 0.2, 90, 0), (560 * math.cos(a), 560 * math.sin(a))])


def north():
    circle("0", 0, 0, 600)
    polyline("0", [(0, -450, 0, 0, 60), (0, 150, 0, 420, 0), (0, 700, 0, 0, 0)])
    text("0", 0, 800, 300, "N", align=1)


def tick():
    polyline("0", [(-90, -90), (90, 90)], width=25)


def title_block():
    rectangle("0", 0, 0, 5400, 1500)
    for y in (500, 1000):
        line("0", 0, y, 5400, y)
    line("0", 2700, 0, 2700, 1000)
    for x, y, label in ((80, 1380, "PROJECT"), (80, 880, "DRAWN"), (2780, 880, "DATE"), (80, 380, "SCALE"),
                        (2780, 380, "SHEET")):
        text("0", x, y, 80, label)


def walls():
    for run in OUTER_WALLS:
        polyline("WALLS", run, width=365)
    for run in INNER_WALLS:
        polyline("WALLS", run, width=115)


def openings():
    for x, y, rotation, side in DOORS:
        insert("DOORS", "DOOR", x, y, rotation=rotation, scale_y=side)
    insert("DOORS", "DOOR", 3945, 0, scale=0.96 / 0.9)
    for x, y, length, rotation in WINDOWS:
        insert("WINDOWS", "WINDOW", x, y, scale=length, scale_y=1.0, rotation=rotation)


def rooms():
    insert("FURNITURE", "DINING", 1700, 1300, rotation=90)
    insert("FURNITURE", "SOFA", 8900, 300)
    insert("FURNITURE", "SOFA", 11250, 4400, rotation=180)
    polyline("FURNITURE", [(9300, 1900), (10700, 1900), (10700, 2700), (9300, 2700)], closed=True, width=40)
    insert("FURNITURE", "BED", 1300, 6250)
    insert("FURNITURE", "BED", 11250, 6350, rotation=0, scale=-1.0, scale_y=1.0)
    insert("FURNITURE", "BATH", 4750, 7600)
    insert("FURNITURE", "BASIN", 6830, 6700, rotation=90)
    insert("FURNITURE", "STOVE", 300, 3880)
    insert("FURNITURE", "STOVE", 300, 3250)
    for x, y, name, area in ROOMS:
        mtext("TEXT", x, y, 260, rf"{{\L{name}\l}}\P{{\H0.7x;\C8;{area} m\U+00B2}}", style="Names")


def surroundings():
    outline = [(6600, -200), (6600, -2300), (8200, -2900, -0.25), (10600, -2600), (10900, -200)]
    polyline("GARDEN", outline, linetype="DASHED")
    for i in range(5):
        line("GARDEN", 7000 + 900 * i, -300, 7000 + 900 * i, -2200, color=252)
    for x, y, scale in ((-1500, 6800, 1.0), (-1700, 1500, 1.3), (1300, -1900, 1.1), (13500, 7200, 1.2)):
        insert("GARDEN", "TREE", x, y, scale=scale, rotation=x / 50)
    spline("GARDEN", [(4400, -300), (4300, -1200), (5300, -2200), (4000, -3300), (4700, -4000)], color=32)
    spline("GARDEN", [(5400, -300), (5300, -1200), (6200, -2300), (5000, -3300), (5700, -4000)], color=32)


def chain(stations, level, vertical=False):
    """A row of dimensions between `stations`, in the distance `level` from the house."""
    def put_line(a, b, c, d):
        line("DIMENSIONS", *((b, a, d, c) if vertical else (a, b, c, d)))
    put_line(stations[0], level, stations[-1], level)
    for a in stations:
        put_line(a, level - 150, a, level + 150)
        insert("DIMENSIONS", "TICK", *((level, a) if vertical else (a, level)))
    for a, b in zip(stations, stations[1:]):
        place = (level - 80, (a + b) / 2) if vertical else ((a + b) / 2, level + 80)
        text("DIMENSIONS", *place, 180, f"{(b - a) / 1000:.2f}", rotation=90 if vertical else 0, style="Names",
             align=1)


def drawing():
    surroundings()
    walls()
    openings()
    rooms()
    chain((-182.5, 1400, 3200, 5200, 6200, 8200, 10000, WIDTH + 182.5), DEPTH + 900)
    chain((-182.5, WIDTH + 182.5), DEPTH + 1500)
    chain((-182.5, 1600, 3400, 5000, 6800, DEPTH + 182.5), WIDTH + 1000, vertical=True)
    insert("SHEET", "NORTH", 13600, -1600, rotation=-20)
    for i in range(6):
        corners = [(x, y) for y in (-4900, -4750) for x in (6600 + 1000 * i, 7600 + 1000 * i)]
        solid("SHEET", *corners, color=250 if i % 2 == 0 else 253)
        text("SHEET", 6600 + 1000 * i, -4650, 150, f"{i}")
    text("SHEET", 12650, -4650, 150, "6 m")
    insert("SHEET", "TITLE", -3000, -5200, values=(
        ("PROJECT", "House at the pond, ground floor", -2920, -4090, 170), ("DRAWN", "Torva", -2920, -4600, 170),
        ("DATE", "2026-11-24", -220, -4600, 170), ("SCALE", "1 : 50", -2920, -5100, 170),
        ("SHEET", "1 / 1", -220, -5100, 170)))
    rectangle("SHEET", -3500, -5700, 15200, 11000)


linetype("DASHED", "__ __ __ __ ", 300.0, -150.0)
style("Names", "isocpeur")
for record in (("WALLS", 250), ("DOORS", 30), ("WINDOWS", 4), ("FURNITURE", 8), ("GARDEN", 94), ("DIMENSIONS", 1),
               ("TEXT", 7), ("SHEET", 7)):
    layer(*record)
for draw in (door, window, chair, dining_group, bed, sofa, bath, basin, stove, tree, north, tick, title_block):
    block(draw.__name__.upper().removesuffix("_GROUP").removesuffix("_BLOCK"), draw)
write(pathlib.Path(__file__).with_name("floorplan.dxf"), (-3500, -5700), (15200, 11000), drawing)
