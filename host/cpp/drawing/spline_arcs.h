// A spline's curve as lines and arcs that touch each other.
#pragma once

#include "drawing/drawing.h"
#include "li.h"

#include <vector>

namespace host {

/// Lines and arcs along the curve, off it by `tolerance` at most, except where the curve is too wild for
/// that; they begin at the spline's first point, end at its last and pass through the others.
std::vector<UO_ELEM> splineArcs(const Spline& spline, double tolerance);

} // namespace host
