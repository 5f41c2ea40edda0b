// VIEWPORT.
#include "../config/config_state.h"
#include "../config/dx_layers.h"
#include "../host/dx_active_pattern.h"
#include "../host/dx_host.h"
#include "../host/dx_host_views.h"
#include "../session/session_state.h"
#include "dx_entity_base.h"
#include "dx_extents.h"
#include "dx_transform.h"
#include "dx_views_import.h"
#include "import_state.h"

#include <cmath>

namespace {

using R = DX_VIEWPORT_TYPE;
constexpr auto fields = dxFields<R>({
    {10, &R::centre},      {16, &R::direction},   {17, &R::target},      {40, &R::width},
    {41, &R::height},      {42, &R::lensLength},  {43, &R::frontClip},   {44, &R::backClip},
    {45, &R::viewHeight},  {51, &R::twist},       {68, &R::status},      {69, &R::id},
    {71, &R::group71},     {90, &R::viewFlags},   {110, &R::ucsOrigin},  {111, &R::ucsX},
    {112, &R::ucsY},       {146, &R::elevation},  {170, &R::group170},   {281, &R::renderMode},
    {340, &R::clipHandle}, {12, &R::viewCentreX}, {22, &R::viewCentreY},
});

constexpr int LINE_TYPE = 9;
constexpr int FIRST_WITH_GROUPS = 1015; ///< older files have the view in the extended data

bool isOld() {
    return DxFileVersion < FIRST_WITH_GROUPS;
}

/// Groups that the table can't hold: lists, and the view of old files, by occurrence.
class Rest {
public:
    explicit Rest(R& viewport) : viewport_(viewport) {}

    bool operator()(const DxPair& pair) {
        if (pair.code == 331 || pair.code == 341) {
            viewport_.frozen.push_back(DxHexToU32(pair.text));
            return true;
        }
        if (pair.code < 1000 || !isOld()) return false;
        if (pair.code == 1003) {
            const DX_LAYER_TYPE* layer = DxFindLayer(pair.text);
            viewport_.frozen.push_back(layer ? layer->handle : 0);
        } else if (pair.code == 1040) {
            takeReal(DxfReadConvDouble(pair.text));
        } else if (pair.code == 1010 || pair.code == 1020 || pair.code == 1030) {
            takePoint((pair.code - 1010) / 10, DxfReadConvDouble(pair.text));
        }
        return true;
    }

private:
    void takeReal(double value) {
        constexpr double degreesARadian = 57.29577951308232;
        switch (++reals_) {
        case 1: viewport_.twist = value * degreesARadian; break;
        case 2: viewport_.viewHeight = value; break;
        case 3: viewport_.viewCentreX = value; break;
        case 4: viewport_.viewCentreY = value; break;
        case 5: viewport_.lensLength = value; break;
        case 6: viewport_.frontClip = value; break;
        case 7: viewport_.backClip = value; break;
        default: break;
        }
    }
    void takePoint(int axis, double value) {
        const int which = ++points_[axis];
        if (which > 2) return;
        RPT3& point = which == 1 ? viewport_.target : viewport_.direction;
        (axis == 0 ? point.x : axis == 1 ? point.y : point.z) = value;
    }

    R& viewport_;
    int reals_ = 0;
    int points_[3] = {0, 0, 0};
};

void setStartValues(R& viewport) {
    viewport = R{};
    DxInitEntityBase(&viewport.base);
    viewport.base.paperSpace = 1;
}

/// A rectangle about a point.
void setCorners(DX_VIEW_MARK& mark, const RPT3& centre, double width, double height) {
    mark.low = {centre.x - width / 2, centre.y - height / 2, centre.z};
    mark.high = {centre.x + width / 2, centre.y + height / 2, centre.z};
}

/// What stands for the viewport in the active space.
DX_VIEW_MARK markOf(const R& viewport) {
    DX_VIEW_MARK mark{};
    mark.direction = viewport.direction;
    mark.lineType = LINE_TYPE;
    mark.kind = "VIEWPORT";
    mark.name = UtFormat("Layout%d Viewport%d", DxPlotCount, viewport.id);
    if (DxActSpace) {
        setCorners(mark, viewport.centre, viewport.width, viewport.height);
        return mark;
    }
    const RPT shift = DxCheckPass ? RPT{0, 0} : RPT{DxShiftX, DxShiftY}; // what is drawn loses it again
    setCorners(mark, {viewport.viewCentreX + shift.x, viewport.viewCentreY + shift.y, 0}, viewport.viewWidth,
               viewport.viewHeight);
    mark.onPlane = true;
    DxViewPlane(viewport.target, viewport.direction, viewport.twist, mark.plane);
    return mark;
}

int drawMark(const DX_VIEW_MARK& mark, const R& viewport) {
    if (const int error = DxDrawViewMark(mark)) return error;
    if (DxReadSpace != 2) return 0;
    if (const int error = DxCiElemDrawPat()) return error;
    return DxCiCreateViewOrViewport(DxActPat, DxModus, nullptr, &viewport);
}

} // namespace

int DxReadViewport(DX_VIEWPORT_TYPE* viewport) {
    constexpr double noHeight = 0.0001;
    setStartValues(*viewport);
    if (const int error = DxReadEntity(*viewport, fields, Rest(*viewport))) return error;
    if (viewport->id == 0) viewport->id = DxViewportCount++;
    if (std::fabs(viewport->height) > noHeight)
        viewport->viewWidth = viewport->viewHeight * viewport->width / viewport->height;
    return 0;
}

int DxDrawViewport(DX_VIEWPORT_TYPE* viewport, const Mat44 m) {
    constexpr int idOfSheet = 1;
    if (viewport->id == idOfSheet)
        DxNoteReason(DxReason::SheetWindow);
    else if (DxReadSpace == 0)
        DxNoteReason(DxReason::OtherSpace);
    if (!DxViews || viewport->id < 2 || viewport->base.paperSpace != 1) return 0;
    DX_VIEW_MARK mark = markOf(*viewport);
    DxTrans3DRpt(&mark.low, m);
    DxTrans3DRpt(&mark.high, m);
    if (!DxIsFinite(mark.low) || !DxIsFinite(mark.high)) return 0;
    if (DxCheckPass) {
        DxCheckXYZ(mark.low.x, mark.low.y, mark.low.z);
        DxCheckXYZ(mark.high.x, mark.high.y, mark.high.z);
        return 0;
    }
    if (DxReadSpace != 2 || DxActSpace == 0) DxEntityDrawn = 1; // counted once where both spaces are read
    DxPatternScope pattern;
    const int error = drawMark(mark, *viewport);
    const int restored = pattern.leave();
    return error ? error : restored;
}
