// Diameters and radii.
#include "dx_dim_decode.h"

#include "ut_plane.h"

#include <algorithm>
#include <utility>

namespace {

/// Points of a block by where they lie along the line from a to b.
struct Sorted {
    std::vector<RPT> inner, beyondA, beyondB, others;
};

void append(DX_DIM_PTS& list, const RPT& point, int kind) {
    list.push_back(DxDimMake(point, kind));
}

void appendAll(DX_DIM_PTS& list, const std::vector<RPT>& points, int kind) {
    for (const RPT& p : points) append(list, p, kind);
}

/// The result for a diameter without pieces inside: tips, and what lies beyond them.
int diameterWithPiecesOutside(const RPT& a, const RPT& b, Sorted& sorted, DX_DIM_PTS& pts) {
    DxSortMinMax(sorted.beyondA, a, true);
    DxSortMinMax(sorted.beyondB, b, true);
    append(pts, a, 3);
    append(pts, sorted.beyondA[0], 2);
    append(pts, sorted.beyondB[0], 2);
    append(pts, b, 3);
    return 0;
}

void diameterWithGap(const RPT& a, const RPT& b, const RPT& gap1, const RPT& gap2, DX_DIM_PTS& pts) {
    append(pts, a, 3);
    append(pts, gap1, 2);
    append(pts, gap2, 2);
    append(pts, b, 3);
}

int diameterOfTwo(const RPT& a, const RPT& b, std::vector<RPT>& inner, double peakLength, DX_DIM_PTS& pts) {
    DxSortMinMax(inner, b, true);
    const double off = DxDimDistance(a, inner[0]) - peakLength;
    if (off >= DX_DIM_EPS || off <= -DX_DIM_EPS) {
        diameterWithGap(a, b, inner[0], inner[1], pts);
    } else { // the ends of the line between the arrows
        append(pts, a, 3);
        append(pts, b, 3);
    }
    return 0;
}

int diameterOfFour(const RPT& a, const RPT& b, std::vector<RPT>& inner, DX_DIM_PTS& pts) {
    DxSortMinMax(inner, a, true);
    std::vector<RPT> three(inner.begin(), inner.begin() + 3);
    DxSortMinMax(three, b, true);
    diameterWithGap(a, b, three[0], three[1], pts);
    return 0;
}

int diameterPlain(const RPT& a, const RPT& b, const Sorted& sorted, DX_DIM_PTS& pts) {
    appendAll(pts, sorted.beyondA, 1);
    append(pts, a, 3);
    append(pts, b, 3);
    appendAll(pts, sorted.beyondB, 1);
    return 0;
}

} // namespace

int DxDecodeDiaDimPts(const RPT& a, const RPT& b, const DX_DIM_STYLE* style, DX_DIM_PTS& pts,
                      DX_DIM_DECODED& out) {
    Sorted sorted;
    for (const OV_DIM_PT& raw : pts) {
        const RPT x = DxDimPoint(raw);
        if (DxDimSamePoint(x, a) || DxDimSamePoint(x, b)) continue;
        if (UtRptOnDraw(x, b, a))
            sorted.inner.push_back(x);
        else if (UtRptOnDraw(b, x, a))
            sorted.beyondB.push_back(x);
        else if (UtRptOnDraw(a, x, b))
            sorted.beyondA.push_back(x);
        else
            DxDimAddPeak(sorted.others, x);
    }
    DxGetPeakParms(a, b, static_cast<int>(sorted.others.size()), sorted.others, false, style, out.peak);
    pts.clear();
    const std::size_t outsideA = sorted.beyondA.size(), outsideB = sorted.beyondB.size();
    const std::size_t outside = outsideA + outsideB;
    if (outsideA && outsideB && (outside == 2 || outside == 4))
        return diameterWithPiecesOutside(a, b, sorted, pts);
    if (sorted.inner.size() == 2) return diameterOfTwo(a, b, sorted.inner, out.peak.length, pts);
    if (sorted.inner.size() == 4) return diameterOfFour(a, b, sorted.inner, pts);
    if (sorted.inner.empty() && outside <= 1) return diameterPlain(a, b, sorted, pts);
    return DX_DIM_UNDECODED;
}

namespace {

/// A radius: a on the curve, b the centre. "Inner" lies between them, "behind" beyond the centre.
class RadiusDecoder {
public:
    RadiusDecoder(const RPT& a, const RPT& b, DX_DIM_DECODED& out) : a_(a), b_(b), out_(out) {}

