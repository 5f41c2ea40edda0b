#include "dx_layers.h"

#include "../import/import_state.h"
#include "../session/dx_documents.h"
#include "../session/dx_unicode.h"
#include "../session/session_state.h"
#include "ds.h"
#include "ds_layer.h"
#include "dx_layer_patterns.h"
#include "dx_linetypes.h"
#include "dx_names.h"

#include <climits>
#include <cstdlib>
#include <string>

void DxInitLayer(DX_LAYER_TYPE* layer) {
    *layer = DX_LAYER_TYPE{};
    layer->patIndex = -1;
    layer->plot = 1;
    layer->lineWeight = -3;
    layer->trueColor = layer->hiddenPatIndex = -1;
}

static DX_LAYER_TYPE* findIn(DxTables& tables, std::string_view name, bool anyCase = false) {
    const int index = anyCase ? tables.findLayerOfAnyCase(name) : tables.findLayer(name);
    return index < 0 ? nullptr : &tables.layers[static_cast<std::size_t>(index)];
}

DX_LAYER_TYPE* DxFindLayer(std::string_view name) {
    if (name.empty()) return nullptr;
    DX_LAYER_TYPE* layer = findIn(DxDocuments.currentTables(), name);
    const DxfDocument* document = DxDocuments.current_;
    if (!document || !document->parent.Get()) return layer;
    // The main file knows the layers of an external reference under "prefix|name".
    std::string outer(name);
    if (name != "0" && !document->prefix.IsEmpty()) outer = document->prefix.str() + "|" + outer;
    for (DxfDocument* parent = document->parent.Get(); parent; parent = parent->parent.Get())
        if (DX_LAYER_TYPE* found = findIn(parent->tables, outer)) layer = found;
    return layer;
}

const DX_LAYER_TYPE* DxFindTemplateLayer(std::string_view name) {
    const DX_LAYER_TYPE* layer = DxFindLayer(name);
    return layer && layer->isOfTemplate ? layer : nullptr;
}

/// A layer of the documents around the current one: an INSERT of an external reference stands on it.
static DX_LAYER_TYPE* findAround(std::string_view name) {
    DX_LAYER_TYPE* layer = nullptr;
    DxfDocument* around = DxDocuments.current_ ? DxDocuments.current_->parent.Get() : nullptr;
    for (; around && !layer; around = around->parent.Get()) layer = findIn(around->tables, name);
    return layer;
}

static bool isInActiveSpace(const DX_ENTITY_BASE_TYPE& entity) {
    return (DxBlockLevel > 0 ? DxInsertSpace : entity.paperSpace) == DxActSpace;
}

bool DxKeepsHidden() {
    return DxLayerStates && DxLayerToPattern;
}

/// Why the file doesn't show an entity of the active space.
static DxReason hiddenBy(const DX_ENTITY_BASE_TYPE& entity, int colour, const DX_LAYER_TYPE* layer) {
    constexpr int frozenFlag = 1;
    const bool isFrozen = layer && (layer->flags & frozenFlag) && !DxAllLayers;
    if (isFrozen && (colour < 1 || DxKeepsHidden())) return DxReason::LayerFrozen;
    if (colour < 1) return DxReason::LayerOff;
    return entity.invisible != 0 ? DxReason::Invisible : DxReason::None;
}

/// Whether the entity is to be drawn. The account gets to know why not, or why it won't be seen.
static bool isDrawn(const DX_ENTITY_BASE_TYPE& entity, int colour, const DX_LAYER_TYPE* layer) {
    DxEntityInSpace = isInActiveSpace(entity);
    const DxReason reason = DxEntityInSpace ? hiddenBy(entity, colour, layer) : DxReason::OtherSpace;
    const bool keepsHidden = DxKeepsHidden() && DxIsHidden(reason);
    DxActHidden = DxKeepsHidden() && (DxActLevel.isHidden || entity.invisible != 0);
    // What stands in a block tells nothing of the INSERT that is counted.
    if (reason != DxReason::None && (!keepsHidden || DxBlockLevel == DxAccountLevel)) DxNoteReason(reason);
    return reason == DxReason::None || keepsHidden;
}

int DxSetActLayer(const DX_ENTITY_BASE_TYPE* entity, int* layerColour, DX_NAME* layerLineType,
                  DX_LAYER_TYPE** record) {
    std::string_view name = entity->layer.empty() ? std::string_view("0") : entity->layer.view();
    const bool isOfInsert = DxBlockLevel > 0 && name == "0";
    if (isOfInsert) name = DxInsertLayer.view();
    DxActLayer.assign(name);
    DX_LAYER_TYPE* layer = DxFindLayer(name);
    if (!layer && isOfInsert) layer = findAround(name);
    const std::string_view lineType = layer ? layer->lineType.view() : DxFirstLinetype();
    int colour = layer ? layer->color : 7;
    DxActLt.assign(lineType);
    if (layer && (layer->flags & 16)) DxActLayer.assign(layer->name.view());
    if (DxAllLayers && colour < 0) colour = colour == INT_MIN ? INT_MAX : -colour;
    DxActColor = colour;
    *layerColour = colour;
    layerLineType->assign(lineType);
    *record = layer;
    const bool draws = isDrawn(*entity, colour, layer);
    if (draws && colour < 0) *layerColour = DxActColor = colour == INT_MIN ? INT_MAX : -colour;
    return draws;
}

