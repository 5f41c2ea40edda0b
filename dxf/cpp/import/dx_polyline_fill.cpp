// The outline of a wide polyline: two sides and two ends around its centre line, filled or as a contour.
#include "../config/config_state.h"
#include "../host/dx_frame.h"
#include "../host/dx_host.h"
#include "../host/dx_host_hatch.h"
#include "dx_polyline_import.h"
#include "ge.h"
#include "import_state.h"
#include "ln.h"
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

/// The centre line in the host's frame, with the widths at the start and end of each of its elements.
struct CentreLine {
    LiList list;
    std::vector<double> widths; ///< two an element, in the order of chaining
};

/// The vertex at which the piece that holds row `row` begins; `known` is that of a row before it.
std::size_t vertexOfRow(int row, std::size_t known) {
    while (known + 2 < DxPolyRows.size() && DxPolyRows[known + 1] <= row) ++known;
    return known;
}

/// Spreads the widths of a vertex over the elements that its piece became, by their lengths.
void addWidths(const DX_VERTEX_TYPE& vertex, const LI_ELEM* first, std::vector<double>& widths) {
    double total = 0, behind = 0;
    for (const LI_ELEM* e = first; e; e = e->next) total += e->length;
    const auto widthAt = [&](double length) {
        const double t = total > 0 ? length / total : 0;
        return DxLengthToHost(std::fabs(std::lerp(vertex.startWidth, vertex.endWidth, t) * DxBlockScaleX));
    };
    for (const LI_ELEM* e = first; e; e = e->next) {
        widths.push_back(widthAt(behind));
        behind += e->length;
        widths.push_back(widthAt(behind));
    }
}

/// Collects the elements of the centre line from its pattern. 0 or 1001.
int collectCentreLine(int pat, CentreLine& line) {
    UO_ELEM e{};
    e.patNo = pat;
    std::size_t vertex = 0;
    const LI_ELEM* pieceStart = nullptr;
    const auto endPiece = [&] {
        if (pieceStart) addWidths(DxActPolyline.vertices[vertex], pieceStart, line.widths);
        pieceStart = nullptr;
    };
    for (int end = Dxovelem(DX_ELEM_FIRST, &e); !end; end = Dxovelem(DX_ELEM_NEXT, &e)) {
        if (e.type == 2 || !isPiece(e)) continue;
        LI_ELEM* elem = LiNew(line.list);
        if (!elem) return 1001;
        static_cast<UO_ELEM&>(*elem) = e;
        if (elem->isArc()) LiRadKorr(elem);
        LiElemExpand(elem);
        if (DxActPolyline.variableWidth) {
            const std::size_t its = vertexOfRow(e.row, vertex);
            if (its != vertex) endPiece();
            vertex = its;
            if (!pieceStart) pieceStart = elem;
        }
        LiChain(line.list, elem);
    }
    endPiece();
    return 0;
}

/// Half the width, not wider than the tightest arc.
double halfWidth(const LiList& list) {
    const double width = (DxActPolyline.startWidth + DxActPolyline.endWidth) * 0.5 * DxBlockScaleX;
    double h = DxLengthToHost(std::fabs(width * 0.5));
    for (const LI_ELEM* e = LiSucc(list, nullptr); e; e = LiSucc(list, e))
        if (e->isArc()) h = std::min(h, e->radius);
    return h;
}

std::unique_ptr<ILnLineOffsettingAlgorithm> offsetterFor(const CentreLine& line) {
    if (!DxActPolyline.variableWidth)
        return LnParallelOffsettingAlgorithm::Create(line.list, 0, 2 * halfWidth(line.list));
    const std::vector<double> extra(line.widths.size());
    return LnExtendedOffsettingAlgorithm::Create(line.list, 0, line.widths, extra);
}

/// A contour, from its first element to its last.
struct Contour {
    const LI_ELEM* first;
    const LI_ELEM* last;

    /// A piece without width, which comes as a contour along it and back: there is nothing to fill.
    bool isHairline() const {
        const LI_ELEM& back = *last;
        return first->next == last && back.isArc() == first->isArc() && back.sweep == -first->sweep &&
               back.end.x == first->start.x && back.end.y == first->start.y;
    }
};

std::vector<Contour> contoursOf(const LiList& list) {
    std::vector<Contour> contours;
    for (const LI_ELEM* e = LiSucc(list, nullptr); e; e = LiSucc(list, e)) {
        if (contours.empty() || contours.back().last->contour != e->contour) contours.push_back({e, e});
        contours.back().last = e;
    }
    return contours;
}

