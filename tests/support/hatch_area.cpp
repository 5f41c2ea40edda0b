#include "hatch_area.h"

#include "drawing/host_state.h"

#include <algorithm>
#include <cmath>

namespace {

/// A contour as a chain of short chords.
std::vector<RPT> chordsOf(const host::Contour& contour) {
    constexpr int chords = 2000;
    std::vector<RPT> points;
    for (const host::Element& e : contour) {
        const RPT to{e.x, e.y};
        if (e.type == host::ElementType::Arc) {
            const RPT from = points.back();
            const double r = std::hypot(to.x - e.cx, to.y - e.cy);
            const double a = std::atan2(from.y - e.cy, from.x - e.cx);
            double sweep = std::atan2(to.y - e.cy, to.x - e.cx) - a;
            const double full = 2 * std::acos(-1.0);
            if (e.ccw && sweep <= 1e-12) sweep += full;
            if (!e.ccw && sweep >= -1e-12) sweep -= full;
            for (int i = 1; i < chords; ++i)
                points.push_back({e.cx + r * std::cos(a + sweep * i / chords),
                                  e.cy + r * std::sin(a + sweep * i / chords)});
        }
        points.push_back(to);
    }
    return points;
}

double shoelace(const std::vector<RPT>& points) {
    double twice = 0;
    for (std::size_t i = 0; i < points.size(); ++i) {
        const RPT& a = points[i];
        const RPT& b = points[(i + 1) % points.size()];
        twice += (a.x - points[0].x) * (b.y - points[0].y) - (b.x - points[0].x) * (a.y - points[0].y);
    }
    return std::fabs(twice) / 2;
}

bool isInside(const RPT& p, const std::vector<RPT>& points) {
    bool odd = false;
    for (std::size_t i = 0; i < points.size(); ++i) {
        const RPT& a = points[i];
        const RPT& b = points[(i + 1) % points.size()];
        if ((a.y > p.y) != (b.y > p.y) && p.x < a.x + (b.x - a.x) * (p.y - a.y) / (b.y - a.y)) odd = !odd;
    }
    return odd;
}

} // namespace

double areaOf(const host::Hatch& hatch) {
    std::vector<std::vector<RPT>> contours;
    for (const host::Contour& contour : hatch.contours) contours.push_back(chordsOf(contour));
    double area = 0;
    for (std::size_t i = 0; i < contours.size(); ++i) {
        int depth = 0;
        for (std::size_t j = 0; j < contours.size(); ++j)
            depth += i != j && isInside(contours[i].front(), contours[j]);
        area += depth % 2 ? -shoelace(contours[i]) : shoelace(contours[i]);
    }
    return area;
}

std::vector<host::Hatch> hatchesNow() {
    std::vector<host::Hatch> hatches;
    for (const host::Pattern& pattern : host::openDrawing().patterns)
        if (pattern.number != 0 && !pattern.scratch)
            hatches.insert(hatches.end(), pattern.hatches.begin(), pattern.hatches.end());
    return hatches;
}
