// One text of several lines from single ones.
#pragma once

#include "drawing/drawing.h"

#include <optional>
#include <vector>

namespace host {

/// The text that looks as all of `texts` together do: their lines in the order from top to bottom, pieces of
/// one line from left to right. Nothing when they don't look alike, when their lines aren't at even distances
/// or don't stand above each other at their left, middle or right.
std::optional<Text> joinTexts(const std::vector<Text>& texts, const Drawing& drawing);

} // namespace host
