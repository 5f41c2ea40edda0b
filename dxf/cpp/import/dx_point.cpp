// POINT.
#include "../config/dx_pens.h"
#include "../host/dx_host.h"
#include "../session/session_state.h"
#include "dx_entity_base.h"
#include "dx_extents.h"
#include "dx_linework_import.h"
#include "dx_transform.h"

namespace {

using R = DX_POINT_TYPE;
constexpr auto fields = dxFields<R>({{10, &R::point}, {39, &R::thickness}});

} // namespace

int DxReadPoint(DX_POINT_TYPE* rec) {
    DxInitEntityBase(&rec->base);
    rec->thickness = 0;
    rec->point = {0, 0, 0};
    DxElevation elevation;
    if (const int error = DxReadEntity(*rec, fields, elevation)) return error;
    rec->point.z += elevation.value;
    return 0;
}

int DxDrawPoint(const DX_POINT_TYPE* rec, const Mat44 m) {
    constexpr int dropsPoints = 1;
    if (DxModus == 3) return 0;
    DxPenLt look;
    if (!DxPenLtToCAD(&rec->base, &look.pen, &look.lineType)) return 0;
    if (DxPdMode == dropsPoints) {
        DxNoteReason(DxReason::PointsOff);
        return 0;
    }
    RPT3 points[] = {rec->point};
    const RPT3& p = points[0];
    return DxDrawFlat(look, points, m, 1, p, [&] {
        const int error = Dxovdraw(2, p.x, p.y);
        return error ? error : Dxovdraw(1, p.x, p.y);
    });
}
