// Frames and boxes.
#include "ge.h"

#include "mt.h"

#include <algorithm>
#include <cmath>

static RPT3 minus(const RPT3& a, const RPT3& b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}

static RPT3 cross(const RPT3& a, const RPT3& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

static double length(const RPT3& v) {
    return std::hypot(v.x, v.y, v.z);
}

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
    const RPT3 x = minus(onX, origin);
    const RPT3 p = minus(inPlane, origin);
    const RPT3 z = cross(x, p);
    const double xLength = length(x);
    const double zLength = length(z);
    if (!(zLength > 1e-12 * xLength * length(p)) || !std::isfinite(zLength)) return;
    const RPT3 ex{x.x / xLength, x.y / xLength, x.z / xLength};
    const RPT3 ez{z.x / zLength, z.y / zLength, z.z / zLength};
    setRow(m_, 0, ex);
    setRow(m_, 1, cross(ez, ex));
    setRow(m_, 2, ez);
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
