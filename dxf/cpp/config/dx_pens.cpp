#include "dx_pens.h"

#include "../host/dx_host.h"
#include "../host/dx_host_origin.h"
#include "../import/import_state.h"
#include "../session/dx_documents.h"
#include "../session/dx_messages.h"
#include "../session/dx_protocol.h"
#include "../session/session_state.h"
#include "dx_colors.h"
#include "dx_layer_patterns.h"
#include "dx_layers.h"
#include "dx_linetypes.h"
#include "dx_looks.h"
#include "ov.h"

#include <algorithm>

namespace {

/// The colour that the INSERTs around an entity give it, from the innermost outwards.
int findBlockColor() {
    const int top = std::min(DxBlockLevel, static_cast<int>(DxInsertStack.size()) - 1);
    for (int level = top; level >= 0; --level)
        if (const int colour = DxInsertStack[static_cast<std::size_t>(level)].color) return colour;
    return top < 0 ? 7 : DxInsertStack[0].color;
}

bool collectsContour() {
    return DxPolyFillActive || DxHatchActive;
}

/// Makes the pattern of a layer the active one.
void enterPatternOf(DX_LAYER_TYPE& layer) {
    if (DxActPlaced.firstEntry >= 0) {
        DxEnterPlacedPattern(layer);
        return;
    }
    const int& index = DxActHidden ? layer.hiddenPatIndex : layer.patIndex;
    if (index < 0 || static_cast<std::size_t>(index) >= DxPatTable.size()) {
        if (DxActHidden ? DxCreateHiddenPattern(layer) : DxCreateLayerPattern(layer)) return;
    }
    DxReturnToPat(index, DxPatTable[static_cast<std::size_t>(index)].number);
}

/// The host's setting of the pattern's state for one kind of content, -1 for what it leaves alone. 0 when
/// there is one.
int askStateSetting(int kind, int* pen, int* lineType) {
    const UtCString& state = DxPatNames[5];
    switch (kind) {
    case 0: return DxCiGetStatePenLt(state, pen, lineType);
    case 1: {
        CI_TEXT_STATE text;
        const int error = DxCiGetStateText(state, &text);
        *pen = text.pen;
        return error;
    }
    case 2: return DxCiGetStateHatch(state, pen);
    case 6: return DxCiGetState3D(state, pen);
    default: return 1;
    }
}

bool isPen(int pen) {
    return pen >= 0 && pen < DX_PEN_COUNT;
}

int toDxfColor(int pen) {
    if (const int colour = DxColorOfLook(pen)) return colour;
    if (isPen(pen)) return DxPenToDxf[pen];
    return pen == DX_COLOR_BY_LAYER || pen == DX_COLOR_BY_BLOCK ? pen : 7;
}

std::string_view findLinetypeName(int number) {
    const auto& lineTypes = DxDocuments.currentTables().lineTypes;
    if (number >= 1 && number <= 62) {
        for (const DX_LTYPE_TYPE& row : lineTypes)
            if (row.number == number) return row.name.view();
    }
    return DxFirstLinetype();
}

} // namespace

int DxResolveColor(const DX_ENTITY_BASE_TYPE& entity, int layerColour) {
    int colour = entity.color;
    if (colour == 0) colour = findBlockColor();
    if (colour >= 0 && colour != 256) return colour;
    const bool onLayerZero = entity.layer.empty() || entity.layer.view() == "0";
    return DxBlockLevel > 0 && onLayerZero ? DxActColor : layerColour;
}

int DxColorToCAD(DxTable<DX_COLOR_PAIR>& pairs, DxPairIndex& index, int colour, int fallback, int message) {
    if (const DX_COLOR_PAIR* pair = index.find(pairs, colour)) return pair->pen;
    if (pairs.add({colour, fallback}) == 0) DxProtoMsg(DxMsg(message, colour, fallback), 1);
    return fallback;
}

