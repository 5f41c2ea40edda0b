// Dimensions of the active pattern: parameters, making, reading.
#include "ov_dim.h"
#include "ov_arrow.h"

#include "dimension/dim_drawing.h"
#include "dimension/dim_text.h"
#include "drawing/host_state.h"
#include "geometry/plane.h"
#include "services/failure.h"

#include <algorithm>
#include <cmath>

using namespace host;

namespace {

constexpr int kNoKind = 2000, kNotDrawable = 2332;
constexpr int kRead = 0x8014;

bool isUsable(const OV_DIM_ARROW_PARM& a, const OV_DIM_TXT_PARM& t, const OV_DIM_TOL_PARM& o) {
    const double values[] = {a.extOffset, a.extOvershoot, a.lineOvershoot, a.lineOvershoot2, a.length[0],
                             a.length[1], a.length[2],    a.width[0],      a.width[1],       a.width[2],
                             t.height,    t.width,        t.spacing,       t.oblique,        t.widthFactor,
                             o.height,    o.width,        o.spacing,       o.oblique,        o.widthFactor};
    return std::all_of(std::begin(values), std::end(values), [](double v) { return std::isfinite(v); });
}

Dimension* dimensionAt(int patNo, int row) {
    Pattern* pattern = openDrawing().find(patNo);
    const bool inside = pattern && row >= 0 && static_cast<std::size_t>(row) < pattern->dimensions.size();
    return inside ? &pattern->dimensions[static_cast<std::size_t>(row)] : nullptr;
}

void noteRead(int patNo, int row) {
    drawingState().dimension.readPattern = patNo;
    drawingState().dimension.readRow = row;
}

Dimension newDimension(int kind, const RPT refs[3]) {
    const DimensionState& state = drawingState().dimension;
    Dimension dimension;
    dimension.kind = kind & 0xffff;
    dimension.place = kind >> 16 & 0xffff;
    std::copy_n(refs, 3, dimension.refs);
    dimension.arrow = state.arrow;
    dimension.txt = state.txt;
    dimension.tol = state.tol;
    return dimension;
}

int append(Pattern& pattern, Dimension&& dimension) {
    pattern.dimensions.push_back(std::move(dimension));
    ++openDrawing().elementCount;
    return static_cast<int>(pattern.dimensions.size()) - 1;
}

bool areFinite(const std::vector<OV_DIM_PT>& points, const RPT& textPos, const RPT refs[3]) {
    return std::all_of(points.begin(), points.end(),
                       [](const OV_DIM_PT& p) {
                           return isFinite({p.x, p.y});
                       }) &&
           isFinite(textPos) && std::all_of(refs, refs + 3, isFinite);
}

int makeDimension(int kind, const std::vector<OV_DIM_PT>& points, const RPT& textPos, const RPT refs[3],
                  const UtCString& text, int* row) {
    Pattern* pattern = openDrawing().active();
    if (!pattern) return errorNoSuchObject;
    if (dimFamily(kind) == 0) return kNoKind;
    if (!areFinite(points, textPos, refs)) return kNotDrawable;
    Dimension dimension = newDimension(kind, refs);
    dimension.textPos = textPos;
    for (const OV_DIM_PT& p : points) dimension.points.push_back({p.x, p.y, static_cast<double>(p.kind)});
    if (pointsOfKind(dimension, 3).empty()) return kNotDrawable;
    const std::size_t before = pattern->texts.size();
    if (!text.IsEmpty()) addDimensionTexts(*pattern, dimension, text.str(), openDrawing());
    openDrawing().elementCount += pattern->texts.size() - before;
    *row = append(*pattern, std::move(dimension));
    return 0;
}

/// The two points of an ordinate's leader; another dimension of lines has none. One that shows lines of its
/// own has them among its points.
std::vector<OV_DIM_PT> leaderPoints(const Dimension& dimension) {
    const bool isLeader = dimension.mode == OV_DIM_MODE_ORDINATE && dimension.points.empty();
    if (!isLeader || dimension.lines.empty()) return {};
    const Element &first = dimension.lines.front(), &last = dimension.lines.back();
    return {{first.x, first.y, 3}, {last.x, last.y, 2}};
}

int kindWord(const Dimension& dimension) {
    const bool isLine = dimension.kind >= 1 && dimension.kind <= 3;
    const int kind = dimension.kind + (isLine && dimension.mode ? 10 * dimension.mode : 0);
    return kind | dimension.place << 16;
}

int readDimension(int patNo, int row, int* kind, std::vector<OV_DIM_PT>* points, RPT* textPos, RPT refs[3],
                  UtCString* text) {
    const Dimension* dimension = dimensionAt(patNo, row);
    if (!dimension) return errorNoSuchObject;
    noteRead(patNo, row);
    *kind = kindWord(*dimension);
    *points = leaderPoints(*dimension);
    for (const RPT3& p : dimension->points) points->push_back({p.x, p.y, static_cast<std::int32_t>(p.z)});
    *textPos = dimension->textPos;
    std::copy_n(dimension->refs, 3, refs);
    *text = dimensionText(*openDrawing().find(patNo), *dimension);
    return 0;
}

int rowOrNone(int row) {
    return row < 0 ? OV_DIM_NO_TEXT : row;
}

int makeOfLines(int textRow, int tolRow, const RPT refs[3], int* row) {
    DimensionState& state = drawingState().dimension;
    Pattern* pattern = openDrawing().active();
    const bool isMade = pattern && pattern->number == state.madePattern && state.madeRow >= 0 &&
                        static_cast<std::size_t>(state.madeRow) + 1 == pattern->arrows.size();
    if (!isMade) return errorNoSuchObject;
    if (!std::all_of(refs, refs + 3, isFinite)) return kNotDrawable;
    Dimension dimension = newDimension(state.nextKind, refs);
    dimension.mode = state.nextMode;
    dimension.lines = std::move(pattern->arrows.back().lines);
    dimension.textRow = textRow == OV_DIM_NO_TEXT ? -1 : textRow;
    dimension.tolRow = tolRow == OV_DIM_NO_TEXT ? -1 : tolRow;
    if (dimension.textRow >= 0 && static_cast<std::size_t>(dimension.textRow) < pattern->texts.size()) {
        const Text& text = pattern->texts[static_cast<std::size_t>(dimension.textRow)];
        dimension.textPos = {text.x, text.y};
    }
    pattern->arrows.pop_back();
    --openDrawing().elementCount;
    state.madeRow = -1;
    *row = append(*pattern, std::move(dimension));
    noteRead(pattern->number, *row);
    return 0;
}

int step(int patNo, int next, int* row, int* textRow, int* tolRow, RPT refs[3]) {
    const Dimension* dimension = dimensionAt(patNo, next);
    if (!dimension) return errorNoSuchObject;
    *row = next;
    *textRow = rowOrNone(dimension->textRow);
    *tolRow = rowOrNone(dimension->tolRow);
    if (refs) std::copy_n(dimension->refs, 3, refs);
    noteRead(patNo, next);
    return 0;
}

} // namespace

