#include "render/space_picture.h"

#include "drawing/extents.h"
#include "drawing/spline_curve.h"
#include "ge.h"
#include "mt.h"
#include "render/bitmap.h"
#include "render/curves.h"
#include "render/painter.h"
#include "render/shade.h"
#include "solid/solid_faces.h"
#include "text/layout.h"

#include <algorithm>
#include <cmath>

namespace host {

/// From a pattern's own plane into the drawing's frame.
static GeMat44 placeOf(const Drawing& drawing, const Pattern& pattern) {
    const auto plane = drawing.workPlanes.find(pattern.workId);
    return plane == drawing.workPlanes.end() ? GeMat44()
                                             : GeMat44(plane->second.a, plane->second.b, plane->second.c);
}

static RPT3 placed(const RPT3& point, const GeMat44& place) {
    RPT3 result = point;
    Mt44MultRpt3(point, place.data(), &result);
    return result;
}

bool SpacePicture::isShown(const Pattern& pattern) const {
    return drawing_.isContentOf(pattern, 0);
}

const Pattern& SpacePicture::flatOf(const Pattern& pattern) const {
    const auto found = flat_.find(&pattern);
    return found == flat_.end() ? pattern : found->second;
}

SpacePicture::SpacePicture(const Drawing& drawing, const RenderOptions& options)
    : drawing_(drawing), options_(options), axes_(viewFrom(options.direction)), view_(axes_) {
    const Extents all = drawing.extents();
    PlanOfSpace plan(std::max(all.maxX - all.minX, all.maxY - all.minY));
    for (const Pattern& pattern : drawing.patterns)
        if (isShown(pattern)) plan.add(pattern);
    plan.finish();
    for (const Pattern& pattern : drawing.patterns) {
        if (!isShown(pattern)) continue;
        if (!plan.empty() && !pattern.elements.empty()) flat_[&pattern] = plan.elementsBeside(pattern);
        addSpace(pattern);
        measure(pattern);
        if (options.hidden) addElements(pattern);
    }
}

/// Faces of solids, which a wireframe doesn't need.
void SpacePicture::addSolids(SpaceContent& content) const {
    constexpr std::size_t mostTriangles = 2'000'000; // of a solid
    if (!options_.hidden && !options_.shade) return;
    for (const Solid& solid : content.solids) content.faceLists.push_back(solidFaces(solid, mostTriangles));
}

void SpacePicture::addSpace(const Pattern& pattern) {
    if (!drawing_.workPlanes.contains(pattern.workId) && pattern.solids.empty()) {
        view_.add(pattern);
        return;
    }
    SpaceContent content = pattern;
    addSolids(content);
    const GeMat44 place = placeOf(drawing_, pattern);
    forEachPoints(content, [&](std::vector<RPT3>& points) {
        for (RPT3& p : points) p = placed(p, place);
    });
    view_.add(content);
}

void SpacePicture::measure(const Pattern& pattern) {
    const GeMat44 place = placeOf(drawing_, pattern);
    const auto add = [&](const RPT3& p) {
        const RPT3 seen = axes_.map(placed(p, place));
        extents_.add(seen.x, seen.y);
    };
    forEachPoints(pattern, [&](const std::vector<RPT3>& points) {
        for (const RPT3& p : points) add(p);
    });
    const Pattern& beside = flatOf(pattern);
    Extents flat = flatExtents(pattern, sheetMillimetres(drawing_, 0), false);
    flat.add(chainExtents(beside.elements, &beside.splines));
    if (flat.empty) return;
    for (const double x : {flat.minX, flat.maxX})
        for (const double y : {flat.minY, flat.maxY}) add({x, y, 0});
}

/// Flat elements as lines in the plane, so that faces hide them.
void SpacePicture::addElements(const Pattern& pattern) {
    const GeMat44 place = placeOf(drawing_, pattern);
    RPT at{0, 0};
    constexpr int steps = 8; // of a piece of a curve
    const auto line = [&](const Element& e, const RPT& to) {
        view_.addLine(placed({at.x, at.y, 0}, place), placed({to.x, to.y, 0}, place), e.pen, e.lineType);
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
    const Pattern& beside = flatOf(pattern);
    for (const Element& e : beside.elements) {
        if (e.type == ElementType::Draw) line(e, {e.x, e.y});
        if (e.type == ElementType::Circle) at = {e.x, e.y};
        if (e.type == ElementType::Arc || e.type == ElementType::Circle) {
            Element arc = e;
            if (e.type == ElementType::Circle) arc.ccw = 1;
            for (const Bezier& b : arcToBezier(at, arc, 1)) curve(e, at, b);
        }
        if (e.type == ElementType::Spline && e.cx >= 0 && e.cx < static_cast<double>(beside.splines.size()))
            for (const BezierPiece& p : splinePieces(beside.splines[static_cast<std::size_t>(e.cx)]))
                curve(e, p[0], {p[1], p[2], p[3]});
        at = {e.x, e.y};
    }
}

/// The frame as it shows points of the drawing.
Frame SpacePicture::tilt(const Frame& frame) const {
    Frame tilted = frame;
    const RPT3 &r = axes_.right, &u = axes_.up;
    tilted.axes[0] = {frame.scale * r.x, -frame.scale * u.x};
    tilted.axes[1] = {frame.scale * r.y, -frame.scale * u.y};
    tilted.axes[2] = {frame.scale * r.z, -frame.scale * u.z};
    const double x = frame.origin.x, y = frame.origin.y;
    tilted.origin = {x * r.x + y * u.x, x * r.y + y * u.y, x * r.z + y * u.z};
    return tilted;
}

void SpacePicture::announce(PictureCache& pictures, const Frame& tilted) const {
    for (const Pattern& pattern : drawing_.patterns) {
        if (pattern.bitmaps.empty() || !isShown(pattern)) continue;
        for (const Bitmap& bitmap : pattern.bitmaps) {
            const Parallelogram place = placeBitmap(bitmap, patternFrame(drawing_, pattern, tilted));
            if (host::isShown(place, tilted))
                pictures.wish(bitmap.file, std::hypot(place.u.x, place.u.y),
                              std::hypot(place.v.x, place.v.y));
        }
    }
}

Page SpacePicture::page() const {
    return modelPage(drawing_, fitFrame(extents_, std::clamp(options_.size, 16, 16'000)));
}

void SpacePicture::paint(cairo_t* cairo, const Frame& frame) {
    setSource(cairo, options_.dark ? Rgb{0, 0, 0} : Rgb{255, 255, 255});
    cairo_paint(cairo);
    PictureCache pictures;
    const Frame tilted = tilt(frame);
    announce(pictures, tilted);
    const auto paintStage = [&](void (Painter::*stage)(const Pattern&)) {
        for (const Pattern& pattern : drawing_.patterns) {
            if (!isShown(pattern)) continue;
            const Frame onPlane = patternFrame(drawing_, pattern, tilted);
            (Painter(cairo, drawing_, onPlane, options_.dark, pictures).*
             stage)(stage == &Painter::drawElements ? flatOf(pattern) : pattern);
        }
    };
    paintStage(&Painter::drawBitmaps);
    paintStage(&Painter::drawHatches);
    if (options_.shade) paintShaded(cairo, drawing_, frame, options_.dark, view_.triangles());
    Painter painter(cairo, drawing_, frame, options_.dark, pictures);
    if (options_.hidden)
        painter.drawLines(view_.visibleLines());
    else if (!options_.shade)
        painter.drawLines(view_.lines());
    if (!options_.hidden) paintStage(&Painter::drawElements);
    paintStage(&Painter::drawDimensions);
    paintStage(&Painter::drawPoints);
    paintStage(&Painter::drawTexts);
}

} // namespace host
