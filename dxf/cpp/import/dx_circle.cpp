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
    constexpr double fullTurn = 6.283185307179586;
    DxPenLt look;
    if (!DxPenLtToCAD(&rec->base, &look.pen, &look.lineType)) return 0;
    if (std::fabs(rec->radius) <= DX_SMALLEST_RADIUS) return 0;
    Mat44 storage;
    const auto* toWorld = DxObjectMatrix(rec->extrusion, m, storage);
    if (!DxStaysRound(rec->extrusion)) {
        const DX_ELLIPSE_TYPE ellipse = DxAsEllipse(rec->base, rec->centre, rec->radius, 0, fullTurn, true);
        return DxDrawEllipse(&ellipse, toWorld, 0);
    }
    RPT3 points[] = {rec->centre, {rec->centre.x + rec->radius, rec->centre.y, rec->centre.z}};
    const RPT3 &centre = points[0], &onCircle = points[1];
    return DxDrawFlat(look, points, toWorld, 2, onCircle, [&] {
        const int error = Dxovdraw(2, onCircle.x, onCircle.y);
        return error ? error : Dxovarc(22, onCircle.x, onCircle.y, centre.x, centre.y);
    });
}
