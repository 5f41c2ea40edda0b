#include "point_cloud_state.h"

std::vector<DX_POINT_CLOUD> DxPointClouds;
std::size_t DxLastPointCloud = 0;

void DxResetPointCloudState() {
    DxPointClouds = {};
    DxLastPointCloud = 0;
}
