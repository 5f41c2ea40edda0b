// The curve of an interpolating spline: twice continuously differentiable cubic pieces with the chord
// lengths as parameter, clamped where a tangent is given and natural where not.
#pragma once

#include "drawing/drawing.h"

#include <array>
#include <functional>
#include <vector>

namespace host {

using BezierPiece = std::array<RPT, 4>;

/// Gives one Bézier piece between each two points of the spline, in their order; none for fewer than two
/// points.
void forEachSplinePiece(const Spline& spline, const std::function<void(const BezierPiece&)>& take);
/// The same as a list: one Bézier piece between each two points of the spline; empty for fewer than two
/// points.
std::vector<BezierPiece> splinePieces(const Spline& spline);

/// The curve as a chain of points, the spline's own among them, off the curve by `tolerance` at most.
std::vector<RPT> flattenSpline(const Spline& spline, double tolerance);

/// A tolerance that the eye can't see at the size of the spline, and not below `finest`.
double visibleTolerance(const Spline& spline, double finest);

} // namespace host
