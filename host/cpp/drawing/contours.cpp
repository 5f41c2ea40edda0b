// Contour services: chains of elements, and cutting them at the border of an area.
#include "hatch.h"

#include "drawing/host_state.h"
#include "geometry/region.h"
#include "ov.h"
#include "services/failure.h"

#include <algorithm>
#include <cmath>

using namespace host;

namespace {

Piece pieceOf(const UO_ELEM& e) {
    if (e.type != 3 && e.type != 4) return makeLine(e.start, e.end);
    Piece p = makeArc(e.start, e.end, e.centre, e.type == 4 ? 1 : -1);
    if (distance(p.start, p.end) <= drawingTolerance(openDrawing())) p.end = p.start;
    return p;
}

bool isDrawn(const UO_ELEM& e) {
    return e.type == 1 || e.type == 3 || e.type == 4;
}

/// Calls `use` with each line and arc of a pattern.
template <class Use>
int forEachElem(int patNo, Use use) {
    UO_ELEM e;
    e.patNo = patNo;
    int code = 38;
    int error = ovelem(&code, &e);
    for (code = 24; !error; error = ovelem(&code, &e))
        if (isDrawn(e)) use(e);
    return error == errorNoSuchObject ? 0 : error;
}

void turn(UO_ELEM& e) {
    std::swap(e.start, e.end);
    if (e.type == 3 || e.type == 4) e.type = 7 - e.type;
}

/// A piece as an element that continues a plot: a Move ahead where it doesn't begin at its end.
void appendPiece(Pattern& pattern, const Piece& piece, const UO_ELEM& model) {
    const RPT at = currentPoint(pattern);
    Element e;
    e.pen = model.pen;
    e.lineType = static_cast<std::int16_t>(std::clamp(model.lineType, 0, 0x7fff));
    e.info = model.info & 0x7f;
    if (pattern.elements.empty() || at.x != piece.start.x || at.y != piece.start.y) {
        e.x = piece.start.x;
        e.y = piece.start.y;
        appendElement(pattern, e);
    }
    e.type = piece.isArc() ? ElementType::Arc : ElementType::Draw;
    e.x = piece.end.x;
    e.y = piece.end.y;
    if (piece.isArc()) {
        e.cx = piece.centre.x;
        e.cy = piece.centre.y;
        e.ccw = piece.sense > 0;
    }
    appendElement(pattern, e);
}

} // namespace

// ---- chains ------------------------------------------------------------------------------------------

int UoElemSFiltXPts(int patNo, int mode, double tolerance, std::vector<UO_ELEM>* elems) {
    elems->clear();
    if (mode != 1) return errorNotApplicable;
    if (!openDrawing().find(patNo)) return errorNoSuchObject;
    return forEachElem(patNo, [&](UO_ELEM e) {
        // Each begins where the last kept one ended, so that a row of short ones adds up.
        if (!elems->empty()) e.start = elems->back().end;
        if (pieceOf(e).length() > tolerance) elems->push_back(e);
    });
}

int UoElemSSortDir(UO_ELEM* elems, int count, int direction) {
    if (callFails()) return errorNoMemory;
    double area = 0;
    const RPT origin = count > 0 ? elems[0].start : RPT{0, 0};
    for (int i = 0; i < count; ++i) {
        Piece p = pieceOf(elems[i]);
        p.start = p.start - origin;
        p.end = p.end - origin;
        p.centre = p.centre - origin;
        area += p.signedArea();
    }
    if (!(std::fabs(area) > 0) || !std::isfinite(area)) return errorNotApplicable;
    if ((area > 0) == (direction > 0)) return 0;
    std::reverse(elems, elems + count);
    for (int i = 0; i < count; ++i) turn(elems[i]);
    return 0;
}

static int chordsOf(const Piece& arc, int perQuarter, double length, double tolerance) {
    constexpr double most = 100'000;
    const double sweep = std::fabs(arc.sweep());
    double count = perQuarter > 0 ? std::ceil(sweep / (kPi / 2) * perQuarter - 1e-9)
                                  : std::ceil(arc.length() / std::max(length, tolerance));
    count = std::min(count, arc.length() / tolerance);
    if (!(count < most)) count = most;
    const double fewest = sweep > 1.5 * kPi ? 3 : sweep > kPi / 2 ? 2 : 1;
    return static_cast<int>(std::max(count, fewest));
}

