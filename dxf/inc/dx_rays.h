// Records of RAY and XLINE.
#pragma once

#include "dx_entity_base.h"

/// A line without end: to one side (RAY) or to both (XLINE).
struct DX_RAY_TYPE {
    DX_ENTITY_BASE_TYPE base;
    RPT3 point;     ///< 10 20 30, world coordinates
    RPT3 direction; ///< 11 21 31
};
