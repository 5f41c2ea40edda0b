// VIEW records as the outlines of what they show.
#include "../config/config_state.h"
#include "../host/dx_active_pattern.h"
#include "../host/dx_host.h"
#include "../host/dx_host_views.h"
#include "../session/dx_unicode.h"
#include "../session/session_state.h"
#include "dx_extents.h"
#include "dx_transform.h"
#include "dx_views_import.h"
#include "import_state.h"

namespace {

constexpr int LINE_TYPE = 8;

/// Draws and, where all spaces are read, makes the detail view.
int drawMark(const DX_VIEW_MARK& mark, const DX_VIEW_TYPE& view) {
    if (const int error = DxDrawViewMark(mark)) return error;
    if (DxReadSpace != 2) return 0;
    if (const int error = DxCiElemDrawPat()) return error;
    return DxCiCreateViewOrViewport(DxActPat, DxModus, &view, nullptr);
}

} // namespace

int DxDrawView(const DX_VIEW_TYPE& view, const Mat44 m) {
    if (!DxViews || view.flags != DxActSpace) return 0;
    DX_VIEW_MARK mark{};
    const RPT shift = DxCheckPass ? RPT{0, 0} : RPT{DxShiftX, DxShiftY}; // what is drawn loses it again
    mark.low = {view.centreX - view.width / 2 + shift.x, view.centreY - view.height / 2 + shift.y, 0};
    mark.high = {view.centreX + view.width / 2 + shift.x, view.centreY + view.height / 2 + shift.y, 0};
    DxTrans3DRpt(&mark.low, m);
    DxTrans3DRpt(&mark.high, m);
    if (!DxIsFinite(mark.low) || !DxIsFinite(mark.high)) return 0;
    if (DxCheckPass) {
        DxCheckXYZ(mark.low.x, mark.low.y, mark.low.z);
        DxCheckXYZ(mark.high.x, mark.high.y, mark.high.z);
        return 0;
    }
    mark.direction = {view.directionX, view.directionY, view.directionZ};
    mark.onPlane = DxActSpace == 0;
    DxViewPlane({view.targetX, view.targetY, view.targetZ}, mark.direction, view.twist, mark.plane);
    mark.lineType = LINE_TYPE;
    mark.kind = "VIEW";
    mark.name = DxHostText(view.name.view());
    DxPatternScope pattern;
    const int error = drawMark(mark, view);
    const int restored = pattern.leave();
    return error ? error : restored;
}
