// Faces as lit surfaces.
#pragma once

#include "drawing/drawing.h"
#include "drawing/space_view.h"
#include "render/frame.h"
#include "render/ink.h"

namespace host {

/// Paints the triangles in the colours of their pens, the nearest in front. Light falls from above the
/// viewer's left shoulder, on both sides of a face. The frame shows view coordinates from above.
void paintShaded(Ink& ink, const Drawing& drawing, const Frame& frame, bool dark,
                 const std::vector<SeenTriangle>& triangles);

} // namespace host