int ovglobdimparams(int code, OV_DIM_ARROW_PARM* arrow, OV_DIM_TXT_PARM* txt, OV_DIM_TOL_PARM* tol) {
    if (callFails()) return errorNoMemory;
    DimensionState& state = drawingState().dimension;
    if (code == 5) {
        *arrow = state.arrow;
        *txt = state.txt;
        *tol = state.tol;
        return 0;
    }
    if (code != 6 || !isUsable(*arrow, *txt, *tol)) return errorNotApplicable;
    state.arrow = *arrow;
    state.txt = *txt;
    state.tol = *tol;
    return 0;
}

int ovlocdimparams(int code, int patNo, int row, OV_DIM_ARROW_PARM* arrow, OV_DIM_TXT_PARM* txt,
                   OV_DIM_TOL_PARM* tol) {
    if (callFails()) return errorNoMemory;
    const Dimension* dimension = dimensionAt(patNo, row);
    if (!dimension) return errorNoSuchObject;
    if (code != 20) return errorNotApplicable;
    *arrow = dimension->arrow;
    *txt = dimension->txt;
    *tol = dimension->tol;
    return 0;
}

int ovdimparams(int code, int* kind, int* mode, int* horizontal) {
    if (callFails()) return errorNoMemory;
    DimensionState& state = drawingState().dimension;
    if (code == 6) {
        state.nextKind = *kind;
        state.nextMode = *mode;
        return 0;
    }
    if (code != 5) return errorNotApplicable;
    const Dimension* dimension = dimensionAt(state.readPattern, state.readRow);
    if (!dimension) return errorNoSuchObject;
    *kind = kindWord(*dimension) & 0xffff;
    *mode = dimension->mode;
    const int family = dimFamily(dimension->kind);
    *horizontal = dimension->txt.horizontal[family >= 5 && family <= 6 ? 1 : family >= 4 ? 2 : 0];
    return 0;
}

int ovdodim(int code, int patNo, int* row, int* kind, std::vector<OV_DIM_PT>* points, RPT* textPos,
            RPT refs[3], UtCString* text) {
    if (callFails()) return errorNoMemory;
    if (code == 6) return makeDimension(*kind, *points, *textPos, refs, *text, row);
    return code == kRead ? readDimension(patNo, *row, kind, points, textPos, refs, text) : errorNotApplicable;
}

int ovdimlines(int code, int patNo, int row) {
    if (callFails()) return errorNoMemory;
    DimensionState& state = drawingState().dimension;
    Pattern* pattern = openDrawing().find(patNo);
    Dimension* dimension = dimensionAt(patNo, row);
    const bool isMade = pattern && patNo == state.madePattern && state.madeRow >= 0 &&
                        static_cast<std::size_t>(state.madeRow) + 1 == pattern->arrows.size();
    if (!dimension || !isMade) return errorNoSuchObject;
    if (code != 6) return errorNotApplicable;
    for (const OV_DIM_PT& p : leaderPoints(*dimension))
        dimension->points.push_back({p.x, p.y, static_cast<double>(p.kind)});
    dimension->lines = std::move(pattern->arrows.back().lines);
    pattern->arrows.pop_back();
    --openDrawing().elementCount;
    state.madeRow = -1;
    return 0;
}

int ovdim(int code, int patNo, int* row, int* textRow, int* tolRow, RPT refs[3]) {
    if (callFails()) return errorNoMemory;
    switch (code) {
    case 6: return makeOfLines(*textRow, *tolRow, refs, row);
    case 38:
    case 0x8026: return step(patNo, 0, row, textRow, tolRow, refs);
    case 24:
    case 0x8018: return step(patNo, *row + 1, row, textRow, tolRow, refs);
    default: return errorNotApplicable;
    }
}
