// Ordinates.
#include "dx_dim_decode.h"

#include "dx_dimension.h"
#include "ut_plane.h"

#include <cmath>
#include <utility>

int DxDecodeOrdDimPts(const RPT& p13, const RPT& p14, const DX_DIM_STYLE* style, DX_DIM_PTS& pts,
                      DX_DIM_DECODED& out) {
    RPT first = p13, second = p14;
    const bool isSwapped = out.kind == DX_DIM_ORDINATE_Y ? first.x > second.x : first.y < second.y;
    if (isSwapped) std::swap(first, second);
    RPT end = second;
    std::vector<RPT> peaks;
    const auto note = [&](std::size_t place) {
        if (out.dimIndex == DX_DIM_NO_INDEX) out.dimIndex = static_cast<int>(place);
    };
    for (std::size_t i = 0; i < pts.size(); ++i) {
        const RPT x = DxDimPoint(pts[i]);
        if (DxDimSamePoint(x, first) || DxDimSamePoint(x, second)) {
            note(i);
        } else if (std::fabs(UtNormAbstand(x, first, second)) > DX_DIM_EPS) {
            DxDimAddPeak(peaks, x);
            note(i);
        } else if (DxDimDistance(x, first) > DxDimDistance(end, first)) {
            end = x;
        }
    }
    out.extIndex = out.dimIndex;
    DxGetPeakParms(first, second, static_cast<int>(peaks.size()), peaks, false, style, out.peak);
    pts = {DxDimMake(first, 3), DxDimMake(end, 2)};
    return 0;
}
