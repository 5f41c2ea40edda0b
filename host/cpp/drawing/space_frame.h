// Lengths of the 3D calls.
#pragma once

namespace host {

/// What a length of the drawing is multiplied with, beside `scale`, to become one of the 3D calls. The
/// product of the two, as computed, is so close to 1 that a length multiplied by it and divided by it again
/// comes back to the last bit.
double spaceFactor(double scale);
/// That product for the open drawing.
double spaceLength();

} // namespace host
