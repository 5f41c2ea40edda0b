// Patterns of the host for the layers of a drawing.
#pragma once

#include "dx_types.h"

/// Makes a pattern for each layer of the current document from index `first` on; the layer's name goes into
/// the identifying field that DxLayerOrder says. 0, or the first error.
int DxCreatePatterns(int first);
/// The same for one layer.
int DxCreateLayerPattern(DX_LAYER_TYPE& layer);
/// The same for its entities that aren't shown, whatever the layer's state.
int DxCreateHiddenPattern(DX_LAYER_TYPE& layer);
/// Makes the layer's pattern within the INSERT that is drawn active; the first one is the INSERT's own. 0 or
/// the host's error.
int DxEnterPlacedPattern(DX_LAYER_TYPE& layer);
