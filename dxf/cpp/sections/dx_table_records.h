// Start values of table records.
#pragma once

#include "dx_tables.h"

void DxInitLayer(DX_LAYER_TYPE* layer);    ///< No colour (0), lineweight -3, plotted, no pattern.
void DxInitLType(DX_LTYPE_TYPE* lineType); ///< A line without dashes, alignment 65.
void DxInitStyle(DX_STYLE_TYPE* style);    ///< Width factor 1.
void DxInitDimStyle(DX_DIM_STYLE* style);  ///< All zero but the overall scale, which is 1.