int UoElemSArcsToDraws(std::vector<UO_ELEM>* elems, int perQuarter, double length, double tolerance) {
    if (callFails()) return errorNoMemory;
    std::vector<UO_ELEM> draws;
    draws.reserve(elems->size());
    for (const UO_ELEM& elem : *elems) {
        const Piece piece = pieceOf(elem);
        const int count = piece.isArc() ? chordsOf(piece, perQuarter, length, tolerance) : 1;
        UO_ELEM draw = elem;
        draw.type = 1;
        for (int i = 1; i <= count; ++i) {
            draw.end = i == count ? elem.end : piece.pointAt(static_cast<double>(i) / count);
            draws.push_back(draw);
            draw.start = draw.end;
        }
    }
    *elems = std::move(draws);
    return 0;
}

// ---- patterns ----------------------------------------------------------------------------------------

int UoPatAct(int* patNo) {
    int code = 5;
    return ovpat(&code, patNo);
}

int UoPatEdit(int patNo) {
    int code = 23;
    return ovpat(&code, &patNo);
}

int UoPatEmpty(int patNo, int* is) {
    const Pattern* pattern = callFails() ? nullptr : openDrawing().find(patNo);
    if (!pattern) return errorNoSuchObject;
    const auto drawn = [](const Element& e) { return e.type != ElementType::Move; };
    const bool holds = pattern->size() > pattern->elements.size() ||
                       std::any_of(pattern->elements.begin(), pattern->elements.end(), drawn);
    *is = holds ? 0 : 1;
    return 0;
}

static Region makeRegion(int patNo, double tolerance, int* error) {
    std::vector<Piece> border;
    *error = forEachElem(patNo, [&](const UO_ELEM& e) { border.push_back(pieceOf(e)); });
    return {std::move(border), tolerance};
}

static int removeEqual(Pattern& pattern, const Region& other, double tolerance) {
    struct Kept {
        Piece piece;
        UO_ELEM model;
    };
    std::vector<Kept> kept;
    const int error = forEachElem(pattern.number, [&](const UO_ELEM& e) {
        const Piece piece = pieceOf(e);
        bool lies = piece.length() <= tolerance;
        if (!lies && other.isOnBorder(piece.pointAt(0.5)))
            lies = other.isOnBorder(piece.pointAt(0.25)) && other.isOnBorder(piece.pointAt(0.75)) &&
                   other.isOnBorder(piece.start) && other.isOnBorder(piece.end);
        if (!lies) kept.push_back({piece, e});
    });
    if (error) return error;
    openDrawing().elementCount -= pattern.elements.size();
    pattern.elements.clear();
    for (const Kept& one : kept) appendPiece(pattern, one.piece, one.model);
    return 0;
}

int UoPatDelEqualPatElems(int patNo, int otherPat, double tolerance) {
    Pattern* pattern = callFails() ? nullptr : openDrawing().find(patNo);
    if (!pattern || !openDrawing().find(otherPat)) return errorNoSuchObject;
    if (pattern->elements.empty()) return 0;
    const DrawingState& state = drawingState();
    if (state.regionPattern == otherPat && state.region)
        return removeEqual(*pattern, *state.region, tolerance);
    int error = 0;
    const Region other = makeRegion(otherPat, tolerance, &error);
    return error ? error : removeEqual(*pattern, other, tolerance);
}

// ---- cutting -----------------------------------------------------------------------------------------

int ovblock(int code, int patNo) {
    DrawingState& state = drawingState();
    state.region.reset();
    if (callFails()) return errorNoMemory;
    if (!openDrawing().find(patNo)) return errorNoSuchObject;
    if (code != 6) return errorNotApplicable;
    int error = 0;
    Region region = makeRegion(patNo, drawingTolerance(openDrawing()), &error);
    if (error) return error;
    if (!region.hasArea()) return errorNotApplicable;
    state.region = std::make_shared<const Region>(std::move(region));
    state.regionPattern = patNo;
    return 0;
}

int ovsplitblock(int code, int patNo, int inside, int outside, int border, int rest, int mode) {
    const DrawingState& state = drawingState();
    Pattern* in = callFails() ? nullptr : openDrawing().find(inside);
    Pattern* out = openDrawing().find(outside);
    if (!in || !out || !openDrawing().find(patNo)) return errorNoSuchObject;
    if (code != 7 || border != 0 || rest != 3 || mode != 1 || !state.region) return errorNotApplicable;
    // From a piece that is apart from the border to the next, the side stays the same.
    bool known = false;
    Region::Side side = Region::Side::Outside;
    return forEachElem(patNo, [&](const UO_ELEM& e) {
        const Piece piece = pieceOf(e);
        if (state.region->isApart(piece)) {
            if (!known) side = state.region->sideOf(piece.pointAt(0.5));
            known = true;
            appendPiece(side == Region::Side::Outside ? *out : *in, piece, e);
            return;
        }
        known = false;
        state.region->cut(piece, [&](const Piece& part, Region::Side of) {
            appendPiece(of == Region::Side::Outside ? *out : *in, part, e);
        });
    });
}
