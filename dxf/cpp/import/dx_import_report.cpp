// The report of an import, put together from what the walk counted.
#include "dx_report.h"

#include "dx_entity_walk.h"
#include "import_state.h"

#include <algorithm>

DxImportReport DxGetImportReport() {
    DxImportReport report = DxReport;
    for (std::size_t i = 0; i < DxKindTally.size(); ++i) {
        if (DxKindTally[i].read || DxKindTally[i].drawn) {
            report.entities[std::string(DxKinds[i].name)] = DxKindTally[i];
        }
    }
    for (auto& [name, count] : report.entities) count.skipped = std::max(0L, count.read - count.drawn);
    return report;
}

void DxResetImportReport() {
    DxReport = {};
    DxCountEntities = 0;
    for (DxEntityTally& count : DxKindTally) count = {};
}
