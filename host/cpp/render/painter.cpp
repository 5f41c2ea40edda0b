#include "render/painter.h"

#include "drawing/spline_curve.h"
#include "text/layout.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace host {

/// Segments of one path: more only make Cairo slow in pixel pictures and lines long in vector ones.
static constexpr long kMostSegments = 256;
/// Elements of a pattern from which on lines are drawn pixel by pixel: fewer aren't worth it.
static constexpr std::size_t kManyElements = 256;
/// Lines wider than this (pixels) are Cairo's.
static constexpr double kWidestRasterLine = 16;

Painter::Painter(cairo_t* cairo, const Drawing& drawing, const Frame& frame, bool dark,
                 PictureCache& pictures)
    : cairo_(cairo), drawing_(drawing), frame_(frame), dark_(dark), pictures_(pictures), path_(cairo) {
    cairo_set_line_width(cairo_, frame_.lineWidth);
    cairo_set_line_cap(cairo_, CAIRO_LINE_CAP_ROUND);
    cairo_set_line_join(cairo_, CAIRO_LINE_JOIN_ROUND);
    cairo_set_fill_rule(cairo_, CAIRO_FILL_RULE_EVEN_ODD);
}

void Painter::strokePending() {
    if (inRaster_)
        raster_->paint(visiblePen(drawing_, pen_, dark_));
    else if (path_.segments() > 0)
        cairo_stroke(cairo_);
    path_.finish();
    for (const RPT& at : dots_) {
        cairo_new_sub_path(cairo_);
        cairo_arc(cairo_, at.x, at.y, 1.2 * frame_.lineWidth, 0, 2 * std::numbers::pi);
    }
    if (!dots_.empty()) cairo_fill(cairo_);
    dots_.clear();
}

void Painter::takeRaster(bool forManyLines) {
    strokePending();
    pen_ = -1;
    inRaster_ = false;
    path_.drawInto(nullptr);
    if (forManyLines && !raster_) raster_ = std::make_unique<StrokeRaster>(cairo_);
    manyLines_ = forManyLines && raster_->usable();
}

void Painter::usePen(int pen, int lineType) {
    if (pen != pen_ || lineType != lineType_) {
        strokePending();
        setSource(cairo_, visiblePen(drawing_, pen, dark_));
        cairo_set_line_width(cairo_, penWidth(drawing_, pen, frame_.lineWidth));
        auto [dashes, isNew] = lineTypeDashes_.try_emplace(lineType);
        if (isNew) dashes->second = lineTypeDashes(drawing_, lineType, frame_);
        setDashes(cairo_, dashes->second);
        cairo_set_line_cap(cairo_, dashes->second.empty() ? CAIRO_LINE_CAP_ROUND : CAIRO_LINE_CAP_BUTT);
        pen_ = pen;
        lineType_ = lineType;
        const double width = cairo_get_line_width(cairo_);
        inRaster_ = manyLines_ && dashes->second.empty() && width <= kWidestRasterLine;
        path_.drawInto(inRaster_ ? raster_.get() : nullptr);
        if (inRaster_) raster_->setLineWidth(width);
    }
    if (inRaster_) return;
    if (path_.segments() >= kMostSegments || dots_.size() >= kMostSegments) strokePending();
}

void Painter::dot(const RPT& at) {
    const bool shows = at.x > -1e4 && at.x < frame_.width + 1e4 && at.y > -1e4 && at.y < frame_.height + 1e4;
    if (!shows) return;
    if (inRaster_)
        raster_->dot(at, 1.2 * frame_.lineWidth);
    else
        dots_.push_back(at);
}

Bezier Painter::mapBezier(const Bezier& b) const {
    return {frame_.map(b.control1.x, b.control1.y), frame_.map(b.control2.x, b.control2.y),
            frame_.map(b.end.x, b.end.y)};
}

void Painter::drawArc(const Element& element) {
    Element arc = element;
    if (element.type == ElementType::Circle) {
        arc.ccw = 1;
        at_ = {element.x, element.y};
        path_.moveTo(frame_.map(at_.x, at_.y));
    }
    for (const Bezier& b : arcToBezier(at_, arc, frame_.scale)) path_.curveTo(mapBezier(b));
}

void Painter::drawElement(const Pattern& pattern, const Element& element) {
    const RPT to = frame_.map(element.x, element.y);
    switch (element.type) {
    case ElementType::Move: break;
    case ElementType::Draw:
        if (element.x == at_.x && element.y == at_.y)
            dot(to);
        else
            path_.lineTo(to);
        break;
    case ElementType::Point: dot(to); break;
    case ElementType::Arc:
    case ElementType::Circle: drawArc(element); break;
    case ElementType::Spline:
        if (!(element.cx >= 0 && element.cx < static_cast<double>(pattern.splines.size()))) break;
        forEachSplinePiece(pattern.splines[static_cast<std::size_t>(element.cx)],
                           [&](const BezierPiece& piece) {
                               path_.curveTo(mapBezier({piece[1], piece[2], piece[3]}));
                           });
        break;
    }
    at_ = {element.x, element.y};
}

