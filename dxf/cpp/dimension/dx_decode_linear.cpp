// Linear dimensions: horizontal, vertical, aligned and rotated.
#include "dx_dim_decode.h"

#include "dx_dimension.h"
#include "ge.h"
#include "ut_plane.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr double toRadians = 0.017453292519943295;
constexpr std::size_t extPoints = 4; ///< entries ahead of those on the dimension line

int kindOfAngle(double degrees) {
    if (degrees < 0.1 || degrees > 359.9) return DX_DIM_HORIZONTAL;
    const bool isUpright = (degrees > 89.9 && degrees < 90.1) || (degrees > 269.9 && degrees < 270.1);
    return isUpright ? DX_DIM_VERTICAL : DX_DIM_ALIGNED;
}

/// The foot of the perpendicular from a point on the line through `on` at an angle.
int footOn(const RPT& on, double degrees, const RPT& point, RPT& foot) {
    double a, b, c, na, nb, nc;
    int error = GeLineByPtAng(on, degrees * toRadians, &a, &b, &c);
    if (!error) error = GeLineByPtAng(point, (degrees + 90) * toRadians, &na, &nb, &nc);
    return error ? error : GeIsectLinLin(a, b, c, na, nb, nc, &foot);
}

/// Sorts the points of a block by where they lie.
class Classifier {
public:
    Classifier(const RPT& p13, const RPT& p14, const RPT& foot1, const RPT& foot2, DX_DIM_DECODED& out)
        : p13_(p13), p14_(p14), foot1_(foot1), foot2_(foot2), out_(out),
          hasLine1_(DxDimDistance(p13, foot1) > DX_DIM_EPS),
          hasLine2_(DxDimDistance(p14, foot2) > DX_DIM_EPS) {
        for (const RPT& p : {foot1, foot1, foot2, foot2}) list.push_back(DxDimMake(p, 1));
    }

    void run(const DX_DIM_PTS& raw) {
        hasCircle = std::any_of(raw.begin(), raw.end(), [](const OV_DIM_PT& p) { return p.kind == 4; });
        for (std::size_t i = 0; i < raw.size(); ++i) take(raw[i], static_cast<int>(i));
    }

    DX_DIM_PTS list;
    std::vector<RPT> peaks;
    bool hasCircle = false;

private:
    static void note(int& index, int place) {
        if (index == DX_DIM_NO_INDEX) index = place;
    }

    void take(const OV_DIM_PT& raw, int place) {
        const RPT x = DxDimPoint(raw);
        if (hasCircle && raw.kind == 4) {
            peaks.push_back(x);
            note(out_.dimIndex, place);
        } else if (DxDimSamePoint(x, foot1_) || DxDimSamePoint(x, foot2_)) {
            note(out_.dimIndex, place);
        } else if (takeExtension(x)) {
            note(out_.extIndex, place);
        } else if (UtRptOnDraw(x, foot1_, foot2_) || UtRptOnDraw(foot1_, x, foot2_) ||
                   UtRptOnDraw(foot2_, x, foot1_)) {
            list.push_back(DxDimMake(x, 2));
            note(out_.dimIndex, place);
        } else if (!hasCircle) {
            DxDimAddPeak(peaks, x);
            note(out_.dimIndex, place);
        }
    }

    bool takeExtension(const RPT& x) {
        return takeExtension(x, p13_, foot1_, hasLine1_, 0) || takeExtension(x, p14_, foot2_, hasLine2_, 2);
    }
    /// The start of an extension line lies between origin and foot or behind the origin, its end behind the
    /// foot.
    bool takeExtension(const RPT& x, const RPT& origin, const RPT& foot, bool hasLine, std::size_t entry) {
        const bool isStart = UtRptOnDraw(x, origin, foot) || (hasLine && UtRptOnDraw(origin, foot, x));
        if (!isStart && !(hasLine && UtRptOnDraw(foot, origin, x))) return false;
        list[entry + (isStart ? 0 : 1)] = DxDimMake(x, 1);
        return true;
    }

    RPT p13_, p14_, foot1_, foot2_;
    DX_DIM_DECODED& out_;
    bool hasLine1_, hasLine2_;
};

/// By distance from the point that is farthest from P2, so that the list runs along the line.
void sortAlongLine(DX_DIM_PTS& list, const RPT& foot2) {
    const auto byDistance = [&](const RPT& from) {
        std::stable_sort(list.begin() + extPoints, list.end(), [&](const OV_DIM_PT& a, const OV_DIM_PT& b) {
            return DxDimDistance(DxDimPoint(a), from) < DxDimDistance(DxDimPoint(b), from);
        });
    };
    if (list.size() <= extPoints) return;
    byDistance(foot2);
    byDistance(DxDimPoint(list.back()));
}

