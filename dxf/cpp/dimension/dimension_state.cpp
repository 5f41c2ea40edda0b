#include "dimension_state.h"

#include "dx_dim_chain.h"

DX_DIM_SETS DxDimSets, DxDimSavedSets, DxDimGroupSets;
int DxDimParamsSaved = 0;
std::vector<DX_DIM_CHAIN> DxDimChains;
std::unordered_multimap<std::size_t, std::size_t> DxDimChainIndex;
std::shared_ptr<const DX_ENTITY_BASE_TYPE> DxDimLastBase;
DX_DIM_STYLE_NAMES DxDimStyleNames;
int DxDimBlockNo = 0, DxDimEntityNo = 0, DxFreeDimNo = 0;
std::unordered_multimap<std::size_t, std::size_t> DxDimStyleIndex;

void DxResetDimensionState() {
    DxDimSets = DxDimSavedSets = DxDimGroupSets = {};
    DxDimParamsSaved = 0;
    DxDimChains.clear();
    DxDimChainIndex.clear();
    DxDimLastBase.reset();
    DxDimBlockNo = DxDimEntityNo = DxFreeDimNo = 0;
    DxDimStyleIndex.clear();
    DxDimStyleNames = {};
}
