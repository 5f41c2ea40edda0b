#include "dx_create_patterns.h"

#include "../config/dx_layers.h"
#include "../host/dx_host.h"
#include "../session/dx_documents.h"
#include "../session/dx_encoding.h"
#include "../session/dx_messages.h"
#include "../session/dx_protocol.h"
#include "ov.h"
#include "uo.h"

namespace {

/// What a pattern of the host is known by: its strings and its group number.
struct Marks {
    UtCString level, cls, group, name;
    int groupNumber = 0;
};

/// The marks that the host gives new patterns at present.
Marks currentMarks(int patNo) {
    Marks marks;
    int code = 5;
    ovpatinfo(&code, &patNo, &marks.level, &marks.cls, &marks.group, &marks.name);
    code = 20;
    ovgroup(&code, &patNo, &marks.groupNumber);
    return marks;
}

UtCString* fieldOf(Marks& marks, int order) {
    switch (order) {
    case DX_ORDER_GROUP: return &marks.group;
    case DX_ORDER_LEVEL: return &marks.level;
    case DX_ORDER_CLASS: return &marks.cls;
    case DX_ORDER_NAME: return &marks.name;
    default: return nullptr;
    }
}

/// The layer as the host's own layer, with the pattern on it.
void putOnHostLayer(const DX_LAYER_TYPE& layer, int patNo, const UtCString& name) {
    DxCiAddDxfLayer(&layer);
    if (UoSetSingleAttr(patNo, "layer", name)) DxProtoMsg(DxMsg(5736), 1);
}

void markPattern(const DX_LAYER_TYPE& layer, int patNo, bool keepsMarks) {
    Marks marks = keepsMarks ? currentMarks(patNo) : Marks{};
    DX_NAME hostName = layer.name;
    DxTableConvLayer(1, &hostName);
    const UtCString name = DxHostText(hostName.view());
    if (DxLayerOrder == DX_ORDER_ATTR) {
        putOnHostLayer(layer, patNo, name);
    } else {
        if (UtCString* field = fieldOf(marks, DxLayerOrder)) *field = name;
        int code = 21;
        ovpatinfo(&code, &patNo, &marks.level, &marks.cls, &marks.group, &marks.name);
    }
    if (keepsMarks) {
        int code = 6;
        ovgroup(&code, &patNo, &marks.groupNumber);
    }
    if (DxUseByLayer) {
        UoSetSingleAttrInt(patNo, "bylayercol", layer.color);
        UoSetSingleAttr(patNo, "bylayerlt", DxHostText(layer.lineType.view()));
    }
}

} // namespace

int DxCreatePatterns(int first) {
    double useActOrder = 0;
    const bool keepsMarks = UoGetMacVarD("&DxfUseActOrder", &useActOrder) == 0 && useActOrder != 0;
    auto& layers = DxDocuments.currentTables().layers;
    int error = 0;
    for (std::size_t i = static_cast<std::size_t>(first); i < layers.size(); ++i) {
        if ((error = DxNewPat(0))) break;
        layers[i].patIndex = DxActPatIndex;
        markPattern(layers[i], DxActPat, keepsMarks);
    }
    if (DxLayerOrder == DX_ORDER_ATTR) DxCiAddDxfLayer(nullptr);
    return error;
}
