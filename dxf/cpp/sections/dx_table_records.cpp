#include "dx_table_records.h"

void DxInitLayer(DX_LAYER_TYPE* layer) {
    *layer = {};
    layer->patIndex = -1;
    layer->plot = 1;
    layer->lineWeight = -3;
}

void DxInitLType(DX_LTYPE_TYPE* lineType) {
    *lineType = {};
    lineType->alignment = 65;
}

void DxInitStyle(DX_STYLE_TYPE* style) {
    *style = {};
    style->widthFactor = 1.0;
}

void DxInitDimStyle(DX_DIM_STYLE* style) {
    *style = {};
    style->reals[0] = 1.0;
}
