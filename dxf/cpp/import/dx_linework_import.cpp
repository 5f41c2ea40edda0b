#include "dx_linework_import.h"

#include "import_state.h"

#include <cmath>

DX_ELLIPSE_TYPE DxAsEllipse(const DX_ENTITY_BASE_TYPE& base, const RPT3& centre, double radius, double start,
                            double end, bool counterClockwise) {
    DX_ELLIPSE_TYPE ellipse;
    DxCopyEntityBase(&ellipse.base, &base);
    DxInitExtrusion(ellipse.extrusion);
    ellipse.centre = centre;
    ellipse.majorAxis = {radius, 0, 0};
    ellipse.ratio = 1.0;
    ellipse.startParam = start;
    ellipse.endParam = end;
    ellipse.counterClockwise = counterClockwise ? 1 : 0;
    return ellipse;
}

bool DxStaysRound(const double extrusion[3]) {
    constexpr double tolerance = 0.0001;
    return DxBlockIsEven && std::fabs(std::fabs(DxBlockScaleY) - std::fabs(DxBlockScaleX)) <= tolerance &&
           std::fabs(extrusion[0]) <= tolerance && std::fabs(extrusion[1]) <= tolerance;
}
