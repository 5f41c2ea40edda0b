// The texts of dimensions.
#pragma once

#include "drawing/drawing.h"

#include <string>
#include <string_view>

namespace host {

/// Makes the texts of a dimension of points from "value", byte 1, "upper", byte 1, "lower": they become texts
/// of the pattern, and the dimension knows their rows.
void addDimensionTexts(Pattern& pattern, Dimension& dimension, std::string_view text, const Drawing& drawing);
/// The way back, from the texts as they are now.
std::string dimensionText(const Pattern& pattern, const Dimension& dimension);
/// Rows of texts behind `row`, which goes, move up; a dimension whose text it is has none then.
void forgetTextRow(Pattern& pattern, int row);

} // namespace host
