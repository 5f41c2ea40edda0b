#include "dx_tables_export.h"

#include "../config/config_state.h"
#include "../export/export_state.h"
#include "../session/dx_documents.h"
#include "../session/dx_writer.h"
#include "dx_codes.h"
#include "dx_placeholders.h"
#include "dx_template.h"
#include "dx_write_dimstyle.h"

#include <algorithm>
#include <cctype>
#include <set>
#include <string>
#include <string_view>

namespace {

DxTables& tables() {
    return DxDocuments.currentTables();
}

bool equalsIgnoringCase(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](unsigned char x, unsigned char y) { return std::toupper(x) == std::toupper(y); });
}

/// Head of a table, up to its count. `handle` receives the table's handle.
int openTable(const char* name, std::size_t count, std::uint32_t& handle) {
    handle = DxGetNextReference();
    DxWriteString(0, "TABLE");
    DxWriteString(2, name);
    DxWriteVariableReference2(5, handle);
    DxWriteVariableReference2(330, 0);
    DxWriteSubClass("AcDbSymbolTable");
    return DxWriteInt(70, static_cast<int>(std::min<std::size_t>(count, 32767)));
}

/// Head of a record: name of its kind, handle, owner and markers. `handle` 0 takes a new one.
int openRecord(const char* kind, const char* marker, std::uint32_t table, std::uint32_t handle = 0) {
    DxWriteString(0, kind);
    DxWriteVariableReference2(5, handle ? handle : DxGetNextReference());
    DxWriteVariableReference2(330, table);
    DxWriteSubClass("AcDbSymbolTableRecord");
    return DxWriteSubClass(marker);
}

int closeTable() {
    return DxWriteString(0, "ENDTAB");
}

int writeEmptyTable(const char* name) {
    std::uint32_t table = 0;
    openTable(name, 0, table);
    return closeTable();
}

} // namespace

// ---- the section -----------------------------------------------------------------------------------

int DxWriteTableSection() {
    using Writer = int (*)();
    static constexpr Writer USUAL[] = {DxTableWriteVports, DxTableWriteLTypes,    DxTableWriteLayers,
                                       DxTableWriteStyles, DxTableWriteView,      DxTableWriteUCS,
                                       DxTableWriteAppid,  DxTableWriteDimStyles, DxTableWriteBlockRecords};
    static constexpr Writer DIMSTYLE_FIRST[] = {
        DxTableWriteVports, DxTableWriteLTypes,    DxTableWriteLayers,
        DxTableWriteStyles, DxTableWriteDimStyles, DxTableWriteView,
        DxTableWriteUCS,    DxTableWriteAppid,     DxTableWriteBlockRecords};
    DxDocuments.select(DxHeaderStream);
    DxWriteString(0, "SECTION");
    DxWriteString(2, "TABLES");
    for (const Writer writer : DxFullGroups ? USUAL : DIMSTYLE_FIRST) writer();
    return DxWriteCloseSection();
}

int DxWriteCloseSection() {
    DxDocuments.select(DxHeaderStream);
    return DxWriteString(0, "ENDSEC");
}

// ---- VPORT -----------------------------------------------------------------------------------------

/// The table that stands in when the template can't be read: one view of a height of 100 units.
static int writeBuiltInVport() {
    struct Row {
        int code;
        double value;
    };
    static constexpr Row REALS[] = {
        {10, 0.0}, {20, 0.0}, {11, 1.0}, {21, 1.0},  {12, 50.0},  {22, 50.0},     {13, 0.0},
        {23, 0.0}, {14, 1.0}, {24, 1.0}, {15, 10.0}, {25, 10.0},  {16, 0.0},      {26, 0.0},
        {36, 1.0}, {17, 0.0}, {27, 0.0}, {37, 0.0},  {40, 100.0}, {41, 1.387409}, {42, 50.0},
        {43, 0.0}, {44, 0.0}, {50, 0.0}, {51, 0.0},
    };
    static constexpr int INTEGERS[][2] = {{71, 0}, {72, 100}, {73, 1}, {74, 1},
                                          {75, 0}, {76, 0},   {77, 0}, {78, 0}};
    std::uint32_t table = 0;
    openTable("VPORT", 1, table);
    openRecord("VPORT", "AcDbViewportTableRecord", table, DxHandles.viewport);
    DxWriteString(2, "*ACTIVE");
    DxWriteInt(70, 0);
    for (const Row& row : REALS) DxWriteDouble(row.code, row.value);
    for (const auto& row : INTEGERS) DxWriteInt(row[0], row[1]);
    return closeTable();
}

int DxTableWriteVports() {
    if (!DxMiscCheckVersion(DX_LEVEL_3D)) return 0;
    DxTemplate source(DxMiscCheckVersion(DX_LEVEL_HANDLES) ? "vport_15" : "vport");
    if (!source.isOpen()) return writeBuiltInVport();
    int code = 0;
    std::string value;
    while (!DxWriteError() && source.next(code, value)) DxWriteTemplatePair(code, value);
    return DxWriteError();
}

