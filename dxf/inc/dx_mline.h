// The record of MLINE.
#pragma once

#include "dx_entity_base.h"

#include <vector>

/// A vertex: where each of the lines passes it, and which parts of them are drawn from there on.
struct DX_MLINE_VERTEX {
    RPT3 point{0, 0, 0};     ///< 11 21 31, world coordinates
    RPT3 direction{0, 0, 0}; ///< 12 22 32, of the segment that begins here
    RPT3 mitre{0, 0, 0};     ///< 13 23 33, along which the lines lie side by side
    /// 41, a list for each line: its distance along the mitre, then lengths along the segment at which it
    /// begins, ends, begins again …
    std::vector<std::vector<double>> lines;
};

struct DX_MLINE_TYPE {
    DX_ENTITY_BASE_TYPE base;
    int flags; ///< 71; 2 closed, 4 without a cap at the start, 8 at the end
    std::vector<DX_MLINE_VERTEX> vertices;
};
