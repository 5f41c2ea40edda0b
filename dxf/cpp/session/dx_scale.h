// Shift and scale of an import.
#pragma once

/// Settles the shift and the scale of an import from the extents of the active space, between measuring and
/// drawing: the shift is the insertion base or the middle of the extents, the scale that of the file's
/// comment, or the host's, or with `fitToSheet` the first of the usual scales at which the drawing fits on a
/// sheet. The extents move with the shift. 0 or the host's error (2030, 3012: scale refused).
int DxfSetScale(int fitToSheet);
