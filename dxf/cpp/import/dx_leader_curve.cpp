#include "dx_leader_curve.h"

#include "../host/dx_host.h"
#include "../host/dx_host_arrow.h"
#include "ov_arrow.h"

namespace {

constexpr int chords = 12; ///< of a curve between two points

/// Between b and c, with tangents that follow from the points around them.
double between(double a, double b, double c, double d, double t) {
    const double start = (c - a) / 2, end = (d - b) / 2, t2 = t * t, t3 = t2 * t;
    return (2 * t3 - 3 * t2 + 1) * b + (t3 - 2 * t2 + t) * start + (3 * t2 - 2 * t3) * c + (t3 - t2) * end;
}

} // namespace

std::vector<RPT3> DxLeaderCurve(const std::vector<RPT3>& points) {
    if (points.size() < 3) return points;
    std::vector<RPT3> curve{points[0]};
    for (std::size_t i = 1; i < points.size(); ++i) {
        const RPT3 &b = points[i - 1], &c = points[i];
        const RPT3& a = i > 1 ? points[i - 2] : b;
        const RPT3& d = i + 1 < points.size() ? points[i + 1] : c;
        for (int k = 1; k <= chords; ++k) {
            const double t = static_cast<double>(k) / chords;
            curve.push_back({between(a.x, b.x, c.x, d.x, t), between(a.y, b.y, c.y, d.y, t),
                             between(a.z, b.z, c.z, d.z, t)});
        }
    }
    return curve;
}

int DxDrawArrowLine(const std::vector<RPT3>& points, int kind, double length, const DxPenLt& look) {
    constexpr double widthOfLength = 0.3;
    int error = DxNewElement(static_cast<int>(points.size()));
    if (!error) error = DxovArrowLook(kind, look.pen, look.lineType, length, widthOfLength * length);
    for (std::size_t i = points.size(); !error && i-- > 0;) {
        const int op = i + 1 == points.size() ? 2 : 1;
        error = Dxovarrow(op, points[i].x, points[i].y, 0, 0, i == 0 ? kind : OV_ARROW_NONE);
    }
    return error;
}
