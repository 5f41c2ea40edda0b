// torva-dxf validate: what is wrong with DXF files.
#include "file_kind.h"
#include "jobs.h"
#include "options.h"

#include "validate.h"

#include <filesystem>
#include <fstream>
#include <iostream>

namespace fs = std::filesystem;

namespace tool {

static validate::Selection selectionOf(const Options& options) {
    using validate::Level;
    const std::string& level = options.check.level;
    validate::Selection selection;
    selection.level = options.quiet || level == "error" ? Level::Error
                      : level == "warning"              ? Level::Warning
                                                        : Level::Note;
    if (options.verbose) selection.limit = 0;
    selection.only = options.check.only;
    selection.ignored = options.check.ignored;
    return selection;
}

/// What the file is when it is no DXF, in words; empty when it may be one.
static std::string otherKind(const std::string& input) {
    std::error_code error;
    if (fs::is_regular_file(input, error) && fs::file_size(input, error) == 0) return "the file is empty";
    const FileLook look = lookAtFile(input);
    const bool mayBeDxf = look.kind == FileKind::Text || look.kind == FileKind::BinaryDxf;
    return mayBeDxf ? "" : "this is " + look.name + ", not a DXF file";
}

static validate::Report judge(const std::string& input, const validate::Selection& selection) {
    if (input == "-") return validate::validateFile(input, selection);
    if (const std::string other = otherKind(input); !other.empty())
        return validate::refuseFile(input, false, other, selection);
    if (const std::string why = whyNotReadable(input); !why.empty())
        return validate::refuseFile(input, true, why.substr(input.size() + 2), selection);
    return validate::validateFile(input, selection);
}

static void print(const validate::Report& report, const Options& options, std::ostream& out) {
    if (options.json)
        validate::printJson(report, out);
    else
        validate::printText(report, out, options.quiet);
}

/// The report in a file of its own, named as the drawing.
static bool printIntoFolder(const validate::Report& report, const Options& options) {
    const fs::path name = report.file == "-" ? "stdin" : fs::path(report.file).filename();
    const fs::path path = fs::path(options.directory) / (name.string() + (options.json ? ".json" : ".txt"));
    std::ofstream out(path);
    print(report, options, out);
    if (out.flush()) return true;
    const std::string why = whyNotWritable(path.string());
    std::cerr << "torva-dxf: " << path.string() << (why.empty() ? ": can't be written" : ": " + why) << '\n';
    return false;
}

static int checkOne(const std::string& input, const Options& options) {
    const validate::Report report = judge(input, selectionOf(options));
    if (options.directory.empty())
        print(report, options, std::cout);
    else if (!printIntoFolder(report, options))
        return STATUS_FAILED;
    return validate::fails(report, options.strict) ? STATUS_FAILED : STATUS_DONE;
}

int runValidateCommand(const Options& options) {
    std::error_code error;
    if (!options.directory.empty()) fs::create_directories(options.directory, error);
    return forEachInput(options.inputs, options.jobs,
                        [&](const std::string& input) { return checkOne(input, options); });
}

} // namespace tool
