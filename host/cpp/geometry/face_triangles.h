// Faces in space as triangles.
#pragma once

#include "rpt.h"

#include <array>
#include <vector>

namespace host {

/// Twice the area of a closed polygon as a vector along its normal (Newell); nothing for what has no area.
RPT3 areaVector(const RPT3* points, int count);
/// Triangles that cover a polygon of `count` corners (the first isn't repeated), by the places of their
/// corners and in its sense. Polygons may be bent, have corners that coincide and ones that point inward.
void triangulate(const RPT3* points, int count, std::vector<std::array<int, 3>>& triangles);

} // namespace host
