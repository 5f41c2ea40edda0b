#include "dx_point_clouds.h"

#include "../config/dx_pens.h"
#include "../host/dx_frame.h"
#include "../host/dx_host.h"
#include "../host/dx_host_facets.h"
#include "../session/session_state.h"
#include "account_state.h"
#include "dx_entity_base.h"
#include "dx_transform.h"
#include "import_state.h"
#include "point_cloud_state.h"

#include <cstring>

static bool isOnLayer(const DX_POINT_CLOUD& cloud, const DX_ENTITY_BASE_TYPE& base) {
    return std::strcmp(cloud.base.layer.c_str(), base.layer.c_str()) == 0;
}

/// The cloud of the point's layer. Points of one layer mostly stand together.
static DX_POINT_CLOUD& cloudOf(const DX_ENTITY_BASE_TYPE& base) {
    if (DxLastPointCloud < DxPointClouds.size() && isOnLayer(DxPointClouds[DxLastPointCloud], base))
        return DxPointClouds[DxLastPointCloud];
    const auto [place, isNew] = DxPointCloudPlaces.try_emplace(base.layer.c_str(), DxPointClouds.size());
    if (isNew) DxPointClouds.push_back({base, {}, {}});
    DxLastPointCloud = place->second;
    return DxPointClouds[DxLastPointCloud];
}

int DxCiPointCloudPushPt(const DX_POINT_TYPE* point, const Mat44 m) {
    DX_POINT_CLOUD& cloud = cloudOf(point->base);
    int pen = 0, lineType = 0;
    if (!DxPenLtToCAD(&point->base, &pen, &lineType)) return 0;
    RPT3 p = point->point;
    DxTrans3DRpt(&p, m);
    if (!DxIsFinite(p)) return 0;
    cloud.points.push_back(DxPointToContext(p));
    cloud.pens.push_back(static_cast<unsigned long>(pen));
    DxEntityDrawn = 1;
    return 0;
}

static int drawCloud(const DX_POINT_CLOUD& cloud) {
    int error = DxNewPatCopyAllAttr(0);
    if (!error) error = DxNewElement(1);
    if (!error && !cloud.points.empty())
        error = DxCiAddPointCloud(cloud.points.data(), cloud.pens.data(), cloud.points.size());
    return error ? error : DxNewPatCopyAllAttr(0);
}

int DxCiDrawPointClouds() {
    int result = 0;
    for (const DX_POINT_CLOUD& cloud : DxPointClouds) {
        int pen = 0, lineType = 0;
        // The clouds of an earlier space are given again, in the one that is read now.
        DX_ENTITY_BASE_TYPE base = cloud.base;
        base.paperSpace = DxActSpace;
        if (DxPenLtToCAD(&base, &pen, &lineType)) result = drawCloud(cloud);
    }
    return result;
}

int DxCiFreePointClouds() {
    DxResetPointCloudState();
    return 0;
}
