// What the dimension subsystem remembers within a session.
#pragma once

#include "../host/dx_host_dimension.h"
#include "dx_entity_base.h"
#include "dx_fixed.h"
#include "dx_tables.h"

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

struct DX_DIM_CHAIN;

/// Styles of a table by name.
struct DX_DIM_STYLE_NAMES {
    const void* table = nullptr; ///< that was indexed
    std::size_t count = 0;       ///< of its records at that time
    std::unordered_map<std::string, std::size_t> places;
};

extern DX_DIM_SETS DxDimSets;      ///< the parameter sets in use
extern DX_DIM_SETS DxDimSavedSets; ///< the host's, as the session's first dimension found them
extern int DxDimParamsSaved;       ///< the copy has been taken
extern DX_DIM_SETS DxDimGroupSets; ///< of the group of a chain that is being drawn

extern std::vector<DX_DIM_CHAIN> DxDimChains; ///< linear dimensions that wait for the end of the pass
/// Chains by kind, layer and rounded line, for finding one among many.
extern std::unordered_multimap<std::size_t, std::size_t> DxDimChainIndex;

extern std::shared_ptr<const DX_ENTITY_BASE_TYPE> DxDimLastBase; ///< of the last part that was queued

extern DX_DIM_STYLE_NAMES DxDimStyleNames; ///< of the table that was searched last

extern int DxDimBlockNo, DxDimEntityNo, DxFreeDimNo; ///< running numbers of an export's blocks and entities
/// Styles of an export by their values.
extern std::unordered_multimap<std::size_t, std::size_t> DxDimStyleIndex;

/// Start values of all of the above.
void DxResetDimensionState();
