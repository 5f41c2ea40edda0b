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
    DxPenLt look;
    if (!DxPenLtToCAD(&rec->base, &look.pen, &look.lineType)) return 0;
    if (rec->startAngle == rec->endAngle || std::fabs(rec->radius) <= DX_SMALLEST_RADIUS) return 0;
    Mat44 storage;
    const auto* toWorld = DxObjectMatrix(rec->extrusion, m, storage);
    if (!DxStaysRound(rec->extrusion)) {
        const DX_ELLIPSE_TYPE ellipse =
            DxAsEllipse(rec->base, rec->centre, rec->radius, rec->startAngle * radiansADegree,
                        rec->endAngle * radiansADegree, rec->counterClockwise != 0);
        return DxDrawEllipse(&ellipse, toWorld, 0);
    }
    RPT3 points[] = {pointAt(*rec, rec->startAngle), pointAt(*rec, rec->endAngle), rec->centre};
    RPT3 &start = points[0], &end = points[1], &centre = points[2];
    if (DxMirrors(toWorld)) std::swap(start, end);
    return DxDrawFlat(look, points, toWorld, 2, end, [&] {
        if (const int error = Dxovdraw(2, start.x, start.y)) return error;
        return isTiny(*rec, start, end)
                   ? Dxovdraw(1, end.x, end.y)
                   : Dxovarc(rec->counterClockwise ? 4 : 3, end.x, end.y, centre.x, centre.y);
    });
}
