#include "render/device_path.h"

#include <algorithm>
#include <cmath>

namespace host {

/// Device coordinates up to here go to Cairo as they are.
static constexpr double kReach = 1e6;

static bool isFinite(const RPT& p) {
    return std::isfinite(p.x) && std::isfinite(p.y);
}
static bool isNear(const RPT& p) {
    return std::fabs(p.x) <= kReach && std::fabs(p.y) <= kReach;
}
static RPT mid(const RPT& a, const RPT& b) {
    return {(a.x + b.x) / 2, (a.y + b.y) / 2};
}

/// Cuts the line to the safe range (Liang and Barsky). False when nothing is left.
static bool clipLine(RPT& a, RPT& b) {
    double from = 0, to = 1;
    const double dx = b.x - a.x, dy = b.y - a.y;
    const auto cut = [&](double direction, double distance) {
        if (direction == 0) return distance >= 0;
        const double t = distance / direction;
        if (direction < 0)
            from = std::max(from, t);
        else
            to = std::min(to, t);
        return from <= to;
    };
    if (!cut(-dx, a.x + kReach) || !cut(dx, kReach - a.x) || !cut(-dy, a.y + kReach) ||
        !cut(dy, kReach - a.y))
        return false;
    const RPT start = a;
    a = {start.x + from * dx, start.y + from * dy};
    b = {start.x + to * dx, start.y + to * dy};
    return true;
}

/// Halves of the curve that begins at `from`.
static void split(const RPT& from, const Bezier& b, Bezier& left, Bezier& right) {
    const RPT p01 = mid(from, b.control1), p12 = mid(b.control1, b.control2), p23 = mid(b.control2, b.end);
    const RPT p012 = mid(p01, p12), p123 = mid(p12, p23), middle = mid(p012, p123);
    left = {p01, p012, middle};
    right = {p123, p23, b.end};
}

static bool missesRange(const RPT& from, const Bezier& b) {
    const auto [lowX, highX] = std::minmax({from.x, b.control1.x, b.control2.x, b.end.x});
    const auto [lowY, highY] = std::minmax({from.y, b.control1.y, b.control2.y, b.end.y});
    return highX < -kReach || lowX > kReach || highY < -kReach || lowY > kReach;
}

void StrokePath::moveTo(const RPT& p) {
    valid_ = isFinite(p);
    at_ = p;
    open_ = false;
}

void StrokePath::begin(const RPT& p) {
    if (open_ && sent_.x == p.x && sent_.y == p.y) return;
    cairo_move_to(cairo_, p.x, p.y);
    sent_ = p;
    open_ = true;
}

void StrokePath::emitLine(const RPT& from, const RPT& to) {
    RPT a = from, b = to;
    if ((!isNear(a) || !isNear(b)) && !clipLine(a, b)) return;
    ++segments_;
    if (raster_) {
        raster_->line(a, b);
        return;
    }
    begin(a);
    cairo_line_to(cairo_, b.x, b.y);
    sent_ = b;
}

void StrokePath::emitCurve(const RPT& from, const Bezier& b) {
    ++segments_;
    if (raster_) {
        raster_->curve(from, b);
        return;
    }
    begin(from);
    cairo_curve_to(cairo_, b.control1.x, b.control1.y, b.control2.x, b.control2.y, b.end.x, b.end.y);
    sent_ = b.end;
}

void StrokePath::lineTo(const RPT& p) {
    if (!isFinite(p)) {
        valid_ = false;
        return;
    }
    if (valid_) emitLine(at_, p);
    at_ = p;
    valid_ = true;
}

void StrokePath::emitClippedCurve(const RPT& from, const Bezier& b) {
    struct Piece {
        Bezier curve;
        int depth;
    };
    std::vector<Piece> pending{{b, 0}};
    RPT at = from;
    while (!pending.empty()) {
        const Piece piece = pending.back();
        pending.pop_back();
        const Bezier& c = piece.curve;
        if (missesRange(at, c)) {
            at = c.end;
        } else if (isNear(at) && isNear(c.control1) && isNear(c.control2) && isNear(c.end)) {
            emitCurve(at, c);
            at = c.end;
        } else if (piece.depth >= 24) {
            emitLine(at, c.end);
            at = c.end;
        } else {
            Bezier left, right;
            split(at, c, left, right);
            pending.push_back({right, piece.depth + 1});
            pending.push_back({left, piece.depth + 1});
        }
    }
}

void StrokePath::curveTo(const Bezier& b) {
    if (!isFinite(b.control1) || !isFinite(b.control2) || !isFinite(b.end)) {
        valid_ = false;
        return;
    }
    if (valid_) emitClippedCurve(at_, b);
    at_ = b.end;
    valid_ = true;
}

void StrokePath::finish() {
    open_ = false;
    segments_ = 0;
}

void FillPath::moveTo(const RPT& p) {
    if (!isFinite(p)) return;
    at_ = p;
    far_ = far_ || !isNear(p);
    if (contours_.empty() || !contours_.back().segments.empty()) contours_.emplace_back();
    contours_.back().start = p;
}

void FillPath::curveTo(const Bezier& b) {
    if (!isFinite(b.control1) || !isFinite(b.control2) || !isFinite(b.end) || contours_.empty()) return;
    contours_.back().segments.push_back(b);
    far_ = far_ || !isNear(b.control1) || !isNear(b.control2) || !isNear(b.end);
    at_ = b.end;
}

Extents FillPath::box() const {
    Extents box;
    const auto add = [&](const RPT& p) {
        box.add(std::clamp(p.x, -kReach, kReach), std::clamp(p.y, -kReach, kReach));
    };
    for (const Part& part : contours_) {
        add(part.start);
        for (const Bezier& b : part.segments) add(b.control1), add(b.control2), add(b.end);
    }
    return box;
}

/// Polygon of a contour whose points may lie anywhere.
static std::vector<RPT> flatten(const RPT& start, const std::vector<Bezier>& segments) {
    std::vector<RPT> points{start};
    constexpr int kSteps = 32;
    for (const Bezier& b : segments) {
        const RPT a = points.back();
        for (int i = 1; i <= kSteps; ++i) {
            const double t = static_cast<double>(i) / kSteps, s = 1 - t;
            const double wa = s * s * s, w1 = 3 * s * s * t, w2 = 3 * s * t * t, we = t * t * t;
            points.push_back({wa * a.x + w1 * b.control1.x + w2 * b.control2.x + we * b.end.x,
                              wa * a.y + w1 * b.control1.y + w2 * b.control2.y + we * b.end.y});
        }
    }
    return points;
}

/// Cuts a polygon at one side of the safe range (Sutherland and Hodgman): sign * (x or y) <= kReach stays.
static std::vector<RPT> cutPolygon(const std::vector<RPT>& polygon, double RPT::*axis, double sign) {
    std::vector<RPT> kept;
    for (std::size_t i = 0; i < polygon.size(); ++i) {
        const RPT& a = polygon[i];
        const RPT& b = polygon[(i + 1) % polygon.size()];
        const double da = kReach - sign * a.*axis, db = kReach - sign * b.*axis;
        if (da >= 0) kept.push_back(a);
        if ((da < 0) != (db < 0)) {
            const double t = da / (da - db);
            kept.push_back({a.x + t * (b.x - a.x), a.y + t * (b.y - a.y)});
        }
    }
    return kept;
}

static void emitPolygon(cairo_t* cairo, std::vector<RPT> polygon) {
    for (const double sign : {1.0, -1.0}) {
        polygon = cutPolygon(polygon, &RPT::x, sign);
        polygon = cutPolygon(polygon, &RPT::y, sign);
    }
    if (polygon.empty()) return;
    cairo_move_to(cairo, polygon[0].x, polygon[0].y);
    for (const RPT& p : polygon) cairo_line_to(cairo, p.x, p.y);
    cairo_close_path(cairo);
}

void FillPath::emit(cairo_t* cairo) const {
    cairo_new_path(cairo);
    for (const Part& part : contours_) {
        if (far_) {
            emitPolygon(cairo, flatten(part.start, part.segments));
            continue;
        }
        cairo_move_to(cairo, part.start.x, part.start.y);
        RPT at = part.start;
        for (const Bezier& b : part.segments) {
            const bool straight = b.control1.x == at.x && b.control1.y == at.y && b.control2.x == b.end.x &&
                                  b.control2.y == b.end.y;
            if (straight)
                cairo_line_to(cairo, b.end.x, b.end.y);
            else
                cairo_curve_to(cairo, b.control1.x, b.control1.y, b.control2.x, b.control2.y, b.end.x,
                               b.end.y);
            at = b.end;
        }
        cairo_close_path(cairo);
    }
}

} // namespace host
