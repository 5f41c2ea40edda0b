// The rectangles that stand for views.
#include "../config/dx_pens.h"
#include "../host/dx_host.h"
#include "../session/session_state.h"
#include "dx_transform.h"
#include "dx_views_import.h"
#include "mt.h"
#include "uo.h"

#include <numbers>

void DxViewPlane(const RPT3& target, const RPT3& direction, double twist, RPT3 plane[3]) {
    constexpr double radiansADegree = std::numbers::pi / 180;
    Mat44 turn, axes;
    Mt44MakeRotate(2, -twist * radiansADegree, turn);
    DxArbaxis(direction.x, direction.y, direction.z, axes);
    const RPT3 local[3] = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}};
    for (int i = 0; i < 3; ++i) {
        RPT3 point;
        Mt44MultRpt3(local[i], turn, &point);
        DxTrans3DRpt(&point, axes);
        plane[i] = {target.x - DxShiftX + point.x, target.y - DxShiftY + point.y, target.z + point.z};
    }
}

static int drawRectangle(const RPT3& low, const RPT3& high) {
    constexpr int DRAW = 1, MOVE = 2;
    constexpr unsigned char closedFigure = 5;
    const RPT corners[] = {
        {low.x, low.y}, {high.x, low.y}, {high.x, high.y}, {low.x, high.y}, {low.x, low.y}};
    int error = Dxovdraw(MOVE, low.x, low.y);
    for (int i = 1; !error && i < 5; ++i) error = Dxovdraw(DRAW, corners[i].x, corners[i].y, closedFigure);
    return error;
}

static void nameMark(const DX_VIEW_MARK& mark) {
    UoSetSingleAttr(DxActPat, "#E", "ZOOM");
    UoSetSingleAttr(DxActPat, "#K", mark.kind);
    UoSetSingleAttr(DxActPat, "#M", mark.name);
    UoSetSingleAttr(DxActPat, "Nv",
                    UtFormat("%lg,%lg,%lg", mark.direction.x, mark.direction.y, mark.direction.z));
    UoSetSingleAttr(DxActPat, "classctrl", "PI:C,L");
}

int DxDrawViewMark(const DX_VIEW_MARK& mark) {
    if (const int error = DxNewPat(0)) return error;
    if (const int error = DxSetPenLt(0, mark.lineType)) return error;
    if (mark.onPlane)
        if (const int error = DxCiPatChgWork(DxActPat, mark.plane[0], mark.plane[1], mark.plane[2]))
            return error;
    const int error = drawRectangle(mark.low, mark.high);
    nameMark(mark);
    return error;
}
