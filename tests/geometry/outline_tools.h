// Building lines and looking at outlines in the tests of the offsetting.
#pragma once

#include "geometry/li_piece.h"
#include "li.h"
#include "ln.h"

#include <vector>

/// A vertex of a polyline: place, and bulge of the piece behind it (tangent of a quarter of its angle).
struct BulgeVertex {
    double x, y, bulge = 0;
};

/// The polyline as a list in order.
LiList polyline(const std::vector<BulgeVertex>& vertices, bool closed);
/// Contours of an outline as pieces, one row a contour.
std::vector<std::vector<host::Piece>> loopsOf(const LiList& list);
/// Even-odd.
bool isInside(const std::vector<std::vector<host::Piece>>& loops, const RPT& p);
double totalArea(const std::vector<std::vector<host::Piece>>& loops);
/// Distance from the nearest piece of the list; `*square`: the foot lies within that piece.
double distanceFrom(const LiList& list, const RPT& p, bool* square);

std::vector<std::vector<host::Piece>> outlineOf(const LiList& list, double width, int side = 0);
std::vector<std::vector<host::Piece>> outlineOf(const LiList& list, const std::vector<double>& widths);
