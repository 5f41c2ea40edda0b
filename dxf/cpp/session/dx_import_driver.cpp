// One import, from the host's call to its outcome.
#include "../config/config_state.h"
#include "../config/dx_layers.h"
#include "../config/dx_pens.h"
#include "../host/dx_host.h"
#include "../import/dx_account.h"
#include "../import/dx_blocks.h"
#include "../import/dx_entity_section.h"
#include "../import/dx_paper_spaces.h"
#include "../import/dx_spaces.h"
#include "../import/dx_transform.h"
#include "../import/import_state.h"
#include "../sections/dx_georeference.h"
#include "../sections/dx_header_import.h"
#include "../sections/dx_section_places.h"
#include "../sections/dx_tables_import.h"
#include "../sections/sections_state.h"
#include "dx_driver_frame.h"
#include "dx_session.h"

#include "ci.h"
#include "ds.h"
#include "go.h"
#include "mt.h"
#include "ov.h"
#include "uo.h"
#include "ut.h"

#include <cmath>
#include <string>
#include <vector>

namespace {

constexpr int EXCEPTION = 2360;
constexpr int END_OF_FILE = 9003;
constexpr int ABORTED = 9009;

/// Three numbers divided by two commas, in a text that may go on behind them.
bool scanTriple(std::string_view text, RPT3& triple) {
    double* const parts[] = {&triple.x, &triple.y, &triple.z};
    for (int i = 0; i < 3; ++i) {
        if (i) {
            if (text.empty() || text.front() != ',') return false;
            text.remove_prefix(1);
        }
        const std::size_t used = DxScanNumber(text, *parts[i]);
        if (!used || !std::isfinite(*parts[i])) return false;
        text.remove_prefix(used);
    }
    return true;
}

/// Puts a warning or an error before the user and into the protocol.
void report(const UtCString& text) {
    DxProtoMsg(text, 1);
}

/// The file whose conversion a document reads, empty when it reads the file itself.
UtCString convertedFrom(const DxfDocument& document) {
    if (!document.tempName.Get().IsEmpty()) return document.foundAs;
    return document.parent.Get() ? UtCString() : DxSourceFileName;
}

/// Where the reading ended, for whoever has to mend the file: a line means nothing in a binary one.
void reportPlace(const DxfDocument* document) {
    if (!document) return;
    const long line = DxReadLineNumber(*document);
    const UtCString source = convertedFrom(*document);
    const long long byte = source.IsEmpty() ? -1 : UtConvertedByte(source, line);
    const char* const name = document->name.Get().c_str();
    if (byte >= 0)
        report(UtFormat("The reading ended at byte %lld of file %s.", byte, name));
    else
        report(UtFormat("The reading ended in line %ld of file %s.", line, name));
}

/// What went wrong, in words. Numbers whose reason has been told already are silent.
void reportError(int error) {
    const DxfDocument* const document = DxDocuments.current_;
    switch (error) {
    case -1:
    case 9002:
    case 9006: break;
    case 2030:
    case 3012: report("Scale too small!"); break;
    case 9001: report(DxMsg(5809, DxFileName)); break;
    case END_OF_FILE:
        report(DxMsg(document && document->sectionSeen.Get() ? 5714 : 5713));
        reportPlace(DxReadEnded ? DxReadEnded : document);
        break;
    case ABORTED: report("aborted .. "); break;
    default:
        report(DxMsg(5705, error));
        reportPlace(document);
        break;
    }
}

/// The host shows model space again.
int showModel() {
    DxActSpace = 0;
    DxPlotCount = DxViewportCount = 1;
    return DxCiSwitchToReadSpace();
}

void reportSuccess() {
    DxDisplay(DxMsg(5710));
    if (DxRegionCount) report(DxMsg(11914, std::to_string(DxRegionCount).c_str()));
}

class Import {
public:
    Import(const UtCString& configName, const UtCString& fileName)
        : configName_(configName), fileName_(fileName) {}
    void run();

private:
    void begin();
    int openSession();
    int settleFile();
    void read();
    void end();

    void useMatrixVariable();
    int readInOneRun();
    int readByPlaces();
    int readSections();
    void noteCorrectedFiles();
    void showCorrectedFiles() const;

