// Where a picture of the drawing lies in the picture that is made.
#pragma once

#include "render/frame.h"

namespace host {

/// Upper left corner, upper edge and left edge, device coordinates.
struct Parallelogram {
    RPT at, u, v;
};

Parallelogram placeBitmap(const Bitmap& bitmap, const Frame& frame);
bool isShown(const Parallelogram& place, const Frame& frame);

} // namespace host
