#include "dx_fill_slabs.h"

#include <algorithm>
#include <cstddef>

namespace {

/// A side that isn't level, from its lower to its upper end.
struct Side {
    RPT low, high;
    double at(double y) const {
        if (y <= low.y) return low.x;
        if (y >= high.y) return high.x;
        return low.x + (high.x - low.x) * ((y - low.y) / (high.y - low.y));
    }
};

std::vector<Side> sidesOf(const std::vector<const std::vector<UO_ELEM>*>& contours) {
    std::vector<Side> sides;
    for (const std::vector<UO_ELEM>* contour : contours)
        for (const UO_ELEM& e : *contour) {
            if (e.start.y < e.end.y) sides.push_back({e.start, e.end});
            if (e.start.y > e.end.y) sides.push_back({e.end, e.start});
        }
    std::sort(sides.begin(), sides.end(), [](const Side& a, const Side& b) { return a.low.y < b.low.y; });
    return sides;
}

std::vector<double> heightsOf(const std::vector<Side>& sides) {
    std::vector<double> heights;
    for (const Side& s : sides) heights.insert(heights.end(), {s.low.y, s.high.y});
    std::sort(heights.begin(), heights.end());
    heights.erase(std::unique(heights.begin(), heights.end()), heights.end());
    return heights;
}

/// The parts of a slab, between the first and the second of its sides, the third and the fourth …
void addParts(const std::vector<Side>& inSlab, double low, double high, std::vector<DX_FILL_PART>& parts) {
    for (std::size_t i = 0; i + 1 < inSlab.size(); i += 2) {
        const Side &left = inSlab[i], &right = inSlab[i + 1];
        const DX_FILL_PART part{
            {{left.at(low), low}, {right.at(low), low}, {right.at(high), high}, {left.at(high), high}}};
        const double width = part.corners[1].x - part.corners[0].x + part.corners[2].x - part.corners[3].x;
        if (width > 0) parts.push_back(part);
    }
}

} // namespace

std::vector<DX_FILL_PART> DxFillSlabs(const std::vector<const std::vector<UO_ELEM>*>& contours) {
    constexpr std::size_t mostParts = 1'000'000;
    const std::vector<Side> sides = sidesOf(contours);
    const std::vector<double> heights = heightsOf(sides);
    std::vector<DX_FILL_PART> parts;
    std::vector<Side> inSlab;
    std::size_t next = 0;
    for (std::size_t i = 0; i + 1 < heights.size(); ++i) {
        const double low = heights[i], high = heights[i + 1], middle = low + (high - low) / 2;
        std::erase_if(inSlab, [&](const Side& s) { return s.high.y <= low; });
        for (; next < sides.size() && sides[next].low.y <= low; ++next) inSlab.push_back(sides[next]);
        std::sort(inSlab.begin(), inSlab.end(),
                  [&](const Side& a, const Side& b) { return a.at(middle) < b.at(middle); });
        addParts(inSlab, low, high, parts);
        if (parts.size() + inSlab.size() > mostParts) return {};
    }
    return parts;
}
