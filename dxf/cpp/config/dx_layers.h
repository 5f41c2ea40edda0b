// Layers: finding and making their records, and which layer an entity stands on.
#pragma once

#include "config_state.h"
#include "dx_types.h"

#include <string_view>

/// A layer record as the tables start one: no name, no pattern, plotted, line weight by default.
void DxInitLayer(DX_LAYER_TYPE* layer);
/// Whether what the file doesn't show is drawn all the same, unseen.
bool DxKeepsHidden();
/// The layer record that rules for `name` in the current document: the outermost document's that knows it.
/// Null when there is none. Valid until a layer is added.
DX_LAYER_TYPE* DxFindLayer(std::string_view name);
/// Export: the layer of this name in the template; null when that has none. Valid until a layer is added.
const DX_LAYER_TYPE* DxFindTemplateLayer(std::string_view name);
/// Sets DxActLayer and its values for an entity. Result non-zero if the entity is to be drawn.
/// `layerLineType` receives at most 160 bytes.
int DxSetActLayer(const DX_ENTITY_BASE_TYPE* entity, int* layerColour, DX_NAME* layerLineType,
                  DX_LAYER_TYPE** record);
/// Export: appends a layer unless it exists. 0, or the host's allocation error.
int DxAddLayer(std::string_view name);
/// Export: sets DxActLayer to the pattern name of order value `kind`, or to `name` for DX_ORDER_FIXED. 0.
int DxNewLayer(int kind, const UtCString& name);
/// Import: a layer that an entity names and no table has; with its pattern.
int DxPenltAddLayer(std::string_view name, int colour, std::string_view lineType, DX_LAYER_TYPE** record);
/// Translates through DxLayerMap: toHost 0 host name to DXF name, else DXF name to host name.
void DxTableConvLayer(int toHost, DX_NAME* name);
int DxCiAddDxfLayer(const DX_LAYER_TYPE* layer); ///< Tells the host's layer manager; null: all told.
