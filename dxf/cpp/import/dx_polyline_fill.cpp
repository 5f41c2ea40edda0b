// The outline of a wide polyline: two sides and two ends around its centre line, filled or as a contour.
#include "../config/config_state.h"
#include "../host/dx_host.h"
#include "dx_polyline_import.h"
#include "ge.h"
#include "import_state.h"
#include "ln.h"
#include "ov.h"
#include "uo_elem.h"
#include "ut.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int noOutline = 2360;
constexpr double smallestArcRadius = 1e-5;

double radiusOf(const UO_ELEM& e) {
    return std::hypot(e.end.x - e.centre.x, e.end.y - e.centre.y);
}

/// Pieces without length are no part of an outline.
bool isPiece(const UO_ELEM& e) {
    if (e.type == 1) return std::hypot(e.end.x - e.start.x, e.end.y - e.start.y) > GeEpsiGetTol();
    return (e.type == 3 || e.type == 4) && radiusOf(e) > smallestArcRadius;
}

/// The centre line as a contour list. 0 or 1001.
int collectCentreLine(int pat, LiList& list) {
    UO_ELEM e{};
    e.patNo = pat;
    int piece = 0;
    for (int end = UoElemS(0x8026, &e); !end; end = UoElemS(0x8018, &e)) {
        if (e.type == 2) continue;
        const int source = piece++;
        if (!isPiece(e)) continue;
        LI_ELEM* elem = LiNew(list);
        if (!elem) return 1001;
        static_cast<UO_ELEM&>(*elem) = e;
        LiChain(list, elem);
        elem->source = source; // its widths stand at this place
        if (elem->isArc()) LiRadKorr(elem);
        LiElemExpand(elem);
    }
    return 0;
}

/// Half the width, not wider than the tightest arc.
double halfWidth(const LiList& list) {
    double h = std::fabs((DxActPolyline.startWidth + DxActPolyline.endWidth) * 0.5 * DxBlockScaleX * 0.5);
    for (const LI_ELEM* e = LiSucc(list, nullptr); e; e = LiSucc(list, e))
        if (e->isArc()) h = std::min(h, e->radius);
    return h;
}

std::unique_ptr<ILnLineOffsettingAlgorithm> offsetterFor(const LiList& list) {
    if (!DxActPolyline.variableWidth)
        return LnParallelOffsettingAlgorithm::Create(list, 0, 2 * halfWidth(list));
    const std::size_t n = DxActPolyline.vertices.size() - (DxActPolyline.closed ? 0 : 1);
    std::vector<double> widths;
    for (std::size_t i = 0; i < n; ++i) {
        widths.push_back(std::fabs(DxActPolyline.vertices[i].startWidth * DxBlockScaleX));
        widths.push_back(std::fabs(DxActPolyline.vertices[i].endWidth * DxBlockScaleX));
    }
    return LnExtendedOffsettingAlgorithm::Create(list, 0, widths, std::vector<double>(2 * n));
}

/// Writes the contours into the active pattern.
int writeContours(const LiList& contours, unsigned char info) {
    const LI_ELEM* before = nullptr;
    for (const LI_ELEM* e = LiSucc(contours, nullptr); e; before = e, e = LiSucc(contours, e)) {
        if (!before || before->contour != e->contour)
            if (const int error = ovdraw(2, e->start.x, e->start.y, 0)) return error;
        const int error = e->isArc() ? ovarc(e->type, e->end.x, e->end.y, e->centre.x, e->centre.y, info)
                                     : ovdraw(1, e->end.x, e->end.y, info);
        if (error) return error;
    }
    return 0;
}

/// A new pattern with the contours in it.
int contourPattern(int code, const LiList* contours, unsigned char info, int* pat) {
    const int error = Dxovpat(code, pat);
    return !error && contours ? writeContours(*contours, info) : error;
}

void removePattern(int pat) {
    if (pat) Dxovpat(17, &pat);
}

/// Moves the content of `pat` to the pattern that is kept, element by element for the count.
int moveToKept(int pat) {
    int count = 0;
    if (const int error = UoElemS(27, pat, &count)) return error;
    for (int i = 0; i < std::max(count, 1); ++i) // a fill alone keeps its pattern too
        if (const int error = DxNewElement(1)) return error;
    int code = 8;
    int target = DxActPat;
    return ovcopy(&code, &pat, &target);
}

int outlineInto(const LiList& contours, int* outline) {
    int scratch = 0;
    int error = 0;
    if (DxFillMode) error = contourPattern(11, &contours, 0, &scratch);
    if (!error) error = contourPattern(211, DxFillContour ? &contours : nullptr, 5, outline);
    if (!error && DxFillMode) {
        int code = 1;
        error = ovhatch(&code, outline, &scratch);
    }
    removePattern(scratch);
    return error;
}

} // namespace

int DxDrawPolyfill() {
    if (const int error = DxCiElemDrawPat()) return error;
    int centreLine = 0;
    if (const int error = Dxovpat(5, &centreLine)) return error;
    LiList list;
    if (const int error = collectCentreLine(centreLine, list)) return error;
    if (list.count == 0) return 0;
    LiSortKont(list, 0, UtConv(50));
    if (!DxActPolyline.variableWidth) LiRemShort(list, UtConv(50));
    const auto offsetter = offsetterFor(list);
    ILnOutline* shape = nullptr;
    if (!offsetter || offsetter->GetOutline(&shape) != 0 || !shape) return noOutline;
    if (const int error = shape->Calculate(UtConv(50))) return error;

    int outline = 0;
    int error = outlineInto(shape->Contours(), &outline);
    DxActPat = DxFillSavedPat;
    Dxovpat(23, &DxActPat);
    if (!error) {
        removePattern(centreLine);
        error = moveToKept(outline);
    }
    removePattern(outline);
    return error;
}
