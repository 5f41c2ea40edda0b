// What a drawing says of itself: layers, line types, styles, blocks, references, layouts. For `info`.
#pragma once

#include "load.h"

#include "drawing/drawing.h"

#include <nlohmann/json.hpp>

namespace tool {

/// Adds the passport's keys to the object of an input: comments, layers, line_types, styles, blocks,
/// references, layouts. What only a DXF file tells is an empty list for a drawing file.
void addPassport(nlohmann::ordered_json& info, const std::string& input, const Loaded& loaded,
                 const host::Drawing& drawing);

} // namespace tool
