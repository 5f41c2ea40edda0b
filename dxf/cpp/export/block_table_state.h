// Look-ups beside DxBlockList.
#pragma once

#include <string>
#include <unordered_map>

extern std::unordered_map<std::string, std::size_t> DxBlockByName; ///< upper-case name → index in DxBlockList
extern std::unordered_map<std::string, std::size_t> DxBlockByBody; ///< body without names and handles → index
