// The flat entities: readers and draw stages.
//
// A reader sets its record's start values, fills it up to the next group 0, which it hands back, and raises
// the points by group 38. A draw stage asks for the layer and the pen, takes the points through the matrix
// `m` and either widens the extents (check pass) or hands elements to the host. It gives 0 when there is
// nothing to draw.
#pragma once

#include "../config/dx_pens.h"
#include "../session/session_state.h"
#include "dx_entity_base.h"
#include "dx_extents.h"
#include "dx_linework.h"
#include "dx_transform.h"

#include <cstddef>

int DxReadLine(DX_LINE_TYPE* rec);
int DxDrawLine(const DX_LINE_TYPE* rec, const Mat44 m);
int DxReadPoint(DX_POINT_TYPE* rec);
int DxDrawPoint(const DX_POINT_TYPE* rec,
                const Mat44 m); ///< In 3D a point is no element: it does nothing there.
int DxReadArc(DX_ARC_TYPE* rec);
int DxDrawArc(const DX_ARC_TYPE* rec, const Mat44 m);
int DxReadCircle(DX_CIRCLE_TYPE* rec);
int DxDrawCircle(const DX_CIRCLE_TYPE* rec, const Mat44 m);
int DxReadEllipse(DX_ELLIPSE_TYPE* rec);
/// `inFigure` is 1 when the ellipse is one piece of a polyline: the pen then stands at its end afterwards.
int DxDrawEllipse(const DX_ELLIPSE_TYPE* rec, const Mat44 m, int inFigure);
int DxDrawOneEllipse(const DX_ELLIPSE_TYPE* rec, const Mat44 m); ///< An ellipse on its own.
int DxReadSolid(DX_SOLID_TYPE* rec);
int DxDrawSolid(const DX_SOLID_TYPE* rec, const Mat44 m);

/// The frame of a flat entity's draw stage: takes the points, which the stage has computed, through `m`; in
/// the check pass the first `measured` of them widen the extents; in the drawing pass `draw` (→ int) hands
/// elements over, and `last` is where they end. Nothing is drawn when a point isn't finite. 0 or an error.
template <std::size_t N, class Draw>
int DxDrawFlat(const DxPenLt& look, RPT3 (&points)[N], const Mat44 m, std::size_t measured, const RPT3& last,
               Draw&& draw) {
    for (RPT3& point : points) {
        DxTrans3DRpt(&point, m);
        if (!DxIsFinite(point)) return 0;
    }
    if (DxCheckPass) {
        for (std::size_t i = 0; i < measured; ++i) DxCheckXYZ(points[i].x, points[i].y, points[i].z);
        return 0;
    }
    if (const int error = DxStartDrawing(look.pen, look.lineType)) return error;
    if (const int error = draw()) return error;
    DxLastPoint = last;
    return 0;
}

/// A circle or arc as an ellipse, angles in radians, to be placed by a matrix that holds its extrusion
/// already.
DX_ELLIPSE_TYPE DxAsEllipse(const DX_ENTITY_BASE_TYPE& base, const RPT3& centre, double radius, double start,
                            double end, bool counterClockwise);

/// Arcs and circles up to this radius draw nothing.
inline constexpr double DX_SMALLEST_RADIUS = 1e-8;
/// True when a circle under the current blocks stays a circle: they scale evenly and it lies flat.
bool DxStaysRound(const double extrusion[3]);
