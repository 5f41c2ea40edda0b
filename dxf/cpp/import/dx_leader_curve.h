// Lines of leaders, as LEADER and MULTILEADER have them.
#pragma once

#include "../config/dx_pens.h"
#include "rpt.h"

#include <vector>

/// A smooth curve through the points as a chain of short lines; two points stay a line.
std::vector<RPT3> DxLeaderCurve(const std::vector<RPT3>& points);
/// Makes an arrow of the host through points in the drawing, its head at the first of them. `length` is that
/// of the head. 0 or the host's error.
int DxDrawArrowLine(const std::vector<RPT3>& points, int kind, double length, const DxPenLt& look);
