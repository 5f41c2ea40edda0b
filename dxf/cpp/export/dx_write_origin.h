// Entities that leave as what they were: the groups that the host remembers, with the layer, handle and owner
// that they have now, as far as the target can hold them.
#pragma once

#include "../session/dx_writer.h"

#include <cstdint>
#include <string_view>
#include <vector>

/// One group of a remembered entity; the text is part of what the host holds.
struct DX_KEPT_PAIR {
    int code;
    std::string_view value;
};

/// One group 0 with its groups; of what belongs to a whole, such as a vertex, one more.
struct DX_KEPT_ENTITY {
    std::string_view kind;
    std::vector<DX_KEPT_PAIR> pairs;
    std::string_view value(int code) const; ///< of the first such group; empty without one
};

/// Takes a remembered text apart: an entity, then its parts.
std::vector<DX_KEPT_ENTITY> DxKeptEntities(std::string_view text);

/// What may differ from the text.
struct DX_KEPT_CHANGES {
    DxOutText blockName = ""; ///< of an INSERT; empty: as it was
    const std::vector<std::pair<std::string, std::string>>* attributes = nullptr; ///< values by tag
    std::uint32_t owner = 0;                                                      ///< 0: DxOwnerHandle
};
/// Whether the target has such entities, with all names that they refer to.
bool DxCanWriteKept(const std::vector<DX_KEPT_ENTITY>& entities);
/// Writes them on the active layer. 0 or the export's error.
int DxWriteKept(const std::vector<DX_KEPT_ENTITY>& entities, const DX_KEPT_CHANGES& changes);
