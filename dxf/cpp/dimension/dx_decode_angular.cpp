// Angles, and the lengths of arcs.
#include "dx_dim_decode.h"

#include "ge.h"
#include "ut_plane.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

namespace {

/// Groups 10 to 16 by their place.
enum Point : int { P10, P13 = 3, P14 = 4, P15 = 5, P16 = 6 };

/// Where the dimension arc runs: counter-clockwise from a1 to a2 about z.
struct Arc {
    RPT a1{0, 0}, a2{0, 0}, z{0, 0};
    double radius = 0;
};

double angleAt(const RPT& centre, const RPT& p) {
    return std::atan2(p.y - centre.y, p.x - centre.x);
}

RPT onRay(const RPT& centre, const RPT& through, double radius) {
    const double distance = DxDimDistance(centre, through);
    if (!(distance > 0)) return {centre.x + radius, centre.y};
    const double factor = radius / distance;
    return {centre.x + factor * (through.x - centre.x), centre.y + factor * (through.y - centre.y)};
}

/// The intersection of a line with the circle through `on` about `centre` that is nearest to `on`.
int nearestOnCircle(const RPT& p, const RPT& q, const RPT& centre, const RPT& on, RPT& result) {
    RPT points[2];
    int count = 0;
    if (GeRptIsArcLine(on, on, centre, p, q, points, &count) || count < 1) return DX_DIM_UNDECODED;
    result = points[0];
    if (count > 1 && DxDimDistance(points[1], on) < DxDimDistance(points[0], on)) result = points[1];
    return 0;
}

int arcOf(bool threePoint, const RPT p[7], Arc& arc) {
    if (threePoint) {
        arc.z = p[P15];
        arc.radius = DxDimDistance(arc.z, p[P10]);
        arc.a1 = onRay(arc.z, p[P13], arc.radius);
        arc.a2 = onRay(arc.z, p[P14], arc.radius);
    } else {
        if (GeRptIsLinLinByPts(p[P10], p[P15], p[P13], p[P14], &arc.z)) return DX_DIM_UNDECODED;
        arc.radius = DxDimDistance(arc.z, p[P16]);
        if (!(arc.radius >= DX_DIM_EPS)) return DX_DIM_UNDECODED;
        int error = nearestOnCircle(p[P10], p[P15], arc.z, p[P16], arc.a2);
        if (!error) error = nearestOnCircle(p[P14], p[P13], arc.z, p[P16], arc.a1);
        if (error) return error;
    }
    if (!(arc.radius >= DX_DIM_EPS)) return DX_DIM_UNDECODED;
    if (!UtRptOnArc(p[threePoint ? P10 : P16], arc.a1, arc.a2, arc.z)) std::swap(arc.a1, arc.a2);
    return 0;
}

class AngleDecoder {
public:
    AngleDecoder(const Arc& arc, DX_DIM_DECODED& out) : arc_(arc), out_(out) {}

    int decode(DX_DIM_PTS& pts, const RPT& textPos, const DX_DIM_STYLE* style) {
        for (std::size_t i = 0; i < pts.size(); ++i)
            if (const int error = take(DxDimPoint(pts[i]), static_cast<int>(i))) return error;
        if (arcCount_ != 2 && arcCount_ != 4 && arcCount_ != 6) return DX_DIM_UNDECODED;
        if (arcCount_ > 2)
            if (const int error = sortArcPoints(textPos)) return error;
        DxGetPeakParms(arc_.a1, arc_.a2, static_cast<int>(peaks_.size()), peaks_, false, style, out_.peak);
        settleSlots();
        pts.clear();
        for (const auto& slot : slots_)
            if (slot) pts.push_back(*slot);
        return 0;
    }

private:
    static constexpr int firstArcSlot = 2, mostArcSlots = 6;

    static void note(int& index, int place) {
        if (index == DX_DIM_NO_INDEX) index = place;
    }

