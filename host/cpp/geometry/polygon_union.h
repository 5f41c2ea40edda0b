// Union of polygons in integer coordinates.
#pragma once

#include <polyclipping/clipper.hpp>

namespace host {

/// The boundary of the region where the winding number of the polygons is above 0: outer polygons
/// counter-clockwise, holes clockwise. False when they are beyond what can be worked out; throws what
/// Clipper throws.
bool unitePolygons(const ClipperLib::Paths& polygons, ClipperLib::Paths* united);

} // namespace host
