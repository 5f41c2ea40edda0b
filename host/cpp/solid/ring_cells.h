// A flat area, cut into triangles at given lines.
#pragma once

#include "solid/face_rings.h"

#include <array>
#include <vector>

namespace host {

/// Cuts the area of the rings at the heights of all their points; where `stepX` or `stepY` isn't 0 also
/// upright through all points, and so that no triangle is larger than a step. Not more than about `limit`
/// triangles.
std::vector<std::array<RPT, 3>> ringTriangles(Rings rings, double stepX, double stepY, std::size_t limit);

} // namespace host
