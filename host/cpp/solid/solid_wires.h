// Lines to show a solid by.
#pragma once

#include "rpt.h"

#include <string_view>
#include <vector>

namespace host {

/// The edges of a solid model, each along its curve, and lines of round faces that have no edges to be seen
/// by: circles of spheres and tori, straight lines of cylinders and cones. In the model's frame. A damaged
/// model gives what of it can be told. `limit`: points at most.
std::vector<std::vector<RPT3>> solidWires(std::string_view model, std::size_t limit);

} // namespace host
