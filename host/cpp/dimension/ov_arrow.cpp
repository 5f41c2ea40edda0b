// Arrows: making them, and their lines as patterns.
#include "ov_arrow.h"

#include "dimension/dim_drawing.h"
#include "drawing/host_state.h"
#include "services/failure.h"
#include "text/layout.h"

#include <algorithm>
#include <cmath>

using namespace host;

namespace {

/// The arrow that takes points; null when it is gone.
Arrow* arrowInMaking() {
    const DimensionState& state = drawingState().dimension;
    Pattern* pattern = openDrawing().find(state.madePattern);
    const bool inside =
        pattern && state.madeRow >= 0 && static_cast<std::size_t>(state.madeRow) < pattern->arrows.size();
    return inside ? &pattern->arrows[static_cast<std::size_t>(state.madeRow)] : nullptr;
}

template <class Object>
const Object* objectAt(const std::vector<Object>& list, int row) {
    return row >= 0 && static_cast<std::size_t>(row) < list.size() ? &list[static_cast<std::size_t>(row)]
                                                                   : nullptr;
}

/// The lines in a scratch pattern of their own.
int makeScratch(DimDrawing&& drawing, int* arrowPat) {
    Pattern& scratch = openDrawing().addPattern(true);
    openDrawing().elementCount += drawing.lines.size();
    scratch.elements = std::move(drawing.lines);
    *arrowPat = scratch.number;
    return 0;
}

void endWalk() {
    int& pattern = drawingState().dimension.walkPattern;
    if (pattern) openDrawing().remove(pattern);
    pattern = 0;
}

int stepArrow(int patNo, int next, int* row, int* arrowPat) {
    endWalk();
    const Pattern* pattern = openDrawing().find(patNo);
    const Arrow* arrow = pattern ? objectAt(pattern->arrows, next) : nullptr;
    if (!arrow) return errorNoSuchObject;
    *row = next;
    const int error = makeScratch(drawArrow(*arrow, sheetMillimetres(openDrawing())), arrowPat);
    drawingState().dimension.walkPattern = *arrowPat;
    return error;
}

int linesOfDimension(int patNo, int row, int* arrowPat) {
    const Pattern* pattern = openDrawing().find(patNo);
    const Dimension* dimension = pattern ? objectAt(pattern->dimensions, row) : nullptr;
    if (!dimension) return errorNoSuchObject;
    return makeScratch(drawDimension(*dimension, sheetMillimetres(openDrawing())), arrowPat);
}

int release(int patNo) {
    const Pattern* pattern = openDrawing().find(patNo);
    if (!pattern || !pattern->scratch) return errorNoSuchObject;
    openDrawing().remove(patNo);
    return 0;
}

} // namespace

int ovarrowparams(int* code, int* use, int* kind, int* pen, int* lineType, double* length, double* width) {
    if (callFails()) return errorNoMemory;
    DimensionState& state = drawingState().dimension;
    if (*code == 5) {
        *use = state.arrowUse, *kind = state.arrowKind;
        *pen = state.arrowPen, *lineType = state.arrowLineType;
        *length = state.headLength, *width = state.headWidth;
        return 0;
    }
    if (*code != 6 || !std::isfinite(*length) || !std::isfinite(*width)) return errorNotApplicable;
    state.arrowUse = *use, state.arrowKind = *kind;
    state.arrowPen = *pen, state.arrowLineType = *lineType;
    state.headLength = *length, state.headWidth = *width;
    return 0;
}

int ovarrow(int* code, int* patNo, int* row, int* unused) {
    if (callFails()) return errorNoMemory;
    Pattern* pattern = openDrawing().active();
    if (!pattern) return errorNoSuchObject;
    if (*code != 11) return errorNotApplicable;
    DimensionState& state = drawingState().dimension;
    Arrow& arrow = pattern->arrows.emplace_back();
    arrow.use = state.arrowUse;
    arrow.headLength = state.headLength;
    arrow.headWidth = state.headWidth;
    ++openDrawing().elementCount;
    *patNo = state.madePattern = pattern->number;
    *row = state.madeRow = static_cast<int>(pattern->arrows.size()) - 1;
    *unused = 0;
    state.leaderStart = -1;
    return 0;
}

int ovaddarrow(int* op, int* first, int* kind, double* x, double* y, double* cx, double* cy) {
    if (callFails()) return errorNoMemory;
    Arrow* arrow = arrowInMaking();
    if (!arrow) return errorNoSuchObject;
    const bool isFinite = std::isfinite(*x) && std::isfinite(*y) && std::isfinite(*cx) && std::isfinite(*cy);
    if (*op < 1 || *op > 4 || !isFinite) return errorNotApplicable;
    DimensionState& state = drawingState().dimension;
    Element e;
    e.type = *op == 2 ? ElementType::Move : *op == 1 ? ElementType::Draw : ElementType::Arc;
    e.x = *x, e.y = *y;
    if (e.type == ElementType::Arc) e.cx = *cx, e.cy = *cy, e.ccw = *op == 4;
    e.pen = state.arrowPen;
    e.lineType = static_cast<std::int16_t>(std::clamp(state.arrowLineType, 0, 0x7fff));
    if (arrow->lines.empty()) arrow->startHead = *kind;
    if (*first == 1) state.leaderStart = static_cast<int>(arrow->lines.size());
    arrow->endHead = arrow->lines.empty() ? 0 : *kind;
    arrow->lines.push_back(e);
    return 0;
}

int ovarrowel(int code, int patNo, int row, std::vector<int>* starts, std::vector<int>* ends) {
    if (callFails()) return errorNoMemory;
    const Pattern* pattern = openDrawing().find(patNo);
    const Dimension* dimension = pattern ? objectAt(pattern->dimensions, row) : nullptr;
    if (!dimension) return errorNoSuchObject;
    if (code != 0x8014) return errorNotApplicable;
    starts->clear();
    ends->clear();
    if (dimension->isFree()) return 0; // its heads are lines like the others
    starts->push_back(dimension->arrow.kind[0]);
    ends->push_back(dimension->arrow.kind[1]);
    return 0;
}

int ovarrowpat(int op, int patNo, int* row, int* arrowPat) {
    if (callFails()) return errorNoMemory;
    switch (op) {
    case 0x8526: return stepArrow(patNo, 0, row, arrowPat);
    case 0x8518: return stepArrow(patNo, *row + 1, row, arrowPat);
    case 0x8014: return linesOfDimension(patNo, *row, arrowPat);
    case 32: return release(*arrowPat);
    default: return errorNotApplicable;
    }
}
