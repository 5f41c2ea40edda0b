// Fills and hatch lines of a picture.
#include "drawing/hatch_lines.h"
#include "render/painter.h"

#include <algorithm>
#include <cmath>

namespace host {

/// Dashes of one row of a hatch that are drawn singly; beyond, its lines are solid.
static constexpr double kMostDashes = 50'000;
/// Lines of one hatch; with more of them it is a tone.
static constexpr double kMostLines = 100'000;

static double alphaOf(const Hatch& hatch) {
    return 1 - std::clamp(hatch.transparency, 0, 100) / 100.0;
}

void Painter::addContour(FillPath& path, const Contour& contour) const {
    RPT at{0, 0};
    const auto add = [&](const Bezier& b) { path.curveTo(mapBezier(b)); };
    for (const Element& element : contour) {
        const RPT to{element.x, element.y};
        switch (element.type) {
        case ElementType::Move: path.moveTo(frame_.map(to.x, to.y)); break;
        case ElementType::Draw: path.lineTo(frame_.map(to.x, to.y)); break;
        case ElementType::Circle: {
            Element circle = element;
            circle.ccw = 1;
            path.moveTo(frame_.map(to.x, to.y));
            for (const Bezier& b : arcToBezier(to, circle, frame_.scale)) add(b);
            break;
        }
        case ElementType::Arc:
            for (const Bezier& b : arcToBezier(at, element, frame_.scale)) add(b);
            break;
        case ElementType::Point:
        case ElementType::Spline: break;
        }
        at = to;
    }
}

/// The lines of a family across a box, in device space.
struct LineField {
    RPT along, across, origin; ///< unit vectors, a point of line 0
    double stretch = 1;        ///< device units per drawing unit, along the lines
    double spacing = 0;        ///< between lines, along the left normal
    double shift = 0;          ///< along the line, from a line to the next
    double from = 0, to = 0;   ///< reach of the box along the lines
    double low = 0, high = 0;  ///< reach of the box across, in line numbers
};

static LineField layLines(const HatchFamily& family, const Frame& frame, const Extents& box) {
    LineField field;
    const RPT direction = frame.along(std::cos(family.angle), std::sin(family.angle));
    const double stretch = std::hypot(direction.x, direction.y);
    const double area = std::fabs(frame.axes[0].x * frame.axes[1].y - frame.axes[0].y * frame.axes[1].x);
    field.along = {direction.x / stretch, direction.y / stretch};
    field.origin = frame.map(family.originX, family.originY);
    field.spacing = std::fabs(family.distance) * area / stretch;
    field.shift = family.offset * stretch;
    field.stretch = stretch;
    field.from = field.low = HUGE_VAL;
    field.to = field.high = -HUGE_VAL;
    // Left of the line, y being down.
    const double left = frame.mirrors() ? -1 : 1;
    const RPT across = field.across = {left * field.along.y, -left * field.along.x};
    for (const double x : {box.minX, box.maxX}) {
        for (const double y : {box.minY, box.maxY}) {
            const double dx = x - field.origin.x, dy = y - field.origin.y;
            const double along = dx * field.along.x + dy * field.along.y;
            const double number = (dx * across.x + dy * across.y) / field.spacing;
            field.from = std::min(field.from, along), field.to = std::max(field.to, along);
            field.low = std::min(field.low, number), field.high = std::max(field.high, number);
        }
    }
    return field;
}

/// Whether the lines can be told apart, and counted; else the hatch is a tone.
static bool isTooDense(const LineField& field, double lineWidth) {
    constexpr double countable = 1e15; // up to here whole numbers differ from their neighbours
    if (!(std::fabs(field.low) < countable && std::fabs(field.high) < countable)) return true;
    return !(field.spacing >= 2 * lineWidth) || !(field.high - field.low < 20'000);
}

void Painter::strokeField(const LineField& field, const HatchFamily& family) {
    std::vector<double> dashes = deviceDashes(family.dashes, field.stretch, frame_.lineWidth);
    double period = 0;
    for (const double length : dashes) period += length;
    if (period > 0 && (field.high - field.low) * (field.to - field.from) / period > kMostDashes)
        dashes.clear();
    setDashes(cairo_, dashes);
    const RPT& across = field.across;
    for (double n = std::ceil(field.low); n <= field.high; ++n) {
        // Each line begins at a whole number of periods from its own origin, so that dashes stand in step.
        const double shift = n * field.shift;
        const double start =
            period > 0 ? shift + std::floor((field.from - shift) / period) * period : field.from;
        const RPT base{field.origin.x + across.x * n * field.spacing,
                       field.origin.y + across.y * n * field.spacing};
        cairo_move_to(cairo_, base.x + field.along.x * start, base.y + field.along.y * start);
        cairo_line_to(cairo_, base.x + field.along.x * field.to, base.y + field.along.y * field.to);
    }
    ink_.stroke();
}

void Painter::drawLines(const FillPath& path, const Hatch& hatch) {
    const std::vector<HatchFamily> families = hatchFamilies(drawing_, hatch);
    Extents box = path.box();
    box = {std::max(box.minX, -10.0), std::max(box.minY, -10.0), std::min(box.maxX, frame_.width + 10),
           std::min(box.maxY, frame_.height + 10), false};
    if (families.empty() || box.minX >= box.maxX || box.minY >= box.maxY) return;
    ink_.save();
    path.emit(cairo_);
    ink_.clip();
    cairo_set_line_cap(cairo_, CAIRO_LINE_CAP_BUTT);
    double lines = 0;
    for (const HatchFamily& family : families) {
        const LineField field = layLines(family, frame_, box);
        const Rgb color = visiblePen(drawing_, family.pen > 0 ? family.pen : hatch.fillPen, dark_);
        lines += 1 + field.high - field.low;
        if (!std::isfinite(field.from + field.to + field.shift) || isTooDense(field, frame_.lineWidth) ||
            !(lines < kMostLines)) {
            setSource(cairo_, color, 0.4 * alphaOf(hatch));
            ink_.paint();
            break;
        }
        setSource(cairo_, color, alphaOf(hatch));
        strokeField(field, family);
    }
    ink_.restore();
}

/// The pattern of colours along the gradient's direction, across the box of the area.
static cairo_pattern_t* gradientOver(const Extents& box, const HatchGradient& gradient, const Rgb& first,
                                     const Rgb& second, double alpha) {
    const RPT along{std::cos(gradient.angle), -std::sin(gradient.angle)}; // y is down
    const RPT middle{(box.minX + box.maxX) / 2, (box.minY + box.maxY) / 2};
    const double reach =
        std::fabs(along.x) * (box.maxX - box.minX) / 2 + std::fabs(along.y) * (box.maxY - box.minY) / 2;
    cairo_pattern_t* pattern =
        cairo_pattern_create_linear(middle.x - along.x * reach, middle.y - along.y * reach,
                                    middle.x + along.x * reach, middle.y + along.y * reach);
    const auto stop = [&](double at, const Rgb& c) {
        cairo_pattern_add_color_stop_rgba(pattern, at, c.r / 255.0, c.g / 255.0, c.b / 255.0, alpha);
    };
    stop(0, first);
    if (gradient.form == 1) stop(0.5, second);
    stop(1, gradient.form == 1 ? first : second);
    return pattern;
}

void Painter::fillArea(const FillPath& path, const Hatch& hatch) {
    const auto color = [&](int pen) { return visiblePen(drawing_, pen, dark_); };
    path.emit(cairo_);
    if (hatch.gradient.empty()) {
        setSource(cairo_, color(hatch.solid ? hatch.fillPen : hatch.backPen), alphaOf(hatch));
        ink_.fill();
        return;
    }
    const HatchGradient& gradient = hatch.gradient[0];
    cairo_pattern_t* pattern =
        gradientOver(path.box(), gradient, color(hatch.fillPen), color(gradient.secondPen), alphaOf(hatch));
    cairo_set_source(cairo_, pattern);
    ink_.fill();
    cairo_pattern_destroy(pattern);
}

void Painter::drawHatches(const Pattern& pattern) {
    for (const Hatch& hatch : pattern.hatches) {
        FillPath path;
        for (const Contour& contour : hatch.contours) addContour(path, contour);
        if (path.empty()) continue;
        if (hatch.solid || hatch.backPen > 0) fillArea(path, hatch);
        drawLines(path, hatch);
    }
    pen_ = -1;
}

} // namespace host
