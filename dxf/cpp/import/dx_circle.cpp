// CIRCLE.
#include "../config/dx_pens.h"
#include "../host/dx_host.h"
#include "../session/session_state.h"
#include "dx_entity_base.h"
#include "dx_extents.h"
#include "dx_linework_import.h"
#include "dx_transform.h"

#include <cmath>

namespace {

using R = DX_CIRCLE_TYPE;
constexpr auto fields = dxFields<R>({
    {10, &R::centre},
    {39, &R::thickness},
    {40, &R::radius},
    {210, &R::extrusion},
});

/// The same circle as an ellipse, to be placed by a matrix that holds its extrusion already.
DX_ELLIPSE_TYPE asEllipse(const DX_CIRCLE_TYPE& circle) {
    constexpr double fullTurn = 6.283185307179586;
    DX_ELLIPSE_TYPE ellipse;
    DxCopyEntityBase(&ellipse.base, &circle.base);
    DxInitExtrusion(ellipse.extrusion);
    ellipse.centre = circle.centre;
    ellipse.majorAxis = {circle.radius, 0, 0};
    ellipse.ratio = 1.0;
    ellipse.startParam = 0;
    ellipse.endParam = fullTurn;
    ellipse.counterClockwise = 1;
    return ellipse;
}

} // namespace

int DxReadCircle(DX_CIRCLE_TYPE* rec) {
    DxInitEntityBase(&rec->base);
    DxInitExtrusion(rec->extrusion);
    rec->thickness = rec->radius = 0;
    rec->centre = {0, 0, 0};
    DxElevation elevation;
    if (const int error = DxReadEntity(*rec, fields, elevation)) return error;
    rec->centre.z += elevation.value;
    return 0;
}

int DxDrawCircle(const DX_CIRCLE_TYPE* rec, const Mat44 m) {
    int pen = 0, lineType = 0;
    if (!DxPenLtToCAD(&rec->base, &pen, &lineType)) return 0;
    if (std::fabs(rec->radius) <= DX_SMALLEST_RADIUS) return 0;
    Mat44 storage;
    const auto* toWorld = DxObjectMatrix(rec->extrusion, m, storage);
    if (!DxStaysRound(rec->extrusion)) {
        DX_ELLIPSE_TYPE ellipse = asEllipse(*rec);
        return DxDrawEllipse(&ellipse, toWorld, 0);
    }
    RPT3 centre = rec->centre;
    RPT3 onCircle = {centre.x + rec->radius, centre.y, centre.z};
    DxTrans3DRpt(&centre, toWorld);
    DxTrans3DRpt(&onCircle, toWorld);
    if (!DxIsFinite(centre) || !DxIsFinite(onCircle)) return 0;
    if (DxCheckPass) {
        DxCheckXYZ(centre.x, centre.y, centre.z);
        DxCheckXYZ(onCircle.x, onCircle.y, onCircle.z);
        return 0;
    }
    if (const int error = DxStartDrawing(pen, lineType)) return error;
    if (const int error = Dxovdraw(2, onCircle.x, onCircle.y)) return error;
    if (const int error = Dxovarc(22, onCircle.x, onCircle.y, centre.x, centre.y)) return error;
    DxLastPoint = onCircle;
    return 0;
}
