// LINE and POINT in space.
#include "../config/dx_pens.h"
#include "../import/account_state.h"
#include "../import/dx_entity_base.h"
#include "../import/dx_linework_import.h"
#include "../import/dx_point_clouds.h"
#include "../session/session_state.h"
#include "dx_space_import.h"
#include "dx_space_strip.h"
#include "space_state.h"

int DxDraw3dLine(const DX_LINE_TYPE* rec, const Mat44 m) {
    int pen = 0, lineType = 0;
    if (!DxPenLtToCAD(&rec->base, &pen, &lineType)) return 0;
    if (const int error = DxSetPenLt(pen, lineType)) return error;
    const double t = rec->thickness;
    const RPT3 rise{t * rec->extrusion[0], t * rec->extrusion[1], t * rec->extrusion[2]};
    DxFaceList faces(pen, lineType);
    if (const int error = DxAddStrip(faces, rec->start, rec->end, rise, t != 0, m)) return error;
    Dx3dLastPoint = rec->end;
    return DxFinishFaces(faces, t != 0 || DxIsLineOfSpace(*rec, m));
}

int DxDraw3dPoint(const DX_POINT_TYPE* rec, const Mat44 m) {
    constexpr int dropsPoints = 1;
    int pen = 0, lineType = 0;
    if (!DxPenLtToCAD(&rec->base, &pen, &lineType)) return 0;
    if (DxPdMode == dropsPoints) {
        DxNoteReason(DxReason::PointsOff);
        return 0;
    }
    if (!DxCheckPass) return DxCiPointCloudPushPt(rec, m);
    DX_LINE_TYPE line;
    DxCopyEntityBase(&line.base, &rec->base);
    DxInitExtrusion(line.extrusion);
    line.thickness = 0;
    line.start = rec->point;
    line.end = {rec->point.x + 1.0, rec->point.y, rec->point.z};
    return DxDraw3dLine(&line, m);
}
