// Tolerance, lines and intersections of the plane.
#include "ge.h"

#include "geometry/piece.h"

#include <algorithm>

using namespace host;

static constexpr double kDefaultEpsi = 1e-9;
static double epsi = kDefaultEpsi;

double GeGetEpsi() {
    return epsi;
}

void GeSetEpsi(double tolerance) {
    epsi = tolerance > 0.0 && std::isfinite(tolerance) ? tolerance : kDefaultEpsi;
}

double GeEpsiGetTol() {
    return epsi;
}

static void lineAlong(const RPT& point, const RPT& direction, double* a, double* b, double* c) {
    *a = -direction.y;
    *b = direction.x;
    *c = -(*a * point.x + *b * point.y);
}

int GeLineByPtPt(const RPT& from, const RPT& to, double* a, double* b, double* c) {
    const double size = distance(from, to);
    if (!(size > 0.0) || !std::isfinite(size)) return 3011;
    lineAlong(from, unit(to - from), a, b, c);
    return 0;
}

int GeLineByPtAng(const RPT& point, double angle, double* a, double* b, double* c) {
    if (!std::isfinite(angle)) return 3011;
    lineAlong(point, {std::cos(angle), std::sin(angle)}, a, b, c);
    return 0;
}

int GeIsectLinLin(double a1, double b1, double c1, double a2, double b2, double c2, RPT* point) {
    const double det = a1 * b2 - a2 * b1;
    if (!(std::fabs(det) > 1e-12)) return 1005;
    *point = {(b1 * c2 - b2 * c1) / det, (a2 * c1 - a1 * c2) / det};
    return 0;
}

int GeRptIsLinLinByPts(const RPT& p1, const RPT& p2, const RPT& q1, const RPT& q2, RPT* point) {
    const PieceMeetings found = carrierMeetings(makeLine(p1, p2), makeLine(q1, q2));
    if (found.count == 0) return 1005;
    *point = found.points[0];
    return 0;
}

int GeRptIsArcLine(const RPT& start, const RPT& end, const RPT& centre, const RPT& p, const RPT& q,
                   RPT points[2], int* count) {
    if (!(distance(p, q) > 0.0)) return 3011;
    const Piece arc = makeArc(start, end, centre, 1);
    const PieceMeetings found = carrierMeetings(arc, makeLine(p, q));
    int n = 0;
    for (int i = 0; i < found.count; ++i)
        if (isOn(arc, found.points[i], 1e-9 * arc.radius)) points[n++] = found.points[i];
    if (n == 0) return 1005;
    *count = n;
    return 0;
}

int GeRptIsDrawDraw(const RPT& p1, const RPT& p2, const RPT& q1, const RPT& q2, RPT* point) {
    const double eps = 1e-12 * (distance(p1, p2) + distance(q1, q2));
    const PieceMeetings found = meetingsOf(makeLine(p1, p2), makeLine(q1, q2), eps);
    if (found.count == 0) return 1005;
    *point = *std::min_element(found.points, found.points + found.count, [&](const RPT& a, const RPT& b) {
        return dot(a - p1, p2 - p1) < dot(b - p1, p2 - p1);
    });
    return 0;
}
