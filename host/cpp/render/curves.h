// Arcs as cubic Bézier segments.
#pragma once

#include "drawing/drawing.h"

#include <vector>

namespace host {

/// A segment; it begins where the one before it ends.
struct Bezier {
    RPT control1, control2, end;
};

/// The arc from `start` to (arc.x, arc.y) about its centre, in its direction; a full circle when it comes
/// back to its start. `deviceScale` settles the number of segments: 0.05 device units of error at most.
std::vector<Bezier> arcToBezier(const RPT& start, const Element& arc, double deviceScale);

} // namespace host
