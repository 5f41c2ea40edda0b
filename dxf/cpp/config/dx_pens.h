// Pens, colours, fills and line types between DXF and the host.
#pragma once

#include "config_state.h"
#include "dx_types.h"

/// The layer of an entity, as it rules in the place where the entity stands.
struct DxEntityLayer {
    DX_LAYER_TYPE* record; ///< null for a layer that no table has
    int colour;
    DX_NAME lineType;
};
/// Settles the layer of an entity. True if the entity is to be drawn: its layer is on, its space is read.
bool DxFindEntityLayer(const DX_ENTITY_BASE_TYPE& entity, DxEntityLayer& layer);
/// Makes the pattern of an entity's layer active, where each layer has patterns of its own and no contour or
/// INSERT keeps another; a layer that no table has gets a record.
void DxEnterLayerPattern(DxEntityLayer& layer);
/// What an entity is drawn with.
struct DxPenLt {
    int pen = 0, lineType = 0;
};
/// Layer, pen and line type of an entity, with its layer's pattern active. Non-zero if it is to be drawn.
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
