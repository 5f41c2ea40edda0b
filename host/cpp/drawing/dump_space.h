// What stands in space, as text.
#pragma once

#include "drawing/face_list.h"

#include <string>

namespace host {

/// A number with at most `digits` significant digits; what arithmetic leaves of a zero is a zero.
std::string dumpNumber(double value, int digits);
/// Faces, facets, curves and clouds of a pattern, a line each.
std::string dumpSpace(const SpaceContent& content, int digits);

} // namespace host
