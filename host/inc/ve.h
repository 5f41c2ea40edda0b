// Vectors and planes in space, and the older names of the 4 by 4 matrices (see mt.h for their convention).
#pragma once

#include "rpt.h"

void VeMatMakeEinh(Mat44 m); ///< Unit matrix.
void VeMatMakeScale(double sx, double sy, double sz, Mat44 m);
/// Rotation by `angle` radians about axis 0 x, 1 y, 2 z.
void VeMatMakeRotate(int axis, double angle, Mat44 m);
void VeMatMakeTrans(double dx, double dy, double dz, Mat44 m);
/// result = a times b: `a` acts first. `result` may be one of the factors.
void VeMatMult(const Mat44 a, const Mat44 b, Mat44 result);
void VeMatMultRpt3(const RPT3& point, const Mat44 m, RPT3* result);
void VeMatCopy(const Mat44 from, Mat44 to);

/// The plane of all points p with normal·p + distance = 0; the normal has length 1.
struct VE_PLANE {
    RPT3 normal;
    double distance;
};

void Ve3dVec(const RPT3& from, const RPT3& to, RPT3* vector);                ///< vector = to - from
void Ve3dSkalarMult(double factor, const RPT3& vector, RPT3* result);        ///< result = factor * vector
bool Ve3dGleichRicht(const RPT3& a, const RPT3& b, double tolerance = 1e-6); ///< Same direction, by angle.
/// The plane through three points, counter-clockwise round its normal. 3011, with `*plane` untouched, when
/// they lie on a line. Both modes, 0 and 1, give the same.
int Ve3dEbAus3p(int mode, const RPT3& p1, const RPT3& p2, const RPT3& p3, VE_PLANE* plane);
/// Distance (not negative) of a point from a plane, and the point of the plane nearest to it.
int Ve3dDistPtPlane(const RPT3& point, const VE_PLANE& plane, double* distance, RPT3* foot);
