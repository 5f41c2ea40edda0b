// Where a pattern was placed, and whether a block can hold its content untransformed.
#pragma once

#include "rpt.h"

/// The placement of an INSERT that carries a block's geometry to where a pattern has it.
struct DX_PLACEMENT {
    double base[3] = {0, 0, 0};
    double scale[3] = {1, 1, 1}; ///< a mirrored placement has y negative
    double rotation = 0;         ///< degrees
};

/// Place, scales, mirror and rotation of a matrix. False for one that no INSERT has: sheared or flat.
bool DxPlacementOf(const Mat32 m, DX_PLACEMENT& placement);

/// The placement of a pattern by its own matrix. 0, the host's error, or 3011 for a matrix that no INSERT
/// has.
int DxPlacementOfPattern(int pat, DX_PLACEMENT& placement);

/// Whether content of the pattern, taken back through the inverse of its matrix, is what the block of an
/// INSERT can hold. Arcs stay arcs under even scales only; texts and all that stands beside the elements also
/// can't be mirrored.
bool DxHoldsUntransformed(int pat, const DX_PLACEMENT& placement);
