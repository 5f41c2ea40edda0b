// Pens, colours, fills and line types between DXF and the host.
#pragma once

#include "config_state.h"
#include "dx_types.h"

/// Layer, pen and line type of an entity. Non-zero if it is to be drawn.
int DxPenLtToCAD(const DX_ENTITY_BASE_TYPE* entity, int* pen, int* lineType);
/// The same for a fill; `fillPen` unchanged if the result is 0.
int DxFillPenToCAD(const DX_ENTITY_BASE_TYPE* entity, int* fillPen);
/// Colour and line-type name of a host element. `kind`: 0 line, 1 text, 2 hatch, 6 3D.
void DxPenLtToDXF(int pen, int lineType, int* colour, DX_NAME* lineTypeName, int kind);
void DxFillToDXF(int fill, int* colour);
int DxSetPenLt(int pen, int lineType);   ///< The host's current pen and line type; -1 leaves one.
int DxSetFillPen(int pattern, int fill); ///< The fill of the hatches to come.
void DxInitLinetypes(std::string_view name, std::string_view alias, int index);
bool DxShouldWriteColor(int colour, int onLayerZero);

int DxBuiltInPen(int colour); ///< Pen of DXF colour 0 … 255.
int DxBuiltInColor(int pen);  ///< DXF colour 1 … 255 of pen 0 … 1023.
