#include "sections_state.h"

#include "../import/dx_extents.h"
#include "dx_placeholders.h"

int DxAttMode = 1;
DX_EXPORT_HANDLES DxHandles;
int DxFileInsUnits = 0;
int DxHeaderPat = -1;
RPT3 DxHdrInsBase{}, DxHdrPaperInsBase{};
RPT3 DxHdrExtMin{}, DxHdrExtMax{};
RPT3 DxHdrPaperExtMin{}, DxHdrPaperExtMax{};
RPT3 DxHdrUcsOrg{}, DxHdrUcsXDir{}, DxHdrUcsYDir{};
RPT3 DxHdrPaperUcsOrg{}, DxHdrPaperUcsXDir{}, DxHdrPaperUcsYDir{};

std::vector<DX_SECTION_PLACE> DxSectionPlaces;
std::map<std::uint32_t, DX_MATERIAL_TYPE> DxMaterials;

void DxResetSectionsState() {
    DxAttMode = 1;
    DxFileInsUnits = 0;
    DxHeaderPat = -1;
    DxHandles = {};
    DxHdrInsBase = DxHdrPaperInsBase = {0, 0, 0};
    DxInvalidateExtents(DxHdrExtMin, DxHdrExtMax);
    DxInvalidateExtents(DxHdrPaperExtMin, DxHdrPaperExtMax);
    DxHdrUcsOrg = DxHdrPaperUcsOrg = {0, 0, 0};
    DxHdrUcsXDir = DxHdrPaperUcsXDir = {1, 0, 0};
    DxHdrUcsYDir = DxHdrPaperUcsYDir = {0, 1, 0};
    DxSectionPlaces.clear();
    DxMaterials.clear();
}