    int decode(DX_DIM_PTS& pts, const DX_DIM_STYLE* style) {
        for (const OV_DIM_PT& raw : pts) take(DxDimPoint(raw));
        pts.clear();
        dropCentreMark();
        takeShoulder(pts);
        DxGetPeakParms(a_, b_, 2 * static_cast<int>(others_.size()), others_, false, style, out_.peak);
        return outside_.empty() ? finishInside(pts) : finishOutside(pts);
    }

private:
    void take(const RPT& x) {
        if (DxDimSamePoint(x, a_)) return;
        if (DxDimSamePoint(x, b_))
            centreSeen_ = true;
        else if (UtRptOnDraw(x, b_, a_))
            inner_.push_back(x);
        else if (UtRptOnDraw(b_, x, a_))
            behind_.push_back(x);
        else if (UtRptOnDraw(a_, x, b_))
            outside_.push_back(x);
        else if (x.x != b_.x && x.y != b_.y) // not a centre mark
            DxDimAddPeak(others_, x);
    }

    /// A mark at the centre of a radius along an axis lies on its line.
    void dropCentreMark() {
        const bool isAlongAxis = a_.x == b_.x || a_.y == b_.y;
        if (!isAlongAxis || behind_.size() != 1 || (inner_.size() != 2 && inner_.size() != 4)) return;
        DxSortMinMax(inner_, a_, false);
        inner_.pop_back();
        behind_.clear();
    }

    /// Points at the height of one on the line belong to the shoulder under the text.
    void takeShoulder(DX_DIM_PTS& pts) {
        std::vector<RPT> rest;
        for (const RPT& x : others_) {
            if (!isAtHeightOfLine(x)) {
                rest.push_back(x);
                continue;
            }
            append(pts, x, 2);
            out_.textPlace = 8;
        }
        others_ = std::move(rest);
    }
    bool isAtHeightOfLine(const RPT& x) const {
        for (const auto* list : {&outside_, &inner_, &behind_})
            if (std::any_of(list->begin(), list->end(), [&](const RPT& p) { return p.y == x.y; }))
                return true;
        return false;
    }

    std::size_t onLine() const { return inner_.size() + behind_.size(); }

    static void dropNearest(std::vector<RPT>& points, const RPT& from) {
        DxSortMinMax(points, from, true);
        points.pop_back();
    }

    int finishInside(DX_DIM_PTS& pts) {
        const std::size_t seen = centreSeen_ ? 1 : 0, count = onLine() + seen;
        if (count == 4) out_.isTwoSided = 1;
        if (count == 2 || count == 4) dropNearest(inner_.empty() ? behind_ : inner_, a_);
        if (onLine() + seen == 1) out_.textPlace = 8;
        append(pts, a_, 3);
        if (centreSeen_) append(pts, b_, 2);
        const std::size_t left = onLine();
        if (!centreSeen_ && left != 1 && left != 3) return DX_DIM_UNDECODED;
        if (centreSeen_ && left != 1 && !(inner_.size() == 2 && behind_.empty())) return 0;
        appendAll(pts, inner_, 2);
        appendAll(pts, behind_, 2);
        return 0;
    }

    int finishOutside(DX_DIM_PTS& pts) {
        if (outside_.size() == 2 || outside_.size() == 4) dropNearest(outside_, a_);
        if (out_.textPlace == 5 && outside_.size() == 1) out_.textPlace = 2;
        appendAll(pts, outside_, 2);
        append(pts, a_, 3);
        if (!centreSeen_ || onLine() != 2) return 0;
        appendAll(pts, inner_, 1);
        appendAll(pts, behind_, 1);
        append(pts, b_, 1);
        return 0;
    }

    RPT a_, b_;
    DX_DIM_DECODED& out_;
    std::vector<RPT> inner_, behind_, outside_, others_;
    bool centreSeen_ = false;
};

} // namespace

int DxDecodeRadDimPts(const RPT& a, const RPT& b, bool textHorizontal, const DX_DIM_STYLE* style,
                      DX_DIM_PTS& pts, DX_DIM_DECODED& out) {
    if (const int error = RadiusDecoder(a, b, out).decode(pts, style)) return error;
    if (!textHorizontal || pts.size() != 2) return 0;
    const auto free = std::find_if(pts.begin(), pts.end(), [](const OV_DIM_PT& p) { return p.kind == 2; });
    if (free != pts.end()) pts.push_back(OV_DIM_PT(*free));
    return 0;
}
