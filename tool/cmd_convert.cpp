// torva-dxf convert: DXF files become DXF files of another version.
#include "account.h"
#include "interrupt.h"
#include "jobs.h"
#include "load.h"
#include "options.h"
#include "save.h"
#include "tell.h"
#include "words.h"

#include "drawing/drawing.h"

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <set>

namespace tool {

namespace fs = std::filesystem;

static int convertOne(const std::string& input, const std::string& target, const Options& options) {
    const Loaded loaded = loadInput(input, options, options.inputs.size() == 1);
    const int status = tellOutcome(input, loaded, options);
    // What was read until an error is converted all the same; nothing would come of an empty drawing.
    if (!loaded.error.empty() || (status != STATUS_DONE && host::openDrawing().elementCount == 0))
        return status;
    if (isTerminated()) return STATUS_FAILED;
    const int saved = saveDxf(target, loaded, options);
    if (saved == STATUS_DONE && !options.quiet)
        std::cerr << input << " -> " << target
                  << (status == STATUS_DONE ? "" : words::tr(" (what was read until the error)")) << '\n';
    return std::max({status, saved, lossStatus(loaded, options)});
}

static std::string targetOf(const std::string& input, const std::string& directory) {
    const std::string stem = input == "-" ? "stdin" : fs::path(input).stem().string();
    return (fs::path(directory) / (stem + ".dxf")).string();
}

static int convertInto(const std::string& directory, const Options& options) {
    if (!makeFolder(directory)) return STATUS_FAILED;
    std::error_code error;
    std::set<std::string> targets;
    for (const std::string& input : options.inputs) {
        const std::string target = targetOf(input, directory);
        const bool isAnInput =
            std::any_of(options.inputs.begin(), options.inputs.end(), [&](const std::string& other) {
                std::error_code none;
                return fs::equivalent(other, target, none);
            });
        if (isAnInput || !targets.insert(target).second)
            return fail(words::say("{} would overwrite {}", input, target), STATUS_USAGE);
    }
    return forEachInput(options.inputs, options.jobs, [&](const std::string& input) {
        return convertOne(input, targetOf(input, directory), options);
    });
}

int runConvert(const Options& options) {
    if (!options.directory.empty()) return convertInto(options.directory, options);
    if (options.inputs.size() != 2)
        return fail(words::say("convert needs IN OUT, or IN... -d DIR"), STATUS_USAGE);
    if (!isUsableTarget(options.inputs[0], options.inputs[1])) return STATUS_USAGE;
    Options one = options;
    one.inputs.resize(1);
    return convertOne(options.inputs[0], options.inputs[1], one);
}

} // namespace tool
