// Two tangent arcs through two points with given directions.
#include "ge.h"

#include "geometry/plane.h"

using namespace host;

namespace {

struct Arc {
    RPT centre{0, 0};
    double radius = 0;
    short sense = 0;
    double bend = 0; ///< sine of half the turning angle, positive to the left
};

// The arc that leaves `from` along the unit vector `direction` and passes through `to`. A chord along the
// direction leaves the sense at 0.
Arc arcAlong(const RPT& from, const RPT& direction, const RPT& to) {
    const RPT chord = to - from;
    const double size = length(chord);
    Arc arc;
    arc.bend = cross(direction, chord) / size;
    if (std::fabs(arc.bend) < 1e-9) return arc;
    const double signedRadius = 0.5 * size / arc.bend;
    arc.centre = from + signedRadius * leftOf(direction);
    arc.radius = std::fabs(signedRadius);
    arc.sense = arc.bend > 0.0 ? 1 : -1;
    return arc;
}

// An arc's chord halves the angle between its end directions: the join lies on both such lines. A direction
// that isn't between the two others would give a wave.
bool joinWithDirection(const RPT& p0, const RPT& t0, const RPT& p2, const RPT& t2, const RPT& t1, RPT* join) {
    if (cross(t0, t1) * cross(t1, t2) < 0.0) return false;
    const RPT u = unit(t0 + t1);
    const RPT v = unit(t1 + t2);
    const double det = cross(u, v);
    if (!(std::fabs(det) > 1e-9)) return false;
    const double along = cross(p2 - p0, v) / det;
    const double back = cross(p2 - p0, u) / det;
    const double chord = distance(p0, p2);
    if (!(along > 1e-9 * chord) || !(-back > 1e-9 * chord)) return false;
    *join = p0 + along * u;
    return true;
}

// The tangent polygon has the same length d at both ends:
// 2 (1 - t0 t2) d^2 + 2 (v (t0 + t2)) d - v v = 0.
bool joinWithEqualTangents(const RPT& p0, const RPT& t0, const RPT& p2, const RPT& t2, RPT* join) {
    const RPT v = p2 - p0;
    const double a = 1.0 - dot(t0, t2);
    const double b = dot(v, t0 + t2);
    double d = 0;
    if (a > 1e-12)
        d = (std::sqrt(b * b + 2.0 * a * dot(v, v)) - b) / (2.0 * a);
    else if (b > 0.0)
        d = dot(v, v) / (2.0 * b);
    if (!(d > 0.0) || !std::isfinite(d)) return false;
    *join = 0.5 * (p0 + p2 + d * (t0 - t2));
    return true;
}

bool bendsTo(short side, const RPT& p0, const RPT& p2, const RPT& join, double eps) {
    const RPT chord = p2 - p0;
    return side == 0 || -side * cross(chord, join - p0) >= -eps * dot(chord, chord);
}

} // namespace

short GeUtilInterpolByArc(const RPT& p0, const RPT& t0, const RPT& p2, const RPT& t2, const RPT& t1,
                          short side, double eps, int /*mode*/, RPT* centre1, double* radius1, short* sense1,
                          RPT* centre2, double* radius2, short* sense2, RPT* join) {
    const RPT u0 = unit(t0);
    const RPT u1 = unit(t1);
    const RPT u2 = unit(t2);
    const double chord = distance(p0, p2);
    const bool directed = length(u0) > 0.5 && length(u2) > 0.5;
    if (!directed || !(chord > 0.0) || !std::isfinite(chord)) return 1;

    // The given direction, else that of the chord, which suits all that bends one way.
    RPT at;
    const auto joinsWith = [&](const RPT& direction) {
        return joinWithDirection(p0, u0, p2, u2, direction, &at) && bendsTo(side, p0, p2, at, eps);
    };
    const bool joined = (length(u1) > 0.5 && joinsWith(u1)) || joinsWith(unit(p2 - p0));
    if (!joined && !joinWithEqualTangents(p0, u0, p2, u2, &at)) return 1;
    if (!isFinite(at) || !bendsTo(side, p0, p2, at, eps)) return 1;
    if (!(distance(p0, at) > 0.0) || !(distance(p2, at) > 0.0)) return 1;

    Arc first = arcAlong(p0, u0, at);
    Arc second = arcAlong(p2, -1.0 * u2, at);
    second.sense = static_cast<short>(-second.sense);
    if (std::fabs(first.bend) < eps && std::fabs(second.bend) < eps)
        first.sense = second.sense = 0;
    else if (first.sense == 0 || second.sense == 0)
        return 1;
    *centre1 = first.centre;
    *radius1 = first.radius;
    *sense1 = first.sense;
    *centre2 = second.centre;
    *radius2 = second.radius;
    *sense2 = second.sense;
    *join = at;
    return 0;
}
