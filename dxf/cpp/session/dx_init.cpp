// Start and end of a session.
#include "../config/config_state.h"
#include "../config/dx_config.h"
#include "../config/dx_layers.h"
#include "../config/looks_state.h"
#include "../dimension/dimension_state.h"
#include "../dimension/dx_dim_chain.h"
#include "../export/dx_attributes_export.h"
#include "../export/dx_block_table.h"
#include "../export/dx_layer_choice.h"
#include "../export/export_state.h"
#include "../hatch/hatch_state.h"
#include "../host/dx_host.h"
#include "../host/origin_state.h"
#include "../import/blocks_state.h"
#include "../import/dx_images.h"
#include "../import/dx_kinds.h"
#include "../import/dx_point_clouds.h"
#include "../import/image_state.h"
#include "../import/import_state.h"
#include "../import/point_cloud_state.h"
#include "../import/polyline_state.h"
#include "../sections/dx_tables_import.h"
#include "../sections/sections_state.h"
#include "../solid/dx_acds.h"
#include "../solid/solid_state.h"
#include "../solid/space_state.h"
#include "../text/text_state.h"
#include "dx_od.h"
#include "dx_session.h"
#include "writer_state.h"

#include "ci.h"
#include "ov.h"
#include "uo.h"

#include <limits>
#include <string_view>

namespace {

void resetAllState(int isExport) {
    DxResetSessionState(isExport);
    DxResetConfigState();
    DxResetHostState();
    DxResetLooksState();
    DxResetOriginState();
    DxResetImportState();
    DxResetHatchState();
    DxResetImageState();
    DxResetPolylineState();
    DxResetPointCloudState();
    DxResetSpaceState();
    DxResetBlocksState();
    DxResetSectionsState();
    DxResetSolidState();
    DxResetTextState();
    DxResetWriterState(isExport);
    DxResetExportState();
    DxResetDimensionState();
    DxLineTrim = 0;
    DxDocuments.keepsTables = false;
    if (DxInsertStack.empty()) DxInitialize();
    DxRegisterKinds();
}

int addStartLayer(std::string_view name) {
    DX_LAYER_TYPE layer;
    DxInitLayer(&layer);
    layer.name.assign(name);
    layer.lineType.assign("CONTINUOUS");
    layer.color = 7;
    return DxDocuments.currentTables().layers.add(layer);
}

/// The layers that stand for element classes have records of their own in the older format only.
int addStartLayers(bool isSectioned) {
    if (const int error = addStartLayer("0")) return error;
    if (isSectioned) return 0;
    for (const char* name : {"TEXT", "HATCH", "DIMENSION"})
        if (const int error = addStartLayer(name)) return error;
    return 0;
}

int addStartFont(int isExport) {
    DX_FONT_TYPE font{};
    font.number = 1;
    font.font.assign("txt");
    font.factor = 1.5;
    if (const int error = DxFonts.add(font)) return error;

    DX_STYLE_TYPE style{};
    style.name.assign("STANDARD");
    style.fontFile.assign("txt");
    style.widthFactor = 1.0;
    if (isExport) style.handle = ++DxNextHandle;
    int index = 0;
    return DxTableAddStyle(&style, &index);
}

/// &DxfModus has the last word, if it is a mode at all.
void overrideModus() {
    double modus = 0;
    if (UoGetMacVarD("&DxfModus", &modus) == 0 && (modus == 2 || modus == 3))
        DxModus = static_cast<int>(modus);
}

/// The start layers take the names that the configuration gave to the element classes.
void nameStartLayers(std::string_view lineType) {
    auto& layers = DxDocuments.currentTables().layers;
    for (std::size_t i = 0; i < layers.size() && i < DX_CLASS_COUNT; ++i) {
        layers[i].name.assign(DxLayerFixedNames[i].str());
        layers[i].lineType.assign(lineType);
    }
}

void takeHostSettings(bool isSectioned) {
    int code = 5;
    ovpenlt(&code, &DxPen, &DxLt);
    int font = 0;
    double height = 0, factor = 0;
    code = 5;
    const bool isRead = ovtextparams(&code, &font, &height, &factor) == 0;
    if (isRead && !isSectioned && !DxFonts.empty()) DxFonts[0].factor = factor;
}

/// Tables and running values that follow from the configuration.
int buildFromConfig(bool isSectioned) {
    if (const int error = DxBuildTables()) return error;
    const auto& lineTypes = DxDocuments.currentTables().lineTypes;
    DX_NAME first{};
    if (!lineTypes.empty()) first = lineTypes[0].name;
    nameStartLayers(first.view());
    DxActLayer.assign("0");
    DxActLt = first;
    DxActColor = 8;
    takeHostSettings(isSectioned);
    return 0;
}

void settleExport() {
    constexpr int ACAD12 = 7; // versions count backwards
    if (DxWriteVersion > ACAD12) DxUseByLayer = 0;
    DxReadBlockCopies();
    DxExportVisibleOnly = 1;
    DxDocuments.keepsTables = DxUseTemplate != 0;
}

} // namespace

