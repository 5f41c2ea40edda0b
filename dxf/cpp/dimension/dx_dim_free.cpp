// Dimensions of drawn lines: what couldn't be decoded, and ordinates.
#include "../config/dx_pens.h"
#include "../host/dx_frame.h"
#include "../host/dx_host.h"
#include "../text/dx_text_codes.h"
#include "../text/dx_text_fonts.h"
#include "../text/dx_text_host.h"
#include "../text/dx_text_import.h"
#include "ci_text.h"
#include "dimension_state.h"
#include "dx_dim_import.h"

#include <algorithm>
#include <cmath>

enum DrawingCode { DRAW = 1, MOVE = 2, ARC = 4 };

std::vector<DX_ARROW_PT> DxDimArrowPoints(const DX_DIM_GEO& geo, bool ofLeader) {
    std::vector<DX_ARROW_PT> points;
    for (std::size_t i = 0; i < geo.pts.size(); ++i) {
        const int code = geo.rawKinds[i];
        DX_ARROW_PT p{code, DxDimPoint(geo.pts[i]), {0, 0}, geo.looks[i].pen, geo.looks[i].lineType};
        if (code == ARC && i + 1 < geo.pts.size()) p.centre = DxDimPoint(geo.pts[++i]); // two entries
        p.isLeaderStart = i == 0 && ofLeader ? 1 : 0;
        points.push_back(p);
    }
    return points;
}

namespace {

enum Mode { ORDINATE = 5, FREE = 8 };

long countTexts() {
    DsCsr pattern;
    long count = 0;
    if (DsCursorFromPatNo(DxActPat, &pattern) == 0) CiText::Count(pattern, &count);
    return count;
}

/// Draws a text into the active pattern; `row` receives its place, OV_DIM_NO_TEXT when nothing came of it.
int drawText(const DX_TEXT_TYPE& text, const Mat44 m, int type, int* row) {
    const long before = countTexts();
    if (const int error = DxDrawText(&text, m, type, 0)) return error;
    const long after = countTexts();
    *row = after > before ? static_cast<int>(after) - 1 : OV_DIM_NO_TEXT;
    return 0;
}

std::string converted(const DX_TEXT_TYPE& text) {
    std::string host = text.text;
    DxConvTextToCAD(host, DxTextGetCharset(text.style.view(), DxTextDefaultFont()));
    return host;
}

/// The tolerance, of one line or of two.
int drawTolerance(const DX_DIM_TEXTS& texts, const Mat44 m, int* row) {
    *row = OV_DIM_NO_TEXT;
    const int index = texts.lowerIndex ? texts.lowerIndex : texts.upperIndex;
    if (!index) return 0;
    const int error = drawText(texts.texts[static_cast<std::size_t>(index)], m, DX_TEXT_OF_DIMENSION, row);
    if (error || *row == OV_DIM_NO_TEXT || !texts.lowerIndex || !texts.upperIndex) return error;
    RPT3 point;
    UtCString lower;
    if (const int failed = DxCiTextGet(DxActPat, *row, &point, &lower)) return failed;
    const std::string upper = converted(texts.texts[static_cast<std::size_t>(texts.upperIndex)]);
    return DxCiTextChg(DxActPat, *row, point, upper + "\n" + lower.str());
}

int drawTexts(const DX_DIM_TEXTS& texts, const Mat44 m, int* textRow, int* tolRow) {
    *textRow = *tolRow = OV_DIM_NO_TEXT;
    if (texts.texts.empty()) return 0;
    int error = drawText(texts.texts[0], m, DX_TEXT_OF_DIMENSION, textRow);
    if (!error) error = drawTolerance(texts, m, tolRow);
    for (std::size_t i = 1; i < texts.texts.size() && !error; ++i) {
        const auto index = static_cast<int>(i);
        if (index == texts.upperIndex || index == texts.lowerIndex) continue;
        error = DxDrawText(&texts.texts[i], m, DX_TEXT_OF_ENTITY, 0);
    }
    return error;
}

} // namespace

int DxDrawDimFree(const DX_DIM_GEO& geo, const Mat44 m, int kind, int mode, const RPT refs[3]) {
    // Ahead of the texts, which would stand alone then.
    const bool isSound = std::all_of(geo.pts.begin(), geo.pts.end(), [](const OV_DIM_PT& p) {
        return std::isfinite(p.x) && std::isfinite(p.y);
    });
    if (geo.pts.empty() || !isSound) return DX_DIM_UNDECODED;
    if (const int error = DxNewElement(1)) return error;
    int textRow = 0, tolRow = 0;
    if (const int error = drawTexts(geo.texts, m, &textRow, &tolRow)) return error;
    const bool hasText = textRow != OV_DIM_NO_TEXT;
    if (const int error = Dxovdimlines(DxDimArrowPoints(geo, mode == ORDINATE), hasText)) return error;
    if (!hasText) return 0;
    const RPT first = DxDimPoint(geo.pts[0]);
    const RPT ofFree[3] = {first, first, first};
    return Dxovdim(kind > 9 ? kind % 10 : kind, mode, textRow, tolRow, mode == FREE ? ofFree : refs);
}

int DxDimDrawOrd(int kind, const DX_DIM_PTS& pts, const RPT refs[3], const DX_DIM_TEXTS& texts, const Mat44 m,
                 const DX_DIM_LOOK& look) {
    DX_DIM_GEO geo;
    geo.pts = pts;
    geo.rawKinds.assign(pts.size(), DRAW);
    if (!pts.empty()) geo.rawKinds[0] = MOVE;
    geo.looks.assign(pts.size(), look);
    geo.texts = texts;
    return DxDrawDimFree(geo, m, kind == DX_DIM_ORDINATE_X ? 1 : 2, ORDINATE, refs);
}