    const UtCString& configName_;
    const UtCString& fileName_;
    int outcome_ = 0;
    DxDriverFrame frame_;
    Mat44 matrix_{};                        ///< every entity passes through it
    std::vector<UtCString> correctedFiles_; ///< documents whose recovered twin was read
};

void Import::run() {
    begin();
    outcome_ = DxGuarded([this] { return openSession(); });
    if (!outcome_) outcome_ = DxGuarded([this] { return settleFile(); });
    if (!outcome_) read();
    end();
}

void Import::begin() {
    frame_.begin();
    frame_.announce(4612, fileName_);
    DxProtoOpen(0);
    Mt44Ident(matrix_);
    DxUseInsBase = DxMacroNumber("&DxfInsbase") > 0.5 ? 1 : 0;
}

int Import::openSession() {
    const int error = DxGuarded([this] { return DxfInit(configName_, 0); });
    if (error) report(UtFormat("Error in Configurefile %s!", configName_.c_str()));
    DxfInit2(1);
    return error;
}

/// Settles which text DXF is read: the argument, the macro variable or the user's choice, converted if need
/// be.
int Import::settleFile() {
    DxFileName = fileName_;
    if (DxFileName.IsEmpty()) UoGetMacVarS("$DxfName", &DxFileName);
    if (DxFileName.IsEmpty())
        return CiInput(frame_.contextId()).SelectFileName(DxMsg(5708, "DXF"), 1, "*.dxf", "dxf", &DxFileName);
    if (!DxReadNeedsConvert(DxFileName)) return 0;
    DxSourceFileName = DxFileName;
    DxFileName = UtCString();
    return DxReadConvertDwg2Dxf(DxSourceFileName, DxFileName);
}

/// $DxfMatrix: an extrusion direction for the whole import.
void Import::useMatrixVariable() {
    UtCString text;
    RPT3 direction{};
    if (UoGetMacVarS("$DxfMatrix", &text) || !scanTriple(text.str(), direction)) return;
    DxProtoMsg(DxMsg(5764, direction.x, direction.y, direction.z), 0);
    DxArbaxis(direction.x, direction.y, direction.z, matrix_);
}

int Import::readInOneRun() {
    int error = DxReadUntil(0, "SECTION");
    const auto section = [&error](auto read) {
        if (!error) error = DxIgnoreSections();
        if (!error) error = read();
    };
    section([this] { return DxReadHeaderSection(matrix_); });
    section([] { return DxReadTableSection(0); });
    section([] { return DxReadBlockSection(); });
    section([this] { return DxReadEntitySection(matrix_); });
    return error;
}

/// Sections in any order: of several headers the first counts, of the others all do.
int Import::readByPlaces() {
    // At its end a reader looks for the section behind its own, which needn't be there.
    const auto read = [](std::string_view name, int n, auto reader) {
        const std::int32_t place = DxSectionPlace(name, n);
        if (place < 0) return END_OF_FILE;
        const int error = DxReadSeek(place);
        return error ? error : reader();
    };
    const auto readAll = [&read](std::string_view name, auto reader) {
        int error = 0;
        for (int n = 0; DxSectionPlace(name, n) >= 0 && (!error || error == END_OF_FILE); ++n)
            error = read(name, n, reader);
        return error;
    };
    int error = read("HEADER", 0, [this] { return DxReadHeaderSection(matrix_); });
    if (!error || error == END_OF_FILE) error = readAll("TABLES", [] { return DxReadTableSection(0); });
    if (!error || error == END_OF_FILE) error = readAll("BLOCKS", [] { return DxReadBlockSection(); });
    if (error && error != END_OF_FILE) return error;
    return read("ENTITIES", 0, [this] { return DxReadEntitySection(matrix_); });
}

int Import::readSections() {
    int error = DxReadOpen(DxFileName);
    if (!error) DxFindSectionPlaces();
    if (!error) error = DxSectionPlaces.empty() ? readInOneRun() : readByPlaces();
    if (!error && DxReadSpace == 2) error = DxFinishPaperSpaces(matrix_);
    if (!error && DxUseGeoref && DxHasGeoData()) {
        if (DxReadSpace == 2) error = showModel();
        if (!error) error = DxApplyGeoreference(matrix_);
    }
    return error;
}

void Import::noteCorrectedFiles() {
    for (const auto& [name, document] : DxDocuments.byName) {
        if (!document->recovered.Get()) continue;
        correctedFiles_.push_back(document->name.Get());
        DxReport.recovered.push_back(document->name.Get().str());
    }
}

void Import::showCorrectedFiles() const {
    UtCString text = DxMsg(5780) + "\n\n" + DxMsg(5781);
    for (const UtCString& name : correctedFiles_) text += "\n" + name;
    GoDoShowInformationEx(4, DxMsg(3185), DxMsg(5782), text);
}

void Import::read() {
    useMatrixVariable();
    const bool showsDraw = DxMacroNumber("&DxfShowDraw") >= 0.5;
    int pattern = 0;
    if (!showsDraw) Dxovpat(-1, &pattern);
    DxProtoName(0);
    if (DxReadSpace == 2) DxCiViewUpdate();

    outcome_ = DxGuarded([this] { return readSections(); });
    if (DxDocuments.anyShrank()) {
        report("The file became shorter while it was read!");
        if (!outcome_) outcome_ = END_OF_FILE;
    }
    if (outcome_ == EXCEPTION) DxCiElemDrawPat(); // what was drawn before stays
    noteCorrectedFiles();
    DxFinishAccount(outcome_);
    if (outcome_ == 0 || outcome_ == ABORTED) { // else the documents stay open until the next session begins
        DxReadClose();
        DxSetPenLt(DxPen, DxLt);
    }
    if (outcome_)
        reportError(outcome_);
    else
        reportSuccess();

    if (DxReadSpace == 2) {
        showModel();
        DxCiViewUpdate();
    }
    DxCiAddDxfLayer(nullptr);
    DxClose();
    if (!showsDraw) Dxovpat(-2, &pattern);
    Dxovpat(211, &pattern);
    if (!outcome_ && !correctedFiles_.empty()) showCorrectedFiles();
}

void Import::end() {
    DxProtoClose(0, outcome_);
    UoPutMacVarD("&DxfStat", outcome_);
    frame_.giveBack();
    frame_.announce(4613, fileName_);
    if (!outcome_ && !DxSourceFileName.IsEmpty() && DxSourceFileName != DxFileName) UtFileRemove(DxFileName);
    frame_.endSession();
    frame_.endAssembly();
    DxCiZoom2Box();
    CiContext::Del(frame_.contextId());
}

} // namespace

void DxReadDXF(const UtCString& configName, const UtCString& fileName) {
    Import(configName, fileName).run();
}
