// What a B-spline can be exactly: lines, conics, planes, turned profiles.
#include "nurbs.h"

#include <algorithm>

namespace geometry {
namespace {

constexpr double QUARTER = 1.57079632679489661923;

/// Knots of degree 2 with a double knot between the pieces of an arc.
std::vector<double> arcKnots(double start, double end, int pieces) {
    std::vector<double> knots(3, start);
    for (int i = 1; i < pieces; ++i) knots.insert(knots.end(), 2, start + (end - start) * i / pieces);
    knots.insert(knots.end(), 3, end);
    return knots;
}

int arcPieces(double start, double end) {
    return std::clamp(static_cast<int>(std::ceil((end - start) / QUARTER - 1e-9)), 1, 8);
}

/// Directions of an arc's control points: their factors of cosine and sine, and their weights.
struct ArcPoint {
    double cosine, sine, weight;
};

std::vector<ArcPoint> arcPoints(double start, double end) {
    const int pieces = arcPieces(start, end);
    const double half = (end - start) / pieces / 2, weight = std::cos(half);
    std::vector<ArcPoint> points;
    for (int i = 0; i <= 2 * pieces; ++i) {
        const double angle = start + half * i, w = i % 2 ? weight : 1;
        points.push_back({std::cos(angle) / w, std::sin(angle) / w, w});
    }
    return points;
}

} // namespace

NurbsCurve lineCurve(Vec3 from, Vec3 to, double start, double end) {
    return {1, {start, start, end, end}, {from, to}, {}};
}

NurbsCurve ellipseCurve(Vec3 centre, Vec3 major, Vec3 minor, double start, double end) {
    NurbsCurve curve;
    curve.degree = 2;
    curve.knots = arcKnots(start, end, arcPieces(start, end));
    for (const ArcPoint& p : arcPoints(start, end)) {
        curve.points.push_back(centre + p.cosine * major + p.sine * minor);
        curve.weights.push_back(p.weight);
    }
    return curve;
}

NurbsSurface planeSurface(Vec3 root, Vec3 a, Vec3 b, double u0, double u1, double v0, double v1) {
    NurbsSurface surface;
    surface.knotsU = {u0, u0, u1, u1};
    surface.knotsV = {v0, v0, v1, v1};
    for (const double v : {v0, v1})
        for (const double u : {u0, u1}) surface.points.push_back(root + u * a + v * b);
    return surface;
}

NurbsSurface revolvedSurface(const NurbsCurve& profile, Vec3 root, Vec3 axis, double start, double end) {
    NurbsSurface surface;
    surface.degreeU = profile.degree;
    surface.knotsU = profile.knots;
    surface.degreeV = 2;
    surface.knotsV = arcKnots(start, end, arcPieces(start, end));
    const Vec3 along = unit(axis);
    for (const ArcPoint& p : arcPoints(start, end))
        for (std::size_t i = 0; i < profile.points.size(); ++i) {
            const Vec3 from = profile.points[i] - root;
            const Vec3 foot = dot(from, along) * along, out = from - foot;
            surface.points.push_back(root + foot + p.cosine * out + p.sine * cross(along, out));
            surface.weights.push_back(p.weight * (profile.weights.empty() ? 1 : profile.weights[i]));
        }
    return surface;
}

NurbsSurface summedSurface(const NurbsCurve& first, const NurbsCurve& second, Vec3 datum) {
    NurbsSurface surface;
    surface.degreeU = first.degree;
    surface.degreeV = second.degree;
    surface.knotsU = first.knots;
    surface.knotsV = second.knots;
    const bool isRational = !first.weights.empty() || !second.weights.empty();
    for (std::size_t j = 0; j < second.points.size(); ++j)
        for (std::size_t i = 0; i < first.points.size(); ++i) {
            surface.points.push_back(first.points[i] + second.points[j] - datum);
            if (isRational)
                surface.weights.push_back((first.weights.empty() ? 1 : first.weights[i]) *
                                          (second.weights.empty() ? 1 : second.weights[j]));
        }
    return surface;
}

} // namespace geometry