// ---- LTYPE -----------------------------------------------------------------------------------------

/// The flags of a record whose name may have lost the bar that divides a reference from its own name.
static int ownFlags(int flags, const DX_NAME& name) {
    constexpr int ofReference = DX_LAYER_XREF | DX_LAYER_XREF_RESOLVED;
    return name.view().find('|') == std::string_view::npos ? flags & ~ofReference : flags;
}

static bool isConstLType(std::string_view name) {
    return equalsIgnoringCase(name, "ByBlock") || equalsIgnoringCase(name, "ByLayer");
}

/// Which line types are written: of equal names the first, and of those without a host number the ones in
/// use.
static std::vector<bool> markLTypes() {
    const auto upper = [](const DX_NAME& name) { return UtCString(name.view()).Upper().str(); };
    std::set<std::string> layerLTypes;
    for (const DX_LAYER_TYPE& layer : tables().layers) layerLTypes.insert(upper(layer.lineType));
    std::vector<bool> marks;
    std::set<std::string> seen;
    for (const DX_LTYPE_TYPE& ltype : tables().lineTypes) {
        const bool constant = isConstLType(ltype.name.view());
        // The first one also stands for all that is missing.
        const bool used = marks.empty() || ltype.number != 0 || layerLTypes.count(upper(ltype.name)) != 0;
        const bool first = seen.insert(upper(ltype.name)).second;
        marks.push_back(!constant && used && first);
    }
    return marks;
}

int DxTableWriteConstLType(const char* name, std::uint32_t tableHandle, std::uint32_t* handleOut) {
    if (*handleOut == 0) *handleOut = DxGetNextReference();
    openRecord("LTYPE", "AcDbLinetypeTableRecord", tableHandle, *handleOut);
    DxWriteString(2, name);
    DxWriteInt(70, 0);
    DxWriteString(3, "");
    DxWriteInt(72, 65);
    DxWriteInt(73, 0);
    return DxWriteDouble(40, 0.0);
}

int DxTableWriteLType(const DX_LTYPE_TYPE* ltype, std::uint32_t tableHandle) {
    if (!ltype) return DX_ERR_ARGUMENT;
    const int count = std::clamp(ltype->elementCount, 0, 16);
    openRecord("LTYPE", "AcDbLinetypeTableRecord", tableHandle);
    DxWriteString(2, ltype->name);
    DxWriteInt(70, ownFlags(ltype->flags, ltype->name));
    DxWriteString(3, ltype->description);
    DxWriteInt(72, ltype->alignment);
    DxWriteInt(73, count);
    DxWriteDouble(40, ltype->totalLength);
    for (int i = 0; i < count; ++i) {
        DxWriteDouble(49, ltype->dashes[i]);
        DxWriteIntVer(DX_LEVEL_HANDLES, 74, 0);
    }
    return DxWriteError();
}

int DxTableWriteLTypes() {
    const std::vector<bool> marks = markLTypes();
    std::uint32_t table = 0;
    std::uint32_t byLayer = 0;
    openTable("LTYPE", static_cast<std::size_t>(std::count(marks.begin(), marks.end(), true)), table);
    if (DxMiscCheckVersion(DX_LEVEL_HANDLES)) {
        DxTableWriteConstLType("ByBlock", table, &DxByBlockLtypeHandle);
        DxTableWriteConstLType("ByLayer", table, &byLayer);
    }
    for (std::size_t i = 0; i < marks.size(); ++i)
        if (marks[i]) DxTableWriteLType(&tables().lineTypes[i], table);
    return closeTable();
}

// ---- LAYER -----------------------------------------------------------------------------------------

/// Line weights that a layer may have; readers stop at any other.
static int validLineWeight(int weight) {
    static constexpr int WEIGHTS[] = {-3, 0,  5,  9,  13, 15,  18,  20,  25,  30,  35,  40, 50,
                                      53, 60, 70, 80, 90, 100, 106, 120, 140, 158, 200, 211};
    return std::find(std::begin(WEIGHTS), std::end(WEIGHTS), weight) != std::end(WEIGHTS) ? weight : -3;
}

static int writeLayerPlotGroups(const DX_LAYER_TYPE& layer) {
    if (!DxMiscCheckVersion(DX_LEVEL_HANDLES)) return 0;
    const bool defpoints = equalsIgnoringCase(layer.name.view(), "DEFPOINTS");
    if (defpoints || layer.plot != 1) DxWriteInt(290, defpoints ? 0 : layer.plot);
    DxWriteInt(370, validLineWeight(layer.lineWeight));
    return DxWriteVariableReference2(390, DxHandles.plotStyle);
}

/// Colour of a layer, negative for one that is off.
static int validLayerColor(int colour) {
    constexpr int white = 7, most = 255;
    if (colour != 0 && colour >= -most && colour <= most) return colour;
    return colour < 0 ? -white : white;
}

