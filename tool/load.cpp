#include "load.h"

#include "account.h"
#include "drawing/drawing.h"
#include "drawing/move.h"
#include "drawing/origin_mark.h"
#include "dx_select.h"
#include "environment.h"
#include "file_kind.h"
#include "ge.h"
#include "interrupt.h"
#include "keep.h"
#include "progress.h"
#include "protocol.h"
#include "services/open_file.h"
#include "services/session.h"
#include "store/store.h"
#include "streams.h"
#include "tell.h"
#include "units.h"
#include "ut.h"
#include "words.h"

#include <cerrno>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <functional>
#include <iostream>
#include <unistd.h>

namespace tool {

namespace {

/// One input being loaded.
class Loading {
public:
    Loading(const Options& options, bool isAlone) : options_(options), isAlone_(isAlone) {}
    Loaded run(const std::string& input);

private:
    void prepareSession();
    void importDxf(const std::string& path);
    void lookThrough(const std::string& path);
    bool prepareKeeping();
    void setVariables();
    void moveBack(host::Drawing& drawing);
    void finishKeeping();
    void convertUnit();
    void note(const std::string& text);

    const Options& options_;
    bool isAlone_;
    TemporaryFolder folder_;
    Loaded loaded_;
    SourceScan scan_;
    KeepPlan plan_;
    double unitRatio_ = 1; ///< of the file's unit to the drawing's
};

} // namespace

static bool isDrawingFile(const std::string& path) {
    return lookAtFile(path).kind == FileKind::DrawingFile || UtPathExt(path).str() == "tdw";
}

/// A DWG by its name or by the version that it begins with.
static bool isDwg(const std::string& path) {
    return UtPathExt(path).str() == "dwg" || lookAtFile(path).kind == FileKind::Dwg;
}

std::string missingConverter(const std::string& name) {
    const FileLook look = lookAtFile(name);
    return words::say("{} is {}. Set TORVA_DWG_CONVERTER to a program that converts DWG to DXF and back; "
                      "it is called with the source and the target behind its own arguments",
                      name, look.kind == FileKind::Dwg ? look.name : words::say("a DWG"));
}

/// Hands on the text of a DXF file; of a DWG or binary DXF, its text form.
static void withText(const std::string& path, const TemporaryFolder& folder,
                     const std::function<void(std::string_view)>& look) {
    std::string source = path;
    if (lookAtFile(path).kind == FileKind::BinaryDxf || isDwg(path)) {
        source = folder.file("scan.dxf");
        if (UtConvertDwg2Dxf(path, source) != 0) return;
    }
    FILE* stream = UtFileOpen(source, "rb");
    if (!stream) return;
    UT_FILE_VIEW view;
    if (UtFileMap(stream, view) == 0) {
        look({view.data ? view.data : "", view.size});
        UtFileUnmap(view);
    }
    UtFileClose(stream);
}

/// Copies what can be read once only to a file, for it is looked at more than once.
static std::string spool(FILE* from, const TemporaryFolder& folder) {
    if (!from) return {};
    const std::string path = folder.file("stdin.dxf");
    FILE* out = std::fopen(path.c_str(), "wb");
    const bool isCopied = out && copyStream(from, out);
    if (out) std::fclose(out);
    return isCopied ? path : std::string();
}

void Loading::note(const std::string& text) {
    loaded_.messages.push_back(text);
    loaded_.important.push_back(text);
}

std::vector<std::string> pictureFaults() {
    std::vector<std::string> faults;
    for (const std::string& line : host::session().messageArea)
        if (line.starts_with("Picture ")) faults.push_back(words::retold(line));
    return faults;
}

void Loading::prepareSession() {
    host::resetSession();
    host::Session& session = host::session();
    session.language = options_.language.empty() ? localeLanguage() : options_.language;
    if (options_.read.maxElements > 0) session.maxElements = options_.read.maxElements;
    session.wantsAbort = [] { return isInterrupted(); };
    if (isAlone_ && !options_.quiet) session.onStatus = showProgress;
    const char* const converter = std::getenv("TORVA_DWG_CONVERTER");
    if (converter && options_.confine.empty()) session.dwgConverter = converter;
}

void Loading::lookThrough(const std::string& path) {
    withText(path, folder_, [this](std::string_view text) {
        scan_ = scanSource(text);
        if (options_.read.passport)
            loaded_.passport = scanPassport(text, scan_.version < 1021 ? scan_.codePage : UT_CP_UTF8);
    });
}

bool Loading::prepareKeeping() {
    plan_ = planKeeping(scan_);
    for (const std::string& text : plan_.notes) note(text);
    const std::string config = dataFile("keep.dxd");
    auto additions = keepAdditions(plan_, config);
    if (!additions) {
        loaded_.error = words::say("Can't read {}, without which layers and colours would be lost", config);
        return false;
    }
    DxSetConfigAdditions(std::move(*additions));
    host::session().texts["$DxfConfig"] = config;
    if (!options_.read.center) host::session().numbers["&DxfInsbase"] = 1;
    host::session().texts["$DxfPaperUnit"] = GeUnit(plan_.paperUnit).name().str();
    host::session().numbers["&DxfPaperUnit"] = plan_.paperUnit;
    // The file's unit is that of model space; paper is measured in millimetres.
    if (options_.read.unit != 0 || options_.read.space == "paper") return true;
    const FileUnit unit = unitOfFile(scan_.insUnits);
    host::Drawing& drawing = host::openDrawing();
    drawing.unit = unit.code;
    drawing.unitAssumed = unit.inMm == 0;
    if (unit.exact) return true;
    unitRatio_ = unit.inMm / host::unitInMm(drawing);
    note(words::say("The file's unit ({}) isn't one of the host's: all is scaled to {}", words::tr(unit.name),
                    unitWord(unit.code)));
    return true;
}

void setUserVariables(const Options& options) {
    host::Session& session = host::session();
    for (const std::string& variable : options.read.variables) {
        const std::size_t equals = variable.find('=');
        const std::string name = variable.substr(0, equals), value = variable.substr(equals + 1);
        if (name[0] == '&')
            session.numbers[name] = std::strtod(value.c_str(), nullptr);
        else
            session.texts[name] = value;
    }
}

std::string whyNoConfig(const Options& options) {
    const std::string& config = options.read.config;
    if (config.empty()) return {};
    const int file = host::openRegular(config);
    if (file < 0) return words::say("Can't read the configuration {}: {}", config, words::systemWords(errno));
    close(file);
    return {};
}

/// Settings of the command line, as macro variables; --set has the last word.
void Loading::setVariables() {
    host::Session& session = host::session();
    const ReadOptions& read = options_.read;
    if (read.unit != 0) host::openDrawing().unit = read.unit;
    if (!read.config.empty()) session.texts["$DxfConfig"] = read.config;
    if (read.space != "model") {
        session.numbers["&DxfParseExt"] = 0;
        session.numbers["&DxfPaper"] = read.space == "paper" ? 1 : 2;
    }
    setUserVariables(options_);
}

/// The insertion base became the origin; coordinates are to stay what the file says.
void Loading::moveBack(host::Drawing& drawing) {
    const RPT model{loaded_.report.insBase.x, loaded_.report.insBase.y};
    const double paperUnit = GeUnit(plan_.paperUnit).factor() * 1e-6 / host::unitInMm(drawing);
    const RPT paper{scan_.paperBaseX * paperUnit, scan_.paperBaseY * paperUnit};
    const bool isPaper = options_.read.space == "paper";
    const RPT& base = isPaper ? paper : model;
    if (options_.read.space == "all" && (paper.x != 0 || paper.y != 0))
        note(words::say("Coordinates on the sheets are relative to the insertion base of paper space"));
    if (base.x == 0 && base.y == 0) return;
    host::moveModel(drawing, base.x, base.y);
    host::renewMarks(drawing);
}

void Loading::finishKeeping() {
    host::Drawing& drawing = host::openDrawing();
    applyKeeping(plan_, scan_, drawing);
    if (!options_.read.center) moveBack(drawing);
    drawing.multiplyModel(unitRatio_);
}

void Loading::importDxf(const std::string& path) {
    const bool keeps = options_.read.config.empty() && !options_.read.plain;
    loaded_.error = whyNoConfig(options_);
    if (!loaded_.error.empty()) return;
    if (keeps || options_.read.passport) lookThrough(path);
    if (scan_.hasEndlessLine) {
        loaded_.error = words::say("{}: a line of more than a megabyte, this is no drawing", path);
        return;
    }
    if (keeps && !prepareKeeping()) return;
    setVariables();
    const RunFiles files(folder_);
    DxfSelect(0, options_.read.threeD ? DX_IMPORT_3D : DX_IMPORT_2D, path);
    hideProgress();
    loaded_.imported = true;
    loaded_.stat = static_cast<int>(host::session().numbers["&DxfStat"]);
    loaded_.report = DxGetImportReport();
    for (const DxReportMessage& message : loaded_.report.messages) {
        loaded_.messages.push_back(message.text);
        if (message.level > 0) loaded_.important.push_back(message.text);
    }
    for (const std::string& fault : pictureFaults()) note(fault);
    for (const std::string& dialog : host::session().dialogs) note(dialog);
    if (host::session().elementLimitHit)
        note(words::say("Stopped: more elements than allowed (--max-elements)"));
    else if (loaded_.stat == 9009 && !isInterrupted())
        note(words::say("Stopped: more entities than anyone can draw"));
    if (keeps) finishKeeping();
}

void Loading::convertUnit() {
    if (options_.read.convertUnit == 0) return;
    host::openDrawing().changeUnit(options_.read.convertUnit);
    host::openDrawing().unitAssumed = false;
}

Loaded Loading::run(const std::string& input) {
    const auto start = std::chrono::steady_clock::now();
    prepareSession();
    std::string path = input;
    std::error_code error;
    loaded_.error = whyNotReadable(input);
    if (!loaded_.error.empty()) return std::move(loaded_);
    if (input == "-") {
        path = spool(stdin, folder_);
    } else if (std::filesystem::is_fifo(input, error)) {
        FILE* pipe = std::fopen(input.c_str(), "rb");
        path = spool(pipe, folder_);
        if (pipe) std::fclose(pipe);
    }
    if (path.empty()) {
        loaded_.error = words::say("Can't read {}", input == "-" ? words::say("standard input") : input);
    } else if (isDwg(path) && host::session().dwgConverter.empty()) {
        loaded_.error = missingConverter(input);
    } else if (isDrawingFile(path)) {
        loaded_.error = words::retold(host::loadDrawing(host::openDrawing(), path));
        if (options_.read.unit != 0)
            note(words::say("A drawing file has its unit: --unit is for DXF files, --convert-unit for both"));
    } else {
        importDxf(path);
    }
    if (loaded_.error.empty()) convertUnit();
    loaded_.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    loaded_.scan = std::move(scan_);
    return std::move(loaded_);
}

Loaded loadInput(const std::string& input, const Options& options, bool isAlone) {
    return Loading(options, isAlone).run(input);
}

int tellOutcome(const std::string& input, const Loaded& loaded, const Options& options) {
    if (!loaded.error.empty()) return fail(loaded.error);
    if (!options.quiet) {
        for (const std::string& line : options.verbose ? loaded.messages : loaded.important)
            std::cerr << input << ": " << line << '\n';
    }
    if (!options.quiet)
        for (const std::string& line : accountLines(loaded)) std::cerr << input << ": " << line << '\n';
    if (loaded.stat == 0) return STATUS_DONE;
    constexpr int notConverted = 3011;
    if (loaded.stat == notConverted && isDwg(input))
        return fail(input, words::say("the program that TORVA_DWG_CONVERTER names ({}) didn't convert it",
                                      host::session().dwgConverter));
    return fail(input, words::say("the import ended with error {}", loaded.stat));
}

} // namespace tool
