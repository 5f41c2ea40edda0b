// Whether the host's drawing of a dimension shows what the file's block does, and what to do where it
// doesn't: doglegs of ordinates, extension lines that cross the dimension line, lines from a centre to the
// circle.
#include "../host/dx_active_pattern.h"
#include "../host/dx_frame.h"
#include "../host/dx_host.h"
#include "dx_codes.h"
#include "dx_dim_import.h"

#include <algorithm>
#include <cmath>

namespace {

enum DrawingCode { DRAW = 1, MOVE = 2, ARC = 4 };
constexpr double fullTurn = 6.283185307179586;

/// A line, or an arc about `centre` that runs counter-clockwise.
struct Stroke {
    RPT from, to, centre;
    bool isArc;

    double sweep() const {
        const double turn =
            std::atan2(to.y - centre.y, to.x - centre.x) - std::atan2(from.y - centre.y, from.x - centre.x);
        return turn > 1e-12 ? turn : turn + fullTurn; // ends that agree make a circle
    }
    double length() const { return isArc ? DxDimDistance(from, centre) * sweep() : DxDimDistance(from, to); }
    RPT at(double t) const {
        if (!isArc) return {from.x + t * (to.x - from.x), from.y + t * (to.y - from.y)};
        const double angle = std::atan2(from.y - centre.y, from.x - centre.x) + t * sweep();
        const double radius = DxDimDistance(from, centre);
        return {centre.x + radius * std::cos(angle), centre.y + radius * std::sin(angle)};
    }
    double distance(const RPT& p) const {
        const double ends = std::min(DxDimDistance(p, from), DxDimDistance(p, to));
        if (isArc) {
            double turn =
                std::atan2(p.y - centre.y, p.x - centre.x) - std::atan2(from.y - centre.y, from.x - centre.x);
            if (turn < 0) turn += fullTurn;
            const double off = std::fabs(DxDimDistance(p, centre) - DxDimDistance(from, centre));
            return turn <= sweep() ? std::min(off, ends) : ends;
        }
        const RPT way{to.x - from.x, to.y - from.y};
        const double square = way.x * way.x + way.y * way.y;
        const double t = square > 0 ? ((p.x - from.x) * way.x + (p.y - from.y) * way.y) / square : -1;
        return t > 0 && t < 1 ? DxDimDistance(p, at(t)) : ends;
    }
};

/// The strokes of the block, in the host's frame.
std::vector<Stroke> strokesOf(const DX_DIM_GEO& geo) {
    std::vector<Stroke> strokes;
    const auto at = [&](std::size_t i) { return DxPointToHost(geo.pts[i].x, geo.pts[i].y); };
    RPT pen{0, 0};
    for (std::size_t i = 0; i < geo.pts.size(); ++i) {
        const int code = geo.rawKinds[i];
        const RPT to = at(i);
        const bool isArc = code == ARC && i + 1 < geo.pts.size();
        if (code == DRAW || isArc) strokes.push_back({pen, to, isArc ? at(i + 1) : RPT{0, 0}, isArc});
        if (isArc) ++i; // its centre
        pen = to;
    }
    return strokes;
}

/// The strokes that the host draws of a dimension.
int strokesOf(int pat, int row, std::vector<Stroke>* strokes) {
    int linePat = 0;
    if (const int error = DxovDimLines(pat, row, &linePat)) return error;
    constexpr int draw = 1, clockwise = 3, counterClockwise = 4;
    UO_ELEM e{};
    e.patNo = linePat;
    int error = Dxovelem(DX_ELEM_FIRST, &e);
    for (; !error; error = Dxovelem(DX_ELEM_NEXT, &e)) {
        if (e.type == draw) strokes->push_back({e.start, e.end, {0, 0}, false});
        if (e.type == counterClockwise) strokes->push_back({e.start, e.end, e.centre, true});
        if (e.type == clockwise) strokes->push_back({e.end, e.start, e.centre, true});
    }
    const int released = DxovReleaseLines(linePat);
    return error == DX_ERR_NO_MORE ? released : error;
}

/// The part of the first strokes' length that lies on the others, to a 500th of their extent.
double shareOf(const std::vector<Stroke>& strokes, const std::vector<Stroke>& others) {
    constexpr int samples = 16;
    double extent = 0, all = 0, common = 0;
    for (const Stroke& s : strokes)
        extent =
            std::max({extent, DxDimDistance(strokes[0].from, s.from), DxDimDistance(strokes[0].from, s.to)});
    const double near = extent / 500;
    for (const Stroke& s : strokes) {
        const double length = s.length();
        int on = 0;
        for (int i = 0; i < samples; ++i) {
            const RPT p = s.at((i + 0.5) / samples);
            on += std::any_of(others.begin(), others.end(),
                              [&](const Stroke& o) { return o.distance(p) <= near; });
        }
        all += length;
        common += length * on / samples;
    }
    return all > 0 ? common / all : 1;
}

} // namespace

int DxDimKeepLines(const DX_DIM_GEO* seen, int pat, int row) {
    constexpr double enough = 0.97;
    constexpr std::size_t mostCompared = 400; // a block of more strokes is taken as it is
    if (!seen || seen->pts.empty()) return 0;
    const std::vector<Stroke> ofBlock = strokesOf(*seen);
    if (ofBlock.size() <= mostCompared) {
        std::vector<Stroke> own;
        if (const int error = strokesOf(pat, row, &own)) return error;
        if (shareOf(ofBlock, own) >= enough) return 0;
    }
    if (const int error = Dxovdimlines(DxDimArrowPoints(*seen, false), true)) return error;
    return DxovShowDimLines(pat, row);
}

int DxDimKeepLinesOfLast(const DX_DIM_GEO* seen, int pat) {
    if (!seen) return 0;
    int row = -1, last = -1, textRow = 0, tolRow = 0;
    while (DxovNextDim(pat, &row, &textRow, &tolRow) == 0) last = row;
    return last < 0 ? 0 : DxDimKeepLines(seen, pat, last);
}
