#include "config_state.h"

#include "dx_colors.h"
#include "os.h"

#include <algorithm>
#include <iterator>

int DxAllLayers, DxUseInsBase, DxDimMode, DxDimStyleCompat, DxWriteAsoDim, DxFillMode, DxPdMode, DxExportView;
int DxDigits, DxBlockToPattern, DxBlockOrder, DxInsertAttr, DxLayerStates, DxInsertArrays, DxAllSections,
    DxKeepLooks, DxKeepEntities, DxKeepBlocks, DxWriteInsUnits, DxLayerToPattern, DxLayerOrder, DxDimInBlock,
    DxWriteTol, DxExoMode;
double DxExoDefault, DxLtScale;
int DxUseTemplate;
UtCString DxTemplateName;
int DxUseByLayer;
UtCString DxByLayerFile;
int DxFullGroups;
int DxViews, DxFillContour, DxUseUcs, DxUseGeoref, DxPaperSize, DxAllVertices, DxClipImages, DxFillSegType;
double DxFillSegValue;
int DxKeepHatchPattern, DxKeepDimLines, DxMeshEdges;
int DxLineAsHatch, DxWriteTxtOrg, DxWriteHatch, DxWriteAttr, DxWriteFill, DxWritePoly, DxPatternToBlock;
int DxMaxElements = 1000;
double DxTextFactor;
int DxLayerKinds[DX_CLASS_COUNT];
UtCString DxLayerFixedNames[DX_CLASS_COUNT];
UtCString DxUnitOption;
double DxPosition;

int DxColAttr, DxDimUsrTxt, DxNoPolyWidth, DxJoinTexts, Dx3dLines, DxSolidsAsSubObjects, DxBlockCopies,
    DxLuPrec;

DxTable<DX_COLOR_PAIR> DxPenToCad, DxFillToCad, DxFillToDxf;
int DxPenToDxf[DX_PEN_COUNT];
DxTable<DX_LT_PAIR> DxLtToCad;
DxTable<DX_CHAR_PAIR> DxCharPairs[2];
DxTable<DX_CHAR_TEXT> DxCharTexts[2];
DxTable<DX_FONT_TYPE> DxFonts;
DxTable<DX_ATTR_PAIR> DxAttrMap;
DxTable<DX_LAYER_PAIR> DxLayerMap;
int DxDefaultPen, DxDefaultFill, DxSpecialCadFont;
UtCString DxSpecialDxfFont;
int DxFinishCode;
DX_NAME DxFinishText;

DX_NAME DxActLayer, DxActLt;
UtCString DxActHostLayer;
int DxActColor;
int DxByLayerColor;
DX_NAME DxByLayerLt;
int DxAttrPen, DxAttrFill;
UtCString DxPatNames[6];
int DxLastPen, DxLastLt;

DxPairIndex DxPenToCadIndex(&DX_COLOR_PAIR::color);
DxPairIndex DxFillToCadIndex(&DX_COLOR_PAIR::color);
DxPairIndex DxFillToDxfIndex(&DX_COLOR_PAIR::pen);
DxLtIndex DxLtToCadIndex;
DxRecordIndex<DX_ATTR_PAIR, DX_NAME> DxAttrIndex(&DX_ATTR_PAIR::dxf);
DxRecordIndex<DX_LAYER_PAIR, DX_NAME> DxLayerMapIndex(&DX_LAYER_PAIR::dxf);
DxRecordIndex<DX_LAYER_PAIR, DxFixed<60>> DxHostLayerIndex(&DX_LAYER_PAIR::host);

