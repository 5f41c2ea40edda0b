// Moving all that a drawing holds.
#pragma once

#include "drawing/drawing.h"

namespace host {

/// Moves the content of all patterns by (dx, dy), in the drawing's unit. Patterns on a work plane stay: their
/// coordinates are the plane's.
void moveDrawing(Drawing& drawing, double dx, double dy);

} // namespace host
