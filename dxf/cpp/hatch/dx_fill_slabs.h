// Fills for contours that touch each other, which can't be cut into triangles between their corners.
#pragma once

#include "uo_elem.h"

#include <vector>

/// A part of an area between two heights: its corners counter-clockwise, two of them may be one point.
struct DX_FILL_PART {
    RPT corners[4];
};

/// Cuts the even-odd area of contours of lines at the height of each corner. Empty when that gives more
/// parts than anybody wants.
std::vector<DX_FILL_PART> DxFillSlabs(const std::vector<const std::vector<UO_ELEM>*>& contours);
