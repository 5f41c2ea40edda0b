// torva-dxf sat: solid models, converted, shown as text, taken out of drawings.
#include "file_kind.h"
#include "load.h"
#include "options.h"
#include "tell.h"
#include "words.h"

#include "drawing/drawing.h"
#include "dx_od.h"
#include "store/replace.h"

#include <filesystem>
#include <fstream>
#include <iostream>

namespace tool {

namespace fs = std::filesystem;

static std::string reason() {
    const std::string problem = DxOdProblem();
    return problem.empty() ? words::say("no solid model that can be read") : words::retold(problem);
}

static bool exists(const std::string& input) {
    std::error_code error;
    if (fs::is_regular_file(input, error)) return true;
    fail(input, words::systemWords(ENOENT));
    return false;
}

static int dumpModel(const std::string& input) {
    std::string text;
    if (!exists(input)) return STATUS_FAILED;
    if (DxOdSatDump(input, text)) return fail(input, reason());
    std::cout << text;
    return STATUS_DONE;
}

/// By way of a file beside the target, so that a failure costs no older one.
static int convertModel(const std::string& input, const std::string& target) {
    if (!exists(input)) return STATUS_FAILED;
    host::ReplacementFile half(target);
    const int result = DxOdSatConv(input, half.path());
    if (!result && half.commit().empty()) return STATUS_DONE;
    if (result == 2360 || !result) return fail(target, words::say("can't be written"));
    return fail(input, reason());
}

/// The model where the drawing has it.
static int writeSolid(const host::Solid& solid, const fs::path& stem) {
    const bool isBinary = solid.data.starts_with("ACIS BinaryFile");
    const std::string path = stem.string() + (isBinary ? ".sab" : ".sat");
    std::string placed;
    Mat44 matrix = {};
    for (std::size_t row = 0; row < 4; ++row) {
        const RPT3& p = solid.place[row];
        matrix[row][0] = p.x, matrix[row][1] = p.y, matrix[row][2] = p.z;
    }
    if (DxOdSatPlace(solid.data, matrix, isBinary, placed))
        return fail(path, words::say("a model that can't be read"));
    host::ReplacementFile target(path);
    std::ofstream file(target.path(), std::ios::binary);
    file << placed;
    return file.flush() && target.commit().empty() ? STATUS_DONE : fail(path, words::say("can't be written"));
}

static int extractSolids(const std::string& input, const Options& options) {
    Options inSpace = options;
    inSpace.read.threeD = true;
    const Loaded loaded = loadInput(input, inSpace, true);
    int status = tellOutcome(input, loaded, options);
    if (!loaded.error.empty()) return status;
    if (!makeFolder(options.directory)) return STATUS_FAILED;
    const fs::path stem = fs::path(options.directory) / (input == "-" ? "stdin" : fs::path(input).stem());
    int count = 0;
    for (const host::Pattern& pattern : host::openDrawing().patterns)
        for (const host::Solid& solid : pattern.solids)
            status = std::max(status, writeSolid(solid, stem.string() + "_" + std::to_string(++count)));
    if (!options.quiet) std::cerr << input << ": " << words::say("{} solids", count) << '\n';
    return status;
}

int runSat(const Options& options) {
    const std::string& input = options.inputs[0];
    if (options.dumpModel) return dumpModel(input);
    if (options.extractSolids) return extractSolids(input, options);
    if (const std::string wrong = whyNotTarget(input, options.inputs[1], "model"); !wrong.empty())
        return fail(wrong, STATUS_USAGE);
    return convertModel(input, options.inputs[1]);
}

} // namespace tool
