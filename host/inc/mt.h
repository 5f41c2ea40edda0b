// Matrices. 4 by 4 for row vectors (see rpt.h); in a product the left factor acts first.
#pragma once

#include "rpt.h"

void Mt44Ident(Mat44 m);
void Mt44Copy(const Mat44 from, Mat44 to);
/// result = a times b. `result` may be one of the factors.
void Mt44Concat(const Mat44 a, const Mat44 b, Mat44 result);
/// 0, or 3011 for a singular matrix, with `result` untouched. `result` may be `m`.
int Mt44Invert(const Mat44 m, Mat44 result);
/// Rotation by `angle` radians about axis 0 x, 1 y, 2 z.
void Mt44MakeRotate(int axis, double angle, Mat44 m);
void Mt44MultRpt3(const RPT3& point, const Mat44 m, RPT3* result);     ///< A point: translation counts.
void Mt44MultRpt3Vec(const RPT3& vector, const Mat44 m, RPT3* result); ///< A direction: it doesn't.

void MtIdentMat(Mat32 m);
int MtInvertMat(const Mat32 m, Mat32 result); ///< 3011 for a singular matrix.
bool MtIsMirrored(const Mat32 m);
double MtGetScale(const Mat32 m); ///< Length of the image of (1, 0).
double MtGetRot(const Mat32 m);   ///< Angle of the image of (1, 0), radians.
void MtTransRPt(const RPT& point, const Mat32 m, RPT* result);
double MtTransRad(double radius, const Mat32 m); ///< A radius, times the matrix' scale.
