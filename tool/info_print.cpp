#include "info_print.h"

#include "account.h"
#include "streams.h"
#include "words.h"

#include <array>
#include <cstdio>
#include <iostream>
#include <string>
#include <string_view>
#include <utility>

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
    std::snprintf(text, sizeof text, "%.2f", hundredths / 100.0);
    return words::say(", weight {} mm", text);
}

static std::string layerLine(const Json& layer) {
    std::string line = word(layer, "name");
    if (layer.contains("color"))
        line += words::say(": colour {}{}, {}", word(layer, "color"), weightWord(layer["weight"].get<int>()),
                           word(layer, "line_type"));
    for (const Json& state : layer["states"]) line += ", " + words::say(state.get<std::string>());
    return line;
}

static std::string lineTypeLine(const Json& type) {
    const std::string description = word(type, "description");
    return word(type, "name") + (description.empty() ? "" : ": " + description);
}

static std::string styleLine(const Json& style) {
    const std::string font = style.contains("face") ? word(style, "face") : word(style, "file");
    std::string line = word(style, "name") + ": " + font;
    if (style.contains("big_font")) line += words::say(" with {}", word(style, "big_font"));
    if (style.contains("stand_in"))
        line += words::say(" (not found, drawn with {})", word(style, "stand_in"));
    return line;
}

static std::string blockLine(const Json& block) {
    return words::say("{}: inserted {} times", word(block, "name"), word(block, "inserted"));
}

static std::string referenceLine(const Json& reference) {
    return word(reference, "file") + (reference["found"].get<bool>() ? "" : words::say(" (not found)"));
}

static std::string plainLine(const Json& text) {
    return text.get<std::string>();
}

static void printList(const Json& list, const char* title, std::string (*line)(const Json&), bool all) {
    constexpr std::size_t shown = 12;
    if (list.empty()) return;
    std::cout << "  " << words::tr(title) << " (" << list.size() << ")\n";
    for (std::size_t i = 0; i < list.size() && (all || i < shown); ++i)
        std::cout << "    " << line(list[i]) << '\n';
    if (!all && list.size() > shown)
        std::cout << "    " << words::say("… and {} more (-v)", list.size() - shown) << '\n';
}

static void printPassport(const Json& info, bool all) {
    printList(info["comments"], "comments", plainLine, all);
    printList(info["layers"], "layers", layerLine, all);
    printList(info["line_types"], "line types", lineTypeLine, all);
    printList(info["styles"], "text styles", styleLine, all);
    printList(info["blocks"], "blocks", blockLine, all);
    printList(info["references"], "external references", referenceLine, all);
    printList(info["layouts"], "layouts", plainLine, all);
}

/// The program's release that a version number of the format came with.
static std::string releaseOf(const std::string& version) {
    static constexpr std::array<std::pair<std::string_view, const char*>, 11> releases{{{"AC1006", "R10"},
                                                                                        {"AC1009", "R11/R12"},
                                                                                        {"AC1012", "R13"},
                                                                                        {"AC1014", "R14"},
                                                                                        {"AC1015", "2000"},
                                                                                        {"AC1018", "2004"},
                                                                                        {"AC1021", "2007"},
                                                                                        {"AC1024", "2010"},
                                                                                        {"AC1027", "2013"},
                                                                                        {"AC1032", "2018"},
                                                                                        {"", "none"}}};
    for (const auto& [number, release] : releases)
        if (number == version) return words::say(release);
    return words::say("unknown");
}

static std::string number(double value) {
    char text[40];
    std::snprintf(text, sizeof text, "%.9g", value);
    return text;
}

static void printSize(const Json& info) {
    const std::string unit = word(info, "unit");
    const bool isGiven = info["unit_given"].get<bool>();
    std::cout << "  " << words::say("unit {}", (isGiven ? "" : words::say("none, taken as ")) + unit) << '\n';
    const Json& box = info["extents"];
    if (box.is_null()) {
        std::cout << "  " << words::tr("empty") << '\n';
        return;
    }
    const auto at = [&](std::size_t i) { return box[i].get<double>(); };
    std::cout << "  "
              << words::say("size {} × {} {}, from {} {} to {} {}", number(at(2) - at(0)),
                            number(at(3) - at(1)), unit, number(at(0)), number(at(1)), number(at(2)),
                            number(at(3)))
              << '\n';
}

static void printNumbers(const Json& info, std::initializer_list<const char*> keys) {
    const char* gap = "  ";
    for (const char* key : keys) {
        std::cout << gap << words::tr(key) << ' ' << info[key].dump();
        gap = ", ";
    }
    std::cout << '\n';
}

/// What became of the host's drawing, and how.
static void printDrawing(const Json& info) {
    std::cout << "  "
              << words::say("outcome {}, scale {}, {} s", info["stat"].dump(), info["scale"].dump(),
                            info["seconds"].dump())
              << '\n';
    printNumbers(info["elements"], {"move", "draw", "arc", "spline"});
    printNumbers(info, {"patterns", "attributes", "texts", "hatches", "dimensions", "bitmaps"});
    if (info["hatches"] != 0) {
        std::cout << "  " << words::tr("of the hatches:");
        printNumbers(info["hatch"], {"families", "fills", "gradients", "standard", "kept"});
    }
    printNumbers(info, {"faces", "facets", "curves3d", "pointclouds", "solids", "views"});
}

/// "LINE: 28", "HATCH: 5, of which 2 hidden, 1 lost".
static void printEntities(const Json& entities) {
    if (!entities.empty()) std::cout << "  " << words::tr("entities") << '\n';
    for (const auto& [name, count] : entities.items()) {
        std::cout << "    " << name << ": " << count["read"];
        std::string_view gap = words::tr(", of which ");
        for (const char* what : {"hidden", "lost"})
            if (count[what] != 0)
                std::cout << std::exchange(gap, ", ") << count[what] << ' ' << words::tr(what);
        std::cout << '\n';
    }
}

static void printUnseen(const Json& rows, const char* heading) {
    for (const Json& row : rows) {
        std::cout << "  " << words::tr(heading) << ' ' << row["count"] << ' ' << word(row, "kind") << ": "
                  << reasonWords(word(row, "reason"))
                  << (row["in_blocks"].get<bool>() ? words::tr(", in blocks") : "");
        std::string_view gap = words::tr(" (first: ");
        for (const auto& [key, value] : row["example"].items())
            std::cout << std::exchange(gap, ", ") << words::tr(key) << ' '
                      << word(row["example"], key.c_str());
        std::cout << (row["example"].empty() ? "\n" : ")\n");
    }
}

void printInfo(const Json& info, bool verbose) {
    const QuotedOutput names(std::cout);
    std::cout << word(info, "file") << '\n';
    if (!info["version"].is_null())
        std::cout << "  "
                  << words::say("version {} ({}), code page {}", word(info, "version"),
                                releaseOf(word(info, "version")), info["codepage"].dump())
                  << '\n';
    printSize(info);
    if (verbose || info["stat"] != 0) printDrawing(info);
    printPassport(info, verbose);
    if (info["view_names"].size() > 1) printList(info["view_names"], "views", plainLine, verbose);
    printList(info["images"], "images", referenceLine, verbose);
    printEntities(info["entities"]);
    printUnseen(info["lost"], "lost");
    printUnseen(info["hidden"], "hidden");
    for (const Json& message : info["messages"]) std::cout << "  * " << message.get<std::string>() << '\n';
}

} // namespace tool