bool DxFindEntityLayer(const DX_ENTITY_BASE_TYPE& entity, DxEntityLayer& layer) {
    layer.colour = 7;
    layer.record = nullptr;
    layer.lineType.clear();
    return DxSetActLayer(&entity, &layer.colour, &layer.lineType, &layer.record) != 0;
}

void DxEnterLayerPattern(DxEntityLayer& layer) {
    if (!DxLayerToPattern) return;
    if (!layer.record &&
        DxPenltAddLayer(DxActLayer.view(), layer.colour, layer.lineType.view(), &layer.record) != 0)
        return;
    if (collectsContour()) return;
    if (DxBlockLevel == 0 || !(DxBlockToPattern || DxActLevel.keepsPattern)) enterPatternOf(*layer.record);
    DxOriginNotePattern();
}

int DxPenLtToCAD(const DX_ENTITY_BASE_TYPE* entity, int* pen, int* lineType) {
    DxEntityLayer layer;
    const bool isDrawn = DxFindEntityLayer(*entity, layer);
    *pen = *lineType = 1;
    if (!isDrawn || DxCheckPass) return isDrawn;
    DxEnterLayerPattern(layer);
    *pen =
        DxColorToCAD(DxPenToCad, DxPenToCadIndex, DxResolveColor(*entity, layer.colour), DxDefaultPen, 5721);
    if (DxKeepLooks) *pen = DxPenOfLook(*entity, layer, DxResolveColor(*entity, layer.colour), *pen);
    *lineType = DxResolveLinetype(*entity, layer.lineType.view());
    return 1;
}

int DxFillPenToCAD(const DX_ENTITY_BASE_TYPE* entity, int* fillPen) {
    DxEntityLayer layer;
    const bool isDrawn = DxFindEntityLayer(*entity, layer);
    if (!isDrawn || DxCheckPass) return isDrawn;
    DxEnterLayerPattern(layer);
    *fillPen = DxColorToCAD(DxFillToCad, DxFillToCadIndex, DxResolveColor(*entity, layer.colour),
                            DxDefaultFill, 5730);
    if (DxKeepLooks) *fillPen = DxPenOfLook(*entity, layer, DxResolveColor(*entity, layer.colour), *fillPen);
    return 1;
}

void DxPenLtToDXF(int pen, int lineType, int* colour, DX_NAME* lineTypeName, int kind) {
    int result = toDxfColor(pen);
    if (isPen(pen)) {
        int statePen = -1;
        int stateLineType = -1;
        if (askStateSetting(kind, &statePen, &stateLineType) != 0) statePen = stateLineType = -1;
        const int otherPen = statePen != -1 ? statePen : DxAttrPen;
        if (result != -1 && otherPen != -1) result = toDxfColor(otherPen);
        if (kind == 0 && stateLineType != -1) lineType = stateLineType;
    }
    if (DxByLayerColor && result >= 0) result = DX_COLOR_BY_LAYER;
    *colour = result;
    lineTypeName->assign(DxByLayerLt.empty() ? findLinetypeName(lineType) : std::string_view());
}

bool DxShouldWriteColor(int colour, int onLayerZero) {
    if (colour == DX_COLOR_BY_LAYER) return onLayerZero > 0;
    return colour >= 0 || colour == DX_COLOR_BY_BLOCK;
}

int DxSetPenLt(int pen, int lineType) {
    const int newPen = pen == -1 ? DxLastPen : pen;
    const int newLineType = lineType == -1 ? DxLastLt : lineType;
    if (newPen == DxLastPen && newLineType == DxLastLt) return 0;
    DxLastPen = newPen;
    DxLastLt = newLineType;
    int code = 6;
    int hostPen = newPen;
    int hostLineType = newLineType;
    const int error = ovpenlt(&code, &hostPen, &hostLineType);
    DxCiElemSetPenLt(newPen, newLineType);
    return error;
}
