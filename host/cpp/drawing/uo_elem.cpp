// The elements of a pattern as records.
#include "uo_elem.h"

#include "drawing/host_state.h"
#include "drawing/spline_arcs.h"
#include "services/failure.h"
#include "ut.h"

#include <algorithm>

using namespace host;

namespace {

constexpr int FIRST = 0x8026;
constexpr int NEXT = 0x8018;
constexpr int COUNT = 27;

/// The curve of the spline in row `row` as lines and arcs; kept until another spline is asked for.
const std::vector<UO_ELEM>& arcsOf(const Pattern& pattern, int row) {
    DrawingState& state = drawingState();
    if (state.arcsPattern == pattern.number && state.arcsRow == row) return state.splineArcs;
    state.arcsPattern = pattern.number;
    state.arcsRow = row;
    state.splineArcs.clear();
    const double index = pattern.elements[static_cast<std::size_t>(row)].cx;
    if (index >= 0 && index < static_cast<double>(pattern.splines.size()))
        state.splineArcs = splineArcs(pattern.splines[static_cast<std::size_t>(index)], UtConv(50));
    return state.splineArcs;
}

void fillPlain(const Element& e, const RPT& start, UO_ELEM& out) {
    out.start = start;
    out.end = {e.x, e.y};
    out.centre = {e.cx, e.cy};
    switch (e.type) {
    case ElementType::Move: out.type = 2; break;
    case ElementType::Draw: out.type = 1; break;
    case ElementType::Arc: out.type = e.ccw ? 4 : 3; break;
    case ElementType::Circle: // a whole turn from the point on it
        out.type = 4;
        out.start = out.end;
        break;
    default: out.type = 5; break;
    }
}

/// True for a circle that the point before it isn't on: a move to its point comes ahead of it.
bool isApart(const Element& e, int row, const RPT& before) {
    return e.type == ElementType::Circle && (row == 0 || e.x != before.x || e.y != before.y);
}

/// Gives the record of (row, piece), or of the first row behind it that has one.
int give(const Pattern& pattern, int row, int piece, UO_ELEM* out) {
    const auto rows = static_cast<int>(pattern.elements.size());
    for (; row < rows; ++row, piece = 0) {
        const Element& e = pattern.elements[static_cast<std::size_t>(row)];
        const RPT start = row > 0 ? RPT{pattern.elements[static_cast<std::size_t>(row) - 1].x,
                                        pattern.elements[static_cast<std::size_t>(row) - 1].y}
                                  : RPT{0, 0};
        if (e.type == ElementType::Spline) {
            const std::vector<UO_ELEM>& arcs = arcsOf(pattern, row);
            if (static_cast<std::size_t>(piece) >= arcs.size()) continue;
            *out = arcs[static_cast<std::size_t>(piece)];
        } else if (piece > (isApart(e, row, start) ? 1 : 0)) {
            continue;
        } else {
            fillPlain(e, start, *out);
            if (piece == 0 && isApart(e, row, start)) out->type = 2;
        }
        out->patNo = pattern.number;
        out->row = row;
        out->piece = piece;
        out->pen = e.pen;
        out->lineType = e.lineType;
        out->info = e.info;
        return 0;
    }
    return errorNoSuchObject;
}

} // namespace

int UoElemS(int op, UO_ELEM* elem) {
    if (callFails()) return errorNoMemory;
    const Pattern* pattern = openDrawing().find(elem->patNo);
    if (!pattern) return errorNoSuchObject;
    if (op == FIRST) return give(*pattern, 0, 0, elem);
    return op == NEXT && elem->row >= 0 ? give(*pattern, elem->row, elem->piece + 1, elem)
                                        : errorNotApplicable;
}

int UoElemS(int op, int patNo, int* count) {
    if (callFails()) return errorNoMemory;
    const Pattern* pattern = openDrawing().find(patNo);
    if (!pattern) return errorNoSuchObject;
    if (op != COUNT) return errorNotApplicable;
    *count = static_cast<int>(pattern->elements.size());
    return 0;
}

static int appendRecord(Pattern& pattern, const UO_ELEM& elem) {
    if (elem.type < 1 || elem.type > 4) return errorNotApplicable;
    Element e;
    e.type = elem.type == 1 ? ElementType::Draw : elem.type == 2 ? ElementType::Move : ElementType::Arc;
    e.x = elem.end.x;
    e.y = elem.end.y;
    if (e.type == ElementType::Arc) {
        e.cx = elem.centre.x;
        e.cy = elem.centre.y;
        e.ccw = elem.type == 4;
    }
    e.pen = elem.pen;
    e.lineType = static_cast<std::int16_t>(std::clamp(elem.lineType, 0, 0x7fff));
    e.info = elem.info & 0x7f;
    appendElement(pattern, e);
    return 0;
}

int ovelem(int* code, UO_ELEM* elem) {
    constexpr int APPEND = 29;
    constexpr int ON_RECORD = 0x8000; // reading works the same with and without this bit
    if (*code != APPEND) return UoElemS(*code | ON_RECORD, elem);
    if (callFails()) return errorNoMemory;
    Pattern* pattern = openDrawing().find(elem->patNo);
    return pattern ? appendRecord(*pattern, *elem) : errorNoSuchObject;
}
