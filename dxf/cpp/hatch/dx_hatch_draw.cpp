// Draw stage of HATCH: each loop is drawn by the stages of its edges into a scratch pattern, the loops join
// into one contour, and the host makes the hatch of that.
#include "../config/dx_pens.h"
#include "../host/dx_host.h"
#include "../host/dx_host_hatch.h"
#include "../import/account_state.h"
#include "../import/dx_entity_base.h"
#include "../import/dx_linework_import.h"
#include "../import/dx_polyline_import.h"
#include "../import/dx_spline_import.h"
#include "../import/dx_transform.h"
#include "../import/import_state.h"
#include "../session/session_state.h"
#include "dx_hatch_import.h"
#include "dx_hatch_pattern.h"
#include "mt.h"
#include "uo.h"
#include "uo_elem.h"

#include <cmath>

namespace {

bool takesPart(const DX_HATCH_PATH& loop) {
    return loop.flags < DX_PATH_UNUSED && !loop.edges.empty();
}

/// The matrices of a hatch: for edges in object coordinates, and for those that bring their extrusion along.
struct Frames {
    const double (*object)[4];
    const double (*world)[4];
};

/// Radii that the host couldn't take. Points that aren't finite are passed over by the draw stages.
bool isSound(const DX_HATCH_EDGE& edge) {
    return std::isfinite(edge.from) && std::isfinite(edge.to) && std::isfinite(edge.r);
}

int drawEdge(const DX_HATCH_TYPE& rec, const DX_HATCH_PATH& loop, const DX_HATCH_EDGE& edge,
             const Frames& frames, int approx) {
    constexpr int flat = 2;
    if (!isSound(edge)) return 0;
    switch (edge.type) {
    case DX_EDGE_LINE: {
        const DX_LINE_TYPE line = DxHatchLine(rec, edge);
        return DxDrawLine(&line, frames.object);
    }
    case DX_EDGE_ARC: {
        const DX_ARC_TYPE arc = DxHatchArc(rec, edge);
        return DxDrawArc(&arc, frames.world);
    }
    case DX_EDGE_ELLIPSE: {
        const DX_ELLIPSE_TYPE ellipse = DxHatchEllipse(rec, edge);
        return DxDrawEllipse(&ellipse, frames.object, 0);
    }
    case DX_EDGE_SPLINE: {
        const DX_SPLINE_TYPE spline = DxHatchSpline(rec, loop, edge);
        return DxDrawSpline(&spline, frames.object, approx, flat);
    }
    default: return 0;
    }
}

int drawEdges(const DX_HATCH_TYPE& rec, const DX_HATCH_PATH& loop, const Frames& frames, int approx) {
    for (const DX_HATCH_EDGE& edge : DxMendHatchEdges(loop))
        if (const int error = drawEdge(rec, loop, edge, frames, approx)) return error;
    return 0;
}

int drawPolylineLoop(const DX_HATCH_TYPE& rec, const DX_HATCH_PATH& loop, const Frames& frames) {
    DX_POLYLINE_TYPE& polyline = DxActPolyline;
    polyline = DX_POLYLINE_TYPE{};
    DxCopyEntityBase(&polyline.base, &rec.base);
    std::copy(rec.extrusion, rec.extrusion + 3, polyline.extrusion);
    polyline.closed = loop.closed;
    DxPolyStyle = DX_POLY_STYLE{};
    DxPolylineOpen = 1;
    DxPolyFirst = 1;
    DxPolyBulge = 0;
    DxPolyFillActive = 0;
    int error = 0;
    for (std::size_t i = 0; i < loop.edges.size() && !error; ++i) {
        DX_VERTEX_TYPE vertex = DxHatchVertex(rec, loop.edges[i]);
        error = DxDrawVertex(&vertex, frames.world);
        if (!error && DxIsStoppedAt(i)) error = 9009;
    }
    if (!error) error = DxSeqEnd(frames.world);
    DxPolylineOpen = 0;
    return error;
}

/// The edges of a loop, through the element queue, into the active pattern.
int drawLoop(const DX_HATCH_TYPE& rec, const DX_HATCH_PATH& loop, const Frames& frames, int approx) {
    if (rec.solid && !DxFillMode) return 0;
    DxHatchActive = 1;
    int error = loop.flags & DX_PATH_POLYLINE ? drawPolylineLoop(rec, loop, frames)
                                              : drawEdges(rec, loop, frames, approx);
    if (!error && !DxCheckPass) error = DxCiElemDrawPat();
    DxHatchActive = 0;
    return error;
}

/// The scratch patterns of the loops, ahead of their contour.
class Loops {
public:
    Loops() = default;
    Loops(const Loops&) = delete;
    Loops& operator=(const Loops&) = delete;
    ~Loops() {
        for (const int pat : kept_) drop(pat);
    }

