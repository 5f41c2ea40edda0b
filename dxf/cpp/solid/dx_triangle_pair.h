// Two triangles that are one flat quadrilateral.
#pragma once

#include "../host/dx_host_read_3d.h"
#include "rpt.h"

/// True when the pattern's 3D data are two triangles that share an edge, hidden on both sides, and lie in one
/// plane; `corners` are then those of the quadrilateral.
bool DxIsTrianglePair(const DX_FACE_ARRAYS& faces, RPT3 (&corners)[4]);
