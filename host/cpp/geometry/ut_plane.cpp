#include "ut_plane.h"

#include "geometry/plane.h"

#include <algorithm>
#include <cmath>

using namespace host;

namespace {

constexpr double kTolerance = 0.0001;

double turn(double from, double to) {
    const double angle = std::fmod(to - from, 2 * kPi);
    return angle < 0 ? angle + 2 * kPi : angle;
}

} // namespace

bool UtRptOnDrawEpsNv(const RPT& point, const RPT& from, const RPT& to, double tolerance) {
    const RPT along = to - from;
    const double square = dot(along, along);
    const double at = square > 0 ? std::clamp(dot(point - from, along) / square, 0.0, 1.0) : 0.0;
    return distance(point, from + at * along) <= tolerance;
}

bool UtRptOnDraw(const RPT& point, const RPT& from, const RPT& to, int /*mode*/) {
    return UtRptOnDrawEpsNv(point, from, to, kTolerance);
}

bool UtRptOnArc(const RPT& point, const RPT& start, const RPT& end, const RPT& centre) {
    if (distance(point, start) <= kTolerance || distance(point, end) <= kTolerance) return true;
    if (std::abs(distance(point, centre) - distance(start, centre)) > kTolerance) return false;
    const double from = angleOf(start - centre);
    return turn(from, angleOf(point - centre)) <= turn(from, angleOf(end - centre));
}

double UtNormAbstand(const RPT& point, const RPT& from, const RPT& to) {
    const RPT along = to - from;
    const double size = length(along);
    return size > 0 ? cross(along, point - from) / size : distance(point, from);
}

int UtNormPunkt(const RPT& point, const RPT& from, const RPT& to, RPT* foot) {
    constexpr int notApplicable = 3011;
    const RPT along = to - from;
    const double square = dot(along, along);
    if (!(square > 0)) return notApplicable;
    *foot = from + (dot(point - from, along) / square) * along;
    return 0;
}

double UtAngleDist(double from, double to, int sense) {
    const double angle = turn(from, to);
    return sense == 1 ? angle : std::min(angle, 2 * kPi - angle);
}
