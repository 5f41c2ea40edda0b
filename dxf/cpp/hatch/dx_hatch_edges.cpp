// Edges of a hatch's loops as entities that can be drawn.
#include "../import/dx_entity_base.h"
#include "dx_hatch_import.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr double fullTurn = 6.283185307179586;
constexpr double quarterTurn = fullTurn / 4;
constexpr double radiansADegree = fullTurn / 360;

/// Parameter of the point of an ellipse that is seen from its centre at `angle`.
double parameterOf(double angle, double ratio) {
    const double t = std::atan2(std::sin(angle), std::cos(angle) * ratio);
    return t < -quarterTurn ? t + fullTurn : t;
}

RPT onEllipse(const DX_HATCH_EDGE& e, double angle) {
    const double t = parameterOf(angle, e.r);
    const double u = std::cos(t), v = std::sin(t) * e.r;
    return {e.p.x + u * e.q.x - v * e.q.y, e.p.y + u * e.q.y + v * e.q.x};
}

struct Ends {
    RPT start, end;
};

Ends endsOfSpline(const DX_SPLINE_TYPE& spline, const DX_HATCH_EDGE& e) {
    if (spline.controlPoints.empty()) return {e.p, e.p};
    const RPT3& a = spline.controlPoints.front().point;
    const RPT3& b = spline.controlPoints.back().point;
    return {{a.x, a.y}, {b.x, b.y}};
}

/// Ends of an edge in object coordinates. A clockwise arc counts its angles clockwise; an ellipse is taken as
/// told.
Ends endsOf(const DX_HATCH_PATH& path, const DX_HATCH_EDGE& e) {
    const double sense = e.counterClockwise ? 1 : -1;
    const auto onArc = [&](double degrees) {
        const double a = sense * degrees * radiansADegree;
        return RPT{e.p.x + e.r * std::cos(a), e.p.y + e.r * std::sin(a)};
    };
    switch (e.type) {
    case DX_EDGE_LINE: return {e.p, e.q};
    case DX_EDGE_ARC: return {onArc(e.from), onArc(e.to)};
    case DX_EDGE_ELLIPSE: return {onEllipse(e, e.from), onEllipse(e, e.to)};
    case DX_EDGE_SPLINE: return endsOfSpline(path.splines[static_cast<std::size_t>(e.spline)], e);
    default: return {e.p, e.p};
    }
}

DX_HATCH_EDGE mirrored(DX_HATCH_EDGE e) {
    const double turn = e.type == DX_EDGE_ARC ? 360 : fullTurn;
    e.from = turn - e.from;
    e.to = turn - e.to;
    return e;
}

bool canMirror(const DX_HATCH_EDGE& e) {
    return !e.counterClockwise && (e.type == DX_EDGE_ARC || e.type == DX_EDGE_ELLIPSE);
}

double distance(const RPT& a, const RPT& b) {
    return std::hypot(a.x - b.x, a.y - b.y);
}

/// How far an edge is from its neighbours: from the one before at its start and the one behind at its end. A
/// neighbour that could be mirrored too counts the way that is nearer, and so does one that runs backwards.
class LoopGaps {
public:
    explicit LoopGaps(const DX_HATCH_PATH& path) {
        for (const DX_HATCH_EDGE& e : path.edges) {
            ends_.push_back(endsOf(path, e));
            other_.push_back(canMirror(e) ? endsOf(path, mirrored(e)) : ends_.back());
        }
    }
    double gap(std::size_t i, bool asMirrored) const {
        const std::size_t n = ends_.size();
        const Ends& own = asMirrored ? other_[i] : ends_[i];
        return std::max(nearest((i + n - 1) % n, own.start), nearest((i + 1) % n, own.end));
    }

private:
    double nearest(std::size_t i, const RPT& p) const {
        return std::min({distance(ends_[i].start, p), distance(ends_[i].end, p), distance(other_[i].start, p),
                         distance(other_[i].end, p)});
    }
    std::vector<Ends> ends_, other_;
};

} // namespace

