#include "dx_config_rows.h"

#include "../session/dx_reader.h"
#include "../session/session_state.h"
#include "../solid/solid_state.h"
#include "../solid/space_state.h"
#include "dx_config.h"
#include "dx_config_lines.h"
#include "uo.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace {

/// Words of a key and what they stand for; a word that isn't there changes nothing.
struct Word {
    std::string_view word;
    int value;
};

template <std::size_t N>
void setByWord(const Word (&words)[N], std::string_view value, int& target) {
    for (const Word& row : words)
        if (row.word == value) target = row.value;
}

// ---- units and spaces: answered to the host's masks through macro variables ----------------------------

int putUnit(const std::string& word, const char* textVariable, const char* numberVariable) {
    const int unit = DxUnitNameToCAD(word);
    UoPutMacVarS(textVariable, word);
    UoPutMacVarD(numberVariable, unit);
    return unit;
}
void setReadUnit(DxFlagSection&, const std::string& value) {
    DxUnit = putUnit(value, "$DxfUnit", "&DxfUnit");
}
void setPaperUnit(DxFlagSection&, const std::string& value) {
    DxPaperUnit = putUnit(value, "$DxfPaperUnit", "&DxfPaperUnit");
}
void setCheckExtents(DxFlagSection&, const std::string& value) {
    UoPutMacVarD("&DxfExt", DxAtoi(value));
}
void setSpace(DxFlagSection&, const std::string& value) {
    const int space = DxAtoi(value);
    DxReadSpace = space == 0 || space == 1 ? space : 2;
    UoPutMacVarD("&DxfPaper", space);
    DxReportReadSpace();
}

// ---- modes ---------------------------------------------------------------------------------------------

void setDimMode(DxFlagSection&, const std::string& value) {
    const int mode = DxAtoi(value);
    DxDimMode = mode == -1 ? 2 : mode == 0 ? 1 : 0;
    DxDimStyleCompat = mode == 2;
}
void setReadModus(DxFlagSection&, const std::string& value) {
    const int modus = DxAtoi(value);
    DxModus = modus == 0 ? 2 : 3;
    if (modus == 2) Dx3dLines = 1;
}
void setWriteModus(DxFlagSection&, const std::string& value) {
    DxModus = DxAtoi(value) == 0 ? 2 : 3;
}
void setExportView(DxFlagSection&, const std::string& value) {
    DxExportView = value == "on" || value == "1";
}

void setVersion(DxFlagSection&, const std::string& value) {
    static constexpr Word VERSIONS[] = {
        {"ACAD32", 1}, {"ACAD27", 2}, {"ACAD24", 3}, {"ACAD21", 4}, {"ACAD18", 5},
        {"ACAD15", 6}, {"ACAD14", 6}, {"ACAD13", 7}, {"ACAD12", 7}, {"EASY", 8},
    };
    setByWord(VERSIONS, value, DxWriteVersion);
    if (value.starts_with("ACAD11")) DxWriteVersion = 7;
}

void setDigits(DxFlagSection&, const std::string& value) {
    DxDigits = std::clamp(DxAtoi(value), 0, 99);
}
void setLtScale(DxFlagSection&, const std::string& value) {
    const double scale = DxAtof(value);
    DxLtScale = scale > 0 ? scale : 1.0;
}
void setUnitOption(DxFlagSection&, const std::string& value) {
    DxUnitOption = value;
}

// ---- patterns and blocks -------------------------------------------------------------------------------

void setReadBlock(DxFlagSection&, const std::string& value) {
    static constexpr Word ORDERS[] = {
        {"NAME", DX_ORDER_NAME}, {"GROUP", DX_ORDER_GROUP}, {"ATTR", DX_ORDER_ATTR}};
    if (value == "NONE") return;
    DxBlockToPattern = 1;
    setByWord(ORDERS, value, DxBlockOrder);
}

constexpr Word LAYER_ORDERS[] = {
    {"NAME", DX_ORDER_NAME},   {"GROUP", DX_ORDER_GROUP}, {"CLASS", DX_ORDER_CLASS},
    {"LAYER", DX_ORDER_LEVEL}, {"ATTR", DX_ORDER_ATTR},
};
void setReadLayer(DxFlagSection&, const std::string& value) {
    DxLayerToPattern = 1;
    setByWord(LAYER_ORDERS, value, DxLayerOrder);
}
void setWriteBlocks(DxFlagSection&, const std::string& value) {
    DxPatternToBlock = value != "NO";
}
void setElementLayer(DxFlagSection&, const std::string& value) {
    setByWord(LAYER_ORDERS, value, DxLayerKinds[DX_CLASS_ELEMENT]);
}

template <int Class>
void setLayerFlag(DxFlagSection& section, const std::string& value) {
    section.fixedName[Class] = DxAtoi(value);
}
template <int Class>
void setLayerName(DxFlagSection& section, const std::string& value) {
    section.names[Class] = value.empty() ? "0" : value;
}

// ---- files ---------------------------------------------------------------------------------------------

