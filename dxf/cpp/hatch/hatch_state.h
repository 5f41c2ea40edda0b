// Running values of hatches.
#pragma once

extern int DxHatchBlockNo;  ///< number of the next hatch block "*X%d"
extern int DxHatchInsertNo; ///< number of the next INSERT of one; both pass over the same hatches in order
extern unsigned DxFillSeed; ///< seed of the triangulation, 0: the time; tests set it ahead of a call

/// Start values of all of the above.
void DxResetHatchState();