    /// Draws a loop into a pattern of its own and cleans it up.
    int draw(const DX_HATCH_TYPE& rec, const DX_HATCH_PATH& loop, const Frames& frames, int approx) {
        int pat = 0;
        if (const int error = Dxovpat(211, &pat)) return error;
        kept_.push_back(pat);
        if (DxFillContour) UoCopyAllAttrs(DxActPat, pat); // it stays as the visible border
        const int home = DxActPat;
        DxActPat = pat;
        int error = drawLoop(rec, loop, frames, approx);
        DxActPat = home;
        if (!error) error = DxovCleanLoop(pat);
        return error;
    }
    /// Joins them into the chain. Their patterns stay where the border is to be seen.
    int join(DxHatchChain& chain) {
        constexpr int nothingLeft = 1005;
        std::vector<RPT> mins(kept_.size()), maxes(kept_.size());
        int before = -1;
        int error = chain.begin();
        for (std::size_t i = 0; i < kept_.size() && !error; ++i) {
            const int boxed = DxovLoopBox(kept_[i], &mins[i], &maxes[i]);
            if (boxed == nothingLeft) continue;
            if (boxed) return boxed;
            const auto own = static_cast<int>(i);
            const bool inner = before >= 0 && IsIntersection(mins.data(), maxes.data(), own, before);
            error = chain.add(kept_[i], inner);
            before = own;
        }
        if (!error && DxFillContour) keepBorders();
        return error;
    }

private:
    static void drop(int pat) { Dxovpat(17, &pat); }
    /// Those that hold something stay.
    void keepBorders() {
        std::erase_if(kept_, [](int pat) {
            int rows = 0;
            return UoElemS(27, pat, &rows) == 0 && rows > 0;
        });
    }

    std::vector<int> kept_;
};

int chooseLook(const DX_HATCH_TYPE& rec, int pen, const Mat44 object) {
    int transparency = 0;
    if (rec.gradientFlag == 0 || rec.colorCount < 2) {
        DxCiTransparencyToCAD(rec.base, &transparency);
        return DxSetHatchLook(rec, pen, transparency, object);
    }
    int pens[2] = {pen, pen};
    for (int i = 0; i < 2; ++i) {
        DX_ENTITY_BASE_TYPE base = rec.base;
        base.color = rec.colors[i];
        base.trueColor = rec.trueColors[i];
        DxFillPenToCAD(&base, &pens[i]);
    }
    DxCiTransparencyToCAD(rec.base, &transparency);
    return DxSetGradHatchParams(pens[0], pens[1], rec.gradientAngle, rec.gradientShift,
                                rec.gradientName.c_str(), transparency);
}

int measure(const DX_HATCH_TYPE& rec, const Frames& frames, int approx) {
    for (const DX_HATCH_PATH& loop : rec.loops) {
        if (!takesPart(loop)) continue;
        if (const int error = drawLoop(rec, loop, frames, approx)) return error;
    }
    return 0;
}

/// The pattern that was active is so again.
int activateHome() {
    int pat = DxActPat;
    return Dxovpat(23, &pat);
}

/// Draws the loops and joins them. What the loops left behind goes in any case.
int makeContour(const DX_HATCH_TYPE& rec, const Frames& frames, int approx, DxHatchChain& chain) {
    Loops loops;
    for (const DX_HATCH_PATH& loop : rec.loops) {
        if (!takesPart(loop)) continue;
        if (const int error = loops.draw(rec, loop, frames, approx)) return error;
    }
    return loops.join(chain);
}

/// It counts as lost, unless its borders are to be seen; fills that are switched off count as hidden.
int leaveOut(const DX_HATCH_TYPE& rec) {
    if (rec.solid && !DxFillMode) DxNoteReason(DxReason::FillsOff);
    if (!DxFillContour) DxEntityDrawn = 0;
    return 0;
}

int makeHatch(const DX_HATCH_TYPE& rec, int pen, const Frames& frames, DxHatchChain& chain) {
    constexpr int nothingEnclosed = 3011;
    if (chain.isEmpty()) return leaveOut(rec);
    if (const int error = chooseLook(rec, pen, frames.object)) return error;
    const int error = chain.makeHatch(DxActPat);
    if (error == nothingEnclosed) return leaveOut(rec);
    if (error) return error;
    DxEntityDrawn = 1;
    return DxNewElement(1);
}

} // namespace

int DxDrawHatch(const DX_HATCH_TYPE* rec, const Mat44 m, int approx) {
    if (rec->loops.empty()) return 0;
    Mat44 storage;
    const Frames frames{DxObjectMatrix(rec->extrusion, m, storage), m};
    int pen = 0, lineType = 0;
    const int drawn =
        rec->solid ? DxFillPenToCAD(&rec->base, &pen) : DxPenLtToCAD(&rec->base, &pen, &lineType);
    if (!drawn) return 0;
    if (DxCheckPass) return measure(*rec, frames, approx);
    if (const int error = DxCiElemDrawPat()) return error;
    if (!DxActPat)
        if (const int error = DxNewPat(0)) return error;
    DxHatchChain chain;
    int error = makeContour(*rec, frames, approx, chain);
    const int restored = activateHome();
    if (!error) error = restored;
    if (!error) error = makeHatch(*rec, pen, frames, chain);
    chain.drop();
    return error;
}

int DxDrawHatchRow(const DX_HATCH_TYPE* rec, const DxEntityContext& context) {
    return DxDrawHatch(rec, context.matrix, context.approx >= 2);
}
