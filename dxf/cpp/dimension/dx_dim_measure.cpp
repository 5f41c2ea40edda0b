#include "dx_dim_measure.h"

#include "../config/config_state.h"
#include "../host/dx_frame.h"
#include "../session/dx_writer.h"
#include "dx_codes.h"
#include "dx_dim_decode.h"
#include "ut.h"
#include "ut_plane.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

/// The points that a dimension's extent is read from: ends of extension lines and tips, null where missing.
struct Ends {
    const OV_DIM_PT *e1, *e2, *e3, *e4, *t1, *t2;
    explicit Ends(const DX_DIM_PTS& pts)
        : e1(DxDimFind(1, pts, 1)), e2(DxDimFind(1, pts, 2)), e3(DxDimFind(1, pts, 3)),
          e4(DxDimFind(1, pts, 4)), t1(DxDimFind(3, pts, 1)), t2(DxDimFind(3, pts, 2)) {}
    bool hasFirst() const { return e1 && e2 && t1; }
    bool hasSecond() const { return e3 && e4 && t2; }
};

/// The point on a leg: of the two ends of its piece the one that lies on the leg's own side of the centre.
RPT onLeg(const RPT& a, const RPT& b, const RPT& centre, const RPT& ref) {
    const double da = DxDimDistance(a, centre), db = DxDimDistance(b, centre), across = DxDimDistance(a, b);
    if (across > da && across > db) return DxDimDistance(b, ref) > DxDimDistance(a, ref) ? b : a;
    return !DxMiscCheckVersion(DX_LEVEL_HANDLES) && da > db ? b : a;
}

/// The ends of an extension line by the side of the dimension line that they lie on.
struct Extension {
    RPT near; ///< on the side of what is measured
    RPT far;
};

Extension extensionOf(const OV_DIM_PT& a, const OV_DIM_PT& b, const RPT& t1, const RPT& t2, double side) {
    const RPT pa = DxDimPoint(a), pb = DxDimPoint(b);
    const bool isNear = UtNormAbstand(pa, t1, t2) * side > 0;
    return isNear ? Extension{pa, pb} : Extension{pb, pa};
}

void linearDistances(const RPT refs[3], const Ends& ends, double* exo, double* exe) {
    if (!ends.e1 || !ends.e2) return;
    if (!ends.t1 || !ends.hasSecond()) {
        if (ends.t1) *exe = DxDimDistance(DxDimPoint(*ends.e2), DxDimPoint(*ends.t1));
        return;
    }
    const RPT t1 = DxDimPoint(*ends.t1), t2 = DxDimPoint(*ends.t2);
    const double side = UtNormAbstand(refs[0], t1, t2);
    const Extension first = extensionOf(*ends.e1, *ends.e2, t1, t2, side);
    const Extension second = extensionOf(*ends.e3, *ends.e4, t1, t2, side);
    const double eps = 0.001 * DxDimDistance(refs[0], refs[1]);
    // Which of the two extension lines belongs to the first reference point.
    const bool isCrossed = std::abs(UtNormAbstand(refs[0], first.near, first.far)) >= eps;
    const Extension &of0 = isCrossed ? second : first, &of1 = isCrossed ? first : second;
    if (DxExoMode) *exo = (DxDimDistance(of0.near, refs[0]) + DxDimDistance(of1.near, refs[1])) / 2;
    *exe = DxDimDistance(of0.far, isCrossed ? t2 : t1);
}

void angularDistances(const RPT refs[3], const Ends& ends, double* exo, double* exe) {
    *exo = 0;
    if (!ends.hasFirst() && !ends.hasSecond()) return;
    const OV_DIM_PT &a = ends.hasFirst() ? *ends.e1 : *ends.e3, &b = ends.hasFirst() ? *ends.e2 : *ends.e4;
    const double da = DxDimDistance(DxDimPoint(a), refs[0]), db = DxDimDistance(DxDimPoint(b), refs[0]);
    const double eps = 0.001 * DxDimDistance(refs[0], refs[1]);
    if (da > eps && db > eps) *exe = std::min(da, db);
}

