#include "dx_placement.h"

#include "../host/dx_host.h"
#include "ci.h"
#include "ci_bitmap.h"
#include "ci_objects.h"
#include "ci_text.h"
#include "dx_codes.h"

#include <cmath>

static constexpr double EVEN = 1e-9; ///< relative

bool DxPlacementOf(const Mat32 m, DX_PLACEMENT& placement) {
    const double x = std::hypot(m[0][0], m[0][1]);
    const double y = std::hypot(m[1][0], m[1][1]);
    const double across = m[0][0] * m[1][0] + m[0][1] * m[1][1];
    const double turned = m[0][0] * m[1][1] - m[0][1] * m[1][0];
    if (!std::isfinite(x * y) || x * y == 0 || std::abs(across) > EVEN * x * y) return false;
    placement.base[0] = m[2][0];
    placement.base[1] = m[2][1];
    placement.scale[0] = placement.scale[2] = x;
    placement.scale[1] = turned < 0 ? -y : y;
    placement.rotation = std::atan2(m[0][1], m[0][0]) * DX_DEGREES;
    return true;
}

int DxPlacementOfPattern(int pat, DX_PLACEMENT& placement) {
    Mat32 m;
    if (const int error = DxGetPatMatrix(pat, m, false)) return error;
    return DxPlacementOf(m, placement) ? 0 : DX_ERR_ARGUMENT;
}

static bool hasArcs(const DsCsr& pattern) {
    constexpr int MOVE = 1, DRAW = 2;
    DsCsr cursor = pattern;
    CiElem elements(0);
    int type = 0;
    for (int end = elements.First(cursor, &type); !end; end = elements.Next(cursor, &type))
        if (type != MOVE && type != DRAW) return true;
    return false;
}

template <class Objects>
static bool has(const DsCsr& pattern) {
    DsCsr cursor = pattern;
    return Objects(0).First(cursor) == 0;
}

bool DxHoldsUntransformed(int pat, const DX_PLACEMENT& placement) {
    const bool isEven = std::abs(std::abs(placement.scale[1]) / placement.scale[0] - 1) <= EVEN;
    const bool isMirrored = placement.scale[1] < 0;
    if (isEven && !isMirrored) return true;
    DsCsr cursor;
    if (DsCursorFromPatNo(pat, &cursor) != 0) return false;
    if (!isEven && (hasArcs(cursor) || has<CiArrow>(cursor))) return false;
    return !has<CiText>(cursor) && !has<CiHatch>(cursor) && !has<CiBitmap>(cursor);
}
