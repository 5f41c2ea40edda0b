// What of a file didn't arrive in the drawing, for people and for programs.
#pragma once

#include "load.h"

#include <nlohmann/json.hpp>

namespace tool {

/// The lines that end a run: what is lost, what the file hides. Empty when all is seen.
std::vector<std::string> accountLines(const Loaded& loaded);
/// The exit status of a command that did its work: STATUS_FAILED where --strict is given and anything is
/// lost.
int lossStatus(const Loaded& loaded, const Options& options);
/// The reason of a row of the account, which programs read in English, in the language of the run.
std::string reasonWords(const std::string& key);
/// Rows of the account: kind, count, reason, in_blocks, example.
nlohmann::ordered_json unseenJson(const Loaded& loaded, bool hidden);
/// Counts by the name of the kind.
nlohmann::ordered_json talliesJson(const std::map<std::string, DxEntityTally, std::less<>>& tallies);

} // namespace tool
