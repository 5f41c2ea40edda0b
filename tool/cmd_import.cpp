// torva-dxf import: DXF files become drawing files.
#include "account.h"
#include "file_kind.h"
#include "interrupt.h"
#include "jobs.h"
#include "load.h"
#include "options.h"
#include "tell.h"
#include "units.h"
#include "words.h"

#include "drawing/dump.h"
#include "store/store.h"
#include "ut.h"

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <map>

namespace tool {

namespace fs = std::filesystem;

static std::string targetOf(const std::string& input, const Options& options) {
    if (options.directory.empty()) return options.output;
    const std::string stem = input == "-" ? "stdin" : fs::path(input).stem().string();
    return (fs::path(options.directory) / (stem + ".tdw")).string();
}

/// Two inputs of one name would overwrite each other's drawing.
static bool targetsDiffer(const Options& options) {
    std::map<std::string, std::string> sources;
    for (const std::string& input : options.inputs) {
        const auto [source, isNew] = sources.try_emplace(targetOf(input, options), input);
        if (isNew) continue;
        fail(words::say("{} and {} would both become {}", source->second, input, source->first));
        return false;
    }
    return true;
}

/// None is an input, nor has the name of another kind of file.
static bool targetsAreUsable(const Options& options) {
    for (const std::string& input : options.inputs) {
        for (const std::string& other : options.inputs) {
            const std::string wrong = whyNotTarget(other, targetOf(input, options), "tdw");
            if (wrong.empty()) continue;
            fail(wrong);
            return false;
        }
    }
    return true;
}

static int importOne(const std::string& input, const Options& options) {
    const Loaded loaded = loadInput(input, options, options.inputs.size() == 1);
    int status = tellOutcome(input, loaded, options);
    const host::Drawing& drawing = host::openDrawing();
    const host::Counts counts = host::countDrawing(drawing);
    if (!loaded.error.empty() || (status != STATUS_DONE && drawing.elementCount == 0)) return STATUS_FAILED;

    if (isTerminated()) return STATUS_FAILED;

    const std::string target = targetOf(input, options);
    if (const std::string error = host::saveDrawing(drawing, target); !error.empty())
        return fail(words::retold(error));
    if (!options.quiet)
        std::cerr << input << " -> " << target << ": "
                  << words::say("{} elements in {} patterns, unit {}", drawing.elementCount, counts.patterns,
                                (drawing.unitAssumed ? words::say("none, taken as ") : "") +
                                    unitWord(drawing.unit))
                  << (status == STATUS_DONE ? "" : words::tr(" (what was read until the error)")) << '\n';
    return std::max(status, lossStatus(loaded, options));
}

int runImport(const Options& options) {
    if (!options.directory.empty() && !makeFolder(options.directory)) return STATUS_FAILED;
    if (!targetsDiffer(options) || !targetsAreUsable(options)) return STATUS_USAGE;
    return forEachInput(options.inputs, options.jobs,
                        [&](const std::string& input) { return importOne(input, options); });
}

} // namespace tool
