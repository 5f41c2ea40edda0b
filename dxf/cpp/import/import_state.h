// Running values of the entity import.
#pragma once

#include "dx_fixed.h"
#include "rpt.h"

/// One level of INSERT expansion; entry 0 is the section itself.
struct DX_INSERT_LEVEL {
    DX_NAME blockName;
    DX_NAME lineType;
    int color;
};

extern RPT3 DxExtMin, DxExtMax;                ///< extents of the active space
extern RPT3 DxInsBase;                         ///< insertion base of the active space
extern RPT3 DxLastPoint;                       ///< last point drawn, world coordinates ahead of the shift
extern int DxBlockLevel;                       ///< number of INSERTs being expanded
extern DxTable<DX_INSERT_LEVEL> DxInsertStack; ///< entry n belongs to block level n
extern double DxBlockScaleX, DxBlockScaleY, DxBlockScaleZ; ///< product of the INSERT scales
extern double DxBlockRotation;                             ///< sum of the INSERT rotations, degrees
extern int DxPlotCount, DxViewportCount;                   ///< running numbers of layouts and viewports
extern int DxPolylineOpen;                                 ///< 1 while a polyline's vertices are drawn

void DxResetImportState();
