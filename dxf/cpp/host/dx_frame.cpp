#include "dx_frame.h"

#include "../session/session_state.h"

#include "ge.h"
#include "ut.h"

/// Units of the drawing in one of the active space. A unit that isn't known counts as the drawing's.
static double hostUnits() {
    if (!DxActSpace || DxPaperUnit == DxUnit) return 1;
    const double ratio = GeUnit(DxPaperUnit).factor() / GeUnit(DxUnit).factor();
    return ratio > 0 && ratio < 1e20 ? ratio : 1;
}

double DxLengthToHost(double length) {
    return length * hostUnits();
}

double DxLengthFromHost(double length) {
    return length / hostUnits();
}

RPT DxPointToHost(double x, double y) {
    const double units = hostUnits();
    return {(x - DxShiftX) * units, (y - DxShiftY) * units};
}

RPT3 DxPointToHost(const RPT3& point) {
    const RPT flat = DxPointToHost(point.x, point.y);
    return {flat.x, flat.y, DxLengthToHost(point.z)};
}

RPT DxPointToContext(double x, double y) {
    return {x - DxShiftX, y - DxShiftY};
}

RPT3 DxPointToContext(const RPT3& point) {
    return {point.x - DxShiftX, point.y - DxShiftY, point.z};
}

double DxLengthToSheet(double length) {
    return DxLengthToHost(length) * DxScale * DxDrawUnit;
}

double DxLengthFromSheet(double millimetres) {
    return DxLengthFromHost(millimetres / (DxScale * DxDrawUnit));
}

double DxDrawingTolerance() {
    return DxLengthFromHost(UtConv(50));
}
