// The subclass markers of entities from files that have none, and the groups behind each.
#pragma once

#include "dx_write_origin.h"

/// Markers of a kind; the groups of the second list stand behind the second marker.
struct DX_KEPT_MARKERS {
    const char* first = nullptr;
    const char* second = nullptr; ///< null: none
    int secondCodes[6] = {};      ///< 0 ends them
    bool isSecond(int code) const;
};

/// The markers of an entity; `owner` is the entity that it is part of, null for none. Without a first marker
/// the kind isn't known.
DX_KEPT_MARKERS DxMarkersOf(const DX_KEPT_ENTITY& entity, const DX_KEPT_ENTITY* owner);