UtCString toPath(std::string_view value) {
    std::string path(value);
    std::replace(path.begin(), path.end(), '\\', '/');
    return UoSubstOVPath(path);
}
void setTemplateName(DxFlagSection&, const std::string& value) {
    DxTemplateName = toPath(value);
}
void setByLayerFile(DxFlagSection&, const std::string& value) {
    const UtCString path = toPath(value);
    if (!path.IsEmpty()) DxByLayerFile = path;
}

// clang-format off
constexpr DxFlagKey FLAG_KEYS[] = {
    {"ALL_LAYERS",      DxKeyWhen::Always,  &DxAllLayers},
    {"READ_UNIT",       DxKeyWhen::IfAsked, setReadUnit},
    {"CHECK_EXT",       DxKeyWhen::IfAsked, setCheckExtents},
    {"SPACE",           DxKeyWhen::IfAsked, setSpace},
    {"READ_PAPER_UNIT", DxKeyWhen::IfAsked, setPaperUnit},
    {"POSIT",           DxKeyWhen::Always,  &DxPosition},
    {"USE_REF",         DxKeyWhen::Always,  &DxUseInsBase},
    {"ASO_DIM",         DxKeyWhen::Always,  setDimMode},
    {"WRITE_ASO_DIM",   DxKeyWhen::Always,  &DxWriteAsoDim},
    {"MODUS_3D",        DxKeyWhen::Import,  setReadModus},
    {"FILLMODE",        DxKeyWhen::Import,  &DxFillMode},
    {"READ_PDMODE",     DxKeyWhen::Import,  &DxPdMode},
    {"WRITE_MODUS_3D",  DxKeyWhen::Export,  setWriteModus},
    {"EXPORT_VIEW",     DxKeyWhen::Export,  setExportView},
    {"NO_KOMMA",        DxKeyWhen::Always,  setDigits},
    {"READ_BLOCK",      DxKeyWhen::Always,  setReadBlock},
    {"READ_LAYER",      DxKeyWhen::Always,  setReadLayer},
    {"INSERT_ATTR",     DxKeyWhen::Always,  &DxInsertAttr},
    {"LAYER_STATES",    DxKeyWhen::Always,  &DxLayerStates},
    {"INSERT_ARRAYS",   DxKeyWhen::Import,  &DxInsertArrays},
    {"ALL_SECTIONS",    DxKeyWhen::Import,  &DxAllSections},
    {"PEN_LOOKS",       DxKeyWhen::Always,  &DxKeepLooks},
    {"KEEP_ENTITIES",   DxKeyWhen::Always,  &DxKeepEntities},
    {"KEEP_BLOCKS",     DxKeyWhen::Always,  &DxKeepBlocks},
    {"WRITE_INSUNITS",  DxKeyWhen::Export,  &DxWriteInsUnits},
    {"VERSION",         DxKeyWhen::Always,  setVersion},
    {"DIM_IN_BLOCK",    DxKeyWhen::Always,  &DxDimInBlock},
    {"UNIT",            DxKeyWhen::Always,  setUnitOption},
    {"TOL",             DxKeyWhen::Always,  &DxWriteTol},
    {"EXO",             DxKeyWhen::Always,  &DxExoMode},
    {"EXO_DFLT",        DxKeyWhen::Always,  &DxExoDefault},
    {"LT_SCALE",        DxKeyWhen::Always,  setLtScale},
    {"USE_TEMPLATE",    DxKeyWhen::Always,  &DxUseTemplate},
    {"TEMPLATE_NAME",   DxKeyWhen::Always,  setTemplateName},
    {"USE_BYLAYER",     DxKeyWhen::Always,  &DxUseByLayer},
    {"BYLAYER_NAME",    DxKeyWhen::Always,  setByLayerFile},
    {"VIEWS",           DxKeyWhen::Always,  &DxViews},
    {"FILL_CONTOUR",    DxKeyWhen::Always,  &DxFillContour},
    {"USE_UCS",         DxKeyWhen::Always,  &DxUseUcs},
    {"USE_GEOREF",      DxKeyWhen::Always,  &DxUseGeoref},
    {"PAPER_SIZE",      DxKeyWhen::Import,  &DxPaperSize},
    {"ALL_VERTICES",    DxKeyWhen::Import,  &DxAllVertices},
    {"CLIP_IMAGES",     DxKeyWhen::Import,  &DxClipImages},
    {"FILL_SEGTYPE",    DxKeyWhen::Always,  &DxFillSegType},
    {"FILL_SEGVAL",     DxKeyWhen::Always,  &DxFillSegValue},
    {"KEEP_HATCH",      DxKeyWhen::Always,  &DxKeepHatchPattern},
    {"KEEP_DIM",        DxKeyWhen::Always,  &DxKeepDimLines},
    {"LINE_AS_HATCH",   DxKeyWhen::Always,  &DxLineAsHatch},
    {"MESH_EDGES",      DxKeyWhen::Import,  &DxMeshEdges},
    {"MESH_CAPS",       DxKeyWhen::Import,  &DxMeshCaps},
    {"FLAT_PLAN",       DxKeyWhen::Import,  &DxFlatPlan},
    {"WRITE_TXT_ORG",   DxKeyWhen::Always,  &DxWriteTxtOrg},
    {"WRITE_HATCH",     DxKeyWhen::Always,  &DxWriteHatch},
    {"FLAT_SOLIDS",     DxKeyWhen::Import,  &DxFlatSolids},
    {"WRITE_SOLIDS",    DxKeyWhen::Export,  &DxWriteSolids},
    {"WRITE_CLOUDS",    DxKeyWhen::Export,  &DxWriteClouds},
    {"WRITE_ATTR",      DxKeyWhen::Always,  &DxWriteAttr},
    {"WRITE_FILL",      DxKeyWhen::Always,  &DxWriteFill},
    {"WRITE_POLY",      DxKeyWhen::Always,  &DxWritePoly},
    {"FULL_GROUPS",     DxKeyWhen::Always,  &DxFullGroups},
    {"WRITE_BLOCKS",    DxKeyWhen::Always,  setWriteBlocks},
    {"LAYER_ELEM",      DxKeyWhen::Always,  setElementLayer},
    {"LAYERFLAG_TEXT",  DxKeyWhen::Always,  setLayerFlag<DX_CLASS_TEXT>},
    {"LAYERFLAG_DIM",   DxKeyWhen::Always,  setLayerFlag<DX_CLASS_DIMENSION>},
    {"LAYERFLAG_HATCH", DxKeyWhen::Always,  setLayerFlag<DX_CLASS_HATCH>},
    {"LAYERFLAG_ARROW", DxKeyWhen::Always,  setLayerFlag<DX_CLASS_ARROW>},
    {"LAYER_TEXT",      DxKeyWhen::Always,  setLayerName<DX_CLASS_TEXT>},
    {"LAYER_DIM",       DxKeyWhen::Always,  setLayerName<DX_CLASS_DIMENSION>},
    {"LAYER_HATCH",     DxKeyWhen::Always,  setLayerName<DX_CLASS_HATCH>},
    {"LAYER_ARROW",     DxKeyWhen::Always,  setLayerName<DX_CLASS_ARROW>},
};
// clang-format on

