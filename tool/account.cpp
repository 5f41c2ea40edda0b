#include "account.h"

#include <algorithm>
#include <cstdio>

namespace tool {

using Json = nlohmann::ordered_json;

std::vector<std::string> accountLines(const Loaded& loaded) {
    std::vector<std::string> lines;
    for (const bool hidden : {false, true})
        if (std::string line = DxAccountLine(loaded.report.unseen, hidden); !line.empty())
            lines.push_back(std::move(line));
    return lines;
}

int lossStatus(const Loaded& loaded, const Options& options) {
    const auto& unseen = loaded.report.unseen;
    const bool isWhole =
        std::all_of(unseen.begin(), unseen.end(), [](const DxUnseen& row) { return DxIsHidden(row.reason); });
    return isWhole || !options.read.strict ? STATUS_DONE : STATUS_FAILED;
}

std::string reasonWords(const std::string& key) {
    for (int reason = 0; reason <= static_cast<int>(DxReason::Ended); ++reason)
        if (DxReasonKey(static_cast<DxReason>(reason)) == key)
            return DxReasonText(static_cast<DxReason>(reason));
    return key;
}

static Json exampleJson(const DxUnseen::Example& example) {
    Json json = Json::object();
    if (example.handle) {
        char handle[16];
        std::snprintf(handle, sizeof handle, "%X", example.handle);
        json["handle"] = handle;
    }
    if (example.line) json["line"] = example.line;
    if (!example.file.empty()) json["file"] = example.file;
    if (!example.name.empty()) json["name"] = example.name;
    return json;
}

Json unseenJson(const Loaded& loaded, bool hidden) {
    Json rows = Json::array();
    for (const DxUnseen& row : loaded.report.unseen)
        if (DxIsHidden(row.reason) == hidden)
            rows.push_back({{"kind", row.kind},
                            {"count", row.count},
                            {"reason", std::string(DxReasonKey(row.reason))},
                            {"in_blocks", row.inBlocks},
                            {"example", exampleJson(row.example)}});
    return rows;
}

Json talliesJson(const std::map<std::string, DxEntityTally, std::less<>>& tallies) {
    Json json = Json::object();
    for (const auto& [name, count] : tallies)
        json[name] = {{"read", count.read},
                      {"drawn", count.drawn},
                      {"skipped", count.skipped},
                      {"hidden", count.hidden},
                      {"lost", count.lost}};
    return json;
}

} // namespace tool
