// SPLINE.
#pragma once

#include "dx_entity_walk.h"
#include "dx_polyline.h"
#include "ge.h"
#include "ut_list.h"

int DxReadSpline(DX_SPLINE_TYPE* rec);
/// Draws the spline as a chain of lines, or with `approx` as pairs of arcs that touch each other. `stage` 2
/// gives the flat elements; 3 the curve in space, if lines in space are wanted (Dx3dLines).
int DxDrawSpline(const DX_SPLINE_TYPE* rec, const Mat44 m, int approx, int stage);
/// A curve in space through the points, which are in the drawing's frame, in a pattern of its own with the
/// attributes of the active one. Fewer than two points are none. 0 or the host's error.
int DxCiDraw3DCurveByPoints(UtCList<GeRpt3>& points);

// ---- columns of the table of kinds ---------------------------------------------------------------------
int DxDrawFlatSpline(const DX_SPLINE_TYPE* rec, const DxEntityContext& context);
int DxDrawSplineInSpace(const DX_SPLINE_TYPE* rec, const DxEntityContext& context);
