#include "solid_state.h"

std::vector<DX_3DSOLID_TYPE> DxSolidQueue;
std::vector<DX_ACDSRECORD_TYPE> DxAcdsRecords;
std::map<unsigned long, DX_VIS_MATERIAL> DxVisMaterials;
int DxFlatSolids, DxWriteSolids, DxWriteClouds;

void DxResetSolidState() {
    DxFlatSolids = DxWriteSolids = DxWriteClouds = 0;
    DxSolidQueue.clear();
    DxAcdsRecords.clear();
    DxVisMaterials.clear();
}
