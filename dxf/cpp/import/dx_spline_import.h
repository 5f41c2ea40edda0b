// SPLINE.
#pragma once

#include "dx_entity_walk.h"
#include "dx_polyline.h"

int DxReadSpline(DX_SPLINE_TYPE* rec);
/// Draws the spline as a chain of lines, or with `approx` as pairs of arcs that touch each other. `stage` 2
/// gives the flat elements; 3 the curve in space, if lines in space are wanted (Dx3dLines).
int DxDrawSpline(const DX_SPLINE_TYPE* rec, const Mat44 m, int approx, int stage);

// ---- columns of the table of kinds ---------------------------------------------------------------------
int DxDrawFlatSpline(const DX_SPLINE_TYPE* rec, const DxEntityContext& context);
int DxDrawSplineInSpace(const DX_SPLINE_TYPE* rec, const DxEntityContext& context);