/// Gives a layer of an export the state and look that the host knows.
static void takeHostState(DX_LAYER_TYPE& layer) {
    constexpr int frozen = 1, locked = 4;
    DS_LAYER_LOOK look;
    bool isVisible = true, isLocked = false;
    // The name may have been made fit for the target.
    const bool isActive = layer.name.view() == DxActLayer.view() && !DxActHostLayer.IsEmpty();
    const UtCString name = isActive ? DxActHostLayer : UtCString(layer.name.view());
    if (DsLayerApi::GetLayerLook(name, &look, &isVisible, &isLocked) != 0) return;
    if (look.color) layer.color = look.color;
    if (!isVisible && !look.frozen) layer.color = -std::abs(layer.color);
    layer.flags |= (look.frozen ? frozen : 0) | (isLocked ? locked : 0);
    layer.plot = look.plotted ? 1 : 0;
    layer.lineWeight = look.lineWeight;
    layer.trueColor = look.trueColor;
    if (!look.lineType.IsEmpty()) layer.lineType.assign(look.lineType.str());
}

static int appendLayer(std::string_view name, int colour, std::string_view lineType) {
    DX_LAYER_TYPE layer;
    DxInitLayer(&layer);
    layer.name.assign(name);
    layer.color = colour;
    layer.lineType.assign(lineType);
    if (DxIsExport && DxLayerStates) takeHostState(layer);
    return DxDocuments.currentTables().layers.add(layer);
}

int DxAddLayer(std::string_view name) {
    if (DxFindLayer(name)) return 0;
    const bool byLayer = DxUseByLayer != 0;
    const int colour = byLayer && DxByLayerColor ? DxByLayerColor : 7;
    return appendLayer(name, colour,
                       byLayer && !DxByLayerLt.empty() ? DxByLayerLt.view() : DxFirstLinetype());
}

int DxNewLayer(int kind, const UtCString& name) {
    const bool fromPattern = kind >= DX_ORDER_GROUP && kind <= DX_ORDER_ATTR;
    UtCString layer = fromPattern ? DxPatNames[kind] : name;
    DxActHostLayer = layer;
    DX_NAME converted;
    if (fromPattern && DxCharCount(layer.str()) <= DX_NAME::LIMIT) { // a longer name is no entry of the map
        converted.assign(layer.str());
        DxTableConvLayer(0, &converted);
        layer = UtCString(converted.view());
    }
    DxCheckName(layer);
    if (layer.IsEmpty()) layer = "0"; // an entity always has a layer
    // Names that differ in the case of letters only are one layer in a file.
    const DX_LAYER_TYPE* known = findIn(DxDocuments.currentTables(), layer.str(), true);
    DxActLayer.assign(known ? known->name.view() : layer.str());
    return 0;
}

int DxPenltAddLayer(std::string_view name, int colour, std::string_view lineType, DX_LAYER_TYPE** record) {
    if (const int error = appendLayer(name, colour, lineType)) return error;
    DX_LAYER_TYPE& layer = DxDocuments.currentTables().layers.back();
    *record = &layer;
    return DxCreateLayerPattern(layer);
}

void DxTableConvLayer(int toHost, DX_NAME* name) {
    if (const DX_LAYER_PAIR* pair = toHost ? DxLayerMapIndex.find(DxLayerMap, name->view())
                                           : DxHostLayerIndex.find(DxLayerMap, name->view()))
        name->assign(toHost ? pair->host.view() : pair->dxf.view());
}

int DxCiAddDxfLayer(const DX_LAYER_TYPE* layer) {
    if (!layer) return CcmLayerMgrApi::UpdateOnLoad(1);
    constexpr int frozen = 1, locked = 4;
    const bool isFrozen = (layer->flags & frozen) != 0, isLocked = (layer->flags & locked) != 0;
    const bool isOn = layer->color >= 0 && !(DxKeepsHidden() && isFrozen);
    const int error = DsLayerApi::AddDXFLayer(layer->name.view(), isOn, isLocked);
    if (error || !DxKeepsHidden()) return error;
    return DsLayerApi::SetLayerLook(layer->name.view(),
                                    {isFrozen, layer->plot != 0, std::abs(layer->color), layer->trueColor,
                                     layer->lineWeight, UtCString(layer->lineType.view())});
}
