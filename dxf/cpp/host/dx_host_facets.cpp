#include "dx_host_facets.h"

#include "dx_frame.h"
#include "dx_host.h"

DxFacets::DxFacets(std::size_t points) {
    points_.reserve(points);
    normals_.reserve(points);
    flags_.reserve(points);
}

void DxFacets::add(const std::vector<RPT3>& corners, const RPT3& normal) {
    const auto addPoint = [&](const RPT3& point, unsigned char flag) {
        points_.push_back(DxPointToContext(point));
        normals_.push_back(normal);
        flags_.push_back(flag);
    };
    for (std::size_t i = 0; i < corners.size(); ++i) addPoint(corners[i], i == 0 ? 0 : 1);
    addPoint(corners[0], 1);
}

int DxFacets::draw(int pen, MatDbKey material) const {
    constexpr int noFacets = 3007;
    if (points_.empty()) return 0;
    if (const int error = DxNewElement(static_cast<int>(points_.size()))) return error;
    DsCsr cursor;
    if (const int error = DsCursorFromPatNo(DxActPat, &cursor)) return error;
    Ci3d body(DxCiContextId);
    body.SetParams(pen);
    body.SetVisMatKey(material);
    const CI_FACETS* facets = body.CreateFacets(&cursor, points_.data(), normals_[0], normals_.data(),
                                                nullptr, flags_.data(), points_.size(), 0);
    return facets ? 0 : noFacets;
}

int DxCiAddPointCloud(const RPT3* points, const unsigned long* pens, std::size_t count) {
    DsCsr cursor;
    if (const int error = DsCursorFromPatNo(DxActPat, &cursor)) return error;
    return Ci3d(DxCiContextId).AddPointCloud(&cursor, points, pens, count, 1);
}

int DxCiGetClosestPen(std::uint32_t rgb, int* pen) {
    constexpr double fullByte = 0.00392156862745098;
    const double parts[3] = {(rgb >> 16 & 255) * fullByte, (rgb >> 8 & 255) * fullByte,
                             (rgb & 255) * fullByte};
    return Ci3d::GetClosestPen(parts, *pen);
}
