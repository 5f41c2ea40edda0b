// How dimensions and arrows look: lines, and the triangles of filled heads.
#pragma once

#include "drawing/drawing.h"

#include <array>

namespace host {

struct DimFill {
    std::array<RPT, 3> corners;
    int pen;
};

struct DimDrawing {
    std::vector<Element> lines;
    std::vector<DimFill> fills;
};

/// A dimension by its points and parameters; one of drawn lines as these. `millimetresPerUnit`: on the sheet.
DimDrawing drawDimension(const Dimension& dimension, double millimetresPerUnit);
/// An arrow with its heads.
DimDrawing drawArrow(const Arrow& arrow, double millimetresPerUnit);

/// Points of a kind among a dimension's points, in order.
std::vector<RPT> pointsOfKind(const Dimension& dimension, int kind);
/// 1 to 3 linear, 4 and 9 angular, 5 and 6 radial, for any OV_DIM_KIND; 0 for what isn't one.
int dimFamily(int kind);

} // namespace host
