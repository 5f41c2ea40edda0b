// torva-dxf info: what is in a file and what became of it.
#include "account.h"
#include "info_print.h"
#include "jobs.h"
#include "load.h"
#include "options.h"
#include "passport.h"
#include "units.h"

#include "drawing/dump.h"
#include "drawing/hatch_lines.h"
#include "services/open_file.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <map>

namespace tool {

using Json = nlohmann::ordered_json;

/// `stat` of an input that no import was tried with.
static constexpr int CANT_READ = 9001;

static Json extentsJson(const host::Drawing& drawing) {
    const host::Extents box = drawing.extents();
    return box.empty ? Json() : Json{box.minX, box.minY, box.maxX, box.maxY};
}

/// Pictures that the drawing names, each file once.
static Json imagesJson(const Loaded& loaded, const host::Drawing& drawing) {
    std::map<std::string, bool> images;
    for (const DxImageReport& image : loaded.report.images) images.emplace(image.file, image.found);
    if (!loaded.imported)
        for (const host::Pattern& pattern : drawing.patterns)
            for (const host::Bitmap& bitmap : pattern.bitmaps)
                images.emplace(bitmap.file, host::isRegular(bitmap.file));
    Json list = Json::array();
    for (const auto& [file, found] : images) list.push_back({{"file", file}, {"found", found}});
    return list;
}

/// INSERTs whose attributes have a pattern of their own, with them.
static Json insertsJson(const host::Drawing& drawing) {
    constexpr std::string_view ownPrefix = "dxf::";
    Json inserts = Json::array();
    for (const host::Pattern& pattern : drawing.patterns) {
        Json insert = {{"layer", pattern.ids.layer}, {"attributes", Json::object()}};
        for (const auto& [name, value] : pattern.attributes) {
            if (name == "insert")
                insert["block"] = value;
            else if (std::string_view(name).starts_with(ownPrefix))
                insert["attributes"][name.substr(ownPrefix.size())] = value;
        }
        if (insert.contains("block")) inserts.push_back(std::move(insert));
    }
    return inserts;
}

static Json infoJson(const std::string& input, const Loaded& loaded, const host::Drawing& drawing) {
    const host::Counts counts = host::countDrawing(drawing);
    Json info;
    info["file"] = input;
    info["stat"] = loaded.stat;
    info["version"] = loaded.imported ? Json(loaded.report.version) : Json();
    info["codepage"] = loaded.imported ? Json(loaded.report.codePage) : Json();
    info["unit"] = unitWord(drawing.unit);
    info["unit_given"] = !drawing.unitAssumed;
    info["scale"] = drawing.scale;
    info["patterns"] = counts.patterns;
    info["elements"] = {{"move", counts.moves},
                        {"draw", counts.draws},
                        {"arc", counts.arcs + counts.circles},
                        {"spline", counts.splines}};
    info["texts"] = counts.texts;
    info["hatches"] = counts.hatches;
    const host::HatchCounts hatches = host::countHatches(drawing);
    info["hatch"] = {{"families", hatches.families},
                     {"fills", hatches.fills},
                     {"gradients", hatches.gradients},
                     {"standard", hatches.standard},
                     {"kept", hatches.kept}};
    info["dimensions"] = counts.dimensions;
    const DxDimensionTally& dimensions = loaded.report.dimensions;
    info["dimension"] = {{"associative", dimensions.associative},
                         {"free", dimensions.free},
                         {"blocks", dimensions.blocks},
                         {"chained", dimensions.chained}};
    info["bitmaps"] = counts.bitmaps;
    info["faces"] = counts.faces;
    info["facets"] = counts.facets;
    info["curves3d"] = counts.curves3d;
    info["pointclouds"] = counts.pointClouds;
    info["solids"] = counts.solids;
    info["views"] = counts.views;
    info["attributes"] = counts.attributes;
    info["inserts"] = insertsJson(drawing);
    info["extents"] = extentsJson(drawing);
    info["entities"] = talliesJson(loaded.report.entities);
    info["block_entities"] = talliesJson(loaded.report.blockEntities);
    info["lost"] = unseenJson(loaded, false);
    info["hidden"] = unseenJson(loaded, true);
    info["messages"] = loaded.messages;
    info["view_names"] = Json::array();
    for (const host::View& view : drawing.views) info["view_names"].push_back(view.name);
    info["images"] = imagesJson(loaded, drawing);
    addPassport(info, input, loaded, drawing);
    info["seconds"] = loaded.seconds;
    return info;
}

static int infoOne(const std::string& input, const Options& options) {
    Options own = options;
    own.read.passport = true;
    const Loaded loaded = loadInput(input, own, options.inputs.size() == 1);
    own.quiet = true; // the messages are part of what is printed
    const int status = tellOutcome(input, loaded, own);
    if (!loaded.error.empty() && !options.json) return status;
    const Json info = loaded.error.empty()
                          ? infoJson(input, loaded, host::openDrawing())
                          : Json{{"file", input}, {"stat", CANT_READ}, {"error", loaded.error}};
    if (options.json)
        std::cout << info.dump(-1, ' ', false, Json::error_handler_t::replace) << '\n';
    else
        printInfo(info, options.verbose);
    return std::cout.flush() ? std::max(status, lossStatus(loaded, options)) : STATUS_FAILED;
}

int runInfo(const Options& options) {
    return forEachInput(options.inputs, options.jobs,
                        [&](const std::string& input) { return infoOne(input, options); });
}

} // namespace tool
