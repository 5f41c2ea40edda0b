// One export, from the host's call to its outcome.
//
// HEADER and TABLES stand in front of a file but depend on what the drawing holds, so that the sections are
// written out of order and joined at the end: BLOCKS to the end of the file into a temporary body, TABLES and
// then HEADER in front of it.
#include "../config/config_state.h"
#include "../config/dx_names.h"
#include "../export/dx_pattern_walk.h"
#include "../export/dx_unwritten.h"
#include "../export/dx_write_blocks.h"
#include "../host/dx_host.h"
#include "../sections/dx_header_export.h"
#include "../sections/dx_header_keep.h"
#include "../sections/dx_objects_export.h"
#include "../sections/dx_tables_export.h"
#include "../sections/dx_tables_import.h"
#include "../solid/dx_acds.h"
#include "dx_codes.h"
#include "dx_driver_frame.h"
#include "dx_session.h"
#include "dx_writer.h"

#include "ci.h"
#include "uo.h"
#include "ut.h"

#include <set>
#include <string>

int DxWriteEntitySection() {
    DxDocuments.select(DxBodyStream);
    if (DxModus == 3 && DxWriteVersion == DX_FORMAT_EASY) {
        DxModus = 2;
        DxProtoMsg(DxMsg(5742), 1);
    }
    DxOwnerHandle = DxModelSpaceHandle;
    DxWriteString(0, "SECTION");
    DxWriteString(2, "ENTITIES");
    if (const int error = DxWriteEntityPass()) return error;
    DxWriteString(0, "ENDSEC");
    DxWriteObjects();
    DxWriteAcdsSection();
    return DxWriteString(0, "EOF");
}

namespace {

/// A file name without its extension; a name that begins with its only point has none.
std::string withoutExtension(const std::string& name) {
    const std::size_t point = name.rfind('.');
    return point == std::string::npos || point == 0 ? name : name.substr(0, point);
}

/// Copies the file at `path` behind what the header stream holds.
int appendFile(const UtCString& path) {
    if (const int error = DxWriteFlush()) return error;
    const int error = UtFileAppend(DxHeaderStream, path);
    return error == DX_ERR_OPEN ? DX_ERR_TEMPORARY : error;
}

} // namespace

int DxConcatHeader() {
    DxDocuments.select(nullptr);
    if (const int error = DxWriteCloseStream(DxHeaderStream)) return error;
    const UtCString tables = UtTempFileName(UtGetTempDir(), "DXH");
    if (UtFileRename(DxHeaderPath, tables) != 0 && UtFileMove(DxHeaderPath, tables) != 0)
        return DX_ERR_TEMPORARY;
    DxHeaderStream = UtFileOpen(DxHeaderPath, "w");
    int error = DxHeaderStream ? 0 : DX_ERR_TEMPORARY;
    DxDocuments.select(DxHeaderStream);
    if (!error) error = DxWriteHeaderSection();
    if (!error) error = appendFile(tables);
    UtFileRemove(tables);
    return error;
}

int DxConcatFiles() {
    int error = DxWriteCloseStream(DxBodyStream);
    DxDocuments.select(DxHeaderStream);
    return error ? error : appendFile(DxBodyPath);
}

namespace {

/// The tables of the template that is open, which is closed.
void readTemplateTables() {
    DxFileVersion = 1021; // its strings are UTF-8; one that is not is of the code page
    if (DxReadUntil(0, "SECTION") == 0 && DxReadUntil(2, "TABLES") == 0) {
        DxUnGetLine();
        DxReadTableSection(1);
    } else {
        DxProtoMsg(DxMsg(5701, "TABLE"), 1);
    }
    DxReadClose();
}

/// Layers and line types of a template file, which the export takes its tables from.
void readTemplate() {
    DxProtoMsg(DxMsg(5775, DxTemplateName), 0);
    UtCString name = DxTemplateName;
    UtCString converted;
    int wasConverted = 0;
    int error = DxReadCheckConvert(name, converted, wasConverted);
    if (!error && wasConverted) name = converted;
    if (!error) error = DxReadOpen(name);
    if (error)
        DxProtoMsg(DxMsg(5809, DxTemplateName), 1);
    else
        readTemplateTables();
    if (wasConverted) UtFileRemove(converted);
}

void fitName(DX_NAME& name) {
    UtCString text(name.view());
    DxCheckName(text);
    name.assign(text.str());
}

/// Names of configuration and template as the target version can hold them. Of layers that become one, the
/// first stays.
void makeNamesFit() {
    DxTables& tables = DxDocuments.currentTables();
    for (DX_LTYPE_TYPE& lineType : tables.lineTypes) fitName(lineType.name);
    std::set<std::string> seen;
    DxTable<DX_LAYER_TYPE> layers;
    for (DX_LAYER_TYPE& layer : tables.layers) {
        fitName(layer.name);
        fitName(layer.lineType);
        layer.isOfTemplate = true;
        if (!layer.name.empty() && seen.insert(UtCString(layer.name.view()).Upper().str()).second)
            layers.add(layer);
    }
    tables.replaceLayers(std::move(layers));
}

class Export {
public:
    Export(const UtCString& configName, const UtCString& fileName)
        : configName_(configName), fileName_(fileName) {}
    void run();

private:
    int settleFile();
    void write();
    int writeSections();
    void report() const;
    void convertToDwg();

