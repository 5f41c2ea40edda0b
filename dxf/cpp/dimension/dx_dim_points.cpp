// Points of dimensions: comparing, sorting, counting, and the arrow from what no line holds.
#include "dx_dim_decode.h"

#include "dx_dimstyle.h"
#include "ut_plane.h"

#include <algorithm>
#include <cmath>

bool DxDimSamePoint(const RPT& a, const RPT& b, double eps) {
    return std::fabs(a.x - b.x) <= eps && std::fabs(a.y - b.y) <= eps;
}

double DxDimDistance(const RPT& a, const RPT& b) {
    return std::hypot(a.x - b.x, a.y - b.y);
}

void DxDimAddPeak(std::vector<RPT>& peaks, const RPT& point) {
    const auto isKnown = [&](const RPT& p) { return DxDimSamePoint(p, point); };
    if (std::none_of(peaks.begin(), peaks.end(), isKnown)) peaks.push_back(point);
}

// ---- the arrow -----------------------------------------------------------------------------------------

/// A stroke through a tip: its extent along the line and across it. `line` is the direction of the line.
static DX_DIM_PEAK tickOf(const RPT& tip, const RPT& q0, double size, double line) {
    const double theta = std::atan2(q0.y - tip.y, q0.x - tip.x) - line;
    return {3, std::fabs(std::cos(theta) * size), std::fabs(std::sin(theta) * size)};
}

static DX_DIM_PEAK arrowOfPair(const RPT& a, const RPT& b, const RPT& q0, const RPT& q1) {
    const double size = DxDimDistance(q0, q1);
    const double line = std::atan2(b.y - a.y, b.x - a.x);
    if (UtRptOnDraw(a, q0, q1)) return tickOf(a, q0, size, line);
    if (UtRptOnDraw(b, q0, q1)) return tickOf(b, q0, size, line);
    const RPT middle{(q0.x + q1.x) / 2, (q0.y + q1.y) / 2};
    const RPT& nearer = DxDimDistance(q0, a) < DxDimDistance(q0, b) ? a : b;
    return {1, DxDimDistance(middle, nearer), size};
}

static DX_DIM_PEAK arrowOfStyle(const DX_DIM_STYLE* style) {
    if (!style) return {};
    const double length = style->reals[DIMASZ] * style->reals[DIMSCALE];
    return {style->reals[DIMTSZ] == 0 ? 1 : 3, length, 0.3 * length};
}

void DxGetPeakParms(const RPT& a, const RPT& b, int n, const std::vector<RPT>& peaks, bool hasCircle,
                    const DX_DIM_STYLE* style, DX_DIM_PEAK& peak) {
    const bool isPair = n == 4 || (n == 2 && !hasCircle);
    peak = {};
    if (n == 0 || peaks.empty()) return;
    if (hasCircle && (n == 1 || n == 2)) {
        const double radius = std::min(DxDimDistance(peaks[0], a), DxDimDistance(peaks[0], b));
        peak = {2, radius, radius};
    } else if (isPair) {
        if (peaks.size() >= 2) peak = arrowOfPair(a, b, peaks[0], peaks[1]); // one point is no arrow
    } else {
        peak = arrowOfStyle(style);
    }
}

// ---- lists ---------------------------------------------------------------------------------------------

int DxCrunchLinearPts(DX_DIM_PTS& pts, double eps) {
    constexpr std::size_t first = 4;
    if (pts.size() < first) return DX_DIM_UNDECODED;
    std::vector<bool> goes(pts.size(), false);
    for (std::size_t i = first; i < pts.size(); ++i) {
        for (std::size_t j = i + 1; j < pts.size() && !goes[i]; ++j) {
            if (goes[j] || !DxDimSamePoint(DxDimPoint(pts[i]), DxDimPoint(pts[j]), eps)) continue;
            goes[i] = goes[j] = true;
        }
    }
    std::size_t kept = 0;
    for (std::size_t i = 0; i < pts.size(); ++i)
        if (!goes[i]) pts[kept++] = pts[i];
    pts.resize(kept);
    return 0;
}

void DxSortMinMax(std::vector<RPT>& pts, const RPT& ref, bool descending) {
    std::stable_sort(pts.begin(), pts.end(), [&](const RPT& a, const RPT& b) {
        const double da = DxDimDistance(a, ref), db = DxDimDistance(b, ref);
        return descending ? da > db : da < db;
    });
}

int DxRecalcIndex(int index, const DX_DIM_PTS& rawPts) {
    const auto count = static_cast<int>(rawPts.size());
    const auto negatives = [&](int from, int to) {
        int n = 0;
        for (int i = std::max(from, 0); i <= to && i < count; ++i)
            n += rawPts[static_cast<std::size_t>(i)].kind < 0;
        return n;
    };
    const int before = negatives(0, index);
    return index + before + negatives(index + 1, index + before);
}

int DxCountDimTypes(const DX_DIM_PTS& pts) {
    const auto count = [&](int kind) {
        return std::count_if(pts.begin(), pts.end(), [=](const OV_DIM_PT& p) { return p.kind == kind; });
    };
    const auto ends = count(1), free = count(2), tips = count(3);
    const bool isSound = ends + free + tips > 0 && ends <= 4 && free <= 2 && tips <= 2;
    return isSound ? 0 : DX_DIM_BAD_COUNT;
}

void DxDelMarkedPts(DX_DIM_PTS& pts, std::vector<int>& rawKinds) {
    std::size_t kept = 0;
    for (std::size_t i = 0; i < pts.size(); ++i) {
        if (pts[i].kind < 0) continue;
        pts[kept] = pts[i];
        rawKinds[kept++] = rawKinds[i];
    }
    pts.resize(kept);
    rawKinds.resize(kept);
}
