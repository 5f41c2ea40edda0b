// LINE and 3DLINE.
#include "../config/dx_pens.h"
#include "../host/dx_host.h"
#include "../session/session_state.h"
#include "../solid/dx_space_import.h"
#include "dx_entity_base.h"
#include "dx_extents.h"
#include "dx_linework_import.h"
#include "dx_transform.h"

namespace {

using R = DX_LINE_TYPE;
constexpr auto fields = dxFields<R>({
    {10, &R::start},
    {11, &R::end},
    {39, &R::thickness},
    {210, &R::extrusion},
});

} // namespace

int DxReadLine(DX_LINE_TYPE* rec) {
    DxInitEntityBase(&rec->base);
    DxInitExtrusion(rec->extrusion);
    rec->thickness = 0;
    rec->start = rec->end = {0, 0, 0};
    DxElevation elevation;
    if (const int error = DxReadEntity(*rec, fields, elevation)) return error;
    rec->start.z += elevation.value;
    rec->end.z += elevation.value;
    return 0;
}

int DxDrawLine(const DX_LINE_TYPE* rec, const Mat44 m) {
    DxPenLt look;
    if (!DxPenLtToCAD(&rec->base, &look.pen, &look.lineType)) return 0;
    if (!DxCheckPass && DxIsLineOfSpace(*rec, m)) return 0;
    RPT3 points[] = {rec->start, rec->end};
    const RPT3 &start = points[0], &end = points[1];
    return DxDrawFlat(look, points, m, 2, end, [&] {
        const int error = Dxovdraw(2, start.x, start.y);
        return error ? error : Dxovdraw(1, end.x, end.y);
    });
}