double angleBetween(const RPT& centre, const RPT& from, const RPT& to) {
    const double a = std::atan2(from.y - centre.y, from.x - centre.x);
    return UtAngleDist(a, std::atan2(to.y - centre.y, to.x - centre.x), 1) * DX_DEGREES;
}

} // namespace

int DxDimFamily(int kind) {
    const int number = kind & 0xffff, tens = number / 10, digit = number % 10;
    const bool isLinear = (tens == 2 || tens == 3 || tens == 4 || tens == 6) && digit >= 1 && digit <= 3;
    return isLinear ? digit : number;
}

int DxFindPt(int kind, const DX_DIM_PTS& pts, int k) {
    for (std::size_t i = 0; i < pts.size(); ++i)
        if (pts[i].kind == kind && --k == 0) return static_cast<int>(i);
    return -1;
}

const OV_DIM_PT* DxDimFind(int kind, const DX_DIM_PTS& pts, int k) {
    const int index = DxFindPt(kind, pts, k);
    return index < 0 ? nullptr : &pts[static_cast<std::size_t>(index)];
}

void DxDimGetAngRefPoints(const RPT refs[3], const DX_DIM_PTS& pts, RPT* first, RPT* second) {
    const Ends ends(pts);
    *first = refs[0];
    *second = refs[1];
    if (ends.hasFirst()) *first = onLeg(DxDimPoint(*ends.e1), DxDimPoint(*ends.e2), refs[2], refs[0]);
    if (ends.hasSecond()) {
        *second = onLeg(DxDimPoint(*ends.e3), DxDimPoint(*ends.e4), refs[2], refs[1]);
    } else if (ends.hasFirst() && !UtRptOnDraw(refs[0], DxDimPoint(*ends.e1), DxDimPoint(*ends.e2), 2)) {
        *second = *first; // the only piece is that of the second leg
        *first = refs[0];
    }
}

void DxDimGetDimPointDist(int family, const RPT refs[3], const DX_DIM_PTS& pts, double* exo, double* exe) {
    constexpr double usualOvershoot = 1.8; // millimetres on the sheet
    *exo = DxExoDefault;
    *exe = DxLengthFromSheet(usualOvershoot);
    const Ends ends(pts);
    if (family >= 1 && family <= 3) {
        linearDistances(refs, ends, exo, exe);
    } else if (family == 51 || family == 52) {
        if (ends.t1 && DxExoMode) *exo = DxDimDistance(DxDimPoint(*ends.t1), refs[1]);
    } else if (family == OV_DIM_ANGLE || family == OV_DIM_ARC) {
        angularDistances(refs, ends, exo, exe);
    }
}

int DxDimGetDimTextPos(const RPT& textPos, const DX_DIM_PTS& pts) {
    const Ends ends(pts);
    if (!ends.t1 || !ends.t2) return 0;
    const RPT t1 = DxDimPoint(*ends.t1), t2 = DxDimPoint(*ends.t2);
    RPT foot;
    if (UtNormPunkt(textPos, t1, t2, &foot)) return 0;
    return UtRptOnDrawEpsNv(foot, t1, t2, UtConv(50)) ? 1 : 0;
}

int DxDimpatGetDimValue(int family, const RPT refs[3], const DX_DIM_PTS& pts, double* value) {
    const Ends ends(pts);
    switch (family) {
    case 1: *value = std::abs(refs[0].x - refs[1].x); return 0;
    case 2: *value = std::abs(refs[0].y - refs[1].y); return 0;
    case 3:
        if (!ends.t1 || !ends.t2) return DX_ERR_ARGUMENT;
        *value = DxDimDistance(DxDimPoint(*ends.t1), DxDimPoint(*ends.t2));
        return 0;
    case OV_DIM_ANGLE:
    case OV_DIM_ARC: *value = angleBetween(refs[2], refs[0], refs[1]); return 0;
    case OV_DIM_RADIUS: *value = DxDimDistance(refs[2], refs[1]); return 0;
    case OV_DIM_DIAMETER: *value = 2 * DxDimDistance(refs[2], refs[1]); return 0;
    case 7: *value = DxDimDistance(refs[0], refs[1]); return 0;
    default: return DX_ERR_ARGUMENT;
    }
}
