// What `info` tells of an input, for people.
#pragma once

#include <nlohmann/json.hpp>

namespace tool {

/// Prints the object that --json would print. `verbose`: long lists whole, and what only a developer asks
/// for.
void printInfo(const nlohmann::ordered_json& info, bool verbose);

} // namespace tool
