#include "ve.h"

#include "ge.h"
#include "mt.h"

#include <cmath>

void VeMatMakeEinh(Mat44 m) {
    Mt44Ident(m);
}

void VeMatMakeScale(double sx, double sy, double sz, Mat44 m) {
    Mt44Ident(m);
    m[0][0] = sx;
    m[1][1] = sy;
    m[2][2] = sz;
}

void VeMatMakeRotate(int axis, double angle, Mat44 m) {
    Mt44MakeRotate(axis, angle, m);
}

void VeMatMakeTrans(double dx, double dy, double dz, Mat44 m) {
    Mt44Ident(m);
    m[3][0] = dx;
    m[3][1] = dy;
    m[3][2] = dz;
}

void VeMatMult(const Mat44 a, const Mat44 b, Mat44 result) {
    Mt44Concat(a, b, result);
}

void VeMatMultRpt3(const RPT3& point, const Mat44 m, RPT3* result) {
    Mt44MultRpt3(point, m, result);
}

void VeMatCopy(const Mat44 from, Mat44 to) {
    Mt44Copy(from, to);
}

void Ve3dVec(const RPT3& from, const RPT3& to, RPT3* vector) {
    *vector = {to.x - from.x, to.y - from.y, to.z - from.z};
}

void Ve3dSkalarMult(double factor, const RPT3& vector, RPT3* result) {
    *result = {factor * vector.x, factor * vector.y, factor * vector.z};
}

bool Ve3dGleichRicht(const RPT3& a, const RPT3& b, double tolerance) {
    const GeVec u(a);
    const GeVec v(b);
    return u.Dot(v) > 0.0 && u.Cross(v).Length() <= tolerance * u.Length() * v.Length();
}

int Ve3dEbAus3p(int /*mode*/, const RPT3& p1, const RPT3& p2, const RPT3& p3, VE_PLANE* plane) {
    const GeVec u(p1, p2);
    const GeVec v(p1, p3);
    const GeVec normal = u.Cross(v);
    const double length = normal.Length();
    if (!(length > 1e-12 * u.Length() * v.Length()) || !std::isfinite(length)) return 3011;
    plane->normal = {normal.x / length, normal.y / length, normal.z / length};
    plane->distance = -GeVec(plane->normal).Dot(GeVec(p1));
    return 0;
}

int Ve3dDistPtPlane(const RPT3& point, const VE_PLANE& plane, double* distance, RPT3* foot) {
    const double d = GeVec(plane.normal).Dot(GeVec(point)) + plane.distance;
    if (!std::isfinite(d)) return 3011;
    *distance = std::fabs(d);
    *foot = {point.x - d * plane.normal.x, point.y - d * plane.normal.y, point.z - d * plane.normal.z};
    return 0;
}
