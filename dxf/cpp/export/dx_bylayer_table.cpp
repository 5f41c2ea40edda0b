#include "dx_bylayer_table.h"

#include "../config/config_state.h"
#include "bylayer_state.h"
#include "dx_bylayer_rules.h"

int DxCiGetByLayerName(int pat, int row, int kind, UtCString* out) {
    *out = UtCString();
    if (pat < 0) {
        DxByLayerTable.reset();
        return 0;
    }
    if (!DxByLayerTable) {
        DxByLayerTable = std::make_unique<DxCiByLayerTable>();
        if (const int error = DxByLayerTable->read(DxByLayerFile)) return error;
    }
    *out = DxByLayerTable->lookUp(pat, row, kind);
    return 0;
}
