// RAY and XLINE.
#pragma once

#include "dx_rays.h"

int DxReadRay(DX_RAY_TYPE* rec);
/// Draws what lies within the extents, or a piece as long as these, and no less than a unit, from its point
/// on where it passes them by. Only its point widens the extents.
int DxDrawRay(const DX_RAY_TYPE* rec, const Mat44 m);
int DxDrawXline(const DX_RAY_TYPE* rec, const Mat44 m); ///< The same to both sides.
