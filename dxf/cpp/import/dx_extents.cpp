#include "dx_extents.h"

#include "../config/config_state.h"
#include "../sections/dx_header_import.h"
#include "../sections/sections_state.h"
#include "../session/dx_documents.h"
#include "../session/session_state.h"
#include "dx_transform.h"
#include "ge.h"

#include <algorithm>

namespace {

bool isAll(const RPT3& point, double value) {
    return point.x == value && point.y == value && point.z == value;
}

void widen(double value, double& min, double& max) {
    min = std::min(min, value);
    max = std::max(max, value);
}

/// What the file says of a space.
struct Space {
    const RPT3 &min, &max, &base;
    const RPT3 &ucsOrigin, &ucsX, &ucsY;
};

Space headerSpace(bool paper) {
    if (paper) {
        return {DxHdrPaperExtMin, DxHdrPaperExtMax,  DxHdrPaperInsBase,
                DxHdrPaperUcsOrg, DxHdrPaperUcsXDir, DxHdrPaperUcsYDir};
    }
    return {DxHdrExtMin, DxHdrExtMax, DxHdrInsBase, DxHdrUcsOrg, DxHdrUcsXDir, DxHdrUcsYDir};
}

} // namespace

bool DxIsExtentsUnInizialized(const RPT3& min, const RPT3& max) {
    return isAll(min, DX_UNKNOWN_MIN) && isAll(max, DX_UNKNOWN_MAX);
}

void DxInvalidateExtents(RPT3& min, RPT3& max) {
    min = {DX_UNKNOWN_MIN, DX_UNKNOWN_MIN, DX_UNKNOWN_MIN};
    max = {DX_UNKNOWN_MAX, DX_UNKNOWN_MAX, DX_UNKNOWN_MAX};
}

int DxIsExtentsUnInizialized() {
    return DxIsExtentsUnInizialized(DxExtMin, DxExtMax) ? 1 : 0;
}

void DxCheckXYZ(double x, double y, double z) {
    if (!DxIsFinite({x, y, z})) return;
    if (DxIsExtentsUnInizialized()) {
        DxExtMin = DxExtMax = {x, y, z};
        return;
    }
    widen(x, DxExtMin.x, DxExtMax.x);
    widen(y, DxExtMin.y, DxExtMax.y);
    widen(z, DxExtMin.z, DxExtMax.z);
}

void DxCheckXY(double x, double y) {
    if (!DxIsFinite({x, y, 0})) return;
    if (DxIsExtentsUnInizialized()) {
        DxExtMin.x = DxExtMax.x = x;
        DxExtMin.y = DxExtMax.y = y;
        return;
    }
    widen(x, DxExtMin.x, DxExtMax.x);
    widen(y, DxExtMin.y, DxExtMax.y);
}

void DxStoreMaxXYZ(double x, double y, double z) {
    widen(x, DxExtMin.x, DxExtMax.x);
    widen(y, DxExtMin.y, DxExtMax.y);
    widen(z, DxExtMin.z, DxExtMax.z);
}

void DxStoreMaxXY(double x, double y) {
    DxStoreMaxXYZ(x, y, 0);
}

/// Extents and base of a space become those of the session, in its user coordinate system if that is wanted.
static int takeSpace(const Space& space) {
    DxExtMin = space.min;
    DxExtMax = space.max;
    DxInsBase = space.base;
    if (!DxUseUcs || DxIsExtentsUnInizialized()) return 0;
    Mat44 ucs;
    if (const int error = DxHeaderUcsToMat(space.ucsOrigin, space.ucsX, space.ucsY, ucs)) return error;
    return DxTransformExtents(ucs);
}

int DxSetExtMinMaxIns(const DX_BLOCK_RECORD_TYPE* space) {
    constexpr int notApplicable = 3011;
    if (DxActSpace < 2) return takeSpace(headerSpace(DxActSpace == 1));
    if (!space || !space->handle || !space->layoutHandle || !DxDocuments.current_) return notApplicable;
    const DX_LAYOUT_TYPE* layout = DxDocuments.current_->objects.layoutOf(*space);
    if (!layout) return notApplicable;
    return takeSpace(
        {layout->extMin, layout->extMax, layout->base, layout->ucsOrigin, layout->ucsX, layout->ucsY});
}

int DxTransformExtents(const Mat44 m) {
    GeBox box(DxExtMin, DxExtMax);
    box *= GeMat44(m);
    DxExtMin = box.min;
    DxExtMax = box.max;
    DxTrans3DRpt(&DxInsBase, m);
    return 0;
}
