// The area of a face in the parameters of its surface.
#pragma once

#include "solid/sat_surface.h"
#include "solid/sat_topology.h"

#include <vector>

namespace host {

/// Closed polygons, the first point not repeated. Their area is what an odd number of them encloses.
using Rings = std::vector<std::vector<RPT>>;

/// The rings of a face: its loops, laid out flat where the surface comes back to itself; all of a surface
/// that has no loops. Empty when it has no end.
Rings faceRings(const SatTopology& topology, const SatRecord& face, const SatSurface& surface,
                std::size_t limit);

} // namespace host
