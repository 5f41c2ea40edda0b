#include "dx_layer_choice.h"

#include "../config/config_state.h"
#include "../config/dx_layers.h"
#include "../host/dx_host.h"
#include "../sections/sections_state.h"
#include "../session/dx_messages.h"
#include "../session/dx_protocol.h"
#include "dx_bylayer_table.h"
#include "dx_pattern_walk.h"
#include "ov.h"
#include "uo.h"

static UtCString trimmed(const UtCString& text) {
    std::string s = text.str();
    UtTrim(s);
    return s;
}

int DxPatGetInfo(int pat) {
    // The pattern that keeps the header variables is no content: the names of the one before stay.
    if (pat == DxHeaderPat) return 0;
    UtCString names[DX_PAT_OBSTAT + 1];
    int code = 20;
    int number = pat;
    if (const int error = ovpatinfo(&code, &number, &names[DX_PAT_LEVEL], &names[DX_PAT_CLASS],
                                    &names[DX_PAT_GROUP], &names[DX_PAT_NAME]))
        return error;
    UoGetSingleAttr(pat, "layer", &names[DX_PAT_LAYER]);
    UoGetSingleAttr(pat, "obstat", &names[DX_PAT_OBSTAT]);

    static constexpr const char* DEFAULTS[DX_PAT_OBSTAT + 1] = {"G", "E", "C", "B", "L", ""};
    for (int i = 0; i <= DX_PAT_OBSTAT; ++i) {
        DxPatNames[i] = trimmed(names[i]);
        if (DxPatNames[i].IsEmpty()) DxPatNames[i] = DEFAULTS[i];
    }
    DxAttrPen = DxAttrFill = -1;
    DxCiGetAttrColorPens(pat, &DxAttrPen, &DxAttrFill);
    return 0;
}

int DxPatSetColAttrInfo(int pat, int /*kind*/) {
    struct Row {
        const char* attribute;
        int* colours[6];
    };
    // Later rows override earlier ones.
    static const Row ROWS[] = {
        {"col",
         {&DxElemColor, &DxTextColor, &DxArrowColor, &DxHatchColor, &DxDimTextColor, &DxDimArrowColor}},
        {"elemcol", {&DxElemColor}},
        {"textcol", {&DxTextColor, &DxDimTextColor}},
        {"arrowcol", {&DxArrowColor, &DxDimArrowColor}},
        {"dimcol", {&DxDimTextColor, &DxDimArrowColor}},
        {"hatchcol", {&DxHatchColor}},
    };
    for (int* colour : ROWS[0].colours) *colour = 0;
    for (const Row& row : ROWS) {
        int value = 0;
        if (UoGetSingleAttrInt(pat, row.attribute, &value) != 0) continue;
        for (int* colour : row.colours)
            if (colour) *colour = value;
    }
    return 0;
}

int DxClassify(int pat, int row, int kind, DX_CLASSIFIED& out) {
    out = {};
    if (const int error = DxCiGetByLayerName(pat, row, kind, &out.layer)) return error;
    if (!out.layer.IsEmpty()) DxNewLayer(DX_ORDER_FIXED, out.layer);
    if (const DX_LAYER_TYPE* layer = DxFindTemplateLayer(DxActLayer.view())) {
        out.colour = layer->color;
        out.lineType = UtCString(layer->lineType.view());
    } else if (!DxActLayer.empty()) {
        DxProtoMsg(DxMsg(5776, UtCString(DxActLayer.view())), 0);
    }
    return 0;
}

int DxPatSetByLayerAttribs(int pat, int row, int kind) {
    DX_CLASSIFIED answer;
    const int error =
        pat < 0 ? DxCiGetByLayerName(pat, row, kind, &answer.layer) : DxClassify(pat, row, kind, answer);
    DxByLayerColor = answer.colour;
    DxByLayerLt.assign(answer.lineType.str());
    return error;
}

int DxPatSetLayerAttribs(int pat, int row, int kind) {
    int error = DxColAttr ? DxPatSetColAttrInfo(pat, kind) : 0;
    const int slot = kind == DX_KIND_BITMAP ? DX_CLASS_HATCH : kind;
    if (!error) error = DxNewLayer(DxLayerKinds[slot], DxLayerFixedNames[slot]);
    if (!error && DxUseByLayer) error = DxPatSetByLayerAttribs(pat, row, kind);
    return error;
}