static void resetImportOptions() {
    DxAllLayers = 0;
    DxDimMode = 0;
    DxDimStyleCompat = 0;
    DxFillMode = 2;
    DxPdMode = 0;
    DxBlockToPattern = 0;
    DxInsertAttr = 0;
    DxLayerStates = DxInsertArrays = DxAllSections = DxKeepLooks = DxKeepEntities = DxKeepBlocks = 0;
    DxWriteInsUnits = 1;
    DxBlockOrder = DX_ORDER_NONE;
    DxLayerToPattern = 0;
    DxLayerOrder = DX_ORDER_NONE;
    DxExoMode = 1;
    DxExoDefault = 2.0;
    DxViews = 0;
    DxFillContour = 1;
    DxUseUcs = 0;
    DxUseGeoref = 1;
    DxPaperSize = DxAllVertices = DxClipImages = DxFullGroups = 0;
    DxFillSegType = 0;
    DxFillSegValue = 12.0;
    DxKeepHatchPattern = 0;
    DxKeepDimLines = 0;
    DxLineAsHatch = 0;
    DxMeshEdges = 0;
    DxMaxElements = 1000;
    DxTextFactor = 0.5;
    DxDimUsrTxt = 1;
    DxNoPolyWidth = 0;
    DxJoinTexts = 0;
    Dx3dLines = 0;
    DxSolidsAsSubObjects = 1;
}

static void resetExportOptions() {
    DxWriteAsoDim = 1;
    DxExportView = 0;
    DxDigits = 6;
    DxDimInBlock = 0;
    DxWriteTol = 0;
    DxLtScale = 1.0;
    DxUseTemplate = 0;
    DxTemplateName = UtCString();
    DxUseByLayer = 0;
    // Forward slashes, which all systems of the host understand.
    DxByLayerFile =
        OsGetEnvDflt("HD_U", "/u") + "/" + OsGetEnvDflt("HD_VE", "1700") + "/int/dxf/dflt/layerconv.xls";
    DxWriteTxtOrg = 1;
    DxWriteHatch = 1;
    DxWriteAttr = 0;
    DxWriteFill = 0;
    DxWritePoly = 0;
    DxPatternToBlock = 0;
    DxUnitOption = "act";
    DxPosition = 0;
    DxColAttr = 0;
    DxBlockCopies = 0;
    DxLuPrec = 4;
}

static void resetLayerKinds() {
    static constexpr const char* NAMES[DX_CLASS_COUNT] = {"0", "TEXT", "HATCH", "DIMENSION", "DIMENSION"};
    std::copy(std::begin(NAMES), std::end(NAMES), DxLayerFixedNames);
    std::fill(std::begin(DxLayerKinds), std::end(DxLayerKinds), DX_ORDER_FIXED);
    DxLayerKinds[DX_CLASS_ELEMENT] = DX_ORDER_LEVEL;
}

static void resetTables() {
    DxPenToCad.clear();
    DxFillToCad.clear();
    DxFillToDxf.clear();
    DxPenToCadIndex.clear();
    DxFillToCadIndex.clear();
    DxFillToDxfIndex.clear();
    for (int pen = 0; pen < DX_PEN_COUNT; ++pen) DxPenToDxf[pen] = DxBuiltInColor(pen);
    DxLtToCad.clear();
    DxLtToCadIndex.clear();
    for (auto& pairs : DxCharPairs) pairs.clear();
    for (auto& texts : DxCharTexts) texts.clear();
    DxFonts.clear();
    DxAttrMap.clear();
    DxAttrIndex.clear();
    DxLayerMap.clear();
    DxLayerMapIndex.clear();
    DxHostLayerIndex.clear();
    DxDefaultPen = -1;
    DxDefaultFill = -1;
    DxSpecialCadFont = -1;
    DxSpecialDxfFont = UtCString();
    DxFinishCode = -1;
    DxFinishText.clear();
}

static void resetRunningValues() {
    DxActLayer.assign("0");
    DxActHostLayer = "";
    DxActLt.clear();
    DxActColor = 8;
    DxByLayerColor = 0;
    DxByLayerLt.clear();
    DxAttrPen = -1;
    DxAttrFill = -1;
    for (UtCString& name : DxPatNames) name = UtCString();
    // The driver gives the host its own pen back at the end of a session, so nothing is known of it here.
    DxLastPen = -1;
    DxLastLt = -1;
}

void DxResetConfigState() {
    resetImportOptions();
    resetExportOptions();
    resetLayerKinds();
    resetTables();
    resetRunningValues();
}
