// Frames, boxes and vectors in space.
#include "ge.h"

#include "mt.h"

#include <algorithm>
#include <cmath>

static void setRow(Mat44 m, int row, const RPT3& v) {
    m[row][0] = v.x;
    m[row][1] = v.y;
    m[row][2] = v.z;
}

GeMat44::GeMat44() {
    Mt44Ident(m_);
}

GeMat44::GeMat44(const Mat44 m) {
    Mt44Copy(m, m_);
}

GeMat44::GeMat44(const RPT3& origin, const RPT3& onX, const RPT3& inPlane) : GeMat44() {
    setRow(m_, 3, origin);
    GeVec x(origin, onX);
    const GeVec p(origin, inPlane);
    GeVec z = x.Cross(p);
    const double size = z.Length();
    if (!(size > 1e-12 * x.Length() * p.Length()) || !std::isfinite(size)) return;
    x.Normalize();
    z.Normalize();
    setRow(m_, 0, x);
    setRow(m_, 1, z.Cross(x));
    setRow(m_, 2, z);
}

void GeMat44::Set(int row, int column, double value) {
    if (row >= 0 && row < 4 && column >= 0 && column < 4) m_[row][column] = value;
}

int GeMat44::Invert() {
    return Mt44Invert(m_, m_);
}

void GeMat44::CopyTo(Mat44 m) const {
    Mt44Copy(m_, m);
}

GeBox& GeBox::operator*=(const GeMat44& m) {
    const RPT3 low = min;
    const RPT3 high = max;
    for (int corner = 0; corner < 8; ++corner) {
        const RPT3 p{corner & 1 ? high.x : low.x, corner & 2 ? high.y : low.y, corner & 4 ? high.z : low.z};
        RPT3 q;
        Mt44MultRpt3(p, m.data(), &q);
        const bool first = corner == 0;
        min = first ? q : RPT3{std::min(min.x, q.x), std::min(min.y, q.y), std::min(min.z, q.z)};
        max = first ? q : RPT3{std::max(max.x, q.x), std::max(max.y, q.y), std::max(max.z, q.z)};
    }
    return *this;
}

double GeVec::Length() const {
    return std::hypot(x, y, z);
}

GeVec GeVec::Cross(const GeVec& other) const {
    return {y * other.z - z * other.y, z * other.x - x * other.z, x * other.y - y * other.x};
}

int GeVec::Normalize() {
    const double length = Length();
    if (!(length > 0.0) || !std::isfinite(length)) return 3011;
    x /= length;
    y /= length;
    z /= length;
    return 0;
}

double GeVec::GetAngleBetween(const GeVec& other, const GeVec& axis) const {
    const GeVec normal = Cross(other);
    const double angle = std::atan2(normal.Length(), Dot(other));
    return normal.Dot(axis) < 0.0 ? -angle : angle;
}

GeUnitVec::GeUnitVec(const GeVec& v) : GeVec(v) {
    if (Normalize()) *static_cast<GeVec*>(this) = GeVec(1, 0, 0);
}
