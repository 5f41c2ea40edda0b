// LINE and 3DLINE.
#include "../config/dx_pens.h"
#include "../host/dx_host.h"
#include "../session/session_state.h"
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
    int pen = 0, lineType = 0;
    if (!DxPenLtToCAD(&rec->base, &pen, &lineType)) return 0;
    RPT3 start = rec->start, end = rec->end;
    DxTrans3DRpt(&start, m);
    DxTrans3DRpt(&end, m);
    if (!DxIsFinite(start) || !DxIsFinite(end)) return 0;
    if (DxCheckPass) {
        DxCheckXYZ(start.x, start.y, start.z);
        DxCheckXYZ(end.x, end.y, end.z);
        return 0;
    }
    if (const int error = DxStartDrawing(pen, lineType)) return error;
    if (const int error = Dxovdraw(2, start.x, start.y)) return error;
    if (const int error = Dxovdraw(1, end.x, end.y)) return error;
    DxLastPoint = end;
    return 0;
}
