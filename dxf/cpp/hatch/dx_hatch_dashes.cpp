// Dash lists of pattern lines and the host's line types.
#include "../session/session_state.h"
#include "dx_hatch_pattern.h"
#include "ut.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <span>

namespace {

/// A line type of the host: dash lengths times `factor`, in millimetres on the sheet.
struct HostDashes {
    int lineType;
    double factor;
    std::span<const double> dashes;
};

constexpr double dashed[] = {0.5, -0.5};
constexpr double dashDot[] = {0.78, -0.09, 0.04, -0.09};
constexpr double shortDashDot[] = {0.7, -0.1, 0.1, -0.1};
constexpr double dashTwoDots[] = {0.5, -0.1, 0.1, -0.1, 0.1, -0.1};

constexpr HostDashes table[] = {
    {2, 3.0, dashed},  {3, 1.5, dashed},   {4, 4.5, dashed},       {5, 7.0, dashed},
    {6, 7.0, dashDot}, {7, 10.0, dashDot}, {8, 9.0, shortDashDot}, {9, 10.0, dashTwoDots},
};

constexpr int continuous = 1, noFit = 5;

} // namespace

int DxGetHatchLt(const double* dashes, int count) {
    if (count <= 0) return continuous;
    const double toSheet = DxScale * DxDrawUnit;
    double total = 0;
    for (int i = 0; i < count; ++i) total += std::fabs(dashes[i]) * toSheet;
    const auto fits = [&](const HostDashes& row) {
        if (row.dashes.size() != static_cast<std::size_t>(count)) return false;
        for (int i = 0; i < count; ++i) {
            const double own = row.dashes[static_cast<std::size_t>(i)] * row.factor;
            if (!(std::fabs(own - dashes[i] * toSheet) < 0.1 * total)) return false;
        }
        return true;
    };
    const auto* found = std::find_if(std::begin(table), std::end(table), fits);
    return found != std::end(table) ? found->lineType : noFit;
}

int DxGetHatchDashes(int lineType, double** dashes, int* count) {
    *dashes = nullptr;
    *count = 0;
    const auto* row = std::find_if(std::begin(table), std::end(table),
                                   [&](const HostDashes& r) { return r.lineType == lineType; });
    if (row == std::end(table)) return 0;
    void* block = nullptr;
    if (const int error = UtAllocMemoryBlock(&block, row->dashes.size(), sizeof(double), 1, 0)) return error;
    *dashes = static_cast<double*>(block);
    *count = static_cast<int>(row->dashes.size());
    for (int i = 0; i < *count; ++i)
        (*dashes)[i] = row->dashes[static_cast<std::size_t>(i)] * row->factor / DxScale / DxDrawUnit;
    return 0;
}
