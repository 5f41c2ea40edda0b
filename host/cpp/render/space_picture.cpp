#include "render/space_picture.h"

#include "drawing/extents.h"
#include "drawing/spline_curve.h"
#include "render/curves.h"
#include "render/painter.h"
#include "render/shade.h"
#include "text/layout.h"

#include <cmath>

namespace host {

/// Whether the pattern's elements are the plan of what it holds in space, which is shown in their place.
static bool isPlanOfSpace(const Pattern& pattern) {
    return pattern.hasFaces() || !pattern.curves.empty();
}

bool SpacePicture::isShown(const Pattern& pattern) const {
    return pattern.number > 0 && !pattern.scratch && drawing_.isVisible(pattern);
}

SpacePicture::SpacePicture(const Drawing& drawing, const RenderOptions& options)
    : drawing_(drawing), options_(options), axes_(viewFrom(options.direction)), view_(axes_) {
    for (const Pattern& pattern : drawing.patterns) {
        if (!isShown(pattern)) continue;
        view_.add(pattern);
        measure(pattern);
        if (options.hidden && !isPlanOfSpace(pattern)) addElements(pattern);
    }
}

void SpacePicture::measure(const Pattern& pattern) {
    const auto add = [this](const RPT3& p) {
        const RPT3 seen = axes_.map(p);
        extents_.add(seen.x, seen.y);
    };
    forEachPoints(pattern, [&](const std::vector<RPT3>& points) {
        for (const RPT3& p : points) add(p);
    });
    const Extents flat = flatExtents(pattern, sheetMillimetres(drawing_), !isPlanOfSpace(pattern));
    if (flat.empty) return;
    for (const double x : {flat.minX, flat.maxX})
        for (const double y : {flat.minY, flat.maxY}) add({x, y, 0});
}

/// Flat elements as lines in the plane, so that faces hide them.
void SpacePicture::addElements(const Pattern& pattern) {
    RPT at{0, 0};
    constexpr int steps = 8; // of a piece of a curve
    const auto line = [&](const Element& e, const RPT& to) {
        view_.addLine({at.x, at.y, 0}, {to.x, to.y, 0}, e.pen, e.lineType);
        at = to;
    };
    const auto curve = [&](const Element& e, const RPT& start, const Bezier& b) {
        for (int i = 1; i <= steps; ++i) {
            const double t = static_cast<double>(i) / steps, s = 1 - t;
            const double w[4] = {s * s * s, 3 * s * s * t, 3 * s * t * t, t * t * t};
            line(e, {w[0] * start.x + w[1] * b.control1.x + w[2] * b.control2.x + w[3] * b.end.x,
                     w[0] * start.y + w[1] * b.control1.y + w[2] * b.control2.y + w[3] * b.end.y});
        }
    };
    for (const Element& e : pattern.elements) {
        if (e.type == ElementType::Draw) line(e, {e.x, e.y});
        if (e.type == ElementType::Circle) at = {e.x, e.y};
        if (e.type == ElementType::Arc || e.type == ElementType::Circle) {
            Element arc = e;
            if (e.type == ElementType::Circle) arc.ccw = 1;
            for (const Bezier& b : arcToBezier(at, arc, 1)) curve(e, at, b);
        }
        if (e.type == ElementType::Spline && e.cx >= 0 && e.cx < static_cast<double>(pattern.splines.size()))
            for (const BezierPiece& p : splinePieces(pattern.splines[static_cast<std::size_t>(e.cx)]))
                curve(e, p[0], {p[1], p[2], p[3]});
        at = {e.x, e.y};
    }
}

void SpacePicture::tilt(Frame& frame) const {
    frame.alongX = {axes_.right.x, axes_.up.x};
    frame.alongY = {axes_.right.y, axes_.up.y};
}

void SpacePicture::paint(cairo_t* cairo, const Frame& frame) {
    Painter painter(cairo, drawing_, frame, options_.dark);
    for (const Pattern& pattern : drawing_.patterns)
        if (isShown(pattern)) painter.drawHatches(pattern);
    if (options_.shade) paintShaded(cairo, drawing_, frame, options_.dark, view_.triangles());
    if (options_.hidden)
        painter.drawLines(view_.visibleLines());
    else if (!options_.shade)
        painter.drawLines(view_.lines());
    for (const Pattern& pattern : drawing_.patterns) {
        if (!isShown(pattern)) continue;
        if (!options_.hidden && !isPlanOfSpace(pattern)) painter.drawElements(pattern);
        painter.drawPointsSeen(pattern, axes_);
        painter.drawTexts(pattern);
    }
}

} // namespace host
