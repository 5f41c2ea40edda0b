// B-splines near a curve or surface that is given by its values, and the nearest points on these.
#include "nurbs.h"

#include <algorithm>
#include <array>

namespace geometry {
namespace {

constexpr std::size_t MAX_PIECES = 4096;
constexpr std::size_t MAX_PATCHES = 40000;

/// Knots of degree 3, double within: pieces that share their tangents.
std::vector<double> pieceKnots(const std::vector<double>& nodes) {
    std::vector<double> knots(2, nodes.front());
    for (const double node : nodes) knots.insert(knots.end(), 2, node);
    knots.insert(knots.end(), 2, nodes.back());
    return knots;
}

/// The derivative at t by values within [start, end].
template <class F>
Vec3 derivative(const F& f, double t, double start, double end) {
    const double h = 1e-4 * (end - start);
    const auto slope = [&](double step) {
        if (t - step < start) return 1 / (2 * step) * (4 * f(t + step) - 3 * f(t) - f(t + 2 * step));
        if (t + step > end) return 1 / (2 * step) * (3 * f(t) - 4 * f(t - step) + f(t - 2 * step));
        return 1 / (2 * step) * (f(t + step) - f(t - step));
    };
    // Two steps cancel the first term of the error.
    return 1.0 / 3 * (4 * slope(h / 2) - slope(h));
}

NurbsCurve piecewise(const CurveFunction& f, const std::vector<double>& nodes) {
    NurbsCurve curve;
    curve.degree = 3;
    curve.knots = pieceKnots(nodes);
    const double start = nodes.front(), end = nodes.back();
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        const Vec3 point = f(nodes[i]), tangent = derivative(f, nodes[i], start, end);
        if (i == 0) curve.points.push_back(point);
        if (i > 0) curve.points.push_back(point - (nodes[i] - nodes[i - 1]) / 3 * tangent);
        if (i + 1 < nodes.size()) curve.points.push_back(point + (nodes[i + 1] - nodes[i]) / 3 * tangent);
        if (i + 1 == nodes.size()) curve.points.push_back(point);
    }
    return curve;
}

std::vector<double> evenNodes(double start, double end, std::size_t pieces) {
    std::vector<double> nodes;
    for (std::size_t i = 0; i <= pieces; ++i)
        nodes.push_back(start + (end - start) * static_cast<double>(i) / static_cast<double>(pieces));
    return nodes;
}

/// Halves the pieces that are off by more than the tolerance. True when there were any.
bool refine(const CurveFunction& f, const NurbsCurve& curve, double tolerance, std::vector<double>& nodes) {
    std::vector<double> finer{nodes.front()};
    for (std::size_t i = 1; i < nodes.size(); ++i) {
        double off = 0;
        for (const double part : {0.25, 0.5, 0.75}) {
            const double t = nodes[i - 1] + part * (nodes[i] - nodes[i - 1]);
            off = std::max(off, distance(f(t), curve.at(t)));
        }
        if (!(off <= tolerance)) finer.push_back((nodes[i - 1] + nodes[i]) / 2);
        finer.push_back(nodes[i]);
    }
    const bool isFiner = finer.size() > nodes.size();
    nodes = std::move(finer);
    return isFiner;
}

/// One node of a grid: the point with its derivatives by u, by v and by both.
struct Node {
    Vec3 point, byU, byV, twist;
};

Node nodeAt(const SurfaceFunction& f, double u, double v, const std::array<double, 4>& box) {
    const auto alongU = [&](double at) { return f(at, v); };
    const auto alongV = [&](double at) { return f(u, at); };
    const auto byU = [&](double at) {
        return derivative([&](double x) { return f(x, at); }, u, box[0], box[1]);
    };
    return {f(u, v), derivative(alongU, u, box[0], box[1]), derivative(alongV, v, box[2], box[3]),
            derivative(byU, v, box[2], box[3])};
}

/// Steps from a node to its control points in one direction.
std::vector<double> steps(const std::vector<double>& nodes, std::size_t i) {
    if (i == 0) return {0, (nodes[1] - nodes[0]) / 3};
    if (i + 1 == nodes.size()) return {-(nodes[i] - nodes[i - 1]) / 3, 0};
    return {-(nodes[i] - nodes[i - 1]) / 3, (nodes[i + 1] - nodes[i]) / 3};
}

NurbsSurface patches(const SurfaceFunction& f, const std::vector<double>& us, const std::vector<double>& vs) {
    NurbsSurface surface;
    surface.degreeU = surface.degreeV = 3;
    surface.knotsU = pieceKnots(us);
    surface.knotsV = pieceKnots(vs);
    const std::array<double, 4> box{us.front(), us.back(), vs.front(), vs.back()};
    for (std::size_t j = 0; j < vs.size(); ++j) {
        std::vector<Vec3> rows[2];
        for (std::size_t i = 0; i < us.size(); ++i) {
            const Node n = nodeAt(f, us[i], vs[j], box);
            int row = 0;
            for (const double dv : steps(vs, j)) {
                for (const double du : steps(us, i))
                    rows[row].push_back(n.point + du * n.byU + dv * n.byV + du * dv * n.twist);
                ++row;
            }
        }
        for (const auto& row : rows) surface.points.insert(surface.points.end(), row.begin(), row.end());
    }
    return surface;
}

/// How far the surface is off along u and along v, between the nodes.
void offsets(const SurfaceFunction& f, const NurbsSurface& s, const std::vector<double>& us,
             const std::vector<double>& vs, double& alongU, double& alongV) {
    alongU = alongV = 0;
    for (std::size_t j = 0; j + 1 < vs.size(); ++j)
        for (std::size_t i = 0; i + 1 < us.size(); ++i) {
            const double u = (us[i] + us[i + 1]) / 2, v = (vs[j] + vs[j + 1]) / 2;
            alongU = std::max(alongU, distance(f(u, vs[j]), s.at(u, vs[j])));
            alongV = std::max(alongV, distance(f(us[i], v), s.at(us[i], v)));
            const double both = distance(f(u, v), s.at(u, v)) / 2;
            alongU = std::max(alongU, both);
            alongV = std::max(alongV, both);
        }
}

} // namespace

