#include "polyline_state.h"

DX_POLYLINE_TYPE DxActPolyline{};
DX_VERTEX_TYPE DxActVertex{};
int DxPolyFirst = 1;
double DxPolyBulge = 0;
RPT3 DxPolyPrev{};
RPT3 DxPolyStart{}, DxPolyStartWorld{};
int DxPolyPat = 0;
int DxFillSavedPat = 0;
std::vector<long> DxPolyRows;
long DxPolyElemsBefore = 0;
DX_POLY_STYLE DxPolyStyle;

void DxResetPolylineState() {
    DxActPolyline = DX_POLYLINE_TYPE{};
    DxActVertex = DX_VERTEX_TYPE{};
    DxPolyFirst = 1;
    DxPolyBulge = 0;
    DxPolyPrev = DxPolyStart = DxPolyStartWorld = {0, 0, 0};
    DxPolyPat = DxFillSavedPat = 0;
    DxPolyRows = {};
    DxPolyElemsBefore = 0;
    DxPolyStyle = DX_POLY_STYLE{};
}
