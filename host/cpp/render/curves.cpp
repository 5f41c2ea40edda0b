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

} // namespace host
