#!/usr/bin/env python3
"""Writes bracket.dxf: three views of a bearing bracket, made of lines, arcs, circles, ellipses, solids and points."""
import math
import pathlib

from dxf2000 import arc, circle, ellipse, layer, line, linetype, point, rectangle, solid, write


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


def drawing():
    frame()
    front_view()
    side_view(160)
    top_view(-105)


linetype("CENTER", "____ _ ____ _ ____ ", 9.0, -1.5, 1.5, -1.5)
linetype("HIDDEN", "__ __ __ __ __ ", 3.0, -1.5)
for record in (("OUTLINE", 7), ("CENTRES", 1, "CENTER"), ("HIDDEN", 4, "HIDDEN"), ("DIMENSIONS", 3), ("SECTION", 40),
               ("FRAME", 5)):
    layer(*record)
write(pathlib.Path(__file__).with_name("bracket.dxf"), (-40, -130), (260, 125), drawing)
