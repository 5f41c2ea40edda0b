#include "nurbs.h"

#include <algorithm>

namespace geometry {
namespace {

constexpr int MAX_DEGREE = 30;

bool areKnots(const std::vector<double>& knots, int degree, std::size_t points) {
    if (degree < 1 || degree > MAX_DEGREE) return false;
    if (points <= static_cast<std::size_t>(degree) ||
        knots.size() != points + static_cast<std::size_t>(degree) + 1)
        return false;
    return std::is_sorted(knots.begin(), knots.end()) &&
           knots[static_cast<std::size_t>(degree)] < knots[points];
}

bool areWeights(const std::vector<double>& weights, std::size_t points) {
    if (weights.empty()) return true;
    return weights.size() == points &&
           std::all_of(weights.begin(), weights.end(), [](double w) { return w > 0; });
}

/// The span of knots that t lies in, and the values of the degree + 1 basis functions there.
std::size_t basis(const std::vector<double>& knots, int degree, std::size_t points, double t,
                  double* values) {
    const auto p = static_cast<std::size_t>(degree);
    t = std::clamp(t, knots[p], knots[points]);
    const auto above =
        std::upper_bound(knots.begin() + degree, knots.begin() + static_cast<std::ptrdiff_t>(points), t);
    auto span = static_cast<std::size_t>(above - knots.begin()) - 1;
    while (span > p && knots[span] == knots[span + 1]) --span;
    double left[MAX_DEGREE + 1], right[MAX_DEGREE + 1];
    values[0] = 1;
    for (std::size_t j = 1; j <= p; ++j) {
        left[j] = t - knots[span + 1 - j];
        right[j] = knots[span + j] - t;
        double saved = 0;
        for (std::size_t r = 0; r < j; ++r) {
            const double width = right[r + 1] + left[j - r];
            const double part = width > 0 ? values[r] / width : 0;
            values[r] = saved + right[r + 1] * part;
            saved = left[j - r] * part;
        }
        values[j] = saved;
    }
    return span - p;
}

} // namespace

bool NurbsCurve::isValid() const {
    return areKnots(knots, degree, points.size()) && areWeights(weights, points.size());
}

Vec3 NurbsCurve::at(double t) const {
    double values[MAX_DEGREE + 1];
    const std::size_t first = basis(knots, degree, points.size(), t, values);
    Vec3 sum;
    double weight = 0;
    for (std::size_t i = 0; i <= static_cast<std::size_t>(degree); ++i) {
        const double w = values[i] * (weights.empty() ? 1 : weights[first + i]);
        sum = sum + w * points[first + i];
        weight += w;
    }
    return 1 / weight * sum;
}

bool NurbsSurface::isValid() const {
    if (knotsU.size() < 4 || knotsV.size() < 4 || degreeU < 1 || degreeV < 1) return false;
    if (knotsU.size() <= static_cast<std::size_t>(degreeU) + 1 ||
        knotsV.size() <= static_cast<std::size_t>(degreeV) + 1)
        return false;
    return areKnots(knotsU, degreeU, countU()) && areKnots(knotsV, degreeV, countV()) &&
           points.size() == countU() * countV() && areWeights(weights, points.size());
}

Vec3 NurbsSurface::at(double u, double v) const {
    double inU[MAX_DEGREE + 1], inV[MAX_DEGREE + 1];
    const std::size_t firstU = basis(knotsU, degreeU, countU(), u, inU);
    const std::size_t firstV = basis(knotsV, degreeV, countV(), v, inV);
    Vec3 sum;
    double weight = 0;
    for (std::size_t j = 0; j <= static_cast<std::size_t>(degreeV); ++j)
        for (std::size_t i = 0; i <= static_cast<std::size_t>(degreeU); ++i) {
            const std::size_t at = (firstV + j) * countU() + firstU + i;
            const double w = inU[i] * inV[j] * (weights.empty() ? 1 : weights[at]);
            sum = sum + w * points[at];
            weight += w;
        }
    return 1 / weight * sum;
}

} // namespace geometry
