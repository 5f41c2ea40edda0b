// torva-dxf info: what is in a file and what became of it.
#include "account.h"
#include "jobs.h"
#include "load.h"
#include "options.h"
#include "units.h"

#include "drawing/dump.h"
#include "drawing/hatch_lines.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <filesystem>
#include <iomanip>
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
                images.emplace(bitmap.file, std::filesystem::is_regular_file(bitmap.file));
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
    info["seconds"] = loaded.seconds;
    return info;
}

static void printNumbers(const Json& info, std::initializer_list<const char*> keys) {
    const char* gap = "  ";
    for (const char* key : keys) {
        std::cout << gap << key << ' ' << info[key].dump();
        gap = ", ";
    }
    std::cout << '\n';
}

static void printUnseen(const Json& rows, const char* heading) {
    for (const Json& row : rows) {
        std::cout << "  " << heading << ' ' << row["count"] << ' ' << row["kind"].get<std::string>() << ": "
                  << row["reason"].get<std::string>() << (row["in_blocks"].get<bool>() ? ", in blocks" : "");
        const char* gap = " (first: ";
        for (const auto& [key, value] : row["example"].items()) {
            std::cout << gap << key << ' ' << (value.is_string() ? value.get<std::string>() : value.dump());
            gap = ", ";
        }
        std::cout << (row["example"].empty() ? "\n" : ")\n");
    }
}

/// The same for people.
static void printInfo(const Json& info) {
    std::cout << info["file"].get<std::string>() << '\n';
    if (!info["version"].is_null())
        std::cout << "  version " << info["version"].get<std::string>() << ", code page " << info["codepage"]
                  << '\n';
    std::cout << "  outcome " << info["stat"] << ", unit " << info["unit"].get<std::string>() << ", scale "
              << info["scale"] << '\n';
    if (info["extents"].is_null())
        std::cout << "  empty\n";
    else
        std::cout << "  extents " << info["extents"].dump() << '\n';
    printNumbers(info["elements"], {"move", "draw", "arc", "spline"});
    printNumbers(info, {"patterns", "attributes", "texts", "hatches", "dimensions", "bitmaps"});
    if (info["hatches"] != 0) {
        std::cout << "  of the hatches:";
        printNumbers(info["hatch"], {"families", "fills", "gradients", "standard", "kept"});
    }
    printNumbers(info, {"faces", "pointclouds", "solids", "views"});
    if (info["view_names"].size() > 1)
        for (const Json& name : info["view_names"]) std::cout << "  view " << name.get<std::string>() << '\n';
    for (const Json& image : info["images"])
        std::cout << "  picture " << image["file"].get<std::string>()
                  << (image["found"].get<bool>() ? "\n" : " (not found)\n");
    for (const auto& [name, count] : info["entities"].items())
        std::cout << "  " << std::left << std::setw(20) << name << " read " << count["read"] << ", drawn "
                  << count["drawn"] << ", skipped " << count["skipped"] << '\n';
    printUnseen(info["lost"], "lost");
    printUnseen(info["hidden"], "hidden");
    for (const Json& message : info["messages"]) std::cout << "  * " << message.get<std::string>() << '\n';
}

static int infoOne(const std::string& input, const Options& options) {
    const Loaded loaded = loadInput(input, options, options.inputs.size() == 1);
    Options silent = options; // the messages are part of what is printed
    silent.quiet = true;
    const int status = tellOutcome(input, loaded, silent);
    if (!loaded.error.empty() && !options.json) return status;
    const Json info = loaded.error.empty()
                          ? infoJson(input, loaded, host::openDrawing())
                          : Json{{"file", input}, {"stat", CANT_READ}, {"error", loaded.error}};
    if (options.json)
        std::cout << info.dump(-1, ' ', false, Json::error_handler_t::replace) << '\n';
    else
        printInfo(info);
    return std::cout.flush() ? std::max(status, lossStatus(loaded, options)) : STATUS_FAILED;
}

int runInfo(const Options& options) {
    return forEachInput(options.inputs, options.jobs,
                        [&](const std::string& input) { return infoOne(input, options); });
}

} // namespace tool
