#include "acis_shape_cursor.h"

namespace ACIS {

using geometry::NurbsCurve;
using geometry::NurbsSurface;
using geometry::Vec3;

namespace {

std::vector<double> readKnots(ShapeCursor& c, std::int64_t count) {
    std::vector<double> knots;
    for (std::int64_t i = 0; i < count && c.isValid; ++i) {
        const double knot = c.real();
        const std::int64_t times = c.whole();
        for (std::int64_t k = 0; k < times && knots.size() < 1000000; ++k) knots.push_back(knot);
    }
    if (knots.empty()) return knots;
    // At each end one knot less is stored than the degree asks for.
    knots.insert(knots.begin(), knots.front());
    knots.push_back(knots.back());
    return knots;
}

void readPoints(ShapeCursor& c, std::size_t count, bool isRational, std::vector<Vec3>& points,
                std::vector<double>& weights) {
    for (std::size_t i = 0; i < count && c.isValid; ++i) {
        points.push_back(c.vec());
        if (isRational) weights.push_back(c.real());
    }
}

bool isWord(const Value& value, std::string_view word) {
    return value.kind == Kind::Word && value.view() == word;
}

/// Values of the B-spline that begins at `at`; 0 when what stands there is none.
std::size_t splineLength(const File& file, std::size_t at, std::size_t end, bool isSurface) {
    bool isClosed[2];
    ShapeCursor c(file, at, end - at);
    const Value* const first = &file.values[at];
    (void)first;
    if (isSurface ? !readSplineSurface(c, isClosed) : !readSpline(c, isClosed[0])) return 0;
    std::size_t left = 0;
    while (c.take()) ++left;
    return end - at - left;
}

} // namespace

std::optional<NurbsCurve> readSpline(ShapeCursor& c, bool& isClosed) {
    NurbsCurve curve;
    const std::string_view word = c.word();
    if (word != "nubs" && word != "nurbs") return {};
    curve.degree = static_cast<int>(c.whole());
    isClosed = c.closure() != 0;
    curve.knots = readKnots(c, c.whole());
    const auto degree = static_cast<std::size_t>(curve.degree);
    if (!c.isValid || curve.degree < 1 || curve.knots.size() < 2 * degree + 2) return {};
    readPoints(c, curve.knots.size() - degree - 1, word == "nurbs", curve.points, curve.weights);
    if (!c.isValid || !curve.isValid()) return {};
    return curve;
}

std::optional<NurbsSurface> readSplineSurface(ShapeCursor& c, bool closed[2]) {
    NurbsSurface s;
    const std::string_view word = c.word();
    if (word != "nubs" && word != "nurbs") return {};
    s.degreeU = static_cast<int>(c.whole());
    s.degreeV = static_cast<int>(c.whole());
    if (word == "nurbs") c.word();
    const std::int64_t closures[2] = {c.closure(), c.closure()};
    c.closure(); // where the surface has poles
    c.closure();
    const std::int64_t counts[2] = {c.whole(), c.whole()};
    s.knotsU = readKnots(c, counts[0]);
    s.knotsV = readKnots(c, counts[1]);
    for (int i = 0; i < 2; ++i) closed[i] = closures[i] == 1 || closures[i] == 2;
    if (!c.isValid || s.degreeU < 1 || s.degreeV < 1) return {};
    if (s.knotsU.size() < 2 * static_cast<std::size_t>(s.degreeU) + 2) return {};
    if (s.knotsV.size() < 2 * static_cast<std::size_t>(s.degreeV) + 2) return {};
    readPoints(c, s.countU() * s.countV(), word == "nurbs", s.points, s.weights);
    if (!c.isValid || !s.isValid()) return {};
    return s;
}

std::size_t findSpline(const File& file, const SubRecord& sub, bool isSurface, std::size_t& count) {
    std::size_t found = 0;
    const std::size_t end = sub.first + sub.count;
    for (std::size_t at = sub.first; at < end; ++at) {
        const Value& value = file.values[at];
        if (value.kind == Kind::Def) at += value.size;
        if (!isWord(value, "nubs") && !isWord(value, "nurbs")) continue;
        const std::size_t length = splineLength(file, at, end, isSurface);
        if (!length) continue;
        found = at;
        count = length;
        if (!isSurface) return found;
        at += length - 1;
    }
    return found;
}

std::optional<NurbsCurve> curveSpline(const File& file, std::size_t at, std::size_t count, bool& isClosed) {
    ShapeCursor c(file, at, count);
    return readSpline(c, isClosed);
}

std::optional<NurbsSurface> surfaceSpline(const File& file, std::size_t at, std::size_t count,
                                          bool closed[2]) {
    ShapeCursor c(file, at, count);
    return readSplineSurface(c, closed);
}

} // namespace ACIS
