#include "dx_linework_import.h"

#include "import_state.h"

#include <cmath>

bool DxStaysRound(const double extrusion[3]) {
    constexpr double tolerance = 0.0001;
    return DxBlockIsEven && std::fabs(std::fabs(DxBlockScaleY) - std::fabs(DxBlockScaleX)) <= tolerance &&
           std::fabs(extrusion[0]) <= tolerance && std::fabs(extrusion[1]) <= tolerance;
}
