// The curves of a solid model, as far as a picture wants them.
#pragma once

#include "solid/sat_tokens.h"

#include "rpt.h"

#include <algorithm>
#include <array>
#include <vector>

namespace host {

inline RPT3 sum(const RPT3& a, const RPT3& b) {
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}
inline RPT3 difference(const RPT3& a, const RPT3& b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}
inline RPT3 scale(const RPT3& a, double factor) {
    return {factor * a.x, factor * a.y, factor * a.z};
}
inline double dot(const RPT3& a, const RPT3& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}
RPT3 cross(const RPT3& a, const RPT3& b);
RPT3 unit(const RPT3& a);   ///< A vector of length 0 stays.
RPT3 across(const RPT3& a); ///< A unit vector at a right angle to the unit vector `a`.

/// The numbers of a record between its last pointer and the next word: those of its own class, behind what
/// versions put ahead of them. False when there are none.
bool firstNumbers(const SatModel& model, const SatRecord& record, std::vector<double>& numbers);
/// As many of them as asked for.
template <std::size_t Count>
bool firstNumbers(const SatModel& model, const SatRecord& record, std::array<double, Count>& first) {
    std::vector<double> numbers;
    if (!firstNumbers(model, record, numbers) || numbers.size() < Count) return false;
    std::copy_n(numbers.begin(), Count, first.begin());
    return true;
}

/// A straight line, an ellipse or a B-spline, by its parameter.
class SatCurve {
public:
    static SatCurve line(const RPT3& root, const RPT3& direction);
    static SatCurve ellipse(const RPT3& centre, const RPT3& major, const RPT3& minor);

    bool isKnown() const { return kind_ != Kind::None; }
    RPT3 at(double t) const;
    const RPT3& centre() const { return root_; }
    double nearest(const RPT3& point) const; ///< The parameter of the nearest point.
    /// The parameters of an edge between two points, for versions that don't say them. `isTurn`: the points
    /// are one vertex.
    std::array<double, 2> between(const RPT3& from, const RPT3& to, bool isTurn, bool isReversed) const;
    /// Points along a range, so close that their chords look like the curve. Not more than `limit`.
    std::vector<RPT3> points(double from, double to, std::size_t limit) const;

private:
    enum class Kind { None, Line, Ellipse, Spline };
    friend SatCurve satCurve(const SatModel& model, const SatRecord& record);
    bool readSpline(const SatModel& model, std::size_t at, std::size_t end);
    RPT3 splineAt(double t) const;

    Kind kind_ = Kind::None;
    RPT3 root_{0, 0, 0}, a_{0, 0, 0}, b_{0, 0, 0};
    bool isReversed_ = false; ///< of a B-spline: its parameters run the other way
    std::size_t degree_ = 0;
    std::vector<double> knots_;
    std::vector<std::array<double, 4>> poles_; ///< times their weights, and the weight
};

/// The curve of a record; one that isn't known when the file has it in no form that is understood.
SatCurve satCurve(const SatModel& model, const SatRecord& record);

} // namespace host
