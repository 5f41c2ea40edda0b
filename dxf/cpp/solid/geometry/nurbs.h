// B-spline curves and surfaces, rational or not, and how others become them.
#pragma once

#include "vector3.h"

#include <functional>
#include <vector>

namespace geometry {

/// Knots with all their repetitions: as many as points + degree + 1. Points stand as they are, not times
/// their weights; an empty list of weights means 1 each.
struct NurbsCurve {
    int degree = 1;
    std::vector<double> knots;
    std::vector<Vec3> points;
    std::vector<double> weights;

    bool isValid() const; ///< Knots ascend, counts agree, weights are positive.
    double start() const { return knots[static_cast<std::size_t>(degree)]; }
    double end() const { return knots[points.size()]; }
    Vec3 at(double t) const; ///< Outside of its range as at its end.
};

/// Points in rows of u: the point (i, j) is points[j * countU() + i].
struct NurbsSurface {
    int degreeU = 1, degreeV = 1;
    std::vector<double> knotsU, knotsV;
    std::vector<Vec3> points;
    std::vector<double> weights;

    std::size_t countU() const { return knotsU.size() - static_cast<std::size_t>(degreeU) - 1; }
    std::size_t countV() const { return knotsV.size() - static_cast<std::size_t>(degreeV) - 1; }
    bool isValid() const;
    double startU() const { return knotsU[static_cast<std::size_t>(degreeU)]; }
    double endU() const { return knotsU[countU()]; }
    double startV() const { return knotsV[static_cast<std::size_t>(degreeV)]; }
    double endV() const { return knotsV[countV()]; }
    Vec3 at(double u, double v) const;
};

using CurveFunction = std::function<Vec3(double)>;
using SurfaceFunction = std::function<Vec3(double, double)>;

/// The line piece, exactly.
NurbsCurve lineCurve(Vec3 from, Vec3 to, double start, double end);
/// centre + cos t major + sin t minor, exactly, for t in [start, end] up to a full turn. Its parameters agree
/// with t at the ends of its pieces of at most a quarter turn.
NurbsCurve ellipseCurve(Vec3 centre, Vec3 major, Vec3 minor, double start, double end);
/// root + u a + v b, exactly.
NurbsSurface planeSurface(Vec3 root, Vec3 a, Vec3 b, double u0, double u1, double v0, double v1);
/// The profile turned about the axis, u along the profile and v the angle, exactly.
NurbsSurface revolvedSurface(const NurbsCurve& profile, Vec3 root, Vec3 axis, double start, double end);
/// Both curves at once, as their sum less `datum`, exactly: u along the first, v along the second.
NurbsSurface summedSurface(const NurbsCurve& first, const NurbsCurve& second, Vec3 datum);

/// Within `tolerance` of the function, cubic, with a continuous tangent and the function's parameters. False
/// when it can't be done with a sound number of points.
bool fitCurve(const CurveFunction& f, double start, double end, double tolerance, NurbsCurve& fitted);
bool fitSurface(const SurfaceFunction& f, double u0, double u1, double v0, double v1, double tolerance,
                NurbsSurface& fitted);

/// The parameter of the curve's nearest point to `point`, within [start, end].
double nearestOnCurve(const CurveFunction& f, double start, double end, Vec3 point);
/// The parameters of the surface's nearest point, from the guess in u and v on; within the box.
void nearestOnSurface(const SurfaceFunction& f, const double box[4], Vec3 point, double& u, double& v);

} // namespace geometry
