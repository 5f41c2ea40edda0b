#include "origin_state.h"

DX_ORIGIN_START DxOriginStart;
std::vector<DX_WAITING_ORIGIN> DxWaitingOrigins;
int DxPlacedWanted, DxOriginDepth, DxOpenDefinition;
DX_PLACED DxActPlaced;
std::vector<DX_PLACED_LAYER> DxPlacedLayers;
std::vector<DX_PLACED> DxPlacedInserts;
std::string DxDefinitionText;

void DxResetOriginState() {
    DxOriginStart = {};
    DxWaitingOrigins.clear();
    DxPlacedWanted = DxOriginDepth = DxOpenDefinition = 0;
    DxActPlaced = {};
    DxPlacedLayers.clear();
    DxPlacedInserts.clear();
    DxDefinitionText.clear();
}
