#include "blocks_state.h"

DX_NAME DxInsertLt{};
int DxDepthReported = 0;
long DxRingEntitiesLeft = 0;
std::size_t DxStoredBytes = 0;
std::set<std::string> DxDefinitionNames;
std::vector<std::string> DxDefinitionsWanted;
std::size_t DxDefinitionsDrawn = 0;

void DxResetBlocksState() {
    DxInsertLt.clear();
    DxDepthReported = 0;
    DxRingEntitiesLeft = 1'000'000;
    DxStoredBytes = 0;
    DxDefinitionNames.clear();
    DxDefinitionsWanted.clear();
    DxDefinitionsDrawn = 0;
}
