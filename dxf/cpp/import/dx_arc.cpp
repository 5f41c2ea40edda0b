// ARC.
#include "../config/dx_pens.h"
#include "../host/dx_frame.h"
#include "../host/dx_host.h"
#include "../session/session_state.h"
#include "dx_entity_base.h"
#include "dx_extents.h"
#include "dx_linework_import.h"
#include "dx_transform.h"
#include "ut.h"

#include <cmath>
#include <utility>

namespace {

constexpr double radiansADegree = 0.017453292519943295;

using R = DX_ARC_TYPE;
constexpr auto fields = dxFields<R>({
    {10, &R::centre},
    {39, &R::thickness},
    {40, &R::radius},
    {50, &R::startAngle},
    {51, &R::endAngle},
    {210, &R::extrusion},
});

/// The same arc as an ellipse, to be placed by a matrix that holds its extrusion already.
DX_ELLIPSE_TYPE asEllipse(const DX_ARC_TYPE& arc) {
    DX_ELLIPSE_TYPE ellipse;
    DxCopyEntityBase(&ellipse.base, &arc.base);
    DxInitExtrusion(ellipse.extrusion);
    ellipse.centre = arc.centre;
    ellipse.majorAxis = {arc.radius, 0, 0};
    ellipse.ratio = 1.0;
    ellipse.startParam = arc.startAngle * radiansADegree;
    ellipse.endParam = arc.endAngle * radiansADegree;
    ellipse.counterClockwise = arc.counterClockwise;
    return ellipse;
}

/// Point of the arc at `degrees`, in the object plane. A clockwise arc counts its angles clockwise too.
RPT3 pointAt(const DX_ARC_TYPE& arc, double degrees) {
    const double angle = (arc.counterClockwise ? degrees : 360.0 - degrees) * radiansADegree;
    return {arc.centre.x + arc.radius * std::cos(angle), arc.centre.y + arc.radius * std::sin(angle),
            arc.centre.z};
}

/// An arc whose ends the drawing can't tell apart, and that isn't a full turn either.
bool isTiny(const DX_ARC_TYPE& arc, const RPT3& start, const RPT3& end) {
    if (!(std::fabs(arc.endAngle - arc.startAngle) < 180)) return false;
    const double tolerance = DxDrawingTolerance();
    return std::fabs(start.x - end.x) < tolerance && std::fabs(start.y - end.y) < tolerance;
}

} // namespace

int DxReadArc(DX_ARC_TYPE* rec) {
    DxInitEntityBase(&rec->base);
    DxInitExtrusion(rec->extrusion);
    rec->thickness = rec->radius = rec->startAngle = rec->endAngle = 0;
    rec->centre = {0, 0, 0};
    rec->counterClockwise = 1;
    DxElevation elevation;
    if (const int error = DxReadEntity(*rec, fields, elevation)) return error;
    rec->centre.z += elevation.value;
    return 0;
}

int DxDrawArc(const DX_ARC_TYPE* rec, const Mat44 m) {
    int pen = 0, lineType = 0;
    if (!DxPenLtToCAD(&rec->base, &pen, &lineType)) return 0;
    if (rec->startAngle == rec->endAngle || std::fabs(rec->radius) <= DX_SMALLEST_RADIUS) return 0;
    Mat44 storage;
    const auto* toWorld = DxObjectMatrix(rec->extrusion, m, storage);
    if (!DxStaysRound(rec->extrusion)) {
        DX_ELLIPSE_TYPE ellipse = asEllipse(*rec);
        return DxDrawEllipse(&ellipse, toWorld, 0);
    }
    RPT3 start = pointAt(*rec, rec->startAngle), end = pointAt(*rec, rec->endAngle), centre = rec->centre;
    if (DxMirrors(toWorld)) std::swap(start, end);
    DxTrans3DRpt(&start, toWorld);
    DxTrans3DRpt(&end, toWorld);
    DxTrans3DRpt(&centre, toWorld);
    if (!DxIsFinite(start) || !DxIsFinite(end) || !DxIsFinite(centre)) return 0;
    if (DxCheckPass) {
        DxCheckXYZ(start.x, start.y, start.z);
        DxCheckXYZ(end.x, end.y, end.z);
        return 0;
    }
    if (const int error = DxStartDrawing(pen, lineType)) return error;
    if (const int error = Dxovdraw(2, start.x, start.y)) return error;
    const int error = isTiny(*rec, start, end)
                          ? Dxovdraw(1, end.x, end.y)
                          : Dxovarc(rec->counterClockwise ? 4 : 3, end.x, end.y, centre.x, centre.y);
    if (error) return error;
    DxLastPoint = end;
    return 0;
}
