// Reading the host's dimensions.
#include "dx_dim_out.h"

#include "dx_codes.h"
#include "dx_dim_decode.h"
#include "dx_dim_measure.h"
#include "dx_dimstyle.h"
#include "ov_text.h"
#include "ve.h"

enum Family { LINEAR, RADIAL, ANGULAR };

int DxDimNextOut(DX_DIM_OUT& out) {
    int error = DxovNextDim(out.pat, &out.row, &out.textRow, &out.tolRow);
    if (!error) error = DxovReadDim(out.pat, out.row, &out.dim);
    if (!error) error = DxovReadDimSets(out.pat, out.row, &out.sets);
    int mode = 0, isFree = 0;
    if (!error) error = DxovReadDimMode(&mode, &out.horizontal);
    if (!error) error = DxDimparFreeStyle(&isFree);
    if (error) return error;
    out.isFree = isFree != 0;
    out.family = DxDimFamily(out.dim.kind);
    out.parts = DxDimparSplitDimText(out.dim.text.str());
    out.sets.tol.kind = DxDimToleranceKind(out.pat, out.sets.tol.kind);
    return 0;
}

int DxDimparFreeStyle(int* isFree) {
    int mode = 0, horizontal = 0;
    if (const int error = DxovReadDimMode(&mode, &horizontal)) return error;
    *isFree = mode == OV_DIM_MODE_FREE ? 1 : 0;
    return 0;
}

int DxDimparGetArrowType(int pat, int row, int* type) {
    *type = -1;
    std::vector<int> starts, ends;
    if (const int error = DxovReadDimHeads(pat, row, &starts, &ends)) return error;
    for (std::size_t i = 0; i < starts.size() && *type < 0; ++i) {
        if (i < ends.size() && ends[i] >= 1)
            *type = ends[i];
        else if (starts[i] >= 1)
            *type = starts[i];
    }
    return 0;
}

void DxDimparKorr(int kind, int horizontal, OV_DIM_TXT_PARM& txt) {
    if (kind == OV_DIM_RADIUS || kind == OV_DIM_DIAMETER) txt.horizontal[RADIAL] = horizontal;
    if (kind == OV_DIM_ANGLE || kind == OV_DIM_ARC) txt.horizontal[ANGULAR] = horizontal;
}

int DxDimparGetTextAngle(int pat, int textRow, double* degrees) {
    constexpr int read = 20, all = 0x8014;
    OV_TEXT text;
    *degrees = 0;
    if (const int error = ovtext(read, all, pat, &textRow, &text)) return error;
    *degrees = text.parm.angle * DX_DEGREES;
    return 0;
}

double DxDimparGetLineLen(const DX_DIM_OUT& out, const DX_DIM_STYLE* style) {
    if (out.family != OV_DIM_RADIUS && out.family != OV_DIM_DIAMETER) return 0;
    OV_DIM_TXT_PARM txt = out.sets.txt;
    DxDimparKorr(out.family, out.horizontal, txt);
    const OV_DIM_PT* end = DxDimFind(2, out.dim.points, txt.horizontal[RADIAL] ? 2 : 1);
    const OV_DIM_PT* tip = DxDimFind(3, out.dim.points, 1);
    if (!end || !tip) return 0;
    const double length = DxDimDistance(DxDimPoint(*end), DxDimPoint(*tip));
    return style && style->integers[DIMTOFL] == 1 ? -length : length;
}

int DxDimparGetRadDir(const RPT refs[3], const DX_DIM_PTS& pts) {
    const OV_DIM_PT *end = DxDimFind(2, pts, 1), *tip = DxDimFind(3, pts, 1);
    if (!end || !tip) return 0;
    const RPT3 fromCentre{tip->x - refs[2].x, tip->y - refs[2].y, 0};
    const RPT3 fromEnd{tip->x - end->x, tip->y - end->y, 0};
    return Ve3dGleichRicht(fromCentre, fromEnd) ? 1 : 0;
}
