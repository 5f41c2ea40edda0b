// CiElem: the elements of a pattern one by one. A spline is walked as the chain of Draws along its curve; the
// vertex number of the cursor says which of them.
#include "ci.h"

#include "drawing/context.h"
#include "drawing/host_state.h"
#include "drawing/spline_curve.h"
#include "services/failure.h"
#include "services/session.h"

#include <cmath>

using namespace host;

static Pattern* patternAt(const DsCsr& cursor) {
    return openDrawing().find(cursor.Get().patNo);
}

static Element* elementAt(const DsCsr& cursor) {
    Pattern* pattern = callFails() ? nullptr : patternAt(cursor);
    const int row = cursor.Get().elRow;
    if (!pattern || row < 0 || static_cast<std::size_t>(row) >= pattern->elements.size()) return nullptr;
    return &pattern->elements[static_cast<std::size_t>(row)];
}

static const Element* elementAt(const DsCsr& cursor, ElementType type) {
    const Element* element = elementAt(cursor);
    return element && element->type == type ? element : nullptr;
}

/// The curve of the spline in row `row` as points; kept until another spline is asked for.
static const std::vector<RPT>& splineChain(const Pattern& pattern, int row) {
    DrawingState& state = drawingState();
    if (state.chainPattern == pattern.number && state.chainRow == row) return state.splineChain;
    state.splineChain.clear();
    state.chainPattern = pattern.number;
    state.chainRow = row;
    const double index = pattern.elements[static_cast<std::size_t>(row)].cx;
    if (index >= 0 && index < static_cast<double>(pattern.splines.size())) {
        const Spline& spline = pattern.splines[static_cast<std::size_t>(index)];
        state.splineChain = flattenSpline(spline, visibleTolerance(spline, drawingTolerance(state.drawing)));
    }
    return state.splineChain;
}

/// Aims the cursor at a row and reports its type; `lastPiece` enters a spline at its end.
static int aimAt(DsCsr& cursor, const Pattern& pattern, int row, bool lastPiece, int* type) {
    if (row < 0 || static_cast<std::size_t>(row) >= pattern.elements.size()) return errorNoSuchObject;
    DS_CURSOR_STRUCT& at = cursor.Get();
    at.elRow = row;
    at.vertNo = 0;
    at.type = D_ELEMENT;
    const ElementType kind = pattern.elements[static_cast<std::size_t>(row)].type;
    *type = static_cast<int>(kind == ElementType::Spline ? ElementType::Draw : kind);
    if (kind == ElementType::Spline)
        at.vertNo = lastPiece ? static_cast<int>(splineChain(pattern, row).size()) - 1 : 1;
    return 0;
}

int CiElem::First(DsCsr& cursor, int* type) {
    if (callFails()) return errorNoMemory;
    const Pattern* pattern = patternAt(cursor);
    drawingState().chainRow = -1; // a walk begins: what is kept of a spline may be of an older state
    return pattern ? aimAt(cursor, *pattern, 0, false, type) : errorNoSuchObject;
}

int CiElem::Next(DsCsr& cursor, int* type) {
    if (callFails()) return errorNoMemory;
    const Pattern* pattern = patternAt(cursor);
    if (!pattern) return errorNoSuchObject;
    DS_CURSOR_STRUCT& at = cursor.Get();
    const auto row = static_cast<std::size_t>(at.elRow);
    const bool inSpline = at.vertNo > 0 && at.elRow >= 0 && row < pattern->elements.size() &&
                          pattern->elements[row].type == ElementType::Spline;
    if (inSpline && static_cast<std::size_t>(at.vertNo) + 1 < splineChain(*pattern, at.elRow).size()) {
        ++at.vertNo;
        *type = static_cast<int>(ElementType::Draw);
        return 0;
    }
    return aimAt(cursor, *pattern, at.elRow + 1, false, type);
}

int CiElem::Last(DsCsr& cursor, int* type) {
    if (callFails()) return errorNoMemory;
    const Pattern* pattern = patternAt(cursor);
    if (!pattern) return errorNoSuchObject;
    drawingState().chainRow = -1;
    return aimAt(cursor, *pattern, static_cast<int>(pattern->elements.size()) - 1, true, type);
}

int CiElem::GetMove(const DsCsr& cursor, RPT3* target) {
    const Element* element = elementAt(cursor, ElementType::Move);
    if (!element) return errorNoSuchObject;
    *target = scaled({element->x, element->y, 0}, 1 / contextFactor(contextId_));
    return 0;
}