/// Elements that draw something, those of one pen and line type together: changes of them cost.
static std::vector<std::size_t> orderByPen(const std::vector<Element>& elements) {
    std::vector<std::size_t> order;
    for (std::size_t i = 0; i < elements.size(); ++i)
        if (elements[i].type != ElementType::Move) order.push_back(i);
    const auto key = [&](std::size_t i) { return std::make_pair(elements[i].pen, elements[i].lineType); };
    const auto isBefore = [&](std::size_t a, std::size_t b) { return key(a) < key(b); };
    if (!std::is_sorted(order.begin(), order.end(), isBefore))
        std::stable_sort(order.begin(), order.end(), isBefore);
    return order;
}

void Painter::drawElements(const Pattern& pattern) {
    const std::vector<Element>& elements = pattern.elements;
    const bool areMany = elements.size() >= kManyElements;
    if (areMany) takeRaster(true);
    std::size_t previous = elements.size();
    for (const std::size_t i : orderByPen(elements)) {
        usePen(elements[i].pen, elements[i].lineType);
        if (i == 0 || i - 1 != previous) {
            at_ = i == 0 ? RPT{0, 0} : RPT{elements[i - 1].x, elements[i - 1].y};
            path_.moveTo(frame_.map(at_.x, at_.y));
        }
        drawElement(pattern, elements[i]);
        previous = i;
    }
    strokePending();
    if (areMany) takeRaster(false);
}

void Painter::drawLines(const DimDrawing& drawing) {
    Pattern lines;
    lines.elements = drawing.lines;
    drawElements(lines);
    for (const DimFill& fill : drawing.fills) {
        FillPath path;
        const auto& [a, b, c] = fill.corners;
        path.moveTo(frame_.map(a.x, a.y));
        for (const RPT& p : {b, c, a}) path.lineTo(frame_.map(p.x, p.y));
        setSource(cairo_, visiblePen(drawing_, fill.pen, dark_));
        path.emit(cairo_);
        cairo_fill(cairo_);
    }
    pen_ = -1;
}

void Painter::drawDimensions(const Pattern& pattern) {
    const double perUnit = sheetMillimetres(drawing_);
    for (const Arrow& arrow : pattern.arrows) drawLines(drawArrow(arrow, perUnit));
    for (const Dimension& dimension : pattern.dimensions) drawLines(drawDimension(dimension, perUnit));
}

/// Whether a text can be drawn and be seen: not too small, not beyond all bounds, near the picture.
static bool isTextShown(const Text& text, const RPT& at, const Frame& frame) {
    const double unit = text.height * frame.unitsPerMm * frame.scale,
                 reach = 20 * std::max(frame.width, frame.height);
    const auto isSane = [](double value) { return std::isfinite(value) && std::fabs(value) < 1e6; };
    return unit >= 0.5 && unit <= reach && std::fabs(at.x) < reach && std::fabs(at.y) < reach &&
           isSane(text.angle) && isSane(text.slant) && isSane(text.spacing) && isSane(text.lineDistance) &&
           text.width > 0 && text.width < 1e3 * text.height;
}

/// Whether the frame's plane is seen from its edge, as in a picture in space: letters have no area then.
static bool isEdgeOn(const Frame& frame) {
    constexpr double least = 1e-4;
    const RPT &right = frame.axes[0], &up = frame.axes[1];
    return std::fabs(right.x * up.y - right.y * up.x) < least * frame.scale * frame.scale;
}

void Painter::drawTexts(const Pattern& pattern) {
    if (pattern.texts.empty() || isEdgeOn(frame_)) return;
    TextPainter painter(cairo_, 1);
    for (const Text& text : pattern.texts) {
        const RPT at = frame_.map(text.x, text.y);
        if (!isTextShown(text, at, frame_)) continue;
        // Drawn about its own point and in device units, so that no size or distance costs it precision.
        Text local = text;
        local.x = local.y = 0;
        local.height *= frame_.unitsPerMm * frame_.scale;
        local.width *= frame_.unitsPerMm * frame_.scale;
        local.lineLength *= frame_.scale;
        const RPT &right = frame_.axes[0], &up = frame_.axes[1];
        const cairo_matrix_t matrix{right.x / frame_.scale,
                                    right.y / frame_.scale,
                                    up.x / frame_.scale,
                                    up.y / frame_.scale,
                                    at.x,
                                    at.y};
        cairo_save(cairo_);
        cairo_set_matrix(cairo_, &matrix);
        const Rgb sheet = dark_ ? Rgb{0, 0, 0} : Rgb{255, 255, 255};
        const Rgb back = text.fillPen > 0 ? visiblePen(drawing_, text.fillPen, dark_) : sheet;
        painter.draw(local, visiblePen(drawing_, text.pen, dark_), back);
        cairo_restore(cairo_);
        cairo_new_path(cairo_);
    }
    pen_ = -1;
}

} // namespace host
