// Points through matrices.
#pragma once

#include "rpt.h"

/// Arbitrary axis: the matrix from the object coordinates of extrusion (nx, ny, nz) to world coordinates.
int DxArbaxis(double nx, double ny, double nz, Mat44 out);
void DxTrans3D(double x, double y, double z, const Mat44 m, double* ox, double* oy, double* oz);
void DxTrans3DRpt(RPT3* p, const Mat44 m);
void DxTrans(double x, double y, const Mat44 m, double* ox, double* oy); ///< plane form
