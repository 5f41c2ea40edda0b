// Moving patterns by a matrix.
#pragma once

#include "drawing/drawing.h"

namespace host {

/// Carries all that a pattern holds through a rotation about z and a translation, lengths in the drawing's
/// unit. What stands on a work plane moves with a plane of its own.
void transformPattern(Drawing& drawing, Pattern& pattern, const Mat44 m);

} // namespace host
