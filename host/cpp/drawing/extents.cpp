#include "drawing/extents.h"

#include "ge.h"

#include "dimension/dim_drawing.h"
#include "drawing/spline_curve.h"
#include "text/layout.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace host {

void Extents::add(double x, double y) {
    if (!std::isfinite(x) || !std::isfinite(y)) return;
    if (empty) {
        *this = {x, y, x, y, false};
        return;
    }
    minX = std::min(minX, x);
    minY = std::min(minY, y);
    maxX = std::max(maxX, x);
    maxY = std::max(maxY, y);
}

void Extents::add(const Extents& other) {
    if (other.empty) return;
    add(other.minX, other.minY);
    add(other.maxX, other.maxY);
}

/// `angle` moved into [0, 2 pi).
static double turn(double angle) {
    const double full = 2 * std::numbers::pi;
    const double rest = std::fmod(angle, full);
    return rest < 0 ? rest + full : rest;
}

Extents arcExtents(const RPT& from, const RPT& to, const RPT& centre, bool ccw) {
    Extents box;
    box.add(from.x, from.y);
    box.add(to.x, to.y);
    const double radius = std::hypot(to.x - centre.x, to.y - centre.y);
    const bool full = from.x == to.x && from.y == to.y;
    const RPT& first = ccw ? from : to;
    const RPT& second = ccw ? to : from;
    const double start = std::atan2(first.y - centre.y, first.x - centre.x);
    const double sweep = turn(std::atan2(second.y - centre.y, second.x - centre.x) - start);
    constexpr double axes[4][2] = {{1, 0}, {0, 1}, {-1, 0}, {0, -1}};
    for (int i = 0; i < 4; ++i) {
        if (!full && turn(i * std::numbers::pi / 2 - start) > sweep) continue;
        box.add(centre.x + radius * axes[i][0], centre.y + radius * axes[i][1]);
    }
    return box;
}

static double valueAt(double a, double b, double c, double d, double t) {
    const double s = 1 - t;
    return s * s * s * a + 3 * s * s * t * b + 3 * s * t * t * c + t * t * t * d;
}

/// Widens [low, high] by the extreme values of a cubic in Bézier form between its ends.
static void addCubic(double a, double b, double c, double d, double& low, double& high) {
    const auto take = [&](double t) {
        if (!(t > 0 && t < 1)) return;
        const double value = valueAt(a, b, c, d, t);
        low = std::min(low, value);
        high = std::max(high, value);
    };
    const double p = d - a + 3 * (b - c);
    const double q = 2 * (a - 2 * b + c);
    const double r = b - a;
    const double root = q * q - 4 * p * r;
    if (root < 0) return;
    const double half = -0.5 * (q + std::copysign(std::sqrt(root), q));
    if (p != 0) take(half / p);
    if (half != 0) take(r / half);
}

static Extents splineExtents(const Spline& spline) {
    Extents box;
    for (const RPT& p : spline.points) box.add(p.x, p.y);
    forEachSplinePiece(spline, [&](const BezierPiece& b) {
        Extents piece;
        piece.add(b[0].x, b[0].y);
        piece.add(b[3].x, b[3].y);
        if (piece.empty) return;
        addCubic(b[0].x, b[1].x, b[2].x, b[3].x, piece.minX, piece.maxX);
        addCubic(b[0].y, b[1].y, b[2].y, b[3].y, piece.minY, piece.maxY);
        box.add(piece);
    });
    return box;
}

/// Index into `splines`, or their number when the element's is out of range.
static std::size_t splineIndex(const Element& element, const std::vector<Spline>& splines) {
    const bool inside = element.cx >= 0 && element.cx < static_cast<double>(splines.size());
    return inside ? static_cast<std::size_t>(element.cx) : splines.size();
}

Extents chainExtents(const std::vector<Element>& chain, const std::vector<Spline>* splines) {
    Extents box;
    RPT at{0, 0};
    for (const Element& e : chain) {
        const RPT target{e.x, e.y};
        if (e.type == ElementType::Arc || e.type == ElementType::Circle) {
            const RPT& from = e.type == ElementType::Arc ? at : target;
            box.add(arcExtents(from, target, {e.cx, e.cy}, e.ccw));
        } else if (e.type == ElementType::Spline && splines) {
            const std::size_t index = splineIndex(e, *splines);
            if (index < splines->size()) box.add(splineExtents((*splines)[index]));
        }
        box.add(e.x, e.y);
        at = target;
    }
    return box;
}

Extents flatExtents(const Pattern& pattern, double millimetresPerUnit, bool withElements) {
    Extents box;
    if (withElements) box = chainExtents(pattern.elements, &pattern.splines);
    for (const Hatch& hatch : pattern.hatches)
        for (const Contour& contour : hatch.contours) box.add(chainExtents(contour, nullptr));
    for (const Arrow& arrow : pattern.arrows)
        box.add(chainExtents(drawArrow(arrow, millimetresPerUnit).lines, nullptr));
    for (const Dimension& dimension : pattern.dimensions)
        box.add(chainExtents(drawDimension(dimension, millimetresPerUnit).lines, nullptr));
    for (const Text& text : pattern.texts)
        for (const RPT& corner : textCorners(text, millimetresPerUnit).p) box.add(corner.x, corner.y);
    for (const Bitmap& bitmap : pattern.bitmaps) {
        const RPT3 &o = bitmap.origin, &u = bitmap.u, &v = bitmap.v;
        for (const RPT& corner : {RPT{0, 0}, {1, 0}, {0, 1}, {1, 1}})
            box.add(o.x + corner.x * u.x + corner.y * v.x, o.y + corner.x * u.y + corner.y * v.y);
    }
    return box;
}

Extents patternExtents(const Pattern& pattern, double millimetresPerUnit) {
    Extents box = flatExtents(pattern, millimetresPerUnit);
    forEachPoints(pattern, [&](const std::vector<RPT3>& points) {
        for (const RPT3& p : points) box.add(p.x, p.y);
    });
    return box;
}

Extents placedExtents(const Drawing& drawing, const Pattern& pattern) {
    const Extents flat = patternExtents(pattern, sheetMillimetres(drawing, pattern.view));
    const auto plane = drawing.workPlanes.find(pattern.workId);
    if (plane == drawing.workPlanes.end() || flat.empty) return flat;
    const GeMat44 m(plane->second.a, plane->second.b, plane->second.c);
    GeBox box({flat.minX, flat.minY, 0}, {flat.maxX, flat.maxY, 0});
    box *= m;
    Extents placed;
    placed.add(box.min.x, box.min.y);
    placed.add(box.max.x, box.max.y);
    return placed;
}

Extents Drawing::extents() const {
    return extents(0);
}

Extents Drawing::extents(int view) const {
    Extents box;
    for (const Pattern& pattern : patterns)
        if (isContentOf(pattern, view)) box.add(placedExtents(*this, pattern));
    return box;
}

} // namespace host
