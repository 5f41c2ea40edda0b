// Points as the host and the module exchange them. Plain data, no behaviour.
#pragma once

/// A point or vector in the plane.
struct RPT {
    double x;
    double y;
};

/// A point or vector in space.
struct RPT3 {
    double x;
    double y;
    double z;
};

/// 4 by 4 matrix for row vectors: x' = x*m[0][0] + y*m[1][0] + z*m[2][0] + m[3][0]; translation in row 3.
using Mat44 = double[4][4];

/// Plane matrix for row vectors, translation in the last row.
using Mat32 = double[3][2];
