// SOLID and TRACE: filled triangles and quadrangles.
//
//   3 ---- 4      the outline runs 1, 2, 4, 3
//   |      |
//   1 ---- 2
#include "../config/dx_pens.h"
#include "../host/dx_host.h"
#include "../session/session_state.h"
#include "dx_entity_base.h"
#include "dx_extents.h"
#include "dx_linework_import.h"
#include "dx_transform.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

using R = DX_SOLID_TYPE;

constexpr auto fields = dxFields<R>({
    {10, &R::corners, 0},
    {11, &R::corners, 1},
    {12, &R::corners, 2},
    {13, &R::corners, 3},
    {39, &R::thickness},
    {210, &R::extrusion},
});

constexpr double unset = std::numeric_limits<double>::quiet_NaN();

bool coincide(const RPT3& a, const RPT3& b) {
    constexpr double tolerance = 0.0001;
    return std::fabs(a.x - b.x) <= tolerance && std::fabs(a.y - b.y) <= tolerance;
}

/// The outline in the order of its run, in world coordinates.
struct Outline {
    int count;
    RPT3 corners[4];
};

Outline outlineOf(const DX_SOLID_TYPE& rec, const Mat44 m) {
    const RPT3(&c)[4] = rec.corners;
    Outline outline = {3, {c[0], c[1], c[2], c[2]}};
    if (!coincide(c[3], c[2]) && !coincide(c[3], c[0])) outline = {4, {c[0], c[1], c[3], c[2]}};
    Mat44 storage;
    const auto* toWorld = DxObjectMatrix(rec.extrusion, m, storage);
    for (RPT3& corner : outline.corners) DxTrans3DRpt(&corner, toWorld);
    return outline;
}

bool isFinite(const Outline& outline) {
    return std::all_of(outline.corners, outline.corners + outline.count, DxIsFinite);
}

int fill(const Outline& outline, int fillPen) {
    constexpr int first = 1, within = 0, last = 2; // modes of Dxovfillelem
    if (const int error = DxSetFillPen(DxActPat, fillPen)) return error;
    const RPT3(&c)[4] = outline.corners;
    if (const int error = Dxovfillelem(2, c[0].x, c[0].y, 0, 0, first)) return error;
    for (int i = 1; i < outline.count; ++i) {
        if (const int error = Dxovfillelem(1, c[i].x, c[i].y, 0, 0, within)) return error;
    }
    return Dxovfillelem(1, c[0].x, c[0].y, 0, 0, last);
}

int drawOutline(const Outline& outline) {
    constexpr unsigned char closedFigure = 5;
    const RPT3(&c)[4] = outline.corners;
    if (const int error = Dxovdraw(2, c[0].x, c[0].y)) return error;
    for (int i = 1; i <= outline.count; ++i) {
        const RPT3& to = c[i % outline.count];
        if (const int error = Dxovdraw(1, to.x, to.y, closedFigure)) return error;
    }
    return 0;
}

} // namespace

int DxReadSolid(DX_SOLID_TYPE* rec) {
    DxInitEntityBase(&rec->base);
    DxInitExtrusion(rec->extrusion);
    rec->thickness = 0;
    for (RPT3& corner : rec->corners) corner = {0, 0, 0};
    rec->corners[3] = {unset, unset, 0};
    DxElevation elevation;
    if (const int error = DxReadEntity(*rec, fields, elevation)) return error;
    const RPT3& fourth = rec->corners[3];
    if (std::isnan(fourth.x) || std::isnan(fourth.y)) rec->corners[3] = rec->corners[2];
    for (RPT3& corner : rec->corners) corner.z += elevation.value;
    return 0;
}

int DxDrawSolid(const DX_SOLID_TYPE* rec, const Mat44 m) {
    int pen = 0, lineType = 0;
    if (!DxPenLtToCAD(&rec->base, &pen, &lineType)) return 0;
    const Outline outline = outlineOf(*rec, m);
    if (!isFinite(outline)) return 0;
    if (DxCheckPass) {
        for (int i = 0; i < outline.count; ++i) {
            DxCheckXYZ(outline.corners[i].x, outline.corners[i].y, outline.corners[i].z);
        }
        return 0;
    }
    if (const int error = DxStartDrawing(pen, lineType)) return error;
    int fillPen = 0;
    if (DxFillMode != 0 && DxFillPenToCAD(&rec->base, &fillPen)) {
        if (const int error = fill(outline, fillPen)) return error;
    }
    return DxFillMode != 0 && DxFillContour == 0 ? 0 : drawOutline(outline);
}