/// The line type of a layer, one that the table has: the first one stands for others.
static std::string_view definedLType(const DX_NAME& name) {
    for (const DX_LTYPE_TYPE& ltype : tables().lineTypes)
        if (equalsIgnoringCase(ltype.name.view(), name.view()) && !isConstLType(ltype.name.view()))
            return name.view();
    return tables().lineTypes.empty() ? "CONTINUOUS" : tables().lineTypes[0].name.view();
}

int DxWriteNewLayer(const DX_LAYER_TYPE* layer, std::uint32_t tableHandle) {
    if (!layer) return DX_ERR_ARGUMENT;
    FILE* stream = DxDocuments.currentStream();
    DxDocuments.select(DxHeaderStream);
    openRecord("LAYER", "AcDbLayerTableRecord", tableHandle);
    DxWriteString(2, layer->name);
    DxWriteInt(70, ownFlags(layer->flags, layer->name));
    DxWriteInt(62, validLayerColor(layer->color));
    if (layer->trueColor >= 0 && DxMiscCheckVersion(DX_LEVEL_TRUE_COLOR)) DxWriteInt(420, layer->trueColor);
    DxWriteString(6, definedLType(layer->lineType));
    writeLayerPlotGroups(*layer);
    DxDocuments.select(stream);
    return DxWriteError();
}

int DxTableWriteLayers() {
    std::uint32_t table = 0;
    openTable("LAYER", tables().layers.size(), table);
    for (const DX_LAYER_TYPE& layer : tables().layers) DxWriteNewLayer(&layer, table);
    return closeTable();
}

// ---- STYLE, DIMSTYLE, VIEW, UCS, APPID, BLOCK_RECORD -----------------------------------------------

static int writeFontFamily(const DX_STYLE_TYPE& style) {
    if (!DxMiscCheckVersion(DX_LEVEL_HANDLES) || style.fontFamily.empty()) return 0;
    const int flags = (style.bold > 0 ? 0x2000000 : 0) | (style.italic > 0 ? 0x1000000 : 0);
    DxWriteString(1001, "ACAD");
    DxWriteExtendedString(1000, style.fontFamily);
    return DxWriteInt(1071, flags);
}

static int writeStyle(const DX_STYLE_TYPE& style, std::uint32_t table) {
    openRecord("STYLE", "AcDbTextStyleTableRecord", table, style.handle);
    DxWriteString(2, style.name);
    DxWriteInt(70, 0);
    DxWriteDouble(40, 0.0);
    DxWriteDouble(41, 1.0);
    DxWriteDouble(50, 0.0);
    DxWriteInt(71, 0);
    DxWriteDouble(42, 3.5);
    DxWriteString(3, style.fontFile);
    DxWriteString(4, "");
    return writeFontFamily(style);
}

int DxTableWriteStyles() {
    std::uint32_t table = 0;
    openTable("STYLE", tables().styles.size(), table);
    for (const DX_STYLE_TYPE& style : tables().styles) writeStyle(style, table);
    return closeTable();
}

int DxTableWriteDimStyles() {
    if (!DxMiscCheckVersion(DX_LEVEL_3D)) return 0;
    std::uint32_t table = 0;
    openTable("DIMSTYLE", DxDimparCount(), table);
    DxWriteSubClass("AcDbDimStyleTable");
    DxWriteIntVer(DX_LEVEL_HANDLES, 71, 0);
    DxDimparWriteAll(table);
    return closeTable();
}

int DxTableWriteView() {
    return writeEmptyTable("VIEW");
}

int DxTableWriteUCS() {
    return writeEmptyTable("UCS");
}

static int writeApp(DxOutText name, std::uint32_t table) {
    openRecord("APPID", "AcDbRegAppTableRecord", table);
    DxWriteString(2, name);
    return DxWriteInt(70, 0);
}

int DxTableWriteAppid() {
    std::uint32_t table = 0;
    std::set<std::string> names = DxUsedApps;
    names.erase("ACAD");
    openTable("APPID", names.size() + 1, table);
    writeApp("ACAD", table);
    for (const std::string& name : names) writeApp(name, table);
    return closeTable();
}

static int writeBlockRecord(const DX_BLOCK_RECORD_TYPE& record, std::uint32_t table) {
    DxWriteString(0, "BLOCK_RECORD");
    DxWriteVariableReference2(5, record.handle ? record.handle : DxGetNextReference());
    if (record.third) {
        DxWriteString(102, "{ACAD_XDICTIONARY");
        DxWriteVariableReference2(360, record.third);
        DxWriteString(102, "}");
    }
    DxWriteVariableReference2(330, table);
    DxWriteSubClass("AcDbSymbolTableRecord");
    DxWriteSubClass("AcDbBlockTableRecord");
    DxWriteString(2, record.name);
    return DxWriteVariableReference2(340, record.layoutHandle);
}

int DxTableWriteBlockRecords() {
    if (!DxMiscCheckVersion(DX_LEVEL_HANDLES)) return 0;
    std::uint32_t table = 0;
    openTable("BLOCK_RECORD", tables().blockRecords.size(), table);
    for (const DX_BLOCK_RECORD_TYPE& record : tables().blockRecords) writeBlockRecord(record, table);
    return closeTable();
}