    int take(const RPT& x, int place) {
        const int leg = legSlot(x);
        if (DxDimSamePoint(x, arc_.a1) || DxDimSamePoint(x, arc_.a2)) {
            note(out_.dimIndex, place);
        } else if (leg >= 0) {
            slots_[static_cast<std::size_t>(leg)] = DxDimMake(x, 1);
            note(out_.extIndex, place);
        } else if (std::fabs(DxDimDistance(arc_.z, x) - arc_.radius) < DX_DIM_EPS) {
            if (arcCount_ == mostArcSlots) return DX_DIM_UNDECODED;
            slots_[static_cast<std::size_t>(arcCount_++)] = DxDimMake(x, 2);
        } else {
            DxDimAddPeak(peaks_, x);
        }
        return 0;
    }

    /// The slot of a point on one of the legs: ahead of the arc or behind it; -1 for any other.
    int legSlot(const RPT& x) const {
        if (UtRptOnDraw(x, arc_.z, arc_.a1)) return 0;
        if (UtRptOnDraw(arc_.a1, arc_.z, x)) return 1;
        if (UtRptOnDraw(x, arc_.z, arc_.a2)) return 6;
        if (UtRptOnDraw(arc_.a2, arc_.z, x)) return 7;
        return -1;
    }

    bool isOnArc(const RPT& x) const { return UtRptOnArc(x, arc_.a1, arc_.a2, arc_.z); }
    /// The same for a point at another radius.
    bool isWithinAngle(const RPT& x) const {
        const double radius = DxDimDistance(arc_.z, x);
        return UtRptOnArc(x, onRay(arc_.z, arc_.a1, radius), onRay(arc_.z, arc_.a2, radius), arc_.z);
    }

    int sortArcPoints(const RPT& textPos) {
        const bool isInside = isOnArc(DxDimPoint(*slots_[firstArcSlot]));
        const double start = angleAt(arc_.z, arc_.a1);
        const auto length = [&](const std::optional<OV_DIM_PT>& p) {
            const double to = angleAt(arc_.z, DxDimPoint(*p));
            return DxDimDistance(arc_.z, DxDimPoint(*p)) *
                   (isInside ? UtAngleDist(start, to, 1) : UtAngleDist(to, start, 1));
        };
        std::stable_sort(slots_ + firstArcSlot, slots_ + arcCount_,
                         [&](const auto& a, const auto& b) { return length(a) < length(b); });
        return isInside == isWithinAngle(textPos) ? 0 : DX_DIM_UNDECODED;
    }

    void settleSlots() {
        const std::optional<OV_DIM_PT> first = slots_[2], second = slots_[3];
        const OV_DIM_PT start = DxDimMake(arc_.a1, 3), end = DxDimMake(arc_.a2, 3);
        slots_[2] = start;
        if (arcCount_ != 4) {
            slots_[5] = end;
            return;
        }
        const RPT foot = DxDimPoint(*first);
        const double nearest = std::min(DxDimDistance(foot, arc_.a1), DxDimDistance(foot, arc_.a2));
        if (nearest < 1.1 * out_.peak.length) { // just where the arrow ends
            slots_[3] = end;
            return;
        }
        slots_[3] = first;
        slots_[4] = second;
        slots_[5] = end;
    }

    const Arc& arc_;
    DX_DIM_DECODED& out_;
    std::optional<OV_DIM_PT> slots_[8];
    int arcCount_ = firstArcSlot;
    std::vector<RPT> peaks_;
};

} // namespace

int DxDecodeAngDimPts(bool threePoint, const RPT points[7], const RPT& textPos, const DX_DIM_STYLE* style,
                      RPT arcRefs[3], DX_DIM_PTS& pts, DX_DIM_DECODED& out) {
    Arc arc;
    if (const int error = arcOf(threePoint, points, arc)) return error;
    if (const int error = AngleDecoder(arc, out).decode(pts, textPos, style)) return error;
    arcRefs[0] = arc.a1;
    arcRefs[1] = arc.a2;
    arcRefs[2] = arc.z;
    return 0;
}
