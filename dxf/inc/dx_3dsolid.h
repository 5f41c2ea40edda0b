// Solids on their way from the file to the host.
#pragma once

#include "dx_entity_base.h"
#include "rpt.h"

#include <cstdint>
#include <memory>
#include <string>

/// 3DSOLID, REGION, SURFACE, BODY.
struct DX_3DSOLID_TYPE {
    DX_ENTITY_BASE_TYPE base;
    int version;                             ///< 70
    std::shared_ptr<const std::string> text; ///< 1 and 3, deciphered; null: the model stands in ACDSDATA
    Mat44 matrix;                            ///< the import matrix at the entity
};

/// A record of ACDSDATA.
struct DX_ACDSRECORD_TYPE {
    std::uint32_t handle = 0; ///< 320: of the entity that it belongs to
    std::string data;         ///< 310
    bool ready = false;       ///< data is complete
};
