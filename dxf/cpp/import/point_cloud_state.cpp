#include "point_cloud_state.h"

std::vector<DX_POINT_CLOUD> DxPointClouds;
std::size_t DxLastPointCloud = 0;
std::unordered_map<std::string, std::size_t> DxPointCloudPlaces;

void DxResetPointCloudState() {
    DxPointClouds = {};
    DxLastPointCloud = 0;
    DxPointCloudPlaces = {};
}
