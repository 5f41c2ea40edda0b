// What the calls for dimensions and arrows remember between two calls; part of DrawingState.
#pragma once

#include "ov_dim.h"

namespace host {

struct DimensionState {
    OV_DIM_ARROW_PARM arrow; ///< of dimensions to come
    OV_DIM_TXT_PARM txt;
    OV_DIM_TOL_PARM tol;
    int nextKind = 3, nextMode = 8;      ///< of the next dimension of drawn lines
    int readPattern = 0, readRow = -1;   ///< the dimension that was read last
    int arrowUse = 5, arrowKind = 0;     ///< of arrows to come
    int arrowPen = 1, arrowLineType = 1; ///< of their points to come
    double headLength = 0, headWidth = 0;
    int madePattern = 0, madeRow = -1; ///< the arrow that takes points
    int leaderStart = -1; ///< the point of it that an ordinate's leader begins at, -1: not marked
    int walkPattern = 0;  ///< scratch pattern of a walk through arrows, 0: none
};

} // namespace host