int CiElem::GetDraw(const DsCsr& cursor, RPT3* target) {
    const Element* element = elementAt(cursor);
    if (!element) return errorNoSuchObject;
    RPT point{element->x, element->y};
    if (element->type == ElementType::Spline) {
        const std::vector<RPT>& chain = splineChain(*patternAt(cursor), cursor.Get().elRow);
        const int piece = cursor.Get().vertNo;
        if (piece < 1 || static_cast<std::size_t>(piece) >= chain.size()) return errorNoSuchObject;
        point = chain[static_cast<std::size_t>(piece)];
    } else if (element->type != ElementType::Draw) {
        return errorNoSuchObject;
    }
    *target = scaled({point.x, point.y, 0}, 1 / contextFactor(contextId_));
    return 0;
}

int CiElem::GetArc(const DsCsr& cursor, short* direction, RPT3* end, RPT3* centre) {
    const Element* element = elementAt(cursor, ElementType::Arc);
    if (!element) return errorNoSuchObject;
    const double back = 1 / contextFactor(contextId_);
    *direction = element->ccw ? 1 : -1;
    *end = scaled({element->x, element->y, 0}, back);
    *centre = scaled({element->cx, element->cy, 0}, back);
    return 0;
}

int CiElem::GetCircle(const DsCsr& cursor, RPT3* centre, double* radius) {
    const Element* element = elementAt(cursor, ElementType::Circle);
    if (!element) return errorNoSuchObject;
    const double back = 1 / contextFactor(contextId_);
    *centre = scaled({element->cx, element->cy, 0}, back);
    *radius = std::hypot(element->x - element->cx, element->y - element->cy) * back;
    return 0;
}

/// Appends an element with the host's pen and line type; points are in the context's unit.
static int addElement(const DsCsr& cursor, int contextId, ElementType type, const RPT3& target,
                      const RPT3& centre, bool ccw) {
    if (callFails()) return errorNoMemory;
    Pattern* pattern = patternAt(cursor);
    if (!pattern) return errorNoSuchObject;
    const double factor = contextFactor(contextId);
    Element element;
    element.type = type;
    element.x = target.x * factor;
    element.y = target.y * factor;
    element.cx = centre.x * factor;
    element.cy = centre.y * factor;
    element.pen = session().pen;
    element.lineType = static_cast<std::int16_t>(session().lineType);
    element.ccw = ccw;
    appendElement(*pattern, element);
    return 0;
}

int CiElem::AddMove(const DsCsr& cursor, const RPT3& target) {
    return addElement(cursor, contextId_, ElementType::Move, target, {0, 0, 0}, false);
}

int CiElem::AddDraw(const DsCsr& cursor, const RPT3& target) {
    return addElement(cursor, contextId_, ElementType::Draw, target, {0, 0, 0}, false);
}

int CiElem::AddArc(const DsCsr& cursor, short direction, const RPT3& end, const RPT3& centre) {
    return addElement(cursor, contextId_, ElementType::Arc, end, centre, direction > 0);
}

int CiElem::AddCircle(const DsCsr& cursor, const RPT3& centre, double radius) {
    const RPT3 onCircle{centre.x + radius, centre.y, 0};
    return addElement(cursor, contextId_, ElementType::Circle, onCircle, centre, false);
}

int CiElem::ChgInfo(const DsCsr& cursor, unsigned char info) {
    Element* element = elementAt(cursor);
    if (!element) return errorNoSuchObject;
    element->info = info & 0x7f;
    return 0;
}

int CiElem::GetParams(const DsCsr& cursor, int* pen, short* lineType, unsigned char* info) {
    const Element* element = elementAt(cursor);
    if (!element) return errorNoSuchObject;
    *pen = element->pen;
    *lineType = element->lineType;
    *info = element->info;
    return 0;
}

int CiElem::GetAttr(const DsCsr& cursor, const UtCString& name, UtCString* value) {
    if (callFails()) return errorNoMemory;
    const Pattern* pattern = patternAt(cursor);
    if (!pattern) return errorNoSuchObject;
    for (const ElementAttribute& attribute : pattern->elementAttributes) {
        if (attribute.row != cursor.Get().elRow || attribute.name != name.str()) continue;
        *value = attribute.value;
        return 0;
    }
    return errorNoSuchObject;
}
