#include "geometry/band.h"

#include <algorithm>

namespace host {

// A mitre reaches at most this often the distance of the edge; it ends at corners of about 29 degrees.
static constexpr double kMitreLimit = 4.0;
// Sine of a turn that is none.
static constexpr double kStraight = 1e-9;

double Band::widest() const {
    return std::max({left[0], left[1], right[0], right[1]});
}

double areaOf(const PieceLoop& loop) {
    // About a point of the loop, so that a place far from the origin costs no precision.
    double area = 0;
    for (Piece p : loop) {
        const RPT base = loop.front().start;
        p.start = p.start - base;
        p.end = p.end - base;
        p.centre = p.centre - base;
        area += p.signedArea();
    }
    return area;
}

void reverseLoop(PieceLoop& loop) {
    std::reverse(loop.begin(), loop.end());
    for (Piece& p : loop) p = p.reversed();
}

PieceLoop withoutPoints(const PieceLoop& pieces, double eps) {
    PieceLoop loop;
    for (Piece p : pieces) {
        if (p.length() <= eps) continue;
        if (!loop.empty()) p.start = loop.back().end;
        loop.push_back(p);
    }
    if (loop.size() > 1) loop.back().end = loop.front().start;
    return loop;
}

// ---- edges -----------------------------------------------------------------------------------------

static std::vector<Piece> taperedArc(const Band& band, int side, const double d[2], const BandLimits& limits,
                                     bool* sound) {
    const Piece& c = band.centre;
    const double sweep = c.sweep();
    const double startAngle = angleOf(c.start - c.centre);
    const int inward = c.sense * side;
    const double widest = c.radius + std::max(d[0], d[1]);
    const int n = std::max(4, chordCount(widest, sweep, limits.tolerance));
    std::vector<Piece> edge;
    RPT from{0, 0};
    for (int i = 0; i <= n; ++i) {
        const double t = static_cast<double>(i) / n;
        const double radius = c.radius - inward * (d[0] + t * (d[1] - d[0]));
        if (radius < -limits.eps) *sound = false;
        const RPT to = polar(c.centre, std::max(0.0, radius), startAngle + t * sweep);
        if (i > 0) edge.push_back(makeLine(from, to));
        from = to;
    }
    return edge;
}

std::vector<Piece> edgeOf(const Band& band, int side, const BandLimits& limits, bool* sound) {
    const Piece& c = band.centre;
    const double* d = side > 0 ? band.left : band.right;
    if (!c.isArc()) {
        const RPT across = side * leftOf(c.startDirection());
        return {makeLine(c.start + d[0] * across, c.end + d[1] * across)};
    }
    if (d[0] != d[1]) return taperedArc(band, side, d, limits, sound);
    const double radius = c.radius - c.sense * side * d[0];
    if (radius < -limits.eps) *sound = false;
    if (radius <= limits.eps) return {makeLine(c.centre, c.centre)};
    Piece edge = c;
    edge.radius = radius;
    edge.start = c.centre + radius * unit(c.start - c.centre);
    const bool whole = c.start.x == c.end.x && c.start.y == c.end.y;
    edge.end = whole ? edge.start : c.centre + radius * unit(c.end - c.centre);
    return {edge};
}

bool mitreOf(const Piece& in, const Piece& out, const RPT& corner, double limit, RPT* mitre) {
    const RPT u = in.endDirection();
    const RPT v = out.startDirection();
    const double det = cross(u, v);
    if (!(std::fabs(det) > 1e-12)) return false;
    const RPT gap = out.start - in.end;
    const double ahead = cross(gap, v) / det;
    const double back = cross(gap, u) / det; // from the mitre on to the start of `out`
    if (!(ahead > 0.0) || !(back < 0.0)) return false;
    *mitre = in.end + ahead * u;
    return distance(*mitre, corner) <= limit;
}

double mitreLimit(const Band& in, const Band& out, int side) {
    const double before = side > 0 ? in.left[1] : in.right[1];
    const double behind = side > 0 ? out.left[0] : out.right[0];
    return std::fabs(before - behind) <= 1e-9 * (before + behind) ? kMitreLimit * before : 0.0;
}

// ---- one side of a chain ---------------------------------------------------------------------------

namespace {

class SideBuilder {
public:
    SideBuilder(const BandChain& chain, int side, const BandLimits& limits)
        : chain_(chain), side_(side), limits_(limits) {}
    /// The edge of the whole chain, in its direction.
    std::vector<Piece> build(bool* sound);

private:
    void join(const Band& before, const Band& behind, Piece& in, Piece& out);
    void joinInside(const RPT& corner, Piece& in, Piece& out);
    void joinOutside(const RPT& corner, double limit, Piece& in, Piece& out);
    bool weld(Piece& in, Piece& out, double within) const;
    void fill(const RPT& from, const RPT& to) { between_.push_back(makeLine(from, to)); }

