// The reports of import and export, put together from what the walk counted and what the protocol was told.
#include "dx_report.h"

#include "../session/dx_protocol.h"
#include "dx_entity_walk.h"
#include "import_state.h"

DxImportReport DxGetImportReport() {
    DxImportReport report = DxReport;
    for (std::size_t i = 0; i < DxKindTally.size(); ++i) {
        if (DxKindTally[i].read || DxKindTally[i].drawn) {
            report.entities[std::string(DxKinds[i].name)] = DxKindTally[i];
        }
    }
    report.messages = DxProtoMessages(0);
    for (auto* tallies : {&report.entities, &report.blockEntities})
        for (auto& [name, count] : *tallies) count.skipped = count.hidden + count.lost;
    return report;
}

DxExportReport DxGetExportReport() {
    return {DxProtoMessages(1)};
}

void DxResetImportReport() {
    DxReport = {};
    DxCountEntities = 0;
    for (DxEntityTally& count : DxKindTally) count = {};
}