/// The plain form: extension points and the two tips.
void makeSimple(DX_DIM_PTS& list, const RPT& tip1, const RPT& tip2) {
    list.resize(extPoints);
    list.push_back(DxDimMake(tip1, 3));
    list.push_back(DxDimMake(tip2, 3));
}

/// A line of an odd number of ends: its outermost ones, the tips at least.
void reduceToTwo(DX_DIM_PTS& list, const RPT& tip1, const RPT& tip2) {
    const RPT first = DxDimPoint(list[extPoints]), last = DxDimPoint(list.back());
    const double length = DxDimDistance(tip1, tip2);
    makeSimple(list, DxDimDistance(first, tip2) >= length ? first : tip1,
               DxDimDistance(last, tip1) >= length ? last : tip2);
}

int shapeLine(DX_DIM_PTS& list, const RPT& tip1, const RPT& tip2, double peakLength, const DX_DIM_PTS& raw,
              std::span<const int> rawKinds) {
    if (list.size() == 8) return DxDimSortDim8(tip1, tip2, raw, rawKinds, list);
    if (list.size() == 4) {
        makeSimple(list, tip1, tip2);
        return 0;
    }
    const RPT a = DxDimPoint(list[4]), b = DxDimPoint(list[5]);
    const bool isBetweenArrows = DxDimDistance(tip1, a) - 1.1 * peakLength <= DX_DIM_EPS &&
                                 DxDimDistance(a, b) - DxDimDistance(tip1, tip2) <= DX_DIM_EPS;
    if (isBetweenArrows) {
        makeSimple(list, tip1, tip2);
        return 0;
    }
    list.push_back(DxDimMake(tip1, 0));
    list.push_back(DxDimMake(tip2, 0));
    return DxDimSortDim8(tip1, tip2, raw, rawKinds, list);
}

int signOf(double value) {
    return (value > 0) - (value < 0);
}

/// A candidate on the dimension line.
struct Candidate {
    RPT point;
    int tag;       ///< 1 the first tip, 2 the second, 0 neither
    double d1, d2; ///< distances from the extension lines
    bool isBetween = false, isBeyond1 = false, isBeyond2 = false;
};

/// An extension line of no length has the direction that it would have.
struct ExtensionLine {
    RPT from, to;
    ExtensionLine(const OV_DIM_PT& start, const OV_DIM_PT& end, const RPT& tip1, const RPT& tip2)
        : from(DxDimPoint(start)), to(DxDimPoint(end)) {
        if (!DxDimSamePoint(from, to)) return;
        const RPT& tip = DxDimDistance(from, tip1) < DxDimDistance(from, tip2) ? tip1 : tip2;
        from = tip;
        to = {tip.x - (tip2.y - tip1.y), tip.y + (tip2.x - tip1.x)};
    }
    double distance(const RPT& p) const { return UtNormAbstand(p, from, to); }
};

bool hasRawLine(const DX_DIM_PTS& raw, std::span<const int> kinds, const RPT& a, const RPT& b) {
    for (std::size_t i = 0; i + 1 < raw.size() && i + 1 < kinds.size(); ++i) {
        if (kinds[i] != 2 || kinds[i + 1] != 1) continue;
        const RPT from = DxDimPoint(raw[i]), to = DxDimPoint(raw[i + 1]);
        if ((DxDimSamePoint(from, a) && DxDimSamePoint(to, b)) ||
            (DxDimSamePoint(from, b) && DxDimSamePoint(to, a)))
            return true;
    }
    return false;
}

void putLine(DX_DIM_PTS& pts, std::initializer_list<OV_DIM_PT> line) {
    pts.resize(extPoints);
    pts.insert(pts.end(), line);
}

/// Arrows outside: at each end the outermost candidate and the tip.
int makeOutside(std::vector<Candidate>& candidates, int sign1, const RPT& tip1, const RPT& tip2,
                DX_DIM_PTS& pts) {
    std::vector<Candidate> left, right;
    for (const Candidate& q : candidates) {
        const bool isLeft = q.tag == 1 || (q.tag == 0 && signOf(q.d1) != sign1);
        (isLeft ? left : right).push_back(q);
    }
    if (left.size() != 2 || right.size() != 2) return DX_DIM_BAD_COUNT;
    const auto isNearer = [](const Candidate& a, const Candidate& b) {
        return std::fabs(a.d1) < std::fabs(b.d1);
    };
    const RPT outer1 = std::max_element(left.begin(), left.end(), isNearer)->point;
    const RPT outer2 = std::max_element(right.begin(), right.end(), isNearer)->point;
    putLine(pts, {DxDimMake(outer1, 2), DxDimMake(tip1, 3), DxDimMake(tip2, 3), DxDimMake(outer2, 2)});
    return 0;
}