    const BandChain& chain_;
    int side_;
    const BandLimits& limits_;
    std::vector<Piece> between_; ///< what a corner puts between two edges
    bool sound_ = true;
};

// Nearly tangent pieces leave a gap that no intersection can be found in.
bool SideBuilder::weld(Piece& in, Piece& out, double within) const {
    const double gap = distance(in.end, out.start);
    if (gap > within) return false;
    const bool tiny = out.isArc() && out.length() <= 4 * gap;
    out.start = in.end;
    if (tiny) out = makeLine(out.start, out.end);
    return true;
}

void SideBuilder::joinInside(const RPT& corner, Piece& in, Piece& out) {
    if (trimToMeeting(in, out, corner, limits_.eps)) return;
    if (weld(in, out, limits_.tolerance)) return;
    sound_ = false;
}

void SideBuilder::joinOutside(const RPT& corner, double limit, Piece& in, Piece& out) {
    RPT mitre;
    if (!mitreOf(in, out, corner, limit, &mitre)) {
        fill(in.end, out.start);
        return;
    }
    if (in.isArc()) fill(in.end, mitre);
    if (out.isArc()) fill(mitre, out.start);
    if (!in.isArc()) in.end = mitre;
    if (!out.isArc()) out.start = mitre;
}

void SideBuilder::join(const Band& before, const Band& behind, Piece& in, Piece& out) {
    between_.clear();
    if (weld(in, out, std::max(limits_.eps, 1e-3 * limits_.tolerance))) return;
    const RPT u = before.centre.endDirection();
    const RPT v = behind.centre.startDirection();
    const double turn = side_ * cross(u, v);
    const RPT corner = behind.centre.start;
    if (std::fabs(turn) <= kStraight) {
        if (dot(u, v) < 0.0) sound_ = false;
        fill(in.end, out.start);
    } else if (turn < 0.0) {
        joinOutside(corner, mitreLimit(before, behind, side_), in, out);
    } else if (mitreLimit(before, behind, side_) > 0.0) {
        joinInside(corner, in, out);
    } else {
        sound_ = false; // the corner of the wider band stands out of the narrower one
    }
}

std::vector<Piece> SideBuilder::build(bool* sound) {
    std::vector<Piece> side;
    const std::vector<Band>& bands = chain_.bands;
    for (std::size_t i = 0; i < bands.size() && sound_; ++i) {
        std::vector<Piece> edge = edgeOf(bands[i], side_, limits_, &sound_);
        if (i > 0) {
            join(bands[i - 1], bands[i], side.back(), edge.front());
            side.insert(side.end(), between_.begin(), between_.end());
        }
        side.insert(side.end(), edge.begin(), edge.end());
    }
    if (chain_.closed && sound_) {
        join(bands.back(), bands.front(), side.back(), side.front());
        side.insert(side.end(), between_.begin(), between_.end());
    }
    *sound = *sound && sound_;
    return side;
}

PieceLoop openLoop(std::vector<Piece> right, std::vector<Piece> left, double eps) {
    reverseLoop(left);
    PieceLoop loop = std::move(right);
    loop.push_back(makeLine(loop.back().end, left.front().start));
    loop.insert(loop.end(), left.begin(), left.end());
    loop.push_back(makeLine(loop.back().end, loop.front().start));
    return withoutPoints(loop, eps);
}

} // namespace

bool outlineChain(const BandChain& chain, const BandLimits& limits, std::vector<PieceLoop>* loops) {
    bool sound = true;
    std::vector<Piece> right = SideBuilder(chain, -1, limits).build(&sound);
    if (!sound) return false;
    std::vector<Piece> left = SideBuilder(chain, 1, limits).build(&sound);
    if (!sound) return false;
    if (!chain.closed) {
        loops->push_back(openLoop(std::move(right), std::move(left), limits.eps));
        return areaOf(loops->back()) > 0.0;
    }
    reverseLoop(left);
    const PieceLoop a = withoutPoints(right, limits.eps);
    const PieceLoop b = withoutPoints(left, limits.eps);
    const double areaA = a.empty() ? 0.0 : areaOf(a);
    const double areaB = b.empty() ? 0.0 : areaOf(b);
    // One loop is the outer one; the other, its hole, may have shrunk to nothing.
    if (std::max(areaA, areaB) <= 0.0 || std::min(areaA, areaB) > 0.0) return false;
    if (!a.empty()) loops->push_back(a);
    if (!b.empty()) loops->push_back(b);
    return true;
}

// ---- sweep -----------------------------------------------------------------------------------------

// Each band covers what its own outline encloses, and the gap outside each corner is a wedge beside it. Their
// outlines, all run counter-clockwise, share the ends of the bands in opposite directions: added up, these
// cancel out, and what is left runs along the sides, round the outside of a corner and through its point on
// the inside.
static void turnCorner(const Band& before, const Band& behind, int side, RPT to, PieceLoop& loop) {
    const RPT u = before.centre.endDirection();
    const RPT v = behind.centre.startDirection();
    const double turn = side * cross(u, v);
    const RPT from = loop.back().end;
    const RPT corner = behind.centre.start;
    RPT by = corner;
    const bool inside = turn > kStraight || dot(u, v) < 0.0;
    const Piece out = makeLine(to, to + v);
    if (turn < -kStraight ? mitreOf(loop.back(), out, corner, mitreLimit(before, behind, side), &by)
                          : inside) {
        loop.push_back(makeLine(from, by));
        loop.push_back(makeLine(by, to));
    } else {
        loop.push_back(makeLine(from, to));
    }
}

static PieceLoop sweepSide(const BandChain& chain, int side, const BandLimits& limits) {
    const std::vector<Band>& bands = chain.bands;
    PieceLoop loop;
    bool sound = true;
    for (std::size_t i = 0; i < bands.size(); ++i) {
        const std::vector<Piece> edge = edgeOf(bands[i], side, limits, &sound);
        if (i > 0) turnCorner(bands[i - 1], bands[i], side, edge.front().start, loop);
        loop.insert(loop.end(), edge.begin(), edge.end());
    }
    if (chain.closed) turnCorner(bands.back(), bands.front(), side, loop.front().start, loop);
    return loop;
}

void sweepChain(const BandChain& chain, const BandLimits& limits, std::vector<PieceLoop>* loops) {
    PieceLoop right = sweepSide(chain, -1, limits);
    PieceLoop left = sweepSide(chain, 1, limits);
    if (!chain.closed) {
        loops->push_back(openLoop(std::move(right), std::move(left), limits.eps));
        return;
    }
    reverseLoop(left);
    for (const PieceLoop& side : {right, left}) {
        PieceLoop loop = withoutPoints(side, limits.eps);
        if (!loop.empty()) loops->push_back(std::move(loop));
    }
}

} // namespace host