std::vector<DX_HATCH_EDGE> DxMendHatchEdges(const DX_HATCH_PATH& path) {
    std::vector<DX_HATCH_EDGE> edges = path.edges;
    if (edges.size() < 2 || std::none_of(edges.begin(), edges.end(), canMirror)) return edges;
    const LoopGaps gaps(path);
    for (std::size_t i = 0; i < edges.size(); ++i) {
        if (!canMirror(edges[i])) continue;
        const double size =
            edges[i].type == DX_EDGE_ARC ? std::fabs(edges[i].r) : std::hypot(edges[i].q.x, edges[i].q.y);
        const double near = size * 1e-4; // ends of real files are off by their rounding
        if (gaps.gap(i, false) > near && gaps.gap(i, true) <= near) edges[i] = mirrored(edges[i]);
    }
    return edges;
}

// ---- records -------------------------------------------------------------------------------------------

DX_VERTEX_TYPE DxHatchVertex(const DX_HATCH_TYPE& hatch, const DX_HATCH_EDGE& edge) {
    DX_VERTEX_TYPE vertex{};
    vertex.location = {edge.p.x, edge.p.y, hatch.elevation.z};
    vertex.bulge = edge.r;
    vertex.style = -1;
    return vertex;
}

template <class Record>
static Record begin(const DX_HATCH_TYPE& hatch) {
    Record record{};
    DxCopyEntityBase(&record.base, &hatch.base);
    std::copy(hatch.extrusion, hatch.extrusion + 3, record.extrusion);
    return record;
}

DX_LINE_TYPE DxHatchLine(const DX_HATCH_TYPE& hatch, const DX_HATCH_EDGE& edge) {
    auto line = begin<DX_LINE_TYPE>(hatch);
    line.start = {edge.p.x, edge.p.y, hatch.elevation.z};
    line.end = {edge.q.x, edge.q.y, hatch.elevation.z};
    return line;
}

DX_ARC_TYPE DxHatchArc(const DX_HATCH_TYPE& hatch, const DX_HATCH_EDGE& edge) {
    auto arc = begin<DX_ARC_TYPE>(hatch);
    arc.centre = {edge.p.x, edge.p.y, hatch.elevation.z};
    arc.radius = edge.r;
    arc.startAngle = edge.from;
    arc.endAngle = edge.to;
    arc.counterClockwise = edge.counterClockwise;
    return arc;
}

DX_ELLIPSE_TYPE DxHatchEllipse(const DX_HATCH_TYPE& hatch, const DX_HATCH_EDGE& edge) {
    auto ellipse = begin<DX_ELLIPSE_TYPE>(hatch);
    DxInitExtrusion(ellipse.extrusion); // the matrix that places it holds the hatch's
    ellipse.centre = {edge.p.x, edge.p.y, hatch.elevation.z};
    ellipse.majorAxis = {edge.q.x, edge.q.y, 0};
    ellipse.ratio = edge.r;
    ellipse.counterClockwise = edge.counterClockwise;
    ellipse.startParam = parameterOf(edge.from, edge.r);
    ellipse.endParam = parameterOf(edge.to, edge.r);
    constexpr double noise = 1e-9;
    if (std::fabs(edge.to - edge.from) > fullTurn - noise) // a whole one has one end
        ellipse.endParam = ellipse.startParam + (edge.counterClockwise ? fullTurn : -fullTurn);
    return ellipse;
}

DX_SPLINE_TYPE DxHatchSpline(const DX_HATCH_TYPE& hatch, const DX_HATCH_PATH& path,
                             const DX_HATCH_EDGE& edge) {
    DX_SPLINE_TYPE spline = path.splines[static_cast<std::size_t>(edge.spline)];
    DxCopyEntityBase(&spline.base, &hatch.base);
    std::copy(hatch.extrusion, hatch.extrusion + 3, spline.extrusion);
    for (DX_CONTROL_POINT& c : spline.controlPoints) c.point.z = hatch.elevation.z;
    return spline;
}

// ---- rectangles ----------------------------------------------------------------------------------------

int IsIntersection(const RPT* mins, const RPT* maxes, int i, int j) {
    const auto isInside = [&](double x, double y) {
        return x > mins[j].x && x < maxes[j].x && y > mins[j].y && y < maxes[j].y;
    };
    return isInside(mins[i].x, mins[i].y) || isInside(maxes[i].x, mins[i].y) ||
           isInside(maxes[i].x, maxes[i].y) || isInside(mins[i].x, maxes[i].y);
}