    const UtCString& configName_;
    const UtCString& fileName_;
    DxDriverFrame frame_;
    int outcome_ = 0;
};

int Export::settleFile() {
    DxFileName = fileName_;
    if (DxFileName.IsEmpty()) UoGetMacVarS("$DxfName", &DxFileName);
    if (DxFileName.IsEmpty())
        return CiInput(frame_.contextId()).SelectFileName(DxMsg(5709, "DXF"), 0, "*.dxf", "dxf", &DxFileName);
    if (UtPathExt(DxFileName) != "dwg") return 0;
    DxSourceFileName = DxFileName;
    const std::string& name = DxFileName.str();
    DxFileName = name.substr(0, name.size() - 4) + ".dxf";
    return 0;
}

int Export::writeSections() {
    if (const int error = DxWriteOpen()) return error;
    std::vector<UtCString> kept;
    int error = DxHeaderReadDrawingHeader(&kept); // says which pattern is no content
    DxPatsOneWork = DxCiCheckPatsWork();
    if (!error) error = DxWriteBlockSection();
    if (!error) error = DxWriteEntitySection();
    if (!error) error = DxWriteTableSection();
    if (!error) error = DxConcatHeader();
    return error ? error : DxConcatFiles();
}

void Export::report() const {
    DxReportUnwritten();
    if (outcome_ == 0)
        DxDisplay(DxMsg(5710));
    else if (outcome_ != -1 && outcome_ != DX_ERR_OPEN)
        DxProtoMsg(DxMsg(5705, outcome_), 1);
    if (outcome_ == 0 || outcome_ == -1) UoPutMacVarD("&DxfStat", outcome_);
}

void Export::convertToDwg() {
    if (outcome_ != 0 || DxSourceFileName.IsEmpty()) return;
    outcome_ = UtConvertDwg2Dxf(DxFileName, DxSourceFileName);
    if (outcome_ == 0 && !DxTargetExisted) UtFileRemove(DxFileName);
    if (outcome_ == 0) return;
    DxProtoMsg(DxMsg(5756, DxSourceFileName.c_str()), 1);
    UoPutMacVarD("&DxfStat", 1.0); // the host asked for a file that isn't there
}

void Export::write() {
    DxTargetExisted = UtIsFile(DxFileName) ? 1 : 0;
    DxOutDir = UtPathDir(DxFileName);
    DxOutBase = UtCString(withoutExtension(UtPathFile(DxFileName).str()));
    const bool showsDraw = DxMacroNumber("&DxfShowDraw") >= 0.5;
    int pattern = 0;
    if (!showsDraw) Dxovpat(-1, &pattern);
    DxProtoName(1);
    outcome_ = DxGuarded([this] {
        if (DxUseTemplate && !DxTemplateName.IsEmpty()) readTemplate();
        makeNamesFit();
        return writeSections();
    });
    const int closed = DxWriteClose(outcome_ == 0);
    if (outcome_ == 0) outcome_ = closed;
    report();
    if (!showsDraw) Dxovpat(-2, &pattern);
    DxClose();
    convertToDwg();
}

void Export::run() {
    frame_.begin();
    frame_.announce(4615, fileName_);
    DxProtoOpen(1);
    outcome_ = DxGuarded([this] { return DxfInit(configName_, 1); });
    if (outcome_) DxProtoMsg(UtFormat("Error in Configurefile %s!", configName_.c_str()), 1);
    DxfInit2(1);
    if (!outcome_) outcome_ = settleFile();
    if (!outcome_) write();
    DxProtoClose(1, outcome_);
    frame_.announce(outcome_ ? 4617 : 4616, fileName_);
    frame_.endSession();
    int pattern = 0;
    Dxovpat(211, &pattern);
    frame_.giveBack();
    frame_.endAssembly();
    CiContext::Del(frame_.contextId());
}

} // namespace

void DxWriteDXF(const UtCString& configName, const UtCString& fileName) {
    Export(configName, fileName).run();
}