/// A gap between the second and the third of them, unless the block draws a line there.
void makeGap(std::vector<Candidate>& candidates, const RPT& tip1, const RPT& tip2, const DX_DIM_PTS& raw,
             std::span<const int> rawKinds, DX_DIM_PTS& pts) {
    std::stable_sort(candidates.begin(), candidates.end(), [](const Candidate& a, const Candidate& b) {
        return std::fabs(a.d1) < std::fabs(b.d1);
    });
    const RPT m1 = candidates[1].point, m2 = candidates[2].point;
    if (hasRawLine(raw, rawKinds, m1, m2))
        makeSimple(pts, tip1, tip2);
    else
        putLine(pts, {DxDimMake(tip1, 3), DxDimMake(m1, 2), DxDimMake(m2, 2), DxDimMake(tip2, 3)});
}

} // namespace

int DxDimSortDim8(const RPT& tip1, const RPT& tip2, const DX_DIM_PTS& rawPts, std::span<const int> rawKinds,
                  DX_DIM_PTS& pts) {
    const ExtensionLine first(pts[0], pts[1], tip1, tip2), second(pts[2], pts[3], tip1, tip2);
    const RPT ofSecond = DxDimSamePoint(DxDimPoint(pts[2]), DxDimPoint(pts[3])) ? tip2 : DxDimPoint(pts[3]);
    const RPT ofFirst = DxDimSamePoint(DxDimPoint(pts[0]), DxDimPoint(pts[1])) ? tip1 : DxDimPoint(pts[0]);
    const int sign1 = signOf(first.distance(ofSecond)), sign2 = signOf(second.distance(ofFirst));
    std::vector<Candidate> candidates;
    int between = 0, beyond1 = 0, beyond2 = 0;
    for (std::size_t i = extPoints; i < pts.size(); ++i) {
        Candidate q{DxDimPoint(pts[i]), 0, 0, 0};
        q.tag = DxDimSamePoint(q.point, tip1) ? 1 : DxDimSamePoint(q.point, tip2) ? 2 : 0;
        q.d1 = q.tag == 1 ? 0 : first.distance(q.point);
        q.d2 = q.tag == 2 ? 0 : second.distance(q.point);
        if (q.tag == 0) {
            q.isBeyond1 = signOf(q.d1) != sign1;
            q.isBeyond2 = !q.isBeyond1 && signOf(q.d2) != sign2;
            q.isBetween = !q.isBeyond1 && !q.isBeyond2;
        }
        between += q.isBetween;
        beyond1 += q.isBeyond1;
        beyond2 += q.isBeyond2;
        candidates.push_back(q);
    }
    if (candidates.size() != 4) return DX_DIM_BAD_COUNT;
    if (between > 1) {
        makeGap(candidates, tip1, tip2, rawPts, rawKinds, pts);
        return 0;
    }
    if (beyond1 == 0 || beyond2 == 0) return DX_DIM_BAD_COUNT;
    return makeOutside(candidates, sign1, tip1, tip2, pts);
}

int DxDecodeLinDimPts(RPT& p13, RPT& p14, RPT& p10, const RPT& textPos, double angle,
                      std::span<const int> rawKinds, const DX_DIM_STYLE* style, DX_DIM_PTS& pts,
                      DX_DIM_DECODED& out) {
    out.kind = kindOfAngle(angle);
    const bool isSwapped = out.kind == DX_DIM_VERTICAL ? p13.y > p14.y : p13.x > p14.x;
    if (isSwapped) std::swap(p13, p14);

    RPT foot1, foot2, textFoot;
    int error = footOn(p10, angle, p13, foot1);
    if (!error) error = footOn(p10, angle, p14, foot2);
    if (!error) error = footOn(p10, angle, textPos, textFoot);
    if (error) return DX_DIM_UNDECODED;
    p10 = foot2;
    out.textPlace = DxDimSamePoint(textPos, textFoot) ? 5 : 2;

    const DX_DIM_PTS raw = pts;
    Classifier sorted(p13, p14, foot1, foot2, out);
    sorted.run(raw);
    pts = std::move(sorted.list);
    if ((error = DxCrunchLinearPts(pts, DX_DIM_EPS))) return error;
    sortAlongLine(pts, foot2);
    if (pts.size() != 4 && pts.size() != 6 && pts.size() != 8) reduceToTwo(pts, foot1, foot2);
    DxGetPeakParms(foot1, foot2, static_cast<int>(sorted.peaks.size()), sorted.peaks, sorted.hasCircle, style,
                   out.peak);
    bool isSound = shapeLine(pts, foot1, foot2, out.peak.length, raw, rawKinds) == 0;
    isSound = isSound && DxCountDimTypes(pts) == 0;
    if (!isSound) makeSimple(pts, foot1, foot2);
    if (out.textPlace == 5 && !(isSound && pts.size() == 8)) out.textPlace = 2;
    return 0;
}
