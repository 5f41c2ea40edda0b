#include "solid/sat_curve.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace host {

static constexpr double turn = 2 * std::numbers::pi;

RPT3 cross(const RPT3& a, const RPT3& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

RPT3 unit(const RPT3& a) {
    const double length = std::sqrt(dot(a, a));
    return length > 0 ? scale(a, 1 / length) : a;
}

RPT3 across(const RPT3& a) {
    return unit(cross(a, std::abs(a.x) < 0.5 ? RPT3{1, 0, 0} : RPT3{0, 1, 0}));
}

bool firstNumbers(const SatModel& model, const SatRecord& record, std::vector<double>& numbers) {
    const std::size_t end = record.first + record.count;
    std::size_t at = record.first;
    for (std::size_t i = at; i < end && model.tokens[i].kind != SatKind::Open; ++i)
        if (model.tokens[i].kind == SatKind::Pointer) at = i + 1;
    numbers.clear();
    for (; at < end && model.tokens[at].kind == SatKind::Number; ++at)
        numbers.push_back(model.tokens[at].number);
    return !numbers.empty();
}

// ---- kinds -----------------------------------------------------------------------------------------

SatCurve SatCurve::line(const RPT3& root, const RPT3& direction) {
    SatCurve curve;
    curve.kind_ = Kind::Line;
    curve.root_ = root;
    curve.a_ = direction;
    return curve;
}

SatCurve SatCurve::ellipse(const RPT3& centre, const RPT3& major, const RPT3& minor) {
    SatCurve curve = line(centre, major);
    curve.kind_ = Kind::Ellipse;
    curve.b_ = minor;
    return curve;
}

/// Knots with their repetitions, of which a file leaves one out at each end, then the poles.
bool SatCurve::readSpline(const SatModel& model, std::size_t at, std::size_t end) {
    constexpr double most = 1e6;
    const bool isRational = model.tokens[at].text == "nurbs";
    const auto number = [&](std::size_t i) {
        return i < end && model.tokens[i].kind == SatKind::Number ? model.tokens[i].number : HUGE_VAL;
    };
    const double degree = number(at + 1), count = number(at + 3);
    constexpr double mostDegree = 64;
    if (!(degree >= 1) || degree > mostDegree || !(count >= 2) || count > static_cast<double>(end - at))
        return false;
    degree_ = static_cast<std::size_t>(degree);
    at += 4;
    for (std::size_t i = 0; i < static_cast<std::size_t>(count); ++i, at += 2) {
        const double times = number(at + 1);
        if (!(times >= 1) || times > most || !std::isfinite(number(at))) return false;
        knots_.insert(knots_.end(), static_cast<std::size_t>(times), number(at));
        if (knots_.size() > end) return false;
    }
    knots_.insert(knots_.begin(), knots_.front());
    knots_.push_back(knots_.back());
    if (knots_.size() < 2 * (degree_ + 1) || !std::is_sorted(knots_.begin(), knots_.end())) return false;
    const std::size_t poles = knots_.size() - degree_ - 1, width = isRational ? 4 : 3;
    if (poles > (end - at) / width) return false;
    for (std::size_t i = 0; i < poles; ++i, at += width) {
        const double w = isRational ? number(at + 3) : 1;
        poles_.push_back({number(at) * w, number(at + 1) * w, number(at + 2) * w, w});
    }
    kind_ = Kind::Spline;
    return true;
}

/// The first B-spline of a sub-record: the curve itself, ahead of what it was made from.
static std::size_t findSpline(const SatModel& model, std::size_t at, std::size_t end) {
    for (int depth = 0; at < end; ++at) {
        const SatToken& token = model.tokens[at];
        if (token.kind == SatKind::Open) ++depth;
        if (token.kind == SatKind::Close && --depth <= 0) return end;
        if (token.kind == SatKind::Word && (token.text == "nubs" || token.text == "nurbs")) return at;
    }
    return end;
}

/// The sub-record of a curve, or the one that it refers to.
static std::size_t subRecordOf(const SatModel& model, std::size_t at, std::size_t end) {
    while (at < end && model.tokens[at].kind != SatKind::Open) ++at;
    const bool isReference = at + 2 < end && model.tokens[at + 1].text == "ref";
    if (!isReference) return at;
    const double number = model.tokens[at + 2].number;
    const bool exists = number >= 0 && number < static_cast<double>(model.subRecords.size());
    return exists ? model.subRecords[static_cast<std::size_t>(number)] : end;
}

SatCurve satCurve(const SatModel& model, const SatRecord& record) {
    const std::size_t end = record.first + record.count;
    if (record.leaf == "straight") {
        std::array<double, 6> n;
        if (!firstNumbers(model, record, n)) return {};
        return SatCurve::line({n[0], n[1], n[2]}, {n[3], n[4], n[5]});
    }
    if (record.leaf == "ellipse") {
        std::array<double, 10> n;
        if (!firstNumbers(model, record, n)) return {};
        const RPT3 major{n[6], n[7], n[8]};
        return SatCurve::ellipse({n[0], n[1], n[2]}, major,
                                 scale(cross(unit({n[3], n[4], n[5]}), major), n[9]));
    }
    if (record.leaf != "intcurve") return {};
    SatCurve curve;
    for (std::size_t at = record.first; at < end && model.tokens[at].kind != SatKind::Open; ++at) {
        const SatToken& token = model.tokens[at];
        if (token.text == "reversed" || (token.kind == SatKind::Logical && token.number != 0))
            curve.isReversed_ = true;
    }
    const std::size_t all = model.tokens.size();
    const std::size_t spline = findSpline(model, subRecordOf(model, record.first, end), all);
    if (spline == all || !curve.readSpline(model, spline, all)) return {};
    return curve;
}

// ---- points ----------------------------------------------------------------------------------------

RPT3 SatCurve::splineAt(double t) const {
    t = std::clamp(t, knots_[degree_], knots_[poles_.size()]);
    const auto next = std::upper_bound(knots_.begin() + static_cast<std::ptrdiff_t>(degree_),
                                       knots_.begin() + static_cast<std::ptrdiff_t>(poles_.size()), t);
    const std::size_t span = static_cast<std::size_t>(next - knots_.begin()) - 1;
    std::vector<std::array<double, 4>> d(poles_.begin() + static_cast<std::ptrdiff_t>(span - degree_),
                                         poles_.begin() + static_cast<std::ptrdiff_t>(span + 1));
    for (std::size_t r = 1; r <= degree_; ++r) {
        for (std::size_t j = degree_; j >= r; --j) {
            const double low = knots_[j + span - degree_], high = knots_[j + 1 + span - r];
            const double share = high > low ? (t - low) / (high - low) : 0;
            for (std::size_t k = 0; k < 4; ++k) d[j][k] = (1 - share) * d[j - 1][k] + share * d[j][k];
        }
    }
    const auto& p = d[degree_];
    return {p[0] / p[3], p[1] / p[3], p[2] / p[3]};
}

RPT3 SatCurve::at(double t) const {
    if (kind_ == Kind::Spline) return splineAt(isReversed_ ? -t : t);
    if (kind_ == Kind::Line) return sum(root_, scale(a_, t));
    return sum(root_, sum(scale(a_, std::cos(t)), scale(b_, std::sin(t))));
}

double SatCurve::nearest(const RPT3& point) const {
    const RPT3 off = difference(point, root_);
    if (kind_ == Kind::Line) return dot(off, a_) / dot(a_, a_);
    if (kind_ == Kind::Ellipse) return std::atan2(dot(off, b_) / dot(b_, b_), dot(off, a_) / dot(a_, a_));
    constexpr int samples = 256;
    double best = 0, least = HUGE_VAL;
    for (int i = 0; i <= samples; ++i) {
        const double t = knots_[degree_] + (knots_[poles_.size()] - knots_[degree_]) * i / samples;
        const RPT3 to = difference(splineAt(t), point);
        if (dot(to, to) >= least) continue;
        least = dot(to, to);
        best = t;
    }
    return isReversed_ ? -best : best;
}

std::array<double, 2> SatCurve::between(const RPT3& from, const RPT3& to, bool isTurn,
                                        bool isReversed) const {
    double a = nearest(from), b = nearest(to);
    if (kind_ == Kind::Line) return {a, b};
    const double side = isReversed ? -1 : 1;
    const double period = kind_ == Kind::Ellipse ? turn : knots_[poles_.size()] - knots_[degree_];
    if (isTurn && kind_ == Kind::Spline) a = isReversed_ ? -knots_[poles_.size()] : knots_[degree_];
    if (isTurn)
        b = a + side * period;
    else if (kind_ == Kind::Ellipse && side * (b - a) <= 0)
        b += side * period;
    return {a, b};
}

std::vector<RPT3> SatCurve::points(double from, double to, std::size_t limit) const {
    constexpr double stepsOfTurn = 48, mostSteps = 4096;
    double steps = 1;
    if (kind_ == Kind::Ellipse) steps = std::ceil(stepsOfTurn * std::abs(to - from) / turn);
    if (kind_ == Kind::Spline) steps = 8.0 * static_cast<double>(poles_.size() - degree_);
    if (!(std::abs(to - from) < HUGE_VAL)) return {};
    const auto count = static_cast<std::size_t>(std::clamp(steps, 1.0, mostSteps));
    std::vector<RPT3> points;
    if (count >= limit) return points;
    points.reserve(count + 1);
    for (std::size_t i = 0; i <= count; ++i)
        points.push_back(at(from + (to - from) * static_cast<double>(i) / static_cast<double>(count)));
    return points;
}

} // namespace host