bool counts(DxKeyWhen when, const DxFlagSection& section) {
    switch (when) {
    case DxKeyWhen::Import: return !section.isExport;
    case DxKeyWhen::Export: return section.isExport != 0;
    case DxKeyWhen::IfAsked: return section.extended;
    case DxKeyWhen::Always: break;
    }
    return true;
}

void applyFlag(DxFlagSection& section, std::string_view key, const std::string& value) {
    const auto* row = std::find_if(std::begin(FLAG_KEYS), std::end(FLAG_KEYS),
                                   [&](const DxFlagKey& candidate) { return candidate.key == key; });
    if (row == std::end(FLAG_KEYS) || !counts(row->when, section)) return;
    if (row->number) {
        *row->number = DxAtoi(value);
    } else if (row->real) {
        *row->real = DxAtof(value);
    } else {
        row->apply(section, value);
    }
}

/// The classes that follow the elements, and those with a name of their own.
void settleLayerKinds(const DxFlagSection& section) {
    for (int i = DX_CLASS_TEXT; i < DX_CLASS_COUNT; ++i) {
        const bool isFixed = section.fixedName[i] != 0;
        DxLayerKinds[i] = isFixed ? static_cast<int>(DX_ORDER_FIXED) : DxLayerKinds[DX_CLASS_ELEMENT];
        if (isFixed) DxLayerFixedNames[i] = section.names[i];
    }
}

} // namespace

std::span<const DxFlagKey> DxFlagKeys() {
    return FLAG_KEYS;
}

static DxFlagSection beginSection(int isExport) {
    int extended = 0;
    if (UoGetMacVarI("&DxfParseExt", &extended)) extended = 0;
    DxFlagSection section;
    section.isExport = isExport;
    section.extended = extended != 0;
    return section;
}

void DxApplyFlag(std::string_view key, const std::string& value, int isExport) {
    DxFlagSection section = beginSection(isExport);
    applyFlag(section, key, value);
}

int DxReadFlagSection(FILE* file, int isExport) {
    DxFlagSection section = beginSection(isExport);
    DxLayerKinds[DX_CLASS_ELEMENT] = DX_ORDER_LEVEL;
    std::string key;
    for (std::string line; DxReadConfigLine(file, line) && !line.starts_with("#FLAGS-END");) {
        UtGetNextPart(line, '=', key);
        applyFlag(section, key, line);
    }
    settleLayerKinds(section);
    return 0;
}

int DxUnitNameToCAD(std::string_view name) {
    if (name.starts_with("mm")) return 3;
    static constexpr std::array<std::pair<char, int>, 7> UNITS = {
        {{'n', 1}, {'y', 2}, {'c', 4}, {'m', 5}, {'k', 6}, {'i', 7}, {'f', 8}}};
    for (const auto& [letter, unit] : UNITS)
        if (name.starts_with(letter)) return unit;
    return 0;
}
