#include "bylayer_state.h"

#include "dx_bylayer_rules.h"

std::unique_ptr<DxCiByLayerTable> DxByLayerTable;
