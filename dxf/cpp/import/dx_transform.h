// Points through matrices.
#pragma once

#include "rpt.h"

#include <cmath>

/// Arbitrary axis: the matrix from the object coordinates of extrusion (nx, ny, nz) to world coordinates. The
/// extrusion is used as given, not normalised; one of no length gives the identity. 0.
int DxArbaxis(double nx, double ny, double nz, Mat44 out);
/// Matrix for a figure in object coordinates: `arbaxis(extrusion) times m`. Where the extrusion is the z axis
/// that is `m` itself, else `storage`, which receives the product.
const double (*DxObjectMatrix(const double extrusion[3], const Mat44 m, Mat44 storage))[4];
/// True when `m` turns the sense of a figure in the plane.
bool DxMirrors(const Mat44 m);

void DxTrans3D(double x, double y, double z, const Mat44 m, double* ox, double* oy, double* oz);
void DxTrans3DRpt(RPT3* p, const Mat44 m);
void DxTrans(double x, double y, const Mat44 m, double* ox, double* oy); ///< plane form

/// False for a point that overflowed on its way; the host must not see it.
inline bool DxIsFinite(const RPT3& p) {
    return std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z);
}
