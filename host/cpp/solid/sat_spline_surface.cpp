#include "solid/sat_spline_surface.h"

#include "solid/sat_curve.h"

#include <algorithm>
#include <cmath>

namespace host {
namespace {

constexpr int gridSteps = 24; ///< of the search grid, along each parameter

/// The tokens of a B-spline in their order.
class Cursor {
public:
    Cursor(const SatModel& model, std::size_t at) : model_(model), at_(at) {}
    bool isWord() const { return at_ < model_.tokens.size() && model_.tokens[at_].kind == SatKind::Word; }
    void skip() { ++at_; }
    std::size_t left() const { return model_.tokens.size() - std::min(at_, model_.tokens.size()); }
    double number() {
        if (at_ >= model_.tokens.size() || model_.tokens[at_].kind != SatKind::Number) return HUGE_VAL;
        return model_.tokens[at_++].number;
    }
    /// A closure or a singularity, as a word or as its number. False for anything else.
    bool code(bool& isOpen) {
        if (isWord()) {
            isOpen = model_.tokens[at_++].text == "open";
            return true;
        }
        const double value = number();
        isOpen = value == 0;
        return value >= 0 && value < 8;
    }
    /// Knots with their repetitions, of which a file leaves one out at each end.
    bool knots(double count, std::size_t degree, std::vector<double>& knots) {
        constexpr double mostTimes = 64;
        knots.clear();
        for (double i = 0; i < count; ++i) {
            const double knot = number(), times = number();
            if (!std::isfinite(knot) || !(times >= 1) || times > mostTimes) return false;
            knots.insert(knots.end(), static_cast<std::size_t>(times), knot);
        }
        knots.insert(knots.begin(), knots.front());
        knots.push_back(knots.back());
        return knots.size() >= 2 * (degree + 1) && std::is_sorted(knots.begin(), knots.end()) &&
               knots[degree] < knots[knots.size() - 1 - degree];
    }

private:
    const SatModel& model_;
    std::size_t at_;
};

} // namespace

bool SatSplineSurface::readSub(const SatModel& model, std::size_t at) {
    bool isRead = false;
    int depth = 0;
    for (; at < model.tokens.size(); ++at) {
        const SatToken& token = model.tokens[at];
        if (token.kind == SatKind::Open) ++depth;
        if (token.kind == SatKind::Close && --depth == 0) break;
        const bool isSpline = depth == 1 && token.kind == SatKind::Word && token.text.ends_with("bs");
        SatSplineSurface found;
        if (!isSpline || !found.read(model, at)) continue;
        *this = std::move(found);
        isRead = true;
    }
    if (isRead) fillGrid();
    return isRead;
}

bool SatSplineSurface::read(const SatModel& model, std::size_t at) {
    const bool isRational = model.tokens[at].text == "nurbs";
    Cursor cursor(model, at + 1);
    constexpr double mostDegree = 32;
    for (std::size_t& degree : degree_) {
        const double number = cursor.number();
        if (!(number >= 1) || number > mostDegree) return false;
        degree = static_cast<std::size_t>(number);
    }
    if (isRational) cursor.skip(); // in which direction
    bool isOpen = false;
    for (bool& comesBack : comesBack_) {
        if (!cursor.code(isOpen)) return false;
        comesBack = !isOpen;
    }
    if (!cursor.code(isOpen) || !cursor.code(isOpen)) return false;
    const double counts[2] = {cursor.number(), cursor.number()};
    for (std::size_t i = 0; i < 2; ++i) {
        if (!(counts[i] >= 2) || counts[i] > static_cast<double>(cursor.left())) return false;
        if (!cursor.knots(counts[i], degree_[i], knots_[i])) return false;
    }
    const std::size_t count = poles(0) * poles(1), width = isRational ? 4 : 3;
    if (count > cursor.left() / width) return false;
    for (std::size_t i = 0; i < count; ++i) {
        const double x = cursor.number(), y = cursor.number(), z = cursor.number();
        const double w = isRational ? cursor.number() : 1;
        if (!std::isfinite(x * w + y * w + z * w) || !(w > 0)) return false;
        poles_.push_back({x * w, y * w, z * w, w});
    }
    return true;
}

std::size_t SatSplineSurface::basis(int axis, double t, std::vector<double>& values) const {
    const std::vector<double>& knots = knots_[axis];
    const std::size_t degree = degree_[axis];
    t = std::clamp(t, first(axis), last(axis));
    const auto begin = knots.begin() + static_cast<std::ptrdiff_t>(degree);
    const auto end = knots.begin() + static_cast<std::ptrdiff_t>(poles(axis));
    const auto span = static_cast<std::size_t>(std::upper_bound(begin, end, t) - knots.begin()) - 1;
    values.assign(degree + 1, 0);
    values[0] = 1;
    for (std::size_t k = 1; k <= degree; ++k) {
        double carried = 0;
        for (std::size_t j = 0; j < k; ++j) {
            const double low = knots[span + 1 + j - k], high = knots[span + 1 + j];
            const double share = high > low ? values[j] / (high - low) : 0;
            values[j] = carried + (high - t) * share;
            carried = (t - low) * share;
        }
        values[k] = carried;
    }
    return span - degree;
}

RPT3 SatSplineSurface::at(const RPT& uv) const {
    std::vector<double> a, b;
    const std::size_t i0 = basis(0, uv.x, a), j0 = basis(1, uv.y, b);
    double sum[4] = {0, 0, 0, 0};
    for (std::size_t j = 0; j < b.size(); ++j)
        for (std::size_t i = 0; i < a.size(); ++i)
            for (std::size_t k = 0; k < 4; ++k)
                sum[k] += a[i] * b[j] * poles_[(j0 + j) * poles(0) + i0 + i][k];
    return {sum[0] / sum[3], sum[1] / sum[3], sum[2] / sum[3]};
}

double SatSplineSurface::step(int axis) const {
    constexpr double stepsOfSpan = 4, least = 12, most = 64;
    const double spans = static_cast<double>(poles(axis) - degree_[axis]);
    const double steps =
        degree_[axis] == 1 ? std::min(spans, most) : std::clamp(stepsOfSpan * spans, least, most);
    return (last(axis) - first(axis)) / steps;
}

void SatSplineSurface::fillGrid() {
    for (int j = 0; j <= gridSteps; ++j)
        for (int i = 0; i <= gridSteps; ++i)
            grid_.push_back(at({first(0) + (last(0) - first(0)) * i / gridSteps,
                                first(1) + (last(1) - first(1)) * j / gridSteps}));
}

RPT SatSplineSurface::nearest(const RPT3& point) const {
    std::size_t best = 0;
    double least = HUGE_VAL;
    for (std::size_t i = 0; i < grid_.size(); ++i) {
        const RPT3 off = difference(grid_[i], point);
        if (dot(off, off) < least) least = dot(off, off), best = i;
    }
    const double sizes[2] = {last(0) - first(0), last(1) - first(1)};
    RPT uv{first(0) + sizes[0] * static_cast<double>(best % (gridSteps + 1)) / gridSteps,
           first(1) + sizes[1] * static_cast<double>(best / (gridSteps + 1)) / gridSteps};
    constexpr int mostSteps = 12;
    constexpr double delta = 1e-6;
    for (int i = 0; i < mostSteps; ++i) {
        const double du = uv.x + delta * sizes[0] > last(0) ? -delta * sizes[0] : delta * sizes[0];
        const double dv = uv.y + delta * sizes[1] > last(1) ? -delta * sizes[1] : delta * sizes[1];
        const RPT3 here = at(uv), off = difference(point, here);
        const RPT3 a = scale(difference(at({uv.x + du, uv.y}), here), 1 / du);
        const RPT3 b = scale(difference(at({uv.x, uv.y + dv}), here), 1 / dv);
        const double aa = dot(a, a), ab = dot(a, b), bb = dot(b, b), determinant = aa * bb - ab * ab;
        if (!(determinant > 1e-30 * aa * bb)) break;
        const double x = dot(off, a), y = dot(off, b);
        const RPT before = uv;
        uv.x = std::clamp(uv.x + (x * bb - y * ab) / determinant, first(0), last(0));
        uv.y = std::clamp(uv.y + (y * aa - x * ab) / determinant, first(1), last(1));
        if (std::abs(uv.x - before.x) < 1e-12 * sizes[0] && std::abs(uv.y - before.y) < 1e-12 * sizes[1])
            break;
    }
    return uv;
}

} // namespace host