/// How elements of an outline look: those of the centre line's beginning, with an info byte of their own.
struct Look {
    int pen, lineType;
    unsigned char info;
};

int append(int pat, UO_ELEM elem, const Look& look) {
    elem.patNo = pat;
    elem.pen = look.pen;
    elem.lineType = look.lineType;
    elem.info = look.info;
    return Dxovelem(DX_ELEM_APPEND, &elem);
}

/// Writes elements from `first` to `last` into a pattern.
int writePieces(int pat, const LI_ELEM* first, const LI_ELEM* last, const Look& look) {
    UO_ELEM move = *first;
    move.type = 2;
    move.end = first->start;
    if (const int error = append(pat, move, {look.pen, look.lineType, 0})) return error;
    for (const LI_ELEM* e = first;; e = e->next) {
        const int error = append(pat, *e, look);
        if (error || e == last) return error;
    }
}

enum class Parts { Areas, Hairlines };

int writeContours(int pat, const std::vector<Contour>& contours, Parts parts, const Look& look) {
    for (const Contour& contour : contours) {
        const bool hairline = contour.isHairline();
        if (hairline != (parts == Parts::Hairlines)) continue;
        const LI_ELEM* last = hairline ? contour.first : contour.last;
        if (const int error = writePieces(pat, contour.first, last, look)) return error;
    }
    return 0;
}

void removePattern(int pat) {
    if (pat) Dxovpat(17, &pat);
}

/// Moves the content of `pat` to the pattern that is kept, or to the next one when that is full.
int moveToKept(int pat) {
    int count = 0;
    if (const int error = UoElemS(27, pat, &count)) return error;
    const int announced = std::max(count, 1); // a fill alone keeps its pattern too
    if (const int error = DxNewElement(announced)) return error;
    return Dxovcopy(pat, DxActPat);
}

/// The fill of the contours in `scratch`.
int fillFrom(int scratch, int outline) {
    int contour = 0;
    int error = DxCiChgHatchCont(scratch, &contour);
    if (!error) error = Dxovhatch(outline, contour);
    removePattern(contour);
    return error;
}

/// Makes the pattern that shows the wide line: its outline and its fill, as the switches say, and lines where
/// it has no width.
int outlineInto(const std::vector<Contour>& contours, const UO_ELEM& model, int* outline) {
    constexpr unsigned char closedFigure = 5, figure = 4;
    const auto look = [&](unsigned char info) { return Look{model.pen, model.lineType, info}; };
    int scratch = 0;
    int error = 0;
    if (DxFillMode) {
        error = Dxovpat(11, &scratch);
        if (!error) error = writeContours(scratch, contours, Parts::Areas, look(0));
    }
    if (!error) error = Dxovpat(211, outline);
    if (!error && DxFillContour) error = writeContours(*outline, contours, Parts::Areas, look(closedFigure));
    if (!error) error = writeContours(*outline, contours, Parts::Hairlines, look(figure));
    if (!error && DxFillMode) {
        int count = 0;
        UoElemS(27, scratch, &count);
        if (count) error = fillFrom(scratch, *outline);
    }
    removePattern(scratch);
    return error;
}

} // namespace

int DxDrawPolyfill() {
    if (!DxFillMode && !DxFillContour) return 0; // nothing shows the width: the centre line stays
    if (const int error = DxCiElemDrawPat()) return error;
    int centreLine = 0;
    if (const int error = Dxovpat(5, &centreLine)) return error;
    CentreLine line;
    if (const int error = collectCentreLine(centreLine, line)) return error;
    if (line.list.count == 0) return 0;
    LiSortKont(line.list, 0, UtConv(50));
    if (!DxActPolyline.variableWidth) LiRemShort(line.list, UtConv(50));
    const auto offsetter = offsetterFor(line);
    ILnOutline* shape = nullptr;
    if (!offsetter || offsetter->GetOutline(&shape) != 0 || !shape) return noOutline;
    if (const int error = shape->Calculate(UtConv(50))) return error;

    int outline = 0;
    int error = outlineInto(contoursOf(shape->Contours()), *line.list.first, &outline);
    const int returned = DxReturnToPat(DxActPatIndex, DxFillSavedPat);
    if (!error) error = returned;
    if (!error) {
        removePattern(centreLine);
        // Where the host can't copy it, the outline stays in the pattern that it was made in.
        if (moveToKept(outline)) return 0;
    }
    removePattern(outline);
    return error;
}
