// Attribute names and attributes of the block being written.
#pragma once

#include "dx_insert.h"

#include <map>
#include <string>
#include <vector>

extern std::map<std::string, std::string> DxAttribNames; ///< host name → DXF name
extern std::vector<DX_ATTRIB_TYPE> DxAttribList;         ///< gathered for the next block
