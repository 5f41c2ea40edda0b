// Facets and clouds of points on their way to the host.
#pragma once

#include "ci_3d.h"
#include "rpt.h"

#include <cstdint>
#include <vector>

/// Facets that become one object of the host. Points are world coordinates of the active space, ahead of the
/// shift.
class DxFacets {
public:
    explicit DxFacets(std::size_t points);
    void add(const std::vector<RPT3>& corners, const RPT3& normal);
    bool empty() const { return points_.empty(); }
    /// Makes the object in the active pattern. Without facets nothing. 0, 3007 when the host makes none, or
    /// the error of a full pattern.
    int draw(int pen, MatDbKey material) const;

private:
    std::vector<RPT3> points_, normals_;
    std::vector<unsigned char> flags_; ///< 0 at the first point of a facet
};

/// A cloud of points, behind the shift, in the active pattern. 0 or the host's error.
int DxCiAddPointCloud(const RPT3* points, const unsigned long* pens, std::size_t count);

/// The pen closest to a colour: red in bits 16 to 23, green, blue in the lowest. 0 is success.
int DxCiGetClosestPen(std::uint32_t rgb, int* pen);
