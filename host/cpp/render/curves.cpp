#include "render/curves.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace host {

using std::numbers::pi;

/// Signed angle of the arc, radians.
static double sweepOf(double from, double to, bool ccw) {
    double sweep = ccw ? to - from : from - to;
    sweep = std::fmod(sweep, 2 * pi);
    if (sweep <= 1e-9) sweep += 2 * pi;
    return ccw ? sweep : -sweep;
}

/// Segments of an arc, so that each strays at most 0.05 device units: the error of a segment of angle t is
/// close to 2/27 sin^6(t/4) times the radius.
static int countSegments(double sweep, double deviceRadius) {
    const double sine = std::pow(13.5 * 0.05 / std::max(deviceRadius, 1e-9), 1.0 / 6);
    const double widest = std::min(pi / 2, 4 * std::asin(std::min(1.0, sine)));
    return static_cast<int>(std::clamp(std::ceil(std::fabs(sweep) / widest), 1.0, 4096.0));
}

std::vector<Bezier> arcToBezier(const RPT& start, const Element& arc, double deviceScale) {
    const double startRadius = std::hypot(start.x - arc.cx, start.y - arc.cy);
    const double endRadius = std::hypot(arc.x - arc.cx, arc.y - arc.cy);
    const double from = std::atan2(start.y - arc.cy, start.x - arc.cx);
    const double to = std::atan2(arc.y - arc.cy, arc.x - arc.cx);
    std::vector<Bezier> segments;
    if (!std::isfinite(startRadius + endRadius)) return segments;

    const double sweep = sweepOf(from, to, arc.ccw);
    const int count = countSegments(sweep, std::max(startRadius, endRadius) * deviceScale);
    const double step = sweep / count, handle = 4.0 / 3 * std::tan(step / 4);
    RPT last = start;
    double lastRadius = startRadius;
    for (int i = 1; i <= count; ++i) {
        const double a = from + (i - 1) * step, b = from + i * step;
        // The radius runs from one end's to the other's, so that both ends are met exactly.
        const double radius = startRadius + (endRadius - startRadius) * i / count;
        const RPT end = i == count ? RPT{arc.x, arc.y}
                                   : RPT{arc.cx + radius * std::cos(b), arc.cy + radius * std::sin(b)};
        segments.push_back(
            {{last.x - handle * lastRadius * std::sin(a), last.y + handle * lastRadius * std::cos(a)},
             {end.x + handle * radius * std::sin(b), end.y - handle * radius * std::cos(b)},
             end});
        last = end;
        lastRadius = radius;
    }
    return segments;
}

namespace {

/// Equations for the tangents at the points of one coordinate, chord-length parameters.
struct TangentSystem {
    std::vector<double> below, diagonal, above, right;
    explicit TangentSystem(std::size_t n) : below(n), diagonal(n, 1), above(n), right(n) {}
    std::vector<double> solve();
};

} // namespace

std::vector<double> TangentSystem::solve() {
    const std::size_t n = right.size();
    for (std::size_t i = 1; i < n; ++i) {
        const double factor = below[i] / diagonal[i - 1];
        diagonal[i] -= factor * above[i - 1];
        right[i] -= factor * right[i - 1];
    }
    right[n - 1] /= diagonal[n - 1];
    for (std::size_t i = n - 1; i-- > 0;) right[i] = (right[i] - above[i] * right[i + 1]) / diagonal[i];
    return std::move(right);
}

/// Tangents of a coordinate. A fixed end has the derivative given; a free one no curvature.
static std::vector<double> tangentsOf(const std::vector<double>& at, const std::vector<double>& chord,
                                      const double* startTangent, const double* endTangent) {
    const std::size_t n = at.size();
    TangentSystem system(n);
    if (startTangent) {
        system.right[0] = *startTangent;
    } else {
        system.diagonal[0] = 2, system.above[0] = 1;
        system.right[0] = 3 * (at[1] - at[0]) / chord[0];
    }
    for (std::size_t i = 1; i + 1 < n; ++i) {
        const double before = chord[i - 1], behind = chord[i];
        system.below[i] = behind, system.diagonal[i] = 2 * (before + behind), system.above[i] = before;
        system.right[i] = 3 * (behind * (at[i] - at[i - 1]) / before + before * (at[i + 1] - at[i]) / behind);
    }
    if (endTangent) {
        system.right[n - 1] = *endTangent;
    } else {
        system.below[n - 1] = 1, system.diagonal[n - 1] = 2;
        system.right[n - 1] = 3 * (at[n - 1] - at[n - 2]) / chord[n - 2];
    }
    return system.solve();
}

/// The points without neighbours that coincide and without those that aren't finite.
static std::vector<RPT> distinctPoints(const std::vector<RPT>& points) {
    std::vector<RPT> distinct;
    for (const RPT& p : points) {
        if (!std::isfinite(p.x) || !std::isfinite(p.y)) continue;
        if (distinct.empty() || std::hypot(p.x - distinct.back().x, p.y - distinct.back().y) > 0)
            distinct.push_back(p);
    }
    return distinct;
}

std::vector<Bezier> splineToBezier(const Spline& spline) {
    const std::vector<RPT> points = distinctPoints(spline.points);
    std::vector<Bezier> segments;
    if (points.size() < 2) return segments;

    std::vector<double> chord, xs, ys;
    for (const RPT& p : points) xs.push_back(p.x), ys.push_back(p.y);
    for (std::size_t i = 1; i < points.size(); ++i)
        chord.push_back(std::hypot(xs[i] - xs[i - 1], ys[i] - ys[i - 1]));
    const RPT start{std::cos(spline.startAngle), std::sin(spline.startAngle)};
    const RPT end{std::cos(spline.endAngle), std::sin(spline.endAngle)};
    const bool first = spline.startFixed, last = spline.endFixed;
    const auto dx = tangentsOf(xs, chord, first ? &start.x : nullptr, last ? &end.x : nullptr);
    const auto dy = tangentsOf(ys, chord, first ? &start.y : nullptr, last ? &end.y : nullptr);
    for (std::size_t i = 0; i < chord.size(); ++i) {
        const double third = chord[i] / 3;
        segments.push_back({{xs[i] + dx[i] * third, ys[i] + dy[i] * third},
                            {xs[i + 1] - dx[i + 1] * third, ys[i + 1] - dy[i + 1] * third},
                            points[i + 1]});
    }
    return segments;
}

} // namespace host
