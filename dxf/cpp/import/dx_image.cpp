// IMAGE.
#include "../config/config_state.h"
#include "../config/dx_pens.h"
#include "../host/dx_active_pattern.h"
#include "../host/dx_host.h"
#include "../session/session_state.h"
#include "dx_entity_base.h"
#include "dx_extents.h"
#include "dx_images.h"
#include "dx_transform.h"
#include "import_state.h"

namespace {

using R = DX_IMAGE_TYPE;
constexpr auto fields = dxFields<R>({
    {10, &R::insertion},
    {11, &R::uVector},
    {12, &R::vVector},
    {13, &R::pixelsX},
    {23, &R::pixelsY},
    {70, &R::flags},
    {71, &R::boundaryKind},
    {280, &R::clipping},
    {281, &R::brightness},
    {282, &R::contrast},
    {283, &R::fade},
    {340, &R::imageDefHandle},
    {360, &R::imageDefReactorHandle},
});

void setStartValues(R& image) {
    image = R{};
    DxInitEntityBase(&image.base);
    image.uVector = {1, 0, 0};
    image.vVector = {0, 1, 0};
    image.brightness = image.contrast = 50;
}

/// The vertices of the boundary, a group 14 and a group 24 each.
bool takeBoundary(R& image, const DxPair& pair) {
    if (pair.code == 14) {
        image.boundary.push_back({DxfReadConvDouble(pair.text), 0});
        return true;
    }
    if (pair.code != 24 || image.boundary.empty()) return false;
    image.boundary.back().y = DxfReadConvDouble(pair.text);
    return true;
}

RPT3 beyond(const RPT3& from, double times, const RPT3& vector) {
    return {from.x + times * vector.x, from.y + times * vector.y, from.z + times * vector.z};
}

/// The image waits, in the active pattern, which counts as used.
int enterQueue(const R& image, const Mat44 m) {
    if (const int error = DxImageQueueAdd(&image, m, DxActPatIndex)) return error;
    return DxNewElement(1);
}

} // namespace

int DxReadImage(DX_IMAGE_TYPE* image) {
    setStartValues(*image);
    return DxReadEntity(*image, fields, [image](const DxPair& pair) { return takeBoundary(*image, pair); });
}

int DxDrawImage(DX_IMAGE_TYPE* image, const Mat44 m) {
    int pen = 0, lineType = 0;
    if (!DxPenLtToCAD(&image->base, &pen, &lineType)) return 0;
    const RPT3& p = image->insertion;
    const RPT3 pu = beyond(p, image->pixelsX, image->uVector), pv = beyond(p, image->pixelsY, image->vVector);
    RPT3 corners[] = {p, pu, pv, {pu.x + pv.x - p.x, pu.y + pv.y - p.y, pu.z + pv.z - p.z}};
    for (RPT3& corner : corners) {
        DxTrans3DRpt(&corner, m);
        if (!DxIsFinite(corner)) return 0;
    }
    if (DxCheckPass) {
        for (const RPT3& corner : corners) DxCheckXYZ(corner.x, corner.y, corner.z);
        return 0;
    }
    DxEntityDrawn = 1;
    if (!DxLayerToPattern) {
        int error = DxNewPat(1);
        if (!error) error = enterQueue(*image, m);
        return error ? error : DxNewPat(0); // what follows doesn't stand beside the image
    }
    DxPatternScope layer;
    int error = DxNewPatCopyAllAttr(1);
    if (!error) error = enterQueue(*image, m);
    return error ? error : layer.leave();
}
