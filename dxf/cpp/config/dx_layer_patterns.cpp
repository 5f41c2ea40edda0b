#include "dx_layer_patterns.h"

#include "../host/dx_host.h"
#include "../host/dx_host_origin.h"
#include "../import/import_state.h"
#include "../session/dx_documents.h"
#include "../session/dx_messages.h"
#include "../session/dx_protocol.h"
#include "../session/dx_unicode.h"
#include "dx_layers.h"
#include "ov.h"
#include "uo.h"

#include <utility>

namespace {

/// The identifying strings of a pattern and its group number.
struct PatternNames {
    UtCString level, cls, group, name;
    int groupNumber = 0;
};

void readCurrentNames(PatternNames& names) {
    int code = 5;
    ovpatinfo(&code, &DxActPat, &names.level, &names.cls, &names.group, &names.name);
    code = 20;
    ovgroup(&code, &DxActPat, &names.groupNumber);
}

void setLayerAttribute(const DX_LAYER_TYPE& layer, const UtCString& name) {
    DxCiAddDxfLayer(&layer);
    if (UoSetSingleAttr(DxActPat, "layer", name)) DxProtoMsg(DxMsg(5736), 1);
}

void setNameByOrder(PatternNames& names, const UtCString& name) {
    switch (DxLayerOrder) {
    case DX_ORDER_GROUP: names.group = name; break;
    case DX_ORDER_LEVEL: names.level = name; break;
    case DX_ORDER_CLASS: names.cls = name; break;
    case DX_ORDER_NAME: names.name = name; break;
    default: break;
    }
}

void nameLayerPattern(const DX_LAYER_TYPE& layer, bool keepNames) {
    PatternNames names;
    if (keepNames) readCurrentNames(names);
    DX_LAYER_TYPE named = layer;
    DxTableConvLayer(1, &named.name);
    const UtCString name(named.name.view());
    if (DxLayerOrder == DX_ORDER_ATTR) {
        setLayerAttribute(named, name);
    } else {
        setNameByOrder(names, name);
        int code = 21;
        ovpatinfo(&code, &DxActPat, &names.level, &names.cls, &names.group, &names.name);
    }
    if (keepNames) {
        int code = 6;
        ovgroup(&code, &DxActPat, &names.groupNumber);
    }
    if (DxUseByLayer) {
        UoSetSingleAttrInt(DxActPat, "bylayercol", layer.color);
        UoSetSingleAttr(DxActPat, "bylayerlt", layer.lineType.view());
    }
}

bool keepsCurrentNames() {
    double value = 0;
    return UoGetMacVarD("&DxfUseActOrder", &value) == 0 && value != 0;
}

/// Whatever entity it is made for, the pattern is one for all of the layer.
int createPattern(DX_LAYER_TYPE& layer, bool keepNames) {
    const int hidden = std::exchange(DxActHidden, 0);
    const int error = DxNewPat(0);
    DxActHidden = hidden;
    if (error) return error;
    layer.patIndex = DxActPatIndex;
    nameLayerPattern(layer, keepNames);
    return 0;
}

void finishLayers() {
    if (DxLayerOrder == DX_ORDER_ATTR) DxCiAddDxfLayer(nullptr);
}

} // namespace

int DxCreatePatterns(int first) {
    const bool keepNames = keepsCurrentNames();
    DxTable<DX_LAYER_TYPE>& layers = DxDocuments.currentTables().layers;
    int error = 0;
    for (std::size_t i = first < 0 ? 0 : static_cast<std::size_t>(first); i < layers.size() && !error; ++i)
        error = createPattern(layers[i], keepNames);
    finishLayers();
    return error;
}

int DxCreateLayerPattern(DX_LAYER_TYPE& layer) {
    const int error = createPattern(layer, keepsCurrentNames());
    finishLayers();
    return error;
}

int DxEnterPlacedPattern(DX_LAYER_TYPE& layer) {
    for (const DX_PLACED_LAYER& known : DxPlacedLayers)
        if (known.layer == &layer && known.isHidden == DxActHidden)
            return DxReturnToPat(known.entry, DxPatTable[static_cast<std::size_t>(known.entry)].number);
    const int ofLayer = layer.patIndex;
    int error = DxCreateLayerPattern(layer);
    DxPlacedLayers.push_back({&layer, DxActHidden, DxActPatIndex});
    layer.patIndex = ofLayer;
    if (!error && DxActHidden) error = DxHidePat();
    if (!error && DxActPlaced.firstEntry < 0) DxPlacedBegin();
    return error;
}

int DxCreateHiddenPattern(DX_LAYER_TYPE& layer) {
    const int shown = layer.patIndex;
    const int error = DxCreateLayerPattern(layer);
    layer.hiddenPatIndex = std::exchange(layer.patIndex, shown);
    return error ? error : DxHidePat();
}
