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
bool DxShouldWriteColor(int colour, int onLayerZero);

/// DXF colour of an entity with ByBlock and ByLayer resolved.
int DxResolveColor(const DX_ENTITY_BASE_TYPE& entity, int layerColour);
/// The host's value for a colour by the list's first match. An unknown colour is appended with `fallback`,
/// and reported by `message` (its number), so that it is told once.
int DxColorToCAD(DxTable<DX_COLOR_PAIR>& pairs, DxPairIndex& index, int colour, int fallback, int message);
