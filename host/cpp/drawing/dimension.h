// Arrows and dimensions of a pattern.
#pragma once

#include "drawing/element.h"
#include "ov_dim.h"

#include <vector>

namespace host {

/// Lines with heads at their two ends.
struct Arrow {
    std::vector<Element> lines;
    int startHead = 0, endHead = 0;       ///< OV_ARROW_KIND
    double headLength = 0, headWidth = 0; ///< millimetres on the sheet
    int use = 5;                          ///< OV_ARROW_USE
};

struct Dimension {
    int kind = 31;            ///< low word of an OV_DIM_KIND
    int place = 0;            ///< in a chain, OV_DIM_PLACE; 0: none
    int mode = 0;             ///< OV_DIM_MODE; 0: made of points
    std::vector<RPT3> points; ///< x, y and in z what the point is; empty when it is made of lines
    RPT textPos{0, 0};
    RPT refs[3] = {};
    int textRow = -1, tolRow = -1; ///< among the pattern's texts, -1: none
    OV_DIM_ARROW_PARM arrow;
    OV_DIM_TXT_PARM txt;
    OV_DIM_TOL_PARM tol;
    std::vector<Element> lines; ///< of a dimension that is made of lines

    bool isFree() const { return mode == OV_DIM_MODE_FREE; }
};

} // namespace host
