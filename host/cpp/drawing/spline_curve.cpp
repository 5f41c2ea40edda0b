#include "drawing/spline_curve.h"

#include <algorithm>
#include <cmath>

namespace host {

static RPT along(const RPT& p, double length, const RPT& direction) {
    return {p.x + length * direction.x, p.y + length * direction.y};
}

namespace {

/// Numbers of a computation: beside the stack only for long splines.
template <class T>
class Scratch {
public:
    explicit Scratch(std::size_t count) {
        if (count > few_.size()) many_.resize(count);
        data_ = count > few_.size() ? many_.data() : few_.data();
    }
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;
    T& operator[](std::size_t i) { return data_[i]; }
    T* data() { return data_; }

private:
    std::array<T, 40> few_;
    std::vector<T> many_;
    T* data_;
};

} // namespace

static void chordLengths(const std::vector<RPT>& points, double* lengths) {
    for (std::size_t i = 0; i + 1 < points.size(); ++i) {
        const double length = std::hypot(points[i + 1].x - points[i].x, points[i + 1].y - points[i].y);
        lengths[i] = length > 0 ? length : 1e-300;
    }
}

/// Solves the tridiagonal system for the derivatives at the points (Thomas's method); the rows state that
/// the second derivative has no jump, the first and the last row the condition at the end.
static void derivatives(const Spline& spline, const double* h, RPT* d) {
    const std::vector<RPT>& p = spline.points;
    const std::size_t last = p.size() - 1;
    Scratch<double> upper(p.size());
    const auto slope = [&](std::size_t i) {
        return RPT{(p[i + 1].x - p[i].x) / h[i], (p[i + 1].y - p[i].y) / h[i]};
    };
    if (spline.startFixed) {
        d[0] = {std::cos(spline.startAngle), std::sin(spline.startAngle)};
        upper[0] = 0;
    } else {
        d[0] = {1.5 * slope(0).x, 1.5 * slope(0).y};
        upper[0] = 0.5;
    }
    for (std::size_t i = 1; i <= last; ++i) {
        double lower = 0;
        double diagonal = 1;
        double above = 0;
        RPT right;
        if (i < last) {
            const double a = h[i] / (h[i - 1] + h[i]);
            lower = a;
            diagonal = 2;
            above = 1 - a;
            right = {3 * (a * slope(i - 1).x + above * slope(i).x),
                     3 * (a * slope(i - 1).y + above * slope(i).y)};
        } else if (spline.endFixed) {
            right = {std::cos(spline.endAngle), std::sin(spline.endAngle)};
        } else {
            lower = 0.5;
            right = {1.5 * slope(i - 1).x, 1.5 * slope(i - 1).y};
        }
        const double pivot = diagonal - lower * upper[i - 1];
        upper[i] = above / pivot;
        d[i] = {(right.x - lower * d[i - 1].x) / pivot, (right.y - lower * d[i - 1].y) / pivot};
    }
    for (std::size_t i = last; i-- > 0;) {
        d[i].x -= upper[i] * d[i + 1].x;
        d[i].y -= upper[i] * d[i + 1].y;
    }
}

void forEachSplinePiece(const Spline& spline, const std::function<void(const BezierPiece&)>& take) {
    const std::vector<RPT>& p = spline.points;
    if (p.size() < 2) return;
    Scratch<double> h(p.size());
    chordLengths(p, h.data());
    Scratch<RPT> d(p.size());
    derivatives(spline, h.data(), d.data());
    for (std::size_t i = 0; i + 1 < p.size(); ++i)
        take({p[i], along(p[i], h[i] / 3, d[i]), along(p[i + 1], -h[i] / 3, d[i + 1]), p[i + 1]});
}

std::vector<BezierPiece> splinePieces(const Spline& spline) {
    std::vector<BezierPiece> pieces;
    pieces.reserve(spline.points.size());
    forEachSplinePiece(spline, [&](const BezierPiece& piece) { pieces.push_back(piece); });
    return pieces;
}

/// Steps that keep a polygon within `tolerance` of the piece: its second derivative is bounded by the second
/// differences of the control points.
static int stepsFor(const BezierPiece& b, double tolerance) {
    const double first = std::hypot(b[0].x - 2 * b[1].x + b[2].x, b[0].y - 2 * b[1].y + b[2].y);
    const double second = std::hypot(b[1].x - 2 * b[2].x + b[3].x, b[1].y - 2 * b[2].y + b[3].y);
    const double steps = std::ceil(std::sqrt(0.75 * std::max(first, second) / tolerance));
    if (!(steps >= 1)) return 1;
    return static_cast<int>(std::min(steps, 64.0));
}

static RPT pointAt(const BezierPiece& b, double t) {
    const double s = 1 - t;
    const double w0 = s * s * s;
    const double w1 = 3 * s * s * t;
    const double w2 = 3 * s * t * t;
    const double w3 = t * t * t;
    return {w0 * b[0].x + w1 * b[1].x + w2 * b[2].x + w3 * b[3].x,
            w0 * b[0].y + w1 * b[1].y + w2 * b[2].y + w3 * b[3].y};
}

std::vector<RPT> flattenSpline(const Spline& spline, double tolerance) {
    std::vector<RPT> chain;
    if (!spline.points.empty()) chain.push_back(spline.points.front());
    for (const BezierPiece& piece : splinePieces(spline)) {
        const int steps = stepsFor(piece, tolerance);
        for (int i = 1; i < steps; ++i) chain.push_back(pointAt(piece, static_cast<double>(i) / steps));
        chain.push_back(piece[3]);
    }
    return chain;
}

double visibleTolerance(const Spline& spline, double finest) {
    Extents box;
    for (const RPT& p : spline.points) box.add(p.x, p.y);
    return std::max(finest, 1e-4 * std::hypot(box.maxX - box.minX, box.maxY - box.minY));
}

} // namespace host