void DxInitialize() {
    DxBeginInsertStack(0, {});
}

int DxfInit(const UtCString& configName, int isExport) {
    const bool isSectioned = UtPathExt(configName) == "dxd";
    UoCheckAbort(11);
    DxDocuments.closeAll(false);
    resetAllState(isExport);
    DxReadSwitches(isExport);
    int error = addStartLayers(isSectioned);
    if (!error) error = addStartFont(isExport);
    if (!error)
        error = isSectioned ? DxReadConfig(configName, isExport) : DxReadDefaultFile(configName, isExport);
    overrideModus();
    if (!error) error = buildFromConfig(isSectioned);
    if (isExport) settleExport();
    if (!error) DxAttribInit();
    return error;
}

// ---- unit and scale --------------------------------------------------------------------------------

namespace {

constexpr double LARGEST_INT = std::numeric_limits<int>::max();

/// A number of the host as int; `missing` when it can't be read or is out of range.
int macroInt(const char* name, int missing) {
    double value = 0;
    if (UoGetMacVarD(name, &value) || !(value >= -LARGEST_INT && value <= LARGEST_INT)) return missing;
    return static_cast<int>(value);
}

/// The unit that the host asked for; 0 for the one that it has.
int wantedUnit() {
    UtCString name;
    if (UoGetMacVarS("$DxfUnit", &name) || name.IsEmpty() || name == "act") return 0;
    return macroInt("&DxfUnit", 0);
}

int wantedPaperUnit(int hostUnit) {
    UtCString name;
    if (UoGetMacVarS("$DxfPaperUnit", &name) || name.IsEmpty()) return 3;
    return name == "act" ? hostUnit : macroInt("&DxfPaperUnit", 3);
}

/// The view and the patterns of an export, entered (1) and left (0). True when a view was entered or left.
bool switchExport(int phase) {
    const bool isSwitched = DxExportView && DxCiExportView(phase) == 0;
    if (!DxUseByLayer) DxCiSplitAndSortPats(phase);
    return isSwitched;
}

/// Settles the unit of the drawing and what follows from it.
int settleUnit() {
    int format = 0, unit = 0;
    double scale = 1.0;
    if (const int error = ovform(5, &format, &scale, &unit)) return error;
    const int wanted = wantedUnit();
    DxPaperUnit = wantedPaperUnit(unit);
    DxSavedUnit = DxUnit = unit;
    if (wanted && wanted != unit) {
        int changed = wanted;
        if (const int error = ovform(8, &format, &scale, &changed)) return error;
        DxUnit = wanted;
    }
    double factor = 0;
    const int error = ovconv(100, 3, 1.0, &factor);
    if (error) return error;
    DxScale = scale;
    DxDrawUnit = factor / scale;
    return 0;
}

void restoreUnit(bool isInView) {
    int format = 0, unit = 0;
    double scale = 1.0;
    if (ovform(5, &format, &scale, &unit) || !DxSavedUnit || DxSavedUnit == unit || isInView) return;
    int saved = DxSavedUnit;
    ovform(8, &format, &scale, &saved);
}

} // namespace

int DxfInit2(int phase) {
    const bool isSwitched = DxIsExport && switchExport(phase);
    if (phase) {
        const int error = settleUnit();
        const int initialised = DxCiInit();
        return error ? error : initialised;
    }
    restoreUnit(isSwitched);
    if (DxIsExport) DxPatSetByLayerAttribs(-1, 0, 0);
    DxOdInit(0);
    return 0;
}

// ---- end -------------------------------------------------------------------------------------------

void DxClose() {
    for (auto& pairs : DxCharPairs) pairs.free();
    DxPatTable.free();
    DxFreeBlockTable();
    DxPenToCad.free();
    DxFillToCad.free();
    DxFillToDxf.free();
    DxLtToCad.free();
    for (auto& texts : DxCharTexts) texts.free();
    DxAttrMap.free();
    DxLayerMap.free();
    DxFonts.free();
    DxAttribEnd();
    DxDimChainFree();
    DxImageQueueFree();
    DxReadAcdsFree();
    DxCiFreePointClouds();
    DxBlockLines.reset();
    CiDrawing::SetLastInterfaceIds(DxImportedObjects.begin(), static_cast<int>(DxImportedObjects.size()));
    DxImportedObjects.free();
}

int DxInoutSaveParams(int code) {
    if (code == 18) {
        int mode = 5;
        if (ovpenlt(&mode, &DxSavedPen, &DxSavedLt)) DxSavedPen = -1;
        UoTextParSave(1);
        return 0;
    }
    int mode = 6;
    if (DxSavedPen >= 0) ovpenlt(&mode, &DxSavedPen, &DxSavedLt);
    UoTextParSave(2);
    return 0;
}
