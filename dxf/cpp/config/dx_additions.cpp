#include "dx_additions.h"

#include "additions_state.h"
#include "dx_config_rows.h"

#include <utility>

void DxSetConfigAdditions(DxConfigAdditions additions) {
    DxAdditions = std::move(additions);
}

int DxTakeAdditions(int isExport) {
    const DxConfigAdditions additions = std::exchange(DxAdditions, {});
    for (const auto& [key, value] : additions.flags) DxApplyFlag(key, value, isExport);
    for (const DxConfigAdditions::Row& row : additions.rows) {
        const DxDataSection* section = DxFindDataSection(row.section, isExport);
        if (!section) continue;
        if (const int error = section->add(row.left, row.right, 0)) return error;
    }
    return 0;
}
