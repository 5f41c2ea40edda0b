#include "passport.h"

#include "letter_case.h"
#include "services/open_file.h"
#include "text/font_files.h"
#include "text/substitutes.h"
#include "ut_string.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>

namespace fs = std::filesystem;

namespace tool {

using Json = nlohmann::ordered_json;

static Json statesOf(const SourceLayer& layer) {
    constexpr int frozen = 1, locked = 4;
    Json states = Json::array();
    if (layer.color < 0) states.push_back("off");
    if (layer.flags & frozen) states.push_back("frozen");
    if (layer.flags & locked) states.push_back("locked");
    if (layer.plot == 0) states.push_back("not plotted");
    return states;
}

static Json layersJson(const Loaded& loaded, const host::Drawing& drawing) {
    Json layers = Json::array();
    for (const SourceLayer& layer : loaded.scan.layers)
        layers.push_back({{"name", layer.name},
                          {"color", std::abs(layer.color)},
                          {"weight", layer.lineWeight},
                          {"line_type", layer.lineType},
                          {"states", statesOf(layer)}});
    if (loaded.imported) return layers;
    for (const host::Layer& layer : drawing.layers) {
        Json states = Json::array();
        if (!layer.visible) states.push_back("off");
        if (layer.locked) states.push_back("locked");
        layers.push_back({{"name", layer.name}, {"states", std::move(states)}});
    }
    return layers;
}

static Json lineTypesJson(const Loaded& loaded, const host::Drawing& drawing) {
    Json types = Json::array();
    for (const SourceLineType& type : loaded.scan.lineTypes)
        types.push_back({{"name", type.name}, {"description", type.description}});
    if (!loaded.imported)
        for (const auto& [number, type] : drawing.lineTypes) types.push_back({{"name", type.name}});
    return types;
}

/// A style's font: a stroke font of the program that made the file, or a face of the system.
static Json styleJson(const PassportStyle& style, host::FontLibrary& fonts) {
    Json json = {{"name", style.name}, {"file", style.file}};
    if (!style.bigFont.empty()) json["big_font"] = style.bigFont;
    const std::string extension = lower(fs::path(style.file).extension().string());
    const bool isFace =
        !style.face.empty() || extension == ".ttf" || extension == ".otf" || extension == ".ttc";
    const std::string face = style.face.empty() ? fs::path(style.file).stem().string() : style.face;
    json["found"] = isFace && fonts.hasFamily(face);
    if (isFace) json["face"] = face;
    if (isFace && !json["found"].get<bool>())
        json["stand_in"] = std::string(host::substituteFor(lower(face)).family);
    return json;
}

/// Looked for where the file says and, by its mere name, beside the drawing.
static bool isReferenceFound(const std::string& file, const std::string& input) {
    std::string path = file;
    std::replace(path.begin(), path.end(), '\\', '/');
    const fs::path folder = fs::path(input).parent_path(), named(path);
    return host::isRegular(named) || host::isRegular(folder / named) ||
           host::isRegular(folder / named.filename());
}

void addPassport(Json& info, const std::string& input, const Loaded& loaded, const host::Drawing& drawing) {
    const PassportScan& passport = loaded.passport;
    info["comments"] = passport.comments;
    info["layers"] = layersJson(loaded, drawing);
    info["line_types"] = lineTypesJson(loaded, drawing);
    host::FontLibrary fonts;
    info["styles"] = Json::array();
    for (const PassportStyle& style : passport.styles) info["styles"].push_back(styleJson(style, fonts));
    info["blocks"] = Json::array();
    info["references"] = Json::array();
    for (const PassportBlock& block : passport.blocks) {
        info["blocks"].push_back({{"name", block.name}, {"inserted", block.inserted}});
        if (!block.reference.empty())
            info["references"].push_back(
                {{"file", block.reference}, {"found", isReferenceFound(block.reference, input)}});
    }
    info["layouts"] = passport.layouts;
}

} // namespace tool
