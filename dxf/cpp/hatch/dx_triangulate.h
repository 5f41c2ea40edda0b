// Triangles of a polygon with holes.
#pragma once

#include "rpt.h"

/// Cuts contours into triangles: the first one, counter-clockwise, is the outer one, the others are holes,
/// clockwise. `vertices` holds them one behind the other from index 1 on; `triangles` has room for three
/// indexes each of n + 2k - 4 triangles, n vertices and k contours that aren't empty. Vertices that follow
/// within 1e-7 of each other count as one point, which leaves triangles without area. 0, or 2360 for contours
/// that cross.
int DxFillTriangulate(int contourCount, const int* contourSizes, const RPT* vertices, int* triangles);
