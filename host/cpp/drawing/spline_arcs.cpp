#include "drawing/spline_arcs.h"

#include "drawing/spline_curve.h"
#include "ge.h"

#include <algorithm>
#include <cmath>

namespace host {

namespace {

constexpr int MOST_HALVINGS = 8;
constexpr double STRAIGHT_ANGLE = 1e-9;

RPT between(const RPT& a, const RPT& b, double t) {
    return {a.x + (b.x - a.x) * t, a.y + (b.y - a.y) * t};
}

RPT pointAt(const BezierPiece& b, double t) {
    const double s = 1 - t;
    const double w[] = {s * s * s, 3 * s * s * t, 3 * s * t * t, t * t * t};
    RPT p{0, 0};
    for (int i = 0; i < 4; ++i) {
        p.x += w[i] * b[i].x;
        p.y += w[i] * b[i].y;
    }
    return p;
}

/// Direction of the curve at its start (`atEnd` false) or end: towards the next control point that lies
/// apart.
RPT tangent(const BezierPiece& b, bool atEnd) {
    for (int i = 1; i < 4; ++i) {
        const RPT& from = atEnd ? b[3 - i] : b[0];
        const RPT& to = atEnd ? b[3] : b[i];
        const RPT d{to.x - from.x, to.y - from.y};
        if (d.x != 0 || d.y != 0) return d;
    }
    return {1, 0};
}

void halve(const BezierPiece& b, BezierPiece& first, BezierPiece& second) {
    const RPT ab = between(b[0], b[1], 0.5);
    const RPT bc = between(b[1], b[2], 0.5);
    const RPT cd = between(b[2], b[3], 0.5);
    const RPT abc = between(ab, bc, 0.5);
    const RPT bcd = between(bc, cd, 0.5);
    const RPT middle = between(abc, bcd, 0.5);
    first = {b[0], ab, abc, middle};
    second = {middle, bcd, cd, b[3]};
}

UO_ELEM line(const RPT& start, const RPT& end) {
    UO_ELEM e;
    e.type = 1;
    e.start = start;
    e.end = end;
    return e;
}

UO_ELEM arc(const RPT& start, const RPT& end, const RPT& centre, short sense) {
    UO_ELEM e = line(start, end);
    e.type = sense > 0 ? 4 : 3;
    e.centre = centre;
    return e;
}

double distanceToLine(const RPT& p, const RPT& a, const RPT& b) {
    const double dx = b.x - a.x;
    const double dy = b.y - a.y;
    const double length = std::hypot(dx, dy);
    if (!(length > 0)) return std::hypot(p.x - a.x, p.y - a.y);
    return std::abs((p.x - a.x) * dy - (p.y - a.y) * dx) / length;
}

/// Whether the points of the piece lie on the chord.
bool isStraight(const BezierPiece& b, double tolerance) {
    return distanceToLine(b[1], b[0], b[3]) <= tolerance && distanceToLine(b[2], b[0], b[3]) <= tolerance;
}

/// Whether the curve's points lie on one of the two arcs. Which of them is near is decided by the distances
/// alone.
bool isNear(const BezierPiece& b, const UO_ELEM& first, const UO_ELEM& second, double tolerance) {
    const double r1 = std::hypot(first.start.x - first.centre.x, first.start.y - first.centre.y);
    const double r2 = std::hypot(second.end.x - second.centre.x, second.end.y - second.centre.y);
    for (int i = 1; i < 8; ++i) {
        const RPT p = pointAt(b, i / 8.0);
        const double off1 = std::abs(std::hypot(p.x - first.centre.x, p.y - first.centre.y) - r1);
        const double off2 = std::abs(std::hypot(p.x - second.centre.x, p.y - second.centre.y) - r2);
        if (!(std::min(off1, off2) <= tolerance)) return false;
    }
    return true;
}

void approximate(const BezierPiece& b, double tolerance, int halvings, std::vector<UO_ELEM>& out) {
    if (isStraight(b, tolerance * 0.5)) {
        out.push_back(line(b[0], b[3]));
        return;
    }
    const RPT t0 = tangent(b, false);
    const RPT t2 = tangent(b, true);
    BezierPiece first;
    BezierPiece second;
    halve(b, first, second);
    RPT c1;
    RPT c2;
    RPT join;
    double r1 = 0;
    double r2 = 0;
    short s1 = 0;
    short s2 = 0;
    if (GeUtilInterpolByArc(b[0], t0, b[3], t2, tangent(first, true), 0, STRAIGHT_ANGLE, 1, &c1, &r1, &s1,
                            &c2, &r2, &s2, &join) == 0 &&
        s1 != 0 && s2 != 0) {
        const UO_ELEM a1 = arc(b[0], join, c1, s1);
        const UO_ELEM a2 = arc(join, b[3], c2, s2);
        if (halvings == 0 || isNear(b, a1, a2, tolerance)) {
            out.push_back(a1);
            out.push_back(a2);
            return;
        }
    }
    if (halvings == 0) {
        out.push_back(line(b[0], b[3]));
        return;
    }
    approximate(first, tolerance, halvings - 1, out); // at most MOST_HALVINGS deep
    approximate(second, tolerance, halvings - 1, out);
}

} // namespace

std::vector<UO_ELEM> splineArcs(const Spline& spline, double tolerance) {
    std::vector<UO_ELEM> out;
    for (const BezierPiece& piece : splinePieces(spline)) approximate(piece, tolerance, MOST_HALVINGS, out);
    return out;
}

} // namespace host
