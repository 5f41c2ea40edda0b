#include "solid_state.h"

std::vector<DX_3DSOLID_TYPE> DxSolidQueue;
std::vector<DX_ACDSRECORD_TYPE> DxAcdsRecords;
std::map<unsigned long, DX_VIS_MATERIAL> DxVisMaterials;

void DxResetSolidState() {
    DxSolidQueue.clear();
    DxAcdsRecords.clear();
    DxVisMaterials.clear();
}
