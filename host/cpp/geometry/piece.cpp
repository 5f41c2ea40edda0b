#include "geometry/piece.h"

#include <algorithm>

namespace host {

Piece makeLine(const RPT& start, const RPT& end) {
    Piece p;
    p.start = start;
    p.end = end;
    return p;
}

Piece makeArc(const RPT& start, const RPT& end, const RPT& centre, int sense) {
    Piece p = makeLine(start, end);
    p.centre = centre;
    p.sense = sense;
    p.radius = distance(start, centre);
    return p;
}

// Angle from `from` to `to` about the centre in the arc's sense, in [0, 2 pi).
static double turnBetween(const Piece& arc, const RPT& from, const RPT& to) {
    const RPT u = from - arc.centre;
    const RPT v = to - arc.centre;
    const double angle = arc.sense * std::atan2(cross(u, v), dot(u, v));
    return angle < 0.0 ? angle + 2 * kPi : angle;
}

double Piece::sweep() const {
    if (!isArc()) return 0.0;
    const double turn = turnBetween(*this, start, end);
    const bool whole = start.x == end.x && start.y == end.y;
    return sense * (whole || turn == 0.0 ? 2 * kPi : turn);
}

double Piece::length() const {
    return isArc() ? radius * std::fabs(sweep()) : distance(start, end);
}

RPT Piece::pointAt(double t) const {
    if (t <= 0.0) return start;
    if (t >= 1.0) return end;
    if (!isArc()) return start + t * (end - start);
    return polar(centre, radius, angleOf(start - centre) + t * sweep());
}

RPT Piece::startDirection() const {
    return isArc() ? sense * unit(leftOf(start - centre)) : unit(end - start);
}

RPT Piece::endDirection() const {
    return isArc() ? sense * unit(leftOf(end - centre)) : unit(end - start);
}

Piece Piece::reversed() const {
    Piece r = *this;
    std::swap(r.start, r.end);
    r.sense = -sense;
    return r;
}

double Piece::signedArea() const {
    const double chord = 0.5 * cross(start, end);
    if (!isArc()) return chord;
    const double angle = sweep();
    return chord + 0.5 * radius * radius * (angle - std::sin(angle));
}

// ---- boxes -----------------------------------------------------------------------------------------

void PieceBox::add(const PieceBox& o) {
    minX = std::min(minX, o.minX);
    minY = std::min(minY, o.minY);
    maxX = std::max(maxX, o.maxX);
    maxY = std::max(maxY, o.maxY);
}

PieceBox boxOf(const Piece& piece) {
    PieceBox box{std::min(piece.start.x, piece.end.x), std::min(piece.start.y, piece.end.y),
                 std::max(piece.start.x, piece.end.x), std::max(piece.start.y, piece.end.y)};
    if (!piece.isArc()) return box;
    const double sweep = std::fabs(piece.sweep());
    const RPT quadrants[4] = {{1, 0}, {0, 1}, {-1, 0}, {0, -1}};
    for (const RPT& q : quadrants) {
        const RPT p = piece.centre + piece.radius * q;
        if (turnBetween(piece, piece.start, p) <= sweep) box.add({p.x, p.y, p.x, p.y});
    }
    return box;
}

// ---- meetings --------------------------------------------------------------------------------------

static void addPoint(PieceMeetings& m, const RPT& p) {
    if (m.count < 4) m.points[m.count++] = p;
}

static void lineLine(const Piece& a, const Piece& b, PieceMeetings& out) {
    const RPT u = a.end - a.start;
    const RPT v = b.end - b.start;
    const double det = cross(u, v);
    if (!(std::fabs(det) > 1e-12 * length(u) * length(v))) return;
    addPoint(out, a.start + (cross(b.start - a.start, v) / det) * u);
}

static void lineCircle(const Piece& line, const Piece& circle, PieceMeetings& out) {
    const RPT u = unit(line.end - line.start);
    const double along = dot(circle.centre - line.start, u);
    const RPT foot = line.start + along * u;
    const double off = distance(foot, circle.centre);
    // A line that touches by construction misses the circle, or cuts it twice, by rounding.
    if (off > circle.radius * (1 + 1e-12)) return;
    const double half = std::sqrt(std::max(0.0, (circle.radius - off) * (circle.radius + off)));
    addPoint(out, foot + (-half) * u);
    if (half > 0.0) addPoint(out, foot + half * u);
}

static void circleCircle(const Piece& a, const Piece& b, PieceMeetings& out) {
    const RPT d = b.centre - a.centre;
    const double gap = length(d);
    if (gap == 0.0 || gap > (a.radius + b.radius) * (1 + 1e-12)) return;
    const double along = 0.5 * (gap + (a.radius - b.radius) * (a.radius + b.radius) / gap);
    if (std::fabs(along) > a.radius * (1 + 1e-12)) return;
    const double half = std::sqrt(std::max(0.0, (a.radius - along) * (a.radius + along)));
    const RPT u = unit(d);
    const RPT foot = a.centre + along * u;
    addPoint(out, foot + half * leftOf(u));
    if (half > 0.0) addPoint(out, foot + (-half) * leftOf(u));
}

PieceMeetings carrierMeetings(const Piece& a, const Piece& b) {
    PieceMeetings out;
    if (a.isArc() && b.isArc())
        circleCircle(a, b, out);
    else if (a.isArc())
        lineCircle(b, a, out);
    else if (b.isArc())
        lineCircle(a, b, out);
    else
        lineLine(a, b, out);
    return out;
}

bool isOn(const Piece& piece, const RPT& p, double eps) {
    if (distance(p, piece.start) <= eps || distance(p, piece.end) <= eps) return true;
    if (piece.isArc()) return turnBetween(piece, piece.start, p) <= std::fabs(piece.sweep());
    const RPT u = piece.end - piece.start;
    const double along = dot(p - piece.start, u);
    return along >= 0.0 && along <= dot(u, u);
}

double distanceToCarrier(const Piece& piece, const RPT& p) {
    if (piece.isArc()) return std::fabs(distance(p, piece.centre) - piece.radius);
    return std::fabs(cross(unit(piece.end - piece.start), p - piece.start));
}

RPT footOnCarrier(const Piece& piece, const RPT& p) {
    if (piece.isArc()) return piece.centre + piece.radius * unit(p - piece.centre);
    const RPT u = unit(piece.end - piece.start);
    return piece.start + dot(p - piece.start, u) * u;
}

static bool sameCarrier(const Piece& a, const Piece& b, double eps) {
    if (a.isArc() != b.isArc()) return false;
    if (a.isArc()) return distance(a.centre, b.centre) <= eps && std::fabs(a.radius - b.radius) <= eps;
    return distanceToCarrier(a, b.start) <= eps && distanceToCarrier(a, b.end) <= eps;
}

// A point of the piece that is none of its ends.
static bool isWithin(const Piece& piece, const RPT& p, double eps) {
    return isOn(piece, p, 0) && distance(p, piece.start) > 2 * eps && distance(p, piece.end) > 2 * eps;
}

// The ends of either piece that lie on the other: they bound what the two share. Two halves of a circle share
// both ends and no stretch.
static PieceMeetings sharedStretch(const Piece& a, const Piece& b, double eps) {
    PieceMeetings out;
    for (const RPT& p : {b.start, b.end}) {
        if (isOn(a, p, eps)) addPoint(out, p);
        out.overlap = out.overlap || isWithin(a, p, eps);
    }
    for (const RPT& p : {a.start, a.end}) {
        if (isOn(b, p, eps)) addPoint(out, p);
        out.overlap = out.overlap || isWithin(b, p, eps);
    }
    // Pieces between the same ends share all or nothing.
    out.overlap = out.overlap || (out.count > 0 && isWithin(b, a.pointAt(0.5), eps));
    return out;
}

PieceMeetings meetingsOf(const Piece& a, const Piece& b, double eps) {
    if (sameCarrier(a, b, eps)) return sharedStretch(a, b, eps);
    const PieceMeetings all = carrierMeetings(a, b);
    PieceMeetings out;
    for (int i = 0; i < all.count; ++i)
        if (isOn(a, all.points[i], eps) && isOn(b, all.points[i], eps)) addPoint(out, all.points[i]);
    return out;
}

// ---- chords and trimming ---------------------------------------------------------------------------

int chordCount(double radius, double sweep, double tolerance) {
    // More than this is below what a drawing can hold of a circle.
    const double allowed = std::max(tolerance, 1e-7 * radius);
    if (!(radius > 0.0) || allowed >= radius) return std::fabs(sweep) > kPi ? 4 : 2;
    const double step = 2.0 * std::acos(1.0 - allowed / radius);
    return std::max(1, static_cast<int>(std::ceil(std::fabs(sweep) / step)));
}

// A piece cut at its very start, or beside it by rounding, would run the other way or all round.
static bool isCutOf(const Piece& cut, const Piece& whole, double eps) {
    return cut.length() <= whole.length() && distance(cut.start, cut.end) > eps;
}

bool trimToMeeting(Piece& first, Piece& second, const RPT& corner, double eps) {
    const PieceMeetings meetings = meetingsOf(first, second, eps);
    if (meetings.count == 0 || meetings.overlap) return false;
    const RPT* nearest =
        std::min_element(meetings.points, meetings.points + meetings.count, [&](const RPT& a, const RPT& b) {
            return distance(a, corner) < distance(b, corner);
        });
    Piece before = first;
    Piece behind = second;
    before.end = behind.start = *nearest;
    if (!isCutOf(before, first, eps) || !isCutOf(behind, second, eps)) return false;
    first = before;
    second = behind;
    return true;
}

} // namespace host
