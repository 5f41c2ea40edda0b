// The classification's table, alive from its first use in an export to the end of it.
#pragma once

#include <memory>

class DxCiByLayerTable;

extern std::unique_ptr<DxCiByLayerTable> DxByLayerTable; ///< null while nobody has asked
