// The drawing as text: short, stable, for tests, diffs and the dump command.
#pragma once

#include "drawing/drawing.h"

#include <string>

namespace host {

/// All content, a line an object, numbers with at most `digits` significant digits and no negative zero.
std::string dumpDrawing(const Drawing& drawing, int digits = 9);

/// Sums over the drawing.
struct Counts {
    long patterns = 0, moves = 0, draws = 0, arcs = 0, circles = 0, splines = 0, texts = 0, hatches = 0,
         dimensions = 0, bitmaps = 0, faces = 0, facets = 0, curves3d = 0, pointClouds = 0, solids = 0,
         views = 0, attributes = 0;
};
Counts countDrawing(const Drawing& drawing);

} // namespace host
