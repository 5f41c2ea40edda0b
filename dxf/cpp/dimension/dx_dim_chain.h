// Chains of linear dimensions on one line, drawn together at the end of a pass.
#pragma once

#include "../host/dx_host_dimension.h"
#include "dx_dimension.h"
#include "dx_entity_base.h"

#include <memory>
#include <vector>

struct DX_DIM_GEO;

/// One dimension that waits, with the parameters that were in force when it was read.
struct DX_DIM_CHAIN_PART {
    std::shared_ptr<const DX_ENTITY_BASE_TYPE> base; ///< shared by parts that agree in all of it
    DX_HOST_DIM dim;
    DX_DIM_SETS sets;
    std::shared_ptr<const DX_DIM_GEO> source; ///< lines of its block, null unless they may be shown
};

/// Dimensions of one kind and layer whose dimension lines lie on one line (GeLineByPtAng's la, lb, lc).
struct DX_DIM_CHAIN {
    double la, lb, lc;
    int kind;
    std::vector<DX_DIM_CHAIN_PART> parts;
};

/// Queues a dimension with the sets in use. `layer` is the one that it stands on, `angle` that of its
/// dimension line in degrees, `source` what its block holds. 0, or 9008 for one that isn't fit for a chain.
int DxDimChainAdd(const DX_ENTITY_BASE_TYPE& base, const DX_NAME& layer, double angle,
                  const DX_HOST_DIM& host, const DX_DIM_GEO& source);
int DxDimChainDraw();  ///< Draws all chains. 0 or an error number.
void DxDimChainFree(); ///< Frees all chains.

/// Codes of DxDimChainParams.
enum DX_CHAIN_PARAMS : int {
    DX_CHAIN_TO_HOST = 6,
    DX_CHAIN_START = 11,
    DX_CHAIN_MERGE = 12,
    DX_CHAIN_RESTORE = 19
};
/// Parameters of the group that is being drawn. 3011 for another code.
int DxDimChainParams(int code, const DX_DIM_CHAIN_PART* part);
/// Hands the dimensions of a group to the host's application for chains. 0 or the first error.
int DxCiDimChainToAppDim(const std::vector<int>& pats, const std::vector<int>& rows);
