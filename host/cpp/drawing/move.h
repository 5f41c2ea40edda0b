// Moving all that a drawing holds.
#pragma once

#include "drawing/drawing.h"

namespace host {

/// Moves all that stands in the model by (dx, dy), in the drawing's unit, with its work planes and its
/// georeference. Sheets stay as they are.
void moveModel(Drawing& drawing, double dx, double dy);

} // namespace host
