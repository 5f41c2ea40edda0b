// Running values of hatches.
#pragma once

#include "dx_fixed.h"

/// The number of the first hatch block of a pattern.
struct DX_HATCH_BLOCKS {
    int pat, first;
};

extern int DxHatchBlockNo;  ///< number of the next hatch block "*X%d"
extern int DxHatchInsertNo; ///< number of the next INSERT of one; both pass over a pattern's hatches in order
extern DxTable<DX_HATCH_BLOCKS> DxHatchBlocks; ///< patterns whose hatches are blocks, ascending
extern unsigned DxFillSeed; ///< seed of the triangulation, 0: the time; tests set it ahead of a call

/// Start values of all of the above.
void DxResetHatchState();
