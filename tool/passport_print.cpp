#include "passport.h"

#include <cstdio>
#include <iostream>

namespace tool {

using Json = nlohmann::ordered_json;

static std::string word(const Json& object, const char* key) {
    const auto found = object.find(key);
    if (found == object.end()) return {};
    return found->is_string() ? found->get<std::string>() : found->dump();
}

static std::string weightWord(int hundredths) {
    if (hundredths < 0) return {};
    char text[32];
    std::snprintf(text, sizeof text, ", weight %.2f mm", hundredths / 100.0);
    return text;
}

static std::string layerLine(const Json& layer) {
    std::string line = word(layer, "name");
    if (layer.contains("color"))
        line += ": colour " + word(layer, "color") + weightWord(layer["weight"].get<int>()) + ", " +
                word(layer, "line_type");
    for (const Json& state : layer["states"]) line += ", " + state.get<std::string>();
    return line;
}

static std::string lineTypeLine(const Json& type) {
    const std::string description = word(type, "description");
    return word(type, "name") + (description.empty() ? "" : ": " + description);
}

static std::string styleLine(const Json& style) {
    const std::string font = style.contains("face") ? word(style, "face") : word(style, "file");
    std::string line = word(style, "name") + ": " + font;
    if (style.contains("big_font")) line += " with " + word(style, "big_font");
    if (style.contains("stand_in")) line += " (not found, drawn with " + word(style, "stand_in") + ")";
    return line;
}

static std::string blockLine(const Json& block) {
    return word(block, "name") + ": inserted " + word(block, "inserted") + " times";
}

static std::string referenceLine(const Json& reference) {
    return word(reference, "file") + (reference["found"].get<bool>() ? "" : " (not found)");
}

static std::string plainLine(const Json& text) {
    return text.get<std::string>();
}

static void printList(const Json& list, const char* title, std::string (*line)(const Json&), bool all) {
    constexpr std::size_t shown = 12;
    if (list.empty()) return;
    std::cout << "  " << title << " (" << list.size() << ")\n";
    for (std::size_t i = 0; i < list.size() && (all || i < shown); ++i)
        std::cout << "    " << line(list[i]) << '\n';
    if (!all && list.size() > shown) std::cout << "    … and " << list.size() - shown << " more (-v)\n";
}

void printPassport(const Json& info, bool all) {
    printList(info["comments"], "comments", plainLine, all);
    printList(info["layers"], "layers", layerLine, all);
    printList(info["line_types"], "line types", lineTypeLine, all);
    printList(info["styles"], "text styles", styleLine, all);
    printList(info["blocks"], "blocks", blockLine, all);
    printList(info["references"], "external references", referenceLine, all);
    printList(info["layouts"], "layouts", plainLine, all);
}

} // namespace tool
