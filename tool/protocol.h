// The protocol file of runs.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tool {

/// The messages of the runs that a protocol file tells from byte `from` on, without its frame.
std::vector<std::string> readProtocol(const std::string& path, std::uintmax_t from);
std::uintmax_t fileSize(const std::string& path); ///< 0 for a file that isn't there.

} // namespace tool
