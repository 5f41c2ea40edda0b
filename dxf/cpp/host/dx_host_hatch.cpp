#include "dx_host_hatch.h"

#include "ci.h"
#include "dx_frame.h"
#include "dx_host.h"
#include "ge.h"
#include "li.h"
#include "ov.h"
#include "uo_elem.h"
#include "ut.h"

#include <cmath>

namespace {

constexpr int FIRST = 38, NEXT = 24, APPEND = 29, SET = 6;
constexpr double smallestArcRadius = 1e-5;
constexpr unsigned char INNER = 1, JUMP = 2;
constexpr int MOVE = 2, DRAW = 1;

RPT toHost(const RPT& p) {
    return DxPointToHost(p.x, p.y);
}

RPT vectorToHost(const RPT& v) {
    return {DxLengthToHost(v.x), DxLengthToHost(v.y)};
}

} // namespace

// ---- look --------------------------------------------------------------------------------------------

int DxovHatchBegin() {
    int mode = 1, pat = DxActPat;
    return ovhatchparams(&mode, &pat);
}

int DxovHatchPar(UO_HATCH_PAR par, bool isPlaced) {
    if (isPlaced) {
        // The base is measured to the right of the lines.
        const RPT right{std::sin(par.angle), -std::cos(par.angle)};
        const RPT on = toHost({right.x * par.base, right.y * par.base});
        par.base = on.x * right.x + on.y * right.y;
        par.d1 = DxLengthToHost(par.d1);
        par.d2 = DxLengthToHost(par.d2);
    }
    return UoHatchPar(SET, &par);
}

int DxovHatchPattern(OV_HATCH_PATTERN pattern) {
    for (OV_PATTERN_LINE& line : pattern.lines) {
        line.base = toHost(line.base);
        line.offset = vectorToHost(line.offset);
        for (double& dash : line.dashes) dash = DxLengthToHost(dash);
    }
    return ovhatchpattern(SET, &pattern);
}

int DxovHatchTransparency(int percent) {
    constexpr int transparency = 1, step = 16;
    return ovhatchsetreppar(transparency, percent / step, percent % step);
}

int DxovHatchGradient(const UtCString& name, int form, const OV_HATCH_COLOR& first,
                      const OV_HATCH_COLOR& second) {
    constexpr int gradient = 3;
    int code = SET;
    return ovglobhatchparams(&code, name, gradient, form, &first, &second);
}

// ---- loops -------------------------------------------------------------------------------------------

/// Pieces without length are no part of a loop.
static bool isPiece(const UO_ELEM& e) {
    if (e.type == 1) return std::hypot(e.end.x - e.start.x, e.end.y - e.start.y) > GeEpsiGetTol();
    const double radius = std::hypot(e.end.x - e.centre.x, e.end.y - e.centre.y);
    return (e.type == 3 || e.type == 4) && radius > smallestArcRadius;
}

static int collect(int pat, LiList& list) {
    UO_ELEM e{};
    e.patNo = pat;
    int code = FIRST;
    int error = ovelem(&code, &e);
    for (code = NEXT; !error; error = ovelem(&code, &e)) {
        if (!isPiece(e)) continue;
        LI_ELEM* elem = LiNew(list);
        if (!elem) return 1001;
        static_cast<UO_ELEM&>(*elem) = e;
        LiRadKorr(elem);
        LiElemExpand(elem);
        LiChain(list, elem);
    }
    return error == 1005 ? 0 : error;
}

/// Appends to a pattern an element of `type` that runs to `end`, with the look of `model`.
static int append(int pat, int type, UO_ELEM model, const RPT& end, unsigned char info) {
    int code = APPEND;
    model.patNo = pat;
    model.type = type;
    model.end = end;
    model.info = info;
    return ovelem(&code, &model);
}

int DxCiChgHatchCont(int pat, int* newPat) {
    *newPat = 0;
    if (const int error = DxCiElemDrawPat()) return error;
    DsCsr cursor;
    if (const int error = CiPat(DxCiContextId).AddNormal(cursor)) return error;
    *newPat = cursor.Get().patNo;
    UO_ELEM e{};
    e.patNo = pat;
    bool isFirst = true, isInner = false;
    int read = FIRST;
    int error = ovelem(&read, &e);
    for (read = NEXT; !error; error = ovelem(&read, &e)) {
        const bool jumps = e.type == MOVE && !isFirst;
        if (jumps) isInner = !isInner;
        const unsigned char info = jumps ? JUMP : isInner ? INNER : e.info;
        if (const int failed = append(*newPat, jumps ? DRAW : e.type, e, e.end, info)) return failed;
        isFirst = false;
    }
    return error == 1005 ? 0 : error;
}

static int writeChain(int pat, const LiList& list) {
    const LI_ELEM* before = nullptr;
    for (const LI_ELEM* e = LiSucc(list, nullptr); e; e = LiSucc(list, e)) {
        int error = 0;
        if (!before)
            error = append(pat, MOVE, *e, e->start, 0);
        else if (e->contour != before->contour)
            error = append(pat, DRAW, *e, e->start, JUMP);
        if (!error) error = append(pat, e->isArc() ? e->type : DRAW, *e, e->end, e->info);
        if (error) return error;
        before = e;
    }
    return 0;
}

int DxovCleanLoop(int pat) {
    LiList list;
    if (const int error = collect(pat, list)) return error;
    if (const int error = LiSortKont(list, 0, UtConv(50))) return error;
    LiRemShort(list, UtConv(50));
    if (const int error = DxCiPatDelElems(pat)) return error;
    return writeChain(pat, list);
}

int DxovLoopBox(int pat, RPT* min, RPT* max) {
    constexpr int BOX = 256;
    int code = BOX;
    double rect[4];
    if (const int error = ovpatrect(&code, &pat, rect)) return error;
    *min = {rect[0], rect[1]};
    *max = {rect[2], rect[3]};
    return 0;
}

// ---- contour -----------------------------------------------------------------------------------------

int DxHatchChain::begin() {
    return Dxovpat(211, &pat_);
}

int DxHatchChain::append(int loopPat, const RPT& start, bool isInner) {
    if (!isOpen_) {
        isOpen_ = true;
        first_ = start;
        if (const int error = ovdraw(MOVE, start.x, start.y, 0)) return error;
    } else if (const int error = ovdraw(DRAW, start.x, start.y, JUMP)) {
        return error;
    }
    UO_ELEM e{};
    e.patNo = loopPat;
    int read = FIRST;
    int error = ovelem(&read, &e);
    for (read = NEXT; !error; error = ovelem(&read, &e)) {
        if (e.type == MOVE) continue;
        const auto info = static_cast<unsigned char>((isInner ? INNER : 0) | (e.info & JUMP));
        if (const int failed = ::append(pat_, e.type, e, e.end, info)) return failed;
    }
    return error == 1005 ? 0 : error;
}

int DxHatchChain::add(int loopPat, bool isInner) {
    UO_ELEM e{};
    e.patNo = loopPat;
    int read = FIRST;
    if (const int error = ovelem(&read, &e)) return error == 1005 ? 0 : error;
    if (const int error = Dxovpat(23, &pat_)) return error;
    const bool isLater = isOpen_;
    if (const int error = append(loopPat, e.type == MOVE ? e.end : e.start, isInner)) return error;
    return isLater ? ovdraw(DRAW, first_.x, first_.y, JUMP) : 0;
}

int DxHatchChain::makeHatch(int toPat) {
    const int error = Dxovhatch(toPat, pat_);
    drop();
    return error;
}

void DxHatchChain::drop() {
    if (pat_) Dxovpat(17, &pat_);
    pat_ = 0;
}