bool fitCurve(const CurveFunction& f, double start, double end, double tolerance, NurbsCurve& fitted) {
    if (!(end > start)) return false;
    std::vector<double> nodes = evenNodes(start, end, 4);
    do {
        if (nodes.size() > MAX_PIECES) return false;
        fitted = piecewise(f, nodes);
    } while (refine(f, fitted, tolerance / 2, nodes));
    return fitted.isValid();
}

bool fitSurface(const SurfaceFunction& f, double u0, double u1, double v0, double v1, double tolerance,
                NurbsSurface& fitted) {
    if (!(u1 > u0) || !(v1 > v0)) return false;
    std::size_t countU = 2, countV = 2;
    while (countU * countV <= MAX_PATCHES) {
        const std::vector<double> us = evenNodes(u0, u1, countU), vs = evenNodes(v0, v1, countV);
        fitted = patches(f, us, vs);
        double alongU = 0, alongV = 0;
        offsets(f, fitted, us, vs, alongU, alongV);
        if (alongU <= tolerance / 4 && alongV <= tolerance / 4) return fitted.isValid();
        if (!(alongU <= tolerance / 4)) countU *= 2;
        if (!(alongV <= tolerance / 4)) countV *= 2;
    }
    return false;
}

double nearestOnCurve(const CurveFunction& f, double start, double end, Vec3 point) {
    constexpr int SAMPLES = 64;
    double best = start, bestDistance = distance(f(start), point);
    for (int i = 1; i <= SAMPLES; ++i) {
        const double t = start + (end - start) * i / SAMPLES, d = distance(f(t), point);
        if (d < bestDistance) {
            best = t;
            bestDistance = d;
        }
    }
    double step = (end - start) / SAMPLES;
    for (int i = 0; i < 100 && step > 1e-16 * (std::abs(best) + 1); ++i) {
        bool isBetter = false;
        const Vec3 tangent = derivative(f, best, start, end);
        const double square = dot(tangent, tangent);
        const double newton = square > 0 ? best + dot(point - f(best), tangent) / square : best;
        for (const double t : {newton, best - step, best + step}) {
            const double at = std::clamp(t, start, end), d = distance(f(at), point);
            if (d < bestDistance) {
                best = at;
                bestDistance = d;
                isBetter = true;
            }
        }
        if (!isBetter) step /= 4;
    }
    return best;
}

void nearestOnSurface(const SurfaceFunction& f, const double box[4], Vec3 point, double& u, double& v) {
    for (int i = 0; i < 30; ++i) {
        const Vec3 off = point - f(u, v);
        const Vec3 byU = derivative([&](double x) { return f(x, v); }, u, box[0], box[1]);
        const Vec3 byV = derivative([&](double x) { return f(u, x); }, v, box[2], box[3]);
        const double a = dot(byU, byU), b = dot(byU, byV), c = dot(byV, byV), det = a * c - b * b;
        if (!(std::abs(det) > 1e-30)) return;
        const double du = (c * dot(byU, off) - b * dot(byV, off)) / det;
        const double dv = (a * dot(byV, off) - b * dot(byU, off)) / det;
        u = std::clamp(u + du, box[0], box[1]);
        v = std::clamp(v + dv, box[2], box[3]);
        if (std::abs(du) < 1e-13 * (box[1] - box[0]) && std::abs(dv) < 1e-13 * (box[3] - box[2])) return;
    }
}

} // namespace geometry
