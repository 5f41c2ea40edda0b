// What every entity record starts with.
#pragma once

#include "dx_fixed.h"
#include "rpt.h"

#include <cstdint>

/// The groups that all entities share.
struct DX_ENTITY_BASE_TYPE {
    DX_NAME layer;                ///< 8; empty counts as "0"
    DX_NAME lineType;             ///< 6; empty: ByLayer
    int color;                    ///< 62; -1: none given, 0 ByBlock, 256 ByLayer
    int paperSpace;               ///< 67
    int invisible;                ///< 60
    int lineWeight;               ///< 370
    double lineTypeScale;         ///< 48
    std::uint32_t handle;         ///< 5, hexadecimal; longer handles lose their high part
    std::uint32_t materialHandle; ///< 347, hexadecimal
    int trueColor;                ///< 420; -1: none
    int transparency;             ///< 440; 0: none
};
