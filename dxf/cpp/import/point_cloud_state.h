// The points that wait for the end of a pass, by layer.
#pragma once

#include "dx_entity_base.h"

#include <string>
#include <unordered_map>
#include <vector>

struct DX_POINT_CLOUD {
    DX_ENTITY_BASE_TYPE base; ///< of the layer's first point
    std::vector<RPT3> points; ///< behind the shift
    std::vector<unsigned long> pens;
};

extern std::vector<DX_POINT_CLOUD> DxPointClouds;
extern std::size_t DxLastPointCloud; ///< the cloud that took the last point
extern std::unordered_map<std::string, std::size_t> DxPointCloudPlaces; ///< by layer

void DxResetPointCloudState();
