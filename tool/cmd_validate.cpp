// torva-dxf validate: what is wrong with DXF files, and the same files mended.
#include "file_kind.h"
#include "jobs.h"
#include "options.h"
#include "tell.h"
#include "words.h"

#include "file_bytes.h"
#include "repair.h"
#include "store/replace.h"
#include "validate.h"

#include <filesystem>
#include <fstream>
#include <iostream>
#include <set>

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

// --- reports

/// What the file is when it is no DXF, in words; empty when it may be one.
static std::string otherKind(const std::string& input) {
    std::error_code error;
    if (fs::is_regular_file(input, error) && fs::file_size(input, error) == 0)
        return words::say("the file is empty");
    const FileLook look = lookAtFile(input);
    const bool mayBeDxf = look.kind == FileKind::Text || look.kind == FileKind::BinaryDxf;
    return mayBeDxf ? "" : words::say("this is {}, not a DXF file", look.name);
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

static fs::path pathInFolder(const std::string& input, const Options& options, const std::string& ending) {
    const std::string name = input == "-" ? "stdin" : fs::path(input).filename().string();
    return fs::path(options.directory) / (name + ending);
}

static void tellUnwritten(const std::string& path) {
    const std::string why = whyNotWritable(path);
    fail(path, why.empty() ? words::say("can't be written") : why);
}

/// The report in a file of its own, named as the drawing.
static bool printIntoFolder(const validate::Report& report, const Options& options) {
    const std::string path = pathInFolder(report.file, options, options.json ? ".json" : ".txt").string();
    for (const std::string& input : options.inputs)
        if (const std::string why = whyNotTarget(input, path, "report"); !why.empty())
            return fail(why) == STATUS_DONE;
    host::ReplacementFile file(path);
    std::ofstream out(file.path());
    print(report, options, out);
    if (out.flush() && file.commit().empty()) return true;
    tellUnwritten(path);
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

// --- mended files

/// Writes beside the target first, so that a full disk costs no older file of that name.
static bool writeFile(const std::string& target, const std::string& text) {
    if (target == "-") return static_cast<bool>(std::cout << text);
    host::ReplacementFile file(target);
    std::ofstream out(file.path(), std::ios::binary);
    out << text;
    if (out.flush() && file.commit().empty()) return true;
    tellUnwritten(target);
    return false;
}

static int repairOne(const std::string& input, const Options& options) {
    const std::string target =
        options.check.repaired.empty() ? pathInFolder(input, options, "").string() : options.check.repaired;
    if (const std::string why = whyNotTarget(input, target, "dxf"); !why.empty())
        return fail(why, STATUS_USAGE);
    std::ostream& out = target == "-" ? std::cerr : std::cout;
    const validate::Selection selection = selectionOf(options);
    const bool other = input != "-" && !(otherKind(input).empty() && whyNotReadable(input).empty());
    const validate::FileBytes file(input);
    const repair::Outcome outcome =
        other ? repair::Outcome() : repair::repairFile(file.text(), selection.limit);
    if (!outcome.isDxf) {
        print(input == "-" ? validate::validateText(file.text(), selection) : judge(input, selection),
              options, out);
        return STATUS_FAILED;
    }
    if (!writeFile(target, outcome.text)) return STATUS_FAILED;
    if (!options.quiet && !options.json) repair::printMends(outcome, input, out);
    validate::Report report = validate::validateText(outcome.text, selection);
    report.file = target;
    print(report, options, out);
    return validate::fails(report, options.strict) ? STATUS_FAILED : STATUS_DONE;
}

/// The name that two inputs would write to in one folder; empty when there is none.
static std::string sharedName(const std::vector<std::string>& inputs) {
    std::set<std::string> names;
    for (const std::string& input : inputs)
        if (!names.insert(fs::path(input).filename().string()).second)
            return fs::path(input).filename().string();
    return {};
}

int runValidateCommand(const Options& options) {
    if (!options.directory.empty()) {
        if (const std::string name = sharedName(options.inputs); !name.empty())
            return fail(words::say("two inputs are called {}, one would take the other's place in {}", name,
                                   options.directory),
                        STATUS_USAGE);
        if (!makeFolder(options.directory)) return STATUS_FAILED;
    }
    return forEachInput(options.inputs, options.jobs, [&](const std::string& input) {
        return options.check.repairs ? repairOne(input, options) : checkOne(input, options);
    });
}

} // namespace tool
